#include "DrawCircle.h"

#include <QPainter>

void DrawCircle::draw(QPainter &painter) const
{
    painter.setPen(Qt::white);
    painter.setBrush(Qt::transparent);
    painter.drawEllipse(rect());
}
