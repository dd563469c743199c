#pragma once

#include <span>

struct Outcome;

/// What many visits of one observer came to. What can't be told, because too few visits have
/// settled, is not a number.
struct Summary
{
    int visits = 0;
    double unstable = 0.0;       ///< share of the visits that were given up
    double mean = 0.0;           ///< ms, geometric mean of the results
    double median = 0.0;         ///< ms
    double spread = 0.0;         ///< standard deviation of the results' natural logarithm
    double smallestChange = 0.0; ///< factor between two visits that noise exceeds once in twenty
                                 ///< times, if the logarithms are normal: from the spread
    double change95 = 0.0;       ///< the same, counted: 95 % of the pairs of visits differ by less
    double trialsMean = 0.0;     ///< of all visits, given up or not
    double trials95 = 0.0;       ///< so many or fewer in 95 % of the visits
    double atFloor = 0.0;        ///< share of the results with a trough below the shortest exposure
    double atCeiling = 0.0;      ///< share of the results with a peak beyond the longest one

    /// Of at least one visit. Pairs are the visits 1 and 2, 3 and 4, and so on.
    static Summary of(std::span<const Outcome> outcomes);
};
