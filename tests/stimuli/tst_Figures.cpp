#include "figures.h"

#include <QTest>

#include <limits>

using figures::Arrow;

namespace {

/// Both sides as lists, so that a failure tells the points.
void compareArrows(const Arrow &actual, const Arrow &expected)
{
    QCOMPARE(QList<QPoint>(actual.begin(), actual.end()),
             QList<QPoint>(expected.begin(), expected.end()));
}

} // namespace

Q_DECLARE_METATYPE(Arrow)

class tst_Figures : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aNumberIsTruncatedTowardZero_data();
    void aNumberIsTruncatedTowardZero();
    void theCrossHasItsArmsOnTheTruncatedCentre_data();
    void theCrossHasItsArmsOnTheTruncatedCentre();
    void theGratingsKeepTheirSpacingInEverySize_data();
    void theGratingsKeepTheirSpacingInEverySize();
    void theOrientingArrowFollowsTheWidgetsSize_data();
    void theOrientingArrowFollowsTheWidgetsSize();
    void thePeripheralArrowFollowsSizeAndRatio_data();
    void thePeripheralArrowFollowsSizeAndRatio();
    void aRatioOfOneGivesAHeadAsWideAsTheWidgetIsHigh();
    void aRatioOfZeroStillGivesAnArrow();
    void theTriangleToTheLeftFillsTheWidget_data();
    void theTriangleToTheLeftFillsTheWidget();
    void theTriangleToTheRightFillsTheWidget_data();
    void theTriangleToTheRightFillsTheWidget();
};

void tst_Figures::aNumberIsTruncatedTowardZero_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("expected");
    constexpr double infinity = std::numeric_limits<double>::infinity();
    constexpr int most = std::numeric_limits<int>::max();
    QTest::newRow("zero") << 0.0 << 0;
    QTest::newRow("whole") << 7.0 << 7;
    QTest::newRow("nearly the next") << 7.999 << 7;
    QTest::newRow("negative") << -7.999 << -7;
    QTest::newRow("beyond the range") << 1e20 << most;
    QTest::newRow("infinity") << infinity << most;
    QTest::newRow("negative infinity") << -infinity << -most;
    QTest::newRow("not a number") << std::numeric_limits<double>::quiet_NaN() << 0;
}

void tst_Figures::aNumberIsTruncatedTowardZero()
{
    QFETCH(const double, value);
    QFETCH(const int, expected);
    QCOMPARE(figures::truncated(value), expected);
}

void tst_Figures::theCrossHasItsArmsOnTheTruncatedCentre_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QLine>("across");
    QTest::addColumn<QLine>("down");
    QTest::newRow("even") << QSize(40, 40) << QLine(0, 20, 40, 20) << QLine(20, 0, 20, 40);
    QTest::newRow("odd") << QSize(41, 41) << QLine(0, 20, 41, 20) << QLine(20, 0, 20, 41);
    QTest::newRow("oblong") << QSize(31, 12) << QLine(0, 6, 31, 6) << QLine(15, 0, 15, 12);
    QTest::newRow("one pixel") << QSize(1, 1) << QLine(0, 0, 1, 0) << QLine(0, 0, 0, 1);
}

void tst_Figures::theCrossHasItsArmsOnTheTruncatedCentre()
{
    QFETCH(const QSize, size);
    QFETCH(const QLine, across);
    QFETCH(const QLine, down);
    const figures::Cross arms = figures::cross(size);
    QCOMPARE(arms[0], across);
    QCOMPARE(arms[1], down);
}

void tst_Figures::theGratingsKeepTheirSpacingInEverySize_data()
{
    QTest::addColumn<int>("length");
    QTest::newRow("a patch of the movement task") << 48;
    QTest::newRow("small") << 10;
    QTest::newRow("large") << 200;
}

void tst_Figures::theGratingsKeepTheirSpacingInEverySize()
{
    QFETCH(const int, length);
    const figures::Grating rows = figures::rows(length);
    QCOMPARE(rows[0], QLine(0, 2, length, 2));
    QCOMPARE(rows[1], QLine(0, 17, length, 17));
    QCOMPARE(rows[2], QLine(0, 32, length, 32));
    QCOMPARE(rows[3], QLine(0, 47, length, 47));
    const figures::Grating columns = figures::columns(length);
    QCOMPARE(columns[0], QLine(2, 0, 2, length));
    QCOMPARE(columns[1], QLine(17, 0, 17, length));
    QCOMPARE(columns[2], QLine(32, 0, 32, length));
    QCOMPARE(columns[3], QLine(47, 0, 47, length));
}

