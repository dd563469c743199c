#include "VisionDesk.h"

#include "randomness.h"
#include "tables.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QWindow>

#include <vector>

using namespace column;

/// The assessor's keys: P, E and Escape.
class tst_Test1Keys : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aPauseLeavesAMarkerAndWaits();
    void aPausedTrialStartsOverAndCountsOnce_data();
    void aPausedTrialStartsOverAndCountsOnce();
    void aStruckTrialLeavesItsRowAndWaits_data();
    void aStruckTrialLeavesItsRowAndWaits();
    void aStruckTrialIsRepeatedWithTheSameStimulus_data();
    void aStruckTrialIsRepeatedWithTheSameStimulus();
    void aHeldDualTrialGoesOnWithTheNextEntryOfItsAnsweredHalf_data();
    void aHeldDualTrialGoesOnWithTheNextEntryOfItsAnsweredHalf();
    void anAnswerGivenBeforeTheStrikeIsForgotten();
    void aStrikeAtTheEndOfAShuffleKeepsWhatWasShown_data();
    void aStrikeAtTheEndOfAShuffleKeepsWhatWasShown();
    void aStruckTrialIsNoPlaceOnTheTrack();
    void aStruckTrialHitsNoLimit();
    void strikesAreCountedBySubtask();
    void aStrikeRightBeforeFiftyBreaksNothingOff();
    void aStrikeEndsATestWhoseNumberWasLowered();
    void thePointerIsHiddenAgainAfterAHold_data();
    void thePointerIsHiddenAgainAfterAHold();
    void theKeysDoNothingOutsideTheAnswer_data();
    void theKeysDoNothingOutsideTheAnswer();
    void theKeysDoNothingUnderFixedDuration();
    void theKeysDoNothingWhileATrialIsHeld_data();
    void theKeysDoNothingWhileATrialIsHeld();
    void theKeysHoldATrialOfTheTraining();
    void otherKeysDoNothing();
    void aHeldKeyDoesNothing();
    void aLineEditOfThePanelSwallowsNoKey();
    void escapeEndsATestInEveryLink_data();
    void escapeEndsATestInEveryLink();
    void escapeBeforeTheFirstTrialLeavesAMarker();
    void escapeWhileATrialIsHeldEndsTheTest_data();
    void escapeWhileATrialIsHeldEndsTheTest();
    void escapeInATestKeepsTheRunningExposures_data();
    void escapeInATestKeepsTheRunningExposures();
    void escapeInTheTrainingKeepsNoThresholdThatIsNotThere_data();
    void escapeInTheTrainingKeepsNoThresholdThatIsNotThere();
    void escapeAfterAPassedBlockKeepsItsLastExposure();
    void escapeInTheTestBehindATrainingKeepsTheRunningExposures();
    void escapeInTheScript_data();
    void escapeInTheScript();
    void closingByTheWindowManagerIsEscape();
};

namespace {

constexpr int anHour = 3'600'000; // ms

QByteArray logBytes(const VisionDesk &desk)
{
    return desk.root.bytes(QStringLiteral("Results/output.csv"));
}

QString marker(const char *word)
{
    return QStringLiteral(";Mrs.;Doe;Jane;01/02/1950;") + QLatin1String(word);
}

QString lastRow(VisionDesk &desk)
{
    return desk.rows().constLast().join(u';');
}

bool play(VisionDesk &desk, const QByteArray &answers)
{
    return std::ranges::all_of(answers, [&](char answer) { return desk.runTrial(answer == 'R'); });
}

void addModes()
{
    QTest::addColumn<int>("mode");
    QTest::newRow("central") << 1;
    QTest::newRow("peripheral") << 2;
    QTest::newRow("dual") << 3;
}

void addHolds()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("pause") << Qt::Key_P;
    QTest::newRow("strike") << Qt::Key_E;
}

/// Nothing but the log tells of the run, and it doesn't go on.
void verifyIsLeft(VisionDesk &desk)
{
    QVERIFY(!desk.task.isRunning());
    QVERIFY(desk.task.stage() == 0);
    QVERIFY(sessionStore().escapeSeq);
    QCOMPARE(desk.task.cursor().shape(), Qt::ArrowCursor);
    for (const char *path :
         {"Results/valid-output.csv", "Results/results_T1.csv", "Archives/Doe Jane 01.02.1950"})
        QVERIFY2(!desk.root.exists(QString::fromLatin1(path)), path);
    const QByteArray log = logBytes(desk);
    desk.time.advance(anHour);
    QCOMPARE(logBytes(desk), log);
    QVERIFY(!desk.task.isRunning());
}

} // namespace

