#pragma once

#include "TimeSource.h"

#include <QObject>
#include <QTimer>

/// Time that nobody waits for. It takes the place of real time while it lives.
///
/// Free-running, the clock jumps to the next timer whenever the event queue is empty, so that a
/// test of minutes takes a fraction of a second and always the same course. Otherwise it stands
/// still until advance() moves it, which is how a unit test steps through a chain of timers.
class VirtualTime final : public QObject, public TimeSource
{
    Q_OBJECT

public:
    enum class Mode { Stepped, FreeRunning };

    /// The clock starts at this date; the seeds start at this number and go on with its seconds.
    explicit VirtualTime(Mode mode, const QDateTime &start = defaultStart(), quint32 seed = 1);
    ~VirtualTime() override;

    /// Monday, 6 January 2025, nine o'clock, in no time zone.
    static QDateTime defaultStart();

    qint64 nanoseconds() const override { return m_now; }
    QDateTime currentDateTime() const override;
    quint32 seedSeconds() const override;
    void hold() override;
    void release() override;

    /// Moves the clock on by this many ms and fires every timer that falls due on the way, each at
    /// its own moment. With a free-running clock it isn't needed.
    void advance(int ms);

protected:
    void wakeAt(std::optional<qint64> due) override;
    bool event(QEvent *event) override;

private:
    void noteIdle();
    void postProbe();
    void jump();

    const Mode m_mode;
    const QDateTime m_start;
    const quint32 m_seed;
    qint64 m_now = 0;
    int m_held = 0;
    int m_probes = 0; ///< still to be sent round before the next jump
    QTimer m_idle;    ///< fires when the event queue is empty
};
