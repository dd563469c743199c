#include "MovementDesk.h"

#include "randomness.h"

#include <QCursor>
#include <QMap>
#include <QSet>

using namespace column;

/// One trial: what is seen, what is timed, what counts.
class tst_Test3Trial : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aTrialHasItsTimes();
    void theFirstWaitIsDrawnWithinItsSpan_data();
    void theFirstWaitIsDrawnWithinItsSpan();
    void everyLinkShowsWhatBelongsToIt();
    void theArrowComesWithTheDriftUnlessItIsDelayed();
    void thePointerIsOutOfTheWayUntilThePad();
    void theDriftGoesOnePixelAStep_data();
    void theDriftGoesOnePixelAStep();
    void theDriftStopsAtTheSpaceAndTheFieldThenRests();
    void theRightAnswerIsTheMovementThatIsSeen_data();
    void theRightAnswerIsTheMovementThatIsSeen();
    void anEarlySpaceIsIgnored_data();
    void anEarlySpaceIsIgnored();
    void aSecondSpaceIsIgnored();
    void nothingButTheSpaceIsASpace();
    void everyDirectionIsTakenByKeyAndByClick_data();
    void everyDirectionIsTakenByKeyAndByClick();
    void aTrialLeavesItsRow();
    void theRowsOfATestAreOnTheDiskAtOnce();
    void theRowBearsTheStartOfTheDrift();
    void everyOutcomeHasItsTimeItsErrorAndItsNextPatch_data();
    void everyOutcomeHasItsTimeItsErrorAndItsNextPatch();
    void theLimitOfFiveSecondsIsForTheTestOnly();
    void everyPassOfEightAsksEachPatchOnce();
    void anInvalidTrialAsksItsPatchAgainWithNewDirections();
    void thePanelFollowsTheTrials();
    void eachPatchForItselfHasNoDirectionInCommon();
    void inTheCrowdOnePatchOfEachGroupStrays();
    void againstTheCrowdTheAskedPatchIsAlone();
    void aConditionIsFixedByTheRun_data();
    void aConditionIsFixedByTheRun();
    void aBlockOfThreeHoldsEveryConditionOnce();
    void anInvalidTrialIsRepeatedInItsCondition();
    void underFixedDurationACycleLastsItsTime();
    void underFixedDurationTheSpaceHasItsLimit();
    void underFixedDurationTheDirectionHasItsLimit();
    void aRightDirectionSavesNoLateSpace();
    void theLimitsFollowTheirParameters();
    void aNegativeClosingWaitIsNone();
    void aQuickSpaceLeavesTheTrialAtThePad_data();
    void aQuickSpaceLeavesTheTrialAtThePad();
    void underFixedDurationAQuickAnswerCountsAndMeetsNoLimit_data();
    void underFixedDurationAQuickAnswerCountsAndMeetsNoLimit();
    void aNumberBelowTheTrialsDoneLetsTheBlockRunOn();
};

namespace {

constexpr int tenMinutes = 600'000; // ms

qint64 since(const QDateTime &start, const MovementDesk &desk)
{
    return start.msecsTo(desk.time.currentDateTime());
}

/// All 80 directions of a trial, the groups first.
std::vector<int> directions(const PatchField &field)
{
    std::vector<int> all;
    for (const auto &group : field.dot)
        all.insert(all.end(), group.begin(), group.end());
    all.insert(all.end(), field.ring.begin(), field.ring.end());
    return all;
}

QString placeName(int place)
{
    constexpr std::array names{"E", "SE", "S", "SW", "W", "NW", "N", "NE"};
    return QLatin1String(names.at(std::size_t(place)));
}

QString directionName(int direction)
{
    constexpr std::array names{"E", "S", "W", "N"};
    return QLatin1String(names.at(std::size_t(direction)));
}

/// How many patches drift in each of the four directions.
template <typename Patches>
std::array<int, 4> counted(const Patches &patches)
{
    std::array<int, 4> count{};
    for (const int direction : patches)
        ++count.at(std::size_t(direction));
    return count;
}

bool allAtRest(const MovementDesk &desk)
{
    for (int patch = 0; patch < 80; ++patch) {
        if (desk.board->displacement(patch) != QPoint())
            return false;
    }
    return true;
}

/// Starts a block whose field drifts for this long before the arrow comes.
void startWithLateArrow(MovementDesk &desk, int delay)
{
    desk.go({.parameters = true});
    desk.type("le_timer02", QString::number(delay));
    desk.click("pb_go");
}

} // namespace

void tst_Test3Trial::aTrialHasItsTimes()
{
    MovementDesk desk;
    desk.startTest();
    for (int trial = 0; trial < 3; ++trial) {
        QCOMPARE(desk.task.stage(), 1);
        QVERIFY(desk.reach(3));
        desk.time.advance(499);
        QCOMPARE(desk.task.stage(), 3);
        desk.time.advance(1);
        QCOMPARE(desk.task.stage(), 4);
        desk.time.advance(tenMinutes); // the patient sets the pace
        QCOMPARE(desk.task.stage(), 4);
        desk.key(Qt::Key_Space);
        QCOMPARE(desk.task.stage(), 5);
        desk.time.advance(tenMinutes);
        QCOMPARE(desk.task.stage(), 5);
        desk.answerRight();
        QCOMPARE(desk.task.stage(), 6);
        desk.time.advance(599);
        QCOMPARE(desk.task.stage(), 6);
        desk.time.advance(1);
    }
}

