#include "ChainProbe.h"

#include "TaskDialog.h"
#include "TaskTimer.h"
#include "TimeSource.h"

#include <QEvent>

namespace {
double milliseconds(qint64 nanoseconds)
{
    return double(nanoseconds) / 1e6;
}

/// The interval of the one timer of the chain that runs; -1 if none does.
int runningInterval(const TaskDialog &task)
{
    for (const TaskTimer *timer : task.findChildren<TaskTimer *>(Qt::FindDirectChildrenOnly)) {
        if (timer->isActive())
            return timer->interval();
    }
    return -1;
}
} // namespace

ChainProbe::ChainProbe(int &argc, char **argv)
    : QApplication(argc, argv)
{
}

void ChainProbe::watch(const TaskDialog &task)
{
    m_watching = true;
    connect(&task, &TaskDialog::stageEntered, this,
            [this, &task](int stage) { linkEntered(task, stage); });
}

void ChainProbe::linkEntered(const TaskDialog &task, int stage)
{
    // Link 1 follows the closing wait, which is started by the answer and not by a link.
    if (stage == m_lastStage + 1 && m_nominal >= 0)
        m_lateness.push_back(milliseconds(m_delivered - m_entered) - m_nominal);
    m_lastStage = stage;
    m_entered = TimeSource::current().nanoseconds(); // its timer has just been started
    m_nominal = runningInterval(task);
    m_linkRuns = true;
}

bool ChainProbe::notify(QObject *receiver, QEvent *event)
{
    if (!m_watching || m_depth > 0)
        return QApplication::notify(receiver, event);
    const bool paints = event->type() == QEvent::UpdateRequest || event->type() == QEvent::Paint;
    m_delivered = TimeSource::current().nanoseconds();
    ++m_depth;
    m_linkRuns = false;
    const bool done = QApplication::notify(receiver, event);
    --m_depth;
    const double took = milliseconds(TimeSource::current().nanoseconds() - m_delivered);
    if (m_linkRuns)
        m_work[m_lastStage].push_back(took);
    else if (paints && !m_work[m_lastStage].empty())
        m_work[m_lastStage].back() += took; // what the link had changed is painted now
    return done;
}
