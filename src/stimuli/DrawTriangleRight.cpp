#include "DrawTriangleRight.h"

#include "strokes.h"

#include <QPainter>

void DrawTriangleRight::draw(QPainter &painter) const
{
    strokes::drawWhiteArrow(painter, figures::triangleRight(size()));
}
