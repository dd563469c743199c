#pragma once

#include "Stimulus.h"

/// The white arrow at a peripheral place of the vision test.
///
/// It turns about (width / 2, width / 2), which is the centre of a square widget only.
class DrawArrowPeriph : public Stimulus
{
    Q_OBJECT

public:
    using Stimulus::Stimulus;

    /// Degrees clockwise from pointing right. It is used at the next paint.
    double rotation = 0.0;
    /// Height of the widget over the span of the arrow's head, above 0. It is used at the next
    /// paint.
    double ratio = 1.5;

private:
    void draw(QPainter &painter) const override;
};
