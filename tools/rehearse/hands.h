#pragma once

#include <QPoint>
#include <QString>
#include <Qt>

class QWidget;

/// What patient and assessor do: keys that go to whatever has the focus, and clicks. The widget has
/// dealt with an event when the call returns, so that an answer falls into its own millisecond:
/// through the event queue it could come behind the next jump of virtual time.
namespace hands {

/// A key is pressed and let go. The text is what it types, if anything.
void press(Qt::Key key, const QString &text = {});
/// The same on a widget that is about to get the focus.
void pressOn(QWidget *widget, Qt::Key key, const QString &text = {});
/// Types the text into the widget, which gets the focus and loses what it held.
void type(QWidget *into, const QString &text);
/// A click with the left button: on a check box at its mark, on anything else in the middle.
void click(QWidget *widget);
/// A click with the left button at this place of the widget.
void clickAt(QWidget *widget, const QPoint &at);
/// A click with the left button on the window that has the focus, where the pointer is kept during
/// a trial.
void clickAside();

} // namespace hands
