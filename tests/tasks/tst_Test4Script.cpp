#include "MemoryDesk.h"

#include <QCursor>

#include <array>

using namespace column;

/// Instruction and training: what is shown in which order, and what they leave behind.
class tst_Test4Script : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theInstructionBeginsWithItsTitle();
    void aStepShowsWhatItTellsOf_data();
    void aStepShowsWhatItTellsOf();
    void theExampleIsTheSameInEveryRun();
    void theExampleWaitsForTheNextStep();
    void aClickIsNoAnswerInTheInstruction();
    void theShortcutGoesOnFromThePanel();
    void anInstructionAloneEndsWithoutATest();
    void anInstructionLeadsIntoItsTraining();
    void aTrainingAloneBeginsAtOnce();
    void aTrainingOfThreeLeadsIntoTheTest();
    void theFirstTrialOfTheTestIsLogged();
    void theFirstTrialOfATrainingBeginsByItself();
    void theTrialsOfATrainingAreOfAllLoads();
    void theNumberOfTheTestIsSetAgainAfterATraining();
    void theNumberOfTheTestCanBeEditedAfterATraining();
    void aStruckTrainingTrialMakesTheBlockLonger_data();
    void aStruckTrainingTrialMakesTheBlockLonger();
    void theErrorsOfATrainingDoNotCount();
    void aPauseInATrainingWritesNothing();
    void theKeysDoNothingBetweenTrainingAndTest();
    void theGuidesCanBeShownInATraining();
    void aLogThatCannotBeOpenedAfterATrainingIsTold();
    void aPauseInTheInstructionPutsTheChainUnderIt_data();
    void aPauseInTheInstructionPutsTheChainUnderIt();
    void anErrorKeyDoesNothingInTheInstruction();
    void escapeInTheInstructionLeavesNothing_data();
    void escapeInTheInstructionLeavesNothing();
    void escapeInATrainingLeavesNothing_data();
    void escapeInATrainingLeavesNothing();
};

namespace {
constexpr int steps = 7;
constexpr QLatin1String trialLog("Results/output.csv");

// The four places of the example, from the centre: 330 pixels away at 35, 275, 355 and 190 degrees,
// cut on a screen where they lie to the right of and below its corner.
constexpr QPoint firstPlace(189, -271);
constexpr QPoint secondPlace(-329, -29);
constexpr QPoint thirdPlace(-29, -329);
constexpr QPoint fourthPlace(-58, 324);
constexpr QPoint hidden(9999, 9999);

/// The instruction, up to what this many presses of "Continue" have brought.
void instruct(MemoryDesk &desk, int presses, bool training = false)
{
    desk.go({.instruction = true, .training = training, .parameters = true});
    for (int press = 0; press < presses; ++press)
        desk.click("pb_next");
}

/// A training block of three valid trials.
void train(MemoryDesk &desk)
{
    QVERIFY(desk.shown("pb_go"));
    desk.click("pb_go");
    QVERIFY(desk.runTrials(3));
}

/// Where a stimulus stands from the centre.
QPoint seenAt(const MemoryDesk &desk, const QWidget *stimulus)
{
    return stimulus->isVisible() ? MemoryDesk::place(stimulus) - desk.centre() : hidden;
}

QPoint outerCorner(const QWidget *button)
{
    return button->geometry().bottomRight() + QPoint(1, 1);
}

QPoint middle(const QWidget *button)
{
    return button->pos() + QPoint(button->width() / 2, button->height() / 2);
}

/// What a run that leads to no result must leave alone.
QList<QByteArray> files(const MemoryDesk &desk)
{
    return {desk.root.bytes(trialLog), desk.root.bytes(QString::fromLatin1(MemoryDesk::patients)),
            desk.root.bytes(QStringLiteral("Results/valid-output.csv")),
            desk.root.bytes(QStringLiteral("Results/results_T4.csv"))};
}

void addSteps()
{
    QTest::addColumn<int>("presses");
    for (int presses = 0; presses < steps; ++presses)
        QTest::addRow("after %d presses", presses) << presses;
}
} // namespace

