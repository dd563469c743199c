#include "MovementDesk.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QWindow>

using namespace column;

/// The keys: the patient's arrows, and the assessor's P, E and Escape.
class tst_Test3Keys : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aStruckTrialWaitsUnderTheWordOfTheInstruction();
    void aStruckTrialLeavesItsRowBehindContinue();
    void aStruckTrialAsksItsPatchAgain();
    void aStruckTrialIsInvalidWhateverWasSeen();
    void aPauseLeavesAMarkerAndWaits_data();
    void aPauseLeavesAMarkerAndWaits();
    void aPausedTrialBeginsAnewWithNewDirections_data();
    void aPausedTrialBeginsAnewWithNewDirections();
    void aPauseAtThePadLeavesNoSpaceAwaited();
    void aSpaceAfterAPauseIsCountedFromThePausedArrow();
    void theDriftThenBeginsBehindThePad();
    void withoutSuchASpaceTheNextArrowCounts();
    void theShortcutGoesOn_data();
    void theShortcutGoesOn();
    void thePointerIsHiddenAgainAfterAHold_data();
    void thePointerIsHiddenAgainAfterAHold();
    void theStrikeIsTakenAtThePadOnly_data();
    void theStrikeIsTakenAtThePadOnly();
    void thePauseIsTakenWhereAnAnswerIsAwaited_data();
    void thePauseIsTakenWhereAnAnswerIsAwaited();
    void theArrowKeysAnswerAtThePadOnly_data();
    void theArrowKeysAnswerAtThePadOnly();
    void nothingIsTakenWhileATrialIsHeld_data();
    void nothingIsTakenWhileATrialIsHeld();
    void theKeysDoNothingUnderFixedDuration();
    void theKeysHoldATrialOfTheTraining();
    void aHeldKeyDoesNothing_data();
    void aHeldKeyDoesNothing();
    void otherKeysDoNothing();
    void aLineEditOfThePanelSwallowsNoKey();
    void aLineEditOfThePanelSwallowsNoDirection_data();
    void aLineEditOfThePanelSwallowsNoDirection();
    void escapeEndsATestInEveryLink_data();
    void escapeEndsATestInEveryLink();
    void escapeBeforeTheFirstTrialLeavesAMarker();
    void escapeWhileATrialIsHeldEndsTheTest_data();
    void escapeWhileATrialIsHeldEndsTheTest();
    void escapeInTheScriptLeavesNothing_data();
    void escapeInTheScriptLeavesNothing();
    void escapeInTheTrainingLeavesNothing_data();
    void escapeInTheTrainingLeavesNothing();
    void closingByTheWindowManagerIsEscape();
};

namespace {

constexpr int tenMinutes = 600'000; // ms
constexpr std::array arrowKeys{Qt::Key_Right, Qt::Key_Down, Qt::Key_Left, Qt::Key_Up};

QByteArray logBytes(const MovementDesk &desk)
{
    return desk.root.bytes(QStringLiteral("Results/output.csv"));
}

QString marker(const char *word)
{
    return QStringLiteral(";Mrs.;Doe;Jane;01/02/1950;") + QLatin1String(word);
}

QString lastRow(MovementDesk &desk)
{
    return desk.rows().constLast().join(u';');
}

bool sameField(const PatchField &a, const PatchField &b)
{
    return a.ring == b.ring && a.dot == b.dot;
}

/// A trial up to one of its links, however the link is reached.
bool reachLink(MovementDesk &desk, int stage)
{
    if (stage >= 5) {
        if (!desk.pressSpace(700))
            return false;
        if (stage == 6)
            desk.answerRight();
    }
    return desk.reach(stage);
}

/// The rest of a right trial, from wherever it stands.
bool finishFrom(MovementDesk &desk, int stage)
{
    if (stage <= 2)
        return desk.runTrial(700);
    if (stage <= 4) {
        if (!desk.reach(4))
            return false;
        desk.key(Qt::Key_Space);
    }
    if (stage <= 5)
        desk.answerRight();
    return desk.finishTrial();
}

void addLinks()
{
    QTest::addColumn<int>("stage");
    for (int stage = 1; stage <= 6; ++stage)
        QTest::addRow("link %d", stage) << stage;
}

void addHolds()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<int>("stage");
    QTest::newRow("pause before the Space") << Qt::Key_P << 4;
    QTest::newRow("pause at the pad") << Qt::Key_P << 5;
    QTest::newRow("strike") << Qt::Key_E << 5;
}

/// A test with a drift before the arrow, so that a trial stands in each of its links for a time.
void startSlow(MovementDesk &desk, const MovementRun &run = {.parameters = true})
{
    desk.go(run);
    desk.type("le_timer02", QStringLiteral("300"));
    desk.click("pb_go");
}

