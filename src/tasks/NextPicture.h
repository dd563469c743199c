#pragma once

#include <QHash>
#include <QRect>
#include <QRegion>

class QWidget;

/// The picture that a window will show next. It is drawn ahead into the window's store, and put on
/// the screen by itself: what takes long and varies, the drawing, is over before the moment comes.
class NextPicture
{
public:
    explicit NextPicture(QWidget &window);

    /// Draws what has changed since the last picture: the children of the window that were shown,
    /// hidden or moved. The screen stays as it is.
    void draw();
    /// Puts on the screen what was drawn.
    void put();
    /// Puts a part on the screen once more, as it is.
    void putAgain(const QRect &area);

private:
    /// Where the children are that can be seen.
    using Seen = QHash<const QWidget *, QRect>;
    Seen seen() const;

    QWidget &m_window;
    Seen m_last;
    QRegion m_drawn;
};
