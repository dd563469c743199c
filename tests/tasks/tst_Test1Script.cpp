#include "VisionDesk.h"

#include <QSet>
#include <QSignalSpy>

using namespace column;

/// Instruction and training: what is shown in which order, what the patient may try, and what a
/// block of training leaves to the test.
class tst_Test1Script : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theInstructionOfAllThreeBeginsWithItsOwnTitle();
    void theFiveKindsAreShownInARowWithTheirNames();
    void theCentralDemonstrationShowsAPairEveryTwoSeconds();
    void aCentralExampleLastsASecond();
    void aCentralExampleIsFollowedByAnother_data();
    void aCentralExampleIsFollowedByAnother();
    void tenCentralExamplesShowEachPairOnce();
    void thePeripheralDemonstrationTurnsOneTriangleAfterTheOther();
    void aPeripheralExampleLastsASecond();
    void aPeripheralExampleIsFollowedByAnother_data();
    void aPeripheralExampleIsFollowedByAnother();
    void sixPeripheralExamplesTurnEachTriangleOnce();
    void theDualDemonstrationShowsBothEveryTwoSeconds();
    void aDualExampleLastsTwoSeconds();
    void aDualExampleNeedsBothAnswers_data();
    void aDualExampleNeedsBothAnswers();
    void dualExamplesGoThroughBothShuffles();
    void anExampleMayBeLeftWhileItIsShown_data();
    void anExampleMayBeLeftWhileItIsShown();
    void anInstructionAloneEndsWithItsScript_data();
    void anInstructionAloneEndsWithItsScript();
    void theScriptGoesOnByTheKeyC();
    void nothingIsJudgedOrWrittenInTheScript();
    void theAssessorsKeysDoNothingInTheScript();
    void escapeEndsTheScriptAnywhere();
    void aRunWithTrainingGoesItsWayIntoTheTest_data();
    void aRunWithTrainingGoesItsWayIntoTheTest();
    void aBlockHasTenTrials();
    void aTrainingTrialSaysSoButUnderTheMask();
    void theLadderIsStepped_data();
    void theLadderIsStepped();
    void theThresholdsOfATrainingGoIntoTheTest();
    void eachSubtaskHasItsOwnLadder();
    void aTrainingWithoutAStepDownIsRefused_data();
    void aTrainingWithoutAStepDownIsRefused();
    void aRefusedTrainingMayBeTakenAgain();
    void aPassedBlockBeforeARefusedOneIsNotKept();
    void aBrokenTrainingKeepsOnlyWhatWasPassed_data();
    void aBrokenTrainingKeepsOnlyWhatWasPassed();
    void onceTheTrainingIsPassedEveryExposureIsKept();
    void theNumberOfABlockMayBeChanged();
    void aLogThatCannotBeOpenedAfterATrainingIsTold();
};

namespace {
constexpr QLatin1String visual("Visual\nrecognition");
constexpr QLatin1String central("Central\nvision");
constexpr QLatin1String peripheral("Peripheral\nvision");
constexpr QLatin1String dual("Dual task");
constexpr QLatin1String example("Example");
constexpr QLatin1String instructions("INSTRUCTIONS");
constexpr QLatin1String training("TRAINING");
constexpr char passed[] = "1000000000"; // right and wrong answers of a block

/// What a pair shows: of the two numbers of an identical one nobody can tell which it is.
int seen(int number)
{
    return number == 5 ? 0 : number;
}

void press(VisionDesk &desk, int times)
{
    for (int i = 0; i < times; ++i)
        desk.click("pb_next");
}

/// Goes on until the assessor can; false if it takes more than five seconds.
bool waitForNext(VisionDesk &desk)
{
    for (int ms = 0; ms < 5000 && !desk.shown("pb_next"); ++ms)
        desk.time.advance(1);
    return desk.shown("pb_next");
}

/// The instruction of a single part, up to the first example on the screen.
void goToExample(VisionDesk &desk, int mode)
{
    desk.go({.mode = mode, .instruction = true});
    press(desk, mode == 1 ? 4 : 3);
    desk.look();
}

/// From an example on the screen to its answer buttons.
void passExample(VisionDesk &desk, int mode)
{
    desk.time.advance(mode == 3 ? 2200 : 1200);
}

/// The titles from here to a training, or to the end.
QStringList walkScript(VisionDesk &desk)
{
    QStringList titles;
    while (desk.task.isRunning() && desk.mode() != training && waitForNext(desk)) {
        if (!desk.instruction().isEmpty())
            titles.append(desk.instruction());
        desk.click("pb_next");
    }
    return titles;
}

/// A block, "1" for a right and "0" for a wrong answer.
bool train(VisionDesk &desk, const char *answers)
{
    desk.click("pb_go");
    for (const char *answer = answers; *answer != '\0'; ++answer) {
        if (!desk.runTrial(*answer == '1'))
            return false;
    }
    return true;
}

QStringList exposures(VisionDesk &desk)
{
    return {desk.text("le_timer02_S1"), desk.text("le_timer02_S2"), desk.text("le_timer02_S3")};
}

constexpr std::array kindLabels{"lbl_i_identical", "lbl_i_shape", "lbl_i_contrast",
                                "lbl_i_orientation", "lbl_i_size"};
} // namespace

