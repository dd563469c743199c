#include "Study.h"
#include "StudyOptions.h"
#include "table.h"

#include <QTest>

#include <array>
#include <cmath>
#include <map>
#include <string>
#include <vector>

class tst_Observers : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void halfOfWhatIsNotGuessedIsSeenAtTheThreshold_data();
    void halfOfWhatIsNotGuessedIsSeenAtTheThreshold();
    void theShortestIsGuessedAndTheLongestFailedByLapses();
    void theSteepnessIsThatOfTheLogarithm();
    void halfOfAllAnswersIsRightBelowTheThresholdOfAGuesser_data();
    void halfOfAllAnswersIsRightBelowTheThresholdOfAGuesser();
    void whatIsGuessedOrNeverReachedHasNoExposure();

    void theTrainingTakesTenTrialsDownTheLadder_data();
    void theTrainingTakesTenTrialsDownTheLadder();
    void whoIsAlwaysRightEndsAtTheShortestExposure_data();
    void whoIsAlwaysRightEndsAtTheShortestExposure();
    void whoIsAlwaysWrongEndsAtTheLongestExposure_data();
    void whoIsAlwaysWrongEndsAtTheLongestExposure();
    void whoNeverAnswersIsUnstable();
    void aMeasureThatSettlesWithTheFiftiethEntryIsGivenUp();
    void theFirstTrialIsShownAtTheStartItself();

    void theSharesOfTheWalkAreInBalance_data();
    void theSharesOfTheWalkAreInBalance();
    void aWalkWithoutErrorsOrSuccessesStaysAtItsEnd();
    void theStaircaseWalksAsTheClosedFormSays_data();
    void theStaircaseWalksAsTheClosedFormSays();

    void theSummaryIsThatOfTheLogarithms();
    void aSummaryOfUnstableVisitsTellsNoResult();
    void theStudyCoversEverySubtaskScreenAndObserver();
    void theTableHasARowForEachObserver();
    void theSameSeedGivesTheSameTableWithAnyThreads();
    void observersAlikeDrawEachTheirOwn();
    void argumentsAreRead();
    void aBadArgumentIsToldByItsName_data();
    void aBadArgumentIsToldByItsName();
};

namespace {

constexpr Psychometric alwaysRight{100.0, 4.0, 0.0, 1.0};
constexpr Psychometric alwaysWrong{100.0, 4.0, 1.0, 0.0};

bool about(double value, double expected, double tolerance = 1e-9)
{
    return std::abs(value - expected) < tolerance * std::max(1.0, std::abs(expected));
}

Outcome visit(const Psychometric &observer, int frequency, Start start, double missed = 0.0)
{
    return Visits(observer, frequency, start, missed, Dice(1, 1)).next();
}

Start at(int exposure)
{
    return {Start::From::Exposure, exposure};
}

/// Answers by a script: S right, F wrong; it must be long enough.
auto scripted(const std::string &script)
{
    return [script, trial = std::size_t(0)](int, bool) mutable {
        return script.at(trial++) == 'S' ? Answer::Right : Answer::Wrong;
    };
}

std::string times(std::size_t count, const std::string &answers)
{
    std::string all;
    for (std::size_t i = 0; i < count; ++i)
        all += answers;
    return all;
}

} // namespace

// The observer.

void tst_Observers::halfOfWhatIsNotGuessedIsSeenAtTheThreshold_data()
{
    QTest::addColumn<double>("guess");
    QTest::addColumn<double>("lapse");
    QTest::addColumn<double>("expected");
    QTest::newRow("nothing guessed") << 0.0 << 0.0 << 0.5;
    QTest::newRow("central") << 0.2 << 0.0 << 0.6;
    QTest::newRow("central, lapses") << 0.2 << 0.04 << 0.58;
    QTest::newRow("peripheral") << 1.0 / 6.0 << 0.0 << 7.0 / 12.0;
    QTest::newRow("dual") << 1.0 / 30.0 << 0.0 << 31.0 / 60.0;
}

