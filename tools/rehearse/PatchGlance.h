#pragma once

#include <QImage>

#include <optional>

class DrawArrow;
class QWidget;

/// What a person sees of the patch to which an arrow points: a picture of that place of the screen
/// at one moment. Two of them tell where the patch moves.
class PatchGlance
{
public:
    enum Direction { Right, Down, Left, Up };
    static constexpr int directions = 4;
    /// Lines that have moved by more than this between two glances, in pixels, seem to have moved
    /// the other way: they lie 15 pixels apart.
    static constexpr int farthest = 7;

    /// Looks at the screen as it is now.
    explicit PatchGlance(const DrawArrow &arrow);

    /// Where the lines have moved since an earlier glance at the same place; none if they stand
    /// where they stood.
    std::optional<Direction> movedSince(const PatchGlance &earlier) const;

    /// The widget as an arrow; none if it isn't one.
    static const DrawArrow *arrow(const QWidget *widget);
    static bool isOblique(const DrawArrow &arrow);

private:
    QImage m_picture;
};
