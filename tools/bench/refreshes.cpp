// What becomes of an exposure on a screen that refreshes: the program's own arithmetic of pictures,
// on a screen that is only simulated. It prints a table: how many trials in a hundred showed the
// stimulus for one refresh less than the nearest number of them, for that number, and for one more.

#include "PictureTimes.h"
#include "TaskTimer.h"
#include "TimeSource.h"

#include <QDateTime>

#include <array>
#include <cmath>
#include <cstdio>
#include <optional>
#include <random>

namespace {
constexpr double nanosecondsPerMillisecond = 1e6;
constexpr int trials = 100'000;
constexpr int fixation = 500; // ms

/// A time that stands where it is put.
class SimulatedTime final : public TimeSource
{
public:
    SimulatedTime() { setCurrent(this); }
    ~SimulatedTime() override { setCurrent(nullptr); }

    qint64 nanoseconds() const override { return now; }
    QDateTime currentDateTime() const override { return {}; }
    quint32 seedSeconds() const override { return 0; }
    void waitUntil(qint64 moment) const override { awaited = moment; }
    std::optional<qint64> due() const { return earliest(); }

    qint64 now = 0;
    mutable qint64 awaited = 0;

protected:
    void wakeAt(std::optional<qint64>) override {}
};

/// How far from its moment a paint is, ms.
struct Lateness
{
    const char *name;
    double mean;
    double deviation;
    double stretch; ///< of the interval, as by the kernel's slack
};

class Screen
{
public:
    Screen(double rate, const Lateness &lateness)
        : m_grid(0, 1e9 / rate)
        , m_lateness(lateness)
    {
    }

    /// The refreshes of one stimulus, beyond the nearest number of them.
    int show(int ms, bool followed)
    {
        m_time.now = qint64(m_phase(m_engine) * m_grid.period());
        m_pictures.beginTrial(followed ? std::optional(m_grid) : std::nullopt);
        m_pictures.painted(nullptr, m_time.now);
        const qint64 on = end(m_fixation, fixation);
        const qint64 off = end(m_exposure, ms);
        const int shown = int(std::lround(double(off - on) / m_grid.period()));
        return shown - m_grid.refreshes(ms);
    }

private:
    /// The refresh that shows the end of this interval.
    qint64 end(TaskTimer &timer, int ms)
    {
        m_pictures.begin(timer, ms);
        m_time.now = *m_time.due();
        timer.stop();
        m_pictures.awaitEnd(&timer);
        const double late =
            m_lateness.mean + m_lateness.deviation * m_normal(m_engine) + m_lateness.stretch * ms;
        m_time.now = m_time.awaited + std::llround(late * nanosecondsPerMillisecond);
        m_pictures.painted(&timer, m_time.now);
        return m_grid.nextAfter(m_time.now);
    }

    SimulatedTime m_time;
    RefreshGrid m_grid;
    Lateness m_lateness;
    PictureTimes m_pictures;
    TaskTimer m_fixation;
    TaskTimer m_exposure;
    std::mt19937 m_engine{1};
    std::uniform_real_distribution<double> m_phase{0, 1};
    std::normal_distribution<double> m_normal;
};

void printRow(double rate, const Lateness &lateness, int ms, bool followed)
{
    Screen screen(rate, lateness);
    std::array<int, 3> counts{}; // one less, as many, one more
    int others = 0;
    for (int i = 0; i < trials; ++i) {
        const int beyond = screen.show(ms, followed);
        if (std::abs(beyond) <= 1)
            ++counts[std::size_t(beyond + 1)];
        else
            ++others;
    }
    const auto share = [](int count) { return 100.0 * count / trials; };
    std::printf("| %g | %d | %s | %s | %.2f | %.2f | %.2f | %.2f |\n", rate, ms, lateness.name,
                followed ? "yes" : "no", share(counts[0]), share(counts[1]), share(counts[2]),
                share(others));
}
} // namespace

int main()
{
    constexpr std::array latenesses{
        Lateness{"none", 0, 0, 0},
        Lateness{"this program's, SD 0.3 ms", 0.1, 0.3, 0},
        Lateness{"a precise QTimer's, 0.7 ms and 0.1 %", 0.7, 0.5, 0.001},
    };
    std::puts(
        "| Hz | ms | paints late by | followed | one less % | nearest % | one more % | other % |");
    std::puts("|---|---|---|---|---|---|---|---|");
    for (const auto &[rate, ms] :
         {std::pair{60.0, 17}, {60.0, 25}, {60.0, 33}, {59.94, 100}, {120.0, 17}, {120.0, 25}}) {
        for (const Lateness &lateness : latenesses)
            printRow(rate, lateness, ms, false);
        printRow(rate, latenesses[1], ms, true);
    }
    return 0;
}
