// Exposures of the visual perception task in real time on the screen at hand: from the paint of the
// stimulus to the paint of the mask, against what was asked for. It prints tables, in ms.

#include "exposures.h"
#include "DrawArrowPeriph.h"
#include "Result.h"
#include "Test1.h"
#include "TimeSource.h"
#include "desk.h"
#include "printed.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

#include <cmath>
#include <set>

namespace {

constexpr int shortEnough = 650; // ms

/// Notes when a paint of the task has shown a stimulus or the mask.
class PaintProbe : public QApplication
{
public:
    using QApplication::QApplication;

    void watch(const Test1 &task)
    {
        m_stimulus = task.findChild<DrawArrowPeriph *>();
        m_mask = task.findChild<QLabel *>(QStringLiteral("lbl_noise"));
    }

    bool notify(QObject *receiver, QEvent *event) override
    {
        if (event->type() == QEvent::Paint) {
            m_stimulusPainted |= receiver == m_stimulus;
            m_maskPainted |= receiver == m_mask;
        }
        const bool pass = event->type() == QEvent::UpdateRequest;
        if (pass)
            m_stimulusPainted = m_maskPainted = false;
        const bool done = QApplication::notify(receiver, event);
        if (pass)
            endOfPass();
        return done;
    }

    /// ms from the paint of the last stimulus to that of its mask.
    double exposure = 0.0;
    /// Presentations after which the stimulus was seen to go before its mask came.
    int gaps = 0;

private:
    void endOfPass()
    {
        const qint64 now = TimeSource::current().nanoseconds();
        if (m_stimulusPainted)
            m_shown = now;
        const bool gone = m_stimulus && !m_stimulus->isVisible();
        if (m_shown == 0 || !gone)
            return;
        if (m_maskPainted)
            exposure = double(now - m_shown) / 1e6;
        else
            ++gaps;
        m_shown = 0;
    }

    const QWidget *m_stimulus = nullptr;
    const QWidget *m_mask = nullptr;
    bool m_stimulusPainted = false;
    bool m_maskPainted = false;
    qint64 m_shown = 0; ///< ns; 0: no stimulus is awaited to go
};

/// Both tables, the short ones `often` times and the long ones a few times, in a mixed order.
std::vector<int> presentations(int often)
{
    std::set<int> different;
    for (const exposures::Row &row : exposures::_e_timer02_T1)
        different.insert(row.begin(), row.end());
    constexpr int longOnes = 2;
    std::vector<int> order;
    for (int round = 0; round < often; ++round) {
        for (const int ms : different) {
            if (ms <= shortEnough || round < longOnes)
                order.push_back(ms);
        }
    }
    return order;
}

void type(Test1 &task, const char *edit, int value)
{
    auto *line = task.findChild<QLineEdit *>(QString::fromLatin1(edit));
    line->setText(QString::number(value));
    Q_EMIT line->editingFinished();
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    PaintProbe probe(argc, argv);
    const int often = probe.arguments().value(1, QStringLiteral("20")).toInt();

    const QTemporaryDir root;
    desk::prepare(root.path());
    QWidget window;
    Test1 task(&window);
    task.result().setPrinting(false);
    constexpr int dual = 3; // all that the task can show at once
    task.goTest1(dual, false, false, false, false);
    type(task, "le_timer01", 200);
    type(task, "le_timer03", 100);
    type(task, "le_timer04", 50);
    if (!QTest::qWaitForWindowActive(&task))
        std::fprintf(stderr, "the window did not become active\n");
    probe.watch(task);

    std::vector<double> shortErrors;
    std::vector<double> longErrors;
    auto *forward = task.findChild<QPushButton *>(QStringLiteral("pb_go"));
    for (const int nominal : presentations(often)) {
        type(task, "le_timer02_S3", nominal);
        forward->click();
        desk::waitForStage(task, 5);
        const double error = std::abs(probe.exposure - nominal);
        (nominal <= shortEnough ? shortErrors : longErrors).push_back(error);
        // A struck trial makes no step and doesn't count, so that the test goes on for ever.
        QTest::keyClick(&task, Qt::Key_E);
        forward = task.findChild<QPushButton *>(QStringLiteral("pb_continue"));
    }
    printed::line("exposures up to 650 ms, off by", shortErrors);
    printed::line("longer exposures, off by", longErrors);
    const auto near = std::count_if(shortErrors.begin(), shortErrors.end(),
                                    [](double error) { return error <= 2.0; });
    std::printf("up to 650 ms within 2 ms: %.2f %%\n",
                100.0 * double(near) / double(shortErrors.size()));
    std::printf("the mask came in another paint than the one in which the stimulus went: %d of "
                "%zu\n",
                probe.gaps, shortErrors.size() + longErrors.size());
    return 0;
}
