#pragma once

#include "statistics.h"

#include <array>
#include <cstddef>

/// The reaction times of a test and the scores that come of them. Shows nothing.
///
/// Practice is taken out of a condition's mean: the reaction times of its first 20 valid trials are
/// fitted against the logarithm of the rank (the learning curve; Newell & Rosenbloom 1981), and
/// each is carried forward to the level of rank 20. The gains from the alert and from the
/// orientation are differences of such means from the neutral condition's (Posner 1980; Fan et al.
/// 2002).
class AttentionScores
{
public:
    static constexpr int conditions = 3; ///< neutral, alerted, oriented
    static constexpr int ranks = 32;     ///< valid trials of a condition in a whole test
    static constexpr int fitted = 20;    ///< of these, the ones of the learning curve

    /// One condition of a score row.
    struct Condition
    {
        double value = 0.0; ///< ms: the neutral mean, or the gain against it; gains can be negative
        double error = 0.0; ///< invalid trials of the condition, percent of all trials of the test
        RegressionResult fit{}; ///< slope in ms per ln(rank)
    };
    using Scores = std::array<Condition, conditions>;

    /// All times to 0.
    void clear();
    /// Keeps a reaction time in ms at a rank from 1. A rank beyond the condition's row lands in the
    /// next row, beyond the last row behind the table; further out it is dropped, as is a rank
    /// below 1.
    void store(int condition, int rank, double rt);
    /// The time at a rank from 1, 0 where there is none.
    double time(int condition, int rank) const;
    /// The same, carried forward, for the ranks of the learning curve; after compute().
    double corrected(int condition, int rank) const;

    /// The scores. The mean is over all 32 places, however many trials there were: an empty place
    /// counts as 0. Equal times leave r2 undefined; it is then what the division gives.
    Scores compute(const std::array<int, conditions> &errors, int trialCount);

private:
    static constexpr int tableSize = conditions * ranks;

    double meanOf(int condition, RegressionResult &fit);

    /// The raw times, and the corrected ones behind them.
    std::array<double, std::size_t{2} * tableSize> m_block{};
};