void verifyIsHeld(MovementDesk &desk, const QString &mode)
{
    QCOMPARE(desk.mode(), mode);
    QVERIFY(desk.shown("pb_continue"));
    QVERIFY(desk.nothingIsShown());
    QCOMPARE(desk.task.cursor().shape(), Qt::ArrowCursor);
}

/// Nothing but the log tells of the run, and it doesn't go on.
void verifyIsLeft(MovementDesk &desk)
{
    QVERIFY(!desk.task.isRunning());
    QCOMPARE(desk.task.stage(), 0);
    QVERIFY(sessionStore().escapeSeq);
    QCOMPARE(desk.task.cursor().shape(), Qt::ArrowCursor);
    QVERIFY(desk.nothingIsShown());
    for (const char *path :
         {"Results/valid-output.csv", "Results/results_T3.csv", "Archives/Doe Jane 01.02.1950"})
        QVERIFY2(!desk.root.exists(QString::fromLatin1(path)), path);
    QVERIFY(desk.root.bytes(QString::fromLatin1(MovementDesk::patients))
                .startsWith("Mrs.;Doe;Jane;01.02.1950;1;2;3;4;"));
    const QByteArray log = logBytes(desk);
    desk.time.advance(tenMinutes);
    QCOMPARE(logBytes(desk), log);
    QVERIFY(!desk.task.isRunning());
    QVERIFY(desk.nothingIsShown());
}

} // namespace

void tst_Test3Keys::aStruckTrialWaitsUnderTheWordOfTheInstruction()
{
    MovementDesk desk;
    desk.startTest({.parameters = true});
    QVERIFY(desk.pressSpace(700));
    desk.time.advance(250);
    desk.key(Qt::Key_E);
    verifyIsHeld(desk, QStringLiteral("INSTRUCTIONS"));
    QVERIFY(desk.rows().isEmpty());
    desk.time.advance(tenMinutes);
    verifyIsHeld(desk, QStringLiteral("INSTRUCTIONS"));
    QVERIFY(desk.rows().isEmpty()); // the trial isn't over

    desk.click("pb_continue");
    QCOMPARE(desk.mode(), QString());
    QVERIFY(!desk.shown("pb_continue"));
    QCOMPARE(desk.task.stage(), 6);
    QVERIFY(desk.cross->isVisible() && desk.board->isVisible());
    QVERIFY(!desk.arrow->isVisible());
    QCOMPARE(desk.shownPad(), 0);
    QCOMPARE(desk.board->displacement(0), QPoint());
    QCOMPARE(desk.task.cursor().shape(), Qt::BlankCursor);
    desk.time.advance(599);
    QVERIFY(desk.rows().isEmpty());
    desk.time.advance(1);
    QCOMPARE(desk.rows().size(), 1);
    QCOMPARE(desk.task.stage(), 1);
}

void tst_Test3Keys::aStruckTrialLeavesItsRowBehindContinue()
{
    MovementDesk desk;
    desk.startTest();
    QVERIFY(desk.runTrial(600));
    QVERIFY(desk.reach(3));
    const QDateTime drift = desk.time.currentDateTime();
    QVERIFY(desk.pressSpace(700));
    const int place = desk.asked();
    const int direction = desk.askedDirection();
    desk.key(Qt::Key_E);
    desk.time.advance(5000);
    desk.click("pb_continue");
    desk.time.advance(600);
    constexpr std::array places{"E", "SE", "S", "SW", "W", "NW", "N", "NE"};
    constexpr std::array directions{"E", "S", "W", "N"};
    QCOMPARE(desk.rows().size(), 2);
    QCOMPARE(lastRow(desk),
             QStringLiteral(";Mrs.;Doe;Jane;01/02/1950;3;4;%1;1;2;;;;;;;;;;;;;%2;%3;;;;;1")
                 .arg(drift.toString(QStringLiteral("dd/MM/yyyy;hh:mm:ss.zzz")),
                      QLatin1String(places.at(std::size_t(place))),
                      QLatin1String(directions.at(std::size_t(direction)))));
}

void tst_Test3Keys::aStruckTrialAsksItsPatchAgain()
{
    MovementDesk desk;
    desk.startTest({.parameters = true});
    for (int trial = 0; trial < 9; ++trial) {
        QVERIFY(desk.pressSpace(600));
        const int asked = desk.asked();
        const PatchField field = desk.task.field();
        desk.key(Qt::Key_E);
        desk.click("pb_continue");
        desk.time.advance(600);
        QCOMPARE(desk.text("le_no"), QString::number(trial + 1));
        QVERIFY(desk.reach(3));
        QCOMPARE(desk.asked(), asked);
        QVERIFY(!sameField(desk.task.field(), field));
        QVERIFY(desk.runTrial(640));
        const QList<QStringList> rows = desk.rows();
        QCOMPARE(rows.size(), 2 * (trial + 1));
        QCOMPARE(rows.constLast()[RankTask], QString::number(trial + 1));
        QCOMPARE(rows.constLast()[MovementTime], QStringLiteral("640")); // the mark is gone
        QCOMPARE(rows.constLast()[Error], QStringLiteral("0"));
        QCOMPARE(rows.constLast()[MovementPlace], rows[2 * trial][MovementPlace]);
    }
}

