#pragma once

#include <QObject>

class QKeyEvent;

/// Tells the presses of a key that is held down from a person's presses, for the whole program.
///
/// While a key is held, the X server sends a release and a press with one and the same time stamp,
/// about 25 times a second. The toolkit marks such presses as repeated only if both have arrived
/// when it looks, so that every now and then, and on a quick machine mostly, a held Space would
/// pass for an answer and a held Escape for a second one. Installed on the application, this makes
/// every such press a repeated one. A repeated press, however it was found out, starts no shortcut.
class HeldKeys : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool isRepeated(const QKeyEvent &press) const;

    int m_releasedKey = 0;
    quint64 m_releasedAt = 0; ///< time stamp of the last release, in ms; 0 before the first
};
