#include "Stimulus.h"

#include <QPainter>

Stimulus::Stimulus(QWidget *parent)
    : QWidget(parent)
{
}

void Stimulus::paintEvent(QPaintEvent * /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    draw(painter);
}
