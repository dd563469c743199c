#pragma once

#include "PatchField.h"
#include "Stimulus.h"

#include <QPixmap>

#include <array>
#include <vector>

/// The 80 patches of the movement detection task, as one widget of 720 by 720 pixels.
///
/// A patch looks as three stimuli would, one on top of the other: a DrawRectangle of 42 by 42, a
/// DrawLineH and a DrawLineV of 48 by 48, all about the patch's centre, and it drifts as if one of
/// the two gratings were moved. The few pictures that there are of it are painted once: 240 widgets
/// cost more than the drift may take.
class PatchBoard : public Stimulus
{
    Q_OBJECT

public:
    static constexpr int side = 720;
    static constexpr int patches =
        PatchField::groups * PatchField::groupSize + PatchField::ringSize;
    static constexpr int spacing =
        15; ///< of the lines, pixels: after so many steps all is as before
    static constexpr int frameHalf = 21; ///< half the side of a patch, pixels

    explicit PatchBoard(QWidget *parent);

    /// The centre of a patch from the centre of the board, pixels, y growing downwards. The patches
    /// of the groups come first, nine by nine, then the ring clockwise from the right.
    static QPoint offset(int patch);
    /// The same of a ring patch, 0 to 7.
    static QPoint ringOffset(int place);

    /// From now on the patches drift in these directions; to be followed by rest() or drift().
    void setField(const PatchField &field);
    /// All lines to their rest places.
    void rest();
    /// All lines to where they are so many steps of one pixel after the beginning of the drift. It
    /// is painted with the next pass.
    void drift(int step);

    /// How far the lines of a patch are from their rest place, pixels.
    QPoint displacement(int patch) const;

private:
    void draw(QPainter &painter) const override;
    const QPixmap &picture(int direction, int shift) const;
    QPixmap painted(const QPoint &displacement) const;

    std::array<int, patches> m_direction{};
    int m_shift = 0;                         ///< pixels, 0 to 14
    mutable std::vector<QPixmap> m_pictures; ///< by direction and shift; made when first needed
};
