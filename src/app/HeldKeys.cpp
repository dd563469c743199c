#include "HeldKeys.h"

#include <QCoreApplication>
#include <QKeyEvent>

bool HeldKeys::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::KeyRelease) {
        const auto *release = static_cast<QKeyEvent *>(event);
        m_releasedKey = release->key();
        m_releasedAt = release->timestamp();
    } else if (event->type() == QEvent::ShortcutOverride) {
        // Taken here, it starts no shortcut; the press itself follows.
        const auto *press = static_cast<QKeyEvent *>(event);
        if (press->isAutoRepeat() || isRepeated(*press)) {
            event->accept();
            return true;
        }
    } else if (event->type() == QEvent::KeyPress) {
        const auto *press = static_cast<QKeyEvent *>(event);
        if (isRepeated(*press)) {
            QKeyEvent marked(QEvent::KeyPress, press->key(), press->modifiers(), press->text(),
                             true, static_cast<quint16>(press->count()));
            QCoreApplication::sendEvent(watched, &marked);
            event->setAccepted(marked.isAccepted());
            return true;
        }
    }
    return QObject::eventFilter(watched, event);
}

bool HeldKeys::isRepeated(const QKeyEvent &press) const
{
    return !press.isAutoRepeat() && press.timestamp() != 0 && press.timestamp() == m_releasedAt &&
           press.key() == m_releasedKey;
}
