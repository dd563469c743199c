#include "DrawLineSh.h"

#include <QPainter>

void DrawLineSh::draw(QPainter &painter) const
{
    constexpr double hub = 360.0;
    constexpr int spokes = 12;
    constexpr QLine spoke(180, 0, 360, 0);
    painter.setPen(Qt::white);
    painter.translate(hub, hub);
    painter.drawLine(spoke);
    // The last turn comes full circle, and draws the first spoke once more.
    for (int i = 0; i < spokes; ++i) {
        painter.rotate(30.0);
        painter.drawLine(spoke);
    }
}
