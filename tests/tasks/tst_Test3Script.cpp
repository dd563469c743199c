#include "MovementDesk.h"

#include <QCoreApplication>
#include <QSet>

using namespace column;

/// Instruction and training: what is shown in which order, and what they leave behind.
class tst_Test3Script : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theInstructionBeginsWithItsTitle();
    void aStepShowsWhatItTellsOf_data();
    void aStepShowsWhatItTellsOf();
    void theFieldDriftsInItsSteps();
    void aStepOfTheDriftIsOnePixel();
    void theArrowPointsToAPatchThatIsSeenToMove_data();
    void theArrowPointsToAPatchThatIsSeenToMove();
    void theFrameStandsAroundThePatchOfTheArrow();
    void newFieldsComeInTheirStepsAlone();
    void aNewFieldBeginsAtRest();
    void theDirectionsOfTheInstructionAreOfAllKinds();
    void theFieldWaitsForTheNextStep();
    void thePadTakesNoAnswerInTheInstruction();
    void theKeysDoNothingInTheInstruction();
    void theShortcutGoesOnFromThePanel();
    void anInstructionAloneEndsWithoutATest();
    void anInstructionLeadsIntoItsTraining();
    void aTrainingAloneBeginsAtOnce();
    void aTrainingOfFiveLeadsIntoTheTest_data();
    void aTrainingOfFiveLeadsIntoTheTest();
    void theFirstTrialOfTheTestIsLogged();
    void anInvalidTrainingTrialIsRepeated_data();
    void anInvalidTrainingTrialIsRepeated();
    void aTrainingHasNoLimitOfFiveSeconds();
    void aTrainingCanBeOfFixedDuration();
    void theErrorsOfATrainingDoNotCount();
    void theNumberOfTheTestIsSetAgainAfterATraining();
    void aPauseInATrainingWritesNothing();
    void aStruckTrainingTrialIsRepeated();
    void theKeysDoNothingBetweenTrainingAndTest();
    void aLogThatCannotBeOpenedAfterATrainingIsTold();
    void escapeInTheInstructionStopsTheDrift_data();
    void escapeInTheInstructionStopsTheDrift();
    void escapeInATrainingLeavesNothing_data();
    void escapeInATrainingLeavesNothing();
};

namespace {
constexpr int steps = 9;

/// The instruction, up to what this many presses of "Next" have brought.
void instruct(MovementDesk &desk, int presses, bool training = false)
{
    desk.go({.instruction = true, .training = training, .parameters = true});
    for (int press = 0; press < presses; ++press)
        desk.click("pb_next");
}

/// The 80 directions.
QList<int> directions(const MovementDesk &desk)
{
    const PatchField &field = desk.task.field();
    QList<int> all(field.ring.begin(), field.ring.end());
    for (const auto &group : field.dot)
        all.append(QList<int>(group.begin(), group.end()));
    return all;
}

QList<QPoint> displacements(const MovementDesk &desk)
{
    QList<QPoint> all;
    for (int patch = 0; patch < PatchBoard::patches; ++patch)
        all.append(desk.board->displacement(patch));
    return all;
}

bool isAtRest(const MovementDesk &desk)
{
    return displacements(desk) == QList<QPoint>(PatchBoard::patches);
}

/// Whether the lines move within the time of a few steps.
bool drifts(MovementDesk &desk)
{
    const QList<QPoint> before = displacements(desk);
    for (int step = 0; step < 4; ++step) {
        desk.time.advance(15);
        if (displacements(desk) != before)
            return true;
    }
    return false;
}

/// A training block of five valid trials.
void train(MovementDesk &desk)
{
    QVERIFY(desk.shown("pb_go"));
    desk.click("pb_go");
    for (int trial = 0; trial < 5; ++trial)
        QVERIFY(desk.runTrial(600));
}

QPoint outerCorner(const QWidget *button)
{
    return button->geometry().bottomRight() + QPoint(1, 1);
}

QPoint middle(const QWidget *button)
{
    return button->pos() + QPoint(button->width() / 2, button->height() / 2);
}
} // namespace

