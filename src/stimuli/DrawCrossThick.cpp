#include "DrawCrossThick.h"

#include "strokes.h"

#include <QPainter>

void DrawCrossThick::draw(QPainter &painter) const
{
    painter.setPen(strokes::marker(Qt::white, 2.0));
    strokes::drawCross(painter, size());
}
