#pragma once

#include "Stimulus.h"

/// A white rectangle with rounded corners that fills the widget.
class DrawRoundedRectangle : public Stimulus
{
    Q_OBJECT

public:
    using Stimulus::Stimulus;

    /// Corner radius in percent of half the side, on both axes: 0 (square) to 100 (an ellipse). It
    /// is used at the next paint.
    float radius = 15.0F;

private:
    void draw(QPainter &painter) const override;
};
