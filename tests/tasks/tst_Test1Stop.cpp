#include "VisionDesk.h"

#include <cmath>

using namespace column;

/// When a test stops: with a result, or without one.
class tst_Test1Stop : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aMeasureThatDoesNotSettleIsBrokenOff_data();
    void aMeasureThatDoesNotSettleIsBrokenOff();
    void theBoxOpensBehindTheMarkerOnALightGround();
    void theTaskStartsAgainAtOnceAfterTheBreak();
    void theCeilingCountsPlacesOnTheTrack_data();
    void theCeilingCountsPlacesOnTheTrack();
    void anInterleavedTestIsBrokenOffWhenAllThreeAreAtFifty();
    void oneSubtaskBeyondFiftyBreaksNothingOff();
    void theCeilingComesBeforeTheSettledGroup();
    void anAlternatingWalkIsOverAtTwentyEntries_data();
    void anAlternatingWalkIsOverAtTwentyEntries();
    void aPatientWhoNeverErrsEndsAtTheFloor_data();
    void aPatientWhoNeverErrsEndsAtTheFloor();
    void aResultEndsTheTestWhateverNumberIsWanted();
    void aPatientWhoAlwaysFailsEndsAtTheCeiling_data();
    void aPatientWhoAlwaysFailsEndsAtTheCeiling();
    void settledPeaksWithoutSettledTroughsAreNoResult();
    void anInterleavedTestGoesOnUntilAllHaveSettled();
    void theLastComputationCounts();
    void aMissedTrialEntersTheTrackAsZero();
};

