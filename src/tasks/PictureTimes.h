#pragma once

#include "RefreshGrid.h"
#include "rows.h"

#include <QtGlobal>

#include <array>
#include <functional>
#include <optional>
#include <unordered_map>
#include <vector>

class TaskTimer;

/// When the pictures of a trial were shown. An interval of the chain runs from the paint of one
/// picture to the paint of the next, so that what it takes to paint lengthens none of them: the
/// timer is armed early, and the paint waits for its moment. All moments are ns of the time source.
///
/// Where the refreshes of the screen are known, a picture is there when it is on the glass, and an
/// interval is the number of refreshes that comes closest to it.
class PictureTimes
{
public:
    /// A trial begins: its intervals, and the refreshes of the screen if they are known.
    void beginTrial(const std::optional<RefreshGrid> &refreshes = std::nullopt);
    /// Starts the timer of an interval of `ms` that began with the last picture.
    void begin(TaskTimer &timer, int ms);
    /// What the paint at the end of such an interval will take, ns, as far as is known beforehand.
    void expectPaint(const TaskTimer &timer, qint64 ns);
    /// Before a paint: waits for the moment at which it has to begin, so that it is over when the
    /// interval of `ended` is. A timer that is null, or hasn't just fired, is not waited for. Up to
    /// a little before the moment `meanwhile` is called again and again.
    void awaitEnd(const TaskTimer *ended, const std::function<void()> &meanwhile = {});
    /// Behind a paint that began at `began`, and that ends the interval of `ended` if it has one.
    void painted(const TaskTimer *ended, qint64 began);
    /// When the last picture was there.
    qint64 shown() const { return m_shown; }
    /// What was begun counts no more: the trial was stopped.
    void forget();

    /// The intervals of the trial that are over, in their order.
    const std::vector<rows::ShownInterval> &intervals() const { return m_intervals; }
    const std::optional<RefreshGrid> &refreshes() const { return m_refreshes; }

private:
    /// How long something took the last times, at the end of one interval.
    struct Cost
    {
        void note(qint64 ns);
        /// The median of what was noted; 0 before that.
        qint64 expected() const;

        std::array<qint64, 9> last{};
        std::size_t count = 0;
    };

    struct Running
    {
        qint64 from = 0;
        qint64 armed = 0; ///< when the timer is due
        qint64 end = 0;   ///< 0: none is running
        int ms = 0;
        Cost approach; ///< from the timer to the paint
        Cost paint;
    };

    qint64 expectedPaint(const Running &running) const;

    qint64 m_shown = 0;
    qint64 m_lastPaint = 0; ///< how long it took, whatever it ended
    std::unordered_map<const TaskTimer *, Running> m_running;
    std::vector<rows::ShownInterval> m_intervals;
    std::optional<RefreshGrid> m_refreshes;
};