void tst_Test3Trial::theFirstWaitIsDrawnWithinItsSpan_data()
{
    QTest::addColumn<int>("least");
    QTest::newRow("as it is") << 400;
    QTest::newRow("changed") << 150;
}

void tst_Test3Trial::theFirstWaitIsDrawnWithinItsSpan()
{
    QFETCH(const int, least);
    MovementDesk desk;
    desk.go({.parameters = true});
    desk.type("le_timer01", QString::number(least));
    desk.click("pb_go");
    QSet<qint64> drawn;
    for (int trial = 0; trial < 39; ++trial) {
        const QDateTime start = desk.time.currentDateTime();
        QVERIFY(desk.reach(3));
        const qint64 wait = since(start, desk);
        QVERIFY2(wait >= least && wait <= least + 999, qPrintable(QString::number(wait)));
        drawn.insert(wait);
        QVERIFY(desk.runTrial(700));
    }
    QVERIFY(drawn.size() > 20);
    QVERIFY(*std::ranges::min_element(drawn) < least + 300);
    QVERIFY(*std::ranges::max_element(drawn) > least + 700);
}

void tst_Test3Trial::everyLinkShowsWhatBelongsToIt()
{
    MovementDesk desk;
    startWithLateArrow(desk, 300);
    struct Seen
    {
        bool cross, field, arrow;
        int pad;
        Qt::CursorShape cursor;
    };
    constexpr std::array<Seen, 6> links{{{true, true, false, 0, Qt::BlankCursor},
                                         {true, true, false, 0, Qt::BlankCursor},
                                         {false, true, true, 0, Qt::BlankCursor},
                                         {false, true, true, 0, Qt::BlankCursor},
                                         {false, false, false, 5, Qt::ArrowCursor},
                                         {true, true, false, 0, Qt::BlankCursor}}};
    for (int trial = 0; trial < 2; ++trial) {
        for (int stage = 1; stage <= 6; ++stage) {
            if (stage == 5)
                desk.key(Qt::Key_Space);
            if (stage == 6)
                desk.answerRight();
            QVERIFY(desk.reach(stage));
            const Seen &seen = links.at(std::size_t(stage - 1));
            QCOMPARE(desk.cross->isVisible(), seen.cross);
            QCOMPARE(desk.board->isVisible(), seen.field);
            QCOMPARE(desk.arrow->isVisible(), seen.arrow);
            QCOMPARE(desk.shownPad(), seen.pad);
            QCOMPARE(desk.task.cursor().shape(), seen.cursor);
            QVERIFY(!desk.border->isVisible());
        }
        QVERIFY(desk.finishTrial());
    }
}

void tst_Test3Trial::theArrowComesWithTheDriftUnlessItIsDelayed()
{
    MovementDesk desk;
    desk.startTest();
    QVERIFY(!desk.reach(2)); // it is passed within its moment
    QVERIFY(desk.arrow->isVisible());
    desk.key(Qt::Key_Escape);

    startWithLateArrow(desk, 300);
    QVERIFY(desk.reach(2));
    desk.time.advance(299);
    QVERIFY(!desk.arrow->isVisible() && desk.cross->isVisible());
    desk.time.advance(1);
    QVERIFY(desk.arrow->isVisible() && !desk.cross->isVisible());
}

void tst_Test3Trial::thePointerIsOutOfTheWayUntilThePad()
{
    MovementDesk desk;
    desk.startTest();
    for (int trial = 0; trial < 2; ++trial) {
        QCOMPARE(QCursor::pos(), desk.task.mapToGlobal(QPoint(10, 700)));
        QVERIFY(desk.pressSpace(700));
        QCOMPARE(QCursor::pos(), desk.task.mapToGlobal(desk.centre()));
        QVERIFY(desk.widget("pb_center")->geometry().contains(desk.centre()));
        desk.answerRight();
        QCOMPARE(QCursor::pos(), desk.task.mapToGlobal(desk.centre()));
        QVERIFY(desk.finishTrial());
    }
}

void tst_Test3Trial::theDriftGoesOnePixelAStep_data()
{
    QTest::addColumn<int>("interval");
    QTest::newRow("as it is") << 15;
    QTest::newRow("slower") << 40;
}

void tst_Test3Trial::theDriftGoesOnePixelAStep()
{
    QFETCH(const int, interval);
    MovementDesk desk;
    desk.go({.parameters = true});
    desk.type("le_timer02", QStringLiteral("300"));
    desk.type("le_timerMov", QString::number(interval));
    desk.click("pb_go");
    QVERIFY(allAtRest(desk));
    QVERIFY(desk.reach(2));
    const std::vector<int> drift = directions(desk.task.field());
    constexpr std::array<QPoint, 4> ways{QPoint(1, 0), QPoint(0, 1), QPoint(-1, 0), QPoint(0, -1)};
    // Twice round and through the arrow; the first step lies at rest.
    for (int ms = 0; ms < 32 * interval; ++ms) {
        const int steps = ms < interval ? 0 : (ms / interval - 1) % 15;
        for (std::size_t patch = 0; patch < drift.size(); ++patch)
            QCOMPARE(desk.board->displacement(int(patch)),
                     ways.at(std::size_t(drift[patch])) * steps);
        desk.time.advance(1);
    }
}

