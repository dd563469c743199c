#include "DrawArrow.h"
#include "DrawArrowPeriph.h"
#include "DrawBorder.h"
#include "DrawCircle.h"
#include "DrawCross.h"
#include "DrawCrossDot.h"
#include "DrawCrossThick.h"
#include "DrawGrayRectangle.h"
#include "DrawLineH.h"
#include "DrawLineSh.h"
#include "DrawLineV.h"
#include "DrawRectangle.h"
#include "DrawRoundedRectangle.h"
#include "DrawTriangleLeft.h"
#include "DrawTriangleRight.h"
#include "probes.h"

#include <QTest>

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <utility>

using namespace probes;

namespace {

/// The pixel at a distance and an angle, in degrees clockwise from the right, from (360, 360).
QPoint onWheel(double radius, double degrees)
{
    const double angle = degrees * std::numbers::pi / 180.0;
    return {static_cast<int>(std::floor(360.0 + radius * std::cos(angle))),
            static_cast<int>(std::floor(360.0 + radius * std::sin(angle)))};
}

/// The brightest grey, 0 to 255, at the point and the eight around it.
int brightest(const QImage &image, QPoint at)
{
    int most = 0;
    for (int y = at.y() - 1; y <= at.y() + 1; ++y) {
        for (int x = at.x() - 1; x <= at.x() + 1; ++x)
            most = std::max(most, qGray(image.pixel(x, y)));
    }
    return most;
}

} // namespace

class tst_Stimuli : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyStimulusIsAPlainChildOfTheTask();
    void theFieldsStandReadyForAFirstPaint();
    void aPressOnAStimulusReachesTheTask();
    void theThinCrossHasItsArmsOnTheTruncatedCentre_data();
    void theThinCrossHasItsArmsOnTheTruncatedCentre();
    void theThickCrossIsTwoPixelsWide();
    void theDottedCrossHasGapsWhereTheThickOneHasNone();
    void theRectangleIsWhiteToItsEdges();
    void theGreyRectangleHasTheTaskGrey_data();
    void theGreyRectangleHasTheTaskGrey();
    void theBorderIsRedAndLeavesTheInsideFree();
    void theCircleIsARingThatShowsWhatLiesBehind();
    void theRoundedRectangleFollowsItsRadius_data();
    void theRoundedRectangleFollowsItsRadius();
    void theRowsStandFifteenPixelsApart();
    void theColumnsStandFifteenPixelsApart();
    void theGratingsDontFollowTheWidgetsSize();
    void theWheelHasTwelveSpokes();
    void aSmallWidgetShowsAPartOfTheSameWheel();
    void everyPaintFollowsThePresentSize();
};

void tst_Stimuli::everyStimulusIsAPlainChildOfTheTask()
{
    QWidget task;
    const std::array<std::pair<QWidget *, const char *>, 15> stimuli{{
        {new DrawArrow(&task), "DrawArrow"},
        {new DrawArrowPeriph(&task), "DrawArrowPeriph"},
        {new DrawBorder(&task), "DrawBorder"},
        {new DrawCircle(&task), "DrawCircle"},
        {new DrawCross(&task), "DrawCross"},
        {new DrawCrossDot(&task), "DrawCrossDot"},
        {new DrawCrossThick(&task), "DrawCrossThick"},
        {new DrawGrayRectangle(&task), "DrawGrayRectangle"},
        {new DrawLineH(&task), "DrawLineH"},
        {new DrawLineSh(&task), "DrawLineSh"},
        {new DrawLineV(&task), "DrawLineV"},
        {new DrawRectangle(&task), "DrawRectangle"},
        {new DrawRoundedRectangle(&task), "DrawRoundedRectangle"},
        {new DrawTriangleLeft(&task), "DrawTriangleLeft"},
        {new DrawTriangleRight(&task), "DrawTriangleRight"},
    }};
    for (const auto &[stimulus, name] : stimuli) {
        QCOMPARE(stimulus->metaObject()->className(), name);
        QCOMPARE(stimulus->parentWidget(), &task);
        QCOMPARE(stimulus->windowType(), Qt::Widget);
        // What can be called by name is the toolkit's alone.
        QCOMPARE(stimulus->metaObject()->methodCount(), QWidget::staticMetaObject.methodCount());
    }
}

