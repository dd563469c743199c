#include "moment.h"

#include <ctime>
#include <sched.h>
#include <sys/prctl.h>

namespace {
constexpr moment::Ns perSecond = 1'000'000'000;
}

moment::Ns moment::now()
{
    timespec time{};
    clock_gettime(CLOCK_MONOTONIC, &time);
    return time.tv_sec * perSecond + time.tv_nsec;
}

void moment::waitUntil(Ns due)
{
    const Ns sleepUntil = due - lead;
    const timespec time{sleepUntil / perSecond, sleepUntil % perSecond};
    if (now() < sleepUntil)
        clock_nanosleep(CLOCK_MONOTONIC, TIMER_ABSTIME, &time, nullptr);
    while (now() < due) {
        // the rest is too short to sleep
    }
}

bool moment::askForPriority()
{
    // Above the lowest, which the watched program may have for itself.
    const sched_param low{sched_get_priority_min(SCHED_FIFO) + 1};
    const bool granted = sched_setscheduler(0, SCHED_FIFO, &low) == 0;
    if (!granted)
        prctl(PR_SET_TIMERSLACK, 1UL, 0UL, 0UL, 0UL);
    return granted;
}
