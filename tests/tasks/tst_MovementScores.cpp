#include "MovementScores.h"

#include "tables.h"

#include <QTest>

#include <array>
#include <cmath>
#include <limits>

class tst_MovementScores : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aTestHasFortyValidTrialsAndEightPlaces();
    void equalTimesAreTheirMeanAndLeaveNoFit_data();
    void equalTimesAreTheirMeanAndLeaveNoFit();
    void learningIsTakenOutOfTheMean();
    void unevenTimesAreFittedAsByHand();
    void theWholeTableIsCorrected();
    void aPlaceCountsWhereItLies_data();
    void aPlaceCountsWhereItLies();
    void theMeansByPlaceAreOfTheRawTimes();
    void theDivisorsDoNotFollowTheNumberOfTrials();
    void aShortTestIsFittedOverFortyEntries();
    void anEmptyTestHasNoTimeAndNoFit();
    void theErrorIsAShareOfAllTrials_data();
    void theErrorIsAShareOfAllTrials();
    void theErrorLeavesTheOtherScoresAlone();
    void aStoreBeyondTheFortiethLandsAmongTheCorrected();
    void aStoreOutsideTheBlockIsDropped_data();
    void aStoreOutsideTheBlockIsDropped();
    void aStoreBeyondTheTableStillCountsByItsPlace();
    void aLaterStoreReplacesTheTimeAndAddsToThePlace();
    void computingTwiceGivesTheSame();
    void aClearedTableHoldsNothing();
};

namespace {
constexpr int ranks = 40;

bool about(double value, double expected)
{
    return std::abs(value - expected) < 1e-9 * std::max(1.0, std::abs(expected));
}

using Times = std::array<double, ranks>;

/// A whole test: each of the eight places in turn.
void fill(MovementScores &table, const Times &times)
{
    for (int rank = 0; rank < ranks; ++rank)
        table.store(rank, rank % 8, times[std::size_t(rank)]);
}

/// Times without an order, between 300 and 2300 ms.
Times uneven()
{
    Times times{};
    for (std::size_t i = 0; i < times.size(); ++i)
        times[i] = double(300 + (i * i * 731 + i * 97) % 2000);
    return times;
}

/// The line through (ln rank, time) by the sums of the school book.
struct Line
{
    explicit Line(const Times &times)
    {
        double sx = 0.0;
        double sy = 0.0;
        double sxx = 0.0;
        double sxy = 0.0;
        double syy = 0.0;
        for (std::size_t i = 0; i < times.size(); ++i) {
            const double x = std::log(double(i + 1));
            sx += x;
            sy += times[i];
            sxx += x * x;
            sxy += x * times[i];
            syy += times[i] * times[i];
        }
        const double n = ranks;
        slope = (n * sxy - sx * sy) / (n * sxx - sx * sx);
        intercept = (sy - slope * sx) / n;
        const double r = (n * sxy - sx * sy) / std::sqrt((n * sxx - sx * sx) * (n * syy - sy * sy));
        r2 = r * r;
        // Each time plus slope (ln 40 - ln rank), averaged.
        corrected = (sy + slope * (n * std::log(40.0) - sx)) / n;
    }
    double slope;
    double intercept;
    double r2;
    double corrected;
};
} // namespace

void tst_MovementScores::aTestHasFortyValidTrialsAndEightPlaces()
{
    QCOMPARE(MovementScores::ranks, 40);
    QCOMPARE(MovementScores::places, 8);
}

void tst_MovementScores::equalTimesAreTheirMeanAndLeaveNoFit_data()
{
    QTest::addColumn<double>("time");
    for (const int time : {1, 250, 500, 800, 1234, 5000})
        QTest::addRow("%d ms", time) << double(time);
}

void tst_MovementScores::equalTimesAreTheirMeanAndLeaveNoFit()
{
    QFETCH(const double, time);
    MovementScores table;
    Times times{};
    times.fill(time);
    fill(table, times);
    const auto scores = table.compute(0, 40);
    QVERIFY(about(scores.rt, time));
    QVERIFY(std::abs(scores.fit.slope) < 1e-9);
    QVERIFY(about(scores.fit.intercept, time));
    QVERIFY(!std::isfinite(scores.fit.r2)); // a division by nothing, and left as it is
    for (const double mean :
         {scores.oblique, scores.cardinal, scores.left, scores.right, scores.top, scores.bottom})
        QCOMPARE(mean, time);
}

