#include "PatchGlance.h"

#include "DrawArrow.h"

#include <QtMath>

#include <cstdlib>
#include <limits>

namespace {

constexpr int distance = 84; // pixels, right and down, from the arrow to the next patches
constexpr int side = 42;     // of a patch

/// One patch to the side, up or down, or both.
QPoint pointedAt(const DrawArrow &arrow)
{
    const double angle = qDegreesToRadians(arrow.rotation);
    return {qRound(std::cos(angle)), qRound(std::sin(angle))};
}

QPoint step(PatchGlance::Direction direction)
{
    constexpr QPoint steps[] = {{1, 0}, {0, 1}, {-1, 0}, {0, -1}};
    return steps[direction];
}

/// How much the later picture differs from the earlier one moved by so much, in grey values of all
/// pixels that both show. The count is given up when it isn't below the best any more.
int difference(const QImage &earlier, const QImage &later, const QPoint &moved, int best)
{
    // The same pixels for every movement, or else a smaller overlap would seem more alike.
    constexpr int margin = PatchGlance::farthest;
    int sum = 0;
    for (int y = margin; y < side - margin && sum < best; ++y) {
        const uchar *before = earlier.constScanLine(y - moved.y()) - moved.x();
        const uchar *now = later.constScanLine(y);
        for (int x = margin; x < side - margin; ++x)
            sum += std::abs(int(before[x]) - int(now[x]));
    }
    return sum;
}

} // namespace

PatchGlance::PatchGlance(const DrawArrow &arrow)
    : m_picture(side, side, QImage::Format_RGB32)
{
    QWidget *window = arrow.window();
    const QPoint middle = arrow.mapTo(window, QPoint(arrow.width() / 2, arrow.height() / 2));
    const QPoint corner = middle + pointedAt(arrow) * distance - QPoint(side / 2, side / 2);
    m_picture.fill(Qt::black); // behind the edge of the window nothing can be seen
    const QRect place = QRect(corner, QSize(side, side)) & window->rect();
    if (!place.isEmpty())
        window->render(&m_picture, place.topLeft() - corner, place);
    m_picture.convertTo(QImage::Format_Grayscale8);
}

std::optional<PatchGlance::Direction> PatchGlance::movedSince(const PatchGlance &earlier) const
{
    constexpr int most = std::numeric_limits<int>::max();
    std::optional<Direction> found;
    int best = difference(earlier.m_picture, m_picture, QPoint(), most);
    for (int shift = 1; shift <= farthest; ++shift) {
        for (const Direction direction : {Right, Down, Left, Up}) {
            const int other =
                difference(earlier.m_picture, m_picture, step(direction) * shift, best);
            if (other < best) {
                best = other;
                found = direction;
            }
        }
    }
    return found;
}

const DrawArrow *PatchGlance::arrow(const QWidget *widget)
{
    return qobject_cast<const DrawArrow *>(widget);
}

bool PatchGlance::isOblique(const DrawArrow &arrow)
{
    const QPoint at = pointedAt(arrow);
    return at.x() != 0 && at.y() != 0;
}