void tst_Test3Keys::aStruckTrialIsInvalidWhateverWasSeen()
{
    MovementDesk desk;
    desk.startTest();
    for (const int reactionTime : {600, 5000, 9000}) {
        QVERIFY(desk.pressSpace(reactionTime));
        desk.key(Qt::Key_E);
        desk.click("pb_continue");
        desk.time.advance(600);
        QCOMPARE(desk.rows().constLast()[MovementTime], QString());
        QCOMPARE(desk.rows().constLast()[Error], QStringLiteral("1"));
        QCOMPARE(desk.rows().constLast()[RankTask], QStringLiteral("1"));
    }
}

void tst_Test3Keys::aPauseLeavesAMarkerAndWaits_data()
{
    QTest::addColumn<int>("stage");
    QTest::newRow("before the Space") << 4;
    QTest::newRow("at the pad") << 5;
}

void tst_Test3Keys::aPauseLeavesAMarkerAndWaits()
{
    QFETCH(const int, stage);
    MovementDesk desk;
    desk.startTest();
    QVERIFY(reachLink(desk, stage));
    desk.key(Qt::Key_P);
    QCOMPARE(desk.rows().size(), 1);
    QCOMPARE(lastRow(desk), marker("paused"));
    verifyIsHeld(desk, QStringLiteral("PAUSE"));
    QCOMPARE(desk.widget("pb_continue")->shortcut(), QKeySequence(Qt::Key_C));
    const QPoint stopped = desk.board->displacement(0);
    desk.time.advance(tenMinutes);
    verifyIsHeld(desk, QStringLiteral("PAUSE"));
    QCOMPARE(desk.board->displacement(0), stopped); // all seven timers have stopped
    QCOMPARE(desk.rows().size(), 1);

    desk.click("pb_continue");
    QCOMPARE(desk.mode(), QString());
    QVERIFY(!desk.shown("pb_continue"));
    QCOMPARE(desk.task.stage(), 1);
    QVERIFY(desk.cross->isVisible() && desk.board->isVisible());
    QVERIFY(!desk.arrow->isVisible());
    QCOMPARE(desk.board->displacement(0), QPoint());
    QCOMPARE(desk.rows().size(), 1);
}

void tst_Test3Keys::aPausedTrialBeginsAnewWithNewDirections_data()
{
    QTest::addColumn<int>("stage");
    QTest::addColumn<int>("subtask");
    for (const int stage : {4, 5}) {
        for (const int subtask : {0, 1, 3})
            QTest::addRow("link %d of subtask %d", stage, subtask) << stage << subtask;
    }
}

void tst_Test3Keys::aPausedTrialBeginsAnewWithNewDirections()
{
    QFETCH(const int, stage);
    QFETCH(const int, subtask);
    MovementDesk desk;
    desk.startTest({.subtask = subtask, .parameters = true});
    QVERIFY(desk.runTrial(600));
    QVERIFY(reachLink(desk, stage));
    const int asked = desk.asked();
    const PatchField field = desk.task.field();
    const QString condition = desk.text("le_subtask");
    desk.key(Qt::Key_P);
    desk.time.advance(2000);
    desk.click("pb_continue");
    QVERIFY(!sameField(desk.task.field(), field));
    QCOMPARE(desk.text("le_no"), QStringLiteral("2"));
    QCOMPARE(desk.text("le_subtask"), condition);
    const QDateTime start = desk.time.currentDateTime();
    QVERIFY(desk.reach(3)); // the whole chain
    const qint64 wait = start.msecsTo(desk.time.currentDateTime());
    QVERIFY(wait >= 400 && wait <= 1399);
    QCOMPARE(desk.asked(), asked);
    QVERIFY(desk.runTrial(620));

    const QList<QStringList> rows = desk.rows();
    QCOMPARE(rows.size(), 3);
    QCOMPARE(rows[2][RankTask], QStringLiteral("2"));
    QCOMPARE(rows[2][Subtask], condition);
    QCOMPARE(rows[2][MovementTime], QStringLiteral("620")); // from the new arrow
    QCOMPARE(rows[2][Error], QStringLiteral("0"));
}

