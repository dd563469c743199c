#include "NextPicture.h"

#include <QBackingStore>
#include <QWidget>

NextPicture::NextPicture(QWidget &window)
    : m_window(window)
{
}

NextPicture::Seen NextPicture::seen() const
{
    Seen seen;
    const auto children = m_window.findChildren<QWidget *>(Qt::FindDirectChildrenOnly);
    for (const QWidget *child : children) {
        if (child->isVisible() && !child->isWindow())
            seen.insert(child, child->geometry());
    }
    return seen;
}

void NextPicture::draw()
{
    const Seen now = seen();
    m_drawn = {};
    for (auto it = m_last.cbegin(); it != m_last.cend(); ++it) {
        if (now.value(it.key()) != it.value())
            m_drawn += it.value();
    }
    for (auto it = now.cbegin(); it != now.cend(); ++it) {
        if (m_last.value(it.key()) != it.value())
            m_drawn += it.value();
    }
    m_last = now;
    m_drawn &= m_window.rect();
    QBackingStore *store = m_window.backingStore();
    if (m_drawn.isEmpty() || !store)
        return;
    store->beginPaint(m_drawn);
    m_window.render(store->paintDevice(), m_drawn.boundingRect().topLeft(), m_drawn);
    store->endPaint();
}

void NextPicture::put()
{
    QBackingStore *store = m_window.backingStore();
    if (!m_drawn.isEmpty() && store)
        store->flush(m_drawn.boundingRect()); // in one piece, so that no part comes before another
    m_drawn = {};
}

void NextPicture::putAgain(const QRect &area)
{
    if (QBackingStore *store = m_window.backingStore())
        store->flush(area);
}
