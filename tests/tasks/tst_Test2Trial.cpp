#include "AttentionDesk.h"

#include "attentionLayout.h"
#include "compass.h"
#include "tables.h"

#include <QScreen>
#include <QSet>
#include <QSignalSpy>

using namespace column;

/// One trial: what is seen, what is timed, what counts.
class tst_Test2Trial : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aRunTakesTheWholeScreen();
    void theStimuliStandInTheMiddleAtTheirSizes();
    void theParametersAreResetOnEveryRun();
    void thePanelIsShownOnRequest();
    void aTextThatIsNoNumberIsZero();
    void aCycleFollowsItsParametersUnderFixedDuration();
    void aNeutralTrialShowsTheCrossThroughout();
    void anAlertedTrialShowsTheAsteriskForItsTime();
    void anOrientedTrialPointsAtTheComingTarget();
    void theForeperiodIsDrawnWithinItsSpan();
    void theTargetStaysUntilTheAnswer();
    void anAnswerLeavesItsRow();
    void aClickAnswersToo();
    void otherButtonsAndKeysDoNothing();
    void aHeldKeyIsNoAnswer();
    void anAnswerOutsideItsTimeIsIgnored_data();
    void anAnswerOutsideItsTimeIsIgnored();
    void aSecondAnswerIsIgnored();
    void anAnticipationKeepsItsDirection();
    void anAnticipationInTheFirstTrialBearsTheTimeOfTheStart();
    void aVeryLateAnswerIsInvalidAndUsesUpItsDirection();
    void aLateAnswerOfExactlyTwoSecondsCounts();
    void aBlockOfThreeHoldsEveryConditionOnce();
    void aConditionGoesThroughAllDirectionsBeforeItRepeatsOne();
    void anInvalidTrialIsRepeatedInItsCondition();
    void underFixedDurationATrialEndsByItself();
    void underFixedDurationACycleLastsItsTime();
    void underFixedDurationTheAssessorsKeysDoNothing();
    void aNegativeClosingWaitIsNone();
    void aStruckTrialHasNoReactionTimeAndWaits();
    void aStruckTrialReplacesItsAnswer();
    void goingOnDuringTheClosingWaitStartsTwoChains();
    void aPauseLeavesAMarkerAndSkipsARank();
    void anAnswerAfterAPauseIsTakenForThePausedTarget();
    void theKeysDoNothingAfterAnAnticipation();
    void theAssessorsKeysReachTheTaskFromThePanel();
    void returnInThePanelGivesTheKeysBack();
    void theShortcutWorksFromThePanel();
    void aNumberBelowTheTrialsDoneLetsTheBlockRunOn();
    void theRowsOfATestAreOnTheDiskAtOnce();
};

void tst_Test2Trial::aRunTakesTheWholeScreen()
{
    AttentionDesk desk;
    desk.goTest();
    QVERIFY(desk.task.isFullScreen());
    QVERIFY(desk.task.isRunning());
    QCOMPARE(desk.task.geometry(), QGuiApplication::primaryScreen()->geometry());
    QCOMPARE(desk.task.styleSheet(), QStringLiteral("background-color:rgb(0, 0, 0)"));
    QVERIFY(desk.shown("pb_go"));
    QCOMPARE(desk.widget("pb_go")->geometry().center(), desk.task.rect().center());
    for (const char *name :
         {"pb_next", "pb_continue", "pb_results", "pb_mainMenu", "lbl_mode", "lbl_instruction"})
        QVERIFY2(!desk.shown(name), name);
    QCOMPARE(desk.task.focusPolicy(), Qt::StrongFocus);
}

void tst_Test2Trial::theStimuliStandInTheMiddleAtTheirSizes()
{
    AttentionDesk desk;
    desk.goTest();
    const QPoint middle(desk.task.width() / 2, desk.task.height() / 2);
    const auto centred = [&](const QWidget *widget, int half) {
        return widget->geometry() == QRect(middle - QPoint(half, half), QSize(2 * half, 2 * half));
    };
    QVERIFY(centred(desk.cross, 20));
    QVERIFY(centred(desk.arrow, 50));
    QVERIFY(centred(desk.target, 10));
    QVERIFY(centred(desk.asterisk, 25));
    const auto markers = desk.task.findChildren<DrawGrayRectangle *>();
    QCOMPARE(markers.size(), 7);
    for (const DrawGrayRectangle *marker : markers) {
        QVERIFY(centred(marker, 10));
        QCOMPARE(marker->gray, 100);
        QVERIFY(!marker->isVisible());
    }
}

