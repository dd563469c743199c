#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

/// A rectangle of the screen, in pixels from its upper left corner.
struct Area
{
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;

    bool isEmpty() const { return width <= 0 || height <= 0; }
    Area cut(const Area &other) const; ///< what both have in common
    bool operator==(const Area &) const = default;
};

/// What a place of the screen looked like when it was last looked at. It is kept up by looks at
/// parts of it, so that a large place costs no more than what has changed in it.
class Shadow
{
public:
    /// A pixel as the server gives it: blue in the lowest byte, then green and red.
    using Pixel = std::uint32_t;

    Shadow(std::string name, const Area &area); ///< black

    /// Takes a fresh look at a part of the place, row by row. How many pixels it has changed.
    int look(const Area &part, std::span<const Pixel> pixels);

    const std::string &name() const { return m_name; }
    const Area &area() const { return m_area; }
    /// The same for the same picture, whatever the way that led to it.
    std::uint64_t hash() const { return m_hash; }
    double brightness() const; ///< mean of all colours of all pixels, 0 to 255

private:
    std::string m_name;
    Area m_area;
    std::vector<Pixel> m_pixels;
    std::uint64_t m_hash = 0;
    std::int64_t m_light = 0;
};
