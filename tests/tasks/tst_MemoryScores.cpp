#include "MemoryScores.h"

#include <QTest>

#include <array>
#include <cmath>
#include <limits>
#include <utility>

/// The scores of a memory test from the distances and loads of its trials.
class tst_MemoryScores : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aTestHasThirtyValidTrialsInFiveBlocks();
    void equalDistancesAreTheirMeanAndDoNotGrow_data();
    void equalDistancesAreTheirMeanAndDoNotGrow();
    void equalDistancesLeaveNoFit();
    void aTestWithinAMillimetreGivesExactlyOne();
    void aDistanceThatGrowsByAFactorGivesTheFactor_data();
    void aDistanceThatGrowsByAFactorGivesTheFactor();
    void learningIsTakenOutOfTheMeans();
    void anIrregularTestIsScoredAsByHand();
    void theFirstAndTheLastCrossAreFittedApart();
    void theLastCrossDoesNotEnterTheLineOfTheLoad();
    void aTrialCountsAtItsLoad_data();
    void aTrialCountsAtItsLoad();
    void theOrderOfTheLoadsMattersForTheirLineAlone();
    void aShortTestIsFittedOverThirtyEntries();
    void anEmptyTestIsAtOneMillimetre();
    void ofALoadHeldTwiceInABlockTheLaterTrialCounts();
    void aPlaceThatNoTrialHasReachedIsZero();
    void aRankOutsideTheTableIsDroppedButCounted_data();
    void aRankOutsideTheTableIsDroppedButCounted();
    void aLaterStoreReplacesTheRankAndCountsAgain();
    void everyTrialIsCountedAtItsLoad();
    void theErrorIsThatOfTheValidTrials_data();
    void theErrorIsThatOfTheValidTrials();
    void theErrorLeavesTheOtherScoresAlone();
    void computingTwiceGivesTheSame();
    void aClearedTableHoldsNothing();
};

namespace {
constexpr int ranks = 30;
constexpr int loads = 6;

struct Trial
{
    int load;
    double first; ///< mm
    double last;
};
using Table = std::array<Trial, ranks>;

/// A whole test of an imagined patient.
constexpr Table irregular{
    {{1, 12.58, 1.44}, {0, 6.01, 5.03},   {3, 14.27, 7.02},  {5, 22.23, 2.42}, {2, 12.44, 5.49},
     {4, 11.57, 1.96}, {4, 7.70, 2.40},   {2, 25.53, 15.98}, {0, 16.87, 4.16}, {5, 21.19, 3.60},
     {3, 13.46, 6.77}, {1, 10.60, 15.55}, {3, 35.92, 2.94},  {0, 5.05, 7.52},  {2, 10.24, 5.62},
     {4, 19.83, 5.06}, {1, 6.92, 3.86},   {5, 11.76, 2.26},  {0, 7.86, 8.27},  {3, 12.75, 6.47},
     {1, 28.01, 2.11}, {4, 8.49, 6.97},   {5, 8.23, 3.21},   {2, 3.80, 10.25}, {5, 20.78, 5.72},
     {4, 16.50, 1.97}, {2, 2.44, 3.56},   {1, 7.17, 8.73},   {0, 2.48, 2.08},  {3, 7.40, 6.17}}};

/// The loads of five blocks, each in another order.
constexpr std::array<int, ranks> mixedLoads{0, 5, 1, 4, 2, 3, 3, 2, 4, 1, 5, 0, 1, 4, 0,
                                            5, 3, 2, 5, 0, 3, 2, 4, 1, 2, 3, 5, 0, 1, 4};
/// The same loads in the order in which each block begins anew with the shortest run.
constexpr std::array<int, ranks> risingLoads{0, 1, 2, 3, 4, 5, 0, 1, 2, 3, 4, 5, 0, 1, 2,
                                             3, 4, 5, 0, 1, 2, 3, 4, 5, 0, 1, 2, 3, 4, 5};

MemoryScores filled(const Table &table, int trials = ranks)
{
    MemoryScores scores;
    for (int rank = 0; rank < trials; ++rank) {
        const Trial &trial = table.at(std::size_t(rank));
        scores.store(rank, trial.load, trial.first, trial.last);
    }
    return scores;
}

/// A test in which every cross is missed by so much.
Table missedBy(double first, double last)
{
    Table table{};
    for (std::size_t rank = 0; rank < table.size(); ++rank)
        table[rank] = {mixedLoads.at(rank), first, last};
    return table;
}

bool about(double value, double expected)
{
    return std::abs(value - expected) < 1e-9 * std::max(1.0, std::abs(expected));
}

bool isExactly(double value, double expected)
{
    return value <= expected && value >= expected;
}
} // namespace