void tst_Test1Keys::aPauseLeavesAMarkerAndWaits()
{
    VisionDesk desk;
    desk.startTest({.mode = 3});
    QVERIFY(desk.reach(5));
    desk.key(Qt::Key_P);
    QCOMPARE(desk.rows().size(), 1);
    QCOMPARE(lastRow(desk), marker("paused"));
    QCOMPARE(desk.mode(), QStringLiteral("PAUSE"));
    QVERIFY(desk.shown("pb_continue"));
    QCOMPARE(desk.widget("pb_continue")->text(), QStringLiteral("Continue"));
    QCOMPARE(desk.widget("pb_continue")->shortcut(), QKeySequence(Qt::Key_C));
    QVERIFY(desk.nothingIsShown());
    QCOMPARE(desk.task.cursor().shape(), Qt::ArrowCursor);
    desk.time.advance(anHour);
    QVERIFY(desk.nothingIsShown());
    QVERIFY(desk.shown("pb_continue"));
    QCOMPARE(desk.rows().size(), 1);

    desk.click("pb_continue");
    QCOMPARE(desk.task.stage(), 1);
    QVERIFY(desk.cross->isVisible());
    QVERIFY(!desk.shown("pb_continue"));
    QCOMPARE(desk.mode(), QString());
    for (const int length : {500, 483, 200, 500}) { // the whole chain anew
        const int stage = desk.task.stage();
        desk.time.advance(length - 1);
        QCOMPARE(desk.task.stage(), stage);
        desk.time.advance(1);
        QCOMPARE(desk.task.stage(), stage + 1);
    }
}

void tst_Test1Keys::aPausedTrialStartsOverAndCountsOnce_data()
{
    addModes();
}

void tst_Test1Keys::aPausedTrialStartsOverAndCountsOnce()
{
    QFETCH(const int, mode);
    VisionDesk desk;
    desk.startTest({.mode = mode, .parameters = true});
    QVERIFY(desk.runTrial(true));
    QVERIFY(desk.reach(5));
    const int figure = desk.seenFigure;
    const int target = desk.seenTarget;
    const QString subtask = desk.text("le_subtask");
    desk.key(Qt::Key_P);
    desk.click("pb_continue");
    QCOMPARE(desk.text("le_no"), QStringLiteral("2"));
    QCOMPARE(desk.text("le_subtask"), subtask);
    QVERIFY(desk.reach(2));
    QCOMPARE(desk.seenFigure, figure);
    QCOMPARE(desk.seenTarget, target);
    QVERIFY(desk.runTrial(true, 620));

    const QList<QStringList> rows = desk.rows();
    QCOMPARE(rows.size(), 3);
    QCOMPARE(rows[2][RankTask], QStringLiteral("2"));
    QCOMPARE(rows[2][RankSub], QStringLiteral("2"));
    QCOMPARE(rows[2][AnswerTime], QStringLiteral("620")); // from the new buttons on
    QCOMPARE(rows[2][Error], QStringLiteral("0"));
}

void tst_Test1Keys::aStruckTrialLeavesItsRowAndWaits_data()
{
    addModes();
}

void tst_Test1Keys::aStruckTrialLeavesItsRowAndWaits()
{
    QFETCH(const int, mode);
    VisionDesk desk;
    desk.startTest({.mode = mode});
    for (const bool right : {true, false}) // an answer of the trial before isn't taken over
        QVERIFY(desk.runTrial(right));
    QVERIFY(desk.reach(2));
    const QDateTime onset = desk.time.currentDateTime();
    QVERIFY(desk.reach(5));
    desk.time.advance(431);
    desk.key(Qt::Key_E);
    QCOMPARE(desk.mode(), QStringLiteral("ERROR"));
    QVERIFY(desk.shown("pb_continue"));
    QVERIFY(desk.nothingIsShown());
    QCOMPARE(desk.task.cursor().shape(), Qt::ArrowCursor);

    // The first two trials were the first two entries of the shuffles.
    const std::vector<int> figures = randomness::shuffled(10, 1);
    const std::vector<int> places = randomness::shuffled(6, 1);
    constexpr std::array thresholds{283, 367, 483};
    const QString figure = mode == 2 ? QString() : tables::_shapeDef.at(std::size_t(figures[2]));
    const QString place = mode == 1 ? QString() : tables::_triDef.at(std::size_t(places[2]));
    const QString row =
        QStringLiteral(";Mrs.;Doe;Jane;01/02/1950;%1;%2;%3;%4;2;2;%5;%6;;%7;;0;;0;;;;;;;;;;1")
            .arg(QString::number(mode + 4), QString::number(mode + 5),
                 onset.toString(QStringLiteral("dd/MM/yyyy;hh:mm:ss.zzz")), QString::number(mode),
                 QString::number(thresholds.at(std::size_t(mode - 1))), figure, place);
    QCOMPARE(desk.rows().size(), 3);
    QCOMPARE(desk.rows().constLast().size(), int(Count));
    QCOMPARE(lastRow(desk), row);

    desk.time.advance(anHour);
    QCOMPARE(desk.rows().size(), 3);
    QVERIFY(desk.nothingIsShown());
    QVERIFY(desk.shown("pb_continue"));
}

void tst_Test1Keys::aStruckTrialIsRepeatedWithTheSameStimulus_data()
{
    QTest::addColumn<int>("mode");
    QTest::newRow("interleaved") << 0;
    QTest::newRow("central") << 1;
    QTest::newRow("peripheral") << 2;
    QTest::newRow("dual") << 3;
}

