#pragma once

#include <array>
#include <span>

/// The measurement of one exposure threshold: a staircase that goes one step down after a success
/// and one step up after a failure (Dixon & Mood 1948; Cornsweet 1962), so that it settles where
/// both are as likely (Levitt 1971). The steps are indices of the table of exposures.
///
/// The result is the geometric mean of eight turning points, four peaks and four troughs, each four
/// within three neighbouring steps. It is there when the track has 20 entries or more.
class Staircase
{
public:
    static constexpr int least = 20;    ///< entries that a result needs
    static constexpr int ceiling = 50;  ///< entries at which the measure is given up
    static constexpr int groupSize = 4; ///< peaks, and troughs, that a result needs

    /// A settled group: turning points in the order in which they were found, the last one first.
    using Group = std::array<short, groupSize>;

    /// What has been measured; all zero before the first result.
    struct Score
    {
        double mean = 0.0; ///< ms, geometric mean of the eight turning points
        double sup = 0.0;  ///< ms, geometric mean of the four peaks
        double inf = 0.0;  ///< ms, geometric mean of the four troughs
        int limitSup = 0;  ///< peaks beyond the longest exposure
        int limitInf = 0;  ///< troughs below the shortest one, and trials without an answer
    };

    /// Empties the track.
    void clear();
    /// Puts the first entry on the track: the shortest exposure of the frequency's row that is at
    /// least `exposure`. Frequency 0 is 60 Hz, 1 is 120 Hz.
    void seed(int frequency, int exposure);
    /// Position 0 again; the track keeps its entries.
    void rewind();

    /// One trial with a full answer. Beyond a limit the walk is reflected, which takes a second
    /// entry on the track; true is returned then.
    bool step(bool success);
    /// The trial is over: one position further. A trial that made no step leaves a 0 there.
    void advance();
    /// Looks for turning points at the position just reached, and for settled groups of them. To
    /// be called once behind every advance(). True if there is a result now; it is computed anew.
    bool analyse();

    int index() const { return m_index; }       ///< 1 to 20
    int exposure() const;                       ///< ms, of the present index
    int position() const { return m_position; } ///< on the track; the entry at 0 is the start
    bool isSpent() const { return m_position >= ceiling; }
    /// Both peaks and troughs have settled, with 20 entries or with fewer.
    bool isSettled() const { return m_peaks.found && m_troughs.found; }
    int reversals() const { return m_peaks.count + m_troughs.count; }
    const Score &score() const { return m_score; }

    /// The entries up to the position, the start first. 0 and 21 stand for the limits.
    std::span<const short> track() const;
    std::span<const short> peaks() const { return m_peaks.points(); }
    std::span<const short> troughs() const { return m_troughs.points(); }
    /// The settled groups, each the most recent one; of no meaning before both have settled.
    const Group &peakGroup() const { return m_peaks.settled; }
    const Group &troughGroup() const { return m_troughs.settled; }

private:
    /// More than a test can reach: every trial takes two entries at the most, and the slowest of
    /// three subtasks ends the test at 50.
    static constexpr int capacity = 2 * (ceiling + 2);

    /// The peaks or the troughs.
    struct TurningPoints
    {
        std::array<short, capacity> values{};
        int count = 0;
        bool found = false;
        Group settled{};

        void add(short value);
        void search();
        std::span<const short> points() const { return {values.data(), std::size_t(count)}; }
    };

    void enter(int value);
    short at(int position) const { return m_track[std::size_t(position)]; }
    void findTurningPoints();
    void computeScore();

    std::array<short, capacity> m_track{};
    int m_frequency = 0;
    int m_index = 0;
    int m_position = 0;
    TurningPoints m_peaks;
    TurningPoints m_troughs;
    Score m_score;
};
