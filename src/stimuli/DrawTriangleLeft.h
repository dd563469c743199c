#pragma once

#include "Stimulus.h"

/// A white arrow to the left that fills the widget.
class DrawTriangleLeft : public Stimulus
{
    Q_OBJECT

public:
    using Stimulus::Stimulus;

private:
    void draw(QPainter &painter) const override;
};