void tst_Test1Keys::aStruckTrialIsRepeatedWithTheSameStimulus()
{
    QFETCH(const int, mode);
    VisionDesk desk;
    desk.startTest({.mode = mode, .parameters = true});
    for (int trial = 0; trial < 8; ++trial) {
        QVERIFY(desk.reach(5));
        const int figure = desk.seenFigure;
        const int target = desk.seenTarget;
        const QString subtask = desk.text("le_subtask");
        const QStringList edits{desk.text("le_timer02_S1"), desk.text("le_timer02_S2"),
                                desk.text("le_timer02_S3"), desk.text("le_no"),
                                desk.text("le_noS1"),       desk.text("le_noS2"),
                                desk.text("le_noS3")};
        desk.key(Qt::Key_E);
        const QStringList struck = desk.rows().constLast();
        QCOMPARE(struck[RankTask], QString::number(trial));
        desk.click("pb_continue");
        QCOMPARE(desk.task.stage(), 1);
        QCOMPARE(desk.text("le_subtask"), subtask);
        QCOMPARE(edits,
                 QStringList({desk.text("le_timer02_S1"), desk.text("le_timer02_S2"),
                              desk.text("le_timer02_S3"), desk.text("le_no"), desk.text("le_noS1"),
                              desk.text("le_noS2"), desk.text("le_noS3")}));
        QVERIFY(desk.reach(2));
        QCOMPARE(desk.seenFigure, figure);
        QCOMPARE(desk.seenTarget, target);
        QVERIFY(desk.runTrial(trial % 2 == 0));

        const QStringList row = desk.rows().constLast();
        QCOMPARE(row[Subtask], struck[Subtask]);
        QCOMPARE(row[Figure], struck[Figure]);
        QCOMPARE(row[Place], struck[Place]);
        QCOMPARE(row[Exposure], struck[Exposure]);
        QCOMPARE(row[RankTask].toInt(), struck[RankTask].toInt() + 1);
        QCOMPARE(row[RankSub].toInt(), struck[RankSub].toInt() + 1);
        QCOMPARE(row[Error], QStringLiteral("0"));
    }
}

void tst_Test1Keys::aHeldDualTrialGoesOnWithTheNextEntryOfItsAnsweredHalf_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<bool>("figureAnswered");
    QTest::newRow("pause after the figure") << Qt::Key_P << true;
    QTest::newRow("pause after the position") << Qt::Key_P << false;
    QTest::newRow("strike after the figure") << Qt::Key_E << true;
    QTest::newRow("strike after the position") << Qt::Key_E << false;
}

void tst_Test1Keys::aHeldDualTrialGoesOnWithTheNextEntryOfItsAnsweredHalf()
{
    QFETCH(const Qt::Key, key);
    QFETCH(const bool, figureAnswered);
    const std::vector<int> figures = randomness::shuffled(10, 1);
    const std::vector<int> places = randomness::shuffled(6, 1);
    const std::size_t figure = figureAnswered ? 1 : 0;
    const std::size_t place = figureAnswered ? 0 : 1;
    const auto look = [&](std::size_t at) { return figures[at] == 5 ? 0 : figures[at]; };

    VisionDesk desk;
    desk.startTest({.mode = 3});
    QVERIFY(desk.reach(5));
    QCOMPARE(desk.seenFigure, look(0));
    QCOMPARE(desk.seenTarget, places[0]);
    if (figureAnswered)
        desk.answerFigure(true);
    else
        desk.answerPosition(true);
    desk.key(key);
    QVERIFY(desk.shown("pb_continue"));
    QVERIFY(desk.nothingIsShown());
    if (key == Qt::Key_E) {
        const QStringList row = desk.rows().constFirst();
        QCOMPARE(row[Figure], tables::_shapeDef.at(std::size_t(figures[figure])));
        QCOMPARE(row[Place], tables::_triDef.at(std::size_t(places[place])));
        QCOMPARE(row[FigureAnswer] + row[PlaceAnswer] + row[Answer], QString());
    }

    desk.click("pb_continue");
    QVERIFY(desk.reach(5));
    QCOMPARE(desk.shownFigureButtons(), 5); // both halves are asked for again
    QCOMPARE(desk.shownPositionButtons(), 6);
    QCOMPARE(desk.seenFigure, look(figure));
    QCOMPARE(desk.seenTarget, places[place]);
    QVERIFY(desk.runTrial(true));
    QVERIFY(desk.reach(2));
    QCOMPARE(desk.seenFigure, look(figure + 1));
    QCOMPARE(desk.seenTarget, places[place + 1]);
}

void tst_Test1Keys::anAnswerGivenBeforeTheStrikeIsForgotten()
{
    VisionDesk desk;
    desk.startTest({.mode = 3, .parameters = true});
    QVERIFY(desk.reach(5));
    desk.answerFigure(false);
    desk.key(Qt::Key_E);
    desk.click("pb_continue");
    QVERIFY(desk.runTrial(true));
    QCOMPARE(desk.text("le_result"), QStringLiteral("1"));
    QCOMPARE(desk.text("le_timer02_S3"), QStringLiteral("367"));
    QCOMPARE(desk.rows().constLast()[Answer], QStringLiteral("0"));
}

void tst_Test1Keys::aStrikeAtTheEndOfAShuffleKeepsWhatWasShown_data()
{
    QTest::addColumn<bool>("figureAnswered");
    QTest::addColumn<int>("trials"); // before the last entry of the shuffle
    QTest::newRow("figures") << true << 9;
    QTest::newRow("positions") << false << 5;
}

