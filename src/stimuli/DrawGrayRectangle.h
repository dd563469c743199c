#pragma once

#include "Stimulus.h"

/// A grey rectangle that fills the widget.
class DrawGrayRectangle : public Stimulus
{
    Q_OBJECT

public:
    using Stimulus::Stimulus;

    /// Grey level, 0 (black) to 255 (white); what lies beyond is taken as the nearer end. It is
    /// used at the next paint.
    int gray = 204;

private:
    void draw(QPainter &painter) const override;
};