void tst_Observers::halfOfWhatIsNotGuessedIsSeenAtTheThreshold()
{
    QFETCH(const double, guess);
    QFETCH(const double, lapse);
    QFETCH(const double, expected);
    for (const double threshold : {17.0, 90.5, 4633.0}) {
        for (const double steepness : {0.5, 4.0, 20.0}) {
            const Psychometric observer{threshold, steepness, lapse, guess};
            QVERIFY(about(observer.chanceOfSuccess(threshold), expected));
        }
    }
}

void tst_Observers::theShortestIsGuessedAndTheLongestFailedByLapses()
{
    const Psychometric observer{100.0, 4.0, 0.05, 0.2};
    QVERIFY(about(observer.chanceOfSuccess(1e-6), 0.2));
    QVERIFY(about(observer.chanceOfSuccess(1e9), 0.95));
    QCOMPARE(alwaysRight.chanceOfSuccess(17.0), 1.0);
    QCOMPARE(alwaysRight.chanceOfSuccess(4633.0), 1.0);
    QCOMPARE(alwaysWrong.chanceOfSuccess(17.0), 0.0);
    QCOMPARE(alwaysWrong.chanceOfSuccess(4633.0), 0.0);
}

void tst_Observers::theSteepnessIsThatOfTheLogarithm()
{
    // Three in four of what is seen at all are seen where the odds are 3: a factor of 3^(1/k) above
    // the threshold, and one in four as far below it.
    for (const double steepness : {1.0, 2.0, 8.0}) {
        const Psychometric observer{120.0, steepness, 0.0, 0.0};
        const double factor = std::pow(3.0, 1.0 / steepness);
        QVERIFY(about(observer.chanceOfSuccess(120.0 * factor), 0.75));
        QVERIFY(about(observer.chanceOfSuccess(120.0 / factor), 0.25));
    }
}

void tst_Observers::halfOfAllAnswersIsRightBelowTheThresholdOfAGuesser_data()
{
    QTest::addColumn<double>("guess");
    QTest::addColumn<double>("lapse");
    QTest::addColumn<double>("odds"); // of what must be seen, worked out by hand
    // 0.3 of 0.8 must be seen: odds of 3 to 5. 1/3 of 5/6: 2 to 3. 14/30 of 29/30: 14 to 15.
    QTest::newRow("nothing guessed") << 0.0 << 0.0 << 1.0;
    QTest::newRow("central") << 0.2 << 0.0 << 3.0 / 5.0;
    QTest::newRow("peripheral") << 1.0 / 6.0 << 0.0 << 2.0 / 3.0;
    QTest::newRow("dual") << 1.0 / 30.0 << 0.0 << 14.0 / 15.0;
    QTest::newRow("central, lapses") << 0.2 << 0.05 << 0.3 / 0.45;
    QTest::newRow("lapses alone") << 0.0 << 0.05 << 0.5 / 0.45;
}

void tst_Observers::halfOfAllAnswersIsRightBelowTheThresholdOfAGuesser()
{
    QFETCH(const double, guess);
    QFETCH(const double, lapse);
    QFETCH(const double, odds);
    for (const double steepness : {1.0, 4.0}) {
        const Psychometric observer{200.0, steepness, lapse, guess};
        const double exposure = observer.exposureAt(0.5);
        QVERIFY(about(exposure, 200.0 * std::pow(odds, 1.0 / steepness)));
        QVERIFY(about(observer.chanceOfSuccess(exposure), 0.5));
    }
}

void tst_Observers::whatIsGuessedOrNeverReachedHasNoExposure()
{
    const Psychometric observer{100.0, 4.0, 0.05, 0.2};
    QCOMPARE(observer.exposureAt(0.2), 0.0);
    QCOMPARE(observer.exposureAt(0.1), 0.0);
    QVERIFY(std::isinf(observer.exposureAt(0.95)));
    QVERIFY(std::isinf(observer.exposureAt(1.0)));
}

// A visit.

