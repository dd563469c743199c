#include "strokes.h"

#include <QPainter>

namespace strokes {

QPen marker(Qt::GlobalColor colour, double width, Qt::PenStyle style)
{
    return {QBrush(colour), width, style, Qt::SquareCap, Qt::BevelJoin};
}

void drawCross(QPainter &painter, QSize area)
{
    const figures::Cross arms = figures::cross(area);
    painter.drawLines(arms.data(), static_cast<int>(arms.size()));
}

void drawWhiteArrow(QPainter &painter, const figures::Arrow &arrow)
{
    painter.setPen(Qt::white);
    painter.setBrush(Qt::white);
    painter.drawPolygon(arrow.data(), static_cast<int>(arrow.size()), Qt::OddEvenFill);
}

} // namespace strokes
