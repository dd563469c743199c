#pragma once

#include "Stimulus.h"

/// The thin white fixation cross.
class DrawCross : public Stimulus
{
    Q_OBJECT

public:
    using Stimulus::Stimulus;

private:
    void draw(QPainter &painter) const override;
};