void tst_Observers::theTrainingTakesTenTrialsDownTheLadder_data()
{
    QTest::addColumn<QString>("answers");
    QTest::addColumn<int>("exposure");
    QTest::newRow("always right") << "SSSSSSSSSS" << 17;
    QTest::newRow("always wrong") << "FFFFFFFFFF" << 4633;
    QTest::newRow("the tenth makes no step down") << "FFFFFFFFFS" << 4633;
    QTest::newRow("the ninth does") << "FFFFFFFFSF" << 4633;
    QTest::newRow("the ninth does, and the tenth none") << "FFFFFFFFSS" << 2283;
    QTest::newRow("the tenth makes a step up") << "SSSSSSSSSF" << 33;
    QTest::newRow("no answer, no step") << "SSMMMMMMMM" << 1133;
    QTest::newRow("there and back") << "SSFSSFSSFM" << 567;
}

void tst_Observers::theTrainingTakesTenTrialsDownTheLadder()
{
    QFETCH(const QString, answers);
    QFETCH(const int, exposure);
    Training training;
    QCOMPARE(training.exposure(), 4633);
    QCOMPARE(answers.size(), qsizetype(Training::trials));
    for (const QChar c : answers)
        training.take(c == u'S' ? Answer::Right : (c == u'F' ? Answer::Wrong : Answer::None));
    QCOMPARE(training.exposure(), exposure);
}

void tst_Observers::whoIsAlwaysRightEndsAtTheShortestExposure_data()
{
    QTest::addColumn<int>("start"); // 0: where the training ends
    QTest::addColumn<int>("trials");
    // At the shortest exposure a trial takes two entries, and ten trials 20. From 1133 ms 14 steps
    // lead there, and the fourth peak comes with the fifth trial behind them; from 4633 ms it's 19.
    QTest::newRow("training") << 0 << 10;
    QTest::newRow("17 ms") << 17 << 10;
    QTest::newRow("33 ms") << 33 << 11;
    QTest::newRow("1133 ms") << 1133 << 19;
    QTest::newRow("4633 ms") << 4633 << 24;
}

void tst_Observers::whoIsAlwaysRightEndsAtTheShortestExposure()
{
    QFETCH(const int, start);
    QFETCH(const int, trials);
    for (const int frequency : {0, 1}) {
        const Outcome outcome = visit(alwaysRight, frequency, start == 0 ? Start{} : at(start));
        QVERIFY(outcome.settled);
        QCOMPARE(outcome.result, 17);
        QCOMPARE(outcome.trials, trials);
        QCOMPARE(outcome.limitInf, 4);
        QCOMPARE(outcome.limitSup, 0);
    }
}

void tst_Observers::whoIsAlwaysWrongEndsAtTheLongestExposure_data()
{
    QTest::addColumn<int>("start");
    QTest::addColumn<int>("trials");
    QTest::newRow("training") << 0 << 10;
    QTest::newRow("4633 ms") << 4633 << 10;
    QTest::newRow("beyond the table") << 9999 << 10;
    QTest::newRow("17 ms") << 17 << 24;
}

void tst_Observers::whoIsAlwaysWrongEndsAtTheLongestExposure()
{
    QFETCH(const int, start);
    QFETCH(const int, trials);
    for (const int frequency : {0, 1}) {
        const Outcome outcome = visit(alwaysWrong, frequency, start == 0 ? Start{} : at(start));
        QVERIFY(outcome.settled);
        QVERIFY(outcome.result == 4632 || outcome.result == 4633); // by way of logarithms, and cut
        QCOMPARE(outcome.trials, trials);
        QCOMPARE(outcome.limitSup, 4);
        QCOMPARE(outcome.limitInf, 0);
    }
}

void tst_Observers::whoNeverAnswersIsUnstable()
{
    const Outcome outcome = visit(alwaysRight, 0, Start{}, 1.0);
    QVERIFY(!outcome.settled);
    QCOMPARE(outcome.trials, 50);
}