void tst_Test2Trial::theParametersAreResetOnEveryRun()
{
    AttentionDesk desk;
    for (int run = 0; run < 2; ++run) {
        desk.goTest(true);
        QCOMPARE(desk.text("le_timer01"), QStringLiteral("400"));
        QCOMPARE(desk.text("le_timer02"), QStringLiteral("100"));
        QCOMPARE(desk.text("le_timer03"), QStringLiteral("400"));
        QCOMPARE(desk.text("le_timer04"), QStringLiteral("5000"));
        QCOMPARE(desk.text("le_timer05"), QStringLiteral("600"));
        QCOMPARE(desk.text("le_number"), QStringLiteral("96"));
        QCOMPARE(desk.text("le_task"), QStringLiteral("2"));
        QCOMPARE(desk.text("le_subtask"), QStringLiteral("0"));
        QCOMPARE(desk.text("le_pitch"), QStringLiteral("   0.000"));
        QCOMPARE(desk.text("le_result"), QString());
        QCOMPARE(desk.text("le_rt_delta"), QString());
        desk.type("le_timer01", QStringLiteral("7"));
        desk.type("le_number", QStringLiteral("3"));
        desk.key(Qt::Key_Escape);
        QVERIFY(!desk.task.isRunning());
        sessionStore().horzPixel = 0;
    }
    sessionStore().horzPixel = 270;
    desk.goTest(true);
    QCOMPARE(desk.text("le_pitch"), QStringLiteral("   0.270"));
}

void tst_Test2Trial::thePanelIsShownOnRequest()
{
    AttentionDesk desk;
    for (const bool parameters : {true, false}) {
        desk.goTest(parameters);
        for (const char *name :
             {"timer01", "timer02", "timer03", "timer04", "timer05", "number", "pitch", "task",
              "subtask", "no", "result", "timeTc", "rt_delta"}) {
            QCOMPARE(desk.shown(qPrintable(QStringLiteral("le_%1").arg(QLatin1String(name)))),
                     parameters);
            QCOMPARE(desk.shown(qPrintable(QStringLiteral("lbl_%1").arg(QLatin1String(name)))),
                     parameters);
        }
        desk.key(Qt::Key_Escape);
    }
}

void tst_Test2Trial::aTextThatIsNoNumberIsZero()
{
    AttentionDesk desk;
    desk.goTest(true, false, 1);
    for (const char *edit : {"le_timer01", "le_timer02", "le_timer03"})
        desk.type(edit, QStringLiteral("abc"));
    desk.click("pb_go");
    // Only the drawn span is left of the time to the target.
    QVERIFY(desk.reach(1));
    const QDateTime start = desk.time.currentDateTime();
    QVERIFY(desk.reach(4));
    QVERIFY(start.msecsTo(desk.time.currentDateTime()) < 1200);
}

void tst_Test2Trial::aCycleFollowsItsParametersUnderFixedDuration()
{
    AttentionDesk desk;
    desk.goTest(true, false);
    QCOMPARE(desk.text("le_timeTc"), desk.widget<QLineEdit>("le_timeTc")->text());
    desk.type("le_timer01", QStringLiteral("500"));
    QVERIFY(desk.text("le_timeTc") != QStringLiteral("7800"));
    desk.key(Qt::Key_Escape);

    desk.goTest(true, true);
    QCOMPARE(desk.text("le_timeTc"), QStringLiteral("7700"));
    desk.type("le_timer01", QStringLiteral("500"));
    QCOMPARE(desk.text("le_timeTc"), QStringLiteral("7800"));
    desk.type("le_timer04", QStringLiteral("x"));
    QCOMPARE(desk.text("le_timeTc"), QStringLiteral("2800"));
    desk.type("le_number", QStringLiteral("5"));
    QCOMPARE(desk.text("le_timeTc"), QStringLiteral("2800"));
}

