#include "Glance.h"

#include "DrawArrowPeriph.h"
#include "DrawGrayRectangle.h"
#include "DrawRectangle.h"
#include "DrawRoundedRectangle.h"

#include <QtMath>

#include <cmath>

namespace {

constexpr double fullTurn = 360.0;
constexpr double quarterTurn = 90.0;

bool isRounded(const QWidget *figure)
{
    const auto *rounded = qobject_cast<const DrawRoundedRectangle *>(figure);
    return rounded && rounded->radius > 0.0F;
}

bool isGrey(const QWidget *figure)
{
    constexpr int white = 255;
    const auto *grey = qobject_cast<const DrawGrayRectangle *>(figure);
    return grey && grey->gray < white;
}

QLatin1String difference(const QWidget *one, const QWidget *other)
{
    if (isRounded(one) != isRounded(other))
        return QLatin1String("pb_shape");
    if (isGrey(one) != isGrey(other))
        return QLatin1String("pb_contrast");
    if (one->size() == other->size())
        return QLatin1String("pb_uniform");
    if (one->size() == other->size().transposed())
        return QLatin1String("pb_orientation");
    return QLatin1String("pb_size");
}

bool pointsOutwards(const QWidget *triangle)
{
    const auto *arrow = qobject_cast<const DrawArrowPeriph *>(triangle);
    return arrow && Glance::between(arrow->rotation, Glance::direction(triangle)) < quarterTurn;
}

std::optional<double> oddOneOut(const QList<const QWidget *> &triangles)
{
    QList<const QWidget *> outwards;
    QList<const QWidget *> inwards;
    for (const QWidget *triangle : triangles)
        (pointsOutwards(triangle) ? outwards : inwards).append(triangle);
    // Of two that differ neither is the odd one.
    if (outwards.size() == inwards.size())
        return std::nullopt;
    const auto &fewer = outwards.size() < inwards.size() ? outwards : inwards;
    return fewer.size() == 1 ? std::optional(Glance::direction(fewer.constFirst())) : std::nullopt;
}

} // namespace

Glance Glance::at(const QList<QWidget *> &stimuli)
{
    QList<const QWidget *> figures;
    QList<const QWidget *> triangles;
    for (const QWidget *stimulus : stimuli) {
        if (isFigure(stimulus))
            figures.append(stimulus);
        else if (isTriangle(stimulus))
            triangles.append(stimulus);
    }
    Glance glance;
    glance.hasFigures = !figures.isEmpty();
    glance.hasTriangles = !triangles.isEmpty();
    if (figures.size() == 2)
        glance.figureButton = difference(figures.constFirst(), figures.constLast());
    glance.oddDirection = oddOneOut(triangles);
    return glance;
}

bool Glance::isFigure(const QWidget *widget)
{
    return qobject_cast<const DrawRectangle *>(widget) ||
           qobject_cast<const DrawRoundedRectangle *>(widget) ||
           qobject_cast<const DrawGrayRectangle *>(widget);
}

bool Glance::isTriangle(const QWidget *widget)
{
    return qobject_cast<const DrawArrowPeriph *>(widget) != nullptr;
}

double Glance::direction(const QWidget *widget)
{
    const QWidget *window = widget->window();
    const QPoint off = widget->mapTo(window, widget->rect().center()) - window->rect().center();
    return qRadiansToDegrees(std::atan2(double(off.y()), double(off.x())));
}

double Glance::between(double one, double other)
{
    return std::abs(std::remainder(one - other, fullTurn));
}
