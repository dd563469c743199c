// The machine's own jitter: a process that does nothing but wait, and says how late it was woken.
// Arguments: how many waits, and of how many ms. It prints one lateness a line, in ms.

#include <cstdio>
#include <cstdlib>
#include <ctime>

int main(int argc, char *argv[])
{
    if (argc != 3) {
        std::fprintf(stderr, "usage: kelmoran-bare-timer COUNT MS\n");
        return 2;
    }
    const long count = std::strtol(argv[1], nullptr, 10);
    const long milliseconds = std::strtol(argv[2], nullptr, 10);
    constexpr long perSecond = 1'000'000'000;
    for (long i = 0; i < count; ++i) {
        timespec due{};
        clock_gettime(CLOCK_MONOTONIC, &due);
        due.tv_nsec += milliseconds % 1000 * 1'000'000;
        due.tv_sec += milliseconds / 1000 + due.tv_nsec / perSecond;
        due.tv_nsec %= perSecond;
        clock_nanosleep(CLOCK_MONOTONIC, TIMER_ABSTIME, &due, nullptr);
        timespec now{};
        clock_gettime(CLOCK_MONOTONIC, &now);
        const double late =
            double(now.tv_sec - due.tv_sec) * 1000.0 + double(now.tv_nsec - due.tv_nsec) / 1e6;
        std::printf("%.6f\n", late);
    }
    return 0;
}