void tst_Test3Script::theInstructionBeginsWithItsTitle()
{
    MovementDesk desk;
    instruct(desk, 0);
    QCOMPARE(desk.instruction(), QStringLiteral("Movement\ndetection"));
    QCOMPARE(desk.mode(), QStringLiteral("INSTRUCTIONS"));
    QVERIFY(desk.shown("pb_next"));
    QVERIFY(!desk.shown("pb_go"));
    QCOMPARE(outerCorner(desk.widget("pb_next")), desk.centre() + QPoint(512, 384));
    QVERIFY(desk.nothingIsShown());
    desk.time.advance(60'000); // and it stays
    QVERIFY(desk.nothingIsShown());
    QCOMPARE(desk.instruction(), QStringLiteral("Movement\ndetection"));
}

void tst_Test3Script::aStepShowsWhatItTellsOf_data()
{
    QTest::addColumn<int>("presses");
    QTest::addColumn<bool>("cross");
    QTest::addColumn<int>("arrow"); // degrees; -1: hidden
    QTest::addColumn<bool>("frame");
    QTest::addColumn<bool>("field");
    QTest::addColumn<bool>("drift");
    QTest::addColumn<int>("pad");
    QTest::newRow("field and cross") << 1 << true << -1 << false << true << false << 0;
    QTest::newRow("arrow") << 2 << false << 135 << false << true << false << 0;
    QTest::newRow("frame") << 3 << false << 135 << true << true << false << 0;
    QTest::newRow("drift") << 4 << false << 135 << true << true << true << 0;
    QTest::newRow("pad") << 5 << false << -1 << false << false << false << 5;
    QTest::newRow("north-west") << 6 << false << 225 << false << true << true << 0;
    QTest::newRow("north-east") << 7 << false << 315 << false << true << true << 0;
    QTest::newRow("east") << 8 << false << 0 << false << true << true << 0;
}

void tst_Test3Script::aStepShowsWhatItTellsOf()
{
    QFETCH(const int, presses);
    QFETCH(const bool, cross);
    QFETCH(const int, arrow);
    QFETCH(const bool, frame);
    QFETCH(const bool, field);
    QFETCH(const bool, drift);
    QFETCH(const int, pad);
    MovementDesk desk;
    instruct(desk, presses);
    QCOMPARE(desk.cross->isVisible(), cross);
    QCOMPARE(desk.arrow->isVisible(), arrow >= 0);
    if (arrow >= 0)
        QCOMPARE(desk.arrow->rotation, double(arrow));
    QCOMPARE(desk.border->isVisible(), frame);
    QCOMPARE(desk.board->isVisible(), field);
    QCOMPARE(drifts(desk), drift);
    QCOMPARE(desk.shownPad(), pad);
    QCOMPARE(desk.instruction(), QString());
    QCOMPARE(desk.mode(), QStringLiteral("INSTRUCTIONS"));
    QVERIFY(desk.shown("pb_next"));
    QVERIFY(!desk.shown("pb_go"));
    QCOMPARE(desk.task.stage(), 0);
}

void tst_Test3Script::theFieldDriftsInItsSteps()
{
    MovementDesk desk;
    instruct(desk, 0);
    for (int step = 0; step < steps; ++step) {
        QCOMPARE(drifts(desk), step == 4 || step >= 6);
        if (step < 4)
            QVERIFY(isAtRest(desk));
        desk.click("pb_next");
    }
    QVERIFY(!desk.task.isRunning());
    QVERIFY(!drifts(desk));
}

void tst_Test3Script::aStepOfTheDriftIsOnePixel()
{
    MovementDesk desk;
    instruct(desk, 4);
    constexpr std::array<QPoint, 4> ways{QPoint(1, 0), QPoint(0, 1), QPoint(-1, 0), QPoint(0, -1)};
    const QList<int> ring = directions(desk).mid(0, 8);
    for (int pass = 0; pass < 40; ++pass) {
        desk.time.advance(14);
        const QList<QPoint> before = displacements(desk);
        desk.time.advance(1);
        for (int place = 0; place < 8; ++place) {
            const QPoint way = ways.at(std::size_t(ring[place]));
            // The first firing shows the rest, and the sixteenth the rest again.
            QCOMPARE(desk.board->displacement(72 + place), way * (pass % 15));
        }
        QCOMPARE(before != displacements(desk), pass > 0);
    }
}

void tst_Test3Script::theArrowPointsToAPatchThatIsSeenToMove_data()
{
    QTest::addColumn<int>("presses");
    QTest::addColumn<int>("patch");
    QTest::newRow("south-west") << 4 << 3;
    QTest::newRow("north-west") << 6 << 5;
    QTest::newRow("north-east") << 7 << 7;
    QTest::newRow("east") << 8 << 0;
}

void tst_Test3Script::theArrowPointsToAPatchThatIsSeenToMove()
{
    QFETCH(const int, presses);
    QFETCH(const int, patch);
    MovementDesk desk;
    instruct(desk, presses);
    QCOMPARE(desk.asked(), patch);
    desk.time.advance(15);
    for (int place = 0; place < 8; ++place)
        QCOMPARE(desk.seenDirection(place), desk.task.field().ring.at(std::size_t(place)));
}

void tst_Test3Script::theFrameStandsAroundThePatchOfTheArrow()
{
    MovementDesk desk;
    instruct(desk, 3);
    const QRect frame = desk.border->geometry();
    QCOMPARE(frame, QRect(desk.centre() + QPoint(-115, 53), QSize(62, 62)));
    const QPoint patch = desk.centre() + PatchBoard::ringOffset(desk.asked());
    QCOMPARE(frame.topLeft() + QPoint(31, 31), patch);
}

void tst_Test3Script::newFieldsComeInTheirStepsAlone()
{
    MovementDesk desk;
    instruct(desk, 1);
    QList<int> last = directions(desk);
    for (int press = 2; press <= 8; ++press) {
        desk.click("pb_next");
        QCOMPARE(directions(desk) != last, press >= 6);
        last = directions(desk);
    }
}

void tst_Test3Script::aNewFieldBeginsAtRest()
{
    MovementDesk desk;
    instruct(desk, 5);
    for (int press = 6; press <= 8; ++press) {
        desk.time.advance(107);
        desk.click("pb_next");
        QVERIFY(isAtRest(desk));
        QVERIFY(drifts(desk));
    }
}

void tst_Test3Script::theDirectionsOfTheInstructionAreOfAllKinds()
{
    MovementDesk desk;
    QSet<QList<int>> fields;
    for (int run = 0; run < 4; ++run) {
        desk.time.advance(1000); // another second is another seed
        instruct(desk, 1);
        const QList<int> all = directions(desk);
        QCOMPARE(all.size(), 80);
        for (int direction = 0; direction < 4; ++direction) {
            // 20 of 80 are expected, with a deviation of 3.9.
            const qsizetype count = all.count(direction);
            QVERIFY(count >= 4 && count <= 36);
        }
        fields.insert(all);
        desk.key(Qt::Key_Escape);
    }
    QCOMPARE(fields.size(), 4);
}

void tst_Test3Script::theFieldWaitsForTheNextStep()
{
    MovementDesk desk;
    instruct(desk, 1);
    for (int press = 1; press <= 8; ++press) {
        const int pad = desk.shownPad();
        const bool field = desk.board->isVisible();
        const bool arrow = desk.arrow->isVisible();
        desk.time.advance(120'000);
        QCOMPARE(desk.shownPad(), pad);
        QCOMPARE(desk.board->isVisible(), field);
        QCOMPARE(desk.arrow->isVisible(), arrow);
        QVERIFY(desk.task.isRunning());
        desk.click("pb_next");
    }
}

void tst_Test3Script::thePadTakesNoAnswerInTheInstruction()
{
    MovementDesk desk;
    instruct(desk, 5);
    for (const char *button : MovementDesk::padButtons)
        desk.click(button);
    for (const Qt::Key key : {Qt::Key_Left, Qt::Key_Up, Qt::Key_Right, Qt::Key_Down, Qt::Key_Space,
                              Qt::Key_E, Qt::Key_P})
        desk.key(key);
    QCOMPARE(desk.text("le_result"), QString());
    QCOMPARE(desk.text("le_elapsed"), QString());
    QCOMPARE(desk.shownPad(), 5);
    QVERIFY(!desk.cross->isVisible() && !desk.board->isVisible());
    QVERIFY(!desk.shown("pb_continue"));
    QCOMPARE(desk.mode(), QStringLiteral("INSTRUCTIONS"));
    desk.time.advance(60'000);
    QCOMPARE(desk.shownPad(), 5);
    desk.click("pb_next"); // and it goes on as if nothing had been pressed
    QCOMPARE(desk.shownPad(), 0);
    QCOMPARE(desk.arrow->rotation, 225.0);
}

void tst_Test3Script::theKeysDoNothingInTheInstruction()
{
    MovementDesk desk;
    instruct(desk, 0);
    for (int press = 0; press < steps; ++press) {
        for (const Qt::Key key : {Qt::Key_Left, Qt::Key_Up, Qt::Key_Right, Qt::Key_Down,
                                  Qt::Key_Space, Qt::Key_E, Qt::Key_P})
            desk.key(key);
        QVERIFY(!desk.shown("pb_continue"));
        QCOMPARE(desk.mode(), QStringLiteral("INSTRUCTIONS"));
        QCOMPARE(desk.shownPad(), press == 5 ? 5 : 0);
        QCOMPARE(desk.text("le_elapsed"), QString());
        desk.click("pb_next");
    }
    QVERIFY(!desk.task.isRunning());
}

void tst_Test3Script::theShortcutGoesOnFromThePanel()
{
    MovementDesk desk;
    instruct(desk, 0);
    for (int press = 0; press < steps; ++press) {
        QVERIFY(desk.task.isRunning());
        QTest::keyClick(desk.widget<QLineEdit>("le_number"), Qt::Key_C);
    }
    QVERIFY(!desk.task.isRunning());
}

void tst_Test3Script::anInstructionAloneEndsWithoutATest()
{
    MovementDesk desk;
    const QByteArray before = desk.root.bytes(QStringLiteral("Results/output.csv"));
    const QByteArray patients = desk.root.bytes(QString::fromLatin1(MovementDesk::patients));
    instruct(desk, 8);
    QVERIFY(desk.task.isRunning());
    QVERIFY(!sessionStore().escapeSeq);
    desk.click("pb_next");
    QVERIFY(!desk.task.isRunning());
    QVERIFY(sessionStore().escapeSeq);
    QCOMPARE(desk.root.bytes(QStringLiteral("Results/output.csv")), before);
    QCOMPARE(desk.root.bytes(QString::fromLatin1(MovementDesk::patients)), patients);
    QVERIFY(!desk.root.exists(QStringLiteral("Results/valid-output.csv")));
    QVERIFY(!desk.root.exists(QStringLiteral("Results/results_T3.csv")));
}

void tst_Test3Script::anInstructionLeadsIntoItsTraining()
{
    MovementDesk desk;
    instruct(desk, steps, true);
    QVERIFY(desk.task.isRunning());
    QVERIFY(desk.nothingIsShown());
    QVERIFY(!drifts(desk));
    QCOMPARE(desk.mode(), QStringLiteral("TRAINING"));
    QCOMPARE(desk.instruction(), QStringLiteral("Movement\ndetection"));
    QVERIFY(!desk.shown("pb_next"));
    QCOMPARE(desk.text("le_number"), QStringLiteral("5"));

    train(desk);
    QCOMPARE(desk.mode(), QString());
    QCOMPARE(desk.text("le_number"), QStringLiteral("40"));
    desk.click("pb_go");
    QVERIFY(desk.runTrial(600));
    QCOMPARE(desk.rows().size(), 1);
}

void tst_Test3Script::aTrainingAloneBeginsAtOnce()
{
    MovementDesk desk;
    desk.go({.training = true, .parameters = true});
    QCOMPARE(desk.mode(), QStringLiteral("TRAINING"));
    QCOMPARE(desk.instruction(), QStringLiteral("Movement\ndetection"));
    QVERIFY(desk.shown("pb_go"));
    QVERIFY(!desk.shown("pb_next"));
    QCOMPARE(outerCorner(desk.widget("pb_go")), desk.centre() + QPoint(512, 384));
    QCOMPARE(desk.text("le_number"), QStringLiteral("5"));
    QVERIFY(desk.nothingIsShown());

    desk.click("pb_go");
    QCOMPARE(desk.instruction(), QString());
    QCOMPARE(desk.mode(), QStringLiteral("TRAINING")); // through the block
    QVERIFY(!desk.shown("pb_go"));
    QVERIFY(desk.cross->isVisible() && desk.board->isVisible());
}

void tst_Test3Script::aTrainingOfFiveLeadsIntoTheTest_data()
{
    QTest::addColumn<int>("subtask");
    QTest::newRow("each patch for itself") << 1;
    QTest::newRow("with the crowd") << 2;
    QTest::newRow("against the crowd") << 3;
}

void tst_Test3Script::aTrainingOfFiveLeadsIntoTheTest()
{
    QFETCH(const int, subtask);
    MovementDesk desk;
    const QByteArray before = desk.root.bytes(QStringLiteral("Results/output.csv"));
    desk.go({.subtask = subtask, .training = true, .parameters = true});
    desk.click("pb_go");
    for (int trial = 1; trial <= 5; ++trial) {
        QVERIFY(!desk.shown("pb_go"));
        QCOMPARE(desk.text("le_no"), QString::number(trial));
        QCOMPARE(desk.text("le_subtask"), QString::number(subtask));
        QVERIFY(desk.runTrial(600));
    }
    QVERIFY(desk.shown("pb_go"));
    QCOMPARE(middle(desk.widget("pb_go")), desk.centre());
    QCOMPARE(desk.mode(), QString());
    QCOMPARE(desk.instruction(), QString());
    QCOMPARE(desk.text("le_number"), QStringLiteral("40"));
    QVERIFY(desk.nothingIsShown());
    QCOMPARE(desk.task.cursor().shape(), Qt::ArrowCursor);
    QCOMPARE(desk.task.stage(), 0);
    QCOMPARE(desk.root.bytes(QStringLiteral("Results/output.csv")), before);
    desk.time.advance(60'000);
    QCOMPARE(desk.task.stage(), 0); // it waits for "Go"

    desk.click("pb_go");
    QCOMPARE(desk.text("le_subtask"), QString::number(subtask)); // the one asked for stays
    QVERIFY(desk.runTrial(600));
    QCOMPARE(desk.rows().size(), 1);
    QCOMPARE(desk.rows().constFirst()[Subtask], QString::number(subtask));
}

void tst_Test3Script::theFirstTrialOfTheTestIsLogged()
{
    MovementDesk desk;
    desk.go({.training = true, .parameters = true});
    train(desk);
    desk.click("pb_go");
    QCOMPARE(desk.text("le_no"), QStringLiteral("1"));
    QVERIFY(desk.runTrial(777));
    QCOMPARE(desk.rows().size(), 1);
    const QStringList row = desk.rows().constFirst();
    QCOMPARE(row.size(), qsizetype(Count));
    QCOMPARE(row[Task], QStringLiteral("3"));
    QCOMPARE(row[Session], QStringLiteral("4"));
    QCOMPARE(row[Subtask], QStringLiteral("1"));
    QCOMPARE(row[RankTask], QStringLiteral("1"));
    QCOMPARE(row[RankSub], QString());
    QCOMPARE(row[MovementTime], QStringLiteral("777"));
    QCOMPARE(row[Error], QStringLiteral("0"));
}

void tst_Test3Script::anInvalidTrainingTrialIsRepeated_data()
{
    QTest::addColumn<bool>("wrong"); // or "?"
    QTest::newRow("wrong direction") << true;
    QTest::newRow("?") << false;
}

void tst_Test3Script::anInvalidTrainingTrialIsRepeated()
{
    QFETCH(const bool, wrong);
    MovementDesk desk;
    desk.go({.training = true, .parameters = true});
    desk.click("pb_go");
    QVERIFY(desk.pressSpace(600));
    const int asked = desk.asked();
    for (int repetition = 0; repetition < 3; ++repetition) {
        QCOMPARE(desk.asked(), asked);
        QCOMPARE(desk.text("le_no"), QStringLiteral("1"));
        wrong ? desk.answerWrong() : desk.answer(MovementDesk::unknown);
        QVERIFY(desk.finishTrial());
        QVERIFY(desk.pressSpace(600));
    }
    desk.answerRight();
    QVERIFY(desk.finishTrial());
    for (int trial = 0; trial < 4; ++trial) {
        QVERIFY(!desk.shown("pb_go"));
        QVERIFY(desk.runTrial(600));
    }
    QVERIFY(desk.shown("pb_go"));
}

void tst_Test3Script::aTrainingHasNoLimitOfFiveSeconds()
{
    MovementDesk desk;
    desk.go({.training = true});
    desk.click("pb_go");
    for (int trial = 0; trial < 5; ++trial) {
        QVERIFY(!desk.shown("pb_go"));
        QVERIFY(desk.runTrial(5001 + 1000 * trial));
    }
    QVERIFY(desk.shown("pb_go"));

    desk.click("pb_go"); // the test has it
    QVERIFY(desk.runTrial(5001));
    QCOMPARE(desk.rows().constFirst()[Error], QStringLiteral("1"));
    QVERIFY(desk.runTrial(5000));
    QCOMPARE(desk.rows().constLast()[Error], QStringLiteral("0"));
}

void tst_Test3Script::aTrainingCanBeOfFixedDuration()
{
    MovementDesk desk;
    desk.go({.training = true, .parameters = true, .fixedDuration = true});
    QCOMPARE(desk.text("le_timeTc"), QStringLiteral("7500"));
    desk.click("pb_go");
    const QDateTime start = desk.time.currentDateTime();
    QVERIFY(desk.reach(4));
    QVERIFY(desk.reach(5)); // nobody presses anything
    QVERIFY(desk.reach(6));
    QVERIFY(desk.finishTrial());
    QCOMPARE(start.msecsTo(desk.time.currentDateTime()), 7500);
    for (int trial = 0; trial < 5; ++trial) {
        QVERIFY(!desk.shown("pb_go"));
        QVERIFY(desk.runTrial(600));
    }
    QCOMPARE(start.msecsTo(desk.time.currentDateTime()), 6 * 7500);
    QVERIFY(desk.shown("pb_go"));
}

void tst_Test3Script::theErrorsOfATrainingDoNotCount()
{
    MovementDesk desk;
    desk.go({.training = true, .parameters = true});
    desk.click("pb_go");
    for (int trial = 0; trial < 3; ++trial)
        QVERIFY(desk.runTrial(4000, false));
    for (int trial = 0; trial < 5; ++trial)
        QVERIFY(desk.runTrial(4000));
    desk.type("le_number", QStringLiteral("8")); // a short test
    desk.click("pb_go");
    QSet<QString> places;
    for (int trial = 1; trial <= 8; ++trial) {
        QVERIFY(desk.runTrial(600));
        QCOMPARE(desk.rows().constLast()[RankTask], QString::number(trial));
        places.insert(desk.rows().constLast()[MovementPlace]);
    }
    QCOMPARE(places.size(), 8); // the order of the places begins anew, too
    QVERIFY(desk.shown("pb_results"));
    const auto scores = desk.rows("Results/results_T3.csv");
    QCOMPARE(scores.size(), 1);
    // Identity of five, task, session, date, time, duration, trials, t3_rt, t3_error, t3_slope,
    // t3_r2, oblique, cardinal, left, right, top, bottom.
    QCOMPARE(scores[0][10], QStringLiteral("8"));
    QCOMPARE(scores[0][12], QStringLiteral("0.0"));
    QCOMPARE(scores[0][15], QStringLiteral("120.000000")); // 4 * 600 / 20
    QCOMPARE(scores[0][17], QStringLiteral("120.000000")); // 3 * 600 / 15
}

void tst_Test3Script::theNumberOfTheTestIsSetAgainAfterATraining()
{
    MovementDesk desk;
    desk.go({.training = true, .parameters = true});
    desk.type("le_number", QStringLiteral("2")); // shortens the training alone
    desk.click("pb_go");
    QVERIFY(desk.runTrial(600));
    QVERIFY(desk.runTrial(600));
    QVERIFY(desk.shown("pb_go"));
    QCOMPARE(desk.text("le_number"), QStringLiteral("40"));
    desk.click("pb_go");
    for (int trial = 0; trial < 39; ++trial)
        QVERIFY(desk.runTrial(600));
    QVERIFY(!desk.shown("pb_results"));
    QVERIFY(desk.runTrial(600));
    QVERIFY(desk.shown("pb_results"));
}

void tst_Test3Script::aPauseInATrainingWritesNothing()
{
    MovementDesk desk;
    const QByteArray before = desk.root.bytes(QStringLiteral("Results/output.csv"));
    desk.go({.training = true, .parameters = true});
    desk.click("pb_go");
    QVERIFY(desk.reach(4));
    desk.key(Qt::Key_P);
    QCOMPARE(desk.mode(), QStringLiteral("PAUSE"));
    QVERIFY(desk.nothingIsShown());
    QVERIFY(desk.shown("pb_continue"));
    QVERIFY(!drifts(desk));
    desk.click("pb_continue");
    QCOMPARE(desk.text("le_no"), QStringLiteral("1"));
    QCOMPARE(desk.task.stage(), 1);
    for (int trial = 0; trial < 5; ++trial) {
        QVERIFY(!desk.shown("pb_go"));
        QVERIFY(desk.runTrial(600));
    }
    QVERIFY(desk.shown("pb_go"));
    QCOMPARE(desk.root.bytes(QStringLiteral("Results/output.csv")), before);
}

void tst_Test3Script::aStruckTrainingTrialIsRepeated()
{
    MovementDesk desk;
    const QByteArray before = desk.root.bytes(QStringLiteral("Results/output.csv"));
    desk.go({.training = true, .parameters = true});
    desk.click("pb_go");
    QVERIFY(desk.pressSpace(600));
    desk.key(Qt::Key_E);
    QCOMPARE(desk.mode(), QStringLiteral("INSTRUCTIONS"));
    QVERIFY(desk.nothingIsShown());
    desk.click("pb_continue");
    QVERIFY(desk.finishTrial());
    QCOMPARE(desk.text("le_no"), QStringLiteral("1"));
    for (int trial = 0; trial < 5; ++trial) {
        QVERIFY(!desk.shown("pb_go"));
        QVERIFY(desk.runTrial(600));
    }
    QVERIFY(desk.shown("pb_go"));
    QCOMPARE(desk.root.bytes(QStringLiteral("Results/output.csv")), before);
}

void tst_Test3Script::theKeysDoNothingBetweenTrainingAndTest()
{
    MovementDesk desk;
    desk.go({.training = true, .parameters = true});
    const auto pressAll = [&desk] {
        for (const Qt::Key key :
             {Qt::Key_Left, Qt::Key_Up, Qt::Key_Right, Qt::Key_Down, Qt::Key_E, Qt::Key_P})
            desk.key(key);
        // The Space would press a button that has the focus, but it isn't the dialog's.
        desk.key(Qt::Key_Space);
        desk.time.advance(10'000);
    };
    pressAll();
    QVERIFY(desk.shown("pb_go"));
    QCOMPARE(desk.mode(), QStringLiteral("TRAINING"));
    train(desk);
    pressAll();
    QVERIFY(desk.shown("pb_go"));
    QVERIFY(!desk.shown("pb_continue"));
    QVERIFY(desk.nothingIsShown());
    QVERIFY(desk.rows().isEmpty());
}

void tst_Test3Script::aLogThatCannotBeOpenedAfterATrainingIsTold()
{
    MovementDesk desk;
    desk.go({.training = true});
    desk.click("pb_go");
    for (int trial = 0; trial < 4; ++trial)
        QVERIFY(desk.runTrial(600));
    desk.root.block(QStringLiteral("Results/output.csv"));
    QVERIFY(desk.boxes.take().isEmpty());
    QVERIFY(desk.runTrial(600));
    const auto messages = desk.boxes.take();
    QCOMPARE(messages.size(), 1);
    QCOMPARE(messages[0].title, QStringLiteral("Error"));
    QVERIFY(messages[0].text.startsWith(QStringLiteral("Failed to open output.csv\n")));
    QVERIFY(!desk.task.isRunning());
    QVERIFY(!sessionStore().escapeSeq);
}

void tst_Test3Script::escapeInTheInstructionStopsTheDrift_data()
{
    QTest::addColumn<int>("presses");
    for (int presses = 0; presses < steps; ++presses)
        QTest::addRow("after %d presses", presses) << presses;
}

void tst_Test3Script::escapeInTheInstructionStopsTheDrift()
{
    QFETCH(const int, presses);
    MovementDesk desk;
    const QByteArray before = desk.root.bytes(QStringLiteral("Results/output.csv"));
    instruct(desk, presses);
    desk.time.advance(50);
    desk.key(Qt::Key_Escape);
    QVERIFY(!desk.task.isRunning());
    QVERIFY(sessionStore().escapeSeq);
    QVERIFY(!drifts(desk));
    QCOMPARE(desk.root.bytes(QStringLiteral("Results/output.csv")), before);

    instruct(desk, 0); // the next run begins with the title
    QVERIFY(desk.nothingIsShown());
    QCOMPARE(desk.instruction(), QStringLiteral("Movement\ndetection"));
    desk.click("pb_next");
    QVERIFY(desk.cross->isVisible() && desk.board->isVisible());
    QVERIFY(isAtRest(desk));
    QVERIFY(!drifts(desk));
}

void tst_Test3Script::escapeInATrainingLeavesNothing_data()
{
    QTest::addColumn<int>("stage");
    QTest::newRow("before its block") << 0;
    for (const int stage : {1, 3, 4, 5, 6}) // the second link takes no time
        QTest::addRow("in link %d", stage) << stage;
}

void tst_Test3Script::escapeInATrainingLeavesNothing()
{
    QFETCH(const int, stage);
    MovementDesk desk;
    const QByteArray before = desk.root.bytes(QStringLiteral("Results/output.csv"));
    desk.go({.training = true});
    if (stage > 0) {
        desk.click("pb_go");
        QVERIFY(stage < 5 ? desk.reach(stage) : desk.pressSpace(600));
    }
    if (stage == 6)
        desk.answerRight();
    QCOMPARE(desk.task.stage(), stage);
    desk.key(Qt::Key_Escape);
    QVERIFY(!desk.task.isRunning());
    QVERIFY(sessionStore().escapeSeq);
    desk.time.advance(60'000);
    QCOMPARE(desk.task.stage(), 0);
    QCOMPARE(desk.root.bytes(QStringLiteral("Results/output.csv")), before);
}

QTEST_MAIN(tst_Test3Script)
#include "tst_Test3Script.moc"
