#include "DrawLineH.h"

#include "strokes.h"

#include <QPainter>

void DrawLineH::draw(QPainter &painter) const
{
    const figures::Grating lines = figures::rows(width());
    painter.setPen(strokes::marker(Qt::black, 3.0));
    painter.drawLines(lines.data(), static_cast<int>(lines.size()));
}
