#include "DrawRectangle.h"

#include <QPainter>

void DrawRectangle::draw(QPainter &painter) const
{
    painter.fillRect(rect(), Qt::white);
}