void tst_MovementScores::learningIsTakenOutOfTheMean()
{
    MovementScores table;
    Times times{};
    // A pure learning curve: 1200 ms at first, 150 ms less for each unit of ln(rank).
    for (int rank = 1; rank <= ranks; ++rank)
        times[std::size_t(rank - 1)] = 1200.0 - 150.0 * std::log(rank);
    fill(table, times);
    const auto scores = table.compute(0, 40);
    QVERIFY(about(scores.fit.slope, -150.0));
    QVERIFY(about(scores.fit.intercept, 1200.0));
    QVERIFY(about(scores.fit.r2, 1.0));
    const double last = 1200.0 - 150.0 * std::log(40.0);
    QVERIFY(about(scores.rt, last));
    for (int rank = 0; rank < ranks; ++rank)
        QVERIFY(about(table.corrected(rank), last));
    QCOMPARE(table.corrected(39), table.time(39));
}

void tst_MovementScores::unevenTimesAreFittedAsByHand()
{
    MovementScores table;
    const Times times = uneven();
    fill(table, times);
    const auto scores = table.compute(0, 40);
    const Line line(times);
    QVERIFY(about(scores.fit.slope, line.slope));
    QVERIFY(about(scores.fit.intercept, line.intercept));
    QVERIFY(about(scores.fit.r2, line.r2));
    QVERIFY(about(scores.rt, line.corrected));
}

void tst_MovementScores::theWholeTableIsCorrected()
{
    MovementScores table;
    const Times times = uneven();
    fill(table, times);
    const auto scores = table.compute(0, 40);
    double sum = 0.0;
    for (int rank = 1; rank <= ranks; ++rank) {
        const double raw = times[std::size_t(rank - 1)];
        QCOMPARE(table.time(rank - 1), raw);
        QVERIFY(about(table.corrected(rank - 1),
                      raw + scores.fit.slope * (std::log(40.0) - std::log(rank))));
        sum += table.corrected(rank - 1);
    }
    QVERIFY(about(scores.rt, sum / 40.0));
}

void tst_MovementScores::aPlaceCountsWhereItLies_data()
{
    QTest::addColumn<int>("place");
    QTest::addColumn<bool>("oblique");
    QTest::addColumn<int>("across");  // -1 left, 1 right
    QTest::addColumn<int>("upright"); // -1 top, 1 bottom
    QTest::newRow("E") << 0 << false << 1 << 0;
    QTest::newRow("SE") << 1 << true << 1 << 1;
    QTest::newRow("S") << 2 << false << 0 << 1;
    QTest::newRow("SW") << 3 << true << -1 << 1;
    QTest::newRow("W") << 4 << false << -1 << 0;
    QTest::newRow("NW") << 5 << true << -1 << -1;
    QTest::newRow("N") << 6 << false << 0 << -1;
    QTest::newRow("NE") << 7 << true << 1 << -1;
}

void tst_MovementScores::aPlaceCountsWhereItLies()
{
    QFETCH(const int, place);
    QFETCH(const bool, oblique);
    QFETCH(const int, across);
    QFETCH(const int, upright);
    QCOMPARE(QString(tables::_roseVents.at(std::size_t(place))),
             QString::fromLatin1(QTest::currentDataTag()));
    MovementScores table;
    table.store(0, place, 600.0);
    const auto scores = table.compute(0, 1);
    QCOMPARE(scores.oblique, oblique ? 30.0 : 0.0); // 600 / 20
    QCOMPARE(scores.cardinal, oblique ? 0.0 : 30.0);
    QCOMPARE(scores.left, across == -1 ? 40.0 : 0.0); // 600 / 15
    QCOMPARE(scores.right, across == 1 ? 40.0 : 0.0);
    QCOMPARE(scores.top, upright == -1 ? 40.0 : 0.0);
    QCOMPARE(scores.bottom, upright == 1 ? 40.0 : 0.0);
}

