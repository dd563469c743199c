#include "NoiseLabel.h"

#include <QPaintEvent>
#include <QPainter>

NoiseLabel::NoiseLabel(QWidget *parent)
    : QLabel(parent)
{
    setAttribute(Qt::WA_OpaquePaintEvent); // nothing is to be painted behind it
}

QPixmap NoiseLabel::drawn() const
{
    QLabel label;
    label.setStyleSheet(styleSheet());
    label.resize(size());
    // Without transparency, or each copy would look at every pixel for it.
    return QPixmap::fromImage(label.grab().toImage().convertToFormat(QImage::Format_RGB32));
}

void NoiseLabel::paintEvent(QPaintEvent *event)
{
    if (m_picture.deviceIndependentSize() != size() ||
        m_picture.devicePixelRatio() != devicePixelRatioF())
        m_picture = drawn();
    QPainter painter(this);
    painter.setClipRegion(event->region());
    painter.drawPixmap(0, 0, m_picture);
}