void tst_Test1Keys::aStrikeAtTheEndOfAShuffleKeepsWhatWasShown()
{
    QFETCH(const bool, figureAnswered);
    QFETCH(const int, trials);
    VisionDesk desk;
    desk.startTest({.mode = 3});
    for (int trial = 0; trial < trials; ++trial)
        QVERIFY(desk.runTrial(trial % 2 == 0));
    const std::vector<int> figures = randomness::shuffled(10, 1);
    const std::vector<int> places = randomness::shuffled(6, 1);
    QVERIFY(desk.reach(5));
    if (figureAnswered)
        desk.answerFigure(true);
    else
        desk.answerPosition(true);
    desk.key(Qt::Key_E);
    const QStringList row = desk.rows().constLast();
    QCOMPARE(row.size(), int(Count));
    if (figureAnswered)
        QCOMPARE(row[Figure], tables::_shapeDef.at(std::size_t(figures[9])));
    else
        QCOMPARE(row[Place], tables::_triDef.at(std::size_t(places[5])));

    desk.click("pb_continue"); // a new shuffle is drawn
    QVERIFY(desk.reach(2));
    QVERIFY(desk.seenFigure >= 0);
    QVERIFY(desk.seenTarget >= 0);
    QVERIFY(desk.runTrial(true));
    QCOMPARE(desk.rows().constLast()[Answer], QStringLiteral("0"));
}

void tst_Test1Keys::aStruckTrialIsNoPlaceOnTheTrack()
{
    VisionDesk desk;
    desk.startTest({.mode = 1});
    for (int trial = 0; trial < 20; ++trial) {
        if (trial % 4 == 1) {
            QVERIFY(desk.reach(5));
            desk.key(Qt::Key_E);
            desk.click("pb_continue");
        }
        if (trial % 7 == 3) {
            QVERIFY(desk.reach(5));
            desk.key(Qt::Key_P);
            desk.click("pb_continue");
        }
        QCOMPARE(desk.task.stage(), 1);
        QVERIFY(desk.runTrial(trial % 2 == 0));
    }
    // As without them: nine peaks at 283 ms, ten troughs at 217 ms; and five trials were struck.
    QVERIFY(desk.shown("pb_results"));
    const QStringList scores = desk.rows("Results/results_T1.csv").constLast();
    QCOMPARE(scores.mid(10, 8).join(u';'), QStringLiteral("20;247;5;19;283.000000;0;217.000000;0"));
    QCOMPARE(desk.rows().size(), 20 + 5 + 3);
    const QList<QStringList> valid = desk.rows("Results/valid-output.csv");
    QCOMPARE(valid.size(), 20);
    for (const QStringList &row : valid)
        QCOMPARE(row[Error], QStringLiteral("0"));
}

void tst_Test1Keys::aStruckTrialHitsNoLimit()
{
    VisionDesk desk;
    desk.writePatient("17;0;0");
    desk.startTest({.mode = 1});
    QVERIFY(desk.runTrial(true));
    QCOMPARE(desk.rows().constLast()[Limit], QStringLiteral("1"));
    QVERIFY(desk.reach(5));
    desk.key(Qt::Key_E);
    QCOMPARE(desk.rows().constLast()[Limit], QStringLiteral("0"));
    QCOMPARE(desk.rows().constLast()[RankSub], QStringLiteral("2"));
}

void tst_Test1Keys::strikesAreCountedBySubtask()
{
    VisionDesk desk;
    desk.startTest({.mode = 0, .parameters = true});
    for (int block = 0; block < 3; ++block) {
        for (int trial = 0; trial < 3; ++trial) {
            const int subtask = desk.text("le_subtask").toInt();
            const int strikes = block == 0 ? subtask : (block == 1 && subtask == 2 ? 4 : 0);
            for (int strike = 0; strike < strikes; ++strike) {
                QVERIFY(desk.reach(5));
                desk.key(Qt::Key_E);
                desk.click("pb_continue");
            }
            QVERIFY(desk.runTrial(true));
        }
    }
    desk.type("le_number", QStringLiteral("1"));
    QVERIFY(desk.runTrial(true));
    QVERIFY(desk.shown("pb_results"));
    const QStringList scores = desk.rows("Results/results_T1.csv").constLast();
    QCOMPARE(scores[12], QStringLiteral("1"));
    QCOMPARE(scores[19], QStringLiteral("6"));
    QCOMPARE(scores[26], QStringLiteral("3"));
}

void tst_Test1Keys::aStrikeRightBeforeFiftyBreaksNothingOff()
{
    VisionDesk desk;
    desk.startTest({.mode = 1});
    QVERIFY(play(desk, QByteArray(8, 'R') + QByteArray(17, 'W') + QByteArray(17, 'R') +
                           QByteArray(7, 'W')));
    QVERIFY(desk.reach(5));
    desk.key(Qt::Key_E);
    QVERIFY(desk.boxes.take().isEmpty());
    QVERIFY(desk.task.isRunning());
    QCOMPARE(desk.rows().constLast()[RankSub], QStringLiteral("49"));
    desk.click("pb_continue");
    QVERIFY(desk.runTrial(false));
    QCOMPARE(desk.boxes.take().size(), 1); // "Unstable measures"
    QVERIFY(!desk.task.isRunning());
}