void tst_Test3Keys::aPauseAtThePadLeavesNoSpaceAwaited()
{
    MovementDesk desk;
    desk.startTest({.parameters = true});
    QVERIFY(desk.pressSpace(700));
    desk.key(Qt::Key_P);
    desk.key(Qt::Key_Space);
    desk.click("pb_continue");
    desk.time.advance(50);
    desk.key(Qt::Key_Space);
    QCOMPARE(desk.task.stage(), 1);
    QCOMPARE(desk.shownPad(), 0);
    QVERIFY(desk.runTrial(630));
    QCOMPARE(desk.rows().constLast()[MovementTime], QStringLiteral("630"));
}

void tst_Test3Keys::aSpaceAfterAPauseIsCountedFromThePausedArrow()
{
    MovementDesk desk;
    desk.go({.parameters = true});
    desk.type("le_timer01", QStringLiteral("5000")); // longer than the closing wait
    desk.click("pb_go");
    QVERIFY(desk.reach(3));
    const QDateTime arrow = desk.time.currentDateTime();
    QVERIFY(desk.reach(4));
    desk.time.advance(300);
    desk.key(Qt::Key_P);
    desk.time.advance(1200);
    desk.key(Qt::Key_Space); // not while it is paused
    QCOMPARE(desk.mode(), QStringLiteral("PAUSE"));
    QVERIFY(desk.nothingIsShown());
    desk.click("pb_continue");
    desk.time.advance(150);
    QCOMPARE(desk.task.stage(), 1);
    desk.key(Qt::Key_Space);
    QCOMPARE(desk.text("le_elapsed"), QStringLiteral("2150"));
    QCOMPARE(desk.task.stage(), 5);
    QCOMPARE(desk.shownPad(), 5);
    QVERIFY(!desk.board->isVisible() && !desk.cross->isVisible() && !desk.arrow->isVisible());

    // The direction is that of the trial that has just begun.
    desk.answerRight();
    QCOMPARE(desk.text("le_result"), QStringLiteral("1"));
    desk.time.advance(600);
    QCOMPARE(desk.rows().size(), 2);
    const QStringList row = desk.rows().constLast();
    QCOMPARE(row[MovementTime], QStringLiteral("2150"));
    QCOMPARE(row[Error], QStringLiteral("0"));
    QCOMPARE(row[Time], arrow.toString(QStringLiteral("hh:mm:ss.zzz"))); // no later drift
    QCOMPARE(desk.task.stage(), 1);
    QCOMPARE(desk.text("le_no"), QStringLiteral("2"));
    QVERIFY(desk.runTrial(650)); // and the task goes on as ever
    QCOMPARE(desk.rows().constLast()[MovementTime], QStringLiteral("650"));
}

void tst_Test3Keys::theDriftThenBeginsBehindThePad()
{
    MovementDesk desk;
    desk.startTest({.parameters = true});
    QVERIFY(desk.reach(4));
    desk.key(Qt::Key_P);
    desk.click("pb_continue");
    const QDateTime start = desk.time.currentDateTime();
    desk.time.advance(100);
    desk.key(Qt::Key_Space);
    QCOMPARE(desk.text("le_elapsed"), QStringLiteral("600"));
    QCOMPARE(desk.shownPad(), 5);
    QVERIFY(desk.reach(3)); // the first timer goes on
    const qint64 wait = start.msecsTo(desk.time.currentDateTime());
    QVERIFY(wait >= 400 && wait <= 1399);
    const QDateTime drift = desk.time.currentDateTime();
    desk.time.advance(60);
    QCOMPARE(desk.board->displacement(0).manhattanLength(), 3);
    QVERIFY(!desk.board->isVisible());
    QCOMPARE(desk.shownPad(), 5);

    desk.key(Qt::Key_Space); // the new arrow has set the flag anew
    QCOMPARE(desk.text("le_elapsed"), QStringLiteral("60"));
    QCOMPARE(desk.task.stage(), 5);
    desk.answerRight(MovementDesk::ByClick);
    desk.time.advance(600);
    QCOMPARE(desk.rows().size(), 2);
    QCOMPARE(desk.rows().constLast()[MovementTime], QStringLiteral("60"));
    QCOMPARE(desk.rows().constLast()[Time], drift.toString(QStringLiteral("hh:mm:ss.zzz")));
}

void tst_Test3Keys::withoutSuchASpaceTheNextArrowCounts()
{
    MovementDesk desk;
    desk.startTest({.parameters = true});
    for (int trial = 0; trial < 3; ++trial) {
        QVERIFY(desk.reach(4));
        desk.key(Qt::Key_P);
        desk.click("pb_continue");
        QVERIFY(desk.runTrial(640 + trial));
        QCOMPARE(desk.rows().constLast()[MovementTime], QString::number(640 + trial));
        QCOMPARE(desk.rows().constLast()[RankTask], QString::number(trial + 1));
    }
}

