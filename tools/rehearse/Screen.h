#pragma once

#include <QLatin1String>
#include <QObject>

class QWidget;

/// What can be seen on the screen: the widgets that are visible, and where they are, and the
/// pointer. Patient and assessor know the program through it alone.
class Screen : public QObject
{
    Q_OBJECT

public:
    /// Watches every window of the application for as long as it lives.
    explicit Screen(QObject *parent = nullptr);

    /// The visible widget with this object name in any window; none if there isn't one.
    static QWidget *visible(QLatin1String name);
    /// The same, if it can be used too.
    static QWidget *usable(QLatin1String name);
    /// A button can be seen in this window: it is the assessor's turn.
    static bool showsButton(const QWidget *window);
    /// The pointer can be seen over this window.
    static bool showsPointer(const QWidget *window);
    /// The widget stands in the middle of its window.
    static bool isCentred(const QWidget *widget);

Q_SIGNALS:
    void appeared(QWidget *widget);
    void vanished(QWidget *widget);
    /// A window has given the pointer a shape that can be seen.
    void pointerAppeared(QWidget *window);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    /// Without a display the windows needn't be painted with every change: who looks at one has it
    /// rendered, as it is at that moment.
    const bool m_hidden;
};
