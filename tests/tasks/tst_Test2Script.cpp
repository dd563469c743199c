#include "AttentionDesk.h"

#include "attentionLayout.h"
#include "compass.h"

using namespace column;

/// Instruction and training: what is shown in which order, and what they leave behind.
class tst_Test2Script : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theInstructionGoesThroughItsSteps();
    void theNeutralDemonstrationShowsATargetEveryFourSeconds();
    void theAlertedDemonstrationWarnsHalfASecondBefore();
    void theOrientedDemonstrationPointsAndThenShows();
    void theNinthArrowTurnsPastTheTable();
    void aDemonstrationTakesNoAnswer();
    void anInstructionAloneEndsWithoutATest();
    void aTrainingGoesThroughTheThreeConditionsIntoTheTest();
    void anInvalidTrainingTrialIsRepeated();
    void aTrainingHasNoLimitOfTwoSeconds();
    void instructionAndTrainingTakeTurns();
    void escapeEndsARunWhoseButtonIsDown();
    void escapeInATrainingLeavesNothing_data();
    void escapeInATrainingLeavesNothing();
    void aPauseInATrainingWritesNothing();
    void theNumberOfTheTestIsSetAgainAfterATraining();
    void theKeysDoNothingBetweenTrainingAndTest();
    void aLogThatCannotBeOpenedAfterATrainingIsTold();
};

namespace {
/// A training block of five valid trials.
void train(AttentionDesk &desk)
{
    QVERIFY(desk.shown("pb_go"));
    desk.click("pb_go");
    for (int trial = 0; trial < 5; ++trial)
        QVERIFY(desk.answer(300));
}

QString instruction(AttentionDesk &desk)
{
    auto *label = desk.widget<QLabel>("lbl_instruction");
    return label->isVisible() ? label->text() : QString();
}

QString mode(AttentionDesk &desk)
{
    auto *label = desk.widget<QLabel>("lbl_mode");
    return label->isVisible() ? label->text() : QString();
}
} // namespace

void tst_Test2Script::theInstructionGoesThroughItsSteps()
{
    AttentionDesk desk;
    desk.task.goTest2(0, true, false, false, false);
    QCOMPARE(instruction(desk), QStringLiteral("Attention\nneutral"));
    QCOMPARE(mode(desk), QStringLiteral("INSTRUCTIONS"));
    QVERIFY(!desk.shown("pb_go"));
    const QPoint middle(desk.task.width() / 2, desk.task.height() / 2);
    QCOMPARE(desk.widget("pb_next")->geometry().bottomRight() + QPoint(1, 1),
             middle + QPoint(512, 384));

    desk.click("pb_next"); // the eight places
    QCOMPARE(instruction(desk), QString());
    QVERIFY(desk.cross->isVisible());
    QCOMPARE(desk.target->pos(), attentionLayout::targetPlace(7, middle));
    const auto markers = desk.task.findChildren<DrawGrayRectangle *>();
    for (int d = 0; d < 7; ++d) {
        QVERIFY(markers[d]->isVisible());
        QCOMPARE(markers[d]->pos(), attentionLayout::targetPlace(d, middle));
    }

    desk.click("pb_next");
    QCOMPARE(instruction(desk), QStringLiteral("Example"));
    QVERIFY(!desk.cross->isVisible() && !desk.target->isVisible());
    for (const DrawGrayRectangle *marker : markers)
        QVERIFY(!marker->isVisible());

    const QStringList titles{QStringLiteral("Attention\nalerted"),
                             QStringLiteral("Attention\noriented")};
    for (const QString &title : titles) {
        desk.click("pb_next"); // the demonstration
        QCOMPARE(instruction(desk), QString());
        QVERIFY(desk.cross->isVisible());
        desk.click("pb_next"); // the next part
        QCOMPARE(instruction(desk), title);
        QCOMPARE(mode(desk), QStringLiteral("INSTRUCTIONS"));
        QVERIFY(!desk.cross->isVisible() && !desk.target->isVisible());
        desk.click("pb_next");
        QCOMPARE(instruction(desk), QStringLiteral("Example"));
    }
}

