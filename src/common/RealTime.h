#pragma once

#include "TimeSource.h"

#include <memory>

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

protected:
    void wakeAt(std::optional<qint64> due) override;

private:
    RealTime() = default;
    ~RealTime() override;

    bool open();
    void wake();

    int m_descriptor = -1;
    std::unique_ptr<QSocketNotifier> m_notifier;
};