void tst_Test3Trial::theDriftStopsAtTheSpaceAndTheFieldThenRests()
{
    MovementDesk desk;
    desk.startTest();
    for (int trial = 0; trial < 2; ++trial) {
        QVERIFY(allAtRest(desk));
        QVERIFY(desk.pressSpace(707)); // 47 steps: two pixels from rest
        desk.time.advance(10'000);
        QCOMPARE(desk.board->displacement(0).manhattanLength(), 46 % 15);
        desk.answerRight();
        for (int ms = 0; ms < 600; ++ms) {
            QVERIFY(desk.board->isVisible() && allAtRest(desk));
            desk.time.advance(1);
        }
        QCOMPARE(desk.task.stage(), 1);
        for (int ms = 0; ms < 399; ++ms) {
            QVERIFY(allAtRest(desk));
            desk.time.advance(1);
        }
    }
}

void tst_Test3Trial::theRightAnswerIsTheMovementThatIsSeen_data()
{
    QTest::addColumn<int>("subtask");
    QTest::newRow("each patch for itself") << 1;
    QTest::newRow("with the crowd") << 2;
    QTest::newRow("against the crowd") << 3;
}

void tst_Test3Trial::theRightAnswerIsTheMovementThatIsSeen()
{
    QFETCH(const int, subtask);
    MovementDesk desk;
    desk.startTest({.subtask = subtask});
    for (int trial = 0; trial < 12; ++trial) {
        QVERIFY(desk.reach(4));
        const int seen = desk.seenDirection(desk.asked());
        QVERIFY(seen >= 0);
        desk.key(Qt::Key_Space);
        desk.answer(seen);
        QCOMPARE(desk.text("le_result"), QStringLiteral("1"));
        QVERIFY(desk.finishTrial());
        QCOMPARE(desk.rows().constLast()[MovementDirection], directionName(seen));
        QCOMPARE(desk.rows().constLast()[Error], QStringLiteral("0"));
    }
}

void tst_Test3Trial::anEarlySpaceIsIgnored_data()
{
    QTest::addColumn<int>("stage");
    QTest::newRow("first wait") << 1;
    QTest::newRow("drift before the arrow") << 2;
}

void tst_Test3Trial::anEarlySpaceIsIgnored()
{
    QFETCH(const int, stage);
    MovementDesk desk;
    startWithLateArrow(desk, 300);
    for (int trial = 0; trial < 2; ++trial) {
        QVERIFY(desk.reach(stage));
        desk.time.advance(120);
        const QString elapsed = desk.text("le_elapsed");
        desk.key(Qt::Key_Space);
        QCOMPARE(desk.task.stage(), stage);
        QCOMPARE(desk.text("le_elapsed"), elapsed);
        QCOMPARE(desk.shownPad(), 0);
        QVERIFY(desk.board->isVisible() && desk.cross->isVisible());
        QVERIFY(desk.runTrial(640));
        QCOMPARE(desk.rows().size(), trial + 1);
        QCOMPARE(desk.rows().constLast()[MovementTime], QStringLiteral("640"));
        QCOMPARE(desk.rows().constLast()[Error], QStringLiteral("0"));
    }
}

void tst_Test3Trial::aSecondSpaceIsIgnored()
{
    MovementDesk desk;
    desk.startTest({.parameters = true});
    QVERIFY(desk.pressSpace(640));
    desk.time.advance(80);
    desk.key(Qt::Key_Space);
    QCOMPARE(desk.text("le_elapsed"), QStringLiteral("640"));
    QCOMPARE(desk.shownPad(), 5);
    desk.answerRight();
    desk.key(Qt::Key_Space);
    QCOMPARE(desk.task.stage(), 6);
    QVERIFY(desk.finishTrial());
    QCOMPARE(desk.rows().size(), 1);
    QCOMPARE(desk.rows().constFirst()[MovementTime], QStringLiteral("640"));
}

void tst_Test3Trial::nothingButTheSpaceIsASpace()
{
    MovementDesk desk;
    desk.startTest();
    QVERIFY(desk.reach(4));
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_S, Qt::Key_C, Qt::Key_Left,
                              Qt::Key_Right, Qt::Key_Up, Qt::Key_Down})
        desk.key(key);
    for (const Qt::MouseButton button : {Qt::LeftButton, Qt::RightButton, Qt::MiddleButton})
        QTest::mouseClick(&desk.task, button, {}, desk.centre());
    QTest::mouseClick(desk.board, Qt::LeftButton);
    QCOMPARE(desk.task.stage(), 4);
    QVERIFY(desk.board->isVisible() && desk.arrow->isVisible());
    QVERIFY(desk.task.isRunning());
}

void tst_Test3Trial::everyDirectionIsTakenByKeyAndByClick_data()
{
    QTest::addColumn<int>("hand");
    QTest::newRow("by key") << int(MovementDesk::ByKey);
    QTest::newRow("by click") << int(MovementDesk::ByClick);
}

