#pragma once

#include <QEvent>
#include <QImage>
#include <QWidget>

#include <cstdlib>
#include <initializer_list>

/// What the tests of painted widgets share: a picture of a stimulus, and questions about its
/// points.
namespace probes {

inline constexpr QRgb black = 0xff000000;
inline constexpr QRgb white = 0xffffffff;
inline constexpr QRgb red = 0xffff0000;
// A line one pixel wide on a whole coordinate is smoothed over the two pixels beside it.
inline constexpr QRgb halfWhite = 0xff808080;

inline QImage painted(QWidget &stimulus, QSize size, QRgb ground = black)
{
    stimulus.resize(size);
    QImage image(size, QImage::Format_RGB32);
    image.fill(ground);
    stimulus.render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
    return image;
}

inline bool isNearly(QRgb actual, QRgb expected)
{
    return std::abs(qRed(actual) - qRed(expected)) <= 2 &&
           std::abs(qGreen(actual) - qGreen(expected)) <= 2 &&
           std::abs(qBlue(actual) - qBlue(expected)) <= 2;
}

/// The points that don't have the colour, as text: empty when all have it.
inline QString strayPoints(const QImage &image, QRgb colour, std::initializer_list<QPoint> points)
{
    QString stray;
    for (const QPoint &at : points) {
        const QRgb actual = image.pixel(at);
        if (!isNearly(actual, colour))
            stray += QStringLiteral("(%1, %2) is %3; ")
                         .arg(QString::number(at.x()), QString::number(at.y()),
                              QString::number(actual & 0xffffffU, 16));
    }
    return stray;
}

/// How many pixels are not of the ground's colour.
inline int paintedPixels(const QImage &image, QRgb ground = black)
{
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            count += isNearly(image.pixel(x, y), ground) ? 0 : 1;
    }
    return count;
}

/// Counts the events of one type that an object receives.
class EventCounter : public QObject
{
public:
    EventCounter(QObject *watched, QEvent::Type type)
        : QObject(watched)
        , m_type(type)
    {
        watched->installEventFilter(this);
    }

    bool eventFilter(QObject * /*watched*/, QEvent *event) override
    {
        if (event->type() == m_type)
            ++count;
        return false;
    }

    int count = 0;

private:
    QEvent::Type m_type;
};

} // namespace probes
