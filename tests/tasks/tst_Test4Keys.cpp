#include "MemoryDesk.h"

#include <QCloseEvent>
#include <QCursor>
#include <QKeyEvent>
#include <QWindow>

#include <algorithm>

using namespace column;

/// The assessor's keys: P, E, S and Escape; and the clicks that come out of turn behind a hold.
class tst_Test4Keys : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theStrikeIsTakenAtTheQuestionOnly_data();
    void theStrikeIsTakenAtTheQuestionOnly();
    void aStruckTrialLeavesItsRowAtOnce_data();
    void aStruckTrialLeavesItsRowAtOnce();
    void theWordOverAStruckTrialStaysUntilContinue();
    void aStruckTrialTakesBackTheRankBelow();
    void aStrikeOnTheFirstTrialGoesBelowTheFirstRank();
    void strikesInARowGoOnDownwards();
    void aStruckLoadIsTriedAgain();
    void aTestRunsOneTrialLongerForEachStrike();
    void thePauseIsTakenBeforeTheAnswersAreIn_data();
    void thePauseIsTakenBeforeTheAnswersAreIn();
    void inTheClosingLookNoKeyHolds();
    void aRunPausedAtItsFirstCrossBeginsAnew_data();
    void aRunPausedAtItsFirstCrossBeginsAnew();
    void aRunPausedLaterGoesOnWithTheSameCross_data();
    void aRunPausedLaterGoesOnWithTheSameCross();
    void aPauseLeavesTheQuestionOnTheScreen();
    void aPauseBetweenTheClicksLeavesItsQuestionToo();
    void behindAPauseTheClicksAnswerThePausedTrial();
    void bothClicksOutOfTurnLetTheRunGoOnBesideThem_data();
    void bothClicksOutOfTurnLetTheRunGoOnBesideThem();
    void oneClickOutOfTurnIsAskedForAgain();
    void behindAPauseBetweenTheClicksTheNextOneAnswersTheFirst();
    void behindAStrikeTheClicksAreTakenToo();
    void theKeysHoldATrialOfTheTraining();
    void aStrikeMakesTheTrainingLonger();
    void behindABlockThePauseDoesNothing_data();
    void behindABlockThePauseDoesNothing();
    void aPauseBeforeTheFirstTrialIsForgottenByGo();
    void theGuidesComeAndGoAtAnyTime();
    void theGuidesStayThroughTrialsAndHolds();
    void theGuidesGoWithTheRun_data();
    void theGuidesGoWithTheRun();
    void aHeldKeyDoesNothing_data();
    void aHeldKeyDoesNothing();
    void otherKeysDoNothing();
    void aLineEditOfThePanelSwallowsNoKey();
    void escapeEndsATestInEveryStage_data();
    void escapeEndsATestInEveryStage();
    void escapeWhileATrialIsHeldEndsTheTest_data();
    void escapeWhileATrialIsHeldEndsTheTest();
    void escapeBeforeTheFirstTrialLeavesAMarker();
    void escapeInTheScriptLeavesNothing_data();
    void escapeInTheScriptLeavesNothing();
    void escapeInTheTrainingLeavesNothing_data();
    void escapeInTheTrainingLeavesNothing();
    void closingByTheWindowManagerIsEscape();
};

namespace {

constexpr int tenMinutes = 600'000; // ms
constexpr QPoint five(20, 0);       // pixels to the right: 5 mm
constexpr QPoint ten(40, 0);

QByteArray logBytes(const MemoryDesk &desk)
{
    return desk.root.bytes(QStringLiteral("Results/output.csv"));
}

QString marker(const char *word)
{
    return QStringLiteral(";Mrs.;Doe;Jane;01/02/1950;") + QLatin1String(word);
}

QString lastRow(MemoryDesk &desk)
{
    return desk.rows().constLast().join(u';');
}

/// The entries of a column, from the row with this number on.
QString entries(MemoryDesk &desk, int column, qsizetype from = 0)
{
    QStringList all;
    const QList<QStringList> rows = desk.rows().mid(from);
    for (const QStringList &row : rows)
        all.append(row[column]);
    return all.join(u' ');
}

void addStages()
{
    QTest::addColumn<int>("stage");
    QTest::newRow("at Continue") << 0;
    QTest::newRow("before the first cross") << 1;
    QTest::newRow("a cross") << 2;
    QTest::newRow("between two crosses") << 3;
    QTest::newRow("the question") << 4;
    QTest::newRow("the closing look") << 5;
}

/// The present trial up to one of its stages.
bool reachStage(MemoryDesk &desk, int stage)
{
    if (stage == 0)
        return desk.task.stage() == 0;
    if (desk.shown("pb_continue"))
        desk.click("pb_continue");
    if (stage == 5) {
        const QList<QPoint> places = desk.runToQuestion();
        desk.answer(places.constLast() + ten, places.constFirst() + ten);
    }
    return desk.reach(stage);
}

void verifyWaits(MemoryDesk &desk, const QString &mode)
{
    QCOMPARE(desk.mode(), mode);
    QCOMPARE(desk.task.stage(), 0);
    QVERIFY(desk.shown("pb_continue"));
    QVERIFY(desk.cross->isVisible());
    QVERIFY(!desk.first->isVisible() && !desk.last->isVisible());
    QCOMPARE(desk.task.cursor().shape(), Qt::ArrowCursor);
    QCOMPARE(desk.task.mapFromGlobal(QCursor::pos()),
             desk.widget("pb_continue")->geometry().center());
}

/// Nothing but the log tells of the run, and it doesn't go on.
void verifyIsLeft(MemoryDesk &desk)
{
    QVERIFY(!desk.task.isRunning());
    QCOMPARE(desk.task.stage(), 0);
    QVERIFY(sessionStore().escapeSeq); // the session number will be read back
    QCOMPARE(desk.task.cursor().shape(), Qt::ArrowCursor);
    QVERIFY(desk.nothingIsShown());
    for (const char *path :
         {"Results/valid-output.csv", "Results/results_T4.csv", "Archives/Doe Jane 01.02.1950"})
        QVERIFY2(!desk.root.exists(QString::fromLatin1(path)), path);
    QVERIFY(desk.root.bytes(QString::fromLatin1(MemoryDesk::patients))
                .startsWith("Mrs.;Doe;Jane;01.02.1950;1;2;3;4;"));
    const QByteArray log = logBytes(desk);
    desk.time.advance(tenMinutes);
    QCOMPARE(logBytes(desk), log);
    QVERIFY(!desk.task.isRunning());
    QVERIFY(desk.nothingIsShown());
}

} // namespace