void tst_Test3Keys::theShortcutGoesOn_data()
{
    addHolds();
}

void tst_Test3Keys::theShortcutGoesOn()
{
    QFETCH(const Qt::Key, key);
    QFETCH(const int, stage);
    MovementDesk desk;
    desk.startTest({.parameters = true});
    QVERIFY(reachLink(desk, stage));
    desk.key(key);
    auto *edit = desk.widget<QLineEdit>("le_timer05");
    edit->setFocus();
    QTest::keyClick(edit, Qt::Key_C, Qt::ControlModifier); // copies
    QVERIFY(desk.shown("pb_continue"));
    QTest::keyClick(edit, Qt::Key_C);
    QVERIFY(!desk.shown("pb_continue"));
    QCOMPARE(edit->text(), QStringLiteral("2500"));
    QCOMPARE(desk.task.stage(), key == Qt::Key_E ? 6 : 1);
}

void tst_Test3Keys::thePointerIsHiddenAgainAfterAHold_data()
{
    addHolds();
}

void tst_Test3Keys::thePointerIsHiddenAgainAfterAHold()
{
    QFETCH(const Qt::Key, key);
    QFETCH(const int, stage);
    MovementDesk desk;
    desk.startTest();
    QVERIFY(reachLink(desk, stage));
    QCursor::setPos(desk.task.mapToGlobal(QPoint(3, 4)));
    desk.key(key);
    QCOMPARE(QCursor::pos(), desk.task.mapToGlobal(desk.centre()));
    desk.click("pb_continue");
    QCOMPARE(desk.task.cursor().shape(), Qt::BlankCursor);
    QVERIFY(desk.reach(1));
    QCOMPARE(desk.task.cursor().shape(), Qt::BlankCursor);
    QCOMPARE(QCursor::pos(), desk.task.mapToGlobal(QPoint(10, 700)));
}

void tst_Test3Keys::theStrikeIsTakenAtThePadOnly_data()
{
    addLinks();
}

void tst_Test3Keys::theStrikeIsTakenAtThePadOnly()
{
    QFETCH(const int, stage);
    MovementDesk desk;
    desk.go({.parameters = true});
    desk.key(Qt::Key_E); // before the first trial
    QVERIFY(desk.shown("pb_go"));
    desk.type("le_timer02", QStringLiteral("300"));
    desk.click("pb_go");
    QVERIFY(reachLink(desk, stage));
    desk.time.advance(50);
    desk.key(Qt::Key_E);
    QCOMPARE(desk.task.stage(), stage);
    QCOMPARE(desk.shown("pb_continue"), stage == 5);
    QVERIFY(desk.rows().isEmpty());
    if (stage == 5)
        return;
    QCOMPARE(desk.mode(), QString());
    QVERIFY(finishFrom(desk, stage));
    QCOMPARE(desk.rows().size(), 1);
    const QString time = QString::number(stage == 3 ? 500 : stage == 4 ? 550 : 700);
    QCOMPARE(desk.rows().constFirst()[MovementTime], time);
    QCOMPARE(desk.rows().constFirst()[Error], QStringLiteral("0"));
}

void tst_Test3Keys::thePauseIsTakenWhereAnAnswerIsAwaited_data()
{
    addLinks();
}

void tst_Test3Keys::thePauseIsTakenWhereAnAnswerIsAwaited()
{
    QFETCH(const int, stage);
    const bool taken = stage == 4 || stage == 5;
    MovementDesk desk;
    desk.go({.parameters = true});
    desk.key(Qt::Key_P); // before the first trial
    QVERIFY(desk.rows().isEmpty());
    QVERIFY(desk.shown("pb_go"));
    desk.type("le_timer02", QStringLiteral("300"));
    desk.click("pb_go");
    QVERIFY(reachLink(desk, stage));
    desk.time.advance(50);
    desk.key(Qt::Key_P);
    QCOMPARE(desk.shown("pb_continue"), taken);
    QCOMPARE(desk.rows().size(), taken ? 1 : 0);
    if (taken)
        return;
    QCOMPARE(desk.task.stage(), stage);
    QCOMPARE(desk.mode(), QString());
    QVERIFY(finishFrom(desk, stage));
    QCOMPARE(desk.rows().size(), 1);
    QCOMPARE(desk.rows().constFirst()[MovementTime], QString::number(stage == 3 ? 500 : 700));
    QCOMPARE(desk.rows().constFirst()[Error], QStringLiteral("0"));
}