void tst_Test3Trial::everyDirectionIsTakenByKeyAndByClick()
{
    QFETCH(const int, hand);
    MovementDesk desk;
    desk.startTest({.parameters = true});
    std::array<int, 4> right{};
    for (int trial = 0; *std::ranges::min_element(right) == 0 || trial < 20; ++trial) {
        QVERIFY(trial < 100);
        QVERIFY(desk.pressSpace(600));
        const int asked = desk.askedDirection();
        const int answered = trial % 3 == 0 ? asked : trial % 4;
        desk.answer(answered, MovementDesk::Hand(hand));
        QCOMPARE(desk.task.stage(), 6);
        QCOMPARE(desk.text("le_result"), QString::number(asked == answered ? 1 : 0));
        QVERIFY(desk.finishTrial());
        const QStringList row = desk.rows().constLast();
        QCOMPARE(row[MovementDirection], directionName(asked)); // what was asked, not the answer
        QCOMPARE(row[Error], QString::number(asked == answered ? 0 : 1));
        if (asked == answered)
            ++right.at(std::size_t(asked));
    }
}

void tst_Test3Trial::aTrialLeavesItsRow()
{
    MovementDesk desk;
    sessionStore().siteCode = QStringLiteral("UKB");
    desk.startTest({.parameters = true});
    QVERIFY(desk.runTrial(823));
    QVERIFY(desk.reach(3));
    const QDateTime drift = desk.time.currentDateTime();
    const QString place = placeName(desk.asked());
    const QString direction = directionName(desk.askedDirection());
    QVERIFY(desk.pressSpace(1287));
    QCOMPARE(desk.text("le_elapsed"), QStringLiteral("1287"));
    desk.answerRight();
    QCOMPARE(desk.rows().size(), 1); // it isn't over yet
    QVERIFY(desk.finishTrial());

    const QList<QByteArray> lines =
        desk.root.bytes(QStringLiteral("Results/output.csv")).split('\n');
    QCOMPARE(lines.size(), 4); // header, two rows, the end of the last
    const QString row =
        QStringLiteral("UKB;Mrs.;Doe;Jane;01/02/1950;3;4;%1;1;2;;;;;;;;;;;;1287;%2;"
                       "%3;;;;;0")
            .arg(drift.toString(QStringLiteral("dd/MM/yyyy;hh:mm:ss.zzz")), place, direction);
    QCOMPARE(QString::fromLatin1(lines[2]), row);
    QCOMPARE(row.count(u';'), 29);
    QCOMPARE(lines[0].split(';').at(MovementTime), QByteArray("t3_rt"));
    QCOMPARE(lines[0].split(';').at(MovementPlace), QByteArray("t3_position"));
    QCOMPARE(lines[0].split(';').at(MovementDirection), QByteArray("t3_dir_mov"));
    QVERIFY(!lines[1].contains('\r'));
}

void tst_Test3Trial::theRowsOfATestAreOnTheDiskAtOnce()
{
    MovementDesk desk;
    desk.startTest();
    for (int trial = 1; trial <= 4; ++trial) {
        QVERIFY(desk.runTrial(600, trial % 2 == 0));
        QCOMPARE(desk.rows().size(), trial); // read back while the log is open
    }
    QVERIFY(!desk.root.exists(QStringLiteral("Results/valid-output.csv")));
}

void tst_Test3Trial::theRowBearsTheStartOfTheDrift()
{
    MovementDesk desk;
    startWithLateArrow(desk, 700);
    QVERIFY(desk.reach(2));
    const QString drift = desk.time.currentDateTime().toString(QStringLiteral("hh:mm:ss.zzz"));
    QVERIFY(desk.runTrial(900));
    QCOMPARE(desk.rows().constFirst()[Time], drift);
    QCOMPARE(desk.rows().constFirst()[MovementTime], QStringLiteral("900")); // from the arrow
}

void tst_Test3Trial::everyOutcomeHasItsTimeItsErrorAndItsNextPatch_data()
{
    QTest::addColumn<bool>("fixedDuration");
    QTest::addColumn<int>("space");      // ms after the arrow; none if negative
    QTest::addColumn<QString>("answer"); // right, wrong, unknown, none
    QTest::addColumn<QString>("time");
    QTest::addColumn<QString>("result");
    QTest::addColumn<bool>("valid");
    QTest::newRow("right") << false << 777 << "right"
                           << "777"
                           << "1" << true;
    QTest::newRow("right, at the limit") << false << 5000 << "right"
                                         << "5000"
                                         << "1" << true;
    QTest::newRow("right, above it") << false << 5001 << "right"
                                     << "5001"
                                     << "1" << false;
    QTest::newRow("wrong") << false << 777 << "wrong"
                           << "777"
                           << "0" << false;
    QTest::newRow("wrong, above the limit") << false << 6000 << "wrong"
                                            << "6000"
                                            << "0" << false;
    QTest::newRow("not known") << false << 777 << "unknown"
                               << "777"
                               << "0" << false;
    QTest::newRow("timed, right") << true << 777 << "right"
                                  << "777"
                                  << "1" << true;
    QTest::newRow("timed, just in time") << true << 2999 << "right"
                                         << "2999"
                                         << "1" << true;
    QTest::newRow("timed, wrong") << true << 777 << "wrong"
                                  << "777"
                                  << "0" << false;
    QTest::newRow("timed, not known") << true << 777 << "unknown"
                                      << "777"
                                      << "0" << false;
    QTest::newRow("timed, no Space, wrong") << true << -1 << "wrong"
                                            << "2500"
                                            << "0" << false;
    QTest::newRow("timed, no Space, right") << true << -1 << "right"
                                            << "2500"
                                            << "1" << false;
    QTest::newRow("timed, no direction") << true << 777 << "none"
                                         << "777"
                                         << "" << false;
    QTest::newRow("timed, nothing") << true << -1 << "none"
                                    << "2500"
                                    << "0" << false;
}