void tst_Observers::aMeasureThatSettlesWithTheFiftiethEntryIsGivenUp()
{
    // Down to the shortest exposure and back, three steps down again, and then to and fro: the
    // fourth of the new peaks comes with the ninth of these trials, and settles the measure.
    const std::string toAndFro = "SFSFSFSFS";
    const std::string late = times(19, "S") + times(19, "F") + "SSS" + toAndFro;
    QCOMPARE(late.size(), std::size_t(50));
    const Outcome lost = measure(0, 4633, scripted(late));
    QVERIFY(!lost.settled);
    QCOMPARE(lost.trials, 50);
    QCOMPARE(lost.result, 0);
    // The same from one step lower, so that it takes one entry less on the way down.
    const Outcome saved =
        measure(0, 3500, scripted(times(18, "S") + times(19, "F") + "SSS" + toAndFro));
    QVERIFY(saved.settled);
    QCOMPARE(saved.trials, 49);
    QCOMPARE(saved.result, int(std::sqrt(1983.0 * 1500.0)));
}

void tst_Observers::theFirstTrialIsShownAtTheStartItself()
{
    // Whoever sees 10 ms but not 5 fails at a start of 5 ms and never again: one trial up to 33 ms,
    // one down, and nine at the shortest exposure, of two entries each.
    const Psychometric observer{10.0, 1000.0, 0.0, 0.0};
    const Outcome below = visit(observer, 0, at(5));
    QCOMPARE(below.trials, 11);
    QCOMPARE(below.result, 17);
    QCOMPARE(visit(observer, 0, at(17)).trials, 10);
}

// The exact answer.

namespace {

constexpr int indices = 20;
using Matrix = std::array<std::array<double, indices>, indices>;

/// Gauss and Jordan, with the largest pivot of each column.
Matrix inverse(Matrix a)
{
    Matrix b{};
    for (std::size_t i = 0; i < indices; ++i)
        b[i][i] = 1.0;
    for (std::size_t column = 0; column < indices; ++column) {
        std::size_t pivot = column;
        for (std::size_t row = column; row < indices; ++row) {
            if (std::abs(a[row][column]) > std::abs(a[pivot][column]))
                pivot = row;
        }
        std::swap(a[pivot], a[column]);
        std::swap(b[pivot], b[column]);
        const double scale = 1.0 / a[column][column];
        for (std::size_t k = 0; k < indices; ++k) {
            a[column][k] *= scale;
            b[column][k] *= scale;
        }
        for (std::size_t row = 0; row < indices; ++row) {
            const double factor = a[row][column];
            if (row == column || factor == 0.0)
                continue;
            for (std::size_t k = 0; k < indices; ++k) {
                a[row][k] -= factor * a[column][k];
                b[row][k] -= factor * b[column][k];
            }
        }
    }
    return b;
}

/// The variance of the share of visits of each index in a walk of one trial's length, in the limit
/// of long walks: after n trials the share has a variance of this by n, or in other words n times
/// share (1 - share) by this independent trials. From the chain's fundamental matrix
/// Z = (I - P + W)^-1, where every row of W holds the shares: share (2 Z - 1 - share).
std::array<double, indices> variances(const StationaryWalk::Chances &success,
                                      const StationaryWalk &walk)
{
    Matrix m{};
    for (int i = 0; i < indices; ++i) {
        const double p = success[std::size_t(i + 1)];
        std::array<double, indices> &row = m[std::size_t(i)];
        for (int j = 0; j < indices; ++j)
            row[std::size_t(j)] = walk.share(j + 1);
        row[std::size_t(i)] += 1.0;
        row[std::size_t(std::max(i - 1, 0))] -= p;
        row[std::size_t(std::min(i + 1, indices - 1))] -= 1.0 - p;
    }
    const Matrix z = inverse(m);
    std::array<double, indices> all{};
    for (std::size_t i = 0; i < indices; ++i) {
        const double share = walk.share(int(i) + 1);
        all[i] = std::max(0.0, share * (2.0 * z[i][i] - 1.0 - share));
    }
    return all;
}

/// How often each entry was made on the track, and at which index each trial was shown.
struct Counts
{
    std::array<qint64, 22> shown{};
    qint64 floors = 0;
    qint64 ceilings = 0;
};

/// A long walk of the real staircase. Its track has an end, so that it is rewound now and then; the
/// index stays.
Counts walkFor(int trials, int frequency, int start, const StationaryWalk::Chances &success)
{
    constexpr int roomOnTrack = 90;
    Counts counts;
    Dice dice(11, 7);
    Staircase staircase;
    staircase.seed(frequency, start);
    for (int trial = 0; trial < trials; ++trial) {
        if (staircase.position() > roomOnTrack)
            staircase.rewind();
        const int before = staircase.position();
        ++counts.shown[std::size_t(staircase.index())];
        staircase.step(dice.falls(success[std::size_t(staircase.index())]));
        staircase.advance();
        for (const short entry : staircase.track().subspan(std::size_t(before) + 1)) {
            counts.floors += entry == 0 ? 1 : 0;
            counts.ceilings += entry == 21 ? 1 : 0;
        }
    }
    return counts;
}

struct Balanced
{
    const char *name;
    Psychometric observer;
};

constexpr std::array observers{
    Balanced{"central, gentle", {131.0, 2.0, 0.02, 1.0 / 5.0}},
    Balanced{"central, steep", {362.0, 8.0, 0.0, 1.0 / 5.0}},
    Balanced{"peripheral", {603.0, 4.0, 0.05, 1.0 / 6.0}},
    Balanced{"dual", {217.0, 4.0, 0.0, 1.0 / 30.0}},
    Balanced{"at the shortest exposure", {17.0, 2.0, 0.0, 1.0 / 5.0}},
    Balanced{"at the longest exposure", {4633.0, 2.0, 0.05, 1.0 / 30.0}},
    Balanced{"a coin", {283.0, 1.0, 0.5, 0.5}},
};

void addObservers()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<int>("frequency");
    for (std::size_t i = 0; i < observers.size(); ++i) {
        for (const int frequency : {0, 1})
            QTest::addRow("%s, %d Hz", observers[i].name, frequency == 0 ? 60 : 120)
                << int(i) << frequency;
    }
}

} // namespace