void tst_Test1Keys::aStrikeEndsATestWhoseNumberWasLowered()
{
    VisionDesk desk;
    desk.startTest({.mode = 1, .parameters = true});
    QVERIFY(play(desk, "RWR"));
    desk.type("le_number", QStringLiteral("2"));
    QVERIFY(desk.reach(5));
    desk.key(Qt::Key_E);
    QVERIFY(desk.shown("pb_results") && desk.shown("pb_mainMenu"));
    QVERIFY(!desk.shown("pb_continue"));
    QCOMPARE(desk.mode(), QString());
    QCOMPARE(desk.rows().size(), 4);
    QCOMPARE(desk.rows("Results/valid-output.csv").size(), 3);
    // Without a result: the running exposure, one strike, a trough and a peak.
    const QStringList scores = desk.rows("Results/results_T1.csv").constLast();
    QCOMPARE(scores.mid(10, 8).join(u';'), QStringLiteral("0;217;1;2;0.000000;0;0.000000;0"));
}

void tst_Test1Keys::thePointerIsHiddenAgainAfterAHold_data()
{
    addHolds();
}

void tst_Test1Keys::thePointerIsHiddenAgainAfterAHold()
{
    QFETCH(const Qt::Key, key);
    VisionDesk desk;
    desk.startTest({.mode = 3});
    QVERIFY(desk.reach(5));
    desk.key(key);
    desk.click("pb_continue");
    for (const int stage : {1, 2, 3, 4}) {
        QVERIFY(desk.reach(stage));
        QCOMPARE(desk.task.cursor().shape(), Qt::BlankCursor);
    }
    QVERIFY(desk.reach(5));
    QCOMPARE(desk.task.cursor().shape(), Qt::ArrowCursor);
}

void tst_Test1Keys::theKeysDoNothingOutsideTheAnswer_data()
{
    QTest::addColumn<int>("stage");
    QTest::newRow("fixation") << 1;
    QTest::newRow("stimulus") << 2;
    QTest::newRow("mask") << 3;
    QTest::newRow("blank") << 4;
    QTest::newRow("rest") << 6;
}

void tst_Test1Keys::theKeysDoNothingOutsideTheAnswer()
{
    QFETCH(const int, stage);
    VisionDesk desk;
    desk.go({.mode = 3});
    desk.key(Qt::Key_P); // before the first trial
    desk.key(Qt::Key_E);
    QVERIFY(desk.shown("pb_go"));
    desk.click("pb_go");
    if (stage == 6) {
        QVERIFY(desk.reach(5));
        desk.answerRight();
    }
    QVERIFY(desk.reach(stage));
    desk.time.advance(50);
    QCOMPARE(desk.task.stage(), stage);
    for (const Qt::Key key : {Qt::Key_P, Qt::Key_E}) {
        desk.key(key);
        QCOMPARE(desk.task.stage(), stage);
        QVERIFY(!desk.shown("pb_continue"));
        QCOMPARE(desk.mode(), QString());
        QVERIFY(desk.rows().isEmpty());
    }
    if (stage == 6)
        QVERIFY(desk.reach(1));
    else
        QVERIFY(desk.runTrial(true));
    QCOMPARE(desk.rows().size(), 1);
    QCOMPARE(desk.rows().constFirst()[Error], QStringLiteral("0"));
    QCOMPARE(desk.rows().constFirst()[RankTask], QStringLiteral("1"));
}

void tst_Test1Keys::theKeysDoNothingUnderFixedDuration()
{
    VisionDesk desk;
    desk.startTest({.mode = 3, .fixedDuration = true});
    for (int stage = 1; stage <= 6; ++stage) {
        QVERIFY(desk.reach(stage));
        desk.key(Qt::Key_P);
        desk.key(Qt::Key_E);
        QCOMPARE(desk.task.stage(), stage);
        QVERIFY(!desk.shown("pb_continue"));
        QVERIFY(desk.rows().isEmpty());
        if (stage == 5) {
            QCOMPARE(desk.shownFigureButtons(), 5);
            desk.answerRight();
        }
    }
    QVERIFY(desk.reach(1));
    QCOMPARE(desk.rows().size(), 1);
    QCOMPARE(desk.rows().constFirst()[Error], QStringLiteral("0"));
}

void tst_Test1Keys::theKeysDoNothingWhileATrialIsHeld_data()
{
    addHolds();
}

void tst_Test1Keys::theKeysDoNothingWhileATrialIsHeld()
{
    QFETCH(const Qt::Key, key);
    VisionDesk desk;
    desk.startTest({.mode = 1, .parameters = true});
    QVERIFY(desk.reach(5));
    desk.key(key);
    const QByteArray log = logBytes(desk);
    const QString mode = desk.mode();
    for (const Qt::Key again : {Qt::Key_P, Qt::Key_E, Qt::Key_E, Qt::Key_P}) {
        desk.key(again);
        desk.time.advance(5000);
        QCOMPARE(logBytes(desk), log);
        QCOMPARE(desk.mode(), mode);
        QVERIFY(desk.nothingIsShown());
    }
    desk.click("pb_continue");
    desk.type("le_number", QStringLiteral("1"));
    QVERIFY(desk.runTrial(true));
    QCOMPARE(desk.rows("Results/results_T1.csv").constLast().at(12),
             key == Qt::Key_E ? QStringLiteral("1") : QStringLiteral("0")); // no strike but its own
}

