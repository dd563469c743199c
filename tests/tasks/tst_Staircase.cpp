#include "Staircase.h"
#include "exposures.h"

#include <QTest>

#include <algorithm>
#include <cmath>
#include <random>
#include <string>
#include <vector>

using Points = std::vector<short>;

class tst_Staircase : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyExposureIsAWholeNumberOfFrames_data();
    void everyExposureIsAWholeNumberOfFrames();
    void everyTrainingExposureIsAWholeNumberOfFramesOfBothScreens();
    void theOuterExposuresRepeatTheirNeighbours();
    void anExposureFindsItsPlaceInTheTable_data();
    void anExposureFindsItsPlaceInTheTable();
    void anExposureFindsItsRungOfTheTraining_data();
    void anExposureFindsItsRungOfTheTraining();

    void anEmptyStaircaseHoldsNothing();
    void theFirstEntryIsTheStart_data();
    void theFirstEntryIsTheStart();
    void aSuccessGoesOneStepDownAndAFailureOneStepUp();
    void aStepBetweenEqualExposuresIsAStep();
    void theLongestExposureReflectsAndTakesTwoPlaces();
    void theShortestExposureReflectsAndTakesTwoPlaces();
    void reachingTheOutermostExposureIsNoReflection();
    void aMissedTrialLeavesAZeroAndMovesNothing();
    void aRewoundTrackKeepsItsEntries();
    void aClearedStaircaseHoldsNothing();
    void aFullTrackTakesNoMore();
    void fiftyEntriesAreTheLast();
    void aReflectionMayJumpOverTheLastEntry();

    void peaksAndTroughsAreFoundInTheirOrder();
    void twoEntriesMakeNoTurningPoint();
    void aTroughBetweenTwoCeilingsIsFound();
    void aPeakBetweenTwoFloorsIsFound();
    void theFirstReflectionIsATurningPoint();
    void aMissedTrialIsATrough();
    void twoMissedTrialsInARowAreNoTrough();
    void thePeakBehindAMissedTrialIsFoundTwice();
    void aMissedTrialInFrontOfTheCeilingIsSteppedOver();

    void aGroupIsSettledWithinThreeSteps_data();
    void aGroupIsSettledWithinThreeSteps();
    void fourStepsApartIsNoGroup();
    void threeTurningPointsAreNoGroup();
    void settledPeaksWithoutSettledTroughsAreNoResult();
    void settledTroughsWithoutSettledPeaksAreNoResult();

    void nineteenEntriesGoOnAndTwentyStop();
    void aReflectionMayReachTwentyEntries();
    void theResultIsTheGeometricMeanOfTheEight();
    void theMembersOfTheResultAreThoseOfTheGroups();
    void aPatientWhoNeverErrsEndsAtTheShortestExposure();
    void aPatientWhoNeverErrsWalksDownFirst();
    void aPatientWhoAlwaysFailsEndsAtTheLongestExposure();
    void onlyPeaksBeyondTheLongestExposureCountAsItsLimit();
    void missedTrialsCountAsTheLimitOfTheShortestExposure();
    void theRowOfTheFrequencyGivesTheResult();
    void theResultIsComputedAnewBehindEveryTrial();

    void randomTracksAgreeWithTheRulesWrittenOut_data();
    void randomTracksAgreeWithTheRulesWrittenOut();
};

namespace {

constexpr int hz60 = 0;
constexpr int hz120 = 1;

/// A trial after the other: S a success, F a failure, M a trial without an answer. True if there is
/// a result behind the last one.
bool play(Staircase &staircase, const std::string &trials)
{
    bool result = false;
    for (const char trial : trials) {
        if (trial != 'M')
            staircase.step(trial == 'S');
        staircase.advance();
        result = staircase.analyse();
    }
    return result;
}

std::string times(int count, const std::string &trials)
{
    std::string all;
    for (int i = 0; i < count; ++i)
        all += trials;
    return all;
}

/// Walks step by step to each of these indices in turn, all of them inside the limits.
void walkTo(Staircase &staircase, const Points &turns)
{
    for (const short turn : turns) {
        while (staircase.index() != turn)
            play(staircase, staircase.index() > turn ? "S" : "F");
    }
}

/// A staircase at this exposure of a screen of 60 Hz.
Staircase startingAt(int exposure, int frequency = hz60)
{
    Staircase staircase;
    staircase.seed(frequency, exposure);
    return staircase;
}

/// One at this index, 1 to 20 but 3, which shares its exposure with 2.
Staircase startingAtIndex(int index)
{
    return startingAt(exposures::row(hz60)[std::size_t(index)]);
}

template <typename Range>
Points points(const Range &range)
{
    return {range.begin(), range.end()};
}

bool about(double value, double expected)
{
    return std::abs(value - expected) < 1e-9 * expected;
}

/// Of any number of exposures.
double geometricMean(const std::vector<int> &ms)
{
    double product = 1.0;
    for (const int exposure : ms)
        product *= double(exposure);
    return std::pow(product, 1.0 / double(ms.size()));
}

} // namespace

// The exposures.

void tst_Staircase::everyExposureIsAWholeNumberOfFrames_data()
{
    QTest::addColumn<int>("frequency");
    QTest::addColumn<int>("hertz");
    QTest::addColumn<QList<int>>("frames");
    QTest::newRow("60 Hz") << hz60 << 60
                           << QList<int>{1,  1,  2,  2,  3,  4,  5,   7,   9,   13,  17,
                                         22, 29, 39, 51, 68, 90, 119, 158, 210, 278, 278};
    QTest::newRow("120 Hz") << hz120 << 120
                            << QList<int>{2,  2,  4,  5,   6,   8,   11,  14,  19,  25,  33,
                                          44, 59, 78, 103, 136, 180, 239, 316, 419, 556, 556};
}

