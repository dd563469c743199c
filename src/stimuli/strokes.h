#pragma once

#include "figures.h"

#include <QPen>

class QPainter;

/// The pens of the stimuli, and the strokes that more than one of them makes.
namespace strokes {

/// A pen with square caps and bevelled joins.
/// @param width in pixels
[[nodiscard]] QPen marker(Qt::GlobalColor colour, double width, Qt::PenStyle style = Qt::SolidLine);

/// Draws both arms of a cross across the area, with the painter's present pen.
void drawCross(QPainter &painter, QSize area);

/// Draws the arrow in white, filled, by the odd-even rule.
void drawWhiteArrow(QPainter &painter, const figures::Arrow &arrow);

} // namespace strokes
