#include "hands.h"

#include <QApplication>
#include <QCheckBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>

namespace {

QWidget *focus()
{
    QWidget *widget = QApplication::focusWidget();
    return widget ? widget : QApplication::activeWindow();
}

void sendMouse(QEvent::Type type, QWidget *to, const QPoint &at)
{
    const Qt::MouseButtons held =
        type == QEvent::MouseButtonPress ? Qt::MouseButtons(Qt::LeftButton) : Qt::NoButton;
    QMouseEvent event(type, at, to->mapTo(to->window(), at), to->mapToGlobal(at), Qt::LeftButton,
                      held, Qt::NoModifier);
    QCoreApplication::sendEvent(to, &event);
}

} // namespace

void hands::press(Qt::Key key, const QString &text)
{
    if (QWidget *to = focus())
        pressOn(to, key, text);
}

void hands::pressOn(QWidget *widget, Qt::Key key, const QString &text)
{
    for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(type, key, Qt::NoModifier, text);
        QCoreApplication::sendEvent(widget, &event);
    }
}

void hands::type(QWidget *into, const QString &text)
{
    into->setFocus();
    if (auto *edit = qobject_cast<QLineEdit *>(into))
        edit->clear();
    for (const QChar letter : text)
        pressOn(into, Qt::Key_unknown, QString(letter));
}

void hands::click(QWidget *widget)
{
    constexpr int mark = 8; // pixels from the left, well within the box
    QPoint at = widget->rect().center();
    if (qobject_cast<const QCheckBox *>(widget))
        at.setX(mark);
    clickAt(widget, at);
}

void hands::clickAt(QWidget *widget, const QPoint &at)
{
    sendMouse(QEvent::MouseButtonPress, widget, at);
    sendMouse(QEvent::MouseButtonRelease, widget, at);
}

void hands::clickAside()
{
    constexpr QPoint aside(10, 700);
    if (QWidget *to = focus())
        clickAt(to->window(), aside);
}