void tst_Staircase::everyExposureIsAWholeNumberOfFrames()
{
    QFETCH(const int, frequency);
    QFETCH(const int, hertz);
    QFETCH(const QList<int>, frames);
    const exposures::Row &row = exposures::row(frequency);
    QCOMPARE(frames.size(), qsizetype(row.size()));
    for (qsizetype i = 0; i < frames.size(); ++i)
        QCOMPARE(row[std::size_t(i)], qRound(1000.0 * frames.at(i) / hertz));
}

void tst_Staircase::everyTrainingExposureIsAWholeNumberOfFramesOfBothScreens()
{
    const QList<int> at60{1, 2, 4, 8, 17, 34, 68, 137, 278};
    QCOMPARE(at60.size(), qsizetype(exposures::_t_timer02_T1.size()));
    for (qsizetype i = 0; i < at60.size(); ++i) {
        const int exposure = exposures::_t_timer02_T1[std::size_t(i)];
        QCOMPARE(exposure, qRound(1000.0 * at60.at(i) / 60.0));
        QCOMPARE(exposure, qRound(1000.0 * 2 * at60.at(i) / 120.0));
    }
}

void tst_Staircase::theOuterExposuresRepeatTheirNeighbours()
{
    for (const int frequency : {hz60, hz120}) {
        const exposures::Row &row = exposures::row(frequency);
        QCOMPARE(row.front(), row[1]);
        QCOMPARE(row.back(), row[20]);
        QVERIFY(std::is_sorted(row.begin(), row.end()));
    }
    QCOMPARE(exposures::row(7), exposures::row(hz60));
    QCOMPARE(exposures::row(-1), exposures::row(hz60));
}

void tst_Staircase::anExposureFindsItsPlaceInTheTable_data()
{
    QTest::addColumn<int>("exposure");
    QTest::addColumn<int>("at60");
    QTest::addColumn<int>("at120");
    QTest::newRow("none") << 0 << 1 << 1;
    QTest::newRow("below nothing") << -40 << 1 << 1;
    QTest::newRow("16") << 16 << 1 << 1;
    QTest::newRow("17") << 17 << 1 << 1;
    QTest::newRow("18") << 18 << 2 << 2;
    QTest::newRow("33, the first of two at 60 Hz") << 33 << 2 << 2;
    QTest::newRow("34, behind both") << 34 << 4 << 3;
    QTest::newRow("42") << 42 << 4 << 3;
    QTest::newRow("43") << 43 << 4 << 4;
    QTest::newRow("67, a rung of the training") << 67 << 5 << 5;
    QTest::newRow("84") << 84 << 7 << 6;
    QTest::newRow("93") << 93 << 7 << 7;
    QTest::newRow("133, a rung beside the table") << 133 << 8 << 8;
    QTest::newRow("151") << 151 << 9 << 8;
    QTest::newRow("217") << 217 << 9 << 10;
    QTest::newRow("283") << 283 << 10 << 11;
    QTest::newRow("567, a rung beside the table") << 567 << 13 << 13;
    QTest::newRow("1133") << 1133 << 15 << 15;
    QTest::newRow("1134") << 1134 << 16 << 16;
    QTest::newRow("2283, a rung beside the table") << 2283 << 18 << 18;
    QTest::newRow("3500") << 3500 << 19 << 20;
    QTest::newRow("3501") << 3501 << 20 << 20;
    QTest::newRow("4632, a threshold of a patient who always failed") << 4632 << 20 << 20;
    QTest::newRow("4633") << 4633 << 20 << 20;
    QTest::newRow("4634") << 4634 << 20 << 20;
    QTest::newRow("a minute") << 60'000 << 20 << 20;
}

void tst_Staircase::anExposureFindsItsPlaceInTheTable()
{
    QFETCH(const int, exposure);
    QFETCH(const int, at60);
    QFETCH(const int, at120);
    QCOMPARE(exposures::testIndex(hz60, exposure), at60);
    QCOMPARE(exposures::testIndex(hz120, exposure), at120);
}

void tst_Staircase::anExposureFindsItsRungOfTheTraining_data()
{
    QTest::addColumn<int>("exposure");
    QTest::addColumn<int>("rung");
    QTest::newRow("none") << 0 << 8;
    QTest::newRow("below nothing") << -1 << 8;
    QTest::newRow("1") << 1 << 0;
    QTest::newRow("17") << 17 << 0;
    QTest::newRow("18") << 18 << 1;
    QTest::newRow("33") << 33 << 1;
    QTest::newRow("34") << 34 << 2;
    QTest::newRow("133") << 133 << 3;
    QTest::newRow("134") << 134 << 4;
    QTest::newRow("283") << 283 << 4;
    QTest::newRow("567") << 567 << 5;
    QTest::newRow("1133, where a trained patient begins") << 1133 << 6;
    QTest::newRow("2283") << 2283 << 7;
    QTest::newRow("2284") << 2284 << 8;
    QTest::newRow("4633") << 4633 << 8;
    QTest::newRow("4634") << 4634 << 8;
}

void tst_Staircase::anExposureFindsItsRungOfTheTraining()
{
    QFETCH(const int, exposure);
    QFETCH(const int, rung);
    QCOMPARE(exposures::trainingIndex(exposure), rung);
}

// The walk.

void tst_Staircase::anEmptyStaircaseHoldsNothing()
{
    const Staircase staircase;
    QCOMPARE(staircase.position(), 0);
    QCOMPARE(points(staircase.track()), Points{0});
    QCOMPARE(staircase.reversals(), 0);
    QVERIFY(!staircase.isSettled());
    QVERIFY(!staircase.isSpent());
    QCOMPARE(staircase.score().mean, 0.0);
    QCOMPARE(staircase.score().sup, 0.0);
    QCOMPARE(staircase.score().inf, 0.0);
    QCOMPARE(staircase.score().limitSup, 0);
    QCOMPARE(staircase.score().limitInf, 0);
}