void tst_Test2Trial::aNeutralTrialShowsTheCrossThroughout()
{
    AttentionDesk desk;
    desk.goTest(false, false, 1);
    desk.click("pb_go");
    for (int stage = 1; stage <= 4; ++stage) {
        QVERIFY(desk.reach(stage));
        QVERIFY(desk.cross->isVisible());
        QVERIFY(!desk.arrow->isVisible());
        QVERIFY(!desk.asterisk->isVisible());
        QCOMPARE(desk.target->isVisible(), stage == 4);
    }
    QCOMPARE(desk.task.cursor().shape(), Qt::BlankCursor);
}

void tst_Test2Trial::anAlertedTrialShowsTheAsteriskForItsTime()
{
    AttentionDesk desk;
    desk.goTest(false, false, 2);
    desk.click("pb_go");
    for (int stage = 1; stage <= 4; ++stage) {
        QVERIFY(desk.reach(stage));
        QCOMPARE(desk.asterisk->isVisible(), stage == 2);
        QCOMPARE(desk.cross->isVisible(), stage != 2);
        QVERIFY(!desk.arrow->isVisible());
    }
    QVERIFY(desk.nextTrial() == false || desk.task.stage() == 1);
    desk.key(Qt::Key_Space);
    QVERIFY(desk.reach(2));
    desk.time.advance(99);
    QVERIFY(desk.asterisk->isVisible());
    desk.time.advance(1);
    QVERIFY(!desk.asterisk->isVisible());
    QCOMPARE(desk.task.stage(), 3);
    desk.time.advance(399);
    QVERIFY(!desk.target->isVisible());
    desk.time.advance(1);
    QVERIFY(desk.target->isVisible());
}

void tst_Test2Trial::anOrientedTrialPointsAtTheComingTarget()
{
    AttentionDesk desk;
    desk.goTest(false, false, 3);
    desk.click("pb_go");
    const QPoint middle(desk.task.width() / 2, desk.task.height() / 2);
    for (int trial = 0; trial < 8; ++trial) {
        double pointed = 0.0;
        for (int stage = 1; stage <= 4; ++stage) {
            QVERIFY(desk.reach(stage));
            QVERIFY(desk.arrow->isVisible());
            QVERIFY(!desk.cross->isVisible());
            if (stage == 1)
                pointed = desk.arrow->rotation;
        }
        const auto direction =
            std::find(compass::_tabRot.begin(), compass::_tabRot.end(), int(pointed)) -
            compass::_tabRot.begin();
        QCOMPARE(desk.target->pos(), attentionLayout::targetPlace(int(direction), middle));
        desk.key(Qt::Key_Space);
        QVERIFY(desk.cross->isVisible());
        QVERIFY(!desk.arrow->isVisible());
        desk.time.advance(600);
    }
}

void tst_Test2Trial::theForeperiodIsDrawnWithinItsSpan()
{
    AttentionDesk desk;
    desk.goTest();
    desk.click("pb_go");
    QSet<qint64> drawn;
    for (int trial = 0; trial < 40; ++trial) {
        const QDateTime start = desk.time.currentDateTime();
        QVERIFY(desk.reach(2));
        const qint64 wait = start.msecsTo(desk.time.currentDateTime());
        QVERIFY(wait >= 400 && wait <= 1599);
        drawn.insert(wait);
        QVERIFY(desk.answer(250));
    }
    QVERIFY(drawn.size() > 20);
}

void tst_Test2Trial::theTargetStaysUntilTheAnswer()
{
    AttentionDesk desk;
    desk.goTest();
    desk.click("pb_go");
    QVERIFY(desk.reach(4));
    desk.time.advance(3'600'000);
    QVERIFY(desk.target->isVisible());
    desk.key(Qt::Key_Space);
    QVERIFY(!desk.target->isVisible());
}