void tst_Observers::theSharesOfTheWalkAreInBalance_data()
{
    addObservers();
}

void tst_Observers::theSharesOfTheWalkAreInBalance()
{
    QFETCH(const int, number);
    QFETCH(const int, frequency);
    const auto success = chancesOf(observers[std::size_t(number)].observer, frequency);
    const StationaryWalk walk(success);
    double sum = 0.0;
    for (int i = 1; i <= indices; ++i)
        sum += walk.share(i);
    QVERIFY(about(sum, 1.0));
    for (int i = 1; i < indices; ++i) {
        const double up = walk.share(i) * (1.0 - success[std::size_t(i)]);
        const double down = walk.share(i + 1) * success[std::size_t(i + 1)];
        QVERIFY(std::abs(up - down) <= 1e-12 * up);
    }
    QVERIFY(about(walk.atFloor(), walk.share(1) * success[1]));
    QVERIFY(about(walk.atCeiling(), walk.share(20) * (1.0 - success[20])));
}

void tst_Observers::aWalkWithoutErrorsOrSuccessesStaysAtItsEnd()
{
    const StationaryWalk down(chancesOf(alwaysRight, 0));
    QCOMPARE(down.share(1), 1.0);
    QCOMPARE(down.share(2), 0.0);
    QCOMPARE(down.atFloor(), 1.0);
    QVERIFY(about(down.geometricMean(exposures::row(0)), 17.0));
    const StationaryWalk up(chancesOf(alwaysWrong, 1));
    QCOMPARE(up.share(20), 1.0);
    QCOMPARE(up.share(19), 0.0);
    QCOMPARE(up.atCeiling(), 1.0);
    QVERIFY(about(up.geometricMean(exposures::row(1)), 4633.0));
}

void tst_Observers::theStaircaseWalksAsTheClosedFormSays_data()
{
    addObservers();
}