void tst_Staircase::theFirstEntryIsTheStart_data()
{
    anExposureFindsItsPlaceInTheTable_data();
}

void tst_Staircase::theFirstEntryIsTheStart()
{
    QFETCH(const int, exposure);
    QFETCH(const int, at60);
    QFETCH(const int, at120);
    for (const int frequency : {hz60, hz120}) {
        const Staircase staircase = startingAt(exposure, frequency);
        const int index = frequency == hz60 ? at60 : at120;
        QCOMPARE(staircase.index(), index);
        QCOMPARE(points(staircase.track()), Points{short(index)});
        QCOMPARE(staircase.position(), 0);
        QCOMPARE(staircase.exposure(), exposures::row(frequency)[std::size_t(index)]);
    }
}

void tst_Staircase::aSuccessGoesOneStepDownAndAFailureOneStepUp()
{
    Staircase staircase = startingAt(1133);
    QVERIFY(!staircase.step(true));
    QCOMPARE(staircase.index(), 14);
    QCOMPARE(staircase.exposure(), 850);
    QCOMPARE(staircase.position(), 0); // the trial isn't over
    staircase.advance();
    QCOMPARE(staircase.position(), 1);
    QCOMPARE(points(staircase.track()), (Points{15, 14}));
    QVERIFY(!staircase.step(false));
    staircase.advance();
    QCOMPARE(staircase.exposure(), 1133);
    QCOMPARE(points(staircase.track()), (Points{15, 14, 15}));
}

void tst_Staircase::aStepBetweenEqualExposuresIsAStep()
{
    Staircase staircase = startingAt(33);
    QCOMPARE(staircase.index(), 2);
    staircase.step(false);
    QCOMPARE(staircase.index(), 3);
    QCOMPARE(staircase.exposure(), 33);
    staircase.advance();
    staircase.step(false);
    QCOMPARE(staircase.index(), 4);
    QCOMPARE(staircase.exposure(), 50);
}

void tst_Staircase::theLongestExposureReflectsAndTakesTwoPlaces()
{
    Staircase staircase = startingAt(4633);
    QVERIFY(staircase.step(false));
    QCOMPARE(staircase.position(), 1);
    QCOMPARE(staircase.index(), 20);
    QCOMPARE(staircase.exposure(), 4633);
    staircase.advance();
    QCOMPARE(staircase.position(), 2);
    QCOMPARE(points(staircase.track()), (Points{20, 21, 20}));
}

void tst_Staircase::theShortestExposureReflectsAndTakesTwoPlaces()
{
    Staircase staircase = startingAt(17);
    QVERIFY(staircase.step(true));
    QCOMPARE(staircase.position(), 1);
    QCOMPARE(staircase.index(), 1);
    QCOMPARE(staircase.exposure(), 17);
    staircase.advance();
    QCOMPARE(staircase.position(), 2);
    QCOMPARE(points(staircase.track()), (Points{1, 0, 1}));
}

void tst_Staircase::reachingTheOutermostExposureIsNoReflection()
{
    Staircase down = startingAt(33);
    QVERIFY(!down.step(true));
    down.advance();
    QCOMPARE(points(down.track()), (Points{2, 1}));
    Staircase up = startingAt(3500);
    QVERIFY(!up.step(false));
    up.advance();
    QCOMPARE(points(up.track()), (Points{19, 20}));
}

void tst_Staircase::aMissedTrialLeavesAZeroAndMovesNothing()
{
    Staircase staircase = startingAt(283);
    play(staircase, "SMF");
    QCOMPARE(points(staircase.track()), (Points{10, 9, 0, 10}));
    QCOMPARE(staircase.index(), 10);
    play(staircase, "M");
    QCOMPARE(staircase.exposure(), 283);
    QCOMPARE(points(staircase.track()), (Points{10, 9, 0, 10, 0}));
}

void tst_Staircase::aRewoundTrackKeepsItsEntries()
{
    Staircase staircase = startingAt(283);
    play(staircase, "SSF");
    QCOMPARE(points(staircase.track()), (Points{10, 9, 8, 9}));
    staircase.rewind();
    QCOMPARE(staircase.position(), 0);
    QCOMPARE(points(staircase.track()), Points{10});
    QCOMPARE(staircase.index(), 9);
    staircase.advance(); // a trial without an answer shows what stood there
    QCOMPARE(points(staircase.track()), (Points{10, 9}));
}

void tst_Staircase::aClearedStaircaseHoldsNothing()
{
    Staircase staircase = startingAt(17);
    QVERIFY(play(staircase, times(15, "S")));
    staircase.clear();
    QCOMPARE(staircase.position(), 0);
    QCOMPARE(staircase.reversals(), 0);
    QVERIFY(!staircase.isSettled());
    QCOMPARE(staircase.score().mean, 0.0);
    QCOMPARE(staircase.score().limitInf, 0);
    staircase.seed(hz60, 283);
    play(staircase, "MM");
    QCOMPARE(points(staircase.track()), (Points{10, 0, 0}));
}

void tst_Staircase::aFullTrackTakesNoMore()
{
    for (const char *trial : {"S", "F", "M", "SF", "FS", "SM"}) {
        Staircase staircase = startingAt(17);
        play(staircase, times(500, trial));
        QVERIFY(staircase.position() >= 2 * Staircase::ceiling);
        QCOMPARE(staircase.track().size(), std::size_t(staircase.position()) + 1);
        QVERIFY(staircase.index() >= 1 && staircase.index() <= 20);
    }
}