void tst_Test3Trial::everyOutcomeHasItsTimeItsErrorAndItsNextPatch()
{
    QFETCH(const bool, fixedDuration);
    QFETCH(const int, space);
    QFETCH(const QString, answer);
    QFETCH(const QString, time);
    QFETCH(const QString, result);
    QFETCH(const bool, valid);
    MovementDesk desk;
    desk.startTest({.parameters = true, .fixedDuration = fixedDuration});
    QVERIFY(desk.reach(3));
    const int place = desk.asked();
    const QString direction = directionName(desk.askedDirection());
    if (space < 0)
        desk.time.advance(3000);
    else
        QVERIFY(desk.pressSpace(space));
    QCOMPARE(desk.task.stage(), 5);
    QCOMPARE(desk.text("le_elapsed"), time);
    if (answer == QStringLiteral("right"))
        desk.answerRight();
    else if (answer == QStringLiteral("wrong"))
        desk.answerWrong();
    else if (answer == QStringLiteral("unknown"))
        desk.answer(MovementDesk::unknown);
    else
        desk.time.advance(2500);
    QCOMPARE(desk.task.stage(), 6);
    QCOMPARE(desk.text("le_result"), result);
    QVERIFY(desk.finishTrial());

    QCOMPARE(desk.rows().size(), 1);
    const QStringList row = desk.rows().constFirst();
    QCOMPARE(row.size(), int(Count));
    QCOMPARE(row[RankTask], QStringLiteral("1"));
    QCOMPARE(row[MovementTime], time);
    QCOMPARE(row[MovementPlace], placeName(place));
    QCOMPARE(row[MovementDirection], direction);
    QCOMPARE(row[Error], QString::number(valid ? 0 : 1));
    QCOMPARE(desk.text("le_no"), QString::number(valid ? 2 : 1));
    QVERIFY(desk.reach(3));
    QCOMPARE(desk.asked() == place, !valid);
}

void tst_Test3Trial::theLimitOfFiveSecondsIsForTheTestOnly()
{
    MovementDesk desk;
    const QByteArray log = desk.root.bytes(QStringLiteral("Results/output.csv"));
    desk.startTest({.training = true, .parameters = true});
    QSet<int> places;
    for (int trial = 0; trial < 5; ++trial) {
        QCOMPARE(desk.text("le_no"), QString::number(trial + 1));
        QVERIFY(desk.reach(3));
        places.insert(desk.asked());
        QVERIFY(desk.runTrial(5001));
    }
    QCOMPARE(places.size(), 5); // each has counted
    QVERIFY(desk.shown("pb_go"));
    QCOMPARE(desk.task.stage(), 0);
    QCOMPARE(desk.root.bytes(QStringLiteral("Results/output.csv")), log);
}

void tst_Test3Trial::everyPassOfEightAsksEachPatchOnce()
{
    MovementDesk desk;
    desk.go({});
    const auto seed = desk.time.seedSeconds();
    desk.click("pb_go");
    int valid = 0;
    for (int trial = 0; valid < 39; ++trial) { // some of them wrong
        const bool right = trial % 4 != 2;
        QVERIFY(desk.runTrial(600, right));
        valid += right ? 1 : 0;
    }
    QVERIFY(desk.runTrial(600));
    QVERIFY(desk.shown("pb_results")); // forty valid trials, and not one more

    QStringList asked;
    for (const QStringList &row : desk.rows()) {
        if (row[Error] == QStringLiteral("0"))
            asked.append(row[MovementPlace]);
    }
    QCOMPARE(asked.size(), 40);
    for (qsizetype pass = 0; pass < 5; ++pass) {
        const QStringList eight = asked.mid(8 * pass, 8);
        QCOMPARE(QSet<QString>(eight.begin(), eight.end()).size(), 8);
        if (pass > 0)
            QVERIFY(eight != asked.mid(8 * pass - 8, 8)); // drawn anew
    }
    QMap<QString, int> places;
    for (const QString &place : asked)
        ++places[place];
    QCOMPARE(places.values(), QList<int>(8, 5));

    const std::vector<int> firstPass = randomness::shuffled(8, seed);
    for (std::size_t trial = 0; trial < 8; ++trial)
        QCOMPARE(asked[qsizetype(trial)], placeName(firstPass[trial]));
}

void tst_Test3Trial::anInvalidTrialAsksItsPatchAgainWithNewDirections()
{
    MovementDesk desk;
    desk.startTest();
    for (int patch = 0; patch < 9; ++patch) { // over the end of a pass
        QVERIFY(desk.reach(3));
        const int asked = desk.asked();
        for (int attempt = 0; attempt < 3; ++attempt) {
            QVERIFY(desk.reach(3));
            QCOMPARE(desk.asked(), asked);
            const std::vector<int> before = directions(desk.task.field());
            QVERIFY(desk.pressSpace(600));
            desk.answer(attempt == 1 ? MovementDesk::unknown : (desk.askedDirection() + 2) % 4);
            QVERIFY(desk.finishTrial());
            QVERIFY(directions(desk.task.field()) != before);
        }
        QVERIFY(desk.runTrial(600));
    }
    const QList<QStringList> rows = desk.rows();
    QCOMPARE(rows.size(), 36);
    for (qsizetype i = 0; i < rows.size(); ++i) {
        QCOMPARE(rows[i][RankTask], QString::number(i / 4 + 1));
        QCOMPARE(rows[i][MovementPlace], rows[i / 4 * 4][MovementPlace]);
        QCOMPARE(rows[i][Error], QString::number(i % 4 == 3 ? 0 : 1));
    }
}

