#include "attentionLayout.h"

#include "compass.h"

#include <cmath>

QPoint attentionLayout::targetPlace(int direction, const QPoint &centre)
{
    const double angle = compass::_tabRot.at(std::size_t(direction)) * compass::pi / 180.0;
    const double left = double(centre.x() - targetHalf) + radius * std::cos(angle);
    const double top = double(centre.y() - targetHalf) + radius * std::sin(angle);
    return {int(left), int(top)}; // truncated, not rounded
}