void tst_MovementScores::theMeansByPlaceAreOfTheRawTimes()
{
    MovementScores table;
    // Each place five times: 100 ms at the first, 200 at the second ... 800 at the eighth, and the
    // later ones the faster, so that there is something to correct.
    for (int rank = 0; rank < ranks; ++rank)
        table.store(rank, rank % 8, 100.0 * (rank % 8 + 1) + 40.0 - rank / 8 * 20.0);
    // The five passes add 40, 20, 0, -20 and -40: nothing.
    const auto scores = table.compute(0, 40);
    QVERIFY(std::abs(scores.fit.slope) > 1.0);
    QCOMPARE(scores.oblique, (200.0 + 400.0 + 600.0 + 800.0) / 4.0);
    QCOMPARE(scores.cardinal, (100.0 + 300.0 + 500.0 + 700.0) / 4.0);
    QCOMPARE(scores.left, (400.0 + 500.0 + 600.0) / 3.0);   // SW, W, NW
    QCOMPARE(scores.right, (100.0 + 200.0 + 800.0) / 3.0);  // E, SE, NE
    QCOMPARE(scores.top, (600.0 + 700.0 + 800.0) / 3.0);    // NW, N, NE
    QCOMPARE(scores.bottom, (200.0 + 300.0 + 400.0) / 3.0); // SE, S, SW
}

void tst_MovementScores::theDivisorsDoNotFollowTheNumberOfTrials()
{
    MovementScores table;
    for (int rank = 0; rank < 8; ++rank)
        table.store(rank, rank, 900.0);
    const auto scores = table.compute(0, 8);
    QCOMPARE(scores.oblique, 4 * 900.0 / 20.0);
    QCOMPARE(scores.cardinal, 4 * 900.0 / 20.0);
    QCOMPARE(scores.left, 3 * 900.0 / 15.0);
    QCOMPARE(scores.right, 3 * 900.0 / 15.0);
    QCOMPARE(scores.top, 3 * 900.0 / 15.0);
    QCOMPARE(scores.bottom, 3 * 900.0 / 15.0);
}

void tst_MovementScores::aShortTestIsFittedOverFortyEntries()
{
    MovementScores table;
    Times times{}; // three times, and 37 empty places
    times[0] = 1500.0;
    times[1] = 1100.0;
    times[2] = 900.0;
    for (int rank = 0; rank < 3; ++rank)
        table.store(rank, rank, times[std::size_t(rank)]);
    const auto scores = table.compute(1, 4);
    const Line line(times);
    QVERIFY(about(scores.fit.slope, line.slope));
    QVERIFY(about(scores.fit.r2, line.r2));
    QVERIFY(about(scores.rt, line.corrected));
    QVERIFY(about(table.corrected(20), line.slope * (std::log(40.0) - std::log(21.0))));
}

void tst_MovementScores::anEmptyTestHasNoTimeAndNoFit()
{
    MovementScores table;
    const auto scores = table.compute(0, 0);
    QCOMPARE(scores.rt, 0.0);
    QCOMPARE(scores.fit.slope, 0.0);
    QVERIFY(std::isnan(scores.fit.r2));
    QVERIFY(std::isnan(scores.error));
}

void tst_MovementScores::theErrorIsAShareOfAllTrials_data()
{
    QTest::addColumn<int>("errors");
    QTest::addColumn<int>("trials");
    QTest::addColumn<double>("percent");
    QTest::newRow("none") << 0 << 40 << 0.0;
    QTest::newRow("one of five") << 10 << 50 << 20.0;
    QTest::newRow("three of 43") << 3 << 43 << 300.0 / 43.0;
    QTest::newRow("most") << 60 << 100 << 60.0;
}

void tst_MovementScores::theErrorIsAShareOfAllTrials()
{
    QFETCH(const int, errors);
    QFETCH(const int, trials);
    QFETCH(const double, percent);
    MovementScores table;
    QVERIFY(about(table.compute(errors, trials).error, percent));
}

