#include "Screen.h"

#include <QApplication>
#include <QEvent>
#include <QPushButton>
#include <QWidget>

#include <algorithm>

Screen::Screen(QObject *parent)
    : QObject(parent)
    , m_hidden(QGuiApplication::platformName() == QLatin1String("offscreen"))
{
    qApp->installEventFilter(this);
}

QWidget *Screen::visible(QLatin1String name)
{
    for (const QWidget *window : QApplication::topLevelWidgets()) {
        if (!window->isVisible())
            continue;
        for (QWidget *widget : window->findChildren<QWidget *>(name)) {
            if (widget->isVisible())
                return widget;
        }
    }
    return nullptr;
}

QWidget *Screen::usable(QLatin1String name)
{
    QWidget *widget = visible(name);
    return widget && widget->isEnabled() ? widget : nullptr;
}

bool Screen::showsButton(const QWidget *window)
{
    const auto buttons = window->findChildren<QPushButton *>();
    return std::any_of(buttons.begin(), buttons.end(),
                       [](const QPushButton *button) { return button->isVisible(); });
}

bool Screen::showsPointer(const QWidget *window)
{
    return window->cursor().shape() != Qt::BlankCursor;
}

bool Screen::isCentred(const QWidget *widget)
{
    constexpr int tolerance = 4; // pixels
    const QPoint centre = widget->mapTo(widget->window(), widget->rect().center());
    return (centre - widget->window()->rect().center()).manhattanLength() <= tolerance;
}

bool Screen::eventFilter(QObject *watched, QEvent *event)
{
    const QEvent::Type type = event->type();
    if (type == QEvent::UpdateRequest)
        return m_hidden;
    if (type == QEvent::CursorChange && watched->isWidgetType()) {
        auto *widget = static_cast<QWidget *>(watched);
        if (widget->isWindow() && showsPointer(widget))
            Q_EMIT pointerAppeared(widget);
        return false;
    }
    if ((type != QEvent::Show && type != QEvent::Hide) || event->spontaneous() ||
        !watched->isWidgetType())
        return false;
    auto *widget = static_cast<QWidget *>(watched);
    if (type == QEvent::Show)
        Q_EMIT appeared(widget);
    else
        Q_EMIT vanished(widget);
    return false;
}