void tst_Test4Keys::theStrikeIsTakenAtTheQuestionOnly_data()
{
    addStages();
}

void tst_Test4Keys::theStrikeIsTakenAtTheQuestionOnly()
{
    QFETCH(const int, stage);
    MemoryDesk desk;
    desk.go({});
    desk.key(Qt::Key_E); // before the first trial
    QVERIFY(desk.shown("pb_go"));
    desk.click("pb_go");
    QVERIFY(desk.runTrial(40));
    QVERIFY(reachStage(desk, stage));
    desk.key(Qt::Key_E);
    if (stage == 4) {
        QCOMPARE(desk.rows().size(), 2);
        return;
    }
    QCOMPARE(desk.task.stage(), stage);
    QCOMPARE(desk.mode(), QString());
    QCOMPARE(desk.rows().size(), 1);
    QVERIFY(stage == 5 ? desk.finishTrial() : desk.runTrial(40));
    QCOMPARE(desk.rows().size(), 2);
    QCOMPARE(desk.rows().constLast()[RankTask], QStringLiteral("2"));
    QCOMPARE(desk.rows().constLast()[DistLast], QStringLiteral("   10.00"));
    QCOMPARE(desk.rows().constLast()[Error], QStringLiteral("0"));
}

void tst_Test4Keys::aStruckTrialLeavesItsRowAtOnce_data()
{
    QTest::addColumn<bool>("answered");
    QTest::newRow("before a click") << false;
    QTest::newRow("behind the first click") << true;
}

void tst_Test4Keys::aStruckTrialLeavesItsRowAtOnce()
{
    QFETCH(const bool, answered);
    MemoryDesk desk;
    desk.startTest();
    QVERIFY(desk.runTrial(40));
    desk.click("pb_continue");
    QVERIFY(desk.reach(2));
    const QDateTime onset = desk.time.currentDateTime();
    const QList<QPoint> places = desk.runToQuestion();
    if (answered)
        desk.clickAt(places.constLast());
    desk.key(Qt::Key_E);
    QCOMPARE(desk.rows().size(), 2);
    QCOMPARE(lastRow(desk),
             QStringLiteral(";Mrs.;Doe;Jane;01/02/1950;4;5;%1;%2;2;;;;;;;;;;;;;;;;;%3;%4;1")
                 .arg(onset.toString(QStringLiteral("dd/MM/yyyy;hh:mm:ss.zzz")))
                 .arg(places.size() - 2)
                 .arg(desk.sector(places.constFirst()) + 1)
                 .arg(desk.sector(places.constLast()) + 1));
}

void tst_Test4Keys::theWordOverAStruckTrialStaysUntilContinue()
{
    MemoryDesk desk;
    desk.startTest();
    QVERIFY(desk.runToQuestion().size() >= 2);
    desk.key(Qt::Key_E);
    for (int i = 0; i < 2; ++i) {
        verifyWaits(desk, QStringLiteral("ERROR"));
        QVERIFY(!desk.shown("lbl_lastCross") && !desk.shown("lbl_firstCross"));
        QCOMPARE(desk.rows().size(), 1);
        desk.time.advance(tenMinutes);
    }
    desk.click("pb_continue");
    QCOMPARE(desk.mode(), QString());
    QCOMPARE(desk.task.stage(), 1);
    QCOMPARE(desk.task.cursor().shape(), Qt::BlankCursor);
}

void tst_Test4Keys::aStruckTrialTakesBackTheRankBelow()
{
    MemoryDesk desk;
    desk.startTest();
    QVERIFY(desk.runTrials(3));
    QVERIFY(desk.runToQuestion().size() >= 2);
    QCOMPARE(desk.text("le_no"), QStringLiteral("4"));
    desk.key(Qt::Key_E);
    QCOMPARE(desk.text("le_no"), QStringLiteral("3"));
    QVERIFY(desk.runTrials(3));
    QCOMPARE(entries(desk, RankTask), QStringLiteral("1 2 3 4 3 4 5"));
    QCOMPARE(entries(desk, Error), QStringLiteral("0 0 0 1 0 0 0"));
}

void tst_Test4Keys::aStrikeOnTheFirstTrialGoesBelowTheFirstRank()
{
    MemoryDesk desk;
    desk.startTest();
    QVERIFY(desk.runToQuestion().size() >= 2);
    desk.key(Qt::Key_E);
    QCOMPARE(desk.text("le_no"), QStringLiteral("0"));
    QVERIFY(desk.shown("pb_continue")); // only the first one has started by itself
    QVERIFY(desk.runTrial(40));
    QCOMPARE(desk.text("le_no"), QStringLiteral("1"));
    QVERIFY(desk.runTrial(40));
    QCOMPARE(entries(desk, RankTask), QStringLiteral("1 0 1"));
    QCOMPARE(entries(desk, Error), QStringLiteral("1 0 0"));
}

void tst_Test4Keys::strikesInARowGoOnDownwards()
{
    MemoryDesk desk;
    desk.startTest();
    QVERIFY(desk.runTrials(2));
    for (const char *next : {"2", "1", "0", "-1"}) {
        QVERIFY(desk.runToQuestion().size() >= 2);
        desk.key(Qt::Key_E);
        QCOMPARE(desk.text("le_no"), QLatin1String(next));
    }
    QVERIFY(desk.runTrials(4, 40));
    QCOMPARE(entries(desk, RankTask), QStringLiteral("1 2 3 2 1 0 -1 0 1 2"));
    QCOMPARE(entries(desk, Error), QStringLiteral("0 0 1 1 1 1 0 0 0 0"));
}