void tst_Test3Keys::theArrowKeysAnswerAtThePadOnly_data()
{
    addLinks();
}

void tst_Test3Keys::theArrowKeysAnswerAtThePadOnly()
{
    QFETCH(const int, stage);
    for (const Qt::Key key : arrowKeys) {
        MovementDesk desk;
        startSlow(desk);
        QVERIFY(reachLink(desk, stage));
        const QString result = desk.text("le_result");
        desk.key(key);
        if (stage == 5) {
            QCOMPARE(desk.task.stage(), 6);
            QVERIFY(!desk.text("le_result").isEmpty());
            continue;
        }
        QCOMPARE(desk.task.stage(), stage);
        QCOMPARE(desk.text("le_result"), result);
        QVERIFY(finishFrom(desk, stage));
        QCOMPARE(desk.rows().constFirst()[Error], QStringLiteral("0"));
    }
}

void tst_Test3Keys::nothingIsTakenWhileATrialIsHeld_data()
{
    addHolds();
}

void tst_Test3Keys::nothingIsTakenWhileATrialIsHeld()
{
    QFETCH(const Qt::Key, key);
    QFETCH(const int, stage);
    MovementDesk desk;
    desk.startTest({.parameters = true});
    QVERIFY(reachLink(desk, stage));
    desk.key(key);
    const QByteArray log = logBytes(desk);
    const QString mode = desk.mode();
    for (const Qt::Key again : {Qt::Key_Space, Qt::Key_P, Qt::Key_E, Qt::Key_Left, Qt::Key_Right,
                                Qt::Key_Up, Qt::Key_Down, Qt::Key_E, Qt::Key_P, Qt::Key_Space}) {
        desk.key(again);
        desk.time.advance(5000);
        QCOMPARE(logBytes(desk), log);
        QCOMPARE(desk.text("le_result"), QString());
        verifyIsHeld(desk, mode);
    }
    desk.click("pb_continue");
    if (key == Qt::Key_E)
        QVERIFY(desk.finishTrial());
    QVERIFY(desk.runTrial(700));
    const QList<QStringList> rows = desk.rows();
    QCOMPARE(rows.size(), 2); // the marker or the struck one, and the trial
    QCOMPARE(rows[1][MovementTime], QStringLiteral("700"));
    QCOMPARE(rows[1][RankTask], QStringLiteral("1"));
}

void tst_Test3Keys::theKeysDoNothingUnderFixedDuration()
{
    MovementDesk desk;
    startSlow(desk, {.parameters = true, .fixedDuration = true});
    for (int stage = 1; stage <= 6; ++stage) {
        if (stage == 5)
            desk.key(Qt::Key_Space);
        if (stage == 6)
            desk.answerRight();
        QVERIFY(desk.reach(stage));
        desk.key(Qt::Key_P);
        desk.key(Qt::Key_E);
        QCOMPARE(desk.task.stage(), stage);
        QVERIFY(!desk.shown("pb_continue"));
        QCOMPARE(desk.mode(), QString());
        QVERIFY(desk.rows().isEmpty());
        QCOMPARE(desk.shownPad(), stage == 5 ? 5 : 0);
    }
    QVERIFY(desk.finishTrial());
    QCOMPARE(desk.rows().size(), 1);
    QCOMPARE(desk.rows().constFirst()[MovementTime], QStringLiteral("500"));
    QCOMPARE(desk.rows().constFirst()[Error], QStringLiteral("0"));
}

void tst_Test3Keys::theKeysHoldATrialOfTheTraining()
{
    MovementDesk desk;
    const QByteArray log = logBytes(desk);
    desk.startTest({.training = true, .parameters = true});
    QVERIFY(desk.runTrial(600));
    QVERIFY(desk.reach(4));
    desk.key(Qt::Key_P);
    verifyIsHeld(desk, QStringLiteral("PAUSE"));
    desk.click("pb_continue");
    QCOMPARE(desk.task.stage(), 1);
    QVERIFY(desk.pressSpace(600));
    desk.key(Qt::Key_E);
    verifyIsHeld(desk, QStringLiteral("INSTRUCTIONS"));
    desk.click("pb_continue");
    QVERIFY(desk.finishTrial());
    QCOMPARE(desk.mode(), QString());
    for (int trial = 1; trial < 5; ++trial) { // five that count
        QCOMPARE(desk.text("le_no"), QString::number(trial + 1));
        QVERIFY(desk.runTrial(600));
    }
    QCOMPARE(desk.task.stage(), 0);
    QVERIFY(desk.shown("pb_go")); // of the test
    QCOMPARE(logBytes(desk), log);
}

void tst_Test3Keys::aHeldKeyDoesNothing_data()
{
    QTest::addColumn<int>("stage");
    QTest::newRow("before the Space") << 4;
    QTest::newRow("at the pad") << 5;
}

