#include "VisionLayout.h"

#include <QTest>

#include <cmath>
#include <limits>

/// Sizes and places of the visual perception task, on screens of several kinds.
class tst_VisionLayout : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void anExactHalfGoesDown_data();
    void anExactHalfGoesDown();
    void theDefaultsFollowTheCalibration_data();
    void theDefaultsFollowTheCalibration();
    void theDefaultParametersAreTheSameOnEveryScreen();
    void figuresStandWithTheirInnerEdgesAtTheSameDistance();
    void halvesOfOddSizesAreCut();
    void theFiveKindsStandInARow();
    void theTrianglesStandOnTheirRing_data();
    void theTrianglesStandOnTheirRing();
    void aPlaceBeforeTheEdgeIsCutTowardsIt();
    void theButtonsStandOnALargerRing_data();
    void theButtonsStandOnALargerRing();
    void theButtonsDontFollowTheRingOfTriangles();
    void aTypedWidthCountsAsQuartersOfAMillimetreForTheRest_data();
    void aTypedWidthCountsAsQuartersOfAMillimetreForTheRest();
    void anOrientationChangesTheHeightsAlone_data();
    void anOrientationChangesTheHeightsAlone();
    void anOrientationGoesByTheTypedWidth();
    void aSizeChangesTheSmallFigureAlone();
    void aSeparatorChangesTheGapAlone_data();
    void aSeparatorChangesTheGapAlone();
    void theGapIsReckonedInDouble();
    void aTypedTriangleHeightGivesTheWidthOnItsOwnScale();
    void aRatioGivesTheWidthOnTheVerticalScale_data();
    void aRatioGivesTheWidthOnTheVerticalScale();
    void anOffsetMovesTheTrianglesAlone();
    void nothingLeavesTheBoundsOfAWidget_data();
    void nothingLeavesTheBoundsOfAWidget();
};

namespace {
constexpr int widest = 16777215; // of a widget, pixels
const QPoint middle(400, 400);

// Positions in their order.
enum { TopLeft, MiddleLeft, BottomLeft, TopRight, MiddleRight, BottomRight };

QPoint button(int position, const QPoint &centre)
{
    return VisionLayout::positionButton(position, {82, 82}, centre).topLeft();
}
} // namespace

void tst_VisionLayout::anExactHalfGoesDown_data()
{
    QTest::addColumn<float>("exact");
    QTest::addColumn<int>("whole");
    QTest::newRow("whole") << 56.0F << 56;
    QTest::newRow("below a half") << 56.49F << 56;
    QTest::newRow("a half") << 56.5F << 56;
    QTest::newRow("above a half") << 56.51F << 57;
    QTest::newRow("a half behind an odd number") << 57.5F << 57;
    QTest::newRow("nought") << 0.0F << 0;
    QTest::newRow("half a pixel") << 0.5F << 0;
    QTest::newRow("a negative half") << -0.5F << -1;
    QTest::newRow("little below nought") << -0.4F << 0;
    QTest::newRow("far below a negative half") << -1.5F << -2;
    QTest::newRow("no number") << std::numeric_limits<float>::quiet_NaN() << 0;
    QTest::newRow("boundless") << std::numeric_limits<float>::infinity() << widest;
    QTest::newRow("boundless below") << -std::numeric_limits<float>::infinity() << -widest;
    QTest::newRow("more than a widget") << 3e9F << widest;
}

void tst_VisionLayout::anExactHalfGoesDown()
{
    QFETCH(const float, exact);
    QTEST(VisionLayout::rounded(exact), "whole");
}

void tst_VisionLayout::theDefaultsFollowTheCalibration_data()
{
    QTest::addColumn<int>("horz");
    QTest::addColumn<int>("vert");
    QTest::addColumn<QSize>("figure");
    QTest::addColumn<QSize>("small");
    QTest::addColumn<int>("gapHalf");
    QTest::addColumn<QSize>("triangle");

    // 56; 61.6. 50.96; 56.056. 5.6. 150; 150.
    QTest::newRow("250") << 250 << 250 << QSize(56, 62) << QSize(51, 56) << 5 << QSize(150, 150);
    // 51.85; 57.04. 47.19; 51.90. 5.2. 138.9; 138.9.
    QTest::newRow("270") << 270 << 270 << QSize(52, 57) << QSize(47, 52) << 5 << QSize(139, 139);
    // 56; 51.33. 50.96; 46.71. 5.6. 150; 125.
    QTest::newRow("taller") << 250 << 300 << QSize(56, 51) << QSize(51, 47) << 5 << QSize(150, 125);
    // 35; 77. 31.85; 70.07. 3.5. 93.75; 187.5 exactly.
    QTest::newRow("wider") << 400 << 200 << QSize(35, 77) << QSize(32, 70) << 3 << QSize(94, 187);
    // 87.5 exactly; 96.25. 79.625; 87.5875. 8.7. 234.375.
    QTest::newRow("160") << 160 << 160 << QSize(87, 96) << QSize(80, 88) << 8 << QSize(234, 234);
    // 17.5 exactly; 19.25. 15.925; 17.5175. 1.7. 46.875.
    QTest::newRow("800") << 800 << 800 << QSize(17, 19) << QSize(16, 18) << 1 << QSize(47, 47);
}