void tst_Test4Keys::aStruckLoadIsTriedAgain()
{
    MemoryDesk desk;
    desk.startTest();
    QStringList loads;
    for (int trial = 0; trial < 12; ++trial) { // over the end of six
        for (int strike = 0; strike < 2; ++strike) {
            QVERIFY(desk.runToQuestion().size() >= 2);
            desk.key(Qt::Key_E);
        }
        QVERIFY(desk.runTrial());
        const QStringList three = entries(desk, Subtask, qsizetype{3} * trial).split(u' ');
        QCOMPARE(three.size(), 3);
        QCOMPARE(three.count(three[0]), 3);
        loads.append(three[0]);
    }
    for (const qsizetype block : {0, 6}) {
        QStringList six = loads.mid(block, 6);
        std::ranges::sort(six);
        QCOMPARE(six.join(QString()), QStringLiteral("012345"));
    }
}

void tst_Test4Keys::aTestRunsOneTrialLongerForEachStrike()
{
    MemoryDesk desk;
    desk.go({});
    desk.type("le_number", QStringLiteral("4"));
    desk.click("pb_go");
    for (int strike = 0; strike < 3; ++strike) {
        QVERIFY(desk.runTrial());
        QVERIFY(desk.runToQuestion().size() >= 2);
        desk.key(Qt::Key_E);
    }
    QVERIFY(desk.runTrials(3));
    QVERIFY(!desk.shown("pb_results"));
    QVERIFY(desk.runTrial());
    QVERIFY(desk.shown("pb_results")); // seven valid trials, three struck ones
    QCOMPARE(desk.rows().size(), 10);
}

void tst_Test4Keys::thePauseIsTakenBeforeTheAnswersAreIn_data()
{
    addStages();
}

void tst_Test4Keys::thePauseIsTakenBeforeTheAnswersAreIn()
{
    QFETCH(const int, stage);
    MemoryDesk desk;
    desk.startTest();
    QVERIFY(desk.runTrial(40));
    QVERIFY(reachStage(desk, stage));
    desk.key(Qt::Key_P);
    if (stage == 5) {
        QCOMPARE(desk.rows().size(), 1);
        return;
    }
    for (int i = 0; i < 2; ++i) {
        verifyWaits(desk, QStringLiteral("PAUSE"));
        QCOMPARE(desk.rows().size(), 2);
        QCOMPARE(lastRow(desk), marker("paused"));
        QCOMPARE(desk.text("le_no"), QStringLiteral("2"));
        desk.time.advance(tenMinutes); // all timers have stopped
    }
    desk.click("pb_continue");
    QCOMPARE(desk.mode(), QString());
    QCOMPARE(desk.task.stage(), 1);
    QCOMPARE(desk.task.cursor().shape(), Qt::BlankCursor);
    QVERIFY(desk.runTrial(40));
    QCOMPARE(desk.rows().size(), 3);
    QCOMPARE(desk.rows().constLast()[RankTask], QStringLiteral("2")); // no trial is lost
    QCOMPARE(desk.rows().constLast()[DistFirst], QStringLiteral("   10.00"));
    QCOMPARE(desk.rows().constLast()[DistLast], QStringLiteral("   10.00"));
}

void tst_Test4Keys::inTheClosingLookNoKeyHolds()
{
    MemoryDesk desk;
    desk.startTest();
    QVERIFY(reachStage(desk, 5));
    for (const Qt::Key key : {Qt::Key_P, Qt::Key_E}) {
        desk.time.advance(400);
        desk.key(key);
        QCOMPARE(desk.task.stage(), 5);
        QCOMPARE(desk.mode(), QString());
        QVERIFY(desk.first->isVisible() && desk.last->isVisible());
    }
    desk.time.advance(199);
    QCOMPARE(desk.task.stage(), 5);
    desk.time.advance(1);
    QCOMPARE(desk.task.stage(), 0);
    QCOMPARE(desk.rows().size(), 1);
    QCOMPARE(desk.rows().constLast()[Error], QStringLiteral("0"));
}

void tst_Test4Keys::aRunPausedAtItsFirstCrossBeginsAnew_data()
{
    QTest::addColumn<int>("stage");
    QTest::newRow("before it") << 1;
    QTest::newRow("while it shows") << 2;
    QTest::newRow("behind it") << 3;
}

void tst_Test4Keys::aRunPausedAtItsFirstCrossBeginsAnew()
{
    QFETCH(const int, stage);
    MemoryDesk desk;
    desk.startTest();
    for (int trial = 0; trial < 6; ++trial) {
        QVERIFY(reachStage(desk, stage));
        desk.key(Qt::Key_P);
        desk.time.advance(4000);
        desk.click("pb_continue");
        QVERIFY(desk.reach(2));
        QVERIFY(desk.first->isVisible() && !desk.last->isVisible());
        const QDateTime onset = desk.time.currentDateTime();
        const QList<QPoint> places = desk.runToQuestion();
        desk.answer(places.constLast(), places.constFirst());
        QVERIFY(desk.finishTrial());
        const QStringList row = desk.rows().constLast();
        QCOMPARE(row[Subtask], QString::number(places.size() - 2)); // the whole run
        QCOMPARE(row[Time], onset.toString(QStringLiteral("hh:mm:ss.zzz")));
        QCOMPARE(row[PosFirst], QString::number(desk.sector(places.constFirst()) + 1));
        QCOMPARE(row[DistFirst], QStringLiteral("    1.00"));
        QCOMPARE(row[RankTask], QString::number(trial + 1));
    }
}

void tst_Test4Keys::aRunPausedLaterGoesOnWithTheSameCross_data()
{
    QTest::addColumn<int>("stage");
    QTest::newRow("while it shows") << 2;
    QTest::newRow("behind it") << 3;
}

