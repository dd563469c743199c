#pragma once

#include "Stimulus.h"

/// A white rectangle that fills the widget.
class DrawRectangle : public Stimulus
{
    Q_OBJECT

public:
    using Stimulus::Stimulus;

private:
    void draw(QPainter &painter) const override;
};
