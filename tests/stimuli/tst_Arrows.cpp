#include "DrawArrow.h"
#include "DrawArrowPeriph.h"
#include "DrawTriangleLeft.h"
#include "DrawTriangleRight.h"
#include "probes.h"

#include <QTest>
#include <QTransform>

using namespace probes;

class tst_Arrows : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theArrowPointsAsRotated_data();
    void theArrowPointsAsRotated();
    void theArrowTurnsAboutTheCentreOfAWidgetThatIsNotSquare();
    void aRotatedArrowIsSeenAtTheNextPaintOnly();
    void thePeripheralArrowPointsAsRotated_data();
    void thePeripheralArrowPointsAsRotated();
    void aRatioOfOneGivesAHeadAsWideAsTheWidgetIsHigh();
    void aRatioOfZeroStillPaints();
    void thePeripheralArrowTurnsAboutHalfTheWidthBothWays();
    void theTriangleToTheRightPointsRight();
    void theTriangleToTheLeftPointsLeft();
};

void tst_Arrows::theArrowPointsAsRotated_data()
{
    QTest::addColumn<double>("rotation");
    QTest::addColumn<QPoint>("tip");
    QTest::addColumn<QPoint>("tail");
    QTest::newRow("right") << 0.0 << QPoint(70, 50) << QPoint(27, 50);
    QTest::newRow("down") << 90.0 << QPoint(50, 70) << QPoint(50, 27);
    QTest::newRow("down left") << 135.0 << QPoint(34, 65) << QPoint(66, 34);
    QTest::newRow("left") << 180.0 << QPoint(29, 50) << QPoint(72, 50);
    QTest::newRow("up left") << 225.0 << QPoint(34, 34) << QPoint(66, 66);
    QTest::newRow("up") << 270.0 << QPoint(50, 29) << QPoint(50, 72);
}

void tst_Arrows::theArrowPointsAsRotated()
{
    QFETCH(const double, rotation);
    QFETCH(const QPoint, tip);
    QFETCH(const QPoint, tail);
    DrawArrow arrow(nullptr);
    arrow.rotation = rotation;
    const QImage image = painted(arrow, QSize(100, 100));
    QCOMPARE(strayPoints(image, white, {tip, tail, {50, 50}}), QString());
    QCOMPARE(strayPoints(image, black, {{10, 50}, {90, 50}, {50, 10}, {50, 90}}), QString());
    // The head is wider than the shaft, and lies towards the tip.
    const QTransform frame = QTransform().translate(50, 50).rotate(rotation);
    for (const int side : {-4, 4}) {
        QCOMPARE(strayPoints(image, white, {frame.map(QPoint(8, side))}), QString());
        QCOMPARE(strayPoints(image, black, {frame.map(QPoint(-8, 2 * side))}), QString());
    }
}

void tst_Arrows::theArrowTurnsAboutTheCentreOfAWidgetThatIsNotSquare()
{
    DrawArrow arrow(nullptr);
    arrow.rotation = 90.0;
    const QImage image = painted(arrow, QSize(80, 200));
    // 20 pixels to each side of (40, 100).
    QCOMPARE(strayPoints(image, white, {{40, 100}, {40, 82}, {40, 118}}), QString());
    QCOMPARE(strayPoints(image, black, {{40, 77}, {40, 122}, {15, 100}, {65, 100}}), QString());
}

void tst_Arrows::aRotatedArrowIsSeenAtTheNextPaintOnly()
{
    QWidget task;
    task.resize(100, 100);
    DrawArrow arrow(&task);
    arrow.resize(100, 100);
    const EventCounter paints(&arrow, QEvent::Paint);
    task.show();
    arrow.repaint();
    QCoreApplication::processEvents();
    const int shown = paints.count;
    QVERIFY(shown > 0);

    arrow.rotation = 90.0;
    QCoreApplication::processEvents();
    QCOMPARE(paints.count, shown);

    arrow.repaint();
    QCOMPARE(paints.count, shown + 1);
    const QImage image = painted(arrow, QSize(100, 100));
    QCOMPARE(strayPoints(image, white, {{50, 70}}), QString());
    QCOMPARE(strayPoints(image, black, {{70, 50}}), QString());
}

