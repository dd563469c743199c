#include "TaskClock.h"

#include "TimeSource.h"

#include <algorithm>

void TaskClock::start()
{
    m_start = TimeSource::current().nanoseconds();
}

int TaskClock::restart()
{
    const int before = elapsed();
    start();
    return before;
}

int TaskClock::elapsed() const
{
    return elapsedAt(TimeSource::current().nanoseconds());
}

int TaskClock::elapsedAt(qint64 moment) const
{
    if (m_start < 0)
        return 0;
    return int(std::max<qint64>(moment - m_start, 0) / 1'000'000);
}
