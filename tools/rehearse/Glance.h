#pragma once

#include <QLatin1String>
#include <QList>

#include <optional>

class QWidget;

/// What a person makes of the stimuli of the visual perception task while they are on the screen.
struct Glance
{
    bool hasFigures = false;   ///< in the middle
    bool hasTriangles = false; ///< around it
    /// The button that tells in what the two figures differ; none unless there are two.
    std::optional<QLatin1String> figureButton;
    /// Where the triangle stands that points another way than the others, in degrees clockwise from
    /// the right; none unless there is a single one.
    std::optional<double> oddDirection;

    /// Looks at these widgets.
    static Glance at(const QList<QWidget *> &stimuli);

    static bool isFigure(const QWidget *widget);
    static bool isTriangle(const QWidget *widget);
    /// Where a widget stands, seen from the middle of its window: degrees clockwise from the right,
    /// -180 to 180.
    static double direction(const QWidget *widget);
    /// The angle between two directions, 0 to 180 degrees.
    static double between(double one, double other);
};
