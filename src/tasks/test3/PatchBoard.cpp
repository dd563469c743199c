#include "PatchBoard.h"

#include "figures.h"
#include "strokes.h"

#include <QPainter>

#include <algorithm>

namespace {

// Places in pixels from the centre of the board.
constexpr std::array<int, 8> _offsetGroupX{-252, 0, 252, -252, 252, -252, 0, 252};
constexpr std::array<int, 8> _offsetGroupY{252, 252, 252, 0, 0, -252, -252, -252};
constexpr std::array<int, 9> _offsetPointX{-84, 0, 84, -84, 0, 84, -84, 0, 84};
constexpr std::array<int, 9> _offsetPointY{84, 84, 84, 0, 0, 0, -84, -84, -84};
constexpr std::array<int, 8> _offsetCenterPointX{84, 84, 0, -84, -84, -84, 0, 84};
constexpr std::array<int, 8> _offsetCenterPointY{0, 84, 84, 84, 0, -84, -84, -84};

constexpr int lineHalf = 24; // half the side of a grating
constexpr int inGroups = PatchField::groups * PatchField::groupSize;

QPoint shifted(int direction, int shift)
{
    constexpr std::array<QPoint, PatchField::directions> steps{QPoint(1, 0), QPoint(0, 1),
                                                               QPoint(-1, 0), QPoint(0, -1)};
    return steps.at(std::size_t(direction)) * shift;
}

/// One grating, moved by so much from its rest place about the centre of the painter.
void drawGrating(QPainter &painter, const figures::Grating &lines, const QPoint &displacement)
{
    constexpr QRect area(0, 0, 2 * lineHalf, 2 * lineHalf);
    painter.save();
    painter.translate(displacement - QPoint(lineHalf, lineHalf));
    painter.setClipRect(area);
    painter.drawLines(lines.data(), int(lines.size()));
    painter.restore();
}

} // namespace

PatchBoard::PatchBoard(QWidget *parent)
    : Stimulus(parent)
{
    resize(side, side);
}

QPoint PatchBoard::offset(int patch)
{
    if (patch >= inGroups)
        return ringOffset(patch - inGroups);
    const auto group = std::size_t(patch / PatchField::groupSize);
    const auto point = std::size_t(patch % PatchField::groupSize);
    return {_offsetGroupX.at(group) + _offsetPointX.at(point),
            _offsetGroupY.at(group) + _offsetPointY.at(point)};
}

QPoint PatchBoard::ringOffset(int place)
{
    const auto at = std::size_t(place);
    return {_offsetCenterPointX.at(at), _offsetCenterPointY.at(at)};
}

void PatchBoard::setField(const PatchField &field)
{
    auto next = m_direction.begin();
    for (const auto &group : field.dot)
        next = std::ranges::copy(group, next).out;
    std::ranges::copy(field.ring, next);
    update();
}

void PatchBoard::rest()
{
    drift(0);
}

void PatchBoard::drift(int step)
{
    m_shift = step % spacing;
    update();
}

QPoint PatchBoard::displacement(int patch) const
{
    return shifted(m_direction.at(std::size_t(patch)), m_shift);
}

void PatchBoard::draw(QPainter &painter) const
{
    const QPoint middle(width() / 2, height() / 2);
    const QPoint corner(frameHalf, frameHalf);
    for (int patch = 0; patch < patches; ++patch)
        painter.drawPixmap(middle + offset(patch) - corner,
                           picture(m_direction[std::size_t(patch)], m_shift));
}

const QPixmap &PatchBoard::picture(int direction, int shift) const
{
    const double scale = devicePixelRatioF();
    if (m_pictures.empty() || m_pictures.front().devicePixelRatio() != scale) {
        m_pictures.clear();
        for (int d = 0; d < PatchField::directions; ++d) {
            for (int s = 0; s < spacing; ++s)
                m_pictures.push_back(painted(shifted(d, s)));
        }
    }
    return m_pictures[std::size_t(direction) * spacing + std::size_t(shift)];
}

QPixmap PatchBoard::painted(const QPoint &displacement) const
{
    const double scale = devicePixelRatioF();
    QPixmap pixmap((QSizeF(2 * frameHalf, 2 * frameHalf) * scale).toSize());
    pixmap.setDevicePixelRatio(scale);
    pixmap.fill(Qt::white);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(strokes::marker(Qt::black, 3.0));
    painter.translate(frameHalf, frameHalf);
    // Of the two gratings the one across the drift moves.
    drawGrating(painter, figures::rows(2 * lineHalf), {0, displacement.y()});
    drawGrating(painter, figures::columns(2 * lineHalf), {displacement.x(), 0});
    return pixmap;
}