void tst_Test3Trial::thePanelFollowsTheTrials()
{
    MovementDesk desk;
    desk.startTest({.parameters = true});
    QCOMPARE(desk.text("le_no"), QStringLiteral("1"));
    QCOMPARE(desk.text("le_elapsed"), QString());
    QCOMPARE(desk.text("le_result"), QString());
    QCOMPARE(desk.text("le_subtask"), QStringLiteral("1"));
    QVERIFY(desk.runTrial(600));
    QCOMPARE(desk.text("le_no"), QStringLiteral("2"));
    QCOMPARE(desk.text("le_elapsed"), QStringLiteral("600")); // until the next one
    QCOMPARE(desk.text("le_result"), QStringLiteral("1"));
    QVERIFY(desk.pressSpace(811));
    QCOMPARE(desk.text("le_elapsed"), QStringLiteral("811"));
    desk.answerWrong();
    QCOMPARE(desk.text("le_result"), QStringLiteral("0"));
    QVERIFY(desk.finishTrial());
    QCOMPARE(desk.text("le_no"), QStringLiteral("2"));
    desk.key(Qt::Key_Escape);

    desk.startTest({.parameters = true});
    QCOMPARE(desk.text("le_no"), QStringLiteral("1"));
    QCOMPARE(desk.text("le_elapsed"), QString());
    QCOMPARE(desk.text("le_result"), QString());
}

void tst_Test3Trial::eachPatchForItselfHasNoDirectionInCommon()
{
    MovementDesk desk;
    desk.startTest({.subtask = 1});
    std::array<int, 4> shown{};
    for (int trial = 0; trial < 39; ++trial) {
        QVERIFY(desk.reach(3));
        // Of 80 draws among four, 20 are expected of each; the deviation is 3.9.
        for (const int count : counted(directions(desk.task.field())))
            QVERIFY2(count >= 5 && count <= 45, qPrintable(QString::number(count)));
        ++shown.at(std::size_t(desk.askedDirection()));
        QVERIFY(desk.runTrial(600));
    }
    for (const int count : shown)
        QVERIFY(count > 0);
}

void tst_Test3Trial::inTheCrowdOnePatchOfEachGroupStrays()
{
    MovementDesk desk;
    desk.startTest({.subtask = 2});
    std::array<int, 4> commons{};
    QSet<int> strays;
    for (int trial = 0; trial < 39; ++trial) {
        QVERIFY(desk.reach(3));
        const PatchField &field = desk.task.field();
        const int common = desk.askedDirection(); // the asked one moves with the crowd
        ++commons.at(std::size_t(common));
        QCOMPARE(counted(field.ring).at(std::size_t(common)), 7);
        for (const auto &group : field.dot)
            QCOMPARE(counted(group).at(std::size_t(common)), 8);
        for (int patch = 0; patch < 9; ++patch) {
            if (field.dot[0].at(std::size_t(patch)) != common)
                strays.insert(patch);
        }
        QVERIFY(desk.runTrial(600));
    }
    for (const int count : commons)
        QVERIFY(count > 0);
    QVERIFY(strays.size() > 5);
}

void tst_Test3Trial::againstTheCrowdTheAskedPatchIsAlone()
{
    MovementDesk desk;
    desk.startTest({.subtask = 3});
    std::array<int, 4> others{};
    for (int trial = 0; trial < 39; ++trial) {
        QVERIFY(desk.reach(3));
        const PatchField &field = desk.task.field();
        const int own = desk.askedDirection();
        QCOMPARE(counted(field.ring).at(std::size_t(own)), 1);
        for (const auto &group : field.dot)
            QCOMPARE(counted(group).at(std::size_t(own)), 1);
        // The others share no direction: three are drawn among.
        const std::array<int, 4> all = counted(directions(field));
        for (std::size_t direction = 0; direction < 4; ++direction) {
            if (int(direction) != own)
                QVERIFY(all.at(direction) > 5);
            else
                QCOMPARE(all.at(direction), 9);
        }
        ++others.at(std::size_t(own));
        QVERIFY(desk.runTrial(600));
    }
    for (const int count : others)
        QVERIFY(count > 0);
}

void tst_Test3Trial::aConditionIsFixedByTheRun_data()
{
    QTest::addColumn<int>("subtask");
    for (const int subtask : {1, 2, 3})
        QTest::addRow("%d", subtask) << subtask;
}

void tst_Test3Trial::aConditionIsFixedByTheRun()
{
    QFETCH(const int, subtask);
    MovementDesk desk;
    desk.startTest({.subtask = subtask, .parameters = true});
    for (int trial = 0; trial < 7; ++trial) {
        QCOMPARE(desk.text("le_subtask"), QString::number(subtask));
        QVERIFY(desk.runTrial(600, trial % 3 != 1));
        QCOMPARE(desk.rows().constLast()[Subtask], QString::number(subtask));
    }
}