void tst_Test2Trial::anAnswerLeavesItsRow()
{
    AttentionDesk desk;
    sessionStore().siteCode = QStringLiteral("UKB");
    desk.goTest(true, false, 2);
    desk.click("pb_go");
    QVERIFY(desk.reach(4));
    const QDateTime onset = desk.time.currentDateTime();
    desk.time.advance(287);
    desk.key(Qt::Key_Space);
    QCOMPARE(desk.text("le_result"), QStringLiteral("287"));
    QVERIFY(desk.rows().isEmpty());
    desk.time.advance(600);

    const QList<QStringList> rows = desk.rows();
    QCOMPARE(rows.size(), 1);
    QCOMPARE(rows[0].size(), int(Count));
    QCOMPARE(rows[0].mid(0, 12).join(u';'),
             QStringLiteral("UKB;Mrs.;Doe;Jane;01/02/1950;2;3;%1;%2;2;1;1")
                 .arg(onset.toString(QStringLiteral("dd/MM/yyyy")),
                      onset.toString(QStringLiteral("hh:mm:ss.zzz"))));
    QCOMPARE(rows[0][Rt], QStringLiteral("287"));
    QVERIFY(tables::_roseVents.end() != std::find(tables::_roseVents.begin(),
                                                  tables::_roseVents.end(),
                                                  QLatin1String(rows[0][Position].toLatin1())));
    QCOMPARE(rows[0][Error], QStringLiteral("0"));
    QCOMPARE(rows[0].count(QString()), 30 - 12 - 3); // the other tasks' columns are empty
    QCOMPARE(desk.text("le_no"), QStringLiteral("2"));
}

void tst_Test2Trial::aClickAnswersToo()
{
    AttentionDesk desk;
    desk.goTest();
    desk.click("pb_go");
    QVERIFY(desk.reach(4));
    desk.time.advance(301);
    QTest::mouseClick(&desk.task, Qt::LeftButton, {}, {10, 700});
    desk.time.advance(600);
    QCOMPARE(desk.rows().constFirst()[Rt], QStringLiteral("301"));

    QVERIFY(desk.reach(4)); // on the target itself as well
    desk.time.advance(302);
    QTest::mouseClick(desk.target, Qt::LeftButton);
    desk.time.advance(600);
    QCOMPARE(desk.rows().constLast()[Rt], QStringLiteral("302"));
}

void tst_Test2Trial::otherButtonsAndKeysDoNothing()
{
    AttentionDesk desk;
    desk.goTest();
    desk.click("pb_go");
    QVERIFY(desk.reach(4));
    QTest::mouseClick(&desk.task, Qt::RightButton);
    QTest::mouseClick(&desk.task, Qt::MiddleButton);
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_S, Qt::Key_A, Qt::Key_Left, Qt::Key_C})
        desk.key(key);
    QVERIFY(desk.target->isVisible());
    QVERIFY(desk.task.isRunning());
}

void tst_Test2Trial::aHeldKeyIsNoAnswer()
{
    AttentionDesk desk;
    desk.goTest();
    desk.click("pb_go");
    QVERIFY(desk.reach(4));
    for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Escape, Qt::Key_E, Qt::Key_P}) {
        QKeyEvent held(QEvent::KeyPress, key, Qt::NoModifier, QString(), true);
        QCoreApplication::sendEvent(&desk.task, &held);
    }
    QVERIFY(desk.target->isVisible());
    QVERIFY(desk.task.isRunning());
}

void tst_Test2Trial::anAnswerOutsideItsTimeIsIgnored_data()
{
    QTest::addColumn<int>("stage");
    QTest::newRow("foreperiod") << 1;
    QTest::newRow("cue") << 2;
}

void tst_Test2Trial::anAnswerOutsideItsTimeIsIgnored()
{
    QFETCH(const int, stage);
    AttentionDesk desk;
    desk.goTest(true);
    desk.key(Qt::Key_Space); // before the block has begun
    desk.click("pb_go");
    QVERIFY(desk.reach(stage));
    desk.key(Qt::Key_Space);
    QTest::mouseClick(&desk.task, Qt::LeftButton);
    QCOMPARE(desk.task.stage(), stage);
    QCOMPARE(desk.text("le_result"), QString());
    QVERIFY(desk.answer(300));
    QCOMPARE(desk.rows().size(), 1);
    QCOMPARE(desk.rows().constFirst()[Error], QStringLiteral("0"));
}

void tst_Test2Trial::aSecondAnswerIsIgnored()
{
    AttentionDesk desk;
    desk.goTest();
    desk.click("pb_go");
    QVERIFY(desk.answer(300, 200));
    desk.key(Qt::Key_Space);
    desk.time.advance(400);
    QCOMPARE(desk.rows().size(), 1);
    QCOMPARE(desk.rows().constFirst()[Rt], QStringLiteral("300"));
}