void tst_Figures::theOrientingArrowFollowsTheWidgetsSize_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<Arrow>("expected");
    QTest::newRow("as the tasks show it")
        << QSize(100, 100) << Arrow{QPoint(-25, -2), QPoint(5, -2), QPoint(5, -7), QPoint(25, 0),
                                    QPoint(5, 7),    QPoint(5, 2),  QPoint(-25, 2)};
    QTest::newRow("odd") << QSize(99, 101)
                         << Arrow{QPoint(-24, -2), QPoint(4, -2), QPoint(4, -7), QPoint(24, 0),
                                  QPoint(4, 7),    QPoint(4, 2),  QPoint(-24, 2)};
    QTest::newRow("wide") << QSize(400, 40)
                          << Arrow{QPoint(-100, -1), QPoint(20, -1), QPoint(20, -3), QPoint(100, 0),
                                   QPoint(20, 3),    QPoint(20, 1),  QPoint(-100, 1)};
    QTest::newRow("too small for a head") << QSize(3, 3) << Arrow{};
}

void tst_Figures::theOrientingArrowFollowsTheWidgetsSize()
{
    QFETCH(const QSize, size);
    QFETCH(const Arrow, expected);
    compareArrows(figures::arrow(size), expected);
}

void tst_Figures::thePeripheralArrowFollowsSizeAndRatio_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<double>("ratio");
    QTest::addColumn<Arrow>("expected");
    QTest::newRow("at start") << QSize(90, 90) << 1.5
                              << Arrow{QPoint(-45, -10), QPoint(9, -10), QPoint(9, -30),
                                       QPoint(45, 0),    QPoint(9, 30),  QPoint(9, 10),
                                       QPoint(-45, 10)};
    QTest::newRow("ratio 1") << QSize(90, 90) << 1.0
                             << Arrow{QPoint(-45, -15), QPoint(9, -15), QPoint(9, -45),
                                      QPoint(45, 0),    QPoint(9, 45),  QPoint(9, 15),
                                      QPoint(-45, 15)};
    QTest::newRow("odd, every number truncated")
        << QSize(77, 55) << 1.3
        << Arrow{QPoint(-38, -7), QPoint(7, -7), QPoint(7, -21), QPoint(38, 0),
                 QPoint(7, 21),   QPoint(7, 7),  QPoint(-38, 7)};
    QTest::newRow("ratio below 1")
        << QSize(40, 20) << 0.5
        << Arrow{QPoint(-20, -6), QPoint(4, -6), QPoint(4, -20), QPoint(20, 0),
                 QPoint(4, 20),   QPoint(4, 6),  QPoint(-20, 6)};
}

void tst_Figures::thePeripheralArrowFollowsSizeAndRatio()
{
    QFETCH(const QSize, size);
    QFETCH(const double, ratio);
    QFETCH(const Arrow, expected);
    compareArrows(figures::arrowPeriph(size, ratio), expected);
}

void tst_Figures::aRatioOfOneGivesAHeadAsWideAsTheWidgetIsHigh()
{
    const Arrow arrow = figures::arrowPeriph(QSize(100, 64), 1.0);
    QCOMPARE(arrow[4].y() - arrow[2].y(), 64);
}

void tst_Figures::aRatioOfZeroStillGivesAnArrow()
{
    const Arrow arrow = figures::arrowPeriph(QSize(90, 90), 0.0);
    QCOMPARE(arrow[3], QPoint(45, 0));
    QCOMPARE(arrow[4].y(), std::numeric_limits<int>::max() / 2);
}

void tst_Figures::theTriangleToTheLeftFillsTheWidget_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<Arrow>("expected");
    QTest::newRow("square") << QSize(60, 60)
                            << Arrow{QPoint(0, 30),  QPoint(24, 0),  QPoint(24, 20), QPoint(60, 20),
                                     QPoint(60, 40), QPoint(24, 40), QPoint(24, 60)};
    QTest::newRow("odd") << QSize(51, 35)
                         << Arrow{QPoint(0, 17),  QPoint(20, 0),  QPoint(20, 11), QPoint(51, 11),
                                  QPoint(51, 23), QPoint(20, 23), QPoint(20, 35)};
}

void tst_Figures::theTriangleToTheLeftFillsTheWidget()
{
    QFETCH(const QSize, size);
    QFETCH(const Arrow, expected);
    compareArrows(figures::triangleLeft(size), expected);
}

void tst_Figures::theTriangleToTheRightFillsTheWidget_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<Arrow>("expected");
    // 60 / 1.667 is 35.99: the head begins a pixel before three fifths of the width.
    QTest::newRow("square") << QSize(60, 60)
                            << Arrow{QPoint(0, 20),  QPoint(35, 20), QPoint(35, 0), QPoint(60, 30),
                                     QPoint(35, 60), QPoint(35, 40), QPoint(0, 40)};
    QTest::newRow("odd") << QSize(51, 35)
                         << Arrow{QPoint(0, 11),  QPoint(30, 11), QPoint(30, 0), QPoint(51, 17),
                                  QPoint(30, 35), QPoint(30, 23), QPoint(0, 23)};
}

void tst_Figures::theTriangleToTheRightFillsTheWidget()
{
    QFETCH(const QSize, size);
    QFETCH(const Arrow, expected);
    compareArrows(figures::triangleRight(size), expected);
}

QTEST_APPLESS_MAIN(tst_Figures)
#include "tst_Figures.moc"
