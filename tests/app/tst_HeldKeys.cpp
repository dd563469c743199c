#include "HeldKeys.h"

#include <QApplication>
#include <QKeyEvent>
#include <QTest>
#include <QWidget>

namespace {

/// Notes each press that it gets, and whether it is a repeated one.
class Listener : public QWidget
{
public:
    QStringList presses;

protected:
    void keyPressEvent(QKeyEvent *event) override
    {
        presses.append(event->isAutoRepeat() ? QStringLiteral("repeated")
                                             : QStringLiteral("pressed"));
    }
};

} // namespace

/// The X server tells a held key as releases and presses with one time stamp.
class tst_HeldKeys : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { qApp->installEventFilter(&m_heldKeys); }
    void cleanup() { qApp->removeEventFilter(&m_heldKeys); }

    void aHeldKeyIsPressedOnce()
    {
        Listener listener;
        send(listener, QEvent::KeyPress, Qt::Key_Space, 1000);
        for (const quint64 at : {1500ULL, 1540ULL, 1580ULL}) {
            send(listener, QEvent::KeyRelease, Qt::Key_Space, at);
            send(listener, QEvent::KeyPress, Qt::Key_Space, at);
        }
        const QStringList expected{QStringLiteral("pressed"), QStringLiteral("repeated"),
                                   QStringLiteral("repeated"), QStringLiteral("repeated")};
        QCOMPARE(listener.presses, expected);
    }

    void twoPressesAreTwo()
    {
        Listener listener;
        send(listener, QEvent::KeyPress, Qt::Key_Space, 1000);
        send(listener, QEvent::KeyRelease, Qt::Key_Space, 1060);
        send(listener, QEvent::KeyPress, Qt::Key_Space, 1061);
        QCOMPARE(listener.presses,
                 (QStringList{QStringLiteral("pressed"), QStringLiteral("pressed")}));
    }

    void anotherKeyAtTheSameMomentIsNoRepeat()
    {
        Listener listener;
        send(listener, QEvent::KeyRelease, Qt::Key_E, 1000);
        send(listener, QEvent::KeyPress, Qt::Key_Space, 1000);
        QCOMPARE(listener.presses, QStringList{QStringLiteral("pressed")});
    }

    void aPressWithoutATimeIsNoRepeat()
    {
        Listener listener;
        send(listener, QEvent::KeyRelease, Qt::Key_Space, 0);
        send(listener, QEvent::KeyPress, Qt::Key_Space, 0);
        QCOMPARE(listener.presses, QStringList{QStringLiteral("pressed")});
    }

    void aHeldKeyStartsNoShortcut()
    {
        Listener listener;
        send(listener, QEvent::KeyRelease, Qt::Key_Escape, 1000);
        QVERIFY(send(listener, QEvent::ShortcutOverride, Qt::Key_Escape, 1000));
        QVERIFY(!send(listener, QEvent::ShortcutOverride, Qt::Key_Escape, 1100));
    }

    void aPressThatTheToolkitHasMarkedStartsNoShortcutEither()
    {
        Listener listener;
        QVERIFY(!send(listener, QEvent::ShortcutOverride, Qt::Key_C, 1000));
        QVERIFY(send(listener, QEvent::ShortcutOverride, Qt::Key_C, 1500, true));
    }

private:
    /// True if somebody took the event.
    static bool send(QWidget &widget, QEvent::Type type, Qt::Key key, quint64 timeStamp,
                     bool marked = false)
    {
        QKeyEvent event(type, key, Qt::NoModifier, QString(), marked);
        event.setTimestamp(timeStamp);
        event.setAccepted(false);
        QCoreApplication::sendEvent(&widget, &event);
        return event.isAccepted();
    }

    HeldKeys m_heldKeys;
};

QTEST_MAIN(tst_HeldKeys)
#include "tst_HeldKeys.moc"
