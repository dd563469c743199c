#pragma once

#include <QtGlobal>

#include <deque>
#include <optional>

/// The moments at which a screen begins to show what has been drawn since the last time. They are
/// equally far apart. All moments are ns of the monotonic clock.
class RefreshGrid
{
public:
    /// One moment of the grid, and ns from each to the next; more than 0.
    RefreshGrid(qint64 refresh, double period);

    double period() const { return m_period; }
    /// The first refresh behind this moment: when a picture drawn now is on the glass.
    qint64 nextAfter(qint64 moment) const;
    /// For how many refreshes a picture stands that is to stand for `ms`: the number that comes
    /// closest, but at least one for more than 0 ms.
    int refreshes(int ms) const;
    /// When the picture is to be drawn that takes the place of one that came on the glass at
    /// `shown`, a refresh, and stands for `ms`: in the middle between two refreshes, where neither
    /// a little early nor a little late makes a difference.
    qint64 drawAfter(qint64 shown, int ms) const;

private:
    qint64 m_refresh;
    double m_period;
};

/// What the platform has told of its refreshes, and the grid that follows from it.
class RefreshReports
{
public:
    /// The period that the screen's mode has by its numbers, ns; 0 if it has none. What was told
    /// before counts no more.
    void begin(double modePeriod);
    /// The refresh with this number was at this moment.
    void note(quint64 number, qint64 moment);
    /// The grid, as long as what was told agrees with itself and with the mode. A server that only
    /// plays a screen, or a screen with a varying rate, gives none.
    std::optional<RefreshGrid> grid() const;

private:
    struct Report
    {
        quint64 number;
        qint64 moment;
    };

    double m_modePeriod = 0;
    std::deque<Report> m_reports; ///< the last ones, in their order
};
