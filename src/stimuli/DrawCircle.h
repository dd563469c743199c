#pragma once

#include "Stimulus.h"

/// A white ring that touches the widget's edges; what lies behind shows through.
class DrawCircle : public Stimulus
{
    Q_OBJECT

public:
    using Stimulus::Stimulus;

private:
    void draw(QPainter &painter) const override;
};