void tst_Arrows::thePeripheralArrowPointsAsRotated_data()
{
    QTest::addColumn<double>("rotation");
    QTest::addColumn<QPoint>("tip");
    QTest::addColumn<QPoint>("tail");
    QTest::addColumn<QPoint>("besideTail");
    QTest::newRow("right") << 0.0 << QPoint(85, 45) << QPoint(2, 45) << QPoint(10, 30);
    QTest::newRow("down") << 90.0 << QPoint(45, 85) << QPoint(45, 2) << QPoint(60, 10);
    QTest::newRow("left") << 180.0 << QPoint(4, 45) << QPoint(87, 45) << QPoint(80, 30);
    QTest::newRow("up") << 270.0 << QPoint(45, 4) << QPoint(45, 87) << QPoint(60, 80);
    QTest::newRow("a full turn and up")
        << 630.0 << QPoint(45, 4) << QPoint(45, 87) << QPoint(60, 80);
}

void tst_Arrows::thePeripheralArrowPointsAsRotated()
{
    QFETCH(const double, rotation);
    QFETCH(const QPoint, tip);
    QFETCH(const QPoint, tail);
    QFETCH(const QPoint, besideTail);
    DrawArrowPeriph arrow(nullptr);
    arrow.rotation = rotation;
    const QImage image = painted(arrow, QSize(90, 90));
    QCOMPARE(strayPoints(image, white, {tip, tail, {45, 45}}), QString());
    QCOMPARE(strayPoints(image, black, {besideTail, {0, 0}, {89, 0}, {0, 89}, {89, 89}}),
             QString());
}

void tst_Arrows::aRatioOfOneGivesAHeadAsWideAsTheWidgetIsHigh()
{
    DrawArrowPeriph arrow(nullptr);
    arrow.ratio = 1.0;
    const QImage wide = painted(arrow, QSize(90, 90));
    QCOMPARE(strayPoints(wide, white, {{54, 2}, {54, 87}, {54, 45}, {2, 45}}), QString());
    arrow.ratio = 1.5;
    const QImage narrow = painted(arrow, QSize(90, 90));
    QCOMPARE(strayPoints(narrow, white, {{54, 17}, {54, 72}}), QString());
    QCOMPARE(strayPoints(narrow, black, {{54, 2}, {54, 12}, {54, 77}, {54, 87}}), QString());
}

void tst_Arrows::aRatioOfZeroStillPaints()
{
    DrawArrowPeriph arrow(nullptr);
    arrow.ratio = 0.0;
    QCOMPARE(strayPoints(painted(arrow, QSize(90, 90)), white, {{45, 45}}), QString());
}

void tst_Arrows::thePeripheralArrowTurnsAboutHalfTheWidthBothWays()
{
    DrawArrowPeriph arrow(nullptr);
    const QImage flat = painted(arrow, QSize(60, 120));
    QCOMPARE(strayPoints(flat, white, {{30, 30}, {2, 30}, {55, 30}}), QString());
    QCOMPARE(strayPoints(flat, black, {{2, 60}, {55, 60}, {30, 100}}), QString());
    arrow.rotation = 180.0;
    const QImage turned = painted(arrow, QSize(60, 120));
    QCOMPARE(strayPoints(turned, white, {{30, 30}, {4, 30}, {57, 30}}), QString());
    QCOMPARE(strayPoints(turned, black, {{4, 60}, {57, 60}, {30, 100}}), QString());
}

void tst_Arrows::theTriangleToTheRightPointsRight()
{
    DrawTriangleRight triangle(nullptr);
    const QImage image = painted(triangle, QSize(60, 60));
    QCOMPARE(strayPoints(image, white, {{1, 21}, {1, 38}, {36, 3}, {36, 56}, {57, 30}, {30, 30}}),
             QString());
    QCOMPARE(strayPoints(image, black, {{1, 17}, {1, 42}, {32, 3}, {32, 56}, {57, 20}, {57, 40}}),
             QString());
}

void tst_Arrows::theTriangleToTheLeftPointsLeft()
{
    DrawTriangleLeft triangle(nullptr);
    const QImage image = painted(triangle, QSize(60, 60));
    QCOMPARE(strayPoints(image, white, {{58, 21}, {58, 38}, {22, 4}, {22, 55}, {2, 30}, {30, 30}}),
             QString());
    QCOMPARE(strayPoints(image, black, {{58, 17}, {58, 42}, {27, 3}, {27, 56}, {2, 20}, {2, 40}}),
             QString());
}

QTEST_MAIN(tst_Arrows)
#include "tst_Arrows.moc"
