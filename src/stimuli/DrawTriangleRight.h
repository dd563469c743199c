#pragma once

#include "Stimulus.h"

/// A white arrow to the right that fills the widget.
class DrawTriangleRight : public Stimulus
{
    Q_OBJECT

public:
    using Stimulus::Stimulus;

private:
    void draw(QPainter &painter) const override;
};
