#include "DrawCross.h"

#include "strokes.h"

#include <QPainter>

void DrawCross::draw(QPainter &painter) const
{
    painter.setPen(Qt::white);
    strokes::drawCross(painter, size());
}
