#include "resources.h"

#include <QDir>
#include <QImage>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>

namespace {

constexpr char icons[] = ":/Kelmoran/Icons";

struct Told
{
    const char *name;
    QSize size;
    bool opaque = true;
    bool fine = true; ///< drawn a second time, twice as fine
};

const QList<Told> &images()
{
    static const QList<Told> all{{"Kelmoran_icone", {256, 256}, false, false},
                                 {"Kelmoran_logo", {150, 36}, false},
                                 {"printer", {34, 35}},
                                 {"Noise for screen", {1024, 768}, true, false},
                                 {"uniform", {200, 80}},
                                 {"shape", {200, 80}},
                                 {"contrast", {200, 80}},
                                 {"orientation", {200, 80}},
                                 {"size", {200, 80}},
                                 {"triangleRight", {80, 80}},
                                 {"triangleLeft", {80, 80}},
                                 {"rightArrow", {70, 70}},
                                 {"leftArrow", {70, 70}},
                                 {"upArrow", {70, 70}},
                                 {"downArrow", {70, 70}},
                                 {"asterisk", {50, 50}},
                                 {"cadre_68_38", {70, 40}},
                                 {"cadre_88_38", {90, 40}},
                                 {"cadre_68_68", {70, 70}},
                                 {"cadre_138_48", {140, 50}}};
    return all;
}

QString fileOf(const char *name, const char *fineness = "")
{
    return QString::fromLatin1(name) + QLatin1String(fineness) + QStringLiteral(".png");
}

QImage image(const QString &file, const QString &folder = QString::fromLatin1(icons))
{
    return QImage(folder + u'/' + file).convertToFormat(QImage::Format_ARGB32);
}

/// The greatest difference of a channel of a pixel; 256 between images of two sizes.
int difference(const QImage &one, const QImage &other)
{
    if (one.size() != other.size() || one.isNull())
        return 256;
    int greatest = 0;
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x) {
            const QRgb a = one.pixel(x, y);
            const QRgb b = other.pixel(x, y);
            greatest =
                std::max({greatest, std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)),
                          std::abs(qBlue(a) - qBlue(b)), std::abs(qAlpha(a) - qAlpha(b))});
        }
    }
    return greatest;
}

/// The mean difference of the pixels as they are seen on grey, of 255.
double meanDifference(const QImage &one, const QImage &other)
{
    const auto onGrey = [](const QImage &picture, int x, int y) {
        constexpr int grey = 240;
        const QRgb pixel = picture.pixel(x, y);
        return (qGray(pixel) * qAlpha(pixel) + grey * (255 - qAlpha(pixel))) / 255;
    };
    qint64 sum = 0;
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x)
            sum += std::abs(onGrey(one, x, y) - onGrey(other, x, y));
    }
    return double(sum) / (double(one.width()) * one.height());
}

/// A figure on black, within its frame.
struct Figure
{
    QRect place;
    int light = 0; ///< of its middle
};

bool isLit(const QImage &picture, int x, int y)
{
    return qGray(picture.pixel(x, y)) > 64;
}

/// The figures that stand beside one another, from left to right.
QList<Figure> figuresOf(const QImage &picture)
{
    constexpr int frame = 8; // pixels, with its corners
    QList<Figure> found;
    bool inside = false;
    for (int x = frame; x < picture.width() - frame; ++x) {
        QRect lit;
        for (int y = frame; y < picture.height() - frame; ++y) {
            if (isLit(picture, x, y))
                lit |= QRect(x, y, 1, 1);
        }
        if (!lit.isNull() && !inside)
            found.append(Figure());
        inside = !lit.isNull();
        if (inside)
            found.last().place |= lit;
    }
    for (Figure &figure : found)
        figure.light = qGray(picture.pixel(figure.place.center()));
    return found;
}

} // namespace

