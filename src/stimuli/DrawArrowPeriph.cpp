#include "DrawArrowPeriph.h"

#include "strokes.h"

#include <QPainter>

void DrawArrowPeriph::draw(QPainter &painter) const
{
    painter.translate(width() * 0.5, width() * 0.5);
    painter.rotate(rotation);
    strokes::drawWhiteArrow(painter, figures::arrowPeriph(size(), ratio));
}