void tst_Test4Keys::aRunPausedLaterGoesOnWithTheSameCross()
{
    QFETCH(const int, stage);
    MemoryDesk desk;
    desk.startTest();
    int moved = 0;
    for (int trial = 0; trial < 6; ++trial) {
        if (trial > 0)
            desk.click("pb_continue");
        QVERIFY(desk.reach(2));
        const QDateTime onset = desk.time.currentDateTime();
        const QPoint first = MemoryDesk::place(desk.first);
        QVERIFY(desk.reach(3) && desk.reach(2));
        const QPoint second = MemoryDesk::place(desk.last);
        QVERIFY(desk.reach(stage));
        desk.key(Qt::Key_P);
        QVERIFY(!desk.last->isVisible());
        desk.time.advance(4000);
        desk.click("pb_continue");
        QCOMPARE(desk.task.stage(), 1);
        desk.time.advance(1000);
        // The second cross again, elsewhere in its sector; the first one isn't shown again.
        QCOMPARE(desk.task.stage(), 2);
        QVERIFY(desk.last->isVisible() && !desk.first->isVisible());
        QPoint latest = MemoryDesk::place(desk.last);
        QCOMPARE(desk.sector(latest), desk.sector(second));
        moved += latest == second ? 0 : 1;
        int crosses = 2;
        while (desk.reach(3)) {
            desk.time.advance(1000);
            if (desk.task.stage() == 4)
                break;
            QVERIFY(desk.last->isVisible() && !desk.first->isVisible());
            latest = MemoryDesk::place(desk.last);
            ++crosses;
        }
        desk.answer(latest, first + five);
        QVERIFY(desk.finishTrial());
        const QStringList row = desk.rows().constLast();
        QCOMPARE(row[Subtask], QString::number(crosses - 2));
        QCOMPARE(row[Time], onset.toString(QStringLiteral("hh:mm:ss.zzz"))); // before the pause
        QCOMPARE(row[RankTask], QString::number(trial + 1));
        QCOMPARE(row[PosFirst], QString::number(desk.sector(first) + 1));
        QCOMPARE(row[PosLast], QString::number(desk.sector(latest) + 1));
        QCOMPARE(row[DistFirst], QStringLiteral("    5.00"));
        QCOMPARE(row[DistLast], QStringLiteral("    1.00"));
    }
    QVERIFY(moved > 3);
}

void tst_Test4Keys::aPauseLeavesTheQuestionOnTheScreen()
{
    MemoryDesk desk;
    desk.startTest();
    QVERIFY(desk.runToQuestion().size() >= 2);
    desk.key(Qt::Key_P);
    QVERIFY(desk.shown("lbl_lastCross") && !desk.shown("lbl_firstCross"));
    desk.click("pb_continue");
    while (desk.task.stage() != 4) {
        QVERIFY(desk.shown("lbl_lastCross") && !desk.shown("lbl_firstCross"));
        desk.time.advance(250);
    }
    desk.clickAt(desk.centre());
    QVERIFY(!desk.shown("lbl_lastCross") && desk.shown("lbl_firstCross"));
    desk.clickAt(desk.centre());
    QVERIFY(!desk.shown("lbl_lastCross") && !desk.shown("lbl_firstCross"));
}

void tst_Test4Keys::aPauseBetweenTheClicksLeavesItsQuestionToo()
{
    MemoryDesk desk;
    desk.startTest();
    const QList<QPoint> places = desk.runToQuestion();
    desk.clickAt(places.constLast());
    desk.key(Qt::Key_P);
    desk.click("pb_continue");
    while (desk.task.stage() != 4) {
        QVERIFY(!desk.shown("lbl_lastCross") && desk.shown("lbl_firstCross"));
        desk.time.advance(250);
    }
    QVERIFY(desk.shown("lbl_lastCross") && desk.shown("lbl_firstCross")); // the one over the other
    desk.clickAt(desk.centre());
    QVERIFY(!desk.shown("lbl_lastCross") && desk.shown("lbl_firstCross"));
    QCOMPARE(desk.task.stage(), 4);
    desk.clickAt(desk.centre());
    QVERIFY(!desk.shown("lbl_firstCross"));
    QCOMPARE(desk.task.stage(), 5);
}

void tst_Test4Keys::behindAPauseTheClicksAnswerThePausedTrial()
{
    MemoryDesk desk;
    desk.startTest();
    QVERIFY(desk.runTrial());
    desk.click("pb_continue");
    QVERIFY(desk.reach(2));
    const QDateTime onset = desk.time.currentDateTime();
    const QList<QPoint> places = desk.runToQuestion();
    desk.key(Qt::Key_P);
    desk.time.advance(5000);
    desk.clickAt(places.constLast() + five);
    QCOMPARE(desk.task.stage(), 0);
    QCOMPARE(MemoryDesk::place(desk.last), places.constLast() + five);
    QVERIFY(desk.last->isVisible() && !desk.first->isVisible());
    QVERIFY(!desk.shown("lbl_lastCross") && desk.shown("lbl_firstCross"));
    QCOMPARE(desk.text("le_distLast"), QStringLiteral("    5.00"));
    desk.time.advance(tenMinutes);
    QCOMPARE(desk.task.stage(), 0);

    desk.clickAt(places.constFirst() + ten);
    QCOMPARE(desk.task.stage(), 5);
    QVERIFY(desk.last->isVisible() && desk.first->isVisible());
    QCOMPARE(desk.text("le_distFirst"), QStringLiteral("   10.00"));
    desk.clickAt(places.constFirst()); // no more
    QCOMPARE(desk.text("le_distFirst"), QStringLiteral("   10.00"));
    desk.time.advance(999);
    QCOMPARE(desk.rows().size(), 2);
    desk.time.advance(1);
    QCOMPARE(desk.rows().size(), 3);
    verifyWaits(desk, QStringLiteral("PAUSE"));
    const QStringList row = desk.rows().constLast();
    QCOMPARE(row[Time], onset.toString(QStringLiteral("hh:mm:ss.zzz")));
    QCOMPARE(row[Subtask], QString::number(places.size() - 2));
    QCOMPARE(row[RankTask], QStringLiteral("2"));
    QCOMPARE(row[DistLast], QStringLiteral("    5.00"));
    QCOMPARE(row[DistFirst], QStringLiteral("   10.00"));
    QCOMPARE(row[Error], QStringLiteral("0"));
    QVERIFY(desk.runTrial(40)); // and the task goes on as ever
    QCOMPARE(desk.rows().constLast()[RankTask], QStringLiteral("3"));
}

void tst_Test4Keys::bothClicksOutOfTurnLetTheRunGoOnBesideThem_data()
{
    QTest::addColumn<int>("before"); // valid trials
    QTest::newRow("in the middle of six") << 1;
    QTest::newRow("in the last of six") << 5;
}

