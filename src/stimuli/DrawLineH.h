#pragma once

#include "Stimulus.h"

/// Four black lines across the widget, 15 pixels apart: moved over a white figure, they make it
/// scroll up or down.
class DrawLineH : public Stimulus
{
    Q_OBJECT

public:
    using Stimulus::Stimulus;

private:
    void draw(QPainter &painter) const override;
};