void tst_MemoryScores::aTestHasThirtyValidTrialsInFiveBlocks()
{
    QCOMPARE(MemoryScores::ranks, 30);
    QCOMPARE(MemoryScores::blocks, 5);
    QCOMPARE(memoryField::loads, 6);
}

void tst_MemoryScores::equalDistancesAreTheirMeanAndDoNotGrow_data()
{
    QTest::addColumn<double>("distance");
    for (const double distance : {1.0, 2.5, 17.0, 123.45, 9999.0})
        QTest::addRow("%.2f mm", distance) << distance;
}

void tst_MemoryScores::equalDistancesAreTheirMeanAndDoNotGrow()
{
    QFETCH(const double, distance);
    const auto scores = filled(missedBy(distance, distance)).compute(0, 30);
    QVERIFY(about(scores.averageF, distance));
    QVERIFY(about(scores.averageL, distance));
    QVERIFY(std::abs(scores.practiceF.slope) < 1e-9);
    QVERIFY(std::abs(scores.practiceL.slope) < 1e-9);
    QVERIFY(about(scores.practiceF.intercept, std::log(distance)));
    QVERIFY(about(scores.slope, 1.0)); // a factor: it stays as it is
    QVERIFY(about(scores.intercept, distance));
}

void tst_MemoryScores::equalDistancesLeaveNoFit()
{
    // 0 / 0, and left as it is. With other distances the logarithms are rounded.
    const auto scores = filled(missedBy(1.0, 1.0)).compute(0, 30);
    QVERIFY(std::isnan(scores.practiceF.r2));
    QVERIFY(std::isnan(scores.practiceL.r2));
    QVERIFY(std::isnan(scores.r2));
}

void tst_MemoryScores::aTestWithinAMillimetreGivesExactlyOne()
{
    const auto scores = filled(missedBy(1.0, 1.0)).compute(0, 30);
    QVERIFY(isExactly(scores.averageF, 1.0));
    QVERIFY(isExactly(scores.averageL, 1.0));
    QVERIFY(isExactly(scores.practiceF.slope, 0.0));
    QVERIFY(isExactly(scores.practiceL.slope, 0.0));
    QVERIFY(isExactly(scores.slope, 1.0));
    QVERIFY(isExactly(scores.intercept, 1.0));
}

void tst_MemoryScores::aDistanceThatGrowsByAFactorGivesTheFactor_data()
{
    QTest::addColumn<double>("atTwo"); // mm, at two crosses
    QTest::addColumn<double>("factor");
    QTest::newRow("half as far again") << 4.0 << 1.5;
    QTest::newRow("twice as far") << 1.5 << 2.0;
    QTest::newRow("always as far") << 8.0 << 1.0;
    QTest::newRow("nearer with every cross") << 40.0 << 0.8;
}

void tst_MemoryScores::aDistanceThatGrowsByAFactorGivesTheFactor()
{
    QFETCH(const double, atTwo);
    QFETCH(const double, factor);
    Table table = missedBy(1.0, 1.0);
    for (Trial &trial : table)
        trial.first = atTwo * std::pow(factor, trial.load);
    const auto scores = filled(table).compute(0, 30);
    // The order of the loads looks like a little practice, which is taken out.
    QVERIFY(std::abs(scores.slope / factor - 1.0) < 0.03);
    QVERIFY(std::abs(scores.intercept / atTwo - 1.0) < 0.15);
    if (!isExactly(factor, 1.0))
        QVERIFY(scores.r2 > 0.95);
    QVERIFY(isExactly(scores.averageL, 1.0));
}