void tst_Test2Trial::anAnticipationKeepsItsDirection()
{
    AttentionDesk desk;
    desk.goTest(true, false, 3);
    desk.click("pb_go");
    QVERIFY(desk.answer(300));
    const QString firstTime = desk.rows().constFirst()[Time];
    QVERIFY(desk.reach(3));
    desk.time.advance(150);
    desk.key(Qt::Key_Space);
    QCOMPARE(desk.text("le_result"), QStringLiteral("-250"));
    QVERIFY(desk.arrow->isVisible()); // until the next trial
    const double pointed = desk.arrow->rotation;
    desk.time.advance(599);
    QVERIFY(!desk.target->isVisible());
    desk.time.advance(1);
    QCOMPARE(desk.task.stage(), 1);
    QCOMPARE(desk.arrow->rotation, pointed);
    QVERIFY(desk.answer(310));

    const QList<QStringList> rows = desk.rows();
    QCOMPARE(rows.size(), 3);
    QCOMPARE(rows[1][Rt], QStringLiteral("-250"));
    QCOMPARE(rows[1][Error], QStringLiteral("1"));
    QCOMPARE(rows[1][Time], firstTime); // the last target that was shown
    QCOMPARE(rows[1][Position], rows[2][Position]);
    QCOMPARE(rows[1][RankTask], QStringLiteral("2"));
    QCOMPARE(rows[2][RankTask], QStringLiteral("2"));
    QCOMPARE(rows[1][RankSub], QStringLiteral("2"));
    QCOMPARE(rows[2][RankSub], QStringLiteral("2"));
}

void tst_Test2Trial::anAnticipationInTheFirstTrialBearsTheTimeOfTheStart()
{
    AttentionDesk desk;
    desk.time.advance(1234);
    const QString start = desk.time.currentDateTime().toString(QStringLiteral("hh:mm:ss.zzz"));
    desk.goTest();
    desk.time.advance(5000);
    desk.click("pb_go");
    QVERIFY(desk.reach(3));
    desk.key(Qt::Key_Space);
    desk.time.advance(600);
    QCOMPARE(desk.rows().constFirst()[Time], start);
    QCOMPARE(desk.rows().constFirst()[Rt], QStringLiteral("-400"));
}

void tst_Test2Trial::aVeryLateAnswerIsInvalidAndUsesUpItsDirection()
{
    AttentionDesk desk;
    desk.goTest(false, false, 1);
    desk.click("pb_go");
    QSet<QString> directions;
    for (int trial = 0; trial < 8; ++trial)
        QVERIFY(desk.answer(trial == 3 ? 2001 : 300));
    const QList<QStringList> rows = desk.rows();
    QCOMPARE(rows.size(), 8);
    QCOMPARE(rows[3][Rt], QStringLiteral("2001"));
    QCOMPARE(rows[3][Error], QStringLiteral("1"));
    QCOMPARE(rows[4][RankTask], rows[3][RankTask]); // it is repeated, in another direction
    for (const QStringList &row : rows)
        directions.insert(row[Position]);
    QCOMPARE(directions.size(), 8);
}

void tst_Test2Trial::aLateAnswerOfExactlyTwoSecondsCounts()
{
    AttentionDesk desk;
    desk.goTest();
    desk.click("pb_go");
    QVERIFY(desk.answer(2000));
    QCOMPARE(desk.rows().constFirst()[Error], QStringLiteral("0"));
}

void tst_Test2Trial::aBlockOfThreeHoldsEveryConditionOnce()
{
    AttentionDesk desk;
    desk.goTest();
    desk.click("pb_go");
    QSet<QString> orders;
    for (int block = 0; block < 12; ++block) {
        for (int trial = 0; trial < 3; ++trial)
            QVERIFY(desk.answer(300));
        const QList<QStringList> rows = desk.rows().mid(qsizetype{3} * block);
        const QString order = rows[0][Subtask] + rows[1][Subtask] + rows[2][Subtask];
        QCOMPARE(QSet<QChar>(order.begin(), order.end()).size(), 3);
        orders.insert(order);
    }
    QVERIFY(orders.size() > 1);
}