void tst_Test4Keys::bothClicksOutOfTurnLetTheRunGoOnBesideThem()
{
    QFETCH(const int, before);
    MemoryDesk desk;
    desk.startTest();
    QVERIFY(desk.runTrials(before));
    const QList<QPoint> paused = desk.runToQuestion();
    desk.key(Qt::Key_P);
    desk.click("pb_continue");
    const QDateTime start = desk.time.currentDateTime();
    desk.time.advance(200);
    desk.clickAt(paused.constLast() + five);
    QCOMPARE(desk.task.stage(), 1);
    QCOMPARE(desk.text("le_distLast"), QStringLiteral("    5.00"));
    QVERIFY(desk.last->isVisible());
    desk.time.advance(200);
    desk.clickAt(paused.constFirst() + ten); // at 400 ms: the closing wait begins
    QCOMPARE(desk.task.stage(), 5);
    QCOMPARE(desk.text("le_distFirst"), QStringLiteral("   10.00"));
    desk.time.advance(599);
    QCOMPARE(MemoryDesk::place(desk.first), paused.constFirst() + ten);
    desk.time.advance(1); // at 1000 ms: the first cross of the run
    QCOMPARE(desk.task.stage(), 2);
    const QPoint first = MemoryDesk::place(desk.first);
    QVERIFY(desk.first->isVisible());
    desk.time.advance(399);
    QCOMPARE(desk.rows().size(), before + 1); // the marker
    desk.time.advance(1);                     // at 1400 ms: the trial that was answered ends
    QCOMPARE(desk.rows().size(), before + 2);
    const QString onset = start.addMSecs(1000).toString(QStringLiteral("hh:mm:ss.zzz"));
    QStringList row = desk.rows().constLast();
    QCOMPARE(row[Time], onset);
    QCOMPARE(row[Subtask], QString::number(paused.size() - 2));
    QCOMPARE(row[RankTask], QString::number(before + 1));
    QCOMPARE(row[DistLast], QStringLiteral("    5.00"));
    QCOMPARE(row[DistFirst], QStringLiteral("   10.00"));
    QCOMPARE(row[PosFirst], QString::number(desk.sector(first) + 1)); // of the run that goes on
    QCOMPARE(row[PosLast], QString::number(desk.sector(paused.constLast()) + 1));
    QCOMPARE(row[Error], QStringLiteral("0"));
    verifyWaits(desk, QString());
    QCOMPARE(desk.text("le_no"), QString::number(before + 2));

    desk.time.advance(100); // at 1500 ms: the cross would go
    QCOMPARE(desk.task.stage(), 3);
    QVERIFY(desk.shown("pb_continue"));
    QPoint last;
    int crosses = 1;
    for (desk.time.advance(1000); desk.task.stage() == 2; desk.time.advance(1500)) {
        QVERIFY(desk.last->isVisible() && !desk.first->isVisible());
        QVERIFY(desk.shown("pb_continue"));
        last = MemoryDesk::place(desk.last);
        ++crosses;
    }
    QCOMPARE(desk.task.stage(), 4); // of the next trial, which nobody has started
    QVERIFY(desk.shown("lbl_lastCross") && desk.shown("pb_continue"));
    desk.answer(last, first);
    QCOMPARE(desk.task.stage(), 5);
    QVERIFY(desk.finishTrial());
    row = desk.rows().constLast();
    QCOMPARE(row[Time], onset);
    QCOMPARE(row[Subtask], QString::number(crosses - 2));
    QCOMPARE(row[RankTask], QString::number(before + 2));
    QCOMPARE(row[DistLast], QStringLiteral("    1.00"));
    QCOMPARE(row[DistFirst], QStringLiteral("    1.00"));
    verifyWaits(desk, QString());

    QVERIFY(desk.runTrials(12 - before - 2)); // and every load still comes once in six
    QStringList loads;
    const QList<QStringList> rows = desk.rows();
    for (const QStringList &trial : rows) {
        if (trial.size() == Count)
            loads.append(trial[Subtask]);
    }
    QCOMPARE(loads.size(), 12);
    for (const qsizetype block : {0, 6}) {
        QStringList six = loads.mid(block, 6);
        std::ranges::sort(six);
        QCOMPARE(six.join(QString()), QStringLiteral("012345"));
    }
}

void tst_Test4Keys::oneClickOutOfTurnIsAskedForAgain()
{
    MemoryDesk desk;
    desk.startTest();
    QVERIFY(desk.runTrial());
    const QList<QPoint> paused = desk.runToQuestion();
    desk.key(Qt::Key_P);
    desk.click("pb_continue");
    desk.time.advance(300);
    desk.clickAt(paused.constLast() + five);
    QCOMPARE(desk.text("le_distLast"), QStringLiteral("    5.00"));
    desk.time.advance(700); // the click shows on beside the first cross
    QVERIFY(desk.first->isVisible() && desk.last->isVisible());
    QCOMPARE(MemoryDesk::place(desk.last), paused.constLast() + five);
    desk.time.advance(500);
    QVERIFY(!desk.first->isVisible() && !desk.last->isVisible());
    const QList<QPoint> places = desk.runToQuestion();
    QCOMPARE(places.size(), paused.size());
    QVERIFY(desk.shown("lbl_lastCross") && desk.shown("lbl_firstCross"));
    desk.answer(places.constLast() + ten, places.constFirst());
    QCOMPARE(desk.task.stage(), 5);
    QVERIFY(!desk.shown("lbl_lastCross") && !desk.shown("lbl_firstCross"));
    QVERIFY(desk.finishTrial());
    const QStringList row = desk.rows().constLast();
    QCOMPARE(row[DistLast], QStringLiteral("   10.00"));
    QCOMPARE(row[DistFirst], QStringLiteral("    1.00"));
    QCOMPARE(row[RankTask], QStringLiteral("2"));
}