/// The images of the forms.
class tst_images : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { initResources(); }

    void thereAreTheseAndNoOthers()
    {
        QStringList told;
        for (const Told &one : images()) {
            told.append(fileOf(one.name));
            if (one.fine)
                told.append(fileOf(one.name, "@2x"));
        }
        told.sort();
        QStringList found = QDir(QString::fromLatin1(icons)).entryList();
        found.sort();
        QCOMPARE(found, told);
    }

    void eachHasItsSize()
    {
        for (const Told &one : images()) {
            QCOMPARE(image(fileOf(one.name)).size(), one.size);
            if (one.fine)
                QCOMPARE(image(fileOf(one.name, "@2x")).size(), 2 * one.size);
        }
    }

    void onlyTheIconAndTheLogoAreSeenThrough()
    {
        for (const Told &one : images()) {
            const QImage picture(QString::fromLatin1(icons) + u'/' + fileOf(one.name));
            QVERIFY2(picture.hasAlphaChannel() != one.opaque, one.name);
            if (!one.opaque)
                QCOMPARE(qAlpha(picture.pixel(0, 0)), 0);
        }
    }

    void theFineOnesShowTheSame()
    {
        for (const Told &one : images()) {
            if (!one.fine)
                continue;
            const QImage fine =
                image(fileOf(one.name, "@2x"))
                    .scaled(one.size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
            QVERIFY2(meanDifference(image(fileOf(one.name)), fine) < 6, one.name);
        }
    }

    void theMaskIsAsMuchBlackAsWhite()
    {
        constexpr int square = 12; // pixels
        const QImage mask = image(fileOf("Noise for screen"));
        qint64 white = 0;
        for (int y = 0; y < mask.height(); ++y) {
            for (int x = 0; x < mask.width(); ++x) {
                const bool lit = (x / square + y / square) % 2 == 0;
                QCOMPARE(mask.pixel(x, y), lit ? qRgb(255, 255, 255) : qRgb(0, 0, 0));
                white += lit ? 1 : 0;
            }
        }
        QCOMPARE(2 * white, qint64(mask.width()) * mask.height());
        QVERIFY(
            QImage(QString::fromLatin1(icons) + u'/' + fileOf("Noise for screen")).isGrayscale());
    }

    void anAnswerShowsThreeFigures()
    {
        for (const char *name : {"uniform", "shape", "contrast", "orientation", "size"}) {
            const QList<Figure> three = figuresOf(image(fileOf(name)));
            QCOMPARE(three.size(), 3);
            for (const Figure &figure : three)
                QVERIFY2(figure.place.width() >= 10 && figure.place.height() >= 10, name);
        }
    }

    void theFiguresDifferAsTheirButtonSays()
    {
        const auto of = [](const char *name) { return figuresOf(image(fileOf(name))); };
        const QList<Figure> same = of("uniform");
        const QList<Figure> greys = of("contrast");
        for (qsizetype i = 0; i < 3; ++i) {
            QCOMPARE(same.at(i).place.size(), same.at(0).place.size());
            QCOMPARE(same.at(i).light, 255);
            QCOMPARE(greys.at(i).place.size(), same.at(0).place.size());
        }
        QVERIFY(greys.at(0).light > 100 && greys.at(0).light < 140);
        QVERIFY(greys.at(1).light > greys.at(0).light + 50);
        QCOMPARE(greys.at(2).light, 255);

        const QList<Figure> sizes = of("size");
        QVERIFY(sizes.at(1).place.width() > sizes.at(0).place.width() + 10);
        QVERIFY(sizes.at(2).place.width() > sizes.at(1).place.width() + 10);

        const QList<Figure> lines = of("orientation");
        QCOMPARE(lines.at(0).place.size(), lines.at(2).place.size().transposed());
        QVERIFY(lines.at(0).place.height() > 4 * lines.at(0).place.width());
        QCOMPARE(lines.at(1).place.width(), lines.at(1).place.height());

        const QImage shapes = image(fileOf("shape"));
        const QList<Figure> kinds = figuresOf(shapes);
        const auto isFull = [&shapes](const QPoint &corner) {
            return isLit(shapes, corner.x(), corner.y());
        };
        QVERIFY(isFull(kinds.at(0).place.topLeft()));      // the square
        QVERIFY(!isFull(kinds.at(1).place.topLeft()));     // the triangle
        QVERIFY(isFull(kinds.at(1).place.bottomLeft()));   //
        QVERIFY(!isFull(kinds.at(2).place.topLeft()));     // the circle
        QVERIFY(!isFull(kinds.at(2).place.bottomRight())); //
    }

    void theyPointWhereTheirNamesSay()
    {
        const QImage right = image(fileOf("rightArrow"));
        constexpr int edges = 40; // of 255
        QVERIFY(difference(right.mirrored(true, false), image(fileOf("leftArrow"))) < edges);
        const QTransform quarter = QTransform().rotate(90);
        QVERIFY(difference(right.transformed(quarter), image(fileOf("downArrow"))) < edges);
        QVERIFY(difference(right.transformed(quarter).mirrored(), image(fileOf("upArrow"))) <
                edges);
        const QImage triangle = image(fileOf("triangleRight"));
        QVERIFY(difference(triangle.mirrored(true, false), image(fileOf("triangleLeft"))) < edges);
        // Wide at the tail, a point at the head.
        for (const QImage &picture : {right, triangle}) {
            const QRect place = figuresOf(picture).at(0).place;
            QVERIFY(isLit(picture, place.right() - 2, place.center().y()));
            QVERIFY(!isLit(picture, place.right() - 2, place.top() + 2));
        }
    }

    void theyAreDrawnFromTheirSources()
    {
        for (const char *tool : {"rsvg-convert", "convert"})
            QVERIFY2(!QStandardPaths::findExecutable(QString::fromLatin1(tool)).isEmpty(), tool);
        const QTemporaryDir copy;
        const QString source = copy.filePath(QStringLiteral("source"));
        QVERIFY(QDir().mkpath(source));
        const QDir kept(QStringLiteral(RESOURCES "/source"));
        const QStringList sources = kept.entryList(QDir::Files);
        for (const QString &name : sources)
            QVERIFY(QFile::copy(kept.filePath(name), source + u'/' + name));
        const QString script = copy.filePath(QStringLiteral("make-icons.sh"));
        QVERIFY(QFile::copy(QStringLiteral(RESOURCES "/make-icons.sh"), script));
        QCOMPARE(QProcess::execute(QStringLiteral("sh"), {script}), 0);

        const QString drawn = copy.filePath(QStringLiteral("Icons"));
        const QStringList names = QDir(drawn).entryList(QDir::Files);
        QCOMPARE(names, QDir(QStringLiteral(RESOURCES "/Icons")).entryList(QDir::Files));
        constexpr int rounding = 4; // of 255, between two versions of the drawing program
        for (const QString &name : names)
            QVERIFY2(difference(image(name, drawn), image(name)) <= rounding, qPrintable(name));
    }
};

QTEST_GUILESS_MAIN(tst_images)
#include "tst_images.moc"
