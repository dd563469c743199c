#include "screens.h"

#include <QScreen>
#include <QWidget>

QScreen *screens::of(const QWidget &dialog)
{
    const QWidget *window = dialog.window();
    while (window->parentWidget() != nullptr)
        window = window->parentWidget()->window();
    return window->screen();
}
