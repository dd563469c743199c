#include "figures.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace figures {

namespace {

// The patches of the movement task scroll by up to 14 pixels: a spacing of 15 lets the pattern run
// on without a jump.
constexpr std::array<int, 4> gratingOffsets{2, 17, 32, 47};

} // namespace

int truncated(double value)
{
    // One less than the range on the negative side, so that the result can change its sign.
    constexpr int most = std::numeric_limits<int>::max();
    if (std::isnan(value))
        return 0;
    return static_cast<int>(std::clamp(value, -double{most}, double{most}));
}

Cross cross(QSize size)
{
    const int w = size.width();
    const int h = size.height();
    return {QLine(0, h / 2, w, h / 2), QLine(w / 2, 0, w / 2, h)};
}

Grating rows(int width)
{
    Grating lines;
    std::ranges::transform(gratingOffsets, lines.begin(),
                           [width](int y) { return QLine(0, y, width, y); });
    return lines;
}

Grating columns(int height)
{
    Grating lines;
    std::ranges::transform(gratingOffsets, lines.begin(),
                           [height](int x) { return QLine(x, 0, x, height); });
    return lines;
}

Arrow arrow(QSize size)
{
    const int neck = size.width() / 20;
    const int tip = size.width() / 4;
    const int halfShaft = truncated(size.height() * 0.3 / 12.0);
    const int halfHead = truncated(size.height() * 0.3 * 0.25);
    return {QPoint(-tip, -halfShaft), QPoint(neck, -halfShaft), QPoint(neck, -halfHead),
            QPoint(tip, 0),           QPoint(neck, halfHead),   QPoint(neck, halfShaft),
            QPoint(-tip, halfShaft)};
}

Arrow arrowPeriph(QSize size, double ratio)
{
    const int span = truncated(size.height() / ratio);
    const int halfShaft = truncated(span / 6.0);
    const int halfHead = truncated(span * 0.5);
    const int tip = truncated(size.width() * 0.5);
    const int neck = truncated(size.width() / 10.0);
    return {QPoint(-tip, -halfShaft), QPoint(neck, -halfShaft), QPoint(neck, -halfHead),
            QPoint(tip, 0),           QPoint(neck, halfHead),   QPoint(neck, halfShaft),
            QPoint(-tip, halfShaft)};
}

Arrow triangleLeft(QSize size)
{
    const int w = size.width();
    const int h = size.height();
    const int neck = truncated(w / 2.5);
    const int upper = truncated(h / 3.0);
    const int lower = truncated(h / 1.5);
    return {QPoint(0, truncated(h * 0.5)),
            QPoint(neck, 0),
            QPoint(neck, upper),
            QPoint(w, upper),
            QPoint(w, lower),
            QPoint(neck, lower),
            QPoint(neck, h)};
}

Arrow triangleRight(QSize size)
{
    const int w = size.width();
    const int h = size.height();
    const int neck = truncated(w / 1.667);
    const int upper = truncated(h / 3.0);
    const int lower = truncated(h / 1.5);
    return {QPoint(0, upper), QPoint(neck, upper), QPoint(neck, 0), QPoint(w, truncated(h * 0.5)),
            QPoint(neck, h),  QPoint(neck, lower), QPoint(0, lower)};
}

} // namespace figures
