#pragma once

#include <QObject>

#include <utility>

class TimeSource;

/// The timer of the tasks, with a QTimer's interface. Intervals are whole milliseconds; a negative
/// one counts as 0, so that no chain of a trial stops by arithmetic. It repeats unless it is made
/// single-shot; a repeating timer keeps to its grid and doesn't add up what it was late.
class TaskTimer : public QObject
{
    Q_OBJECT

public:
    explicit TaskTimer(QObject *parent = nullptr);
    ~TaskTimer() override;

    /// Starts or restarts the timer with this interval in ms. It repeats once a millisecond at
    /// most.
    void start(int ms);
    /// Starts or restarts the timer with the interval it has.
    void start();
    /// Starts or restarts the timer with this interval, to fire at this moment of the time source,
    /// ns.
    void startUntil(qint64 due, int ms);
    void stop();

    bool isActive() const { return m_source != nullptr; }
    int interval() const { return m_interval; }
    /// In ms. An active timer is restarted with it.
    void setInterval(int ms);
    bool isSingleShot() const { return m_singleShot; }
    void setSingleShot(bool singleShot) { m_singleShot = singleShot; }
    /// Whole ms until the next timeout, 0 if it is overdue, -1 if the timer isn't active.
    int remainingTime() const;

Q_SIGNALS:
    void timeout();

private:
    friend class TimeSource;
    void arm(qint64 due);
    void expire();
    void sourceGone();

    TimeSource *m_source = nullptr; ///< where it is armed; none when it isn't
    std::pair<qint64, quint64> m_entry;
    int m_interval = 0;
    bool m_singleShot = false;
};