void tst_Staircase::fiftyEntriesAreTheLast()
{
    Staircase staircase = startingAt(283);
    play(staircase, times(49, "M"));
    QVERIFY(!staircase.isSpent());
    play(staircase, "M");
    QCOMPARE(staircase.position(), 50);
    QVERIFY(staircase.isSpent());
}

void tst_Staircase::aReflectionMayJumpOverTheLastEntry()
{
    Staircase staircase = startingAt(3500);
    play(staircase, times(25, "F"));
    QCOMPARE(staircase.position(), 49);
    QVERIFY(!staircase.isSpent());
    play(staircase, "F");
    QCOMPARE(staircase.position(), 51);
    QVERIFY(staircase.isSpent());
}

// The turning points.

void tst_Staircase::peaksAndTroughsAreFoundInTheirOrder()
{
    Staircase staircase = startingAtIndex(10);
    walkTo(staircase, {13, 11, 12, 8, 9, 7});
    QCOMPARE(points(staircase.peaks()), (Points{13, 12, 9}));
    QCOMPARE(points(staircase.troughs()), (Points{11, 8}));
    QCOMPARE(staircase.reversals(), 5);
}

void tst_Staircase::twoEntriesMakeNoTurningPoint()
{
    Staircase staircase = startingAtIndex(10);
    play(staircase, "S");
    QCOMPARE(staircase.reversals(), 0);
    play(staircase, "F");
    QCOMPARE(points(staircase.troughs()), Points{9});
    QCOMPARE(staircase.reversals(), 1);
}

void tst_Staircase::aTroughBetweenTwoCeilingsIsFound()
{
    Staircase staircase = startingAt(4633);
    play(staircase, "F");
    QCOMPARE(points(staircase.peaks()), Points{21});
    QCOMPARE(points(staircase.troughs()), Points{});
    play(staircase, "F"); // 20 21 20 21 20
    QCOMPARE(points(staircase.peaks()), (Points{21, 21}));
    QCOMPARE(points(staircase.troughs()), Points{20});
}

void tst_Staircase::aPeakBetweenTwoFloorsIsFound()
{
    Staircase staircase = startingAt(17);
    play(staircase, "S");
    QCOMPARE(points(staircase.troughs()), Points{0});
    QCOMPARE(points(staircase.peaks()), Points{});
    play(staircase, "S"); // 1 0 1 0 1
    QCOMPARE(points(staircase.troughs()), (Points{0, 0}));
    QCOMPARE(points(staircase.peaks()), Points{1});
}

void tst_Staircase::theFirstReflectionIsATurningPoint()
{
    Staircase up = startingAt(3500);
    play(up, "FFS"); // 19 20 21 20 19
    QCOMPARE(points(up.peaks()), Points{21});
    QCOMPARE(points(up.troughs()), Points{});
    Staircase down = startingAt(33);
    play(down, "SSF"); // 2 1 0 1 2
    QCOMPARE(points(down.troughs()), Points{0});
    QCOMPARE(points(down.peaks()), Points{});
}

void tst_Staircase::aMissedTrialIsATrough()
{
    Staircase staircase = startingAtIndex(10);
    play(staircase, "FMS"); // 10 11 0 10
    QCOMPARE(points(staircase.peaks()), Points{11});
    QCOMPARE(points(staircase.troughs()), Points{0});
}

void tst_Staircase::twoMissedTrialsInARowAreNoTrough()
{
    Staircase staircase = startingAtIndex(10);
    play(staircase, "FMMSS"); // 10 11 0 0 10 9
    QCOMPARE(points(staircase.troughs()), Points{});
    QCOMPARE(points(staircase.peaks()), (Points{11, 10}));
}

void tst_Staircase::thePeakBehindAMissedTrialIsFoundTwice()
{
    Staircase staircase = startingAtIndex(10);
    play(staircase, "MSS"); // 10 0 9 8
    QCOMPARE(points(staircase.troughs()), Points{0});
    QCOMPARE(points(staircase.peaks()), Points{9});
    play(staircase, "S"); // the 0 looks like a reflection at the floor
    QCOMPARE(points(staircase.peaks()), (Points{9, 9}));
    play(staircase, "S");
    QCOMPARE(points(staircase.peaks()), (Points{9, 9}));
}

void tst_Staircase::aMissedTrialInFrontOfTheCeilingIsSteppedOver()
{
    Staircase staircase = startingAt(4633);
    play(staircase, "MF"); // 20 0 21 20
    QCOMPARE(points(staircase.peaks()), Points{21});
    QCOMPARE(points(staircase.troughs()), Points{});
    play(staircase, "S");
    QCOMPARE(points(staircase.peaks()), (Points{21, 21}));
}

// The settled groups.