void tst_Test3Keys::aHeldKeyDoesNothing()
{
    QFETCH(const int, stage);
    MovementDesk desk;
    desk.startTest({.parameters = true});
    QVERIFY(reachLink(desk, stage));
    const QString elapsed = desk.text("le_elapsed");
    for (const Qt::Key key : {Qt::Key_Space, Qt::Key_E, Qt::Key_P, Qt::Key_Escape, Qt::Key_Right,
                              Qt::Key_Down, Qt::Key_Left, Qt::Key_Up}) {
        QKeyEvent held(QEvent::KeyPress, key, Qt::NoModifier, QString(), true);
        QCoreApplication::sendEvent(&desk.task, &held);
        QCOMPARE(desk.task.stage(), stage);
        QVERIFY(desk.task.isRunning());
        QVERIFY(!desk.shown("pb_continue"));
        QCOMPARE(desk.text("le_result"), QString());
        QCOMPARE(desk.text("le_elapsed"), elapsed);
    }
    QVERIFY(desk.rows().isEmpty());
    QVERIFY(!sessionStore().escapeSeq);
}

void tst_Test3Keys::otherKeysDoNothing()
{
    MovementDesk desk;
    desk.startTest({.parameters = true});
    QVERIFY(desk.pressSpace(700));
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_A, Qt::Key_C, Qt::Key_S,
                              Qt::Key_F1, Qt::Key_Tab, Qt::Key_Question, Qt::Key_Home})
        desk.key(key);
    QCOMPARE(desk.task.stage(), 5);
    QVERIFY(desk.task.isRunning());
    QCOMPARE(desk.shownPad(), 5);
    QCOMPARE(desk.text("le_result"), QString());
    QVERIFY(desk.rows().isEmpty());
}

void tst_Test3Keys::aLineEditOfThePanelSwallowsNoKey()
{
    MovementDesk desk;
    desk.startTest({.parameters = true});
    auto *edit = desk.widget<QLineEdit>("le_timer04");
    edit->setFocus();
    QTest::keyClick(edit, Qt::Key_Space); // too early here as well
    QCOMPARE(desk.task.stage(), 1);
    QVERIFY(desk.reach(4));
    desk.time.advance(200);
    edit->setFocus();
    QTest::keyClick(edit, Qt::Key_Space);
    QCOMPARE(desk.task.stage(), 5);
    QCOMPARE(desk.text("le_elapsed"), QStringLiteral("700"));
    QTest::keyClick(edit, Qt::Key_E);
    verifyIsHeld(desk, QStringLiteral("INSTRUCTIONS"));
    QTest::keyClick(edit, Qt::Key_C);
    QVERIFY(desk.finishTrial());
    QVERIFY(desk.reach(4));
    edit->setFocus();
    QTest::keyClick(edit, Qt::Key_P);
    verifyIsHeld(desk, QStringLiteral("PAUSE"));
    QTest::keyClick(edit, Qt::Key_C);
    QCOMPARE(desk.task.stage(), 1);
    QCOMPARE(edit->text(), QStringLiteral("2500"));
    QCOMPARE(desk.rows().size(), 2);
    edit->setFocus();
    QTest::keyClick(edit, Qt::Key_Escape);
    QVERIFY(!desk.task.isRunning());
    QCOMPARE(lastRow(desk), marker("interrupted"));
}

void tst_Test3Keys::aLineEditOfThePanelSwallowsNoDirection_data()
{
    QTest::addColumn<int>("direction");
    QTest::newRow("right") << 0;
    QTest::newRow("down") << 1;
    QTest::newRow("left") << 2;
    QTest::newRow("up") << 3;
}

void tst_Test3Keys::aLineEditOfThePanelSwallowsNoDirection()
{
    QFETCH(const int, direction);
    MovementDesk desk;
    desk.startTest({.parameters = true});
    QVERIFY(desk.reach(4));
    auto *edit = desk.widget<QLineEdit>("le_timer04");
    edit->setFocus();
    QTest::keyClick(edit, Qt::Key_Space);
    QCOMPARE(desk.task.stage(), 5);
    const bool right = desk.askedDirection() == direction;
    QTest::keyClick(edit, arrowKeys.at(std::size_t(direction)));
    QCOMPARE(desk.task.stage(), 6);
    QCOMPARE(desk.text("le_result"), QString::number(right ? 1 : 0));
}

void tst_Test3Keys::escapeEndsATestInEveryLink_data()
{
    addLinks();
}

