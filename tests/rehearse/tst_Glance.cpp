#include "DrawArrowPeriph.h"
#include "DrawCross.h"
#include "DrawGrayRectangle.h"
#include "DrawRectangle.h"
#include "DrawRoundedRectangle.h"
#include "Glance.h"

#include <QTest>

#include <array>
#include <cmath>
#include <memory>
#include <numbers>

/// What a patient tells from figures and triangles.
class tst_Glance : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theDifferenceOfTwoFiguresIsTold_data();
    void theDifferenceOfTwoFiguresIsTold();
    void aDifferenceThatCannotBeSeenIsNone();
    void onlyTwoFiguresCanBeCompared();
    void theOddTriangleIsFoundAtEachPlace_data();
    void theOddTriangleIsFoundAtEachPlace();
    void withoutASingleOddTriangleThereIsNone_data();
    void withoutASingleOddTriangleThereIsNone();
    void bothHalvesAreSeenAtOnce();
    void whatIsNoStimulusIsOverlooked();
    void directionsGoClockwiseFromTheRight_data();
    void directionsGoClockwiseFromTheRight();
    void theAngleBetweenTwoDirectionsIsTheShorterOne();
};

namespace {

constexpr QSize standard(56, 62);
constexpr QPoint centre(512, 384);

enum class Kind { Same, Rounded, Grey, Turned, Small };

/// A screen whose stimuli are its children.
struct Scene
{
    Scene() { window.resize(2 * centre.x(), 2 * centre.y()); }

    void addFigure(Kind kind)
    {
        QWidget *figure = nullptr;
        if (kind == Kind::Rounded)
            figure = new DrawRoundedRectangle(&window);
        else if (kind == Kind::Grey)
            figure = new DrawGrayRectangle(&window);
        else
            figure = new DrawRectangle(&window);
        figure->resize(kind == Kind::Turned  ? standard.transposed()
                       : kind == Kind::Small ? QSize(51, 56)
                                             : standard);
        stimuli.append(figure);
    }

    DrawArrowPeriph *addTriangle(double angle, double turnedBy)
    {
        constexpr double ring = 336.0;
        auto *triangle = new DrawArrowPeriph(&window);
        const double radians = angle * std::numbers::pi / 180.0;
        triangle->resize(150, 150);
        triangle->move(int(centre.x() + ring * std::cos(radians) - 75),
                       int(centre.y() + ring * std::sin(radians) - 75));
        triangle->rotation = angle + turnedBy;
        stimuli.append(triangle);
        return triangle;
    }

    Glance glance() const { return Glance::at(stimuli); }

    QWidget window;
    QList<QWidget *> stimuli;
};

constexpr std::array places{225.0, 180.0, 135.0, 315.0, 0.0, 45.0};

} // namespace

void tst_Glance::theDifferenceOfTwoFiguresIsTold_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<bool>("onTheLeft");
    QTest::addColumn<QString>("button");
    const auto rows = [](const char *name, Kind kind, const char *button) {
        for (const bool left : {true, false})
            QTest::addRow("%s, %s", name, left ? "left" : "right")
                << int(kind) << left << QString::fromLatin1(button);
    };
    rows("alike", Kind::Same, "pb_uniform");
    rows("shape", Kind::Rounded, "pb_shape");
    rows("contrast", Kind::Grey, "pb_contrast");
    rows("orientation", Kind::Turned, "pb_orientation");
    rows("size", Kind::Small, "pb_size");
}

void tst_Glance::theDifferenceOfTwoFiguresIsTold()
{
    QFETCH(int, kind);
    QFETCH(bool, onTheLeft);
    QFETCH(QString, button);
    Scene scene;
    scene.addFigure(onTheLeft ? Kind(kind) : Kind::Same);
    scene.addFigure(onTheLeft ? Kind::Same : Kind(kind));
    const Glance glance = scene.glance();
    QVERIFY(glance.hasFigures && !glance.hasTriangles);
    QVERIFY(glance.figureButton.has_value());
    QCOMPARE(QString(*glance.figureButton), button);
    QVERIFY(!glance.oddDirection);
}