void tst_Test3Trial::aBlockOfThreeHoldsEveryConditionOnce()
{
    MovementDesk desk;
    desk.startTest({.subtask = 0, .parameters = true});
    QSet<QString> orders;
    for (int block = 0; block < 12; ++block) {
        QString order;
        for (int trial = 0; trial < 3; ++trial) {
            const QString subtask = desk.text("le_subtask");
            QVERIFY(desk.runTrial(600));
            QCOMPARE(desk.rows().constLast()[Subtask], subtask);
            order += subtask;
        }
        std::ranges::sort(order);
        QCOMPARE(order, QStringLiteral("123"));
        const QList<QStringList> rows = desk.rows().mid(qsizetype{3} * block);
        orders.insert(rows[0][Subtask] + rows[1][Subtask] + rows[2][Subtask]);
    }
    QVERIFY(orders.size() > 1);
}

void tst_Test3Trial::anInvalidTrialIsRepeatedInItsCondition()
{
    MovementDesk desk;
    desk.startTest({.subtask = 0});
    for (int trial = 0; trial < 6; ++trial) {
        QVERIFY(desk.runTrial(600, false));
        QVERIFY(desk.runTrial(5600));
        QVERIFY(desk.runTrial(600));
    }
    const QList<QStringList> rows = desk.rows();
    QCOMPARE(rows.size(), 18);
    for (qsizetype i = 0; i < rows.size(); ++i)
        QCOMPARE(rows[i][Subtask], rows[i / 3 * 3][Subtask]);
}

void tst_Test3Trial::underFixedDurationACycleLastsItsTime()
{
    MovementDesk desk;
    desk.startTest({.parameters = true, .fixedDuration = true});
    QCOMPARE(desk.text("le_timeTc"), QStringLiteral("7500"));
    struct Hands
    {
        int space, answer; // ms; none if negative
    };
    constexpr std::array<Hands, 5> trials{{{600, 0}, {2999, 2499}, {900, -1}, {-1, 100}, {-1, -1}}};
    QDateTime start = desk.time.currentDateTime();
    for (const Hands &hands : trials) {
        if (hands.space >= 0)
            QVERIFY(desk.pressSpace(hands.space));
        QVERIFY(desk.reach(5));
        if (hands.answer >= 0) {
            desk.time.advance(hands.answer);
            desk.answerRight();
        }
        QVERIFY(desk.reach(6));
        desk.time.advance(int(7499 - since(start, desk)));
        QCOMPARE(desk.task.stage(), 6);
        desk.time.advance(1);
        QCOMPARE(desk.task.stage(), 1);
        start = desk.time.currentDateTime();
    }
    QCOMPARE(desk.rows().size(), 5);
}

void tst_Test3Trial::underFixedDurationTheSpaceHasItsLimit()
{
    MovementDesk desk;
    desk.startTest({.parameters = true, .fixedDuration = true});
    QVERIFY(desk.reach(3));
    desk.time.advance(500 + 2499);
    QCOMPARE(desk.task.stage(), 4);
    QVERIFY(desk.arrow->isVisible());
    desk.time.advance(1);
    QCOMPARE(desk.task.stage(), 5);
    QCOMPARE(desk.shownPad(), 5);
    QVERIFY(!desk.arrow->isVisible() && !desk.cross->isVisible() && !desk.board->isVisible());
    QCOMPARE(desk.task.cursor().shape(), Qt::ArrowCursor);
    QCOMPARE(desk.text("le_elapsed"), QStringLiteral("2500"));
    QCOMPARE(desk.text("le_result"), QStringLiteral("0"));
    const QPoint stopped = desk.board->displacement(0);
    desk.time.advance(200);
    QCOMPARE(desk.board->displacement(0), stopped);
    desk.key(Qt::Key_Space); // too late
    QCOMPARE(desk.text("le_elapsed"), QStringLiteral("2500"));
    QCOMPARE(desk.task.stage(), 5);
}

void tst_Test3Trial::underFixedDurationTheDirectionHasItsLimit()
{
    MovementDesk desk;
    desk.startTest({.fixedDuration = true});
    for (const int space : {1200, -1}) {
        if (space >= 0)
            QVERIFY(desk.pressSpace(space));
        QVERIFY(desk.reach(5));
        desk.time.advance(2499);
        QCOMPARE(desk.task.stage(), 5);
        QCOMPARE(desk.shownPad(), 5);
        desk.time.advance(1);
        QCOMPARE(desk.task.stage(), 6);
        QCOMPARE(desk.shownPad(), 0);
        QVERIFY(desk.cross->isVisible() && desk.board->isVisible() && allAtRest(desk));
        desk.key(Qt::Key_Right); // too late
        QVERIFY(desk.finishTrial());
    }
    const QList<QStringList> rows = desk.rows();
    QCOMPARE(rows.size(), 2);
    QCOMPARE(rows[0][MovementTime], QStringLiteral("1200"));
    QCOMPARE(rows[1][MovementTime], QStringLiteral("2500"));
    QCOMPARE(rows[0][Error] + rows[1][Error], QStringLiteral("11"));
    QCOMPARE(rows[0][MovementPlace], rows[1][MovementPlace]);
}

void tst_Test3Trial::aRightDirectionSavesNoLateSpace()
{
    MovementDesk desk;
    desk.startTest({.parameters = true, .fixedDuration = true});
    for (int trial = 0; trial < 3; ++trial) {
        QVERIFY(desk.reach(3));
        QVERIFY(desk.reach(5));
        desk.answerRight(MovementDesk::ByClick);
        QVERIFY(desk.finishTrial());
        QCOMPARE(desk.text("le_no"), QStringLiteral("1"));
    }
    for (const QStringList &row : desk.rows())
        QCOMPARE(row[Error], QStringLiteral("1"));
}