void tst_Test3Keys::escapeEndsATestInEveryLink()
{
    QFETCH(const int, stage);
    MovementDesk desk;
    startSlow(desk);
    QVERIFY(desk.runTrial(600));
    QVERIFY(desk.runTrial(600, false));
    QVERIFY(reachLink(desk, stage));
    desk.key(Qt::Key_Escape);
    QCOMPARE(desk.rows().size(), 3); // what isn't over leaves no row
    QCOMPARE(lastRow(desk), marker("interrupted"));
    verifyIsLeft(desk);
}

void tst_Test3Keys::escapeBeforeTheFirstTrialLeavesAMarker()
{
    MovementDesk desk;
    desk.go({});
    desk.key(Qt::Key_Escape);
    QCOMPARE(desk.rows().size(), 1);
    QCOMPARE(lastRow(desk), marker("interrupted"));
    verifyIsLeft(desk);
}

void tst_Test3Keys::escapeWhileATrialIsHeldEndsTheTest_data()
{
    addHolds();
}

void tst_Test3Keys::escapeWhileATrialIsHeldEndsTheTest()
{
    QFETCH(const Qt::Key, key);
    QFETCH(const int, stage);
    MovementDesk desk;
    desk.startTest();
    QVERIFY(reachLink(desk, stage));
    desk.key(key);
    desk.key(Qt::Key_Escape);
    QCOMPARE(desk.rows().size(), key == Qt::Key_P ? 2 : 1); // a struck one isn't over
    QCOMPARE(lastRow(desk), marker("interrupted"));
    verifyIsLeft(desk);
    QVERIFY(!desk.shown("pb_continue"));

    desk.startTest(); // and nothing of the hold is left
    QCOMPARE(desk.mode(), QString());
    QVERIFY(!desk.shown("pb_continue"));
    desk.key(Qt::Key_Space);
    QCOMPARE(desk.task.stage(), 1);
    QVERIFY(desk.runTrial(610));
    QCOMPARE(desk.rows().constLast()[RankTask], QStringLiteral("1"));
    QCOMPARE(desk.rows().constLast()[MovementTime], QStringLiteral("610"));
    QCOMPARE(desk.rows().constLast()[Error], QStringLiteral("0"));
}

void tst_Test3Keys::escapeInTheScriptLeavesNothing_data()
{
    QTest::addColumn<bool>("training");
    QTest::addColumn<int>("steps"); // presses of "Next"
    for (int steps = 0; steps <= 8; ++steps) {
        QTest::addRow("instruction, %d steps", steps) << false << steps;
        QTest::addRow("with training, %d steps", steps) << true << steps;
    }
    QTest::newRow("with training, the whole script") << true << 9;
}

void tst_Test3Keys::escapeInTheScriptLeavesNothing()
{
    QFETCH(const bool, training);
    QFETCH(const int, steps);
    MovementDesk desk;
    const QByteArray log = logBytes(desk);
    desk.go({.instruction = true, .training = training});
    for (int step = 0; step < steps; ++step)
        desk.click("pb_next");
    desk.time.advance(100);
    for (const Qt::Key key : {Qt::Key_P, Qt::Key_E, Qt::Key_Space, Qt::Key_Right, Qt::Key_Up}) {
        desk.key(key); // these have no meaning here
        QCOMPARE(desk.task.stage(), 0);
        QVERIFY(!desk.shown("pb_continue"));
    }
    QCOMPARE(desk.text("le_result"), QString());
    desk.key(Qt::Key_Escape);
    verifyIsLeft(desk);
    QCOMPARE(logBytes(desk), log);
}

void tst_Test3Keys::escapeInTheTrainingLeavesNothing_data()
{
    addLinks();
}

void tst_Test3Keys::escapeInTheTrainingLeavesNothing()
{
    QFETCH(const int, stage);
    MovementDesk desk;
    const QByteArray log = logBytes(desk);
    startSlow(desk, {.training = true, .parameters = true});
    QVERIFY(desk.runTrial(600));
    QVERIFY(reachLink(desk, stage));
    desk.key(Qt::Key_Escape);
    verifyIsLeft(desk);
    QCOMPARE(logBytes(desk), log);
}

void tst_Test3Keys::closingByTheWindowManagerIsEscape()
{
    MovementDesk desk;
    desk.startTest();
    QVERIFY(desk.runTrial(600));
    QVERIFY(desk.pressSpace(600));
    QWindow *frame = desk.task.windowHandle();
    QVERIFY(frame);
    QCloseEvent event;
    QCoreApplication::sendEvent(frame, &event); // as the platform sends it
    QCOMPARE(desk.rows().size(), 2);            // one marker
    QCOMPARE(lastRow(desk), marker("interrupted"));
    verifyIsLeft(desk);
}

QTEST_MAIN(tst_Test3Keys)
#include "tst_Test3Keys.moc"
