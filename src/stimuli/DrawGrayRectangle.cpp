#include "DrawGrayRectangle.h"

#include <QPainter>

#include <algorithm>

void DrawGrayRectangle::draw(QPainter &painter) const
{
    const int level = std::clamp(gray, 0, 255);
    const QColor colour(level, level, level, 255);
    const QRect area = rect();
    painter.setPen(colour);
    painter.setBrush(colour);
    painter.drawRects(&area, 1);
}
