#pragma once

#include "Stimulus.h"

/// The red frame that points to a figure in an instruction.
class DrawBorder : public Stimulus
{
    Q_OBJECT

public:
    using Stimulus::Stimulus;

private:
    void draw(QPainter &painter) const override;
};
