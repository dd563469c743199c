#include "Devices.h"

#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QTest>
#include <QWheelEvent>
#include <QWidget>
#include <QWindow>

namespace devices {
namespace {

QWindow *focusWindow()
{
    const QWidget *window = QApplication::activeWindow();
    return window ? window->windowHandle() : nullptr;
}

void send(QWindow *window, QInputEvent &event, quint64 stamp)
{
    event.setTimestamp(stamp);
    QSpontaneKeyEvent::setSpontaneous(&event);
    QCoreApplication::instance()->notify(window, &event);
    settle();
}

void send(QEvent::Type type, const Key &key, quint64 stamp)
{
    QWindow *window = focusWindow();
    if (!window)
        return;
    if (type == QEvent::KeyPress) {
        QObject *focus = window->focusObject() ? window->focusObject() : window;
        if (qt_sendShortcutOverrideEvent(focus, stamp, key.key, key.modifiers, key.text,
                                         key.repeated)) {
            settle();
            return;
        }
    }
    QKeyEvent event(type, key.key, key.modifiers, key.text, key.repeated);
    send(window, event, stamp);
}

void send(QEvent::Type type, const Mouse &mouse, quint64 stamp)
{
    if (QWindow *window = mouse.window->windowHandle()) {
        qt_handleMouseEvent(window, mouse.at, mouse.window->mapToGlobal(mouse.at), mouse.held,
                            mouse.button, type, mouse.modifiers, int(stamp));
        settle();
    }
}

} // namespace

QWidget *keyReceiver()
{
    if (QWidget *popup = QApplication::activePopupWidget())
        return popup->focusWidget() ? popup->focusWidget() : popup;
    QWidget *focus = QApplication::focusWidget();
    return focus ? focus : QApplication::activeWindow();
}

void press(const Key &key, quint64 stamp)
{
    send(QEvent::KeyPress, key, stamp);
}

void release(const Key &key, quint64 stamp)
{
    send(QEvent::KeyRelease, key, stamp);
}

void pressButton(const Mouse &mouse, quint64 stamp)
{
    send(QEvent::MouseButtonPress, mouse, stamp);
}

void releaseButton(const Mouse &mouse, quint64 stamp)
{
    send(QEvent::MouseButtonRelease, mouse, stamp);
}

void move(const Mouse &mouse, quint64 stamp)
{
    send(QEvent::MouseMove, mouse, stamp);
}

void turnWheel(const Mouse &mouse, const QPoint &angle, quint64 stamp)
{
    QWindow *window = mouse.window->windowHandle();
    if (!window)
        return;
    QWheelEvent event(mouse.at, mouse.window->mapToGlobal(mouse.at), QPoint(), angle, mouse.held,
                      mouse.modifiers, Qt::NoScrollPhase, false);
    send(window, event, stamp);
}

void close(QWidget *window)
{
    if (QWindow *frame = window->windowHandle()) {
        QCloseEvent event;
        QCoreApplication::sendEvent(frame, &event); // as the platform sends it
        settle();
    }
}

void settle()
{
    QCoreApplication::processEvents(QEventLoop::X11ExcludeTimers);
}

} // namespace devices
