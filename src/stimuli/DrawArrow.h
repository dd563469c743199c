#pragma once

#include "Stimulus.h"

/// The white arrow that orients attention, about the widget's centre.
class DrawArrow : public Stimulus
{
    Q_OBJECT

public:
    using Stimulus::Stimulus;

    /// Degrees clockwise from pointing right. It is used at the next paint.
    double rotation = 0.0;

private:
    void draw(QPainter &painter) const override;
};