void tst_Glance::aDifferenceThatCannotBeSeenIsNone()
{
    Scene scene;
    scene.addFigure(Kind::Rounded);
    scene.addFigure(Kind::Grey);
    qobject_cast<DrawRoundedRectangle *>(scene.stimuli.at(0))->radius = 0.0F;
    qobject_cast<DrawGrayRectangle *>(scene.stimuli.at(1))->gray = 255;
    QCOMPARE(QString(*scene.glance().figureButton), QStringLiteral("pb_uniform"));
}

void tst_Glance::onlyTwoFiguresCanBeCompared()
{
    Scene scene;
    scene.addFigure(Kind::Rounded);
    QVERIFY(scene.glance().hasFigures);
    QVERIFY(!scene.glance().figureButton);
    for (const Kind kind : {Kind::Same, Kind::Grey}) // as the instruction shows all of them
        scene.addFigure(kind);
    QVERIFY(!scene.glance().figureButton);
}

void tst_Glance::theOddTriangleIsFoundAtEachPlace_data()
{
    QTest::addColumn<double>("odd");
    QTest::addColumn<bool>("restInwards");
    for (const double odd : places) {
        QTest::addRow("%g, the others outwards", odd) << odd << false;
        QTest::addRow("%g, the others inwards", odd) << odd << true;
    }
}

void tst_Glance::theOddTriangleIsFoundAtEachPlace()
{
    QFETCH(double, odd);
    QFETCH(bool, restInwards);
    Scene scene;
    for (const double angle : places)
        scene.addTriangle(angle, (angle == odd) == restInwards ? 0.0 : 180.0);
    const Glance glance = scene.glance();
    QVERIFY(glance.hasTriangles && !glance.hasFigures);
    QVERIFY(glance.oddDirection.has_value());
    QVERIFY(Glance::between(*glance.oddDirection, odd) < 1.0);
    QVERIFY(!glance.figureButton);
}

void tst_Glance::withoutASingleOddTriangleThereIsNone_data()
{
    QTest::addColumn<int>("turned");
    for (const int turned : {0, 2, 3, 4, 6})
        QTest::addRow("%d turned", turned) << turned;
}

void tst_Glance::withoutASingleOddTriangleThereIsNone()
{
    QFETCH(int, turned);
    Scene scene;
    for (const double angle : places)
        scene.addTriangle(angle, turned-- > 0 ? 180.0 : 0.0);
    QVERIFY(scene.glance().hasTriangles);
    QVERIFY(!scene.glance().oddDirection);
}

void tst_Glance::bothHalvesAreSeenAtOnce()
{
    Scene scene;
    scene.addFigure(Kind::Small);
    for (const double angle : places)
        scene.addTriangle(angle, angle == 45.0 ? 180.0 : 0.0);
    scene.addFigure(Kind::Same);
    const Glance glance = scene.glance();
    QVERIFY(glance.hasFigures && glance.hasTriangles);
    QCOMPARE(QString(*glance.figureButton), QStringLiteral("pb_size"));
    QVERIFY(Glance::between(*glance.oddDirection, 45.0) < 1.0);
}

void tst_Glance::whatIsNoStimulusIsOverlooked()
{
    Scene scene;
    scene.stimuli = {new DrawCross(&scene.window), new QWidget(&scene.window)};
    QVERIFY(!scene.glance().hasFigures);
    QVERIFY(!scene.glance().hasTriangles);
    QVERIFY(!Glance::isFigure(scene.stimuli.constFirst()));
    QVERIFY(!Glance::isTriangle(scene.stimuli.constFirst()));
}

void tst_Glance::directionsGoClockwiseFromTheRight_data()
{
    QTest::addColumn<double>("angle");
    for (const double angle : places)
        QTest::addRow("%g", angle) << angle;
}

void tst_Glance::directionsGoClockwiseFromTheRight()
{
    QFETCH(double, angle);
    Scene scene;
    QVERIFY(Glance::between(Glance::direction(scene.addTriangle(angle, 0.0)), angle) < 1.0);
}

void tst_Glance::theAngleBetweenTwoDirectionsIsTheShorterOne()
{
    QCOMPARE(Glance::between(350.0, 10.0), 20.0);
    QCOMPARE(Glance::between(-135.0, 225.0), 0.0);
    QCOMPARE(Glance::between(0.0, 180.0), 180.0);
    QCOMPARE(Glance::between(405.0, -45.0), 90.0);
}

QTEST_MAIN(tst_Glance)
#include "tst_Glance.moc"