void tst_MemoryScores::learningIsTakenOutOfTheMeans()
{
    // A pure learning curve: 20 mm at first, and less by a power of the rank.
    Table table = missedBy(1.0, 1.0);
    for (std::size_t rank = 0; rank < table.size(); ++rank) {
        table[rank].first = 20.0 * std::pow(double(rank + 1), -0.4);
        table[rank].last = 10.0 * std::pow(double(rank + 1), -0.1);
    }
    const auto scores = filled(table).compute(0, 30);
    QVERIFY(about(scores.practiceF.slope, -0.4));
    QVERIFY(about(scores.practiceF.intercept, std::log(20.0)));
    QVERIFY(about(scores.practiceF.r2, 1.0));
    QVERIFY(about(scores.practiceL.slope, -0.1));
    QVERIFY(about(scores.practiceL.intercept, std::log(10.0)));
    QVERIFY(about(scores.practiceL.r2, 1.0));
    const double atTheEnd = 20.0 * std::pow(30.0, -0.4);
    QVERIFY(about(scores.averageF, atTheEnd));
    QVERIFY(about(scores.averageL, 10.0 * std::pow(30.0, -0.1)));
    QVERIFY(about(scores.slope, 1.0)); // none of it is due to the load
    QVERIFY(about(scores.intercept, atTheEnd));
}

void tst_MemoryScores::anIrregularTestIsScoredAsByHand()
{
    const auto scores = filled(irregular).compute(0, 30);
    QVERIFY(about(scores.averageF, 9.0011544540));
    QVERIFY(about(scores.averageL, 5.1539491709));
    QVERIFY(about(scores.practiceF.slope, -0.1935316518));
    QVERIFY(about(scores.practiceF.intercept, 2.8555921891));
    QVERIFY(about(scores.practiceF.r2, 0.0618501061));
    QVERIFY(about(scores.practiceL.slope, 0.1392612374));
    QVERIFY(about(scores.practiceL.intercept, 1.1661082940));
    QVERIFY(about(scores.practiceL.r2, 0.0357537766));
    QVERIFY(about(scores.slope, 1.1759177015));
    QVERIFY(about(scores.intercept, 6.0028279222));
    QVERIFY(about(scores.r2, 0.1928337109));
}

void tst_MemoryScores::theFirstAndTheLastCrossAreFittedApart()
{
    Table swapped = irregular;
    for (Trial &trial : swapped)
        std::swap(trial.first, trial.last);
    const auto scores = filled(irregular).compute(0, 30);
    const auto other = filled(swapped).compute(0, 30);
    QCOMPARE(other.averageF, scores.averageL);
    QCOMPARE(other.averageL, scores.averageF);
    QCOMPARE(other.practiceF.slope, scores.practiceL.slope);
    QCOMPARE(other.practiceL.intercept, scores.practiceF.intercept);
    QCOMPARE(other.practiceL.r2, scores.practiceF.r2);
    QVERIFY(!about(other.slope, scores.slope));
}

void tst_MemoryScores::theLastCrossDoesNotEnterTheLineOfTheLoad()
{
    Table table = irregular;
    for (Trial &trial : table)
        trial.last = 3.0 * std::pow(1.8, trial.load);
    const auto before = filled(irregular).compute(0, 30);
    const auto after = filled(table).compute(0, 30);
    QVERIFY(!about(after.averageL, before.averageL));
    QCOMPARE(after.averageF, before.averageF);
    QCOMPARE(after.slope, before.slope);
    QCOMPARE(after.intercept, before.intercept);
    QCOMPARE(after.r2, before.r2);
}

void tst_MemoryScores::aTrialCountsAtItsLoad_data()
{
    QTest::addColumn<int>("load");
    QTest::addColumn<double>("slope"); // of the logarithms against the load
    // Five logarithms of 1 at one load and 25 of 0: 5 (load - 2.5) / 87.5, if nothing is corrected.
    for (int load = 0; load < loads; ++load)
        QTest::addRow("%d crosses", load + 2) << load << (load - 2.5) / 17.5;
}

void tst_MemoryScores::aTrialCountsAtItsLoad()
{
    QFETCH(const int, load);
    QFETCH(const double, slope);
    Table table = missedBy(1.0, 1.0);
    for (Trial &trial : table) {
        if (trial.load == load)
            trial.first = std::exp(1.0);
    }
    const auto scores = filled(table).compute(0, 30);
    // Taking out the practice that isn't there shifts all 30, by block and not by load.
    QVERIFY(std::abs(std::log(scores.slope) - slope) < 0.02);
}

