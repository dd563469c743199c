#pragma once

#include <QRect>

#include <array>

/// Sizes and places of what the visual perception task shows. Sizes are told in quarters of a
/// millimetre and follow the calibration; the rings of triangles and of their buttons are told in
/// pixels. All places are around a centre, y growing downwards.
class VisionLayout
{
public:
    enum Side { Left, Right };

    static constexpr int positions = 6;
    /// The directions of the six triangles, degrees clockwise from the right; their codes are in
    /// tables::_triDef.
    static constexpr std::array<double, positions> _periphAngle{225, 180, 135, 315, 0, 45};
    static constexpr int crossHalf = 20; ///< half the size of the fixation cross, pixels

    VisionLayout() = default;
    /// The defaults on a screen with these pixels, in micrometres. A pitch of 0 gives stimuli as
    /// large as a widget can be.
    VisionLayout(int horzPitch, int vertPitch);

    // The edits of the parameter panel.
    /// Width of a figure in pixels. The height and the small figure take the number as quarters of
    /// a millimetre.
    void setGlobSize(int width);
    void setOrientation(float heightOverWidth);
    void setSize(float scaleOfSmallFigure);
    void setSeparator(float gapOverWidth);
    /// Height of a triangle in pixels; the width takes the number as quarters of a millimetre.
    void setTriSize(int height);
    void setTriRatio(float scale);
    void setTriOffset(int radius) { m_triOffset = radius; }

    float pixelH() const { return m_pixelH; } ///< pixels in a quarter of a millimetre, across
    float pixelV() const { return m_pixelV; } ///< the same, down
    int figW() const { return m_figW; }
    int figH() const { return m_figH; }
    int smallW() const { return m_smallW; }
    int smallH() const { return m_smallH; }
    int gapHalf() const { return m_gapHalf; }
    int triW() const { return m_triW; }
    int triH() const { return m_triH; }
    int triOffset() const { return m_triOffset; }
    float orientation() const { return m_orientation; }
    float size() const { return m_size; }
    float separator() const { return m_separator; }
    float triRatio() const { return m_triRatio; }

    /// A figure of the standard size.
    QRect figure(Side side, const QPoint &centre) const;
    /// The figure that differs by orientation: width and height exchanged.
    QRect turned(Side side, const QPoint &centre) const;
    /// The figure that differs by size.
    QRect small(Side side, const QPoint &centre) const;
    /// The place of a kind of figure in the row of the instruction.
    QPoint inRow(int kind, const QPoint &centre) const;
    /// The triangle at a position, 0 to 5.
    QRect triangle(int position, const QPoint &centre) const;
    /// The button of a position. It stands outside the ring of triangles as that is at first.
    static QRect positionButton(int position, const QSize &button, const QPoint &centre);

    /// To the nearest whole number, an exact half down; what no widget can be becomes the nearest
    /// that it can.
    static int rounded(float value);

    /// Distance between two figures in the row of the instruction, pixels.
    static constexpr int rowStep = 100;

private:
    QRect besides(Side side, const QPoint &centre, int width, int height) const;
    void resizeSmall();
    void resizeGap();

    static constexpr int defaultRing = 336; ///< radius, pixels

    float m_pixelH = 1.0F;
    float m_pixelV = 1.0F;
    float m_globW = 0.0F; ///< a figure, before rounding
    float m_globH = 0.0F;
    int m_figW = 0;
    int m_figH = 0;
    float m_orientation = 1.1F; ///< height of a figure over its width
    float m_size = 0.91F;       ///< scale of the small figure
    int m_smallW = 0;
    int m_smallH = 0;
    float m_separator = 0.2F; ///< gap between two figures, as a share of the width
    int m_gapHalf = 0;
    float m_triRatio = 1.5F; ///< scale of a triangle
    float m_triHf = 0.0F;    ///< a triangle, before rounding
    float m_triWf = 0.0F;
    int m_triH = 0;
    int m_triW = 0;
    int m_triOffset = defaultRing; ///< radius of the ring of triangles, pixels
};