void tst_Stimuli::theFieldsStandReadyForAFirstPaint()
{
    QWidget task;
    const DrawArrow arrow(&task);
    const DrawArrowPeriph peripheral(&task);
    const DrawRoundedRectangle rounded(&task);
    const DrawGrayRectangle grey(&task);
    QCOMPARE(arrow.rotation, 0.0);
    QCOMPARE(peripheral.rotation, 0.0);
    QCOMPARE(peripheral.ratio, 1.5);
    QCOMPARE(rounded.radius, 15.0F);
    QCOMPARE(grey.gray, 204);
}

void tst_Stimuli::aPressOnAStimulusReachesTheTask()
{
    QWidget task;
    task.resize(100, 100);
    DrawCrossThick target(&task);
    target.setGeometry(30, 30, 40, 40);
    const EventCounter presses(&task, QEvent::MouseButtonPress);
    task.show();
    QTest::mouseClick(&target, Qt::LeftButton, Qt::NoModifier, QPoint(20, 20));
    QCOMPARE(presses.count, 1);
}

void tst_Stimuli::theThinCrossHasItsArmsOnTheTruncatedCentre_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QPoint>("centre");
    QTest::newRow("as the tasks show it") << QSize(40, 40) << QPoint(20, 20);
    QTest::newRow("odd") << QSize(41, 41) << QPoint(20, 20);
    QTest::newRow("odd and oblong") << QSize(31, 17) << QPoint(15, 8);
}

void tst_Stimuli::theThinCrossHasItsArmsOnTheTruncatedCentre()
{
    QFETCH(const QSize, size);
    QFETCH(const QPoint, centre);
    DrawCross cross(nullptr);
    const QImage image = painted(cross, size);
    const int right = size.width() - 1;
    const int bottom = size.height() - 1;
    const int x = centre.x();
    const int y = centre.y();
    QCOMPARE(strayPoints(image, halfWhite, {{0, y - 1}, {0, y}, {right, y - 1}, {right, y}}),
             QString());
    QCOMPARE(strayPoints(image, halfWhite, {{x - 1, 0}, {x, 0}, {x - 1, bottom}, {x, bottom}}),
             QString());
    QCOMPARE(strayPoints(image, black,
                         {{0, y - 2}, {0, y + 1}, {x - 2, 0}, {x + 1, 0}, {right, bottom}}),
             QString());
}

void tst_Stimuli::theThickCrossIsTwoPixelsWide()
{
    DrawCrossThick cross(nullptr);
    const QImage image = painted(cross, QSize(40, 40));
    QCOMPARE(strayPoints(image, white, {{0, 19}, {0, 20}, {39, 19}, {39, 20}, {10, 19}, {20, 20}}),
             QString());
    QCOMPARE(strayPoints(image, white, {{19, 0}, {20, 0}, {19, 39}, {20, 39}, {19, 10}}),
             QString());
    QCOMPARE(strayPoints(image, black, {{0, 18}, {0, 21}, {18, 0}, {21, 0}, {10, 10}, {39, 39}}),
             QString());
    QCOMPARE(paintedPixels(image), 2 * 80 - 4);
}

void tst_Stimuli::theDottedCrossHasGapsWhereTheThickOneHasNone()
{
    DrawCrossDot cross(nullptr);
    const QImage image = painted(cross, QSize(40, 40));
    // Square caps lengthen each dot of two pixels to four, and leave gaps of two.
    QCOMPARE(
        strayPoints(image, white, {{0, 19}, {2, 20}, {5, 19}, {8, 20}, {19, 0}, {20, 2}, {19, 5}}),
        QString());
    QCOMPARE(strayPoints(image, black,
                         {{3, 19}, {4, 20}, {9, 19}, {10, 20}, {19, 3}, {20, 4}, {19, 10}}),
             QString());
    QCOMPARE(strayPoints(image, black, {{0, 18}, {0, 21}, {18, 0}, {21, 0}}), QString());
}

void tst_Stimuli::theRectangleIsWhiteToItsEdges()
{
    DrawRectangle rectangle(nullptr);
    const QImage image = painted(rectangle, QSize(43, 21));
    QCOMPARE(paintedPixels(image, white), 0);
}

