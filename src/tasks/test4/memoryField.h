#pragma once

#include <QPoint>

#include <cstddef>

/// Where the crosses of the memory task stand: in a ring around the centre of the screen, each in
/// another of its twelve sectors. Shows nothing.
namespace memoryField {

inline constexpr int sectors = 12;
inline constexpr int sectorAngle = 30;  ///< degrees
inline constexpr int innerRadius = 180; ///< pixels, the nearest place
inline constexpr int radii = 180;       ///< pixels: the farthest place is one short of 360
inline constexpr int shortestRun = 2;   ///< crosses, at load index 0
inline constexpr int loads = 6;         ///< load indices 0 to 5, that is 2 to 7 crosses

/// A place in the ring.
struct Place
{
    float angle = 0.0F;  ///< degrees, clockwise from the top
    int radiusExtra = 0; ///< pixels beyond innerRadius, 0 to radii - 1

    /// The pixel, each coordinate cut toward zero.
    QPoint around(const QPoint &centre) const;
};

/// A place anywhere in a sector, 0 to 11 clockwise from the top. Takes two draws.
Place drawn(int sector);

/// The place in the table of generateRand12_3 where the sector of a cross stands. The first cross
/// has the first one; the others begin behind its two neighbours, so that none falls into the
/// sector of the first cross or beside it.
constexpr std::size_t sectorIndex(int crossIndex)
{
    constexpr int neighbours = 2;
    return std::size_t(crossIndex == 0 ? 0 : crossIndex + neighbours);
}

/// Millimetres from a click to the true place, by the pitch of the screen in mm per pixel across
/// and up; never below 1, which keeps its logarithm at or above 0.
double distance(const QPoint &click, const QPoint &place, float horzPitch, float vertPitch);

} // namespace memoryField