void tst_VisionLayout::theDefaultsFollowTheCalibration()
{
    QFETCH(const int, horz);
    QFETCH(const int, vert);
    const VisionLayout layout(horz, vert);
    QCOMPARE(layout.pixelH(), float(0.25 / (horz / 1000.0)));
    QCOMPARE(layout.pixelV(), float(0.25 / (vert / 1000.0)));
    QTEST(QSize(layout.figW(), layout.figH()), "figure");
    QTEST(QSize(layout.smallW(), layout.smallH()), "small");
    QTEST(layout.gapHalf(), "gapHalf");
    QTEST(QSize(layout.triW(), layout.triH()), "triangle");
}

void tst_VisionLayout::theDefaultParametersAreTheSameOnEveryScreen()
{
    for (const int pitch : {160, 250, 270, 800}) {
        const VisionLayout layout(pitch, pitch);
        QCOMPARE(layout.orientation(), 1.1F);
        QCOMPARE(layout.size(), 0.91F);
        QCOMPARE(layout.separator(), 0.2F);
        QCOMPARE(layout.triRatio(), 1.5F);
        QCOMPARE(layout.triOffset(), 336);
    }
    QCOMPARE(VisionLayout::crossHalf, 20);
}

void tst_VisionLayout::figuresStandWithTheirInnerEdgesAtTheSameDistance()
{
    const VisionLayout layout(250, 250);
    QCOMPARE(layout.figure(VisionLayout::Left, middle), QRect(339, 369, 56, 62));
    QCOMPARE(layout.figure(VisionLayout::Right, middle), QRect(405, 369, 56, 62));
    // Width and height exchanged: wider than tall.
    QCOMPARE(layout.turned(VisionLayout::Left, middle), QRect(333, 372, 62, 56));
    QCOMPARE(layout.turned(VisionLayout::Right, middle), QRect(405, 372, 62, 56));
    QCOMPARE(layout.small(VisionLayout::Left, middle), QRect(344, 372, 51, 56));
    QCOMPARE(layout.small(VisionLayout::Right, middle), QRect(405, 372, 51, 56));
}

void tst_VisionLayout::halvesOfOddSizesAreCut()
{
    const VisionLayout layout(270, 270); // 52 by 57, small 47 by 52, triangles 139
    const QPoint centre(683, 384);
    QCOMPARE(layout.figure(VisionLayout::Left, centre), QRect(626, 356, 52, 57));
    QCOMPARE(layout.figure(VisionLayout::Right, centre), QRect(688, 356, 52, 57));
    QCOMPARE(layout.turned(VisionLayout::Left, centre), QRect(621, 358, 57, 52));
    QCOMPARE(layout.turned(VisionLayout::Right, centre), QRect(688, 358, 57, 52));
    QCOMPARE(layout.small(VisionLayout::Left, centre), QRect(631, 358, 47, 52));
    QCOMPARE(layout.small(VisionLayout::Right, centre), QRect(688, 358, 47, 52));
    // 683 - 69 + 336 and 384 - 69
    QCOMPARE(layout.triangle(MiddleRight, centre), QRect(950, 315, 139, 139));
}

void tst_VisionLayout::theFiveKindsStandInARow()
{
    const VisionLayout layout(250, 250);
    QCOMPARE(VisionLayout::rowStep, 100);
    for (int kind = 0; kind < 5; ++kind)
        QCOMPARE(layout.inRow(kind, middle), QPoint(172 + 100 * kind, 318)); // 400 - 20 - 62
    const VisionLayout coarse(800, 800);                                     // 17 by 19
    QCOMPARE(coarse.inRow(2, middle), QPoint(392, 361));
}

