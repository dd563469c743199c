#include "DrawArrow.h"

#include "strokes.h"

#include <QPainter>

void DrawArrow::draw(QPainter &painter) const
{
    painter.translate(width() * 0.5, height() * 0.5);
    painter.rotate(rotation);
    strokes::drawWhiteArrow(painter, figures::arrow(size()));
}