void tst_Staircase::aGroupIsSettledWithinThreeSteps_data()
{
    QTest::addColumn<Points>("found");
    QTest::addColumn<Points>("group");
    QTest::newRow("all alike") << Points{9, 9, 9, 9} << Points{9, 9, 9, 9};
    QTest::newRow("the newest is the lowest") << Points{12, 11, 10, 10} << Points{10, 10, 11, 12};
    QTest::newRow("the newest is the middle") << Points{10, 11, 12, 11} << Points{11, 12, 11, 10};
    QTest::newRow("the newest is the highest") << Points{8, 9, 9, 10} << Points{10, 9, 9, 8};
    QTest::newRow("points outside are passed over")
        << Points{9, 9, 12, 8, 12, 8} << Points{8, 8, 9, 9};
    QTest::newRow("the oldest points count too")
        << Points{8, 10, 8, 12, 12, 10, 9} << Points{9, 10, 8, 10};
    QTest::newRow("the newest group, not the first one")
        << Points{12, 12, 12, 12, 9, 9, 9, 9} << Points{9, 9, 9, 9};
    QTest::newRow("the newest point starts it, if it can")
        << Points{9, 9, 9, 9, 10} << Points{10, 9, 9, 9};
    QTest::newRow("the newest point's group reaches further back than another")
        << Points{12, 12, 12, 8, 8, 8, 8, 12} << Points{12, 12, 12, 12};
    QTest::newRow("the newest point stands alone") << Points{9, 9, 9, 8, 12} << Points{8, 9, 9, 9};
    QTest::newRow("the two newest stand alone") << Points{8, 8, 8, 8, 12, 12} << Points{8, 8, 8, 8};
    // Backwards 10 12 9 11 10: the lowest band takes 10 12 11 10 and the middle one 10 9 11 10,
    // both with the oldest point as their last.
    QTest::newRow("of equally recent bands the lower")
        << Points{10, 11, 9, 12, 10} << Points{10, 12, 11, 10};
    // Backwards 9 10 8 9 8: the middle band takes 9 10 8 9, the highest needs one point more.
    QTest::newRow("a more recent middle band") << Points{8, 9, 8, 10, 9} << Points{9, 10, 8, 9};
    // Backwards 10 12 9 8 9 12 11: the highest band is full at the second 9, the others at the 11.
    QTest::newRow("a more recent higher band")
        << Points{11, 12, 9, 8, 9, 12, 10} << Points{10, 9, 8, 9};
}

void tst_Staircase::aGroupIsSettledWithinThreeSteps()
{
    QFETCH(const Points, found);
    QFETCH(const Points, group);

    // As peaks, with troughs at 7 around them, and as troughs, with peaks at 13.
    const auto between = [&](short other) {
        Points turns{other};
        for (const short point : found) {
            turns.push_back(point);
            turns.push_back(other);
        }
        return turns;
    };
    Staircase low = startingAtIndex(8);
    walkTo(low, between(7));
    QCOMPARE(points(low.peaks()), found);
    QVERIFY(low.isSettled());
    QCOMPARE(points(low.peakGroup()), group);
    QCOMPARE(points(low.troughGroup()), (Points{7, 7, 7, 7}));
    Staircase high = startingAtIndex(12);
    walkTo(high, between(13));
    QCOMPARE(points(high.troughs()), found);
    QVERIFY(high.isSettled());
    QCOMPARE(points(high.troughGroup()), group);
    QCOMPARE(points(high.peakGroup()), (Points{13, 13, 13, 13}));
}

void tst_Staircase::fourStepsApartIsNoGroup()
{
    Staircase staircase = startingAtIndex(7);
    walkTo(staircase, {8, 7, 8, 7, 11, 7, 11, 7, 8}); // peaks 8 8 11 11, four troughs at 7
    QCOMPARE(points(staircase.peaks()), (Points{8, 8, 11, 11}));
    QCOMPARE(points(staircase.troughs()), (Points{7, 7, 7, 7}));
    QVERIFY(!staircase.isSettled());
}

void tst_Staircase::threeTurningPointsAreNoGroup()
{
    Staircase staircase = startingAtIndex(8);
    play(staircase, "SFSFSFS"); // troughs 7 7 7, peaks 8 8 8
    QCOMPARE(staircase.reversals(), 6);
    QVERIFY(!staircase.isSettled());
    play(staircase, "F"); // the fourth trough, the fourth peak not yet
    QCOMPARE(staircase.reversals(), 7);
    QVERIFY(!staircase.isSettled());
    play(staircase, "S");
    QVERIFY(staircase.isSettled());
}

void tst_Staircase::settledPeaksWithoutSettledTroughsAreNoResult()
{
    Staircase staircase = startingAtIndex(14);
    // Peaks 14 14 14 14 14, troughs 13 10 7 11 8: no four of them within three steps.
    walkTo(staircase, {13, 14, 10, 14, 7, 14, 11, 14, 8, 14, 13});
    QCOMPARE(points(staircase.peaks()), (Points{14, 14, 14, 14, 14}));
    QCOMPARE(points(staircase.troughs()), (Points{13, 10, 7, 11, 8}));
    QVERIFY(staircase.position() >= Staircase::least);
    QVERIFY(!staircase.isSettled());
    QVERIFY(!play(staircase, "S"));
    QCOMPARE(staircase.score().mean, 0.0);
}

void tst_Staircase::settledTroughsWithoutSettledPeaksAreNoResult()
{
    Staircase staircase = startingAtIndex(7);
    walkTo(staircase, {8, 7, 11, 7, 14, 7, 10, 7, 13, 7, 8});
    QCOMPARE(points(staircase.troughs()), (Points{7, 7, 7, 7, 7}));
    QCOMPARE(points(staircase.peaks()), (Points{8, 11, 14, 10, 13}));
    QVERIFY(staircase.position() >= Staircase::least);
    QVERIFY(!staircase.isSettled());
    QVERIFY(!play(staircase, "F"));
    QCOMPARE(staircase.score().mean, 0.0);
}

// The result.

void tst_Staircase::nineteenEntriesGoOnAndTwentyStop()
{
    Staircase staircase = startingAtIndex(10);
    QVERIFY(!play(staircase, times(9, "SF") + "S"));
    QCOMPARE(staircase.position(), 19);
    QVERIFY(staircase.isSettled());
    QCOMPARE(staircase.score().mean, 0.0);
    QVERIFY(play(staircase, "F"));
    QCOMPARE(staircase.position(), 20);
    QVERIFY(staircase.score().mean > 0.0);
}

void tst_Staircase::aReflectionMayReachTwentyEntries()
{
    Staircase staircase = startingAt(33);
    QVERIFY(!play(staircase, times(10, "S"))); // 2 1 0 1 0 1 ...
    QCOMPARE(staircase.position(), 19);
    QVERIFY(staircase.isSettled());
    QVERIFY(play(staircase, "S"));
    QCOMPARE(staircase.position(), 21);
}