/// Neighbouring trials are alike, so that a walk of n trials tells less about a share than n
/// independent ones; how much less is computed, and five standard errors are allowed.
void tst_Observers::theStaircaseWalksAsTheClosedFormSays()
{
    QFETCH(const int, number);
    QFETCH(const int, frequency);
    constexpr int trials = 4'000'000;
    constexpr double errors = 5.0;
    const Psychometric &observer = observers[std::size_t(number)].observer;
    const auto success = chancesOf(observer, frequency);
    const StationaryWalk walk(success);
    const Counts counts = walkFor(trials, frequency, int(observer.threshold), success);

    // The way from the start to the long run, and a share of nearly nothing, weigh a trial or two.
    constexpr double few = 20.0 / trials;
    const std::array<double, indices> variance = variances(success, walk);
    for (int i = 1; i <= indices; ++i) {
        const double share = double(counts.shown[std::size_t(i)]) / trials;
        const double error = std::sqrt(variance[std::size_t(i - 1)] / trials);
        QVERIFY2(std::abs(share - walk.share(i)) <= errors * error + few,
                 qPrintable(QStringLiteral("index %1: %2 of the trials, not %3 (error %4)")
                                .arg(i)
                                .arg(share)
                                .arg(walk.share(i))
                                .arg(error)));
    }

    // A reflection is one outcome of a trial at the end: its error is that of the visits there and
    // that of the outcomes, at the most their sum.
    const auto reflectionsAgree = [&](qint64 counted, double expected, int end, double chance) {
        const double visits = chance * std::sqrt(variance[std::size_t(end - 1)] / trials);
        const double outcomes = std::sqrt(walk.share(end) * chance * (1.0 - chance) / trials);
        return std::abs(double(counted) / trials - expected) <= errors * (visits + outcomes) + few;
    };
    QVERIFY(reflectionsAgree(counts.floors, walk.atFloor(), 1, success[1]));
    QVERIFY(reflectionsAgree(counts.ceilings, walk.atCeiling(), 20, 1.0 - success[20]));
}

// The study.

void tst_Observers::theSummaryIsThatOfTheLogarithms()
{
    // Settled: 100, 200, 50 and 400 ms, and one visit given up. The logarithms to base 2, from that
    // of 100: 0, 1, -1, 2. Their mean is 0.5, their median 0.5, their variance 5 / 3.
    const std::vector<Outcome> outcomes{{true, 100, 20, 0, 0},
                                        {true, 200, 22, 1, 0},
                                        {true, 50, 34, 0, 4},
                                        {false, 0, 50, 0, 0},
                                        {true, 400, 24, 0, 0}};
    const Summary summary = Summary::of(outcomes);
    QCOMPARE(summary.visits, 5);
    QVERIFY(about(summary.unstable, 0.2));
    QVERIFY(about(summary.mean, 100.0 * std::sqrt(2.0)));
    QVERIFY(about(summary.median, 100.0 * std::sqrt(2.0)));
    const double spread = std::log(2.0) * std::sqrt(5.0 / 3.0);
    QVERIFY(about(summary.spread, spread));
    QVERIFY(about(summary.smallestChange, std::exp(1.96 * std::sqrt(2.0) * spread)));
    // The one pair of which both have settled is the first one.
    QVERIFY(about(summary.change95, 2.0));
    QVERIFY(about(summary.trialsMean, 30.0));
    QCOMPARE(summary.trials95, 50.0);
    QVERIFY(about(summary.atCeiling, 0.25));
    QVERIFY(about(summary.atFloor, 0.25));
}

void tst_Observers::aSummaryOfUnstableVisitsTellsNoResult()
{
    const std::vector<Outcome> outcomes{{false, 0, 50, 0, 0}, {false, 0, 48, 0, 0}};
    const Summary summary = Summary::of(outcomes);
    QCOMPARE(summary.unstable, 1.0);
    QCOMPARE(summary.trialsMean, 49.0);
    for (const double value : {summary.mean, summary.median, summary.spread, summary.smallestChange,
                               summary.change95, summary.atFloor, summary.atCeiling})
        QVERIFY(std::isnan(value));
    const QByteArray text = table::written({{Condition{}, 100.0, 90.0, summary}});
    QVERIFY(text.split('\n').at(1).endsWith(";;;;;;;;;49;50;;"));
}