void tst_Test1Keys::theKeysHoldATrialOfTheTraining()
{
    VisionDesk desk;
    const QByteArray log = logBytes(desk);
    desk.go({.mode = 1, .training = true, .parameters = true});
    desk.click("pb_go");
    QVERIFY(desk.runTrial(true));
    for (const Qt::Key key : {Qt::Key_P, Qt::Key_E}) {
        QVERIFY(desk.reach(5));
        const int figure = desk.seenFigure;
        desk.key(key);
        QCOMPARE(desk.mode(), key == Qt::Key_P ? QStringLiteral("PAUSE") : QStringLiteral("ERROR"));
        QVERIFY(desk.nothingIsShown());
        desk.time.advance(anHour);
        QVERIFY(desk.nothingIsShown());
        desk.click("pb_continue");
        QCOMPARE(desk.mode(), QString());
        QCOMPARE(desk.text("le_no"), QStringLiteral("2"));
        QCOMPARE(desk.text("le_timer02_S1"), QStringLiteral("567"));
        QVERIFY(desk.reach(4));
        QCOMPARE(desk.mode(), QStringLiteral("TRAINING"));
        QCOMPARE(desk.seenFigure, figure);
    }
    for (int trial = 1; trial < 10; ++trial) { // ten that count
        QCOMPARE(desk.text("le_no"), QString::number(trial + 1));
        QVERIFY(desk.runTrial(trial % 2 == 0));
    }
    QCOMPARE(desk.task.stage(), 0);
    QVERIFY(desk.shown("pb_go")); // of the test
    QCOMPARE(logBytes(desk), log);
}

void tst_Test1Keys::otherKeysDoNothing()
{
    VisionDesk desk;
    desk.startTest({.mode = 3});
    QVERIFY(desk.reach(5));
    for (const Qt::Key key :
         {Qt::Key_Return, Qt::Key_Enter, Qt::Key_A, Qt::Key_C, Qt::Key_S, Qt::Key_F1, Qt::Key_Up})
        desk.key(key);
    QCOMPARE(desk.task.stage(), 5);
    QVERIFY(desk.task.isRunning());
    QCOMPARE(desk.shownFigureButtons(), 5);
    QCOMPARE(desk.shownPositionButtons(), 6);
    QVERIFY(desk.rows().isEmpty());
}

void tst_Test1Keys::aHeldKeyDoesNothing()
{
    VisionDesk desk;
    desk.startTest({.mode = 1});
    QVERIFY(desk.reach(5));
    for (const Qt::Key key : {Qt::Key_E, Qt::Key_P, Qt::Key_Escape, Qt::Key_Space}) {
        QKeyEvent held(QEvent::KeyPress, key, Qt::NoModifier, QString(), true);
        QCoreApplication::sendEvent(&desk.task, &held);
        QVERIFY(desk.task.isRunning());
        QCOMPARE(desk.shownFigureButtons(), 5);
        QVERIFY(!desk.shown("pb_continue"));
    }
    QVERIFY(desk.rows().isEmpty());
    QVERIFY(!sessionStore().escapeSeq);
}

void tst_Test1Keys::aLineEditOfThePanelSwallowsNoKey()
{
    VisionDesk desk;
    desk.startTest({.mode = 1, .parameters = true});
    auto *edit = desk.widget<QLineEdit>("le_triOffset");
    for (const Qt::Key key : {Qt::Key_P, Qt::Key_E}) {
        QVERIFY(desk.reach(5));
        edit->setFocus();
        QTest::keyClick(edit, key);
        QVERIFY(desk.shown("pb_continue"));
        QCOMPARE(edit->text(), QStringLiteral("336"));
        edit->setFocus();
        QTest::keyClick(edit, Qt::Key_C, Qt::ControlModifier); // copies
        QVERIFY(desk.shown("pb_continue"));
        QTest::keyClick(edit, Qt::Key_C);
        QVERIFY(!desk.shown("pb_continue"));
        QCOMPARE(desk.task.stage(), 1);
        QCOMPARE(edit->text(), QStringLiteral("336"));
    }
    QCOMPARE(desk.rows().size(), 2);
    edit->setFocus();
    QTest::keyClick(edit, Qt::Key_Escape);
    QVERIFY(!desk.task.isRunning());
    QCOMPARE(lastRow(desk), marker("interrupted"));
}

void tst_Test1Keys::escapeEndsATestInEveryLink_data()
{
    QTest::addColumn<int>("stage");
    for (int stage = 1; stage <= 6; ++stage)
        QTest::addRow("link %d", stage) << stage;
}