void tst_Test1Script::theInstructionOfAllThreeBeginsWithItsOwnTitle()
{
    VisionDesk desk;
    desk.go({.instruction = true});
    QCOMPARE(desk.instruction(), visual);
    QCOMPARE(desk.mode(), instructions);
    QVERIFY(desk.shown("pb_next"));
    QCOMPARE(desk.widget("pb_next")->geometry().bottomRight() + QPoint(1, 1),
             desk.centre() + QPoint(512, 384));
    press(desk, 1);
    QCOMPARE(desk.instruction(), central);
    QCOMPARE(desk.mode(), instructions);
    QVERIFY(desk.nothingIsShown());
}

void tst_Test1Script::theFiveKindsAreShownInARowWithTheirNames()
{
    VisionDesk desk;
    desk.go({.mode = 1, .instruction = true});
    QCOMPARE(desk.instruction(), central);
    press(desk, 1);
    QCOMPARE(desk.instruction(), QString());
    QCOMPARE(desk.mode(), instructions);
    const QStringList names{QStringLiteral("Identical"), QStringLiteral("Shape"),
                            QStringLiteral("Contrast"), QStringLiteral("Orientation"),
                            QStringLiteral("Size")};
    const std::array sizes{QSize(56, 62), QSize(56, 62), QSize(56, 62), QSize(62, 56),
                           QSize(51, 56)};
    std::array<QRect, 5> pairPlaces;
    for (std::size_t kind = 0; kind < 5; ++kind) {
        const QPoint point = desk.centre() + QPoint((int(kind) - 2) * 100, 0);
        QVERIFY(desk.lefts.at(kind)->isVisible());
        QVERIFY(!desk.rights.at(kind)->isVisible());
        QCOMPARE(desk.lefts.at(kind)->geometry(), QRect(point - QPoint(28, 82), sizes.at(kind)));
        const auto *label = desk.widget<QLabel>(kindLabels.at(kind));
        QCOMPARE(desk.label(kindLabels.at(kind)), names[int(kind)]);
        QCOMPARE(label->y(), point.y());
        QCOMPARE(label->x() + label->width() / 2, point.x());
    }

    press(desk, 1);
    for (std::size_t kind = 0; kind < 5; ++kind) {
        QVERIFY(!desk.shown(kindLabels.at(kind)));
        pairPlaces.at(kind) = desk.lefts.at(kind)->geometry();
    }
    const QPoint inner = desk.centre() - QPoint(5, 0); // half the gap
    const QRect standard(inner - QPoint(56, 31), QSize(56, 62));
    QCOMPARE(pairPlaces[0], standard);
    QCOMPARE(pairPlaces[1], standard);
    QCOMPARE(pairPlaces[2], standard);
    QCOMPARE(pairPlaces[3], QRect(inner - QPoint(62, 28), QSize(62, 56)));
    QCOMPARE(pairPlaces[4], QRect(inner - QPoint(51, 28), QSize(51, 56)));
}

void tst_Test1Script::theCentralDemonstrationShowsAPairEveryTwoSeconds()
{
    VisionDesk desk;
    desk.go({.mode = 1, .instruction = true});
    press(desk, 2);
    for (int pair = 0; pair < 23; ++pair) {
        QCOMPARE(desk.shownFigure(), seen(pair % 10)); // in plain order
        QCOMPARE(desk.shownTarget(), -1);
        QVERIFY(!desk.cross->isVisible());
        QVERIFY(desk.shown("pb_next"));
        desk.time.advance(1999);
        QCOMPARE(desk.shownFigure(), seen(pair % 10));
        desk.time.advance(1);
    }
    press(desk, 1); // and it stops
    QCOMPARE(desk.instruction(), example);
    for (int seconds = 0; seconds < 10; ++seconds) {
        QVERIFY(desk.nothingIsShown());
        desk.time.advance(1000);
    }
    QCOMPARE(desk.instruction(), example);
}