void tst_Observers::theStudyCoversEverySubtaskScreenAndObserver()
{
    const std::vector<Condition> conditions = study::conditions();
    std::map<int, int> bySubtask;
    std::map<int, int> byFrequency;
    std::map<double, int> byThreshold;
    std::map<double, int> bySteepness;
    std::map<double, int> byLapse;
    for (const Condition &condition : conditions) {
        ++bySubtask[condition.subtask];
        ++byFrequency[condition.frequency];
        ++byThreshold[condition.observer.threshold];
        ++bySteepness[condition.observer.steepness];
        ++byLapse[condition.observer.lapse];
        const std::array guesses{0.2, 1.0 / 6.0, 1.0 / 30.0};
        QCOMPARE(condition.observer.guess, guesses.at(std::size_t(condition.subtask)));
    }
    const auto isEven = [&](const auto &counts, std::size_t kinds) {
        return counts.size() == kinds &&
               std::all_of(counts.begin(), counts.end(), [&](const auto &entry) {
                   return std::size_t(entry.second) * kinds == conditions.size();
               });
    };
    QCOMPARE(conditions.size(), std::size_t(3 * 2 * 12 * 4 * 3));
    QVERIFY(isEven(bySubtask, 3));
    QVERIFY(isEven(byFrequency, 2));
    QVERIFY(isEven(byThreshold, 12));
    QVERIFY(isEven(bySteepness, 4));
    QVERIFY(isEven(byLapse, 3));
    QCOMPARE(byThreshold.begin()->first, 17.0);
    QCOMPARE(byThreshold.rbegin()->first, 4633.0);
}

namespace {

/// The table of every twentieth observer.
QByteArray smallTable(std::uint64_t seed, int threads)
{
    constexpr std::size_t step = 20;
    std::vector<Condition> some;
    const std::vector<Condition> all = study::conditions();
    for (std::size_t i = 0; i < all.size(); i += step)
        some.push_back(all[i]);
    study::Settings settings;
    settings.visits = 40;
    settings.seed = seed;
    settings.threads = threads;
    return table::written(study::run(some, settings));
}

} // namespace

void tst_Observers::theTableHasARowForEachObserver()
{
    const QList<QByteArray> lines = smallTable(1, 1).split('\n');
    QCOMPARE(lines.constFirst(),
             QByteArray("subtask;guess;frequency_hz;threshold_ms;steepness;lapse;half_right_ms;"
                        "walk_ms;visits;unstable;mean_ms;median_ms;mean_by_threshold;"
                        "median_by_threshold;mean_by_half_right;median_by_half_right;spread_ln;"
                        "smallest_change;change_95;trials_mean;trials_95;at_floor;at_ceiling"));
    QCOMPARE(lines.size(), qsizetype(1 + 44 + 1)); // the last line break ends the text
    QVERIFY(lines.constLast().isEmpty());
    QVERIFY(lines.at(1).startsWith("central;0.2;60;17;1;0;"));
    for (qsizetype i = 1; i + 1 < lines.size(); ++i) {
        const QList<QByteArray> fields = lines.at(i).split(';');
        QCOMPARE(fields.size(), qsizetype(23));
        QCOMPARE(fields.at(8), QByteArray("40"));
        const double mean = fields.at(10).toDouble();
        QVERIFY(mean >= 17.0 && mean <= 4633.0);
        QVERIFY(about(fields.at(12).toDouble(), mean / fields.at(3).toDouble(), 1e-4));
        QVERIFY(about(fields.at(14).toDouble(), mean / fields.at(6).toDouble(), 1e-4));
    }
}

void tst_Observers::theSameSeedGivesTheSameTableWithAnyThreads()
{
    const QByteArray alone = smallTable(5, 1);
    QCOMPARE(smallTable(5, 1), alone);
    for (const int threads : {2, 3, 8})
        QCOMPARE(smallTable(5, threads), alone);
    QVERIFY(smallTable(6, 1) != alone);
}

