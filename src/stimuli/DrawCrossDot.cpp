#include "DrawCrossDot.h"

#include "strokes.h"

#include <QPainter>

void DrawCrossDot::draw(QPainter &painter) const
{
    painter.setPen(strokes::marker(Qt::white, 2.0, Qt::DotLine));
    strokes::drawCross(painter, size());
}
