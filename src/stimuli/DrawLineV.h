#pragma once

#include "Stimulus.h"

/// Four black lines down the widget, 15 pixels apart: moved over a white figure, they make it
/// scroll left or right.
class DrawLineV : public Stimulus
{
    Q_OBJECT

public:
    using Stimulus::Stimulus;

private:
    void draw(QPainter &painter) const override;
};