void tst_Observers::observersAlikeDrawEachTheirOwn()
{
    const Condition condition{0, 0, {131.0, 2.0, 0.02, 0.2}};
    study::Settings settings;
    settings.visits = 100;
    const std::vector<Finding> findings = study::run({condition, condition}, settings);
    QVERIFY(findings[0].summary.mean != findings[1].summary.mean);
    QCOMPARE(findings[0].walk, findings[1].walk);
}

void tst_Observers::argumentsAreRead()
{
    const StudyOptions plain = StudyOptions::parse({QStringLiteral("kelmoran-observers")});
    QCOMPARE(plain.wish, StudyOptions::Wish::Simulate);
    QCOMPARE(plain.settings.visits, 10'000);
    QCOMPARE(plain.settings.seed, std::uint64_t(1));
    QCOMPARE(plain.settings.missed, 0.0);
    QCOMPARE(plain.settings.start.from, Start::From::Training);
    QVERIFY(plain.settings.threads >= 1);
    QCOMPARE(plain.folder, QStringLiteral("."));

    const StudyOptions told = StudyOptions::parse(
        {QStringLiteral("kelmoran-observers"), QStringLiteral("--runs"), QStringLiteral("7"),
         QStringLiteral("--seed"), QStringLiteral("18446744073709551615"), QStringLiteral("--out"),
         QStringLiteral("here"), QStringLiteral("--threads"), QStringLiteral("3"),
         QStringLiteral("--missed"), QStringLiteral("0.05"), QStringLiteral("--start"),
         QStringLiteral("283")});
    QCOMPARE(told.wish, StudyOptions::Wish::Simulate);
    QCOMPARE(told.settings.visits, 7);
    QCOMPARE(told.settings.seed, std::uint64_t(18446744073709551615U));
    QCOMPARE(told.folder, QStringLiteral("here"));
    QCOMPARE(told.settings.threads, 3);
    QCOMPARE(told.settings.missed, 0.05);
    QCOMPARE(told.settings.start.from, Start::From::Exposure);
    QCOMPARE(told.settings.start.exposure, 283);

    const StudyOptions known = StudyOptions::parse(
        {QStringLiteral("kelmoran-observers"), QStringLiteral("--start=known")});
    QCOMPARE(known.settings.start.from, Start::From::Known);
    const StudyOptions help =
        StudyOptions::parse({QStringLiteral("kelmoran-observers"), QStringLiteral("--help")});
    QCOMPARE(help.wish, StudyOptions::Wish::Help);
    QVERIFY(help.text.contains(QStringLiteral("--missed")));
}

void tst_Observers::aBadArgumentIsToldByItsName_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("named");
    const auto row = [](const char *name, const char *argument, const char *value) {
        QTest::newRow(name) << QStringList{QString::fromLatin1(argument),
                                           QString::fromLatin1(value)}
                            << QString::fromLatin1(argument);
    };
    row("no visits", "--runs", "0");
    row("no number", "--runs", "many");
    row("no seed", "--seed", "-1");
    row("no folder", "--out", "");
    row("no threads", "--threads", "0");
    row("more than all", "--missed", "1.5");
    row("not a number of missed trials", "--missed", "nan");
    row("no start", "--start", "middle");
    row("no exposure", "--start", "0");
    row("unknown", "--speed", "9");
    QTest::newRow("a word too many")
        << QStringList{QStringLiteral("please")} << QStringLiteral("please");
}

void tst_Observers::aBadArgumentIsToldByItsName()
{
    QFETCH(const QStringList, arguments);
    QFETCH(const QString, named);
    const StudyOptions options =
        StudyOptions::parse(QStringList{QStringLiteral("kelmoran-observers")} + arguments);
    QCOMPARE(options.wish, StudyOptions::Wish::Complain);
    const QString name = named.mid(named.startsWith(QStringLiteral("--")) ? 2 : 0);
    QVERIFY2(options.text.contains(name), qPrintable(options.text));
}

QTEST_GUILESS_MAIN(tst_Observers)
#include "tst_Observers.moc"