void tst_Test1Keys::escapeEndsATestInEveryLink()
{
    QFETCH(const int, stage);
    VisionDesk desk;
    desk.startTest({.mode = 3});
    QVERIFY(desk.runTrial(true));
    QVERIFY(desk.runTrial(false));
    if (stage == 6) {
        QVERIFY(desk.reach(5));
        desk.answerRight();
    }
    QVERIFY(desk.reach(stage));
    desk.key(Qt::Key_Escape);
    QCOMPARE(desk.rows().size(), 3); // what isn't over leaves no row
    QCOMPARE(lastRow(desk), marker("interrupted"));
    verifyIsLeft(desk);
    QVERIFY(desk.nothingIsShown());
    // 483, 367, 483 again, and the step of an answer that has been given.
    QCOMPARE(desk.thresholds(),
             stage == 6 ? QStringLiteral("283;367;367") : QStringLiteral("283;367;483"));
    QCOMPARE(desk.patientLine().section(u';', 0, 10),
             QStringLiteral("Mrs.;Doe;Jane;01.02.1950;1;2;3;4;5;6;7"));
}

void tst_Test1Keys::escapeBeforeTheFirstTrialLeavesAMarker()
{
    VisionDesk desk;
    desk.go({.mode = 0});
    desk.key(Qt::Key_Escape);
    QCOMPARE(desk.rows().size(), 1);
    QCOMPARE(lastRow(desk), marker("interrupted"));
    verifyIsLeft(desk);
    QCOMPARE(desk.thresholds(), QStringLiteral("283;367;483"));
}

void tst_Test1Keys::escapeWhileATrialIsHeldEndsTheTest_data()
{
    addHolds();
}

void tst_Test1Keys::escapeWhileATrialIsHeldEndsTheTest()
{
    QFETCH(const Qt::Key, key);
    VisionDesk desk;
    desk.startTest({.mode = 1});
    QVERIFY(desk.reach(5));
    desk.key(key);
    desk.key(Qt::Key_Escape);
    QCOMPARE(desk.rows().size(), 2);
    QCOMPARE(lastRow(desk), marker("interrupted"));
    verifyIsLeft(desk);
    QVERIFY(!desk.shown("pb_continue"));
    QCOMPARE(desk.thresholds(), QStringLiteral("283;367;483"));

    desk.startTest({.mode = 1}); // and nothing of the hold is left
    QCOMPARE(desk.mode(), QString());
    QVERIFY(!desk.shown("pb_continue"));
    QVERIFY(desk.runTrial(true));
    QCOMPARE(desk.rows().constLast()[RankTask], QStringLiteral("1"));
}

void tst_Test1Keys::escapeInATestKeepsTheRunningExposures_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<QByteArray>("stored");
    QTest::addColumn<QByteArray>("answers");
    QTest::addColumn<QString>("kept");
    // Every block of three holds every subtask once.
    QTest::newRow("interleaved") << 0 << QByteArray("283;367;483") << QByteArray("RRRRRR")
                                 << QStringLiteral("150;217;283");
    QTest::newRow("central") << 1 << QByteArray("283;367;483") << QByteArray("RR")
                             << QStringLiteral("150;367;483");
    QTest::newRow("peripheral") << 2 << QByteArray("283;367;483") << QByteArray("WW")
                                << QStringLiteral("283;650;483");
    QTest::newRow("dual") << 3 << QByteArray("283;367;483") << QByteArray("RWW")
                          << QStringLiteral("283;367;650");
    QTest::newRow("beside subtasks that were never trained")
        << 1 << QByteArray("283;0;0") << QByteArray("W") << QStringLiteral("367;0;0");
    QTest::newRow("a threshold between two steps, untouched")
        << 1 << QByteArray("300;0;0") << QByteArray("") << QStringLiteral("300;0;0");
}

void tst_Test1Keys::escapeInATestKeepsTheRunningExposures()
{
    QFETCH(const int, mode);
    QFETCH(const QByteArray, stored);
    QFETCH(const QByteArray, answers);
    QFETCH(const QString, kept);
    VisionDesk desk;
    desk.writePatient(stored);
    desk.startTest({.mode = mode});
    QVERIFY(play(desk, answers));
    desk.key(Qt::Key_Escape);
    verifyIsLeft(desk);
    QCOMPARE(desk.thresholds(), kept);
}

void tst_Test1Keys::escapeInTheTrainingKeepsNoThresholdThatIsNotThere_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<QByteArray>("stored");
    QTest::addColumn<QByteArray>("answers"); // within the first block
    QTest::addColumn<QString>("kept");
    QTest::newRow("untrained, before the block")
        << 0 << QByteArray("0;0;0") << QByteArray() << QStringLiteral("0;0;0");
    QTest::newRow("untrained, in the block")
        << 0 << QByteArray("0;0;0") << QByteArray("RRRR") << QStringLiteral("0;0;0");
    QTest::newRow("trained before, before the block")
        << 0 << QByteArray("283;367;483") << QByteArray() << QStringLiteral("1133;1133;1133");
    QTest::newRow("trained before, in the block")
        << 0 << QByteArray("283;367;483") << QByteArray("RR") << QStringLiteral("283;1133;1133");
    QTest::newRow("trained before, going up")
        << 0 << QByteArray("283;367;483") << QByteArray("RWW") << QStringLiteral("2283;1133;1133");
    QTest::newRow("trained in part")
        << 0 << QByteArray("0;367;0") << QByteArray("RR") << QStringLiteral("0;1133;0");
    QTest::newRow("central alone, untrained")
        << 1 << QByteArray("0;367;0") << QByteArray("R") << QStringLiteral("0;1133;0");
    QTest::newRow("peripheral alone, trained before")
        << 2 << QByteArray("0;367;0") << QByteArray("R") << QStringLiteral("0;567;0");
    QTest::newRow("dual alone, trained before")
        << 3 << QByteArray("0;0;483") << QByteArray("W") << QStringLiteral("0;0;2283");
}