void tst_Test2Trial::aConditionGoesThroughAllDirectionsBeforeItRepeatsOne()
{
    AttentionDesk desk;
    desk.goTest();
    desk.click("pb_go");
    for (int trial = 0; trial < 48; ++trial)
        QVERIFY(desk.answer(300));
    for (const QString &condition :
         {QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("3")}) {
        QStringList directions;
        for (const QStringList &row : desk.rows()) {
            if (row[Subtask] == condition)
                directions.append(row[Position]);
        }
        QCOMPARE(directions.size(), 16);
        const auto first = directions.mid(0, 8);
        const auto second = directions.mid(8);
        QCOMPARE(QSet<QString>(first.begin(), first.end()).size(), 8);
        QCOMPARE(QSet<QString>(second.begin(), second.end()).size(), 8);
    }
}

void tst_Test2Trial::anInvalidTrialIsRepeatedInItsCondition()
{
    AttentionDesk desk;
    desk.goTest();
    desk.click("pb_go");
    QVERIFY(desk.answer(300));
    for (int trial = 0; trial < 4; ++trial)
        QVERIFY(desk.answer(2500));
    QVERIFY(desk.answer(300));
    const QList<QStringList> rows = desk.rows();
    for (int trial = 2; trial < 6; ++trial)
        QCOMPARE(rows[trial][Subtask], rows[1][Subtask]);
}

void tst_Test2Trial::underFixedDurationATrialEndsByItself()
{
    AttentionDesk desk;
    desk.goTest(true, true, 3);
    desk.click("pb_go");
    QVERIFY(desk.reach(4));
    desk.time.advance(4999);
    QVERIFY(desk.target->isVisible());
    desk.time.advance(1);
    QVERIFY(!desk.target->isVisible());
    QVERIFY(desk.arrow->isVisible()); // until the next trial
    QCOMPARE(desk.task.stage(), 5);
    QCOMPARE(desk.text("le_result"), QStringLiteral("5000"));
    desk.key(Qt::Key_Space);
    QVERIFY(desk.nextTrial());
    const QStringList row = desk.rows().constFirst();
    QCOMPARE(row[Rt], QStringLiteral("5000"));
    QCOMPARE(row[Error], QStringLiteral("1"));
    QVERIFY(desk.answer(300, 0));
    QVERIFY(desk.nextTrial());
    QCOMPARE(desk.rows().constLast()[Position], row[Position]); // kept
}

void tst_Test2Trial::underFixedDurationACycleLastsItsTime()
{
    AttentionDesk desk;
    desk.goTest(false, true);
    desk.click("pb_go");
    const QDateTime start = desk.time.currentDateTime();
    QSignalSpy stages(&desk.task, &TaskDialog::stageEntered);
    const QList<int> reactionTimes{250, 4999, -1, 700}; // the third gives no answer
    for (const int reactionTime : reactionTimes) {
        QVERIFY(desk.reach(4));
        if (reactionTime >= 0) {
            desk.time.advance(reactionTime);
            desk.key(Qt::Key_Space);
        }
        stages.clear();
        while (stages.isEmpty() || stages.constLast().constFirst().toInt() != 1)
            desk.time.advance(1);
    }
    QCOMPARE(start.msecsTo(desk.time.currentDateTime()), 4 * 7700);
}

void tst_Test2Trial::underFixedDurationTheAssessorsKeysDoNothing()
{
    AttentionDesk desk;
    desk.goTest(false, true);
    desk.click("pb_go");
    QVERIFY(desk.reach(4));
    desk.key(Qt::Key_P);
    desk.key(Qt::Key_E);
    QVERIFY(desk.target->isVisible());
    QVERIFY(!desk.shown("pb_continue"));
    QVERIFY(desk.rows().isEmpty());
}

void tst_Test2Trial::aNegativeClosingWaitIsNone()
{
    AttentionDesk desk;
    desk.goTest(true, true);
    desk.click("pb_go");
    QVERIFY(desk.reach(4));
    desk.type("le_timer05", QStringLiteral("-9000")); // the cycle becomes shorter than it has been
    desk.key(Qt::Key_Space);
    desk.time.advance(0);
    QCOMPARE(desk.task.stage(), 1);
    QCOMPARE(desk.rows().size(), 1);
}

