#pragma once

#include "statistics.h"

#include <array>

/// The reaction times of a movement detection test and the scores that come of them. Shows nothing.
///
/// Practice is taken out of the mean: the reaction times of the 40 valid trials are fitted against
/// the logarithm of the rank (Newell & Rosenbloom 1981) and carried forward to the level of rank
/// 40. The means by place are of the raw times.
class MovementScores
{
public:
    static constexpr int ranks = 40; ///< valid trials of a whole test
    static constexpr int places = 8; ///< ring patches, in the order of tables::_roseVents

    struct Scores
    {
        double rt = 0.0;        ///< ms, mean at the level of practice of rank 40
        double error = 0.0;     ///< invalid trials, percent of all trials
        RegressionResult fit{}; ///< slope in ms per ln(rank)
        double oblique = 0.0;   ///< ms, mean of the four oblique places
        double cardinal = 0.0;  ///< ms, of the four others
        double left = 0.0;      ///< ms, of the three places on the left
        double right = 0.0;
        double top = 0.0;
        double bottom = 0.0;
    };

    /// All times and sums to 0.
    void clear();
    /// Keeps the reaction time in ms of a valid trial. A rank (from 0) behind the last one lands
    /// among the corrected times, further out it is dropped; its place is summed in any case.
    void store(int rank, int place, double rt);
    /// The time at a rank from 0; 0 where there is none.
    double time(int rank) const;
    /// The same, carried forward; after compute().
    double corrected(int rank) const;

    /// The scores. Empty places of the table count as 0, and the means by place are of a whole
    /// test's 5 trials a place, however many trials there were. Equal times leave r2 undefined; it
    /// is then what the division gives.
    Scores compute(int errors, int trialCount);

private:
    /// The raw times, and the corrected ones behind them.
    std::array<double, 2 * std::size_t{ranks}> m_block{};
    std::array<double, places> m_sums{}; ///< ms, of the raw times by place
};