void tst_Test3Trial::theLimitsFollowTheirParameters()
{
    MovementDesk desk;
    desk.go({.parameters = true, .fixedDuration = true});
    desk.type("le_timer03", QStringLiteral("100"));
    desk.type("le_timer04", QStringLiteral("900"));
    desk.type("le_timer05", QStringLiteral("700"));
    desk.type("le_timer06", QStringLiteral("50"));
    QCOMPARE(desk.text("le_timeTc"), QStringLiteral("3150")); // 400 + 1000 + 0 and these
    const QDateTime start = desk.time.currentDateTime();
    desk.click("pb_go");
    QVERIFY(desk.reach(3));
    desk.time.advance(99);
    QCOMPARE(desk.task.stage(), 3);
    desk.time.advance(1);
    QCOMPARE(desk.task.stage(), 4);
    desk.time.advance(899);
    QCOMPARE(desk.task.stage(), 4);
    desk.time.advance(1);
    QCOMPARE(desk.task.stage(), 5);
    QCOMPARE(desk.text("le_elapsed"), QStringLiteral("900"));
    desk.time.advance(699);
    QCOMPARE(desk.task.stage(), 5);
    desk.time.advance(1);
    QCOMPARE(desk.task.stage(), 6);
    QVERIFY(desk.finishTrial());
    QCOMPARE(since(start, desk), qint64{3150});
    QCOMPARE(desk.rows().constFirst()[MovementTime], QStringLiteral("900"));
}

void tst_Test3Trial::aNegativeClosingWaitIsNone()
{
    MovementDesk desk;
    desk.startTest({.parameters = true, .fixedDuration = true});
    QVERIFY(desk.pressSpace(700));
    desk.type("le_timer06", QStringLiteral("-9000")); // the cycle becomes shorter than it has been
    desk.answer(MovementDesk::unknown);
    desk.time.advance(0);
    QCOMPARE(desk.task.stage(), 1);
    QCOMPARE(desk.rows().size(), 1);
}

void tst_Test3Trial::aQuickSpaceLeavesTheTrialAtThePad_data()
{
    QTest::addColumn<int>("reactionTime");
    for (const int reactionTime : {0, 1, 300, 499, 500})
        QTest::addRow("%d ms", reactionTime) << reactionTime;
}

void tst_Test3Trial::aQuickSpaceLeavesTheTrialAtThePad()
{
    QFETCH(const int, reactionTime);
    MovementDesk desk;
    desk.startTest();
    QVERIFY(desk.pressSpace(reactionTime)); // before the limit could have begun
    for (int ms = 0; ms < 3000; ++ms) {
        desk.time.advance(1);
        QCOMPARE(desk.task.stage(), 5);
    }
    QCOMPARE(desk.shownPad(), 5);
    desk.answerRight(); // the keys still answer
    QVERIFY(desk.finishTrial());
    QCOMPARE(desk.task.stage(), 1);
    QCOMPARE(desk.rows().constLast()[MovementTime], QString::number(reactionTime));
    QCOMPARE(desk.rows().constLast()[Error], QStringLiteral("0"));
}

void tst_Test3Trial::underFixedDurationAQuickAnswerCountsAndMeetsNoLimit_data()
{
    QTest::addColumn<int>("answer"); // ms after the Space
    for (const int answer : {0, 150, 1000, 2499})
        QTest::addRow("after %d ms", answer) << answer;
}

void tst_Test3Trial::underFixedDurationAQuickAnswerCountsAndMeetsNoLimit()
{
    QFETCH(const int, answer);
    MovementDesk desk;
    desk.startTest({.parameters = true, .fixedDuration = true});
    const QDateTime start = desk.time.currentDateTime();
    QVERIFY(desk.pressSpace(300));
    desk.time.advance(answer);
    QCOMPARE(desk.task.stage(), 5);
    desk.answerRight();
    while (desk.task.stage() == 6) {
        QCOMPARE(desk.text("le_result"), QStringLiteral("1"));
        QCOMPARE(desk.text("le_elapsed"), QStringLiteral("300"));
        QCOMPARE(desk.shownPad(), 0);
        desk.time.advance(1);
    }
    QCOMPARE(desk.task.stage(), 1);
    QCOMPARE(since(start, desk), qint64{7500});
    QCOMPARE(desk.rows().size(), 1);
    QCOMPARE(desk.rows().constLast()[MovementTime], QStringLiteral("300"));
    QCOMPARE(desk.rows().constLast()[Error], QStringLiteral("0"));
}

void tst_Test3Trial::aNumberBelowTheTrialsDoneLetsTheBlockRunOn()
{
    MovementDesk desk;
    desk.startTest({.parameters = true});
    for (int trial = 0; trial < 4; ++trial)
        QVERIFY(desk.runTrial(600));
    desk.type("le_number", QStringLiteral("2"));
    for (int trial = 0; trial < 40; ++trial)
        QVERIFY(desk.runTrial(600));
    QVERIFY(!desk.shown("pb_results"));
    QCOMPARE(desk.rows().size(), 44);
}

QTEST_MAIN(tst_Test3Trial)
#include "tst_Test3Trial.moc"