void tst_Staircase::theResultIsTheGeometricMeanOfTheEight()
{
    Staircase staircase = startingAt(150);
    QVERIFY(play(staircase, times(10, "SF"))); // 150 and 117 ms in turn
    QVERIFY(about(staircase.score().sup, 150.0));
    QVERIFY(about(staircase.score().inf, 117.0));
    QVERIFY(about(staircase.score().mean, std::sqrt(150.0 * 117.0)));
    QCOMPARE(int(staircase.score().mean), 132); // cut: it is 132.48
    QCOMPARE(staircase.score().limitSup, 0);
    QCOMPARE(staircase.score().limitInf, 0);
    // Twenty entries, the first and the last of which are no turning points.
    QCOMPARE(staircase.peaks().size(), std::size_t(9));
    QCOMPARE(staircase.troughs().size(), std::size_t(10));
    QCOMPARE(staircase.reversals(), 19);
}

void tst_Staircase::theMembersOfTheResultAreThoseOfTheGroups()
{
    Staircase staircase = startingAtIndex(8);
    walkTo(staircase, {10, 7, 11, 8, 14, 9, 12, 8, 11, 10});
    QVERIFY(play(staircase, "F"));
    QCOMPARE(points(staircase.peaks()), (Points{10, 11, 14, 12, 11}));
    QCOMPARE(points(staircase.troughs()), (Points{7, 8, 9, 8, 10}));
    QCOMPARE(points(staircase.peakGroup()), (Points{11, 12, 11, 10}));
    QCOMPARE(points(staircase.troughGroup()), (Points{10, 8, 9, 8}));
    QVERIFY(about(staircase.score().sup, geometricMean({367, 483, 367, 283})));
    QVERIFY(about(staircase.score().inf, geometricMean({283, 150, 217, 150})));
    QVERIFY(about(staircase.score().mean, geometricMean({367, 483, 367, 283, 283, 150, 217, 150})));
}

void tst_Staircase::aPatientWhoNeverErrsEndsAtTheShortestExposure()
{
    for (const int frequency : {hz60, hz120}) {
        Staircase staircase = startingAt(17, frequency);
        QVERIFY(!play(staircase, times(9, "S")));
        QVERIFY(play(staircase, "S"));
        QCOMPARE(staircase.position(), 20);
        QCOMPARE(points(staircase.peakGroup()), (Points{1, 1, 1, 1}));
        QCOMPARE(points(staircase.troughGroup()), (Points{0, 0, 0, 0}));
        QCOMPARE(staircase.troughs().size(), std::size_t(10));
        QCOMPARE(staircase.peaks().size(), std::size_t(9));
        QCOMPARE(int(staircase.score().mean), 17);
        QCOMPARE(staircase.score().limitInf, 4);
        QCOMPARE(staircase.score().limitSup, 0);
    }
}

void tst_Staircase::aPatientWhoNeverErrsWalksDownFirst()
{
    // From 1133 ms 14 steps to the shortest exposure, then two entries a trial: the fifth of these
    // brings the fourth peak, at 24 entries.
    Staircase staircase = startingAt(1133);
    QVERIFY(!play(staircase, times(18, "S")));
    QCOMPARE(staircase.position(), 22);
    QVERIFY(play(staircase, "S"));
    QCOMPARE(staircase.position(), 24);
    QCOMPARE(points(staircase.peaks()), (Points{1, 1, 1, 1}));
    QCOMPARE(points(staircase.troughs()), (Points{0, 0, 0, 0, 0}));
    QCOMPARE(int(staircase.score().mean), 17);
}

void tst_Staircase::aPatientWhoAlwaysFailsEndsAtTheLongestExposure()
{
    for (const int frequency : {hz60, hz120}) {
        Staircase staircase = startingAt(4633, frequency);
        QVERIFY(!play(staircase, times(9, "F")));
        QVERIFY(play(staircase, "F"));
        QCOMPARE(points(staircase.peakGroup()), (Points{21, 21, 21, 21}));
        QCOMPARE(points(staircase.troughGroup()), (Points{20, 20, 20, 20}));
        QVERIFY(about(staircase.score().mean, 4633.0));
        const int cut = int(staircase.score().mean); // it passed through logarithms
        QVERIFY(cut == 4632 || cut == 4633);
        QCOMPARE(staircase.score().limitSup, 4);
        QCOMPARE(staircase.score().limitInf, 0);
    }
}

void tst_Staircase::onlyPeaksBeyondTheLongestExposureCountAsItsLimit()
{
    // 19 20 19 20 21 20 19 20 21 20 19 20 19 20 19 20 19 20 19 20: then peaks 20 alone are recent.
    Staircase staircase = startingAt(3500);
    play(staircase, "FSFFSFFSF");
    QCOMPARE(points(staircase.peaks()), (Points{20, 21, 21}));
    QVERIFY(play(staircase, times(5, "SF")));
    QCOMPARE(points(staircase.peakGroup()), (Points{20, 20, 20, 20}));
    QCOMPARE(staircase.score().limitSup, 0);
    QVERIFY(play(staircase, "F")); // a reflection, which is a peak at once
    QCOMPARE(points(staircase.peakGroup()), (Points{21, 20, 20, 20}));
    QCOMPARE(staircase.score().limitSup, 1);
    QVERIFY(about(staircase.score().sup, 4633.0));
}

