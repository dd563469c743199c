#include "DrawTriangleLeft.h"

#include "strokes.h"

#include <QPainter>

void DrawTriangleLeft::draw(QPainter &painter) const
{
    strokes::drawWhiteArrow(painter, figures::triangleLeft(size()));
}
