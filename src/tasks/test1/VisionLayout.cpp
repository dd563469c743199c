#include "VisionLayout.h"

#include <QtMath>

#include <algorithm>
#include <cmath>

namespace {
constexpr float figureUnits = 56.0F;    // quarters of a millimetre: 14 mm
constexpr float triangleUnits = 100.0F; // 25 mm
constexpr float largest = 16777215.0F;  // pixels, of any widget

float pixelsInQuarter(int pitch)
{
    constexpr double quarter = 0.25; // mm
    return float(quarter / (pitch / 1000.0));
}

/// Inside what a widget can be, so that no sum of places runs over.
double bounded(double pixels)
{
    if (std::isnan(pixels))
        return 0.0;
    return std::clamp(pixels, double(-largest), double(largest));
}

int bounded(int pixels)
{
    return std::clamp(pixels, -int(largest), int(largest));
}

QPoint onRing(int position, double radius, const QSize &size, const QPoint &centre)
{
    const double angle = M_PI * VisionLayout::_periphAngle.at(std::size_t(position)) / 180.0;
    const int restTop = centre.y() - size.height() / 2;
    const int restLeft = centre.x() - size.width() / 2;
    const double top = std::sin(angle) * radius + restTop;
    const double left = std::cos(angle) * radius + restLeft;
    return {int(bounded(left)), int(bounded(top))};
}
} // namespace

VisionLayout::VisionLayout(int horzPitch, int vertPitch)
    : m_pixelH(pixelsInQuarter(horzPitch))
    , m_pixelV(pixelsInQuarter(vertPitch))
{
    m_globW = figureUnits * m_pixelH;
    m_globH = figureUnits * m_pixelV * m_orientation;
    m_figW = rounded(m_globW);
    m_figH = rounded(m_globH);
    resizeSmall();
    resizeGap();

    m_triHf = triangleUnits * m_pixelV * m_triRatio;
    m_triWf = triangleUnits * m_pixelH * m_triRatio;
    m_triH = rounded(m_triHf);
    m_triW = rounded(m_triWf);
}

int VisionLayout::rounded(float value)
{
    if (std::isnan(value))
        return 0;
    const float bound = std::clamp(value, -largest, largest);
    const float below = std::floor(bound);
    return int(below) + (bound - below > 0.5F ? 1 : 0);
}

void VisionLayout::resizeSmall()
{
    m_smallW = rounded(m_globW * m_size);
    m_smallH = rounded(m_globH * m_size);
}

void VisionLayout::resizeGap()
{
    m_gapHalf = int(bounded(m_figW * (double(m_separator) * 0.5)));
}

void VisionLayout::setGlobSize(int width)
{
    m_figW = bounded(width);
    m_globW = float(m_figW) * m_pixelH;
    m_globH = float(m_figW) * m_pixelV * m_orientation;
    m_figH = rounded(m_globH);
    resizeSmall();
    resizeGap();
}

void VisionLayout::setOrientation(float heightOverWidth)
{
    m_orientation = heightOverWidth;
    m_globH = m_globW / m_pixelH * m_pixelV * m_orientation;
    m_figH = rounded(m_globH);
    m_smallH = rounded(m_globH * m_size);
}

void VisionLayout::setSize(float scaleOfSmallFigure)
{
    m_size = scaleOfSmallFigure;
    resizeSmall();
}

void VisionLayout::setSeparator(float gapOverWidth)
{
    m_separator = gapOverWidth;
    resizeGap();
}

void VisionLayout::setTriSize(int height)
{
    m_triH = bounded(height);
    m_triHf = float(m_triH) * m_pixelV;
    m_triWf = float(m_triH) * m_pixelH * m_triRatio;
    m_triW = rounded(m_triWf);
}

void VisionLayout::setTriRatio(float scale)
{
    m_triRatio = scale;
    m_triWf = m_triHf * m_triRatio; // from the height, on the vertical scale
    m_triW = rounded(m_triWf);
}

QRect VisionLayout::besides(Side side, const QPoint &centre, int width, int height) const
{
    const int x = side == Left ? centre.x() - m_gapHalf - width : centre.x() + m_gapHalf;
    return {x, centre.y() - height / 2, width, height};
}

QRect VisionLayout::figure(Side side, const QPoint &centre) const
{
    return besides(side, centre, m_figW, m_figH);
}

QRect VisionLayout::turned(Side side, const QPoint &centre) const
{
    return besides(side, centre, m_figH, m_figW);
}

QRect VisionLayout::small(Side side, const QPoint &centre) const
{
    return besides(side, centre, m_smallW, m_smallH);
}

QPoint VisionLayout::inRow(int kind, const QPoint &centre) const
{
    constexpr int middle = 2;
    constexpr int above = 20;
    return {centre.x() + (kind - middle) * rowStep - m_figW / 2, centre.y() - above - m_figH};
}

QRect VisionLayout::triangle(int position, const QPoint &centre) const
{
    const QSize size(m_triW, m_triH);
    return {onRing(position, m_triOffset, size, centre), size};
}

QRect VisionLayout::positionButton(int position, const QSize &button, const QPoint &centre)
{
    constexpr double beyond = 100.0;
    return {onRing(position, defaultRing + beyond, button, centre), button};
}
