#pragma once

#include "Stimulus.h"

/// The white cross that marks a place in the memory task.
class DrawCrossThick : public Stimulus
{
    Q_OBJECT

public:
    using Stimulus::Stimulus;

private:
    void draw(QPainter &painter) const override;
};
