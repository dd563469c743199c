#pragma once

#include "Stimulus.h"

/// The dotted white cross with which the memory task's instruction marks an answer.
class DrawCrossDot : public Stimulus
{
    Q_OBJECT

public:
    using Stimulus::Stimulus;

private:
    void draw(QPainter &painter) const override;
};
