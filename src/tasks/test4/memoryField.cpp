#include "memoryField.h"

#include "randomness.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace memoryField {

QPoint Place::around(const QPoint &centre) const
{
    constexpr double halfTurn = 180.0;
    const double a = double(angle) * std::numbers::pi / halfTurn;
    const int r = radiusExtra + innerRadius;
    return {int(centre.x() + r * std::sin(a)), int(centre.y() - r * std::cos(a))};
}

Place drawn(int sector)
{
    Place place;
    place.angle = float(sector * sectorAngle + randomness::next() % sectorAngle);
    place.radiusExtra = randomness::next() % radii;
    return place;
}

double distance(const QPoint &click, const QPoint &place, float horzPitch, float vertPitch)
{
    const double dx = float(click.x() - place.x()) * horzPitch;
    const double dy = float(click.y() - place.y()) * vertPitch;
    return std::max(std::sqrt(dx * dx + dy * dy), 1.0);
}

} // namespace memoryField