void tst_MemoryScores::theOrderOfTheLoadsMattersForTheirLineAlone()
{
    // Within a block the distances are the same; the blocks differ.
    Table mixed{};
    Table rising{};
    for (std::size_t rank = 0; rank < mixed.size(); ++rank) {
        const double distance = 5.0 + double(rank / loads);
        mixed[rank] = {mixedLoads.at(rank), distance, distance};
        rising[rank] = {risingLoads.at(rank), distance, distance};
    }
    const auto one = filled(mixed).compute(0, 30);
    const auto other = filled(rising).compute(0, 30);
    QCOMPARE(other.averageF, one.averageF);
    QCOMPARE(other.averageL, one.averageL);
    QCOMPARE(other.practiceF.slope, one.practiceF.slope);
    QVERIFY(!about(other.slope, one.slope)); // what the correction adds follows the rank
}

void tst_MemoryScores::aShortTestIsFittedOverThirtyEntries()
{
    // The nine ranks behind count as ln(mm) 0, and at load 0.
    const auto scores = filled(irregular, 21).compute(0, 21);
    QVERIFY(about(scores.averageF, 2.8886693375));
    QVERIFY(about(scores.averageL, 2.0589666832));
    QVERIFY(about(scores.practiceF.slope, -0.8110432022));
    QVERIFY(about(scores.practiceF.intercept, 3.8193139750));
    QVERIFY(about(scores.practiceF.r2, 0.2929198842));
    QVERIFY(about(scores.practiceL.slope, -0.3604527152));
    QVERIFY(about(scores.practiceL.intercept, 1.9481750779));
    QVERIFY(about(scores.practiceL.r2, 0.1201921564));
    QVERIFY(about(scores.slope, 1.0925162938));
    QVERIFY(about(scores.intercept, 2.2551246141));
    QVERIFY(about(scores.r2, 0.0214453188));
}

void tst_MemoryScores::anEmptyTestIsAtOneMillimetre()
{
    const auto scores = MemoryScores().compute(0, 0);
    QVERIFY(isExactly(scores.averageF, 1.0));
    QVERIFY(isExactly(scores.averageL, 1.0));
    QVERIFY(isExactly(scores.slope, 1.0));
    QVERIFY(isExactly(scores.intercept, 1.0));
    QVERIFY(std::isnan(scores.r2));
    QVERIFY(std::isnan(scores.error));
}

void tst_MemoryScores::ofALoadHeldTwiceInABlockTheLaterTrialCounts()
{
    // The second block holds load 2 at the ranks 8 and 10, and load 5 nowhere.
    Table table = irregular;
    QCOMPARE(table[7].load, 2);
    QCOMPARE(table[9].load, 5);
    table[9].load = 2;
    const auto scores = filled(table).compute(0, 30);
    QVERIFY(about(scores.slope, 1.0851278987));
    QVERIFY(about(scores.intercept, 6.6435055786));
    QVERIFY(about(scores.r2, 0.0368974023));
    // The other two lines know nothing of the load.
    QVERIFY(about(scores.averageF, 9.0011544540));
    QVERIFY(about(scores.practiceF.slope, -0.1935316518));
    QVERIFY(about(scores.averageL, 5.1539491709));
}

void tst_MemoryScores::aPlaceThatNoTrialHasReachedIsZero()
{
    // All trials at the longest run: of each block the last one remains, at load 5.
    Table table = missedBy(std::exp(1.0), 1.0);
    for (Trial &trial : table)
        trial.load = 5;
    const auto scores = filled(table).compute(0, 30);
    // Five of 1 at load 5 and 25 of 0: 5 * 2.5 / 87.5, and a sixth at the middle of the axis.
    QVERIFY(about(std::log(scores.slope), 1.0 / 7.0));
    QVERIFY(about(std::log(scores.intercept), 1.0 / 6.0 - 2.5 / 7.0));
}

void tst_MemoryScores::aRankOutsideTheTableIsDroppedButCounted_data()
{
    QTest::addColumn<int>("rank");
    QTest::newRow("one before the first") << -1;
    QTest::newRow("two before") << -2;
    QTest::newRow("just behind") << 30;
    QTest::newRow("far behind") << 1'000'000;
    QTest::newRow("far before") << std::numeric_limits<int>::min();
}