namespace {

constexpr char right = 'R';
constexpr char wrong = 'W';
constexpr char nothing = '-';

/// Right and wrong in turn.
QByteArray alternating(int trials)
{
    return QByteArray("RW").repeated(trials / 2 + 1).first(trials);
}

QByteArray rights(int trials)
{
    return {trials, right};
}

QByteArray wrongs(int trials)
{
    return {trials, wrong};
}

/// Fifty trials from a step in the middle, without touching a limit and with too few turning
/// points for a result.
QByteArray unsettled()
{
    return rights(8) + wrongs(17) + rights(17) + wrongs(8);
}

bool runTrial(VisionDesk &desk, char answer)
{
    if (answer != nothing)
        return desk.runTrial(answer == right);
    constexpr int limit = 5000;
    if (!desk.reach(5))
        return false;
    desk.time.advance(limit);
    for (int ms = 0; ms < 20'000 && desk.task.stage() == 6; ++ms)
        desk.time.advance(1);
    return desk.task.stage() != 5 && desk.task.stage() != 6;
}

bool play(VisionDesk &desk, const QByteArray &answers)
{
    return std::ranges::all_of(answers, [&](char answer) { return runTrial(desk, answer); });
}

/// Runs an interleaved test by the answers of each subtask, until it is over or one of them has no
/// answer left.
void playInterleaved(VisionDesk &desk, const std::array<QByteArray, 3> &answers)
{
    std::array<qsizetype, 3> next{};
    while (desk.task.stage() == 1) {
        const auto subtask = std::size_t(desk.text("le_subtask").toInt() - 1);
        if (next.at(subtask) == answers.at(subtask).size())
            return;
        QVERIFY(runTrial(desk, answers.at(subtask).at(next.at(subtask)++)));
    }
}

/// The seven columns of a subtask in the row of scores.
QString group(VisionDesk &desk, int subtask)
{
    return desk.rows("Results/results_T1.csv").constLast().mid(11 + 7 * subtask, 7).join(u';');
}

QString trialsOfScores(VisionDesk &desk)
{
    return desk.rows("Results/results_T1.csv").constLast().at(10);
}

bool isOver(VisionDesk &desk)
{
    return desk.shown("pb_results") && desk.shown("pb_mainMenu");
}

void addModes()
{
    QTest::addColumn<int>("mode");
    QTest::newRow("central") << 1;
    QTest::newRow("peripheral") << 2;
    QTest::newRow("dual") << 3;
}

void verifyNothingIsFiled(const VisionDesk &desk)
{
    for (const char *path :
         {"Results/valid-output.csv", "Results/results_T1.csv", "Archives/Doe Jane 01.02.1950"})
        QVERIFY2(!desk.root.exists(QString::fromLatin1(path)), path);
}

/// The process has the trial log open.
bool logIsOpen(const VisionDesk &desk)
{
    const QString log =
        QFileInfo(desk.root.path(QStringLiteral("Results/output.csv"))).canonicalFilePath();
    const QFileInfoList open =
        QDir(QStringLiteral("/proc/self/fd")).entryInfoList(QDir::AllEntries | QDir::System);
    return std::ranges::any_of(open,
                               [&](const QFileInfo &file) { return file.symLinkTarget() == log; });
}

} // namespace

void tst_Test1Stop::aMeasureThatDoesNotSettleIsBrokenOff_data()
{
    addModes();
}

void tst_Test1Stop::aMeasureThatDoesNotSettleIsBrokenOff()
{
    QFETCH(const int, mode);
    VisionDesk desk;
    desk.writePatient("283;283;283");
    const QByteArray list = desk.root.bytes(QString::fromLatin1(VisionDesk::patients));
    desk.startTest({.mode = mode});
    QVERIFY(play(desk, unsettled().first(49)));
    QCOMPARE(desk.task.stage(), 1);
    QVERIFY(desk.boxes.take().isEmpty());
    QVERIFY(logIsOpen(desk));

    QVERIFY(runTrial(desk, wrong));
    QVERIFY(!logIsOpen(desk));
    const auto messages = desk.boxes.take();
    QCOMPARE(messages.size(), 1);
    QCOMPARE(messages[0].kind, messages::Kind::Warning);
    QCOMPARE(messages[0].title, QStringLiteral("Error"));
    QCOMPARE(messages[0].text, QStringLiteral("Unstable measures, please start task over again"));
    QVERIFY(!desk.task.isRunning());
    QCOMPARE(desk.task.stage(), 0);
    QCOMPARE(desk.task.styleSheet(), QStringLiteral("background-color:rgb(0, 0, 0)"));

    const QList<QStringList> rows = desk.rows();
    QCOMPARE(rows.size(), 51);
    QCOMPARE(rows[49][RankTask], QStringLiteral("50"));
    QCOMPARE(rows[50].join(u';'), QStringLiteral(";Mrs.;Doe;Jane;01/02/1950;interrupted"));
    verifyNothingIsFiled(desk);
    QCOMPARE(desk.root.bytes(QString::fromLatin1(VisionDesk::patients)), list);
    QVERIFY(!sessionStore().escapeSeq); // the raised session number stands
    QCOMPARE(sessionStore().sessionNb.at(std::size_t(mode) + 3), mode + 5);

    desk.time.advance(600'000); // and nothing goes on
    QCOMPARE(desk.rows().size(), 51);
    QVERIFY(!desk.task.isRunning());
}

void tst_Test1Stop::theBoxOpensBehindTheMarkerOnALightGround()
{
    VisionDesk desk;
    int boxes = 0;
    const messages::Handling look([&](QWidget *parent, const messages::Message &) {
        ++boxes;
        QCOMPARE(parent, &desk.task);
        QVERIFY(!desk.task.isVisible());
        QCOMPARE(desk.task.styleSheet(), QStringLiteral("background-color:rgb(230, 230, 230)"));
        QCOMPARE(desk.rows().constLast().constLast(), QStringLiteral("interrupted"));
        desk.time.advance(600'000); // the box may stand for long
    });
    desk.startTest({.mode = 1});
    QVERIFY(play(desk, unsettled()));
    QCOMPARE(boxes, 1);
    QCOMPARE(desk.rows().size(), 51);
}

void tst_Test1Stop::theTaskStartsAgainAtOnceAfterTheBreak()
{
    VisionDesk desk;
    desk.startTest({.mode = 1, .parameters = true});
    QVERIFY(play(desk, unsettled()));
    QCOMPARE(desk.boxes.take().size(), 1);

    desk.go({.mode = 1, .parameters = true});
    QVERIFY(desk.task.isRunning());
    QVERIFY(desk.shown("pb_go"));
    QCOMPARE(desk.text("le_timer02_S1"), QStringLiteral("283")); // the stored threshold again
    QCOMPARE(desk.text("le_noS1"), QStringLiteral("1"));
    desk.click("pb_go");
    QVERIFY(play(desk, alternating(20)));
    QVERIFY(isOver(desk));
    QCOMPARE(desk.rows().size(), 51 + 20);
    QCOMPARE(desk.rows().at(51)[RankTask], QStringLiteral("1"));
    QCOMPARE(desk.rows().at(51)[RankSub], QStringLiteral("1"));
    QCOMPARE(desk.rows().at(51)[Exposure], QStringLiteral("283"));
    QCOMPARE(desk.rows("Results/valid-output.csv").size(), 20); // none of the broken test
    QCOMPARE(group(desk, 0), QStringLiteral("247;0;19;283.000000;0;217.000000;0"));
}

void tst_Test1Stop::theCeilingCountsPlacesOnTheTrack_data()
{
    QTest::addColumn<QByteArray>("threshold");
    QTest::addColumn<QByteArray>("answers");
    QTest::addColumn<QString>("rank");
    // From the floor to the ceiling and back: each limit takes a second place.
    QTest::newRow("48 trials are 50 places")
        << QByteArray("17") << rights(1) + wrongs(19) + wrongs(1) + rights(19) + wrongs(8)
        << QStringLiteral("50");
    // The limit in the last trial leads from 49 to 51.
    QTest::newRow("the fiftieth place is passed over")
        << QByteArray("283") << rights(8) + wrongs(17) + rights(18) + wrongs(3) + rights(4)
        << QStringLiteral("51");
}

void tst_Test1Stop::theCeilingCountsPlacesOnTheTrack()
{
    QFETCH(const QByteArray, threshold);
    QFETCH(const QByteArray, answers);
    QFETCH(const QString, rank);
    VisionDesk desk;
    desk.writePatient(threshold + ";0;0");
    desk.startTest({.mode = 1});
    QVERIFY(play(desk, answers.chopped(1)));
    QVERIFY(desk.boxes.take().isEmpty());
    QVERIFY(play(desk, answers.last(1)));
    QCOMPARE(desk.boxes.take().size(), 1);
    const QList<QStringList> rows = desk.rows();
    QCOMPARE(rows.size(), answers.size() + 1);
    QCOMPARE(rows[answers.size() - 1][RankSub], rank);
    verifyNothingIsFiled(desk);
}

void tst_Test1Stop::anInterleavedTestIsBrokenOffWhenAllThreeAreAtFifty()
{
    VisionDesk desk;
    desk.writePatient("283;283;283");
    const QByteArray list = desk.root.bytes(QString::fromLatin1(VisionDesk::patients));
    desk.startTest({.mode = 0});
    playInterleaved(desk, {alternating(49), alternating(49), unsettled().first(49)});
    while (desk.rows().size() < 149)
        QVERIFY(runTrial(desk, wrong));
    QCOMPARE(desk.task.stage(), 1);
    QVERIFY(desk.boxes.take().isEmpty());
    // Two of the three have settled, and go down with the third.
    QVERIFY(desk.task.staircase(Test1::Central).isSettled());
    QVERIFY(desk.task.staircase(Test1::Peripheral).isSettled());
    QVERIFY(!desk.task.staircase(Test1::Dual).isSettled());
    QVERIFY(runTrial(desk, wrong));

    const auto messages = desk.boxes.take();
    QCOMPARE(messages.size(), 1);
    QCOMPARE(messages[0].text, QStringLiteral("Unstable measures, please start task over again"));
    QVERIFY(!desk.task.isRunning());
    QCOMPARE(desk.rows().size(), 151);
    QCOMPARE(desk.rows().constLast().constLast(), QStringLiteral("interrupted"));
    verifyNothingIsFiled(desk);
    QCOMPARE(desk.root.bytes(QString::fromLatin1(VisionDesk::patients)), list);
    QVERIFY(!sessionStore().escapeSeq);
    QCOMPARE(sessionStore().sessionNb.at(0), 2);
}

void tst_Test1Stop::oneSubtaskBeyondFiftyBreaksNothingOff()
{
    VisionDesk desk;
    desk.writePatient("17;283;283");
    desk.startTest({.mode = 0});
    const QByteArray late = rights(8) + wrongs(17) + alternating(20);
    playInterleaved(desk, {rights(50), late, late}); // the first takes two places a trial
    QVERIFY(isOver(desk));
    QVERIFY(desk.task.staircase(Test1::Central).position() >= 64);
    QCOMPARE(desk.thresholds(), QStringLiteral("17;3035;3035"));
}

void tst_Test1Stop::theCeilingComesBeforeTheSettledGroup()
{
    // Down, far up, down again, and then to and fro: the fourth peak settles the group.
    const auto walk = [](int down) { return rights(8) + wrongs(17) + rights(down); };
    const QByteArray toAndFro("WRWRWRWR");
    {
        VisionDesk desk; // at 49 entries it is a result
        desk.startTest({.mode = 1});
        QVERIFY(play(desk, walk(16) + toAndFro));
        QVERIFY(isOver(desk));
        QCOMPARE(trialsOfScores(desk), QStringLiteral("49"));
        // Peaks at step 4, troughs at step 3.
        QCOMPARE(group(desk, 0), QStringLiteral("40;0;10;50.000000;0;33.000000;0"));
    }
    VisionDesk desk; // at 50 it comes too late
    desk.startTest({.mode = 1});
    QVERIFY(play(desk, walk(17) + toAndFro));
    QCOMPARE(desk.boxes.take().size(), 1);
    QCOMPARE(desk.rows().size(), 51);
    verifyNothingIsFiled(desk);
    QCOMPARE(desk.thresholds(), QStringLiteral("283;367;483"));
}

void tst_Test1Stop::anAlternatingWalkIsOverAtTwentyEntries_data()
{
    addModes();
}

void tst_Test1Stop::anAlternatingWalkIsOverAtTwentyEntries()
{
    QFETCH(const int, mode);
    VisionDesk desk;
    desk.writePatient("283;283;283");
    desk.startTest({.mode = mode});
    QVERIFY(play(desk, alternating(19)));
    QCOMPARE(desk.task.stage(), 1);
    QVERIFY(desk.task.staircase(Test1::Subtask(mode - 1)).isSettled()); // but with 19 entries
    QVERIFY(runTrial(desk, wrong));
    QVERIFY(isOver(desk));
    QCOMPARE(desk.task.stage(), 0);
    // Nine peaks at 283 ms, ten troughs at 217 ms, and the root of their product, cut.
    QCOMPARE(group(desk, mode - 1), QStringLiteral("247;0;19;283.000000;0;217.000000;0"));
    QCOMPARE(trialsOfScores(desk), QStringLiteral("20"));
    QStringList thresholds(3, QStringLiteral("283"));
    thresholds[mode - 1] = QStringLiteral("247");
    QCOMPARE(desk.thresholds(), thresholds.join(u';'));
}

void tst_Test1Stop::aPatientWhoNeverErrsEndsAtTheFloor_data()
{
    QTest::addColumn<QByteArray>("threshold");
    QTest::addColumn<int>("trials");
    QTest::addColumn<int>("entries");
    QTest::addColumn<QString>("scores");
    QTest::newRow("twenty entries")
        << QByteArray("367") << 15 << 20 << QStringLiteral("17;0;9;17.000000;0;17.000000;4");
    QTest::newRow("nineteen, and then twenty-one")
        << QByteArray("283") << 15 << 21 << QStringLiteral("17;0;11;17.000000;0;17.000000;4");
    QTest::newRow("from the floor on")
        << QByteArray("17") << 10 << 20 << QStringLiteral("17;0;19;17.000000;0;17.000000;4");
}

void tst_Test1Stop::aPatientWhoNeverErrsEndsAtTheFloor()
{
    QFETCH(const QByteArray, threshold);
    QFETCH(const int, trials);
    QFETCH(const int, entries);
    QFETCH(const QString, scores);
    VisionDesk desk;
    desk.writePatient(threshold + ";0;0");
    desk.startTest({.mode = 1});
    QVERIFY(play(desk, rights(trials - 1)));
    QCOMPARE(desk.task.stage(), 1);
    QVERIFY(runTrial(desk, right));
    QVERIFY(isOver(desk));
    QCOMPARE(desk.rows().constLast()[RankSub], QString::number(entries));
    QCOMPARE(group(desk, 0), scores);
    QCOMPARE(desk.thresholds(), QStringLiteral("17;0;0"));
}

void tst_Test1Stop::aResultEndsTheTestWhateverNumberIsWanted()
{
    VisionDesk desk;
    desk.writePatient("17;0;0");
    desk.startTest({.mode = 1});
    desk.type("le_number", QStringLiteral("99999"));
    QVERIFY(play(desk, rights(10)));
    QVERIFY(isOver(desk));
    QCOMPARE(desk.thresholds(), QStringLiteral("17;0;0"));
}

void tst_Test1Stop::aPatientWhoAlwaysFailsEndsAtTheCeiling_data()
{
    QTest::addColumn<QByteArray>("threshold");
    QTest::addColumn<int>("trials");
    QTest::addColumn<int>("reversals");
    QTest::newRow("from the middle") << QByteArray("283") << 15 << 9;
    QTest::newRow("from the ceiling on") << QByteArray("4633") << 10 << 19;
}

void tst_Test1Stop::aPatientWhoAlwaysFailsEndsAtTheCeiling()
{
    QFETCH(const QByteArray, threshold);
    QFETCH(const int, trials);
    QFETCH(const int, reversals);
    VisionDesk desk;
    desk.writePatient(threshold + ";0;0");
    desk.startTest({.mode = 1});
    QVERIFY(play(desk, wrongs(trials - 1)));
    QCOMPARE(desk.task.stage(), 1);
    QVERIFY(runTrial(desk, wrong));
    QVERIFY(isOver(desk));
    QCOMPARE(desk.rows().constLast()[RankSub], QStringLiteral("20"));
    // The mean has passed through logarithms, and is cut: a hair may cost a millisecond.
    const QString value = desk.rows("Results/results_T1.csv").constLast().at(11);
    QVERIFY2(value == QStringLiteral("4632") || value == QStringLiteral("4633"), qPrintable(value));
    QCOMPARE(group(desk, 0), QStringLiteral("%1;0;%2;4633.000000;4;4633.000000;0")
                                 .arg(value, QString::number(reversals)));
    QCOMPARE(desk.thresholds(), value + QStringLiteral(";0;0"));
}

void tst_Test1Stop::settledPeaksWithoutSettledTroughsAreNoResult()
{
    VisionDesk desk;
    desk.startTest({.mode = 1});
    // Peaks at step 12 throughout; troughs at 9, 6, 3 and 11.
    QVERIFY(play(desk, wrongs(2) + rights(3) + wrongs(3) + rights(6) + wrongs(6) + rights(9) +
                           wrongs(9) + rights(1) + wrongs(1) + rights(1)));
    QCOMPARE(desk.task.stage(), 1);
    const Staircase &track = desk.task.staircase(Test1::Central);
    QCOMPARE(track.position(), 41);
    QCOMPARE(QList<int>(track.peaks().begin(), track.peaks().end()),
             QList<int>({12, 12, 12, 12, 12}));
    QCOMPARE(QList<int>(track.troughs().begin(), track.troughs().end()), QList<int>({9, 6, 3, 11}));
    QVERIFY(!track.isSettled());
    verifyNothingIsFiled(desk);
}

void tst_Test1Stop::anInterleavedTestGoesOnUntilAllHaveSettled()
{
    VisionDesk desk;
    desk.writePatient("283;283;283");
    desk.startTest({.mode = 0});
    const QByteArray late = rights(8) + wrongs(17) + alternating(20); // settles in its 33rd trial
    playInterleaved(desk, {alternating(40), alternating(40), late});
    QVERIFY(isOver(desk));
    const QList<QStringList> rows = desk.rows();
    QCOMPARE(rows.constLast()[Subtask], QStringLiteral("3")); // not before its turn
    QCOMPARE(rows.constLast()[RankSub], QStringLiteral("33"));
    QVERIFY(rows.size() > 96 && rows.size() <= 99);
    QCOMPARE(trialsOfScores(desk), QString::number(rows.size()));
    QVERIFY(group(desk, 0).startsWith(QStringLiteral("247;0;")));
    QVERIFY(group(desk, 1).startsWith(QStringLiteral("247;0;")));
    QVERIFY(group(desk, 2).startsWith(QStringLiteral("3035;0;")));
    QCOMPARE(desk.thresholds(), QStringLiteral("247;247;3035"));
}

void tst_Test1Stop::theLastComputationCounts()
{
    VisionDesk desk;
    desk.writePatient("283;283;283");
    desk.startTest({.mode = 0});
    const QByteArray late = rights(8) + wrongs(17) + alternating(20);
    // A first result of 247 ms at 20 entries; then three steps up, and to and fro there.
    playInterleaved(desk, {alternating(20) + wrongs(3) + alternating(20), alternating(40), late});
    QVERIFY(isOver(desk));
    const QStringList central = group(desk, 0).split(u';');
    QCOMPARE(central[0], QString::number(int(std::sqrt(650.0 * 483.0))));
    QCOMPARE(central[3], QStringLiteral("650.000000"));
    QCOMPARE(central[5], QStringLiteral("483.000000"));
    QCOMPARE(desk.thresholds(), QStringLiteral("560;247;3035"));
}

void tst_Test1Stop::aMissedTrialEntersTheTrackAsZero()
{
    VisionDesk desk;
    desk.startTest({.mode = 1, .fixedDuration = true});
    QVERIFY(play(desk, QByteArray("R-W-").repeated(5).chopped(1)));
    QCOMPARE(desk.task.stage(), 1);
    QVERIFY(runTrial(desk, nothing));
    QVERIFY(isOver(desk));
    const auto track = desk.task.staircase(Test1::Central).track();
    QList<int> expected{10};
    for (int pair = 0; pair < 5; ++pair)
        expected += {9, 0, 10, 0};
    QCOMPARE(QList<int>(track.begin(), track.end()), expected);

    // Nine troughs at 0, which stands for 17 ms. The nine peaks are told twice, but for the last:
    // behind a 0 they are also taken for what a reflection at the floor has stepped over.
    const QStringList scores = group(desk, 0).split(u';');
    const double sup = std::sqrt(283.0 * 217.0);
    QCOMPARE(scores[0], QString::number(int(std::sqrt(sup * 17.0))));
    QCOMPARE(scores[1], QStringLiteral("10"));
    QCOMPARE(scores[2], QString::number(9 + 17));
    QVERIFY(std::abs(scores[3].toDouble() - sup) < 1e-5);
    QCOMPARE(scores[4], QStringLiteral("0"));
    QCOMPARE(scores[5], QStringLiteral("17.000000"));
    QCOMPARE(scores[6], QStringLiteral("4"));
    QCOMPARE(trialsOfScores(desk), QStringLiteral("20"));
    QCOMPARE(desk.thresholds(), QStringLiteral("64;367;483"));
}

QTEST_MAIN(tst_Test1Stop)
#include "tst_Test1Stop.moc"
