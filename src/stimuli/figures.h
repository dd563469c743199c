#pragma once

#include <QLine>
#include <QPoint>
#include <QSize>

#include <array>

/// The shapes of the stimuli as plain numbers, in pixels of the widget that shows them. Divisions
/// of whole numbers and conversions drop the fraction, so that a shape has the same points on every
/// screen.
namespace figures {

/// The corners of an arrow with a shaft, in drawing order.
using Arrow = std::array<QPoint, 7>;

/// The horizontal and the vertical arm of a cross, through the centre.
using Cross = std::array<QLine, 2>;

/// Parallel lines with a fixed spacing, which doesn't follow the widget's size.
using Grating = std::array<QLine, 4>;

/// Drops the fraction, toward zero. What an int can't hold becomes the nearest that it can; not a
/// number becomes 0.
[[nodiscard]] int truncated(double value);

/// The cross in a widget of this size; in an odd size the centre is the truncated one.
[[nodiscard]] Cross cross(QSize size);

/// Four lines across the widget, 15 pixels apart; those below its lower edge are there too.
[[nodiscard]] Grating rows(int width);

/// Four lines down the widget, 15 pixels apart; those beyond its right edge are there too.
[[nodiscard]] Grating columns(int height);

/// The orienting arrow: points right, its centre at (0, 0), half as long as the widget is wide.
[[nodiscard]] Arrow arrow(QSize size);

/// The peripheral arrow: points right, its centre at (0, 0), as long as the widget is wide.
/// @param ratio height of the widget over the span of the head: 1 gives a head that is as wide as
/// the widget is high. A ratio of 0 isn't meant to occur; it gives a head of boundless span.
[[nodiscard]] Arrow arrowPeriph(QSize size, double ratio);

/// An arrow to the left that fills the widget, in the widget's coordinates.
[[nodiscard]] Arrow triangleLeft(QSize size);

/// An arrow to the right that fills the widget, in the widget's coordinates.
[[nodiscard]] Arrow triangleRight(QSize size);

} // namespace figures