void tst_Stimuli::theGreyRectangleHasTheTaskGrey_data()
{
    QTest::addColumn<int>("gray");
    QTest::addColumn<QRgb>("expected");
    QTest::newRow("black") << 0 << black;
    QTest::newRow("markers of the attention task") << 100 << QRgb(0xff646464);
    QTest::newRow("contrast 0.8") << 204 << QRgb(0xffcccccc);
    QTest::newRow("white") << 255 << white;
    QTest::newRow("below black") << -1 << black;
    QTest::newRow("above white") << 306 << white;
}

void tst_Stimuli::theGreyRectangleHasTheTaskGrey()
{
    QFETCH(const int, gray);
    QFETCH(const QRgb, expected);
    DrawGrayRectangle rectangle(nullptr);
    rectangle.gray = gray;
    const QImage image = painted(rectangle, QSize(21, 20), red);
    QImage reference(21, 20, QImage::Format_RGB32);
    reference.fill(expected);
    QCOMPARE(image, reference);
}

void tst_Stimuli::theBorderIsRedAndLeavesTheInsideFree()
{
    DrawBorder border(nullptr);
    const QImage image = painted(border, QSize(60, 40));
    QCOMPARE(
        strayPoints(image, red, {{0, 0}, {59, 0}, {0, 39}, {59, 39}, {30, 0}, {0, 20}, {59, 20}}),
        QString());
    QCOMPARE(strayPoints(image, 0xff800000, {{30, 1}, {1, 20}, {58, 20}, {30, 38}}), QString());
    QCOMPARE(strayPoints(image, black, {{30, 2}, {2, 20}, {57, 20}, {30, 37}, {30, 20}}),
             QString());
}

void tst_Stimuli::theCircleIsARingThatShowsWhatLiesBehind()
{
    DrawCircle circle(nullptr);
    const QImage image = painted(circle, QSize(360, 360), red);
    QCOMPARE(
        strayPoints(image, red, {{180, 180}, {180, 3}, {3, 180}, {180, 356}, {0, 0}, {359, 359}}),
        QString());
    // Somewhere between the ground and white, on each of the four sides.
    for (const QPoint at : {QPoint(180, 0), QPoint(0, 180), QPoint(359, 180), QPoint(180, 359)})
        QVERIFY(qGreen(image.pixel(at)) > 100);
}

void tst_Stimuli::theRoundedRectangleFollowsItsRadius_data()
{
    QTest::addColumn<float>("radius");
    QTest::addColumn<int>("firstWhite");
    // On a circle of radius r, the diagonal leaves the corner at 0.29 r.
    QTest::newRow("square") << 0.0F << 0;
    QTest::newRow("at start, r = 15") << 15.0F << 5;
    QTest::newRow("half, r = 50") << 50.0F << 15;
    QTest::newRow("a disc, r = 100") << 100.0F << 30;
}

void tst_Stimuli::theRoundedRectangleFollowsItsRadius()
{
    QFETCH(const float, radius);
    QFETCH(const int, firstWhite);
    DrawRoundedRectangle rectangle(nullptr);
    rectangle.radius = radius;
    const QImage image = painted(rectangle, QSize(200, 200));
    const int last = 199 - firstWhite;
    QCOMPARE(strayPoints(image, white, {{100, 100}, {100, 1}, {1, 100}, {198, 100}, {100, 198}}),
             QString());
    QCOMPARE(strayPoints(image, white, {{firstWhite, firstWhite}, {last, last}}), QString());
    if (firstWhite > 0)
        QCOMPARE(strayPoints(image, black,
                             {{firstWhite - 3, firstWhite - 3}, {last + 3, firstWhite - 3}}),
                 QString());
}

void tst_Stimuli::theRowsStandFifteenPixelsApart()
{
    DrawLineH rows(nullptr);
    const QImage image = painted(rows, QSize(48, 48), white);
    for (const int y : {2, 17, 32, 47}) {
        QCOMPARE(strayPoints(image, black, {{0, y - 1}, {0, y}, {24, y - 1}, {24, y}, {47, y - 1}}),
                 QString());
        QCOMPARE(strayPoints(image, halfWhite, {{0, y - 2}, {24, y - 2}, {47, y - 2}}), QString());
    }
    QCOMPARE(strayPoints(image, white, {{0, 4}, {24, 14}, {24, 19}, {24, 29}, {24, 34}, {24, 44}}),
             QString());
}

