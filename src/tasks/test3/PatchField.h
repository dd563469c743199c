#pragma once

#include <array>

/// The directions in which the 80 patches of the movement detection task drift. Shows nothing.
/// Directions are indices of tables::_dirMovement: 0 right, 1 down, 2 left, 3 up.
struct PatchField
{
    static constexpr int groups = 8;
    static constexpr int groupSize = 9;
    static constexpr int ringSize = 8;
    static constexpr int directions = 4;

    enum Condition {
        Random, ///< each patch for itself
        Crowd,  ///< all in one direction but one patch of each group and of the ring; not the shown
        Single, ///< the shown patch, and one of each group, against all others
    };

    /// The field of a trial, by draws from `randomness`.
    /// @param shown the ring patch that is asked for, 0 to 7
    static PatchField drawn(Condition condition, int shown);

    std::array<std::array<int, groupSize>, groups> dot{};
    std::array<int, ringSize> ring{};
};
