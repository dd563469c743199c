#pragma once

#include "Stimulus.h"

/// The assessor's guide to the sectors of the memory task: twelve white spokes of a wheel with the
/// hub at (360, 360), from 180 to 360 pixels away from it, whatever the widget's size. A widget
/// below 720 by 720 shows a part of the wheel.
class DrawLineSh : public Stimulus
{
    Q_OBJECT

public:
    using Stimulus::Stimulus;

private:
    void draw(QPainter &painter) const override;
};