void tst_Test4Keys::behindAPauseBetweenTheClicksTheNextOneAnswersTheFirst()
{
    MemoryDesk desk;
    desk.startTest();
    const QList<QPoint> paused = desk.runToQuestion();
    desk.clickAt(paused.constLast() + five);
    desk.key(Qt::Key_P);
    QVERIFY(!desk.last->isVisible());
    desk.click("pb_continue");
    desk.time.advance(300);
    desk.clickAt(paused.constFirst() + ten);
    QCOMPARE(desk.task.stage(), 5);
    QCOMPARE(desk.text("le_distLast"), QStringLiteral("    5.00")); // it stands on the panel
    QCOMPARE(desk.text("le_distFirst"), QStringLiteral("   10.00"));
    desk.time.advance(1000);
    QCOMPARE(desk.rows().size(), 2);
    const QStringList row = desk.rows().constLast();
    QCOMPARE(row[DistLast], QStringLiteral(" 9999.00")); // the new trial has no answer for it
    QCOMPARE(row[DistFirst], QStringLiteral("   10.00"));
    QCOMPARE(row[RankTask], QStringLiteral("1"));
    QCOMPARE(row[Error], QStringLiteral("0"));
    QVERIFY(desk.shown("pb_continue"));
    QVERIFY(desk.reach(4)); // its run has gone on
    QVERIFY(desk.shown("pb_continue"));
}

void tst_Test4Keys::behindAStrikeTheClicksAreTakenToo()
{
    MemoryDesk desk;
    desk.startTest();
    QVERIFY(desk.runTrials(2));
    const QList<QPoint> struck = desk.runToQuestion();
    desk.key(Qt::Key_E);
    QVERIFY(!desk.shown("lbl_lastCross"));
    desk.click("pb_continue");
    QVERIFY(desk.reach(2));
    const QPoint first = MemoryDesk::place(desk.first);
    desk.time.advance(200);
    desk.clickAt(struck.constLast() + five);
    QCOMPARE(desk.task.stage(), 2);
    QCOMPARE(desk.text("le_distLast"), QStringLiteral("    5.00"));
    QVERIFY(desk.last->isVisible() && desk.shown("lbl_firstCross"));
    desk.clickAt(first + ten); // while it shows
    QCOMPARE(desk.task.stage(), 5);
    QCOMPARE(desk.text("le_distFirst"), QStringLiteral("   10.00"));
    QCOMPARE(MemoryDesk::place(desk.first), first + ten);
    desk.time.advance(300); // the run goes on
    QCOMPARE(desk.task.stage(), 3);
    QVERIFY(!desk.first->isVisible() && !desk.last->isVisible());
    desk.time.advance(699);
    QCOMPARE(desk.rows().size(), 3);
    desk.time.advance(1);
    QCOMPARE(desk.rows().size(), 4);
    const QStringList row = desk.rows().constLast();
    QCOMPARE(row[Subtask], QString::number(struck.size() - 2));
    QCOMPARE(row[RankTask], QStringLiteral("2"));
    QCOMPARE(row[DistLast], QStringLiteral("    5.00"));
    QCOMPARE(row[DistFirst], QStringLiteral("   10.00"));
    QCOMPARE(row[PosFirst], QString::number(desk.sector(first) + 1));
    QCOMPARE(row[PosLast], QString::number(desk.sector(struck.constLast()) + 1));
    QCOMPARE(row[Error], QStringLiteral("0"));
    QVERIFY(desk.shown("pb_continue"));
    QVERIFY(desk.reach(2) && desk.reach(4));
}

void tst_Test4Keys::theKeysHoldATrialOfTheTraining()
{
    MemoryDesk desk;
    const QByteArray log = logBytes(desk);
    desk.startTest({.training = true});
    QVERIFY(desk.runTrial());
    for (int stage = 0; stage <= 4; ++stage) {
        QVERIFY(reachStage(desk, stage));
        desk.key(Qt::Key_P);
        verifyWaits(desk, QStringLiteral("PAUSE"));
        QCOMPARE(desk.text("le_no"), QStringLiteral("2"));
    }
    QVERIFY(reachStage(desk, 4));
    desk.key(Qt::Key_E);
    verifyWaits(desk, QStringLiteral("ERROR"));
    QCOMPARE(desk.text("le_no"), QStringLiteral("1"));
    QCOMPARE(logBytes(desk), log); // no marker, no row
}

void tst_Test4Keys::aStrikeMakesTheTrainingLonger()
{
    MemoryDesk desk;
    const QByteArray log = logBytes(desk);
    desk.startTest({.training = true});
    QVERIFY(desk.runToQuestion().size() >= 2);
    desk.key(Qt::Key_E);
    QCOMPARE(desk.text("le_no"), QStringLiteral("0"));
    QVERIFY(desk.runTrials(3));
    QVERIFY(!desk.shown("pb_go"));
    QVERIFY(desk.runTrial()); // the fourth that counts
    QVERIFY(desk.shown("pb_go"));
    QCOMPARE(logBytes(desk), log);
    desk.click("pb_go");
    QCOMPARE(desk.text("le_no"), QStringLiteral("1"));
    QVERIFY(desk.runTrial());
    QCOMPARE(desk.rows().constLast()[RankTask], QStringLiteral("1"));
}

void tst_Test4Keys::behindABlockThePauseDoesNothing_data()
{
    QTest::addColumn<bool>("training");
    QTest::newRow("the training") << true;
    QTest::newRow("the test") << false;
}

void tst_Test4Keys::behindABlockThePauseDoesNothing()
{
    QFETCH(const bool, training);
    MemoryDesk desk;
    desk.go({.training = training});
    desk.type("le_number", QStringLiteral("3"));
    desk.click("pb_go");
    QVERIFY(desk.runTrials(3));
    const QByteArray log = logBytes(desk);
    for (const Qt::Key key : {Qt::Key_P, Qt::Key_E, Qt::Key_C}) {
        desk.key(key);
        desk.time.advance(tenMinutes);
        QCOMPARE(logBytes(desk), log);
        QCOMPARE(desk.mode(), QString());
        QVERIFY(!desk.shown("pb_continue"));
        QVERIFY(desk.nothingIsShown());
        QVERIFY(desk.shown(training ? "pb_go" : "pb_results"));
    }
}

