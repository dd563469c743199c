#pragma once

#include "moment.h"

#include <vector>

/// What there is to say about a set of errors.
struct Spread
{
    std::size_t count = 0;
    moment::Ns median = 0; ///< the lower of the middle two for an even count
    moment::Ns p95 = 0;
    moment::Ns p99 = 0;
    moment::Ns worst = 0; ///< the greatest

    /// Percentiles are values of the set: the smallest one that so many percent don't exceed. All
    /// zero for an empty set.
    static Spread of(std::vector<moment::Ns> values);
};