void tst_Staircase::missedTrialsCountAsTheLimitOfTheShortestExposure()
{
    Staircase staircase = startingAtIndex(10);
    QVERIFY(!play(staircase, times(6, "FMS")));
    QVERIFY(play(staircase, "FM")); // 10 11 0 10 11 0 ... 11 0, twenty entries behind the first
    QCOMPARE(staircase.position(), 20);
    QCOMPARE(points(staircase.troughGroup()), (Points{0, 0, 0, 0}));
    QCOMPARE(points(staircase.peakGroup()), (Points{11, 11, 11, 11}));
    QCOMPARE(staircase.score().limitInf, 4);
    QVERIFY(about(staircase.score().inf, 17.0));
    QVERIFY(about(staircase.score().sup, 367.0));
    QVERIFY(about(staircase.score().mean, std::sqrt(17.0 * 367.0)));
}

void tst_Staircase::theRowOfTheFrequencyGivesTheResult()
{
    Staircase slow = startingAt(150, hz60);
    Staircase fast = startingAt(150, hz120);
    QCOMPARE(slow.index(), fast.index());
    QVERIFY(play(slow, times(10, "FS")));
    QVERIFY(play(fast, times(10, "FS")));
    QVERIFY(about(slow.score().mean, std::sqrt(217.0 * 150.0)));
    QVERIFY(about(fast.score().mean, std::sqrt(208.0 * 158.0)));
}

void tst_Staircase::theResultIsComputedAnewBehindEveryTrial()
{
    Staircase staircase = startingAt(150);
    QVERIFY(play(staircase, times(10, "SF")));
    QCOMPARE(points(staircase.peakGroup()), (Points{8, 8, 8, 8}));
    // Two steps up, and the newest peak is 9: the band about it still holds the older ones.
    QVERIFY(play(staircase, "FS"));
    QCOMPARE(points(staircase.peakGroup()), (Points{9, 8, 8, 8}));
    QVERIFY(about(staircase.score().sup, geometricMean({217, 150, 150, 150})));
    // Far above, the two newest peaks stand alone, and the older group is the result again.
    walkTo(staircase, {14, 13, 14, 13});
    QVERIFY(play(staircase, "F"));
    QCOMPARE(points(staircase.peakGroup()), (Points{9, 8, 8, 8}));
    QVERIFY(play(staircase, "SFSF"));
    QCOMPARE(points(staircase.peakGroup()), (Points{14, 14, 14, 14}));
    QVERIFY(about(staircase.score().sup, 850.0));
}

// A comparison with the rules, written out a second time as plainly as can be: tables, counters and
// no bounds but those of the arrays.

namespace {

struct Plain
{
    static constexpr int size = 300;
    const int *row = nullptr;
    int tab[size]{};
    int n = 0;
    int index = 0;
    int valMax[size]{};
    int revSub = 0;
    int valMin[size]{};
    int revInf = 0;
    bool foundMax = false;
    bool foundMin = false;
    int groupMax[4]{};
    int groupMin[4]{};
    double sup = 0.0;
    double inf = 0.0;
    double mean = 0.0;
    int limitSup = 0;
    int limitInf = 0;

    void start(int frequency, int exposure)
    {
        static const int table[2][22] = {
            {17,  17,  33,  33,  50,   67,   83,   117,  150,  217,  283,
             367, 483, 650, 850, 1133, 1500, 1983, 2633, 3500, 4633, 4633},
            {17,  17,  33,  42,  50,   67,   92,   117,  158,  208,  275,
             367, 492, 650, 858, 1133, 1500, 1992, 2633, 3492, 4633, 4633}};
        row = table[frequency];
        index = 20;
        for (int i = 20; i >= 1; --i) {
            if (row[i] >= exposure)
                index = i;
        }
        tab[0] = index;
    }

    bool step(bool success)
    {
        index = success ? index - 1 : index + 1;
        tab[n + 1] = index;
        if (success && index == 0) {
            n = n + 1;
            index = 1;
            tab[n + 1] = 1;
            return true;
        }
        if (!success && index == 21) {
            n = n + 1;
            index = 20;
            tab[n + 1] = 20;
            return true;
        }
        return false;
    }

    void endTrial() { n = n + 1; }

    void lookForTurns()
    {
        if (n > 1) {
            if (tab[n - 2] < tab[n - 1] && tab[n] < tab[n - 1])
                valMax[revSub++] = tab[n - 1];
            if (tab[n - 2] > tab[n - 1] && tab[n] > tab[n - 1])
                valMin[revInf++] = tab[n - 1];
        }
        if (n > 2) {
            if (tab[n - 3] == 21 && tab[n - 2] < 21 && tab[n - 1] > tab[n - 2])
                valMin[revInf++] = tab[n - 2];
            if (tab[n - 3] == 0 && tab[n - 2] > 0 && tab[n - 1] < tab[n - 2])
                valMax[revSub++] = tab[n - 2];
        }
    }

    static bool search(const int *L, int c, int *group)
    {
        bool found = false;
        int pos[3] = {-1, -1, -1};
        int ref[3][4] = {};
        if (c - 1 > 2) {
            for (int p = c - 1; p >= 3 && !found; --p) {
                for (int b = 0; b <= 2; ++b) {
                    ref[b][0] = L[p];
                    ref[b][1] = ref[b][2] = ref[b][3] = 0;
                    const int above = L[p] - 1 - b; // both ends of the band are outside it
                    const int below = L[p] + 3 - b;
                    int members = 1;
                    for (int k = p - 1; k >= 0; --k) {
                        if (L[k] > above && L[k] < below) {
                            ref[b][members] = L[k];
                            members = members + 1;
                        }
                        if (members == 4) {
                            found = true;
                            pos[b] = k;
                            break;
                        }
                    }
                }
            }
        }
        if (found) {
            int best = 0;
            if (pos[1] > pos[best])
                best = 1;
            if (pos[2] > pos[best])
                best = 2;
            for (int i = 0; i < 4; ++i)
                group[i] = ref[best][i];
        }
        return found;
    }

