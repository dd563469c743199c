#pragma once

#include "memoryField.h"
#include "statistics.h"

#include <array>

/// The distances of a memory test and the scores that come of them. Shows nothing.
///
/// A distance enters by its natural logarithm, so that means are geometric ones. Practice is taken
/// out of them: the logarithms of the 30 valid trials are fitted against the logarithm of the rank
/// (Newell & Rosenbloom 1981) and carried forward to the level of rank 30, for the first cross and
/// for the last one apart. A second line, of the corrected distances of the first cross against the
/// load, tells by which factor the distance grows with each further cross.
class MemoryScores
{
public:
    static constexpr int ranks = 30;                          ///< valid trials of a whole test
    static constexpr int blocks = ranks / memoryField::loads; ///< each holds every load once

    struct Scores
    {
        double averageF = 0.0;        ///< mm, first cross, at the level of practice of rank 30
        double averageL = 0.0;        ///< mm, last cross, likewise
        double error = 0.0;           ///< invalid trials, percent of the valid ones
        RegressionResult practiceF{}; ///< ln(mm) of the first cross per ln(rank)
        RegressionResult practiceL{}; ///< the same of the last cross
        double slope = 0.0;           ///< factor by which the first distance grows per load
        double intercept = 0.0;       ///< mm, first distance at the lowest load
        double r2 = 0.0;              ///< of the line against the load
    };

    /// All distances, loads and counts to 0.
    void clear();
    /// Keeps the distances in mm (1 or more) of a valid trial at a load index. A rank (from 0)
    /// outside the table is dropped; its load is counted in any case.
    void store(int rank, int load, double distFirst, double distLast);
    /// The load index at a rank from 0 to 29.
    int load(int rank) const { return m_loads.at(std::size_t(rank)); }
    /// Trials stored at a load index since clear().
    int count(int load) const { return m_counts.at(std::size_t(load)); }

    /// The scores of 30 ranks, however many trials there were: an empty one counts as ln(mm) 0 at
    /// load 0. The line against the load takes the ranks as five blocks that hold each load once;
    /// of a block that holds a load twice the later trial counts, and a place that no trial has
    /// reached is 0. Equal distances leave r2 undefined; it is then what the division gives.
    Scores compute(int errors, int trialCount) const;

private:
    using Distances = std::array<double, ranks>;

    Distances m_lnFirst{};
    Distances m_lnLast{};
    std::array<int, ranks> m_loads{};
    std::array<int, memoryField::loads> m_counts{};
};
