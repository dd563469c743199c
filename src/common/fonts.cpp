#include "fonts.h"

#include <QFontInfo>
#include <QWidget>

void raiseFonts(std::initializer_list<QWidget *> group, int points)
{
    if (group.size() == 0)
        return;
    QFont font = (*group.begin())->font();
    const int size = font.pointSize() > 0 ? font.pointSize() : QFontInfo(font).pointSize();
    font.setPointSize(size + points);
    for (QWidget *widget : group)
        widget->setFont(font);
}
