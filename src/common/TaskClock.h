#pragma once

#include <QtGlobal>

/// A stop watch in whole milliseconds, monotonic. An unstarted one reads 0.
class TaskClock
{
public:
    void start();
    /// Starts at this moment of the time source, ns.
    void startAt(qint64 moment) { m_start = moment; }
    /// Starts again and returns what it read before.
    int restart();
    /// Milliseconds since the start, the fraction dropped.
    int elapsed() const;
    /// What it read at this moment, ns; not less than 0.
    int elapsedAt(qint64 moment) const;

private:
    qint64 m_start = -1; ///< ns of the time source, -1 before the first start
};