void tst_Test1Keys::escapeInTheTrainingKeepsNoThresholdThatIsNotThere()
{
    QFETCH(const int, mode);
    QFETCH(const QByteArray, stored);
    QFETCH(const QByteArray, answers);
    QFETCH(const QString, kept);
    VisionDesk desk;
    desk.writePatient(stored);
    const QByteArray log = logBytes(desk);
    desk.go({.mode = mode, .training = true});
    if (!answers.isEmpty()) {
        desk.click("pb_go");
        QVERIFY(play(desk, answers));
    }
    desk.key(Qt::Key_Escape);
    verifyIsLeft(desk);
    QCOMPARE(logBytes(desk), log); // no marker outside the test
    QCOMPARE(desk.thresholds(), kept);
}

void tst_Test1Keys::escapeAfterAPassedBlockKeepsItsLastExposure()
{
    VisionDesk desk;
    desk.writePatient("0;0;0");
    desk.go({.mode = 0, .training = true});
    desk.click("pb_go");
    // From 4633 ms five steps down to 133; in the end up to 283.
    QVERIFY(play(desk, "RRRRRWRWRW"));
    QCOMPARE(desk.instruction(), QStringLiteral("Peripheral\nvision"));
    desk.click("pb_go");
    QVERIFY(play(desk, "RRR")); // not passed before the block is over
    desk.key(Qt::Key_Escape);
    verifyIsLeft(desk);
    QCOMPARE(desk.thresholds(), QStringLiteral("283;0;0"));
}

void tst_Test1Keys::escapeInTheTestBehindATrainingKeepsTheRunningExposures()
{
    VisionDesk desk;
    desk.writePatient("0;0;483");
    desk.go({.mode = 1, .training = true});
    desk.click("pb_go");
    QVERIFY(play(desk, "RRRRRWRWRW"));
    QVERIFY(desk.shown("pb_go"));
    desk.click("pb_go");
    QVERIFY(play(desk, "RR"));
    desk.key(Qt::Key_Escape);
    QCOMPARE(desk.rows().size(), 3);
    QCOMPARE(lastRow(desk), marker("interrupted"));
    verifyIsLeft(desk);
    // Wherever a threshold was stored, the training was to start at 1133 ms.
    QCOMPARE(desk.thresholds(), QStringLiteral("150;0;1133"));
}

void tst_Test1Keys::escapeInTheScript_data()
{
    QTest::addColumn<bool>("training");
    QTest::addColumn<QByteArray>("stored");
    QTest::addColumn<int>("steps"); // presses of "Next"
    QTest::addColumn<QString>("kept");
    for (const int steps : {0, 1, 2, 3, 5}) {
        QTest::addRow("instruction, %d steps", steps)
            << false << QByteArray("283;367;483") << steps << "283;367;483";
        QTest::addRow("untrained, %d steps", steps)
            << false << QByteArray("0;0;0") << steps << "0;0;0";
        QTest::addRow("with training, %d steps", steps)
            << true << QByteArray("283;367;483") << steps << "1133;1133;1133";
        QTest::addRow("untrained, with training, %d steps", steps)
            << true << QByteArray("0;0;0") << steps << "0;0;0";
    }
}

void tst_Test1Keys::escapeInTheScript()
{
    QFETCH(const bool, training);
    QFETCH(const QByteArray, stored);
    QFETCH(const int, steps);
    QFETCH(const QString, kept);
    VisionDesk desk;
    desk.writePatient(stored);
    const QByteArray log = logBytes(desk);
    desk.go({.mode = 0, .instruction = true, .training = training});
    for (int step = 0; step < steps; ++step)
        desk.click("pb_next");
    desk.time.advance(100);
    desk.key(Qt::Key_P); // these two have no meaning here
    desk.key(Qt::Key_E);
    QVERIFY(!desk.shown("pb_continue"));
    desk.key(Qt::Key_Escape);
    verifyIsLeft(desk);
    QVERIFY(desk.nothingIsShown());
    QCOMPARE(logBytes(desk), log);
    QCOMPARE(desk.thresholds(), kept);
}

void tst_Test1Keys::closingByTheWindowManagerIsEscape()
{
    VisionDesk desk;
    desk.startTest({.mode = 1});
    QVERIFY(play(desk, "RR"));
    QVERIFY(desk.reach(5));
    QWindow *frame = desk.task.windowHandle();
    QVERIFY(frame);
    QCloseEvent event;
    QCoreApplication::sendEvent(frame, &event); // as the platform sends it
    QCOMPARE(desk.rows().size(), 3);            // one marker
    QCOMPARE(lastRow(desk), marker("interrupted"));
    verifyIsLeft(desk);
    QCOMPARE(desk.thresholds(), QStringLiteral("150;367;483"));
}

QTEST_MAIN(tst_Test1Keys)
#include "tst_Test1Keys.moc"