void tst_VisionLayout::theTrianglesStandOnTheirRing_data()
{
    QTest::addColumn<int>("position");
    QTest::addColumn<double>("angle");
    QTest::addColumn<QPoint>("place");
    // 336 times the sine of 45 degrees is 237.59; a triangle in the middle would stand at 325.
    QTest::newRow("top left") << int(TopLeft) << 225.0 << QPoint(87, 87);
    QTest::newRow("middle left") << int(MiddleLeft) << 180.0 << QPoint(-11, 325);
    QTest::newRow("bottom left") << int(BottomLeft) << 135.0 << QPoint(87, 562);
    QTest::newRow("top right") << int(TopRight) << 315.0 << QPoint(562, 87);
    QTest::newRow("middle right") << int(MiddleRight) << 0.0 << QPoint(661, 325);
    QTest::newRow("bottom right") << int(BottomRight) << 45.0 << QPoint(562, 562);
}

void tst_VisionLayout::theTrianglesStandOnTheirRing()
{
    QFETCH(const int, position);
    const VisionLayout layout(250, 250);
    QTEST(VisionLayout::_periphAngle.at(std::size_t(position)), "angle");
    QTEST(layout.triangle(position, middle).topLeft(), "place");
    QCOMPARE(layout.triangle(position, middle).size(), QSize(150, 150));
}

void tst_VisionLayout::aPlaceBeforeTheEdgeIsCutTowardsIt()
{
    const VisionLayout layout(250, 250);
    const QPoint corner(200, 200); // 125 - 237.59 is -112.59
    QCOMPARE(layout.triangle(TopLeft, corner).topLeft(), QPoint(-112, -112));
    QCOMPARE(button(TopLeft, corner), QPoint(-149, -149)); // 159 - 308.30
}

void tst_VisionLayout::theButtonsStandOnALargerRing_data()
{
    QTest::addColumn<int>("position");
    QTest::addColumn<QPoint>("place");
    // 436 times the sine of 45 degrees is 308.30; a button in the middle would stand at 359.
    QTest::newRow("top left") << int(TopLeft) << QPoint(50, 50);
    QTest::newRow("middle left") << int(MiddleLeft) << QPoint(-77, 359);
    QTest::newRow("bottom left") << int(BottomLeft) << QPoint(50, 667);
    QTest::newRow("top right") << int(TopRight) << QPoint(667, 50);
    QTest::newRow("middle right") << int(MiddleRight) << QPoint(795, 359);
    QTest::newRow("bottom right") << int(BottomRight) << QPoint(667, 667);
}

void tst_VisionLayout::theButtonsStandOnALargerRing()
{
    QFETCH(const int, position);
    QTEST(button(position, middle), "place");
    QCOMPARE(VisionLayout::positionButton(position, {82, 82}, middle).size(), QSize(82, 82));
}

void tst_VisionLayout::theButtonsDontFollowTheRingOfTriangles()
{
    VisionLayout layout(250, 250);
    layout.setTriOffset(100);
    QCOMPARE(layout.triangle(MiddleRight, middle).topLeft(), QPoint(425, 325));
    QCOMPARE(layout.positionButton(MiddleRight, {82, 82}, middle).topLeft(), QPoint(795, 359));
}

void tst_VisionLayout::aTypedWidthCountsAsQuartersOfAMillimetreForTheRest_data()
{
    QTest::addColumn<int>("horz");
    QTest::addColumn<int>("vert");
    QTest::addColumn<int>("typed");
    QTest::addColumn<QSize>("figure");
    QTest::addColumn<QSize>("small");
    QTest::addColumn<int>("gapHalf");
    // 80; 88. 72.8; 80.08. 8.
    QTest::newRow("250") << 250 << 250 << 80 << QSize(80, 88) << QSize(73, 80) << 8;
    // 74.07; 81.48. 67.41; 74.15. 8: the gap goes by the typed width.
    QTest::newRow("270") << 270 << 270 << 80 << QSize(80, 81) << QSize(67, 74) << 8;
    // 25; 55. 22.75; 50.05. 4.
    QTest::newRow("unequal") << 400 << 200 << 40 << QSize(40, 55) << QSize(23, 50) << 4;
    // The width that stands there already isn't the one from the calibration: 48.15; 52.96.
    // 43.81; 48.20. 5.2.
    QTest::newRow("unchanged") << 270 << 270 << 52 << QSize(52, 53) << QSize(44, 48) << 5;
    QTest::newRow("nought") << 250 << 250 << 0 << QSize(0, 0) << QSize(0, 0) << 0;
}

void tst_VisionLayout::aTypedWidthCountsAsQuartersOfAMillimetreForTheRest()
{
    QFETCH(const int, horz);
    QFETCH(const int, vert);
    QFETCH(const int, typed);
    VisionLayout layout(horz, vert);
    const QSize triangle(layout.triW(), layout.triH());
    layout.setGlobSize(typed);
    QTEST(QSize(layout.figW(), layout.figH()), "figure");
    QTEST(QSize(layout.smallW(), layout.smallH()), "small");
    QTEST(layout.gapHalf(), "gapHalf");
    QCOMPARE(QSize(layout.triW(), layout.triH()), triangle);
}

