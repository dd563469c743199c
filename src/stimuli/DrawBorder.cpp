#include "DrawBorder.h"

#include "strokes.h"

#include <QPainter>

void DrawBorder::draw(QPainter &painter) const
{
    const QRect area = rect();
    painter.setPen(strokes::marker(Qt::red, 3.0));
    painter.setBrush(Qt::NoBrush);
    painter.drawRects(&area, 1);
}
