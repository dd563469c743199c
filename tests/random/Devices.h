#pragma once

#include <QPoint>
#include <QString>
#include <Qt>

class QWidget;

/// Keyboard and mouse, as the window system hands them on: to the window that has the focus or the
/// place, from where the toolkit finds the widget, the shortcut or the popup that takes them. The
/// stamps are given, so that a run can be repeated.
namespace devices {

struct Key
{
    int key = 0;
    Qt::KeyboardModifiers modifiers;
    QString text;
    bool repeated = false; ///< as the toolkit marks the press of a held key
};

/// The widget that would get a key now; none if no window has the focus.
QWidget *keyReceiver();
/// Nothing happens if no window has the focus.
void press(const Key &key, quint64 stamp);
void release(const Key &key, quint64 stamp);

struct Mouse
{
    QWidget *window = nullptr;
    QPoint at; ///< of the window
    Qt::MouseButton button = Qt::NoButton;
    Qt::MouseButtons held; ///< behind the event
    Qt::KeyboardModifiers modifiers;
};

void pressButton(const Mouse &mouse, quint64 stamp);
void releaseButton(const Mouse &mouse, quint64 stamp);
void move(const Mouse &mouse, quint64 stamp);
void turnWheel(const Mouse &mouse, const QPoint &angle, quint64 stamp);
/// The window manager closes a window.
void close(QWidget *window);

/// What the window system and the program have posted is dealt with. No timer of the toolkit fires,
/// since these go by the clock on the wall.
void settle();

} // namespace devices