void tst_Test4Script::theInstructionBeginsWithItsTitle()
{
    MemoryDesk desk;
    instruct(desk, 0);
    QCOMPARE(desk.instruction(), QStringLiteral("Memory"));
    QCOMPARE(desk.mode(), QStringLiteral("INSTRUCTIONS"));
    QVERIFY(desk.shown("pb_next"));
    QVERIFY(!desk.shown("pb_go"));
    QCOMPARE(outerCorner(desk.widget("pb_next")), desk.centre() + QPoint(512, 384));
    QCOMPARE(QCursor::pos(), desk.task.mapToGlobal(desk.widget("pb_next")->geometry().center()));
    QCOMPARE(desk.task.cursor().shape(), Qt::ArrowCursor);
    QVERIFY(desk.nothingIsShown());
    desk.time.advance(60'000); // and it stays
    QVERIFY(desk.nothingIsShown());
    QCOMPARE(desk.instruction(), QStringLiteral("Memory"));
}

void tst_Test4Script::aStepShowsWhatItTellsOf_data()
{
    QTest::addColumn<int>("presses");
    QTest::addColumn<QString>("told");
    QTest::addColumn<QPoint>("first");
    QTest::addColumn<QPoint>("last");
    QTest::addColumn<QPoint>("firstMarker");
    QTest::addColumn<QPoint>("lastMarker");
    QTest::addColumn<QString>("asked");
    QTest::newRow("first cross") << 1 << QStringLiteral("First localisation to remember")
                                 << firstPlace << hidden << hidden << hidden << QString();
    QTest::newRow("second cross") << 2 << QStringLiteral("Second localisation") << hidden
                                  << secondPlace << firstPlace << hidden << QString();
    QTest::newRow("third cross") << 3 << QStringLiteral("Third localisation") << hidden
                                 << thirdPlace << firstPlace << hidden << QString();
    QTest::newRow("fourth cross") << 4 << QStringLiteral("Fourth and last localisation") << hidden
                                  << fourthPlace << firstPlace << hidden << QString();
    QTest::newRow("where was the last") << 5 << QString() << hidden << hidden << hidden
                                        << fourthPlace << QStringLiteral("lbl_lastCross");
    QTest::newRow("where was the first") << 6 << QString() << hidden << hidden << firstPlace
                                         << hidden << QStringLiteral("lbl_firstCross");
}

void tst_Test4Script::aStepShowsWhatItTellsOf()
{
    QFETCH(const int, presses);
    QFETCH(const QString, told);
    QFETCH(const QPoint, first);
    QFETCH(const QPoint, last);
    QFETCH(const QPoint, firstMarker);
    QFETCH(const QPoint, lastMarker);
    QFETCH(const QString, asked);
    MemoryDesk desk;
    instruct(desk, presses);
    QCOMPARE(desk.label("lbl_localisation"), told);
    QVERIFY(desk.cross->isVisible());
    QCOMPARE(seenAt(desk, desk.cross), QPoint(0, 0));
    QCOMPARE(seenAt(desk, desk.first), first);
    QCOMPARE(seenAt(desk, desk.last), last);
    QCOMPARE(seenAt(desk, desk.firstMarker), firstMarker);
    QCOMPARE(seenAt(desk, desk.lastMarker), lastMarker);
    for (const char *question : {"lbl_firstCross", "lbl_lastCross"})
        QCOMPARE(desk.shown(question), asked == QLatin1String(question));
    QVERIFY(!desk.outerRing->isVisible());
    QCOMPARE(desk.instruction(), QString());
    QCOMPARE(desk.mode(), QStringLiteral("INSTRUCTIONS"));
    QVERIFY(desk.shown("pb_next"));
    QVERIFY(!desk.shown("pb_go") && !desk.shown("pb_continue"));
    QCOMPARE(desk.task.stage(), 0);
}

void tst_Test4Script::theExampleIsTheSameInEveryRun()
{
    MemoryDesk desk;
    for (int run = 0; run < 3; ++run) {
        desk.time.advance(1000); // another second is another seed
        instruct(desk, 1);
        QCOMPARE(seenAt(desk, desk.first), firstPlace);
        QCOMPARE(seenAt(desk, desk.last), hidden);
        desk.click("pb_next");
        QCOMPARE(seenAt(desk, desk.last), secondPlace);
        desk.click("pb_next");
        desk.click("pb_next");
        desk.click("pb_next");
        QCOMPARE(seenAt(desk, desk.lastMarker), fourthPlace);
        desk.click("pb_next");
        desk.click("pb_next");
        QVERIFY(!desk.task.isRunning());
    }
}

void tst_Test4Script::theExampleWaitsForTheNextStep()
{
    MemoryDesk desk;
    instruct(desk, 1);
    for (int press = 1; press < steps; ++press) {
        const auto look = [&desk] {
            return QList<QPoint>{seenAt(desk, desk.cross), seenAt(desk, desk.first),
                                 seenAt(desk, desk.last), seenAt(desk, desk.firstMarker),
                                 seenAt(desk, desk.lastMarker)};
        };
        const QList<QPoint> before = look();
        const QString told = desk.label("lbl_localisation");
        desk.time.advance(120'000);
        QCOMPARE(look(), before);
        QCOMPARE(desk.label("lbl_localisation"), told);
        QVERIFY(desk.task.isRunning());
        desk.click("pb_next");
    }
}

void tst_Test4Script::aClickIsNoAnswerInTheInstruction()
{
    MemoryDesk desk;
    instruct(desk, 5);
    for (int press = 5; press < steps; ++press) { // while the questions can be read
        const QPoint first = seenAt(desk, desk.first);
        desk.clickAt(desk.centre() + QPoint(200, -200));
        desk.rightClickAt(desk.centre() + QPoint(200, -200));
        desk.time.advance(10'000);
        QCOMPARE(seenAt(desk, desk.first), first);
        QVERIFY(!desk.last->isVisible());
        QCOMPARE(desk.text("le_distFirst"), QString());
        QCOMPARE(desk.text("le_distLast"), QString());
        QCOMPARE(desk.task.stage(), 0);
        desk.click("pb_next");
    }
    QVERIFY(!desk.task.isRunning());
}

void tst_Test4Script::theShortcutGoesOnFromThePanel()
{
    MemoryDesk desk;
    instruct(desk, 0);
    for (int press = 0; press < steps; ++press) {
        QVERIFY(desk.task.isRunning());
        QTest::keyClick(desk.widget<QLineEdit>("le_number"), Qt::Key_C);
        if (press == 0)
            QCOMPARE(desk.label("lbl_localisation"),
                     QStringLiteral("First localisation to remember"));
    }
    QVERIFY(!desk.task.isRunning());
}

void tst_Test4Script::anInstructionAloneEndsWithoutATest()
{
    MemoryDesk desk;
    const QList<QByteArray> before = files(desk);
    instruct(desk, steps - 1);
    QVERIFY(desk.task.isRunning());
    QVERIFY(!sessionStore().escapeSeq);
    desk.click("pb_next");
    QVERIFY(!desk.task.isRunning());
    QVERIFY(sessionStore().escapeSeq); // the session number is read back
    QCOMPARE(files(desk), before);
    QVERIFY(!desk.root.exists(QStringLiteral("Results/valid-output.csv")));
    QVERIFY(!desk.root.exists(QStringLiteral("Results/results_T4.csv")));
}

void tst_Test4Script::anInstructionLeadsIntoItsTraining()
{
    MemoryDesk desk;
    instruct(desk, steps, true);
    QVERIFY(desk.task.isRunning());
    QVERIFY(!sessionStore().escapeSeq);
    QVERIFY(desk.nothingIsShown());
    QCOMPARE(desk.mode(), QStringLiteral("TRAINING"));
    QCOMPARE(desk.instruction(), QStringLiteral("Memory"));
    QVERIFY(!desk.shown("pb_next"));
    QCOMPARE(outerCorner(desk.widget("pb_go")), desk.centre() + QPoint(512, 384));
    QCOMPARE(desk.text("le_number"), QStringLiteral("3"));

    train(desk);
    QCOMPARE(desk.mode(), QString());
    QCOMPARE(desk.text("le_number"), QStringLiteral("30"));
    desk.click("pb_go");
    QVERIFY(desk.runTrial());
    QCOMPARE(desk.rows().size(), 1);
}

void tst_Test4Script::aTrainingAloneBeginsAtOnce()
{
    MemoryDesk desk;
    desk.go({.training = true, .parameters = true});
    QCOMPARE(desk.mode(), QStringLiteral("TRAINING"));
    QCOMPARE(desk.instruction(), QStringLiteral("Memory"));
    QVERIFY(desk.shown("pb_go"));
    QVERIFY(!desk.shown("pb_next"));
    QCOMPARE(desk.widget("pb_go")->geometry().bottomRight(),
             desk.centre() + QPoint(512 - 1, 384 - 1));
    QCOMPARE(QCursor::pos(), desk.task.mapToGlobal(desk.widget("pb_next")->geometry().center()));
    QCOMPARE(desk.text("le_number"), QStringLiteral("3"));
    QVERIFY(desk.nothingIsShown());
}

void tst_Test4Script::aTrainingOfThreeLeadsIntoTheTest()
{
    MemoryDesk desk;
    const QList<QByteArray> before = files(desk);
    desk.go({.training = true, .parameters = true});
    desk.click("pb_go");
    for (int trial = 1; trial <= 3; ++trial) {
        QVERIFY(!desk.shown("pb_go"));
        QCOMPARE(desk.text("le_no"), QString::number(trial));
        QVERIFY(desk.runTrial());
    }
    QVERIFY(desk.shown("pb_go"));
    QVERIFY(!desk.shown("pb_continue") && !desk.shown("pb_next") && !desk.shown("pb_results"));
    QCOMPARE(middle(desk.widget("pb_go")), desk.centre());
    QCOMPARE(desk.mode(), QString());
    QCOMPARE(desk.instruction(), QString());
    QCOMPARE(desk.text("le_number"), QStringLiteral("30"));
    QVERIFY(desk.nothingIsShown());
    QCOMPARE(desk.task.cursor().shape(), Qt::ArrowCursor);
    QCOMPARE(QCursor::pos(), desk.task.mapToGlobal(desk.centre()));
    QCOMPARE(desk.task.stage(), 0);
    QCOMPARE(files(desk), before);
    desk.time.advance(60'000);
    QCOMPARE(desk.task.stage(), 0); // it waits for "Go"

    desk.click("pb_go");
    QCOMPARE(desk.text("le_no"), QStringLiteral("1"));
    QVERIFY(desk.runTrials(29));
    QVERIFY(!desk.shown("pb_results"));
    QVERIFY(desk.runTrial());
    QVERIFY(desk.shown("pb_results"));
    QCOMPARE(desk.rows().size(), 30);
}

void tst_Test4Script::theFirstTrialOfTheTestIsLogged()
{
    MemoryDesk desk;
    desk.go({.training = true, .parameters = true});
    train(desk);
    desk.click("pb_go");
    QCOMPARE(desk.text("le_no"), QStringLiteral("1"));
    QVERIFY(desk.runTrial(40));
    QCOMPARE(desk.rows().size(), 1);
    const QStringList row = desk.rows().constFirst();
    QCOMPARE(row.size(), qsizetype(Count));
    QCOMPARE(row[Task], QStringLiteral("4"));
    QCOMPARE(row[Session], QStringLiteral("5"));
    QCOMPARE(row[RankTask], QStringLiteral("1"));
    QCOMPARE(row[DistFirst], QStringLiteral("   10.00"));
    QCOMPARE(row[DistLast], QStringLiteral("   10.00"));
    QCOMPARE(row[Error], QStringLiteral("0"));
    QCOMPARE(row[Subtask].toInt(), int(desk.seen.size()) - 2);
}

void tst_Test4Script::theFirstTrialOfATrainingBeginsByItself()
{
    MemoryDesk desk;
    desk.go({.training = true, .parameters = true});
    desk.click("pb_go");
    QCOMPARE(desk.task.stage(), 1);
    QVERIFY(!desk.shown("pb_continue"));
    QVERIFY(!desk.shown("pb_go"));
    QVERIFY(desk.cross->isVisible());
    QCOMPARE(desk.instruction(), QString());
    QCOMPARE(desk.mode(), QString()); // with the Continue that nobody pressed
    QVERIFY(desk.runTrial());
    QCOMPARE(desk.task.stage(), 0);
    QVERIFY(desk.shown("pb_continue")); // the second one waits
    QCOMPARE(desk.mode(), QString());
    desk.time.advance(60'000);
    QCOMPARE(desk.task.stage(), 0);
    QTest::keyClick(desk.widget<QLineEdit>("le_number"), Qt::Key_C);
    QCOMPARE(desk.task.stage(), 1);
    QVERIFY(!desk.shown("pb_continue"));
}

void tst_Test4Script::theTrialsOfATrainingAreOfAllLoads()
{
    MemoryDesk desk;
    desk.go({.training = true});
    desk.click("pb_go");
    QList<qsizetype> lengths;
    for (int trial = 0; trial < 3; ++trial) {
        QVERIFY(desk.runTrial());
        const qsizetype crosses = desk.seen.size();
        QVERIFY(crosses >= 2 && crosses <= 7);
        QVERIFY(!lengths.contains(crosses)); // of one draw of the six
        lengths.append(crosses);
    }
}

void tst_Test4Script::theNumberOfTheTestIsSetAgainAfterATraining()
{
    MemoryDesk desk;
    desk.go({.training = true, .parameters = true});
    desk.type("le_number", QStringLiteral("2")); // shortens the training alone
    desk.click("pb_go");
    QVERIFY(desk.runTrials(2));
    QVERIFY(desk.shown("pb_go"));
    QCOMPARE(desk.text("le_number"), QStringLiteral("30"));
    desk.click("pb_go");
    QVERIFY(desk.runTrials(29));
    QVERIFY(!desk.shown("pb_results"));
    QVERIFY(desk.runTrial());
    QVERIFY(desk.shown("pb_results"));
}

void tst_Test4Script::theNumberOfTheTestCanBeEditedAfterATraining()
{
    MemoryDesk desk;
    desk.go({.training = true, .parameters = true});
    train(desk);
    desk.type("le_number", QStringLiteral("2"));
    desk.click("pb_go");
    QVERIFY(desk.runTrial());
    QVERIFY(!desk.shown("pb_results"));
    QVERIFY(desk.runTrial());
    QVERIFY(desk.shown("pb_results"));
}

void tst_Test4Script::aStruckTrainingTrialMakesTheBlockLonger_data()
{
    QTest::addColumn<int>("before"); // valid trials before those that are struck
    QTest::addColumn<int>("struck");
    QTest::newRow("the first") << 0 << 1;
    QTest::newRow("the second") << 1 << 1;
    QTest::newRow("the third") << 2 << 1;
    QTest::newRow("the first twice") << 0 << 2;
    QTest::newRow("the third three times") << 2 << 3;
}

void tst_Test4Script::aStruckTrainingTrialMakesTheBlockLonger()
{
    QFETCH(const int, before);
    QFETCH(const int, struck);
    MemoryDesk desk;
    const QList<QByteArray> untouched = files(desk);
    desk.go({.training = true, .parameters = true});
    desk.click("pb_go");
    QVERIFY(desk.runTrials(before));
    for (int trial = 1; trial <= struck; ++trial) {
        QVERIFY(desk.runToQuestion().size() >= 2);
        desk.key(Qt::Key_E);
        QCOMPARE(desk.mode(), QStringLiteral("ERROR"));
        QVERIFY(desk.shown("pb_continue"));
        // It takes back the rank of a valid trial.
        QCOMPARE(desk.text("le_no"), QString::number(before - trial + 1));
    }
    for (int trial = before - struck; trial < 3; ++trial) {
        QVERIFY(!desk.shown("pb_go"));
        QVERIFY(desk.runTrial());
    }
    QVERIFY(desk.shown("pb_go"));
    QCOMPARE(desk.text("le_number"), QStringLiteral("30"));
    QCOMPARE(files(desk), untouched);
}

void tst_Test4Script::theErrorsOfATrainingDoNotCount()
{
    MemoryDesk desk;
    desk.go({.training = true, .parameters = true});
    desk.click("pb_go");
    for (int trial = 0; trial < 2; ++trial) {
        QVERIFY(desk.runToQuestion().size() >= 2);
        desk.key(Qt::Key_E);
    }
    QVERIFY(desk.runTrials(5, 400));
    desk.type("le_number", QStringLiteral("6")); // a short test
    desk.click("pb_go");
    QStringList loads;
    for (int trial = 1; trial <= 6; ++trial) {
        QVERIFY(desk.runTrial());
        const QStringList row = desk.rows().constLast();
        QCOMPARE(row[RankTask], QString::number(trial));
        loads.append(row[Subtask]);
    }
    loads.sort();
    QCOMPARE(loads.join(u' '), QStringLiteral("0 1 2 3 4 5")); // drawn anew for the test
    QVERIFY(desk.shown("pb_results"));
    const auto scores = desk.rows("Results/results_T4.csv");
    QCOMPARE(scores.size(), 1);
    // Identity of five, task, session, date, time, duration, trials, and the scores.
    QCOMPARE(scores[0][10], QStringLiteral("6"));
    QCOMPARE(scores[0][11].toDouble(), 1.0); // none of the training's distances is among them
    QCOMPARE(scores[0].constLast().toDouble(), 0.0);
}

void tst_Test4Script::aPauseInATrainingWritesNothing()
{
    MemoryDesk desk;
    const QList<QByteArray> before = files(desk);
    desk.go({.training = true, .parameters = true});
    desk.click("pb_go");
    QVERIFY(desk.reach(4));
    desk.key(Qt::Key_P);
    QCOMPARE(desk.mode(), QStringLiteral("PAUSE"));
    QVERIFY(desk.shown("pb_continue"));
    QCOMPARE(desk.text("le_no"), QStringLiteral("1"));
    desk.click("pb_continue");
    QCOMPARE(desk.mode(), QString());
    QCOMPARE(desk.task.stage(), 1);
    for (int trial = 0; trial < 3; ++trial) {
        QVERIFY(!desk.shown("pb_go"));
        QVERIFY(desk.runTrial());
    }
    QVERIFY(desk.shown("pb_go"));
    QCOMPARE(files(desk), before);
}

void tst_Test4Script::theKeysDoNothingBetweenTrainingAndTest()
{
    MemoryDesk desk;
    desk.go({.training = true, .parameters = true});
    train(desk);
    for (const Qt::Key key : {Qt::Key_E, Qt::Key_P, Qt::Key_C}) {
        desk.key(key);
        QTest::keyClick(desk.widget<QLineEdit>("le_no"), key);
        desk.clickAt(desk.centre() + QPoint(200, 0));
        desk.time.advance(10'000);
    }
    QVERIFY(desk.shown("pb_go"));
    QVERIFY(!desk.shown("pb_continue"));
    QVERIFY(desk.nothingIsShown());
    QCOMPARE(desk.mode(), QString());
    QCOMPARE(desk.task.stage(), 0);
    QVERIFY(desk.rows().isEmpty());
}

void tst_Test4Script::theGuidesCanBeShownInATraining()
{
    MemoryDesk desk;
    desk.go({.training = true});
    desk.key(Qt::Key_S);
    QVERIFY(desk.guidesAreShown());
    train(desk);
    QVERIFY(desk.guidesAreShown()); // and stay for the test
    desk.key(Qt::Key_S);
    QVERIFY(desk.nothingIsShown());
}

void tst_Test4Script::aLogThatCannotBeOpenedAfterATrainingIsTold()
{
    MemoryDesk desk;
    desk.go({.training = true});
    desk.click("pb_go");
    QVERIFY(desk.runTrials(2));
    desk.root.block(trialLog);
    QVERIFY(desk.boxes.take().isEmpty());
    QVERIFY(desk.runTrial());
    const auto messages = desk.boxes.take();
    QCOMPARE(messages.size(), 1);
    QCOMPARE(messages[0].title, QStringLiteral("Error"));
    QVERIFY(messages[0].text.startsWith(QStringLiteral("Failed to open output.csv\n")));
    QVERIFY(!desk.task.isRunning());
    QVERIFY(!sessionStore().escapeSeq);
    QCOMPARE(desk.task.styleSheet(), QStringLiteral("background-color:rgb(0, 0, 0)"));
}

void tst_Test4Script::aPauseInTheInstructionPutsTheChainUnderIt_data()
{
    addSteps();
}

void tst_Test4Script::aPauseInTheInstructionPutsTheChainUnderIt()
{
    QFETCH(const int, presses);
    MemoryDesk desk;
    const QList<QByteArray> before = files(desk);
    instruct(desk, presses, true);
    const QPoint firstMarker = seenAt(desk, desk.firstMarker);
    const QPoint lastMarker = seenAt(desk, desk.lastMarker);
    const QString told = desk.label("lbl_localisation");
    desk.key(Qt::Key_P);
    QCOMPARE(desk.mode(), QStringLiteral("PAUSE"));
    QVERIFY(desk.cross->isVisible());
    QVERIFY(!desk.first->isVisible() && !desk.last->isVisible());
    QVERIFY(desk.shown("pb_continue") && desk.shown("pb_next"));
    // The rest of the step stays where it is.
    QCOMPARE(seenAt(desk, desk.firstMarker), firstMarker);
    QCOMPARE(seenAt(desk, desk.lastMarker), lastMarker);
    QCOMPARE(desk.label("lbl_localisation"), told);

    desk.click("pb_continue");
    QCOMPARE(desk.task.stage(), 1);
    QCOMPARE(desk.mode(), QString());
    QVERIFY(desk.runTrial());
    QVERIFY(desk.shown("pb_continue"));
    QCOMPARE(desk.text("le_no"), QStringLiteral("2"));
    QCOMPARE(files(desk), before); // nothing of it is logged

    for (int press = presses; press < steps; ++press) // the instruction goes on where it was
        desk.click("pb_next");
    QCOMPARE(desk.mode(), QStringLiteral("TRAINING"));
    QVERIFY(desk.shown("pb_go"));
    desk.key(Qt::Key_Escape);
    QCOMPARE(files(desk), before);
}

void tst_Test4Script::anErrorKeyDoesNothingInTheInstruction()
{
    MemoryDesk desk;
    instruct(desk, 0);
    for (int press = 0; press < steps; ++press) {
        for (const Qt::Key key : {Qt::Key_E, Qt::Key_Left, Qt::Key_Right, Qt::Key_Up})
            desk.key(key);
        QVERIFY(!desk.shown("pb_continue"));
        QCOMPARE(desk.mode(), QStringLiteral("INSTRUCTIONS"));
        QCOMPARE(desk.text("le_no"), QStringLiteral("1"));
        desk.click("pb_next");
    }
    QVERIFY(!desk.task.isRunning());
}

void tst_Test4Script::escapeInTheInstructionLeavesNothing_data()
{
    addSteps();
}

void tst_Test4Script::escapeInTheInstructionLeavesNothing()
{
    QFETCH(const int, presses);
    MemoryDesk desk;
    const QList<QByteArray> before = files(desk);
    instruct(desk, presses);
    desk.key(Qt::Key_S);
    desk.key(Qt::Key_Escape);
    QVERIFY(!desk.task.isRunning());
    QVERIFY(sessionStore().escapeSeq);
    QCOMPARE(files(desk), before);

    instruct(desk, 0); // the next run begins with the title
    QVERIFY(desk.nothingIsShown());
    QCOMPARE(desk.instruction(), QStringLiteral("Memory"));
    desk.click("pb_next");
    QCOMPARE(seenAt(desk, desk.first), firstPlace);
    QCOMPARE(desk.label("lbl_localisation"), QStringLiteral("First localisation to remember"));
}

void tst_Test4Script::escapeInATrainingLeavesNothing_data()
{
    QTest::addColumn<int>("stage");
    QTest::newRow("before its block") << 0;
    for (int stage = 1; stage <= 5; ++stage)
        QTest::addRow("in link %d", stage) << stage;
    QTest::newRow("before a Continue") << 6;
}

void tst_Test4Script::escapeInATrainingLeavesNothing()
{
    QFETCH(const int, stage);
    MemoryDesk desk;
    const QList<QByteArray> before = files(desk);
    desk.go({.training = true});
    if (stage > 0) {
        desk.click("pb_go");
        const QList<QPoint> places = stage < 5 ? QList<QPoint>() : desk.runToQuestion();
        if (stage < 5)
            QVERIFY(desk.reach(stage));
        else
            desk.answer(places.constLast(), places.constFirst());
    }
    if (stage == 6)
        QVERIFY(desk.finishTrial());
    QCOMPARE(desk.task.stage(), stage % 6);
    desk.key(Qt::Key_Escape);
    QVERIFY(!desk.task.isRunning());
    QVERIFY(sessionStore().escapeSeq);
    desk.time.advance(60'000);
    QCOMPARE(desk.task.stage(), 0);
    QCOMPARE(files(desk), before);
}

QTEST_MAIN(tst_Test4Script)
#include "tst_Test4Script.moc"