void tst_Test2Script::theNeutralDemonstrationShowsATargetEveryFourSeconds()
{
    AttentionDesk desk;
    desk.task.goTest2(0, true, false, false, false);
    for (int step = 0; step < 3; ++step)
        desk.click("pb_next");
    const QPoint middle(desk.task.width() / 2, desk.task.height() / 2);
    for (int pass = 0; pass < 10; ++pass) {
        desk.time.advance(1999);
        QVERIFY(!desk.target->isVisible());
        desk.time.advance(1);
        QVERIFY(desk.target->isVisible());
        QCOMPARE(desk.target->pos(), attentionLayout::targetPlace(pass % 8, middle));
        desk.time.advance(2000);
        QVERIFY(!desk.target->isVisible());
    }
    desk.click("pb_next"); // and it stops
    desk.time.advance(20'000);
    QVERIFY(!desk.target->isVisible());
}

void tst_Test2Script::theAlertedDemonstrationWarnsHalfASecondBefore()
{
    AttentionDesk desk;
    desk.task.goTest2(0, true, false, false, false);
    for (int step = 0; step < 6; ++step)
        desk.click("pb_next");
    for (int pass = 0; pass < 3; ++pass) {
        QVERIFY(desk.cross->isVisible());
        desk.time.advance(1500);
        QVERIFY(desk.asterisk->isVisible() && !desk.cross->isVisible());
        desk.time.advance(499);
        QVERIFY(!desk.target->isVisible());
        desk.time.advance(1);
        QVERIFY(!desk.asterisk->isVisible() && desk.cross->isVisible());
        QVERIFY(desk.target->isVisible());
        desk.time.advance(2000);
        QVERIFY(!desk.target->isVisible());
    }
}

void tst_Test2Script::theOrientedDemonstrationPointsAndThenShows()
{
    AttentionDesk desk;
    desk.task.goTest2(0, true, false, false, false);
    for (int step = 0; step < 9; ++step)
        desk.click("pb_next");
    const QPoint middle(desk.task.width() / 2, desk.task.height() / 2);
    for (int pass = 0; pass < 8; ++pass) {
        desk.time.advance(1500);
        QVERIFY(desk.arrow->isVisible() && !desk.cross->isVisible());
        QCOMPARE(desk.arrow->rotation, double(compass::_tabRot.at(std::size_t(pass))));
        int wait = 0;
        for (; !desk.target->isVisible() && wait < 2000; ++wait)
            desk.time.advance(1);
        QVERIFY(wait >= 400 && wait <= 1599);
        QVERIFY(!desk.arrow->isVisible() && desk.cross->isVisible());
        QCOMPARE(desk.target->pos(), attentionLayout::targetPlace(pass, middle));
        desk.time.advance(2000);
        QVERIFY(!desk.target->isVisible());
    }
}

void tst_Test2Script::theNinthArrowTurnsPastTheTable()
{
    AttentionDesk desk;
    desk.task.goTest2(0, true, false, false, false);
    for (int step = 0; step < 9; ++step)
        desk.click("pb_next");
    const QPoint middle(desk.task.width() / 2, desk.task.height() / 2);
    for (int pass = 0; pass < 18; ++pass) {
        while (!desk.arrow->isVisible())
            desk.time.advance(1);
        // The first time round all eight turn as they should; from then on every eighth is astray.
        const bool astray = pass >= 8 && (pass - 8) % 8 == 0;
        QCOMPARE(desk.arrow->rotation,
                 astray ? 250.0 : double(compass::_tabRot.at(std::size_t(pass % 8))));
        while (!desk.target->isVisible())
            desk.time.advance(1);
        QCOMPARE(desk.target->pos(), attentionLayout::targetPlace(pass % 8, middle));
    }
}

void tst_Test2Script::aDemonstrationTakesNoAnswer()
{
    AttentionDesk desk;
    desk.task.goTest2(0, true, false, true, false);
    for (int step = 0; step < 3; ++step)
        desk.click("pb_next");
    desk.time.advance(2000);
    QVERIFY(desk.target->isVisible());
    desk.key(Qt::Key_Space);
    QTest::mouseClick(&desk.task, Qt::LeftButton, {}, {20, 600});
    desk.key(Qt::Key_E);
    desk.key(Qt::Key_P);
    QVERIFY(desk.target->isVisible());
    QVERIFY(!desk.shown("pb_continue"));
    QCOMPARE(desk.text("le_result"), QString());
}

void tst_Test2Script::anInstructionAloneEndsWithoutATest()
{
    AttentionDesk desk;
    const QByteArray before = desk.root.bytes(QStringLiteral("Results/output.csv"));
    desk.task.goTest2(0, true, false, false, false);
    for (int step = 0; step < 10; ++step) {
        QVERIFY(desk.task.isRunning());
        desk.click("pb_next");
    }
    QVERIFY(!desk.task.isRunning());
    QVERIFY(sessionStore().escapeSeq);
    QCOMPARE(desk.root.bytes(QStringLiteral("Results/output.csv")), before);
    QVERIFY(!desk.root.exists(QStringLiteral("Results/valid-output.csv")));
}

void tst_Test2Script::aTrainingGoesThroughTheThreeConditionsIntoTheTest()
{
    AttentionDesk desk;
    desk.task.goTest2(0, false, true, true, false);
    const QPoint middle(desk.task.width() / 2, desk.task.height() / 2);
    const QStringList titles{QStringLiteral("Attention\nneutral"),
                             QStringLiteral("Attention\nalerted"),
                             QStringLiteral("Attention\noriented")};
    for (int block = 0; block < 3; ++block) {
        QCOMPARE(instruction(desk), titles[block]);
        QCOMPARE(mode(desk), QStringLiteral("TRAINING"));
        QVERIFY(!desk.shown("pb_next"));
        QCOMPARE(desk.widget("pb_go")->geometry().bottomRight() + QPoint(1, 1),
                 middle + QPoint(512, 384));
        QCOMPARE(desk.text("le_number"), QStringLiteral("5"));
        train(desk);
        QCOMPARE(desk.text("le_subtask"), QString::number(block + 1));
    }
    QCOMPARE(instruction(desk), QString());
    QCOMPARE(mode(desk), QString());
    QCOMPARE(desk.text("le_number"), QStringLiteral("96"));
    QCOMPARE(desk.widget("pb_go")->geometry().center(), desk.task.rect().center());
    QVERIFY(!desk.cross->isVisible());
    QVERIFY(desk.rows().isEmpty());

    desk.click("pb_go");
    QVERIFY(desk.answer(300));
    QCOMPARE(desk.rows().size(), 1);
    QCOMPARE(desk.rows().constFirst()[RankTask], QStringLiteral("1"));
    QCOMPARE(desk.rows().constFirst()[RankSub], QStringLiteral("1"));
}

void tst_Test2Script::anInvalidTrainingTrialIsRepeated()
{
    AttentionDesk desk;
    desk.task.goTest2(0, false, true, true, false);
    desk.click("pb_go");
    QVERIFY(desk.reach(3));
    desk.key(Qt::Key_Space); // too early
    desk.time.advance(600);
    for (int trial = 0; trial < 4; ++trial)
        QVERIFY(desk.answer(300));
    QVERIFY(!desk.shown("pb_go"));
    QVERIFY(desk.answer(300));
    QVERIFY(desk.shown("pb_go"));
}

void tst_Test2Script::aTrainingHasNoLimitOfTwoSeconds()
{
    AttentionDesk desk;
    desk.task.goTest2(0, false, true, false, false);
    desk.click("pb_go");
    for (int trial = 0; trial < 5; ++trial)
        QVERIFY(desk.answer(9000));
    QVERIFY(desk.shown("pb_go"));
}

void tst_Test2Script::instructionAndTrainingTakeTurns()
{
    AttentionDesk desk;
    desk.task.goTest2(0, true, true, false, false);
    for (const int steps : {4, 3, 3}) {
        QCOMPARE(mode(desk), QStringLiteral("INSTRUCTIONS"));
        for (int step = 0; step < steps; ++step)
            desk.click("pb_next");
        QCOMPARE(mode(desk), QStringLiteral("TRAINING"));
        QVERIFY(!desk.shown("pb_next"));
        QVERIFY(!desk.cross->isVisible() && !desk.target->isVisible());
        train(desk);
    }
    QCOMPARE(mode(desk), QString());
    QVERIFY(desk.shown("pb_go"));
    desk.click("pb_go");
    QVERIFY(desk.answer(300));
    QCOMPARE(desk.rows().size(), 1);
}

void tst_Test2Script::escapeEndsARunWhoseButtonIsDown()
{
    AttentionDesk desk;
    desk.task.goTest2(0, true, false, false, false);
    auto *next = desk.task.findChild<QPushButton *>(QStringLiteral("pb_next"));
    QVERIFY(next->isVisible());
    next->setDown(true); // as it is for a tenth of a second behind its shortcut
    QTest::keyClick(next, Qt::Key_Escape);
    QVERIFY(!desk.task.isRunning());
    QVERIFY(sessionStore().escapeSeq);
}

void tst_Test2Script::escapeInATrainingLeavesNothing_data()
{
    QTest::addColumn<bool>("inBlock");
    QTest::newRow("before its block") << false;
    QTest::newRow("in its block") << true;
}

void tst_Test2Script::escapeInATrainingLeavesNothing()
{
    QFETCH(const bool, inBlock);
    AttentionDesk desk;
    const QByteArray before = desk.root.bytes(QStringLiteral("Results/output.csv"));
    desk.task.goTest2(0, false, true, false, false);
    if (inBlock) {
        desk.click("pb_go");
        QVERIFY(desk.reach(4));
    }
    desk.key(Qt::Key_Escape);
    QVERIFY(!desk.task.isRunning());
    QVERIFY(sessionStore().escapeSeq);
    desk.time.advance(60'000);
    QCOMPARE(desk.root.bytes(QStringLiteral("Results/output.csv")), before);
}

void tst_Test2Script::aPauseInATrainingWritesNothing()
{
    AttentionDesk desk;
    desk.task.goTest2(0, false, true, false, false);
    desk.click("pb_go");
    QVERIFY(desk.reach(4));
    desk.key(Qt::Key_P);
    QCOMPARE(mode(desk), QStringLiteral("PAUSE"));
    QVERIFY(desk.rows().isEmpty());
    desk.click("pb_continue");
    QVERIFY(desk.answer(300));
}

void tst_Test2Script::theNumberOfTheTestIsSetAgainAfterATraining()
{
    AttentionDesk desk;
    desk.task.goTest2(0, false, true, true, false);
    desk.type("le_number", QStringLiteral("2")); // shortens the block, and only this one
    desk.click("pb_go");
    QVERIFY(desk.answer(300));
    QVERIFY(desk.answer(300));
    QVERIFY(desk.shown("pb_go"));
    QCOMPARE(desk.text("le_number"), QStringLiteral("5"));
    train(desk);
    train(desk);
    QCOMPARE(desk.text("le_number"), QStringLiteral("96"));
}

void tst_Test2Script::theKeysDoNothingBetweenTrainingAndTest()
{
    AttentionDesk desk;
    desk.task.goTest2(0, false, true, false, false);
    for (int block = 0; block < 3; ++block)
        train(desk);
    desk.key(Qt::Key_E);
    desk.key(Qt::Key_P);
    QTest::mouseClick(&desk.task, Qt::LeftButton, {}, {20, 600});
    desk.time.advance(10'000);
    QVERIFY(desk.shown("pb_go"));
    QVERIFY(!desk.shown("pb_continue"));
    QVERIFY(desk.rows().isEmpty());
}

void tst_Test2Script::aLogThatCannotBeOpenedAfterATrainingIsTold()
{
    AttentionDesk desk;
    desk.task.goTest2(0, false, true, false, false);
    train(desk);
    train(desk);
    desk.root.block(QStringLiteral("Results/output.csv"));
    train(desk);
    const auto messages = desk.boxes.take();
    QCOMPARE(messages.size(), 1);
    QVERIFY(messages[0].text.startsWith(QStringLiteral("Failed to open output.csv\n")));
    QVERIFY(!desk.task.isRunning());
    QVERIFY(!sessionStore().escapeSeq);
}

QTEST_MAIN(tst_Test2Script)
#include "tst_Test2Script.moc"
