// The crosses of the memory task in real time on the screen at hand: from the paint that shows one
// to the paint in which it goes, and on to the next. It prints tables, in ms.

#include "DrawCrossThick.h"
#include "Result.h"
#include "Test4.h"
#include "TimeSource.h"
#include "desk.h"
#include "printed.h"

#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <cmath>

namespace {

constexpr double shownFor = 500.0; // ms, as the task has them
constexpr double goneFor = 1000.0;

/// Notes in which paints of the task a cross comes and goes.
class CrossProbe : public QApplication
{
public:
    using QApplication::QApplication;

    void watch(const QWidget &task) { m_crosses = task.findChildren<DrawCrossThick *>(); }
    /// A run is over: what shows now are answers.
    void endRun() { m_since = 0; }

    bool notify(QObject *receiver, QEvent *event) override
    {
        const bool done = QApplication::notify(receiver, event);
        if (event->type() == QEvent::UpdateRequest)
            endOfPass();
        return done;
    }

    std::vector<double> shownErrors; ///< ms
    std::vector<double> goneErrors;

private:
    void endOfPass()
    {
        const bool shown = std::any_of(m_crosses.cbegin(), m_crosses.cend(),
                                       [](const QWidget *cross) { return cross->isVisible(); });
        if (shown == m_shown)
            return;
        const qint64 now = TimeSource::current().nanoseconds();
        if (m_since != 0) {
            const double lasted = double(now - m_since) / 1e6;
            if (m_shown)
                shownErrors.push_back(std::abs(lasted - shownFor));
            else
                goneErrors.push_back(std::abs(lasted - goneFor));
        }
        m_shown = shown;
        m_since = now;
    }

    QList<DrawCrossThick *> m_crosses;
    bool m_shown = false;
    qint64 m_since = 0; ///< ns; 0: outside a run
};

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    CrossProbe probe(argc, argv);
    const int trials = probe.arguments().value(1, QStringLiteral("24")).toInt();

    const QTemporaryDir root;
    desk::prepare(root.path());
    QWidget window;
    Test4 task(&window);
    task.result().setPrinting(false);
    task.goTest4(false, false, false);
    if (!QTest::qWaitForWindowActive(&task))
        std::fprintf(stderr, "the window did not become active\n");
    probe.watch(task);

    auto *forward = task.findChild<QPushButton *>(QStringLiteral("pb_go"));
    for (int trial = 0; trial < trials; ++trial) {
        probe.endRun();
        forward->click();
        desk::waitForStage(task, 4);
        probe.endRun();
        for (int click = 0; click < 2; ++click)
            QTest::mouseClick(&task, Qt::LeftButton, {}, task.rect().center());
        desk::waitForStage(task, 0);
        forward = task.findChild<QPushButton *>(QStringLiteral("pb_continue"));
    }
    printed::line("a cross is shown for 500 ms, off by", probe.shownErrors);
    printed::line("1000 ms between two crosses, off by", probe.goneErrors);
    return 0;
}
