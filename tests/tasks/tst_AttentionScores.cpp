#include "AttentionScores.h"
#include "TaskDialog.h"
#include "attentionLayout.h"
#include "tables.h"

#include <QTest>

#include <cmath>

class tst_AttentionScores : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aTargetStandsOnTheCircle_data();
    void aTargetStandsOnTheCircle();
    void equalTimesAreTheirMeanAndLeaveNoFit();
    void learningIsTakenOutOfTheMean();
    void theGainsAreDifferencesFromTheNeutralMean();
    void theErrorsAreSharesOfAllTrials();
    void emptyPlacesCountAsNothing();
    void aTimeBeyondItsRowLandsInTheNextOne();
    void theLastRowsExcessDoesNotCount();
    void aStoreOutsideTheTableIsDropped_data();
    void aStoreOutsideTheTableIsDropped();
    void aClearedTableHoldsNothing();
    void aLengthOfTimeBecomesATimeOfDay_data();
    void aLengthOfTimeBecomesATimeOfDay();
};

namespace {
constexpr int ranks = AttentionScores::ranks;

void fill(AttentionScores &table, int condition, double (*time)(int rank))
{
    for (int rank = 1; rank <= ranks; ++rank)
        table.store(condition, rank, time(rank));
}

bool about(double value, double expected)
{
    return std::abs(value - expected) < 1e-9 * std::max(1.0, std::abs(expected));
}
} // namespace

void tst_AttentionScores::aTargetStandsOnTheCircle_data()
{
    QTest::addColumn<int>("direction");
    QTest::addColumn<QPoint>("place");
    // Around (640, 512): a left of 630 and a top of 502 are the middle; 250 sin 45 is 176.78.
    QTest::newRow("E") << 0 << QPoint(880, 502);
    QTest::newRow("SE") << 1 << QPoint(806, 678);
    QTest::newRow("S") << 2 << QPoint(630, 752);
    QTest::newRow("SW") << 3 << QPoint(453, 678);
    QTest::newRow("W") << 4 << QPoint(380, 502);
    QTest::newRow("NW") << 5 << QPoint(453, 325);
    QTest::newRow("N") << 6 << QPoint(630, 252);
    QTest::newRow("NE") << 7 << QPoint(806, 325);
}

void tst_AttentionScores::aTargetStandsOnTheCircle()
{
    QFETCH(const int, direction);
    QFETCH(const QPoint, place);
    QCOMPARE(attentionLayout::targetPlace(direction, {640, 512}), place);
    QCOMPARE(QString(tables::_roseVents.at(std::size_t(direction))),
             QString::fromLatin1(QTest::currentDataTag()));
}

void tst_AttentionScores::equalTimesAreTheirMeanAndLeaveNoFit()
{
    AttentionScores table;
    for (int condition = 0; condition < AttentionScores::conditions; ++condition)
        fill(table, condition, [](int) { return 250.0; });
    const auto scores = table.compute({0, 0, 0}, 96);
    QVERIFY(about(scores[0].value, 250.0));
    QCOMPARE(scores[1].value, 0.0);
    QVERIFY(std::abs(scores[0].fit.slope) < 1e-9);
    QVERIFY(std::isnan(scores[0].fit.r2)); // a quotient of nothing by nothing, and left as it is
}

void tst_AttentionScores::learningIsTakenOutOfTheMean()
{
    AttentionScores table;
    // A pure learning curve: 400 ms at first, 30 ms less for each unit of ln(rank), and after rank
    // 20 its level.
    fill(table, 0, [](int rank) { return 400.0 - 30.0 * std::log(std::min(rank, 20)); });
    const auto scores = table.compute({0, 0, 0}, 96);
    QVERIFY(about(scores[0].fit.slope, -30.0));
    QVERIFY(about(scores[0].fit.intercept, 400.0));
    QVERIFY(about(scores[0].fit.r2, 1.0));
    QVERIFY(about(scores[0].value, 400.0 - 30.0 * std::log(20.0)));
    QVERIFY(about(table.corrected(0, 1), 400.0 - 30.0 * std::log(20.0)));
    QCOMPARE(table.corrected(0, 20), table.time(0, 20));
}

void tst_AttentionScores::theGainsAreDifferencesFromTheNeutralMean()
{
    AttentionScores table;
    fill(table, 0, [](int) { return 300.0; });
    fill(table, 1, [](int) { return 260.0; });
    fill(table, 2, [](int) { return 315.0; });
    const auto scores = table.compute({0, 0, 0}, 96);
    QVERIFY(about(scores[0].value, 300.0));
    QVERIFY(about(scores[1].value, 40.0));
    QVERIFY(about(scores[2].value, -15.0)); // slower with the cue
}

