#pragma once

#include "exposures.h"

#include <array>

/// Where the staircase is in the long run, exactly.
///
/// Without its stop rule the staircase is a walk on the indices 1 to 20: down after a success, up
/// after a failure, and reflected at both ends, so that a success at 1 stays at 1 and a failure at
/// 20 at 20. In the long run as many steps lead from i to i + 1 as back:
///     share(i) * failure(i) = share(i + 1) * success(i + 1),
/// which fixes all the shares.
class StationaryWalk
{
public:
    /// The chance of a success by index; those of 0 and 21 are of no meaning.
    using Chances = std::array<double, std::tuple_size_v<exposures::Row>>;

    /// At least one way must lead from every index to every other, or to one that is never left.
    explicit StationaryWalk(const Chances &success);

    /// Share of the trials that are shown at this index, 1 to 20.
    double share(int index) const { return m_shares[std::size_t(index)]; }
    /// Share of the trials that are reflected below the shortest exposure.
    double atFloor() const;
    /// Share of the trials that are reflected beyond the longest exposure.
    double atCeiling() const;
    /// The geometric mean of the exposures shown, ms.
    double geometricMean(const exposures::Row &row) const;

private:
    Chances m_success;
    Chances m_shares{};
};
