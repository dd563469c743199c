#include "TimeSource.h"

#include "RealTime.h"
#include "TaskTimer.h"

namespace {
TimeSource *s_current = nullptr;
}

TimeSource &TimeSource::current()
{
    return s_current ? *s_current : RealTime::instance();
}

void TimeSource::setCurrent(TimeSource *source)
{
    s_current = source;
}

TimeSource::~TimeSource()
{
    for (const auto &[entry, timer] : m_queue)
        timer->sourceGone();
}

std::optional<qint64> TimeSource::earliest() const
{
    if (m_queue.empty())
        return std::nullopt;
    return m_queue.begin()->first.first;
}

bool TimeSource::fireEarliest()
{
    if (m_queue.empty() || m_queue.begin()->first.first > nanoseconds())
        return false;
    TaskTimer *timer = m_queue.begin()->second;
    m_queue.erase(m_queue.begin());
    // The next one is watched for first: a slot may open a box with an event loop of its own.
    wakeAt(earliest());
    timer->expire();
    return true;
}

TimeSource::Entry TimeSource::arm(TaskTimer *timer, qint64 due)
{
    const Entry entry{due, m_started++};
    m_queue.emplace(entry, timer);
    if (m_queue.begin()->first == entry)
        wakeAt(due);
    return entry;
}

void TimeSource::disarm(const Entry &entry)
{
    const auto it = m_queue.find(entry);
    if (it == m_queue.end())
        return;
    const bool wasFirst = it == m_queue.begin();
    m_queue.erase(it);
    if (wasFirst)
        wakeAt(earliest());
}