void tst_MemoryScores::aRankOutsideTheTableIsDroppedButCounted()
{
    QFETCH(const int, rank);
    MemoryScores table = filled(irregular);
    const auto before = table.compute(0, 30);
    table.store(rank, 4, 777.0, 888.0);
    QCOMPARE(table.count(4), 6);
    for (int r = 0; r < ranks; ++r)
        QCOMPARE(table.load(r), irregular.at(std::size_t(r)).load);
    const auto after = table.compute(0, 30);
    QVERIFY(isExactly(after.averageF, before.averageF));
    QVERIFY(isExactly(after.averageL, before.averageL));
    QVERIFY(isExactly(after.slope, before.slope));
    QVERIFY(isExactly(after.practiceL.slope, before.practiceL.slope));
}

void tst_MemoryScores::aLaterStoreReplacesTheRankAndCountsAgain()
{
    // After an invalid trial the next one takes the place of the valid one before.
    MemoryScores table;
    table.store(7, 1, 400.0, 500.0);
    for (int rank = 0; rank < ranks; ++rank) {
        const Trial &trial = irregular.at(std::size_t(rank));
        table.store(rank, trial.load, trial.first, trial.last);
    }
    QCOMPARE(table.load(7), 2);
    QCOMPARE(table.count(1), 6);
    QCOMPARE(table.count(2), 5);
    QVERIFY(about(table.compute(1, 31).averageF, 9.0011544540));
    QVERIFY(about(table.compute(1, 31).averageL, 5.1539491709));
}

void tst_MemoryScores::everyTrialIsCountedAtItsLoad()
{
    MemoryScores table;
    std::array<int, loads> expected{};
    for (int rank = 0; rank < ranks; ++rank) {
        const int load = rank % 7 % loads;
        QCOMPARE(table.count(load), expected.at(std::size_t(load)));
        table.store(rank, load, 2.0, 3.0);
        ++expected.at(std::size_t(load));
        QCOMPARE(table.load(rank), load);
        QCOMPARE(table.count(load), expected.at(std::size_t(load)));
    }
}

void tst_MemoryScores::theErrorIsThatOfTheValidTrials_data()
{
    QTest::addColumn<int>("errors");
    QTest::addColumn<int>("trials");
    QTest::addColumn<double>("percent");
    QTest::newRow("none") << 0 << 30 << 0.0;
    QTest::newRow("one") << 1 << 31 << 3.225806451612903;
    QTest::newRow("three") << 3 << 33 << 9.090909090909092;
    QTest::newRow("as many as valid ones") << 60 << 60 << 100.0;
    QTest::newRow("more than valid ones") << 3 << 2 << 150.0;
}

void tst_MemoryScores::theErrorIsThatOfTheValidTrials()
{
    QFETCH(const int, errors);
    QFETCH(const int, trials);
    QFETCH(const double, percent);
    QVERIFY(about(filled(irregular).compute(errors, trials).error, percent));
}

void tst_MemoryScores::theErrorLeavesTheOtherScoresAlone()
{
    const MemoryScores table = filled(irregular);
    const auto clean = table.compute(0, 30);
    const auto poor = table.compute(25, 55);
    QCOMPARE(poor.averageF, clean.averageF);
    QCOMPARE(poor.averageL, clean.averageL);
    QCOMPARE(poor.slope, clean.slope);
    QCOMPARE(poor.practiceF.slope, clean.practiceF.slope);
}

void tst_MemoryScores::computingTwiceGivesTheSame()
{
    const MemoryScores table = filled(irregular);
    const auto once = table.compute(2, 32);
    const auto twice = table.compute(2, 32);
    QCOMPARE(twice.averageF, once.averageF);
    QCOMPARE(twice.averageL, once.averageL);
    QCOMPARE(twice.slope, once.slope);
    QCOMPARE(twice.intercept, once.intercept);
    QCOMPARE(twice.r2, once.r2);
}

void tst_MemoryScores::aClearedTableHoldsNothing()
{
    MemoryScores table = filled(irregular);
    (void)table.compute(0, 30);
    table.clear();
    for (int rank = 0; rank < ranks; ++rank)
        QCOMPARE(table.load(rank), 0);
    for (int load = 0; load < loads; ++load)
        QCOMPARE(table.count(load), 0);
    QVERIFY(isExactly(table.compute(0, 30).averageF, 1.0));
    QVERIFY(isExactly(table.compute(0, 30).averageL, 1.0));
}

QTEST_MAIN(tst_MemoryScores)
#include "tst_MemoryScores.moc"
