#pragma once

#include "TimeSource.h"

#include <memory>
#include <vector>

#include <sys/types.h>

class QSocketNotifier;

/// The clock on the wall. The next due timer is watched through a timer descriptor of the kernel:
/// unlike the time-out of a poll, it isn't stretched by a thousandth of the interval (5 ms at a
/// wait of 5 s).
class RealTime final : public TimeSource
{
public:
    static RealTime &instance();

    qint64 nanoseconds() const override;
    QDateTime currentDateTime() const override;
    quint32 seedSeconds() const override;
    qint64 lead() const override;
    void waitUntil(qint64 moment) const override;
    qint64 inputMoment(quint64 timestamp) const override;
    /// Round-robin scheduling for every usual thread of the process, or a better nice value, or
    /// nothing, as far as the system allows it.
    void setUrgent(bool urgent) override;

    /// The latest moment, ns, that an event with this stamp can have had when it is handled `now`.
    /// The X server stamps with its monotonic clock in whole ms, of which 32 bits are sent; a stamp
    /// that isn't within the second before `now` is of another clock, and gives `now`.
    static qint64 latestMoment(quint64 timestamp, qint64 now);

protected:
    void wakeAt(std::optional<qint64> due) override;

private:
    RealTime() = default;
    ~RealTime() override;

    bool open();
    void wake();

    std::vector<pid_t> m_hurried; ///< threads that go before others at present
    int m_descriptor = -1;
    std::unique_ptr<QSocketNotifier> m_notifier;
};