void tst_Test1Script::aCentralExampleLastsASecond()
{
    VisionDesk desk;
    goToExample(desk, 1);
    QCOMPARE(desk.instruction(), QString());
    QCOMPARE(desk.mode(), instructions);
    QVERIFY(!desk.shown("pb_next"));
    QVERIFY(desk.shownFigure() >= 0);
    QCOMPARE(desk.shownTarget(), -1);
    desk.time.advance(999);
    QVERIFY(desk.shownFigure() >= 0 && !desk.noise->isVisible());

    desk.time.advance(1);
    QVERIFY(desk.shownFigure() == -1 && desk.noise->isVisible());
    QCOMPARE(desk.mode(), QString());
    QVERIFY(!desk.shown("pb_next"));
    desk.time.advance(199);
    QVERIFY(desk.noise->isVisible() && desk.shownFigureButtons() == 0);

    desk.time.advance(1);
    QVERIFY(!desk.noise->isVisible());
    QCOMPARE(desk.mode(), instructions);
    QVERIFY(desk.shown("pb_next"));
    QCOMPARE(desk.shownFigureButtons(), 5);
    QCOMPARE(desk.shownPositionButtons(), 0);
    QCOMPARE(desk.task.cursor().shape(), Qt::ArrowCursor);
    desk.time.advance(600'000); // as long as the patient wants
    QCOMPARE(desk.shownFigureButtons(), 5);
}

void tst_Test1Script::aCentralExampleIsFollowedByAnother_data()
{
    QTest::addColumn<bool>("right");
    QTest::newRow("right") << true;
    QTest::newRow("wrong") << false;
}

void tst_Test1Script::aCentralExampleIsFollowedByAnother()
{
    QFETCH(const bool, right);
    VisionDesk desk;
    goToExample(desk, 1);
    for (int i = 0; i < 25; ++i) {
        QVERIFY(desk.shownFigure() >= 0);
        desk.look();
        passExample(desk, 1);
        QCOMPARE(desk.shownFigureButtons(), 5);
        desk.answerFigure(right);
        QCOMPARE(desk.shownFigureButtons(), 0);
        QCOMPARE(desk.shownPositionButtons(), 0);
        QCOMPARE(desk.mode(), instructions);
    }
}

void tst_Test1Script::tenCentralExamplesShowEachPairOnce()
{
    VisionDesk desk;
    goToExample(desk, 1);
    QSet<QList<int>> orders;
    for (int pass = 0; pass < 4; ++pass) {
        QList<int> shown;
        for (int i = 0; i < 10; ++i) {
            desk.look();
            shown.append(desk.seenFigure);
            passExample(desk, 1);
            desk.answerFigure(true);
        }
        orders.insert(shown);
        std::ranges::sort(shown);
        QCOMPARE(shown, QList<int>({0, 0, 1, 2, 3, 4, 6, 7, 8, 9}));
    }
    QVERIFY(orders.size() > 1); // drawn anew
}

void tst_Test1Script::thePeripheralDemonstrationTurnsOneTriangleAfterTheOther()
{
    VisionDesk desk;
    desk.go({.mode = 2, .instruction = true});
    QCOMPARE(desk.instruction(), peripheral);
    QCOMPARE(desk.mode(), instructions);
    QVERIFY(desk.nothingIsShown());
    press(desk, 1);
    QCOMPARE(desk.instruction(), QString());
    for (int turn = 0; turn < 14; ++turn) {
        QCOMPARE(desk.shownTarget(), turn % 6);
        QCOMPARE(desk.shownFigure(), -1);
        QVERIFY(desk.cross->isVisible());
        desk.time.advance(1999);
        QCOMPARE(desk.shownTarget(), turn % 6);
        desk.time.advance(1);
    }
    press(desk, 1); // and it stops
    QCOMPARE(desk.instruction(), example);
    for (int seconds = 0; seconds < 10; ++seconds) {
        QVERIFY(desk.nothingIsShown());
        desk.time.advance(1000);
    }
}

void tst_Test1Script::aPeripheralExampleLastsASecond()
{
    VisionDesk desk;
    goToExample(desk, 2);
    QCOMPARE(desk.instruction(), QString());
    QCOMPARE(desk.mode(), instructions);
    QVERIFY(!desk.shown("pb_next"));
    QVERIFY(!desk.cross->isVisible());
    QVERIFY(desk.shownTarget() >= 0);
    QCOMPARE(desk.shownFigure(), -1);
    desk.time.advance(999);
    QVERIFY(desk.shownTarget() >= 0 && !desk.noise->isVisible());

    desk.time.advance(1);
    QVERIFY(desk.shownTarget() == -1 && desk.noise->isVisible());
    QCOMPARE(desk.mode(), QString());
    desk.time.advance(199);
    QVERIFY(desk.noise->isVisible() && desk.shownPositionButtons() == 0);

    desk.time.advance(1);
    QVERIFY(!desk.noise->isVisible());
    QCOMPARE(desk.mode(), instructions);
    QVERIFY(desk.shown("pb_next"));
    QCOMPARE(desk.shownPositionButtons(), 6);
    QCOMPARE(desk.shownFigureButtons(), 0);
}

void tst_Test1Script::aPeripheralExampleIsFollowedByAnother_data()
{
    QTest::addColumn<bool>("right");
    QTest::newRow("right") << true;
    QTest::newRow("wrong") << false;
}

void tst_Test1Script::aPeripheralExampleIsFollowedByAnother()
{
    QFETCH(const bool, right);
    VisionDesk desk;
    goToExample(desk, 2);
    for (int i = 0; i < 15; ++i) {
        QVERIFY(desk.shownTarget() >= 0);
        QVERIFY(!desk.shown("pb_next"));
        desk.look();
        passExample(desk, 2);
        QCOMPARE(desk.shownPositionButtons(), 6);
        QVERIFY(desk.shown("pb_next"));
        desk.answerPosition(right);
        QCOMPARE(desk.shownPositionButtons(), 0);
    }
}

void tst_Test1Script::sixPeripheralExamplesTurnEachTriangleOnce()
{
    VisionDesk desk;
    goToExample(desk, 2);
    QSet<QList<int>> orders;
    for (int pass = 0; pass < 4; ++pass) {
        QList<int> shown;
        for (int i = 0; i < 6; ++i) {
            desk.look();
            shown.append(desk.seenTarget);
            passExample(desk, 2);
            desk.answerPosition(true);
        }
        orders.insert(shown);
        std::ranges::sort(shown);
        QCOMPARE(shown, QList<int>({0, 1, 2, 3, 4, 5}));
    }
    QVERIFY(orders.size() > 1);
}

void tst_Test1Script::theDualDemonstrationShowsBothEveryTwoSeconds()
{
    VisionDesk desk;
    desk.go({.mode = 3, .instruction = true});
    QCOMPARE(desk.instruction(), dual);
    QCOMPARE(desk.mode(), instructions);
    QVERIFY(desk.nothingIsShown());
    press(desk, 1);
    QCOMPARE(desk.instruction(), QString());
    for (int turn = 0; turn < 32; ++turn) {
        QCOMPARE(desk.shownFigure(), seen(turn % 10));
        QCOMPARE(desk.shownTarget(), turn % 6);
        QVERIFY(!desk.cross->isVisible());
        desk.time.advance(1999);
        QCOMPARE(desk.shownTarget(), turn % 6);
        desk.time.advance(1);
    }
    press(desk, 1); // and it stops
    QCOMPARE(desk.instruction(), example);
    for (int seconds = 0; seconds < 10; ++seconds) {
        QVERIFY(desk.nothingIsShown());
        desk.time.advance(1000);
    }
}

void tst_Test1Script::aDualExampleLastsTwoSeconds()
{
    VisionDesk desk;
    goToExample(desk, 3);
    QCOMPARE(desk.instruction(), QString());
    QVERIFY(!desk.shown("pb_next"));
    QVERIFY(desk.shownFigure() >= 0 && desk.shownTarget() >= 0);
    QVERIFY(!desk.cross->isVisible());
    desk.time.advance(1999);
    QVERIFY(desk.shownFigure() >= 0 && desk.shownTarget() >= 0);

    desk.time.advance(1);
    QVERIFY(desk.shownFigure() == -1 && desk.shownTarget() == -1);
    QVERIFY(desk.noise->isVisible());
    QCOMPARE(desk.mode(), QString());
    desk.time.advance(199);
    QVERIFY(desk.noise->isVisible());
    QVERIFY(desk.shownFigureButtons() == 0 && desk.shownPositionButtons() == 0);

    desk.time.advance(1);
    QVERIFY(!desk.noise->isVisible());
    QCOMPARE(desk.mode(), instructions);
    QVERIFY(desk.shown("pb_next"));
    QCOMPARE(desk.shownFigureButtons(), 5);
    QCOMPARE(desk.shownPositionButtons(), 6);
}

void tst_Test1Script::aDualExampleNeedsBothAnswers_data()
{
    QTest::addColumn<bool>("figureFirst");
    QTest::newRow("figure first") << true;
    QTest::newRow("position first") << false;
}

void tst_Test1Script::aDualExampleNeedsBothAnswers()
{
    QFETCH(const bool, figureFirst);
    VisionDesk desk;
    goToExample(desk, 3);
    for (int i = 0; i < 12; ++i) {
        passExample(desk, 3);
        QVERIFY(desk.shown("pb_next"));
        figureFirst ? desk.answerFigure(i % 2 == 0) : desk.answerPosition(i % 2 == 0);
        QCOMPARE(desk.shownFigureButtons(), figureFirst ? 0 : 5);
        QCOMPARE(desk.shownPositionButtons(), figureFirst ? 6 : 0);
        QVERIFY(!desk.shown("pb_next"));
        QVERIFY(desk.shownFigure() == -1 && desk.shownTarget() == -1);
        desk.time.advance(60'000);
        QVERIFY(desk.shownFigure() == -1 && desk.shownTarget() == -1);

        figureFirst ? desk.answerPosition(false) : desk.answerFigure(false);
        QVERIFY(desk.shownFigureButtons() == 0 && desk.shownPositionButtons() == 0);
        QVERIFY(desk.shownFigure() >= 0 && desk.shownTarget() >= 0);
        QVERIFY(!desk.shown("pb_next"));
        desk.look();
    }
}

void tst_Test1Script::dualExamplesGoThroughBothShuffles()
{
    VisionDesk desk;
    goToExample(desk, 3);
    QList<int> figures;
    QList<int> targets;
    for (int i = 0; i < 30; ++i) {
        desk.look();
        figures.append(desk.seenFigure);
        targets.append(desk.seenTarget);
        passExample(desk, 3);
        desk.answer(true);
    }
    for (int from = 0; from < 30; from += 10) {
        QList<int> ten = figures.mid(from, 10);
        std::ranges::sort(ten);
        QCOMPARE(ten, QList<int>({0, 0, 1, 2, 3, 4, 6, 7, 8, 9}));
    }
    for (int from = 0; from < 30; from += 6) {
        QList<int> six = targets.mid(from, 6);
        std::ranges::sort(six);
        QCOMPARE(six, QList<int>({0, 1, 2, 3, 4, 5}));
    }
}

void tst_Test1Script::anExampleMayBeLeftWhileItIsShown_data()
{
    QTest::addColumn<int>("later");
    QTest::newRow("at once") << 0;
    QTest::newRow("before the mask") << 999;
    QTest::newRow("under the mask") << 1100;
}

void tst_Test1Script::anExampleMayBeLeftWhileItIsShown()
{
    QFETCH(const int, later);
    VisionDesk desk;
    desk.go({.instruction = true});
    press(desk, 5);
    desk.look();
    passExample(desk, 1);
    desk.answerFigure(true);
    QVERIFY(desk.shown("pb_next")); // beside the central examples from the first one on
    desk.time.advance(later);
    press(desk, 1);
    QCOMPARE(desk.instruction(), peripheral);
    QCOMPARE(desk.mode(), instructions);
    for (int seconds = 0; seconds < 5; ++seconds) {
        QVERIFY(desk.nothingIsShown());
        desk.time.advance(1000);
    }
    press(desk, 1);
    QCOMPARE(desk.shownTarget(), 0);
}

void tst_Test1Script::anInstructionAloneEndsWithItsScript_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<int>("presses");
    QTest::addColumn<QStringList>("titles");
    QTest::newRow("all three") << 0 << 14 << QStringList{visual,  central, example, peripheral,
                                                         example, dual,    example};
    QTest::newRow("central") << 1 << 5 << QStringList{central, example};
    QTest::newRow("peripheral") << 2 << 4 << QStringList{peripheral, example};
    QTest::newRow("dual") << 3 << 4 << QStringList{dual, example};
}

void tst_Test1Script::anInstructionAloneEndsWithItsScript()
{
    QFETCH(const int, mode);
    QFETCH(const int, presses);
    VisionDesk desk;
    const QByteArray log = desk.root.bytes(QStringLiteral("Results/output.csv"));
    desk.go({.mode = mode, .instruction = true});
    QTEST(walkScript(desk), "titles");
    QVERIFY(!desk.task.isRunning());

    sessionStore().escapeSeq = false;
    desk.go({.mode = mode, .instruction = true});
    for (int press = 0; press < presses; ++press) {
        QVERIFY(desk.task.isRunning());
        QVERIFY(waitForNext(desk));
        desk.click("pb_next");
    }
    QVERIFY(!desk.task.isRunning());
    QVERIFY(sessionStore().escapeSeq);
    QVERIFY(!desk.shown("pb_results"));
    desk.time.advance(60'000);
    QVERIFY(!desk.task.isRunning());
    QCOMPARE(desk.root.bytes(QStringLiteral("Results/output.csv")), log);
    QVERIFY(!desk.root.exists(QStringLiteral("Results/valid-output.csv")));
    QCOMPARE(desk.thresholds(), QStringLiteral("283;367;483"));
}

void tst_Test1Script::theScriptGoesOnByTheKeyC()
{
    VisionDesk desk;
    desk.go({.mode = 1, .instruction = true});
    QCoreApplication::processEvents(); // the window becomes the active one
    const auto *next = desk.widget("pb_next");
    const QSignalSpy clicked(next, &QPushButton::clicked);
    for (int press = 1; press <= 4; ++press) {
        desk.key(Qt::Key_C);
        QCOMPARE(clicked.size(), press); // at once
        QVERIFY(!next->isDown());
    }
    QVERIFY(desk.shownFigure() >= 0);
    desk.key(Qt::Key_C); // not in an example
    QVERIFY(!next->isDown());
    desk.time.advance(1100);
    desk.key(Qt::Key_C); // and not under its mask
    QVERIFY(!next->isDown());
    QVERIFY(desk.noise->isVisible());
    desk.time.advance(100);
    desk.key(Qt::Key_C);
    QVERIFY(!desk.task.isRunning());
    QVERIFY(sessionStore().escapeSeq);
    QCOMPARE(clicked.size(), 5);
}

void tst_Test1Script::nothingIsJudgedOrWrittenInTheScript()
{
    VisionDesk desk;
    const QByteArray log = desk.root.bytes(QStringLiteral("Results/output.csv"));
    for (const int mode : {1, 2, 3}) {
        goToExample(desk, mode);
        const QStringList before = exposures(desk);
        for (int i = 0; i < 5; ++i) {
            passExample(desk, mode);
            desk.answer(i % 2 == 0);
            desk.look();
        }
        QCOMPARE(desk.text("le_result"), QString());
        QCOMPARE(desk.text("le_no"), QStringLiteral("1"));
        QCOMPARE(exposures(desk), before);
        QCOMPARE(desk.task.stage(), 0);
        QVERIFY(!desk.cross->isVisible());
        desk.key(Qt::Key_Escape);
    }
    QCOMPARE(desk.root.bytes(QStringLiteral("Results/output.csv")), log);
    QCOMPARE(desk.thresholds(), QStringLiteral("283;367;483"));
}

void tst_Test1Script::theAssessorsKeysDoNothingInTheScript()
{
    VisionDesk desk;
    goToExample(desk, 3);
    for (int moment = 0; moment < 3; ++moment) {
        desk.key(Qt::Key_P);
        desk.key(Qt::Key_E);
        desk.key(Qt::Key_Space);
        QVERIFY(!desk.shown("pb_continue"));
        desk.time.advance(1100); // the example, its mask, its buttons
    }
    QCOMPARE(desk.shownFigureButtons(), 5);
    QCOMPARE(desk.shownPositionButtons(), 6);
    QCOMPARE(desk.mode(), instructions);
}

void tst_Test1Script::escapeEndsTheScriptAnywhere()
{
    VisionDesk desk;
    const QByteArray log = desk.root.bytes(QStringLiteral("Results/output.csv"));
    for (int steps = 0; steps < 14; ++steps) {
        sessionStore().escapeSeq = false;
        desk.go({.instruction = true});
        for (int step = 0; step < steps; ++step) {
            QVERIFY(waitForNext(desk));
            desk.click("pb_next");
        }
        desk.key(Qt::Key_Escape);
        QVERIFY(!desk.task.isRunning());
        QVERIFY(sessionStore().escapeSeq);
        desk.time.advance(60'000);
        QVERIFY(!desk.task.isRunning());
        QVERIFY(!desk.cross->isVisible());
    }
    QCOMPARE(desk.root.bytes(QStringLiteral("Results/output.csv")), log);
    QCOMPARE(desk.thresholds(), QStringLiteral("283;367;483"));
}

void tst_Test1Script::aRunWithTrainingGoesItsWayIntoTheTest_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<bool>("instruction");
    for (int mode = 0; mode < 4; ++mode) {
        QTest::addRow("mode %d, training", mode) << mode << false;
        QTest::addRow("mode %d, both", mode) << mode << true;
    }
}

void tst_Test1Script::aRunWithTrainingGoesItsWayIntoTheTest()
{
    QFETCH(const int, mode);
    QFETCH(const bool, instruction);
    VisionDesk desk;
    desk.go({.mode = mode, .instruction = instruction, .training = true, .parameters = true});
    const QPoint corner = desk.centre() + QPoint(512, 384);
    const QStringList titles{central, peripheral, dual};
    for (int part = 0; part < 3; ++part) {
        if (mode != 0 && mode != part + 1)
            continue;
        if (instruction) {
            QCOMPARE(desk.mode(), instructions);
            QVERIFY(desk.nothingIsShown()); // of the block before
            QStringList script{titles[part], example};
            if (mode == 0 && part == 0)
                script.prepend(visual);
            QCOMPARE(walkScript(desk), script);
        }
        QCOMPARE(desk.mode(), training);
        QCOMPARE(desk.instruction(), titles[part]);
        QVERIFY(desk.nothingIsShown());
        QVERIFY(!desk.shown("pb_next"));
        QVERIFY(desk.shown("pb_go"));
        QCOMPARE(desk.widget("pb_go")->geometry().bottomRight() + QPoint(1, 1), corner);
        QCOMPARE(desk.task.cursor().shape(), Qt::ArrowCursor);
        QCOMPARE(desk.text("le_number"), QStringLiteral("10"));

        desk.click("pb_go");
        QCOMPARE(desk.instruction(), QString());
        QVERIFY(!desk.shown("pb_go"));
        QCOMPARE(desk.task.cursor().shape(), Qt::BlankCursor);
        for (int trial = 0; trial < 10; ++trial) {
            QCOMPARE(desk.text("le_no"), QString::number(trial + 1));
            QCOMPARE(desk.text("le_subtask"), QString::number(part + 1));
            QVERIFY(desk.runTrial(trial == 0));
        }
    }
    QCOMPARE(desk.mode(), QString());
    QCOMPARE(desk.instruction(), QString());
    QVERIFY(desk.nothingIsShown());
    QVERIFY(desk.shown("pb_go") && !desk.shown("pb_next"));
    const auto *go = desk.widget("pb_go");
    QCOMPARE(go->pos(), desk.centre() - QPoint(go->width() / 2, go->height() / 2));
    QCOMPARE(desk.task.cursor().shape(), Qt::ArrowCursor);
    QCOMPARE(desk.text("le_number"), mode == 0 ? QStringLiteral("150") : QStringLiteral("50"));
    QVERIFY(desk.rows().isEmpty());
    QVERIFY(!sessionStore().escapeSeq);

    desk.click("pb_go");
    QSet<QString> subtasks;
    for (int trial = 1; trial <= 3; ++trial) {
        QVERIFY(desk.runTrial(true));
        QCOMPARE(desk.mode(), QString());
        QCOMPARE(desk.rows().size(), trial);
        QCOMPARE(desk.rows().constLast()[RankTask], QString::number(trial));
        subtasks.insert(desk.rows().constLast()[Subtask]);
    }
    QCOMPARE(subtasks.size(), mode == 0 ? 3 : 1);
}

void tst_Test1Script::aBlockHasTenTrials()
{
    VisionDesk desk;
    desk.go({.mode = 2, .training = true});
    desk.click("pb_go");
    for (int trial = 0; trial < 9; ++trial) {
        QVERIFY(desk.runTrial(trial % 2 == 0));
        QCOMPARE(desk.task.stage(), 1);
    }
    QVERIFY(desk.runTrial(true));
    QCOMPARE(desk.task.stage(), 0);
    QVERIFY(desk.shown("pb_go"));
    desk.time.advance(60'000);
    QVERIFY(desk.shown("pb_go"));
    QVERIFY(desk.nothingIsShown());
}

void tst_Test1Script::aTrainingTrialSaysSoButUnderTheMask()
{
    VisionDesk desk;
    desk.startTest({.mode = 1, .training = true});
    for (int trial = 0; trial < 2; ++trial) {
        for (int stage = 1; stage <= 5; ++stage) {
            QVERIFY(desk.reach(stage));
            QCOMPARE(desk.mode(), stage == 3 ? QString() : training);
        }
        desk.answerRight();
        QCOMPARE(desk.mode(), training);
        QVERIFY(desk.cross->isVisible());
        QVERIFY(desk.runTrial(true));
    }
}

void tst_Test1Script::theLadderIsStepped_data()
{
    QTest::addColumn<bool>("trained"); // from 1133 ms, else from 4633 ms
    QTest::addColumn<QByteArray>("answers");
    QTest::addColumn<QString>("threshold");
    using B = QByteArray;
    // 17 33 67 133 283 567 1133 2283 4633
    QTest::newRow("the first one right") << false << B("1000000000") << u"4633"_qs;
    QTest::newRow("the ninth one right") << false << B("0000000010") << u"4633"_qs;
    QTest::newRow("the last two right") << false << B("0000000011") << u"2283"_qs;
    QTest::newRow("all right") << false << B("1111111111") << u"17"_qs;
    QTest::newRow("all right but the last") << false << B("1111111110") << u"33"_qs;
    QTest::newRow("by turns") << false << B("1010101010") << u"4633"_qs;
    QTest::newRow("half of them") << false << B("1111100000") << u"4633"_qs;
    QTest::newRow("no step down in the tenth") << false << B("1111000001") << u"4633"_qs;
    QTest::newRow("no step down, for once") << false << B("1111111001") << u"133"_qs;
    QTest::newRow("down from the middle") << true << B("1111110000") << u"283"_qs;
    QTest::newRow("a step up in the tenth") << true << B("1111111110") << u"33"_qs;
    QTest::newRow("one down, eight up") << true << B("0100000000") << u"4633"_qs;
    QTest::newRow("by turns from the middle") << true << B("1010101011") << u"567"_qs;
}

void tst_Test1Script::theLadderIsStepped()
{
    QFETCH(const bool, trained);
    QFETCH(const QByteArray, answers);
    for (const int mode : {1, 2, 3}) {
        VisionDesk desk;
        desk.writePatient(trained ? "283;283;283" : "0;0;0");
        desk.go({.mode = mode, .training = true});
        QVERIFY(train(desk, answers.constData()));
        QTEST(exposures(desk).at(mode - 1), "threshold");
        QCOMPARE(desk.widget("pb_go")->geometry().center(),
                 QRect(desk.centre() - QPoint(70, 25), QSize(140, 50)).center());
        QVERIFY(desk.shown("pb_go")); // passed
        QVERIFY(desk.boxes.take().isEmpty());
    }
}

void tst_Test1Script::theThresholdsOfATrainingGoIntoTheTest()
{
    VisionDesk desk;
    desk.writePatient("0;0;0");
    desk.go({.mode = 1, .training = true});
    QVERIFY(train(desk, "1111110011")); // down to 67, up to 283, down to 133, which stands
    desk.click("pb_go");
    QCOMPARE(exposures(desk), QStringList({u"133"_qs, u"0"_qs, u"0"_qs}));
    QVERIFY(desk.reach(2));
    desk.time.advance(132);
    QVERIFY(desk.shownFigure() >= 0);
    desk.time.advance(1);
    QCOMPARE(desk.shownFigure(), -1);
    QVERIFY(desk.runTrial(true));
    QCOMPARE(desk.rows().at(0)[Exposure], QStringLiteral("133"));
    QCOMPARE(exposures(desk).at(0),
             QStringLiteral("117")); // below 150, the first that is 133 or more
    desk.key(Qt::Key_Escape);
    QCOMPARE(desk.thresholds(), QStringLiteral("117;0;0"));
}

void tst_Test1Script::eachSubtaskHasItsOwnLadder()
{
    VisionDesk desk;
    desk.writePatient("283;0;483"); // from 1133, 4633, 1133
    desk.go({.training = true});
    QVERIFY(train(desk, "1110000111")); // 133; 2283; 567, and no further in the tenth
    QCOMPARE(exposures(desk), QStringList({u"567"_qs, u"4633"_qs, u"1133"_qs}));
    QVERIFY(train(desk, "1111111111"));
    QCOMPARE(exposures(desk), QStringList({u"567"_qs, u"17"_qs, u"1133"_qs}));
    QVERIFY(train(desk, "1000000000"));
    QCOMPARE(exposures(desk), QStringList({u"567"_qs, u"17"_qs, u"4633"_qs}));

    desk.click("pb_go");
    for (int trial = 0; trial < 3; ++trial)
        QVERIFY(desk.runTrial(true));
    QStringList shown{QString(), QString(), QString()};
    for (const QStringList &row : desk.rows())
        shown[row[Subtask].toInt() - 1] = row[Exposure];
    QCOMPARE(shown, QStringList({u"567"_qs, u"17"_qs, u"4633"_qs}));
}

void tst_Test1Script::aTrainingWithoutAStepDownIsRefused_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<QByteArray>("stored");
    QTest::addColumn<QByteArray>("answers");
    using B = QByteArray;
    for (int mode = 0; mode < 4; ++mode) {
        QTest::addRow("mode %d, all wrong", mode) << mode << B("0;0;0") << B("0000000000");
        QTest::addRow("mode %d, all wrong from 1133 ms", mode)
            << mode << B("283;367;483") << B("0000000000");
        QTest::addRow("mode %d, the tenth right", mode) << mode << B("0;0;0") << B("0000000001");
        QTest::addRow("mode %d, the tenth right from 1133 ms", mode)
            << mode << B("283;367;483") << B("0000000001");
    }
}

void tst_Test1Script::aTrainingWithoutAStepDownIsRefused()
{
    QFETCH(const int, mode);
    QFETCH(const QByteArray, stored);
    QFETCH(const QByteArray, answers);
    VisionDesk desk;
    desk.writePatient(stored);
    desk.go({.mode = mode, .training = true});
    QVERIFY(train(desk, answers.constData()));
    QCOMPARE(exposures(desk).at(std::max(mode - 1, 0)), QStringLiteral("4633"));
    const auto messages = desk.boxes.take();
    QCOMPARE(messages.size(), 1);
    QCOMPARE(messages[0].kind, messages::Kind::Warning);
    QCOMPARE(messages[0].title, QStringLiteral("Error"));
    QCOMPARE(messages[0].text, QStringLiteral("Exposure time > 4633ms\nCheck visual fields and\n"
                                              "start training over again for this subtask"));
    QVERIFY(!desk.task.isRunning());
    QCOMPARE(desk.task.styleSheet(), QStringLiteral("background-color:rgb(0, 0, 0)"));
    QVERIFY(!sessionStore().escapeSeq);
    desk.time.advance(60'000);
    QVERIFY(!desk.task.isRunning());
    QCOMPARE(desk.thresholds(), QString::fromLatin1(stored)); // as they were
    QVERIFY(desk.rows().isEmpty());
}

void tst_Test1Script::aRefusedTrainingMayBeTakenAgain()
{
    VisionDesk desk;
    desk.writePatient("0;0;0");
    desk.go({.mode = 3, .training = true});
    QVERIFY(train(desk, "0000000000"));
    QCOMPARE(desk.boxes.take().size(), 1);

    desk.go({.mode = 3, .training = true});
    QVERIFY(desk.nothingIsShown());
    QCOMPARE(desk.mode(), training);
    QCOMPARE(exposures(desk).at(2), QStringLiteral("4633"));
    QVERIFY(train(desk, "1100000000"));
    QVERIFY(desk.shown("pb_go"));
    QCOMPARE(desk.text("le_number"), QStringLiteral("50"));
}

void tst_Test1Script::aPassedBlockBeforeARefusedOneIsNotKept()
{
    VisionDesk desk;
    desk.writePatient("0;0;0");
    desk.go({.training = true});
    QVERIFY(train(desk, "1111111111"));
    QVERIFY(train(desk, "0000000000"));
    QCOMPARE(desk.boxes.take().size(), 1);
    QVERIFY(!desk.task.isRunning());
    QCOMPARE(desk.thresholds(), QStringLiteral("0;0;0"));
    QVERIFY(!sessionStore().escapeSeq);
}

void tst_Test1Script::aBrokenTrainingKeepsOnlyWhatWasPassed_data()
{
    QTest::addColumn<QByteArray>("stored");
    QTest::addColumn<int>("blocks"); // passed, down to 17 ms
    QTest::addColumn<QString>("kept");
    using B = QByteArray;
    QTest::newRow("nothing yet") << B("0;0;0") << 0 << u"0;0;0"_qs;
    QTest::newRow("central") << B("0;0;0") << 1 << u"17;0;0"_qs;
    QTest::newRow("central and peripheral") << B("0;0;0") << 2 << u"17;17;0"_qs;
    QTest::newRow("all") << B("0;0;0") << 3 << u"17;17;17"_qs;
    // What was stored makes way for the exposure of the moment.
    QTest::newRow("trained before") << B("283;367;483") << 0 << u"1133;1133;1133"_qs;
    QTest::newRow("one trained before") << B("0;367;0") << 1 << u"17;1133;0"_qs;
}

void tst_Test1Script::aBrokenTrainingKeepsOnlyWhatWasPassed()
{
    QFETCH(const QByteArray, stored);
    QFETCH(const int, blocks);
    for (const bool inTrial : {false, true}) {
        VisionDesk desk;
        desk.writePatient(stored);
        desk.go({.training = true});
        for (int block = 0; block < blocks; ++block)
            QVERIFY(train(desk, "1111111111"));
        if (inTrial) {
            desk.click("pb_go");
            QVERIFY(desk.reach(5));
        }
        desk.key(Qt::Key_Escape);
        QTEST(desk.thresholds(), "kept");
        QVERIFY(!desk.task.isRunning());
        QVERIFY(sessionStore().escapeSeq);
    }
}

void tst_Test1Script::onceTheTrainingIsPassedEveryExposureIsKept()
{
    for (const bool isPassed : {false, true}) {
        VisionDesk desk;
        desk.writePatient("0;0;0");
        desk.go({.mode = 1, .training = true, .parameters = true});
        desk.type("le_timer02_S2", QStringLiteral("500")); // of a subtask that isn't trained
        if (isPassed)
            QVERIFY(train(desk, "1111111111"));
        desk.key(Qt::Key_Escape);
        QCOMPARE(desk.thresholds(),
                 isPassed ? QStringLiteral("17;500;0") : QStringLiteral("0;0;0"));
    }
}

void tst_Test1Script::theNumberOfABlockMayBeChanged()
{
    VisionDesk desk;
    desk.go({.training = true, .parameters = true});
    desk.type("le_number", QStringLiteral("2")); // shortens this block, and only this one
    QVERIFY(train(desk, "11"));
    QCOMPARE(desk.instruction(), peripheral);
    QCOMPARE(desk.text("le_number"), QStringLiteral("10"));
    QVERIFY(train(desk, passed));
    QVERIFY(train(desk, passed));
    QCOMPARE(desk.text("le_number"), QStringLiteral("150"));
}

void tst_Test1Script::aLogThatCannotBeOpenedAfterATrainingIsTold()
{
    for (const int mode : {1, 2, 3}) {
        VisionDesk desk;
        desk.go({.mode = mode, .training = true});
        desk.root.block(QStringLiteral("Results/output.csv"));
        QVERIFY(train(desk, passed));
        const auto messages = desk.boxes.take();
        QCOMPARE(messages.size(), 1);
        QCOMPARE(messages[0].title, QStringLiteral("Error"));
        QVERIFY(messages[0].text.startsWith(QStringLiteral("Failed to open output.csv\n")));
        QVERIFY(!desk.task.isRunning());
        QVERIFY(!sessionStore().escapeSeq);
    }
}

QTEST_MAIN(tst_Test1Script)
#include "tst_Test1Script.moc"
