#include "PictureTimes.h"

#include "TaskTimer.h"
#include "TimeSource.h"

#include <algorithm>

namespace {
constexpr qint64 nanosecondsPerMillisecond = 1'000'000;
constexpr qint64 stillness = 150'000; ///< ns: longer than a question to an awake server takes
} // namespace

void PictureTimes::beginTrial(const std::optional<RefreshGrid> &refreshes)
{
    m_intervals.clear();
    m_refreshes = refreshes;
}

void PictureTimes::begin(TaskTimer &timer, int ms)
{
    Running &running = m_running[&timer];
    running.ms = std::max(ms, 0);
    running.from = m_shown;
    running.end = m_refreshes ? m_refreshes->drawAfter(m_shown, running.ms)
                              : m_shown + running.ms * nanosecondsPerMillisecond;
    running.armed = running.end - expectedPaint(running) - running.approach.expected() -
                    TimeSource::current().lead();
    timer.startUntil(running.armed, ms);
}

void PictureTimes::expectPaint(const TaskTimer &timer, qint64 ns)
{
    m_running[&timer].paint.note(ns);
}

void PictureTimes::awaitEnd(const TaskTimer *ended, const std::function<void()> &meanwhile)
{
    const auto it = m_running.find(ended);
    if (it == m_running.end() || it->second.end == 0)
        return;
    const TimeSource &time = TimeSource::current();
    Running &running = it->second;
    const qint64 approach = time.nanoseconds() - running.armed;
    if (approach < 0) { // the link was entered out of turn
        running.end = 0;
        return;
    }
    running.approach.note(approach);
    const qint64 moment = running.end - expectedPaint(running);
    while (meanwhile && time.nanoseconds() < moment - stillness)
        meanwhile();
    time.waitUntil(moment);
}

/// The first paint of its kind is taken to be like the last one of another.
qint64 PictureTimes::expectedPaint(const Running &running) const
{
    return running.paint.count > 0 ? running.paint.expected() : m_lastPaint;
}

void PictureTimes::painted(const TaskTimer *ended, qint64 began)
{
    const qint64 drawn = TimeSource::current().nanoseconds();
    m_lastPaint = drawn - began;
    m_shown = m_refreshes ? m_refreshes->nextAfter(drawn) : drawn;
    const auto it = m_running.find(ended);
    if (it == m_running.end() || it->second.end == 0)
        return;
    Running &running = it->second;
    running.paint.note(m_lastPaint);
    running.end = 0;
    m_intervals.push_back({running.ms, m_shown - running.from});
}

void PictureTimes::forget()
{
    for (auto &[timer, running] : m_running)
        running.end = 0;
}

void PictureTimes::Cost::note(qint64 ns)
{
    last[count % last.size()] = ns;
    ++count;
}

qint64 PictureTimes::Cost::expected() const
{
    std::array<qint64, 9> sorted = last;
    const std::size_t noted = std::min(count, sorted.size());
    if (noted == 0)
        return 0;
    const auto middle = sorted.begin() + std::ptrdiff_t(noted / 2);
    std::nth_element(sorted.begin(), middle, sorted.begin() + std::ptrdiff_t(noted));
    return *middle;
}