void tst_MovementScores::theErrorLeavesTheOtherScoresAlone()
{
    MovementScores table;
    fill(table, uneven());
    const auto clean = table.compute(0, 40);
    const auto poor = table.compute(25, 65);
    QCOMPARE(poor.rt, clean.rt);
    QCOMPARE(poor.fit.slope, clean.fit.slope);
    QCOMPARE(poor.cardinal, clean.cardinal);
}

void tst_MovementScores::aStoreBeyondTheFortiethLandsAmongTheCorrected()
{
    MovementScores table;
    const Times times = uneven();
    fill(table, times);
    const auto before = table.compute(0, 40);
    table.store(40, 0, 1234.0);
    QCOMPARE(table.corrected(0), 1234.0);
    table.store(79, 0, 4321.0);
    QCOMPARE(table.corrected(39), 4321.0);
    for (int rank = 0; rank < ranks; ++rank)
        QCOMPARE(table.time(rank), times[std::size_t(rank)]);
    const auto after = table.compute(0, 40);
    QCOMPARE(after.rt, before.rt); // they have been overwritten
    QCOMPARE(after.fit.slope, before.fit.slope);
    QCOMPARE(after.fit.r2, before.fit.r2);
    QCOMPARE(table.corrected(39), times[39]);
}

void tst_MovementScores::aStoreOutsideTheBlockIsDropped_data()
{
    QTest::addColumn<int>("rank");
    QTest::newRow("just behind") << 80;
    QTest::newRow("far behind") << 1'000'000;
    QTest::newRow("before") << -1;
    QTest::newRow("far before") << std::numeric_limits<int>::min();
}

void tst_MovementScores::aStoreOutsideTheBlockIsDropped()
{
    QFETCH(const int, rank);
    MovementScores table;
    table.store(rank, 3, 777.0);
    for (int r = 0; r < ranks; ++r) {
        QCOMPARE(table.time(r), 0.0);
        QCOMPARE(table.corrected(r), 0.0);
    }
}

void tst_MovementScores::aStoreBeyondTheTableStillCountsByItsPlace()
{
    MovementScores table;
    table.store(41, 3, 300.0);
    table.store(500, 3, 600.0);
    const auto scores = table.compute(0, 2);
    QCOMPARE(scores.oblique, 900.0 / 20.0);
    QCOMPARE(scores.left, 900.0 / 15.0);
    QCOMPARE(scores.bottom, 900.0 / 15.0);
    QCOMPARE(scores.rt, 0.0);
}

void tst_MovementScores::aLaterStoreReplacesTheTimeAndAddsToThePlace()
{
    MovementScores table;
    table.store(7, 2, 400.0);
    table.store(7, 2, 500.0);
    QCOMPARE(table.time(7), 500.0);
    QCOMPARE(table.compute(0, 2).cardinal, 900.0 / 20.0);
}

void tst_MovementScores::computingTwiceGivesTheSame()
{
    MovementScores table;
    fill(table, uneven());
    const auto once = table.compute(2, 42);
    const auto twice = table.compute(2, 42);
    QCOMPARE(twice.rt, once.rt);
    QCOMPARE(twice.fit.slope, once.fit.slope);
    QCOMPARE(twice.oblique, once.oblique);
    QCOMPARE(twice.top, once.top);
}

void tst_MovementScores::aClearedTableHoldsNothing()
{
    MovementScores table;
    fill(table, uneven());
    (void)table.compute(0, 40);
    table.clear();
    for (int rank = 0; rank < ranks; ++rank) {
        QCOMPARE(table.time(rank), 0.0);
        QCOMPARE(table.corrected(rank), 0.0);
    }
    const auto scores = table.compute(0, 40);
    QCOMPARE(scores.rt, 0.0);
    for (const double mean :
         {scores.oblique, scores.cardinal, scores.left, scores.right, scores.top, scores.bottom})
        QCOMPARE(mean, 0.0);
}

QTEST_MAIN(tst_MovementScores)
#include "tst_MovementScores.moc"
