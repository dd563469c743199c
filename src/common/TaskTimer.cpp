#include "TaskTimer.h"

#include "TimeSource.h"

#include <algorithm>

namespace {
constexpr qint64 nanosecondsPerMillisecond = 1'000'000;
}

TaskTimer::TaskTimer(QObject *parent)
    : QObject(parent)
{
}

TaskTimer::~TaskTimer()
{
    stop();
}

void TaskTimer::start(int ms)
{
    m_interval = std::max(ms, 0);
    start();
}

void TaskTimer::start()
{
    stop();
    arm(TimeSource::current().nanoseconds() + m_interval * nanosecondsPerMillisecond);
}

void TaskTimer::startUntil(qint64 due, int ms)
{
    m_interval = std::max(ms, 0);
    stop();
    arm(due);
}

void TaskTimer::stop()
{
    if (m_source)
        m_source->disarm(m_entry);
    m_source = nullptr;
}

void TaskTimer::setInterval(int ms)
{
    m_interval = std::max(ms, 0);
    if (isActive())
        start();
}

int TaskTimer::remainingTime() const
{
    if (!m_source)
        return -1;
    const qint64 left = m_entry.first - m_source->nanoseconds();
    return int(std::max<qint64>(left, 0) / nanosecondsPerMillisecond);
}

void TaskTimer::arm(qint64 due)
{
    m_source = &TimeSource::current();
    m_entry = m_source->arm(this, due);
}

void TaskTimer::expire()
{
    const TimeSource *source = m_source;
    m_source = nullptr;
    if (!m_singleShot) {
        // Without a wait it would beat without an end in one moment.
        const qint64 interval = std::max(m_interval, 1) * nanosecondsPerMillisecond;
        const qint64 now = source->nanoseconds();
        const qint64 next = m_entry.first + interval;
        arm(next < now ? now + interval : next); // beats that were missed stay missed
    }
    Q_EMIT timeout();
}

void TaskTimer::sourceGone()
{
    m_source = nullptr;
}