    bool analyse()
    {
        lookForTurns();
        foundMax = search(valMax, revSub, groupMax);
        foundMin = search(valMin, revInf, groupMin);
        if (!foundMax || !foundMin || n < 20)
            return false;
        limitSup = 0;
        limitInf = 0;
        double sumMax = 0.0;
        double sumMin = 0.0;
        for (int i = 0; i < 4; ++i) {
            sumMax += std::log(double(row[groupMax[i]]));
            sumMin += std::log(double(row[groupMin[i]]));
            if (groupMax[i] == 21)
                limitSup = limitSup + 1;
            if (groupMin[i] == 0)
                limitInf = limitInf + 1;
        }
        sup = std::exp(0.25 * sumMax);
        inf = std::exp(0.25 * sumMin);
        mean = std::exp(0.125 * (sumMax + sumMin));
        return true;
    }
};

template <typename Range>
bool same(const Range &range, const int *plain, int count)
{
    return std::equal(range.begin(), range.end(), plain, plain + count);
}

/// What differs; nothing if all agrees.
const char *difference(const Staircase &staircase, const Plain &plain)
{
    if (staircase.position() != plain.n || staircase.index() != plain.index)
        return "the place";
    if (staircase.exposure() != plain.row[plain.index])
        return "the exposure";
    if (!same(staircase.track(), plain.tab, plain.n + 1))
        return "the track";
    if (!same(staircase.peaks(), plain.valMax, plain.revSub))
        return "the peaks";
    if (!same(staircase.troughs(), plain.valMin, plain.revInf))
        return "the troughs";
    if (staircase.isSettled() != (plain.foundMax && plain.foundMin))
        return "whether it has settled";
    if (staircase.isSettled() && !same(staircase.peakGroup(), plain.groupMax, 4))
        return "the group of peaks";
    if (staircase.isSettled() && !same(staircase.troughGroup(), plain.groupMin, 4))
        return "the group of troughs";
    const Staircase::Score &score = staircase.score();
    if (score.mean != plain.mean || score.sup != plain.sup || score.inf != plain.inf)
        return "the score";
    if (score.limitSup != plain.limitSup || score.limitInf != plain.limitInf)
        return "the limits";
    return nullptr;
}

/// How likely a random patient answers right.
struct Chance
{
    double floor = 0.5;   ///< at the shortest exposure
    double ceiling = 0.5; ///< at the longest
    double missed = 0.0;  ///< share of trials without an answer
};

class Track
{
public:
    explicit Track(quint32 seed)
        : m_engine(seed)
    {
    }

    double draw() { return double(m_engine()) / 4294967296.0; }

    /// Plays until so many entries are there, result or not.
    const char *play(int frequency, int exposure, const Chance &chance, int entries)
    {
        staircase.seed(frequency, exposure);
        plain.start(frequency, exposure);
        while (plain.n < entries) {
            const double p =
                chance.floor + (chance.ceiling - chance.floor) * double(plain.index - 1) / 19.0;
            if (draw() >= chance.missed) {
                const bool success = draw() < p;
                if (staircase.step(success) != plain.step(success))
                    return "the reflection";
            }
            staircase.advance();
            plain.endTrial();
            const bool result = plain.analyse();
            if (staircase.analyse() != result)
                return "whether there is a result";
            if (const char *what = difference(staircase, plain))
                return what;
            resultAt50 = resultAt50 || (result && plain.n < Staircase::ceiling);
        }
        return nullptr;
    }

    Staircase staircase;
    Plain plain;
    bool resultAt50 = false;

private:
    std::mt19937 m_engine;
};

} // namespace

void tst_Staircase::randomTracksAgreeWithTheRulesWrittenOut_data()
{
    QTest::addColumn<double>("floor");
    QTest::addColumn<double>("ceiling");
    QTest::addColumn<double>("missed");
    QTest::newRow("a coin") << 0.5 << 0.5 << 0.0;
    QTest::newRow("a coin, some missed") << 0.5 << 0.5 << 0.1;
    QTest::newRow("sees the longer ones") << 0.1 << 0.95 << 0.0;
    QTest::newRow("sees the longer ones, some missed") << 0.1 << 0.95 << 0.05;
    QTest::newRow("never in the dark") << 0.0 << 1.0 << 0.0;
    QTest::newRow("nearly never errs") << 0.9 << 0.98 << 0.0;
    QTest::newRow("nearly never errs, some missed") << 0.9 << 0.98 << 0.15;
    QTest::newRow("nearly always fails") << 0.02 << 0.1 << 0.0;
    QTest::newRow("nearly always fails, some missed") << 0.02 << 0.1 << 0.15;
    QTest::newRow("answers half of the trials") << 0.3 << 0.8 << 0.5;
}

void tst_Staircase::randomTracksAgreeWithTheRulesWrittenOut()
{
    QFETCH(const double, floor);
    QFETCH(const double, ceiling);
    QFETCH(const double, missed);
    constexpr int tracks = 2000; // of each of the ten patients
    constexpr int longOnes = 8;  // one of so many goes on for as long as a test of three parts can
    int results = 0;
    std::mt19937 starts(7);
    for (int i = 0; i < tracks; ++i) {
        const int frequency = i % 2;
        const int exposure = int(starts() % 5000);
        Track track(quint32(i + 1));
        const char *what =
            track.play(frequency, exposure, {floor, ceiling, missed},
                       i % longOnes == 0 ? 2 * Staircase::ceiling : Staircase::ceiling);
        QVERIFY2(!what, qPrintable(QStringLiteral("track %1: %2 differs")
                                       .arg(i)
                                       .arg(QLatin1String(what ? what : ""))));
        results += track.resultAt50 ? 1 : 0;
    }
    // The comparison is one of results, and not only of walks without any.
    QVERIFY(results > tracks / 10);
}

QTEST_APPLESS_MAIN(tst_Staircase)
#include "tst_Staircase.moc"
