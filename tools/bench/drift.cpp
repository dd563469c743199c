// The drift of the movement detection task in real time on the screen at hand: from one paint of
// the field to the next, and what of a core it takes. It prints a table, in ms.

#include "PatchBoard.h"
#include "Result.h"
#include "TaskTimer.h"
#include "Test3.h"
#include "TimeSource.h"
#include "desk.h"
#include "printed.h"

#include <QApplication>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

#include <ctime>
#include <numeric>

namespace {

/// Notes each paint of the field.
class DriftProbe : public QApplication
{
public:
    using QApplication::QApplication;

    void watch(const QWidget *field) { m_field = field; }
    const std::vector<double> &intervals() const { return m_intervals; } ///< ms

    bool notify(QObject *receiver, QEvent *event) override
    {
        if (receiver == m_field && event->type() == QEvent::Paint) {
            const qint64 now = TimeSource::current().nanoseconds();
            if (m_last != 0)
                m_intervals.push_back(double(now - m_last) / 1e6);
            m_last = now;
        }
        return QApplication::notify(receiver, event);
    }

private:
    const QWidget *m_field = nullptr;
    qint64 m_last = 0; ///< ns
    std::vector<double> m_intervals;
};

/// The processor time of this process, s.
double processorTime()
{
    timespec used{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &used);
    return double(used.tv_sec) + double(used.tv_nsec) / 1e9;
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    DriftProbe probe(argc, argv);
    const int seconds = probe.arguments().value(1, QStringLiteral("60")).toInt();

    const QTemporaryDir root;
    desk::prepare(root.path());
    QWidget window;
    Test3 task(&window);
    task.result().setPrinting(false);
    task.goTest3(1, false, false, false, false);
    if (!QTest::qWaitForWindowActive(&task))
        std::fprintf(stderr, "the window did not become active\n");
    task.findChild<QPushButton *>(QStringLiteral("pb_go"))->click();
    // Nobody answers: the field drifts on.
    desk::waitForStage(task, 4);

    probe.watch(task.findChild<PatchBoard *>());
    const double before = processorTime();
    TaskTimer end;
    end.setSingleShot(true);
    end.start(seconds * 1000);
    while (end.isActive()) // a qWait would sleep between its looks
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    const double used = processorTime() - before;

    const std::vector<double> &intervals = probe.intervals();
    printed::line("from paint to paint of the field", intervals);
    std::printf("mean %.4f ms, processor %.1f %% of one core\n",
                std::accumulate(intervals.begin(), intervals.end(), 0.0) / double(intervals.size()),
                100.0 * used / seconds);
    return 0;
}