void tst_Test4Keys::aPauseBeforeTheFirstTrialIsForgottenByGo()
{
    MemoryDesk desk;
    desk.go({});
    desk.key(Qt::Key_P);
    QCOMPARE(lastRow(desk), marker("paused"));
    verifyWaits(desk, QStringLiteral("PAUSE"));
    QVERIFY(desk.shown("pb_go"));
    desk.click("pb_go");
    QCOMPARE(desk.mode(), QString());
    QVERIFY(!desk.shown("pb_continue") && !desk.shown("pb_go"));
    QCOMPARE(desk.task.stage(), 1);
    QVERIFY(desk.runTrial());
    QCOMPARE(desk.rows().size(), 2);
    QCOMPARE(desk.rows().constLast()[RankTask], QStringLiteral("1"));
}

void tst_Test4Keys::theGuidesComeAndGoAtAnyTime()
{
    MemoryDesk desk;
    const auto verifyToggles = [&desk] {
        const int stage = desk.task.stage();
        desk.key(Qt::Key_S);
        QVERIFY(desk.guidesAreShown());
        desk.key(Qt::Key_S);
        QVERIFY(!desk.outerRing->isVisible() && !desk.innerRing->isVisible());
        QVERIFY(!desk.sectorLines->isVisible());
        QCOMPARE(desk.task.stage(), stage);
    };
    desk.go({.instruction = true, .training = true});
    for (int step = 0; step < 7; ++step) {
        verifyToggles();
        desk.click("pb_next");
    }
    verifyToggles();
    desk.click("pb_go");
    verifyToggles();
    QVERIFY(desk.runTrials(3));
    verifyToggles();
    desk.type("le_number", QStringLiteral("1"));
    desk.click("pb_go");
    for (const int stage : {1, 2, 3, 4, 5}) {
        QVERIFY(reachStage(desk, stage));
        verifyToggles();
    }
    QVERIFY(desk.finishTrial());
    QVERIFY(desk.shown("pb_results"));
    verifyToggles();
    QCOMPARE(desk.rows().size(), 1);
    QCOMPARE(desk.rows().constFirst()[Error], QStringLiteral("0"));
}

void tst_Test4Keys::theGuidesStayThroughTrialsAndHolds()
{
    MemoryDesk desk;
    desk.go({.training = true});
    desk.key(Qt::Key_S);
    desk.click("pb_go");
    QVERIFY(desk.guidesAreShown());
    QVERIFY(desk.runTrials(2));
    QVERIFY(desk.guidesAreShown());
    QVERIFY(reachStage(desk, 3));
    desk.key(Qt::Key_P);
    QVERIFY(desk.guidesAreShown());
    QVERIFY(reachStage(desk, 4));
    desk.key(Qt::Key_E);
    QVERIFY(desk.guidesAreShown());
    QVERIFY(desk.runTrials(2));
    QVERIFY(desk.shown("pb_go")); // of the test
    QVERIFY(desk.guidesAreShown());
    desk.click("pb_go");
    QVERIFY(desk.runTrial());
    QVERIFY(desk.guidesAreShown());
}

void tst_Test4Keys::theGuidesGoWithTheRun_data()
{
    QTest::addColumn<QString>("way");
    QTest::newRow("Escape") << u"escape"_qs;
    QTest::newRow("the end of the test") << u"end"_qs;
    QTest::newRow("a new run") << u"new"_qs;
}

void tst_Test4Keys::theGuidesGoWithTheRun()
{
    QFETCH(const QString, way);
    MemoryDesk desk;
    desk.go({});
    desk.type("le_number", QStringLiteral("2"));
    desk.click("pb_go");
    QVERIFY(desk.runTrial());
    desk.key(Qt::Key_S);
    QVERIFY(desk.guidesAreShown());
    if (way == QStringLiteral("escape")) {
        desk.key(Qt::Key_Escape);
    } else {
        QVERIFY(desk.runTrial());
        QVERIFY(desk.shown("pb_results"));
    }
    if (way == QStringLiteral("new")) {
        desk.key(Qt::Key_S); // over the two buttons
        QVERIFY(desk.guidesAreShown());
        desk.click("pb_mainMenu");
        desk.go({});
    }
    QVERIFY(!desk.outerRing->isVisible() && !desk.innerRing->isVisible());
    QVERIFY(!desk.sectorLines->isVisible());
    if (way == QStringLiteral("escape"))
        desk.go({});
    QVERIFY(!desk.outerRing->isVisible());
    desk.key(Qt::Key_S); // and the first press shows them
    QVERIFY(desk.guidesAreShown());
}

void tst_Test4Keys::aHeldKeyDoesNothing_data()
{
    addStages();
}

void tst_Test4Keys::aHeldKeyDoesNothing()
{
    QFETCH(const int, stage);
    MemoryDesk desk;
    desk.startTest();
    QVERIFY(desk.runTrial());
    QVERIFY(reachStage(desk, stage));
    const QByteArray log = logBytes(desk);
    for (const Qt::Key key : {Qt::Key_E, Qt::Key_P, Qt::Key_S, Qt::Key_Escape}) {
        QKeyEvent held(QEvent::KeyPress, key, Qt::NoModifier, QString(), true);
        QCoreApplication::sendEvent(&desk.task, &held);
        QCOMPARE(desk.task.stage(), stage);
        QVERIFY(desk.task.isRunning());
        QVERIFY(!desk.outerRing->isVisible());
        QCOMPARE(desk.mode(), QString());
    }
    QCOMPARE(logBytes(desk), log);
    QVERIFY(!sessionStore().escapeSeq);
}

void tst_Test4Keys::otherKeysDoNothing()
{
    MemoryDesk desk;
    desk.startTest();
    QVERIFY(desk.runTrial());
    const QByteArray log = logBytes(desk);
    for (int stage = 0; stage <= 4; ++stage) {
        QVERIFY(reachStage(desk, stage));
        for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter, Qt::Key_A,
                                  Qt::Key_Left, Qt::Key_Up, Qt::Key_F1, Qt::Key_Home, Qt::Key_1})
            desk.key(key);
        QCOMPARE(desk.task.stage(), stage);
        QVERIFY(desk.task.isRunning());
        QCOMPARE(desk.mode(), QString());
        QVERIFY(!desk.outerRing->isVisible());
        QCOMPARE(logBytes(desk), log);
    }
    QVERIFY(desk.shown("lbl_lastCross"));
}