void tst_VisionLayout::anOrientationChangesTheHeightsAlone_data()
{
    QTest::addColumn<int>("horz");
    QTest::addColumn<int>("vert");
    QTest::addColumn<float>("orientation");
    QTest::addColumn<QSize>("figure");
    QTest::addColumn<QSize>("small");
    // 84; 76.44.
    QTest::newRow("250") << 250 << 250 << 1.5F << QSize(56, 84) << QSize(51, 76);
    // 77.78; 70.78.
    QTest::newRow("270") << 270 << 270 << 1.5F << QSize(52, 78) << QSize(47, 71);
    // 105; 95.55.
    QTest::newRow("unequal") << 400 << 200 << 1.5F << QSize(35, 105) << QSize(32, 96);
    QTest::newRow("nought") << 250 << 250 << 0.0F << QSize(56, 0) << QSize(51, 0);
}

void tst_VisionLayout::anOrientationChangesTheHeightsAlone()
{
    QFETCH(const int, horz);
    QFETCH(const int, vert);
    QFETCH(const float, orientation);
    VisionLayout layout(horz, vert);
    const int gapHalf = layout.gapHalf();
    layout.setOrientation(orientation);
    QCOMPARE(layout.orientation(), orientation);
    QTEST(QSize(layout.figW(), layout.figH()), "figure");
    QTEST(QSize(layout.smallW(), layout.smallH()), "small");
    QCOMPARE(layout.gapHalf(), gapHalf);
}

void tst_VisionLayout::anOrientationGoesByTheTypedWidth()
{
    VisionLayout layout(270, 270);
    layout.setGlobSize(80);
    layout.setOrientation(1.5F);
    QCOMPARE(layout.figW(), 80);
    QCOMPARE(layout.figH(), 111);   // 80 quarters of a millimetre by 1.5: 111.11
    QCOMPARE(layout.smallW(), 67);  // 67.41, as before
    QCOMPARE(layout.smallH(), 101); // 101.11
}

void tst_VisionLayout::aSizeChangesTheSmallFigureAlone()
{
    VisionLayout layout(250, 250);
    layout.setSize(0.5F);
    QCOMPARE(QSize(layout.figW(), layout.figH()), QSize(56, 62));
    QCOMPARE(layout.gapHalf(), 5);
    QCOMPARE(QSize(layout.smallW(), layout.smallH()), QSize(28, 31)); // 28; 30.8
    QCOMPARE(layout.size(), 0.5F);
    QCOMPARE(layout.small(VisionLayout::Left, middle), QRect(367, 385, 28, 31));

    layout.setOrientation(1.5F); // and the height goes on from there
    QCOMPARE(layout.smallH(), 42);
}

void tst_VisionLayout::aSeparatorChangesTheGapAlone_data()
{
    QTest::addColumn<float>("separator");
    QTest::addColumn<int>("gapHalf");
    QTest::newRow("more") << 0.5F << 14;
    QTest::newRow("cut") << 0.35F << 9; // 9.8
    QTest::newRow("none") << 0.0F << 0;
    QTest::newRow("they overlap") << -0.2F << -5; // -5.6
}

void tst_VisionLayout::aSeparatorChangesTheGapAlone()
{
    QFETCH(const float, separator);
    QFETCH(const int, gapHalf);
    VisionLayout layout(250, 250);
    layout.setSeparator(separator);
    QCOMPARE(layout.separator(), separator);
    QCOMPARE(layout.gapHalf(), gapHalf);
    QCOMPARE(QSize(layout.figW(), layout.figH()), QSize(56, 62));
    QCOMPARE(QSize(layout.smallW(), layout.smallH()), QSize(51, 56));
    QCOMPARE(layout.figure(VisionLayout::Right, middle).left(), 400 + gapHalf);
    QCOMPARE(layout.figure(VisionLayout::Left, middle).left(), 400 - gapHalf - 56);
}

void tst_VisionLayout::theGapIsReckonedInDouble()
{
    VisionLayout layout(250, 250);
    layout.setGlobSize(20);
    layout.setSeparator(0.7F);     // a hair below 0.7
    QCOMPARE(layout.gapHalf(), 6); // a float would make a whole 7 of it
}