void tst_AttentionScores::theErrorsAreSharesOfAllTrials()
{
    AttentionScores table;
    const auto scores = table.compute({1, 2, 5}, 104);
    QVERIFY(about(scores[0].error, 100.0 / 104.0));
    QVERIFY(about(scores[1].error, 200.0 / 104.0));
    QVERIFY(about(scores[2].error, 500.0 / 104.0));
}

void tst_AttentionScores::emptyPlacesCountAsNothing()
{
    AttentionScores table;
    table.store(0, 1, 320.0); // a single valid trial of 320 ms and 31 places of 0
    const auto scores = table.compute({0, 0, 0}, 1);

    // The line through (0, 320), (ln 2, 0) ... (ln 20, 0), worked out by its textbook formula.
    double sx = 0.0;
    double sxx = 0.0;
    for (int rank = 1; rank <= 20; ++rank) {
        sx += std::log(rank);
        sxx += std::log(rank) * std::log(rank);
    }
    const double slope = (20.0 * 0.0 - sx * 320.0) / (20.0 * sxx - sx * sx);
    QVERIFY(about(scores[0].fit.slope, slope));
    const double carried = slope * (20.0 * std::log(20.0) - sx);
    QVERIFY(about(scores[0].value, (320.0 + carried) / 32.0));
}

void tst_AttentionScores::aTimeBeyondItsRowLandsInTheNextOne()
{
    AttentionScores table;
    table.store(0, 33, 123.0);
    QCOMPARE(table.time(1, 1), 123.0);
    table.store(1, 34, 456.0);
    QCOMPARE(table.time(2, 2), 456.0);
}

void tst_AttentionScores::theLastRowsExcessDoesNotCount()
{
    AttentionScores table;
    const auto before = table.compute({0, 0, 0}, 96);
    table.store(2, 33, 999.0);
    QCOMPARE(table.corrected(0, 1), 999.0); // it lies where the corrected times begin
    const auto after = table.compute({0, 0, 0}, 96);
    QCOMPARE(after[0].value, before[0].value);
    QCOMPARE(after[2].value, before[2].value);
    QCOMPARE(table.corrected(0, 1), 0.0); // and has been overwritten
}

void tst_AttentionScores::aStoreOutsideTheTableIsDropped_data()
{
    QTest::addColumn<int>("condition");
    QTest::addColumn<int>("rank");
    QTest::newRow("rank 0") << 1 << 0;
    QTest::newRow("a rank taken back twice") << 0 << -1;
    QTest::newRow("behind the block") << 2 << 129;
    QTest::newRow("far behind the block") << 2 << 100000;
}

void tst_AttentionScores::aStoreOutsideTheTableIsDropped()
{
    QFETCH(const int, condition);
    QFETCH(const int, rank);
    AttentionScores table;
    table.store(condition, rank, 777.0);
    for (int c = 0; c < AttentionScores::conditions; ++c) {
        for (int r = 1; r <= ranks; ++r) {
            QCOMPARE(table.time(c, r), 0.0);
            QCOMPARE(table.corrected(c, r), 0.0);
        }
    }
}

void tst_AttentionScores::aClearedTableHoldsNothing()
{
    AttentionScores table;
    table.store(1, 5, 300.0);
    table.clear();
    QCOMPARE(table.time(1, 5), 0.0);
}

void tst_AttentionScores::aLengthOfTimeBecomesATimeOfDay_data()
{
    QTest::addColumn<int>("ms");
    QTest::addColumn<QTime>("time");
    QTest::newRow("none") << 0 << QTime(0, 0, 0);
    QTest::newRow("milliseconds are dropped") << 59'999 << QTime(0, 0, 59);
    QTest::newRow("minutes") << 754'321 << QTime(0, 12, 34);
    QTest::newRow("hours") << 3'723'000 << QTime(1, 2, 3);
}

void tst_AttentionScores::aLengthOfTimeBecomesATimeOfDay()
{
    QFETCH(const int, ms);
    QFETCH(const QTime, time);
    QCOMPARE(TaskDialog::msToQtime(ms), time);
}

QTEST_MAIN(tst_AttentionScores)
#include "tst_AttentionScores.moc"
