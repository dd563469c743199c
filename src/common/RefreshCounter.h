#pragma once

#include "RefreshGrid.h"

#include <memory>

#include <qwindowdefs.h>

/// Asks the X server for the refreshes of a screen (the Present extension). It has a connection of
/// its own, so that no answer comes between those that the toolkit waits for.
class RefreshCounter
{
public:
    RefreshCounter();
    ~RefreshCounter();
    RefreshCounter(const RefreshCounter &) = delete;
    RefreshCounter &operator=(const RefreshCounter &) = delete;

    /// From now on the screen counts on which the middle of this window is. Where nothing is known
    /// of its refreshes (no X server, a virtual screen, an interlaced mode), there will be no grid.
    void watch(WId window);
    /// Asks for the last refresh; takes as long as a question to the server, some 0.1 ms.
    void ask();
    /// None as long as the refreshes aren't known.
    std::optional<RefreshGrid> grid() const { return m_reports.grid(); }

private:
    class Connection;

    std::unique_ptr<Connection> m_connection; ///< none where there is nothing to ask
    RefreshReports m_reports;
};