void tst_VisionLayout::aTypedTriangleHeightGivesTheWidthOnItsOwnScale()
{
    VisionLayout layout(250, 300);
    layout.setTriSize(200);
    QCOMPARE(layout.triH(), 200);
    QCOMPARE(layout.triW(), 300);
    // Half the height of the typed size, 100; half its width, 150.
    QCOMPARE(layout.triangle(MiddleRight, middle), QRect(586, 300, 300, 200));
    QCOMPARE(layout.figW(), 56);

    layout.setTriRatio(2.0F); // 200 quarters of a millimetre down are 166.67 pixels
    QCOMPARE(layout.triH(), 200);
    QCOMPARE(layout.triW(), 333);
    layout.setTriSize(100);
    QCOMPARE(layout.triW(), 200);
}

void tst_VisionLayout::aRatioGivesTheWidthOnTheVerticalScale_data()
{
    QTest::addColumn<int>("horz");
    QTest::addColumn<int>("vert");
    QTest::addColumn<QSize>("triangle");
    QTest::newRow("250") << 250 << 250 << QSize(300, 150);
    QTest::newRow("270") << 270 << 270 << QSize(278, 139);    // 277.78
    QTest::newRow("taller") << 250 << 300 << QSize(250, 125); // 125 by 2
    QTest::newRow("wider") << 400 << 200 << QSize(375, 187);  // 187.5 by 2
}

void tst_VisionLayout::aRatioGivesTheWidthOnTheVerticalScale()
{
    QFETCH(const int, horz);
    QFETCH(const int, vert);
    VisionLayout layout(horz, vert);
    layout.setTriRatio(2.0F); // the ratio in the height before rounding stays 1.5
    QCOMPARE(layout.triRatio(), 2.0F);
    QTEST(QSize(layout.triW(), layout.triH()), "triangle");
    layout.setTriRatio(2.0F);
    QTEST(QSize(layout.triW(), layout.triH()), "triangle");
}

void tst_VisionLayout::anOffsetMovesTheTrianglesAlone()
{
    VisionLayout layout(250, 250);
    layout.setTriOffset(100);
    QCOMPARE(layout.triOffset(), 100);
    QCOMPARE(layout.triangle(MiddleLeft, middle), QRect(225, 325, 150, 150));
    QCOMPARE(layout.triangle(TopLeft, middle).topLeft(), QPoint(254, 254)); // 325 - 70.71
    layout.setTriOffset(0);
    for (int position = 0; position < VisionLayout::positions; ++position)
        QCOMPARE(layout.triangle(position, middle), QRect(325, 325, 150, 150));
}

void tst_VisionLayout::nothingLeavesTheBoundsOfAWidget_data()
{
    QTest::addColumn<int>("pitch");
    QTest::newRow("never calibrated") << 0;
    QTest::newRow("as it should be") << 250;
    QTest::newRow("tiny pixels") << 1;
    QTest::newRow("huge pixels") << std::numeric_limits<int>::max();
    QTest::newRow("negative pixels") << -250;
    QTest::newRow("hugely negative pixels") << std::numeric_limits<int>::min();
}

void tst_VisionLayout::nothingLeavesTheBoundsOfAWidget()
{
    QFETCH(const int, pitch);
    const auto isBounded = [](const VisionLayout &layout) {
        for (const int size : {layout.figW(), layout.figH(), layout.smallW(), layout.smallH(),
                               layout.gapHalf(), layout.triW(), layout.triH()}) {
            if (size < -widest || size > widest)
                return false;
        }
        for (int position = 0; position < VisionLayout::positions; ++position) {
            const QPoint place = layout.triangle(position, middle).topLeft();
            if (std::abs(place.x()) > widest || std::abs(place.y()) > widest)
                return false;
        }
        return true;
    };
    using F = std::numeric_limits<float>;
    const VisionLayout untouched(pitch, pitch);
    QVERIFY(isBounded(untouched));
    for (const int entry :
         {0, -1, 1, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
        VisionLayout layout(pitch, pitch);
        layout.setGlobSize(entry);
        layout.setTriSize(entry);
        layout.setTriOffset(entry);
        QVERIFY(isBounded(layout));
    }
    for (const float entry : {0.0F, -1.0F, F::max(), F::lowest(), F::denorm_min(), F::infinity(),
                              -F::infinity(), F::quiet_NaN()}) {
        VisionLayout layout(pitch, pitch);
        layout.setOrientation(entry);
        layout.setSize(entry);
        layout.setSeparator(entry);
        layout.setTriRatio(entry);
        QVERIFY(isBounded(layout));
    }
}

QTEST_GUILESS_MAIN(tst_VisionLayout)
#include "tst_VisionLayout.moc"
