#pragma once

#include <QtGlobal>

/// A stop watch in whole milliseconds, monotonic. An unstarted one reads 0.
class TaskClock
{
public:
    void start();
    /// Starts again and returns what it read before.
    int restart();
    /// Milliseconds since the start, the fraction dropped.
    int elapsed() const;

private:
    qint64 m_start = -1; ///< ns of the time source, -1 before the first start
};
