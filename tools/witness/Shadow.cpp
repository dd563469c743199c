#include "Shadow.h"

#include <algorithm>

namespace {

constexpr Shadow::Pixel colours = 0xFFFFFF; // the highest byte means nothing

/// A share of the hash that depends on the pixel and on where it stands (the finalizer of
/// SplitMix64). A black pixel has none, so that a black place has the hash 0.
std::uint64_t share(std::size_t at, Shadow::Pixel pixel)
{
    if (pixel == 0)
        return 0;
    std::uint64_t mixed = (std::uint64_t(at) << 24U | pixel) + 0x9E3779B97F4A7C15U;
    mixed = (mixed ^ (mixed >> 30U)) * 0xBF58476D1CE4E5B9U;
    mixed = (mixed ^ (mixed >> 27U)) * 0x94D049BB133111EBU;
    return mixed ^ (mixed >> 31U);
}

std::int64_t light(Shadow::Pixel pixel)
{
    return (pixel & 0xFFU) + (pixel >> 8U & 0xFFU) + (pixel >> 16U & 0xFFU);
}

} // namespace

Area Area::cut(const Area &other) const
{
    const int left = std::max(x, other.x);
    const int top = std::max(y, other.y);
    return {left, top, std::min(x + width, other.x + other.width) - left,
            std::min(y + height, other.y + other.height) - top};
}

Shadow::Shadow(std::string name, const Area &area)
    : m_name(std::move(name))
    , m_area(area)
    , m_pixels(std::size_t(area.width) * std::size_t(area.height))
{
}

int Shadow::look(const Area &part, std::span<const Pixel> pixels)
{
    int changed = 0;
    for (int y = 0; y < part.height; ++y) {
        for (int x = 0; x < part.width; ++x) {
            const std::size_t at = std::size_t(part.y - m_area.y + y) * std::size_t(m_area.width) +
                                   std::size_t(part.x - m_area.x + x);
            const Pixel fresh =
                pixels[std::size_t(y) * std::size_t(part.width) + std::size_t(x)] & colours;
            Pixel &kept = m_pixels[at];
            if (fresh == kept)
                continue;
            m_hash += share(at, fresh) - share(at, kept);
            m_light += light(fresh) - light(kept);
            kept = fresh;
            ++changed;
        }
    }
    return changed;
}

double Shadow::brightness() const
{
    constexpr double channels = 3.0;
    return double(m_light) / (channels * double(m_pixels.size()));
}