void tst_Test2Trial::aStruckTrialHasNoReactionTimeAndWaits()
{
    AttentionDesk desk;
    desk.goTest(true);
    desk.click("pb_go");
    QVERIFY(desk.reach(4));
    desk.time.advance(300);
    desk.key(Qt::Key_E);
    QVERIFY(desk.shown("pb_continue"));
    QCOMPARE(desk.widget<QLabel>("lbl_mode")->text(), QStringLiteral("ERROR"));
    QVERIFY(desk.shown("lbl_mode"));
    for (const QWidget *stimulus :
         QList<QWidget *>{desk.cross, desk.arrow, desk.target, desk.asterisk})
        QVERIFY(!stimulus->isVisible());
    QCOMPARE(desk.target->geometry().center(), desk.cross->geometry().center());
    QCOMPARE(desk.task.cursor().shape(), Qt::ArrowCursor);

    desk.time.advance(60'000);
    QList<QStringList> rows = desk.rows();
    QCOMPARE(rows.size(), 1);
    QCOMPARE(rows[0][Rt], QString());
    QCOMPARE(rows[0][Error], QStringLiteral("1"));
    QVERIFY(!desk.cross->isVisible() && !desk.arrow->isVisible()); // it waits

    desk.key(Qt::Key_C); // the shortcut belongs to the button, whoever has the focus
    if (desk.shown("pb_continue"))
        desk.click("pb_continue");
    QVERIFY(!desk.shown("lbl_mode"));
    QVERIFY(desk.answer(300));
    rows = desk.rows();
    QCOMPARE(rows.size(), 2);
    QCOMPARE(rows[1][Subtask], rows[0][Subtask]);
    QCOMPARE(rows[1][Position], rows[0][Position]);
    QCOMPARE(rows[1][RankSub], rows[0][RankSub]);
}

void tst_Test2Trial::aStruckTrialReplacesItsAnswer()
{
    AttentionDesk desk;
    desk.goTest();
    desk.click("pb_go");
    QVERIFY(desk.answer(300, 200));
    desk.key(Qt::Key_E);
    desk.time.advance(600);
    QCOMPARE(desk.rows().size(), 1);
    QCOMPARE(desk.rows().constFirst()[Rt], QString());
    QCOMPARE(desk.rows().constFirst()[Error], QStringLiteral("1"));
}

void tst_Test2Trial::goingOnDuringTheClosingWaitStartsTwoChains()
{
    AttentionDesk desk;
    desk.goTest(true);
    desk.type("le_timer01", QStringLiteral("5000")); // the next trial is still in its foreperiod
    desk.click("pb_go");
    QVERIFY(desk.reach(4));
    desk.key(Qt::Key_E);
    desk.time.advance(100);
    desk.click("pb_continue");
    QCOMPARE(desk.task.stage(), 1);
    QVERIFY(desk.rows().isEmpty());
    desk.time.advance(500); // the closing wait of the struck trial ends the new one
    const QList<QStringList> rows = desk.rows();
    QCOMPARE(rows.size(), 1);
    QCOMPARE(rows[0][Rt], QStringLiteral("5000")); // the limit, for the mark is gone
    QCOMPARE(desk.task.stage(), 1);                // and one more has begun
}

void tst_Test2Trial::aPauseLeavesAMarkerAndSkipsARank()
{
    AttentionDesk desk;
    desk.goTest(false, false, 1);
    desk.click("pb_go");
    QVERIFY(desk.answer(300));
    QVERIFY(desk.reach(4));
    desk.key(Qt::Key_P);
    QCOMPARE(desk.widget<QLabel>("lbl_mode")->text(), QStringLiteral("PAUSE"));
    QVERIFY(desk.shown("pb_continue"));
    QCOMPARE(desk.rows().constLast().join(u';'),
             QStringLiteral(";Mrs.;Doe;Jane;01/02/1950;paused"));
    desk.time.advance(600'000);
    QCOMPARE(desk.rows().size(), 2);
    desk.click("pb_continue");
    QVERIFY(desk.answer(320));
    const QList<QStringList> rows = desk.rows();
    QCOMPARE(rows.size(), 3);
    QCOMPARE(rows[2][RankTask], QStringLiteral("2"));
    QCOMPARE(rows[2][RankSub], QStringLiteral("3")); // the paused trial keeps its rank
}

void tst_Test2Trial::anAnswerAfterAPauseIsTakenForThePausedTarget()
{
    AttentionDesk desk;
    desk.goTest(true);
    desk.click("pb_go");
    QVERIFY(desk.reach(4));
    desk.time.advance(100);
    desk.key(Qt::Key_P);
    desk.time.advance(900);
    desk.click("pb_continue");
    desk.key(Qt::Key_Space);
    QCOMPARE(desk.text("le_result"), QStringLiteral("1000")); // from the old onset
    desk.time.advance(600); // the closing wait runs beside the new trial's foreperiod
    QCOMPARE(desk.rows().size(), 2);
    QCOMPARE(desk.rows().constLast()[Rt], QStringLiteral("1000"));
}

void tst_Test2Trial::theKeysDoNothingAfterAnAnticipation()
{
    AttentionDesk desk;
    desk.goTest();
    desk.click("pb_go");
    QVERIFY(desk.reach(3));
    desk.key(Qt::Key_Space);
    desk.key(Qt::Key_E);
    desk.key(Qt::Key_P);
    QVERIFY(!desk.shown("pb_continue"));
    desk.time.advance(600);
    QCOMPARE(desk.rows().size(), 1);
    QCOMPARE(desk.rows().constFirst()[Rt], QStringLiteral("-400"));
}

void tst_Test2Trial::theAssessorsKeysReachTheTaskFromThePanel()
{
    AttentionDesk desk;
    desk.goTest(true);
    desk.click("pb_go");
    auto *edit = desk.widget<QLineEdit>("le_timer05");
    QVERIFY(desk.reach(4));
    edit->setFocus();
    desk.time.advance(300);
    QTest::keyClick(edit, Qt::Key_Space);
    QVERIFY(!desk.target->isVisible());
    QCOMPARE(edit->text(), QStringLiteral("600"));
    desk.time.advance(600);
    QVERIFY(desk.reach(4));
    QTest::keyClick(edit, Qt::Key_P);
    QVERIFY(desk.shown("pb_continue"));
}

void tst_Test2Trial::returnInThePanelGivesTheKeysBack()
{
    AttentionDesk desk;
    desk.goTest(true);
    desk.click("pb_go");
    desk.type("le_timer05", QStringLiteral("50"));
    QVERIFY(!desk.widget<QLineEdit>("le_timer05")->hasFocus());
    QVERIFY(desk.task.isRunning()); // and Return has pressed nothing
}

void tst_Test2Trial::theShortcutWorksFromThePanel()
{
    AttentionDesk desk;
    desk.goTest(true);
    desk.click("pb_go");
    QVERIFY(desk.reach(4));
    auto *edit = desk.widget<QLineEdit>("le_timer05");
    QTest::keyClick(edit, Qt::Key_P);
    QVERIFY(desk.shown("pb_continue"));
    QTest::keyClick(edit, Qt::Key_C, Qt::ControlModifier); // copies
    QVERIFY(desk.shown("pb_continue"));
    QTest::keyClick(edit, Qt::Key_C);
    QVERIFY(!desk.shown("pb_continue"));
    QCOMPARE(edit->text(), QStringLiteral("600"));
}

void tst_Test2Trial::aNumberBelowTheTrialsDoneLetsTheBlockRunOn()
{
    AttentionDesk desk;
    desk.goTest(true);
    desk.type("le_number", QStringLiteral("6"));
    desk.click("pb_go");
    for (int trial = 0; trial < 4; ++trial)
        QVERIFY(desk.answer(300));
    desk.type("le_number", QStringLiteral("2"));
    for (int trial = 0; trial < 10; ++trial)
        QVERIFY(desk.answer(300));
    QVERIFY(!desk.shown("pb_results"));
    QCOMPARE(desk.rows().size(), 14);
    desk.key(Qt::Key_Escape);
    QCOMPARE(desk.rows().constLast().constLast(), QStringLiteral("interrupted"));
}

void tst_Test2Trial::theRowsOfATestAreOnTheDiskAtOnce()
{
    AttentionDesk desk;
    desk.goTest();
    desk.click("pb_go");
    for (int trial = 1; trial <= 3; ++trial) {
        QVERIFY(desk.answer(300));
        QCOMPARE(desk.rows().size(), trial); // read back while the log is open
    }
}

QTEST_MAIN(tst_Test2Trial)
#include "tst_Test2Trial.moc"