void tst_Test4Keys::aLineEditOfThePanelSwallowsNoKey()
{
    MemoryDesk desk;
    desk.startTest({.parameters = true});
    auto *edit = desk.widget<QLineEdit>("le_timer04");
    const auto press = [edit](Qt::Key key) {
        edit->setFocus();
        QTest::keyClick(edit, key);
    };
    for (const int stage : {1, 2, 3, 4}) {
        QVERIFY(reachStage(desk, stage));
        press(Qt::Key_S);
        QVERIFY(desk.guidesAreShown());
        press(Qt::Key_S);
        QVERIFY(!desk.outerRing->isVisible());
        press(Qt::Key_P);
        verifyWaits(desk, QStringLiteral("PAUSE"));
        press(Qt::Key_C);
        QCOMPARE(desk.task.stage(), 1);
    }
    press(Qt::Key_E); // too early
    QCOMPARE(desk.task.stage(), 1);
    QVERIFY(desk.reach(4));
    press(Qt::Key_E);
    verifyWaits(desk, QStringLiteral("ERROR"));
    QCOMPARE(edit->text(), QStringLiteral("5000"));
    QCOMPARE(desk.rows().size(), 5); // four markers and the struck trial
    press(Qt::Key_Escape);
    QVERIFY(!desk.task.isRunning());
    QCOMPARE(lastRow(desk), marker("interrupted"));
}

void tst_Test4Keys::escapeEndsATestInEveryStage_data()
{
    addStages();
}

void tst_Test4Keys::escapeEndsATestInEveryStage()
{
    QFETCH(const int, stage);
    MemoryDesk desk;
    desk.startTest();
    QVERIFY(desk.runTrials(2));
    QVERIFY(reachStage(desk, stage));
    desk.key(Qt::Key_Escape);
    QCOMPARE(desk.rows().size(), 3); // what isn't over leaves no row
    QCOMPARE(lastRow(desk), marker("interrupted"));
    verifyIsLeft(desk);
}

void tst_Test4Keys::escapeWhileATrialIsHeldEndsTheTest_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("pause") << Qt::Key_P;
    QTest::newRow("strike") << Qt::Key_E;
}

void tst_Test4Keys::escapeWhileATrialIsHeldEndsTheTest()
{
    QFETCH(const Qt::Key, key);
    MemoryDesk desk;
    desk.startTest();
    const QList<QPoint> held = desk.runToQuestion();
    desk.clickAt(held.constLast());
    desk.key(key);
    desk.key(Qt::Key_Escape);
    QCOMPARE(desk.rows().size(), 2);
    QCOMPARE(lastRow(desk), marker("interrupted"));
    verifyIsLeft(desk);
    QVERIFY(!desk.shown("pb_continue"));

    desk.startTest(); // and nothing of the hold is left
    QCOMPARE(desk.mode(), QString());
    QVERIFY(!desk.shown("pb_continue") && !desk.shown("lbl_firstCross"));
    QCOMPARE(desk.text("le_no"), QStringLiteral("1"));
    desk.clickAt(held.constFirst()); // no answer is awaited
    QCOMPARE(desk.task.stage(), 1);
    QCOMPARE(desk.text("le_distFirst") + desk.text("le_distLast"), QString());
    QVERIFY(desk.runTrial(40));
    QCOMPARE(desk.rows().constLast()[RankTask], QStringLiteral("1"));
    QCOMPARE(desk.rows().constLast()[DistLast], QStringLiteral("   10.00"));
    QCOMPARE(desk.rows().constLast()[Error], QStringLiteral("0"));
}

void tst_Test4Keys::escapeBeforeTheFirstTrialLeavesAMarker()
{
    MemoryDesk desk;
    desk.go({});
    desk.key(Qt::Key_Escape);
    QCOMPARE(desk.rows().size(), 1);
    QCOMPARE(lastRow(desk), marker("interrupted"));
    verifyIsLeft(desk);
}

void tst_Test4Keys::escapeInTheScriptLeavesNothing_data()
{
    QTest::addColumn<bool>("training");
    QTest::addColumn<int>("steps"); // presses of "Next"
    for (int steps = 0; steps <= 6; ++steps) {
        QTest::addRow("instruction, %d steps", steps) << false << steps;
        QTest::addRow("with training, %d steps", steps) << true << steps;
    }
    QTest::newRow("with training, the whole script") << true << 7;
}

void tst_Test4Keys::escapeInTheScriptLeavesNothing()
{
    QFETCH(const bool, training);
    QFETCH(const int, steps);
    MemoryDesk desk;
    const QByteArray log = logBytes(desk);
    desk.go({.instruction = true, .training = training});
    for (int step = 0; step < steps; ++step)
        desk.click("pb_next");
    desk.key(Qt::Key_Escape);
    verifyIsLeft(desk);
    QCOMPARE(logBytes(desk), log);
}

void tst_Test4Keys::escapeInTheTrainingLeavesNothing_data()
{
    addStages();
}

void tst_Test4Keys::escapeInTheTrainingLeavesNothing()
{
    QFETCH(const int, stage);
    MemoryDesk desk;
    const QByteArray log = logBytes(desk);
    desk.startTest({.training = true});
    QVERIFY(desk.runTrial());
    QVERIFY(reachStage(desk, stage));
    desk.key(Qt::Key_Escape);
    verifyIsLeft(desk);
    QCOMPARE(logBytes(desk), log);
}

void tst_Test4Keys::closingByTheWindowManagerIsEscape()
{
    MemoryDesk desk;
    desk.startTest();
    QVERIFY(desk.runTrial());
    QVERIFY(desk.runToQuestion().size() >= 2);
    QWindow *frame = desk.task.windowHandle();
    QVERIFY(frame);
    QCloseEvent event;
    QCoreApplication::sendEvent(frame, &event); // as the platform sends it
    QCOMPARE(desk.rows().size(), 2);            // one marker
    QCOMPARE(lastRow(desk), marker("interrupted"));
    verifyIsLeft(desk);
}

QTEST_MAIN(tst_Test4Keys)
#include "tst_Test4Keys.moc"
