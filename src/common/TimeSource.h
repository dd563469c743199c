#pragma once

#include <QDateTime>

#include <map>
#include <optional>
#include <utility>

class TaskTimer;

/// The one place from which time comes: the clocks, the timers, the date in a row, the seed of a
/// draw. Real time is the default; a VirtualTime takes its place for as long as it lives.
///
/// Both kinds share the queue of armed timers, so that two timers due at the same moment fire in
/// the order in which they were started, with a person in front of the screen as in a rehearsal.
class TimeSource
{
public:
    TimeSource(const TimeSource &) = delete;
    TimeSource &operator=(const TimeSource &) = delete;

    /// The source that is in force. Never fails.
    static TimeSource &current();

    /// Nanoseconds since an origin of no meaning. Monotonic.
    virtual qint64 nanoseconds() const = 0;
    /// Date and time of day, for rows, file names and reports.
    virtual QDateTime currentDateTime() const = 0;
    /// The seconds from which the draws are seeded.
    virtual quint32 seedSeconds() const = 0;

    /// A page that loads or prints takes time that is no patient's: virtual time stands still
    /// between hold() and the matching release(). Real time doesn't notice.
    virtual void hold() {}
    virtual void release() {}

    /// How long before its moment, ns, a timer is best armed when what it does must be on time: the
    /// rest is waited for by waitUntil().
    virtual qint64 lead() const { return 0; }
    /// Returns at this moment, or at once when it is over. It keeps the processor busy, and is for
    /// the last milliseconds of a wait.
    virtual void waitUntil(qint64) const {}
    /// The moment of a key or a click, from the time stamp of its event; a stamp that tells nothing
    /// counts as now.
    virtual qint64 inputMoment(quint64) const { return nanoseconds(); }
    /// True: a trial may run, and the process goes before others where the system allows it.
    virtual void setUrgent(bool) {}

protected:
    TimeSource() = default;
    virtual ~TimeSource();

    /// Called when the moment of the earliest timer has changed; empty when none is armed.
    virtual void wakeAt(std::optional<qint64> due) = 0;

    /// The moment at which the earliest timer is due, if any is armed.
    std::optional<qint64> earliest() const;
    /// Fires the earliest timer if it is due now. At most one, so that a slot which opens a box
    /// leaves the others to the event loop of the box.
    bool fireEarliest();

    static void setCurrent(TimeSource *source);

private:
    friend class TaskTimer;
    using Entry = std::pair<qint64, quint64>; // due, order of starting

    Entry arm(TaskTimer *timer, qint64 due);
    void disarm(const Entry &entry);

    std::map<Entry, TaskTimer *> m_queue;
    quint64 m_started = 0;
};
