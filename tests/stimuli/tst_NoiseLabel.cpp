#include "NoiseLabel.h"

#include <QImage>
#include <QTemporaryDir>
#include <QTest>

namespace {
constexpr auto checkered = "background-image: url(%1)";

/// A picture in which no pixel is like its neighbour.
QString pictureFile(const QString &folder)
{
    QImage image(40, 30, QImage::Format_RGB32);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            image.setPixelColor(x, y, QColor(6 * x, 8 * y, (x + y) % 2 * 200));
    }
    const QString name = folder + QStringLiteral("/noise.png");
    return image.save(name) ? name : QString();
}

QImage pixels(QWidget &widget)
{
    return widget.grab().toImage().convertToFormat(QImage::Format_RGB32);
}
} // namespace

class tst_NoiseLabel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void itShowsWhatAPlainLabelShows();
    void anotherSizeIsDrawnAnew();

private:
    QTemporaryDir m_folder;
    QString m_style;
};

void tst_NoiseLabel::init()
{
    const QString file = pictureFile(m_folder.path());
    QVERIFY(!file.isEmpty());
    m_style = QString::fromLatin1(checkered).arg(file);
}

void tst_NoiseLabel::itShowsWhatAPlainLabelShows()
{
    NoiseLabel noise;
    QLabel plain;
    for (QLabel *label : std::initializer_list<QLabel *>{&noise, &plain}) {
        label->setStyleSheet(m_style);
        label->resize(100, 70); // the picture is repeated, and cut
    }
    QCOMPARE(pixels(noise), pixels(plain));
    QCOMPARE(pixels(noise).pixelColor(41, 2), QColor(6, 16, 200));
}

void tst_NoiseLabel::anotherSizeIsDrawnAnew()
{
    NoiseLabel noise;
    noise.setStyleSheet(m_style);
    noise.resize(20, 20);
    QCOMPARE(pixels(noise).size(), QSize(20, 20));
    noise.resize(60, 30);
    QCOMPARE(pixels(noise).pixelColor(59, 29), QColor(6 * 19, 8 * 29, 0));
}

QTEST_MAIN(tst_NoiseLabel)
#include "tst_NoiseLabel.moc"
