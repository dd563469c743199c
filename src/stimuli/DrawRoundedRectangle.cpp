#include "DrawRoundedRectangle.h"

#include <QPainter>

void DrawRoundedRectangle::draw(QPainter &painter) const
{
    painter.setPen(Qt::white);
    painter.setBrush(Qt::white);
    painter.drawRoundedRect(QRectF(0, 0, width(), height()), radius, radius, Qt::RelativeSize);
}