void tst_Stimuli::theColumnsStandFifteenPixelsApart()
{
    DrawLineV columns(nullptr);
    const QImage image = painted(columns, QSize(48, 48), white);
    for (const int x : {2, 17, 32, 47}) {
        QCOMPARE(strayPoints(image, black, {{x - 1, 0}, {x, 0}, {x - 1, 24}, {x, 24}, {x - 1, 47}}),
                 QString());
        QCOMPARE(strayPoints(image, halfWhite, {{x - 2, 0}, {x - 2, 24}, {x - 2, 47}}), QString());
    }
    QCOMPARE(strayPoints(image, white, {{4, 0}, {14, 24}, {19, 24}, {29, 24}, {34, 24}, {44, 24}}),
             QString());
}

void tst_Stimuli::theGratingsDontFollowTheWidgetsSize()
{
    DrawLineH rows(nullptr);
    const QImage tall = painted(rows, QSize(20, 96), white);
    QCOMPARE(strayPoints(tall, black, {{10, 1}, {10, 16}, {10, 31}, {10, 46}, {10, 47}}),
             QString());
    QCOMPARE(strayPoints(tall, white, {{10, 50}, {10, 61}, {10, 62}, {10, 95}}), QString());
    DrawLineV columns(nullptr);
    const QImage narrow = painted(columns, QSize(20, 20), white);
    QCOMPARE(strayPoints(narrow, black, {{1, 10}, {2, 10}, {16, 10}, {17, 10}}), QString());
    QCOMPARE(strayPoints(narrow, white, {{5, 10}, {10, 10}, {19, 10}}), QString());
}

void tst_Stimuli::theWheelHasTwelveSpokes()
{
    DrawLineSh wheel(nullptr);
    const QImage image = painted(wheel, QSize(720, 720));
    for (int i = 0; i < 12; ++i) {
        for (const double radius : {185.0, 270.0, 355.0}) {
            const QPoint at = onWheel(radius, 30.0 * i);
            QVERIFY2(brightest(image, at) > 100, qPrintable(QString::number(30 * i)));
        }
        const double between = 30.0 * i + 15.0;
        QCOMPARE(strayPoints(image, black,
                             {onWheel(175.0, 30.0 * i), onWheel(90.0, 30.0 * i),
                              onWheel(185.0, between), onWheel(355.0, between)}),
                 QString());
    }
    QCOMPARE(strayPoints(image, black, {{360, 360}}), QString());
    // The first spoke is drawn twice, which shows where it is smoothed.
    QCOMPARE(strayPoints(image, halfWhite, {{90, 359}, {90, 360}}), QString());
    QCOMPARE(strayPoints(image, 0xffbfbfbf, {{630, 359}, {630, 360}}), QString());
}

void tst_Stimuli::aSmallWidgetShowsAPartOfTheSameWheel()
{
    DrawLineSh wheel(nullptr);
    const QImage whole = painted(wheel, QSize(720, 720));
    DrawLineSh small(nullptr);
    const QImage part = painted(small, QSize(300, 200));
    QCOMPARE(part, whole.copy(0, 0, 300, 200));
    QVERIFY(paintedPixels(part) > 0);
    DrawLineSh large(nullptr);
    const QImage wide = painted(large, QSize(800, 760));
    QCOMPARE(wide.copy(0, 0, 720, 720), whole);
    DrawLineSh tiny(nullptr);
    QCOMPARE(paintedPixels(painted(tiny, QSize(20, 20))), 0);
}

void tst_Stimuli::everyPaintFollowsThePresentSize()
{
    DrawCrossThick cross(nullptr);
    QCOMPARE(strayPoints(painted(cross, QSize(40, 40)), white, {{20, 5}}), QString());
    const QImage grown = painted(cross, QSize(80, 80));
    QCOMPARE(strayPoints(grown, white, {{40, 5}, {79, 40}}), QString());
    QCOMPARE(strayPoints(grown, black, {{20, 5}}), QString());
}

QTEST_MAIN(tst_Stimuli)
#include "tst_Stimuli.moc"
