#include "RefreshGrid.h"

#include <QTest>

namespace {
constexpr double ms = 1e6;
constexpr double sixtyHertz = 1e9 / 60;

/// Reports of a screen: `count` of them, one each `every` refreshes from number 1000 on.
RefreshReports told(double modePeriod, double period, int count, int every)
{
    RefreshReports reports;
    reports.begin(modePeriod);
    for (int i = 0; i < count; ++i)
        reports.note(quint64(1000 + i * every), std::llround(5e9 + i * every * period));
    return reports;
}
} // namespace

class tst_RefreshGrid : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aPictureIsOnTheGlassAtTheNextRefresh();
    void aMomentOnTheGridIsFollowedByTheNext();
    void anIntervalIsTheNumberOfRefreshesThatComesClosest_data();
    void anIntervalIsTheNumberOfRefreshesThatComesClosest();
    void aPictureIsDrawnInTheMiddleBetweenTwoRefreshes();
    void thePeriodIsMeasuredOverALongTime();
    void thePeriodIsTheModesAtFirst();
    void oneReportIsNoGrid();
    void aModeWithoutAPeriodIsNoGrid();
    void anotherRateThanTheModesIsNoGrid();
    void aScreenThatIsOnlyPlayedIsNoGrid();
    void aScreenThatWasSwitchedOffBeginsAnew();
    void theSameRefreshToldTwiceCountsOnce();
};

void tst_RefreshGrid::aPictureIsOnTheGlassAtTheNextRefresh()
{
    const RefreshGrid grid(100, 10);
    QCOMPARE(grid.nextAfter(101), 110);
    QCOMPARE(grid.nextAfter(109), 110);
    QCOMPARE(grid.nextAfter(1'000'005), 1'000'010);
    QCOMPARE(grid.nextAfter(-5), 0); // before the moment that is known
}

void tst_RefreshGrid::aMomentOnTheGridIsFollowedByTheNext()
{
    QCOMPARE(RefreshGrid(100, 10).nextAfter(100), 110);
    const RefreshGrid grid(0, sixtyHertz);
    qint64 moment = 0;
    for (int i = 1; i <= 1000; ++i) {
        moment = grid.nextAfter(moment);
        QVERIFY(std::abs(double(moment) - i * sixtyHertz) <= 1);
    }
}

void tst_RefreshGrid::anIntervalIsTheNumberOfRefreshesThatComesClosest_data()
{
    QTest::addColumn<double>("rate");
    QTest::addColumn<int>("interval");
    QTest::addColumn<int>("refreshes");
    QTest::newRow("the shortest exposure") << 60.0 << 17 << 1;
    QTest::newRow("two") << 60.0 << 33 << 2;
    QTest::newRow("the longest exposure") << 60.0 << 4633 << 278;
    QTest::newRow("a quarter of a frame too much") << 60.0 << 20 << 1;
    QTest::newRow("the shortest of the fast screen") << 120.0 << 17 << 2;
    QTest::newRow("between two of the slow screen") << 120.0 << 25 << 3;
    QTest::newRow("a screen of television") << 59.94 << 500 << 30;
    QTest::newRow("shorter than a frame") << 60.0 << 5 << 1;
    QTest::newRow("none") << 60.0 << 0 << 0;
    QTest::newRow("less than none") << 60.0 << -20 << 0;
}

void tst_RefreshGrid::anIntervalIsTheNumberOfRefreshesThatComesClosest()
{
    QFETCH(double, rate);
    QFETCH(int, interval);
    QTEST(RefreshGrid(0, 1e9 / rate).refreshes(interval), "refreshes");
}

void tst_RefreshGrid::aPictureIsDrawnInTheMiddleBetweenTwoRefreshes()
{
    const RefreshGrid grid(0, 10 * ms);
    QCOMPARE(grid.drawAfter(qint64(100 * ms), 30), qint64(125 * ms)); // on the glass at 130
    QCOMPARE(grid.drawAfter(qint64(100 * ms), 34), qint64(125 * ms));
    QCOMPARE(grid.drawAfter(qint64(100 * ms), 0), qint64(95 * ms)); // at once
}

void tst_RefreshGrid::thePeriodIsMeasuredOverALongTime()
{
    const double real = sixtyHertz * 1.0001;
    const auto grid = told(sixtyHertz, real, 5, 60).grid();
    QVERIFY(grid);
    QVERIFY(std::abs(grid->period() - real) < 1);
    QVERIFY(std::abs(double(grid->nextAfter(qint64(5e9 + 600.5 * real))) - (5e9 + 601 * real)) <
            500);
}

void tst_RefreshGrid::thePeriodIsTheModesAtFirst()
{
    const auto grid = told(sixtyHertz, sixtyHertz * 1.0001, 2, 60).grid();
    QVERIFY(grid);
    QCOMPARE(grid->period(), sixtyHertz);
}

void tst_RefreshGrid::oneReportIsNoGrid()
{
    QVERIFY(!told(sixtyHertz, sixtyHertz, 1, 60).grid());
}

void tst_RefreshGrid::aModeWithoutAPeriodIsNoGrid()
{
    QVERIFY(!told(0, sixtyHertz, 5, 60).grid());
}

void tst_RefreshGrid::anotherRateThanTheModesIsNoGrid()
{
    QVERIFY(!told(sixtyHertz, sixtyHertz * 1.2, 5, 60).grid());
}

void tst_RefreshGrid::aScreenThatIsOnlyPlayedIsNoGrid()
{
    // Such a server counts sixtieths of a second, and tells the moment of the question.
    RefreshReports reports;
    reports.begin(sixtyHertz);
    for (const double now : {5.0031e9, 5.7304e9, 6.9126e9, 8.0255e9})
        reports.note(quint64(now / sixtyHertz), qint64(now));
    QVERIFY(!reports.grid());
}

void tst_RefreshGrid::aScreenThatWasSwitchedOffBeginsAnew()
{
    RefreshReports reports = told(sixtyHertz, sixtyHertz, 5, 60);
    reports.note(3, qint64(20e9));
    QVERIFY(!reports.grid());
    reports.note(63, qint64(20e9 + 60 * sixtyHertz));
    QVERIFY(reports.grid());
}

void tst_RefreshGrid::theSameRefreshToldTwiceCountsOnce()
{
    RefreshReports reports = told(sixtyHertz, sixtyHertz, 1, 60);
    reports.note(1000, qint64(5e9));
    QVERIFY(!reports.grid());
}

QTEST_APPLESS_MAIN(tst_RefreshGrid)
#include "tst_RefreshGrid.moc"
