#include "TaskClock.h"

#include "TimeSource.h"

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
    if (m_start < 0)
        return 0;
    return int((TimeSource::current().nanoseconds() - m_start) / 1'000'000);
}
