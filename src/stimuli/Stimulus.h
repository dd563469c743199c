#pragma once

#include <QWidget>

class QPainter;

/// What every stimulus has in common: one shape, painted in the widget's own rectangle.
///
/// A stimulus has no timer and knows no millimetres. The task sizes, places, shows and hides it;
/// the shape follows from the widget's size, in device-independent pixels, at every paint. Nothing
/// is cached and no image, file or text is used, so that a paint stays short next to the shortest
/// exposure of a task, one screen frame.
class Stimulus : public QWidget
{
    Q_OBJECT

public:
    explicit Stimulus(QWidget *parent = nullptr);

protected:
    /// Hands a smoothing painter on this widget to draw().
    void paintEvent(QPaintEvent *event) final;

private:
    /// Draws the shape. The painter comes untransformed, and is given up afterwards.
    virtual void draw(QPainter &painter) const = 0;
};
