#include "DrawLineV.h"

#include "strokes.h"

#include <QPainter>

void DrawLineV::draw(QPainter &painter) const
{
    const figures::Grating lines = figures::columns(height());
    painter.setPen(strokes::marker(Qt::black, 3.0));
    painter.drawLines(lines.data(), static_cast<int>(lines.size()));
}
