#pragma once

#include <array>

/// The eight directions of the compass rose as angles on the screen, in degrees. They grow
/// clockwise, since y grows downwards; the names are in tables::_roseVents.
namespace compass {

inline constexpr int directions = 8;
inline constexpr double pi = 3.141592653589793;

inline constexpr std::array<int, directions> _tabRot{0, 45, 90, 135, 180, 225, 270, 315};

} // namespace compass
