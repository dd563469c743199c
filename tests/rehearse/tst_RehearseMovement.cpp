#include "Rehearsed.h"
#include "TrialRow.h"

#include <QTest>
#include <QTime>

#include <algorithm>
#include <cmath>

/// Whole movement detection tests, played by the program that is installed.
class tst_RehearseMovement : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aWholeTestLeavesItsFiles();
    void oneSeedGivesTheSameBytesTwice_data();
    void oneSeedGivesTheSameBytesTwice();
    void anotherSeedGivesAnotherTest();
    void severalTestsArePlayedInOneRun();
    void instructionAndTrainingLeaveNoRow();
    void theNumberIsTypedIntoThePanel_data();
    void theNumberIsTypedIntoThePanel();

    void whoMakesNoErrorNeedsFortyTrials_data();
    void whoMakesNoErrorNeedsFortyTrials();
    void theCostOfObliqueArrowsIsFoundInTheScores();
    void wrongAndUnknownDirectionsAreErrors();
    void withoutALimitAMissIsAVeryLateAnswer();
    void underFixedDurationAMissIsATimeOut();
    void whoIsFasterThanTheLimitBeginsIsUnderstood();

    void aPausedTrialBeginsAnew();
    void aStruckTrialIsAnErrorWithoutATime();
    void aLateSpaceDoesNotCount();
    void anEarlySpaceCountsFromTheArrow();
    void aLateDirectionCounts();
    void keysThatAreNotDueChangeNothing_data();
    void keysThatAreNotDueChangeNothing();
    void anEscapeBreaksTheTestOff();
};

namespace {

using namespace column;
enum Movement { MovementTime = 22, Place, Direction };
constexpr qsizetype firstScore = 11;

constexpr QLatin1String resultsFile("Results/results_T3.csv");
constexpr QLatin1String validFile("Results/valid-output.csv");
constexpr QLatin1String patientsFile("Parameters/patients_list.txt");
constexpr QLatin1String task("test3");

/// Space after 900 ms, the direction 500 ms later, and no error.
constexpr char steady[] =
    R"({"movement": {"reactionTime": {"mean": 900, "spread": 0}, "obliqueCost": 0, "misses": 0,
                     "unknown": 0, "rightDirections": 1,
                     "answerTime": {"mean": 500, "spread": 0}}})";
/// The same, who looks too late at every third arrow.
constexpr char missing[] =
    R"({"movement": {"reactionTime": {"mean": 900, "spread": 0}, "obliqueCost": 0,
                     "misses": 0.33, "unknown": 0, "rightDirections": 1}})";

constexpr char identity[] = ";Mrs.;REHEARSAL;Patient;01/01/1960;";

QStringList words(const char *line)
{
    return QString::fromLatin1(line).split(u' ', Qt::SkipEmptyParts);
}

int errors(const QList<QList<QByteArray>> &rows)
{
    return int(std::count_if(rows.begin(), rows.end(),
                             [](const QList<QByteArray> &row) { return row.at(Error) == "1"; }));
}

} // namespace

void tst_RehearseMovement::aWholeTestLeavesItsFiles()
{
    const Rehearsed rehearsed;
    const auto run = rehearsed.playTask(task);
    QCOMPARE(run.error, QByteArray());
    QCOMPARE(run.code, 0);
    QCOMPARE(run.out.count('\n'), 1);
    QVERIFY(run.out.startsWith(";Mrs.;REHEARSAL;Patient;01/01/1960;3;1;06/01/2025;09:0"));
    const QString archived = QStringLiteral("Archives/REHEARSAL Patient 01.01.1960/"
                                            "results_T3_REHEARSAL Patient 01.01.1960.csv");
    const QStringList expected{archived,
                               patientsFile,
                               QStringLiteral("Parameters/screen.pix"),
                               QStringLiteral("Results/output.csv"),
                               resultsFile,
                               QStringLiteral("Results/timing.csv"),
                               validFile};
    QCOMPARE(rehearsed.files().keys(), expected);
    QVERIFY(rehearsed.bytes(resultsFile).endsWith('\n' + run.out));
    QCOMPARE(rehearsed.bytes(archived), rehearsed.bytes(resultsFile));
    QCOMPARE(rehearsed.bytes(patientsFile),
             QByteArray("Mrs.;REHEARSAL;Patient;01.01.1960;0;0;1;0;0;0;0;0;0;0\r\n"));
    QCOMPARE(rehearsed.rows(validFile).size(), 40);
}

void tst_RehearseMovement::oneSeedGivesTheSameBytesTwice_data()
{
    QTest::addColumn<QString>("arguments");
    for (const char *arguments :
         {"--seed 6 --fixed-duration", "--seed 7 --instruction --training --number 12"})
        QTest::newRow(arguments) << QString::fromLatin1(arguments);
}

void tst_RehearseMovement::oneSeedGivesTheSameBytesTwice()
{
    QFETCH(QString, arguments);
    const Rehearsed first;
    const Rehearsed second;
    const auto one = first.playTask(task, arguments.split(u' '));
    const auto two = second.playTask(task, arguments.split(u' '));
    QVERIFY2(one.code == 0, one.error.constData());
    QCOMPARE(two.out, one.out);
    QCOMPARE(second.files(), first.files());
}

void tst_RehearseMovement::anotherSeedGivesAnotherTest()
{
    const Rehearsed first;
    const Rehearsed second;
    const auto one = first.playTask(task, words("--seed 1 --number 5"));
    const auto two = second.playTask(task, words("--seed 2 --number 5"));
    QCOMPARE(one.code, 0);
    QCOMPARE(two.code, 0);
    QVERIFY(one.out != two.out);
}

void tst_RehearseMovement::severalTestsArePlayedInOneRun()
{
    const Rehearsed rehearsed;
    const auto run = rehearsed.playTask(task, words("--number 6 --repeat 2"));
    QVERIFY2(run.code == 0, run.error.constData());
    QCOMPARE(run.out.count('\n'), 2);
    const auto scores = rehearsed.rows(resultsFile);
    QCOMPARE(scores.at(0).at(Session), QByteArray("1"));
    QCOMPARE(scores.at(1).at(Session), QByteArray("2"));
    QCOMPARE(rehearsed.bytes(patientsFile),
             QByteArray("Mrs.;REHEARSAL;Patient;01.01.1960;0;0;2;0;0;0;0;0;0;0\r\n"));
}

void tst_RehearseMovement::instructionAndTrainingLeaveNoRow()
{
    const Rehearsed rehearsed;
    const auto run =
        rehearsed.playTask(task, words("--instruction --training") + rehearsed.observer(steady));
    QVERIFY2(run.code == 0, run.error.constData());
    const auto rows = rehearsed.trials();
    QCOMPARE(rows.size(), 40);
    for (qsizetype i = 0; i < rows.size(); ++i)
        QCOMPARE(rows.at(i).at(RankTask), QByteArray::number(i + 1));
    QCOMPARE(rehearsed.rows(validFile), rows);
    QCOMPARE(run.out.split(';').at(10), QByteArray("40")); // of the test alone
}

void tst_RehearseMovement::theNumberIsTypedIntoThePanel_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<int>("trials");
    QTest::newRow("48") << QStringLiteral("--number 48") << 48;
    QTest::newRow("6 after both") << QStringLiteral("--number 6 --training --instruction") << 6;
    QTest::newRow("6 under fixed duration") << QStringLiteral("--number 6 --fixed-duration") << 6;
}

void tst_RehearseMovement::theNumberIsTypedIntoThePanel()
{
    QFETCH(QString, arguments);
    QFETCH(int, trials);
    const Rehearsed rehearsed;
    const auto run = rehearsed.playTask(task, arguments.split(u' ') + rehearsed.observer(steady));
    QVERIFY2(run.code == 0, run.error.constData());
    QCOMPARE(rehearsed.trials().size(), trials);
}

void tst_RehearseMovement::whoMakesNoErrorNeedsFortyTrials_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::newRow("keys") << QByteArray("keys");
    QTest::newRow("mouse") << QByteArray("mouse");
}

void tst_RehearseMovement::whoMakesNoErrorNeedsFortyTrials()
{
    QFETCH(QByteArray, answer);
    const Rehearsed rehearsed;
    const auto run = rehearsed.playTask(
        task, rehearsed.observer(R"({"movement": {"misses": 0, "unknown": 0, "rightDirections": 1,
                                                  "answer": ")" +
                                 answer + R"("}})"));
    QVERIFY2(run.code == 0, run.error.constData());
    QCOMPARE(rehearsed.trials().size(), 40);
    QCOMPARE(errors(rehearsed.trials()), 0);
    QMap<QByteArray, int> places;
    for (const auto &row : rehearsed.trials())
        ++places[row.at(Place)];
    QCOMPARE(places.size(), 8);
    for (const int count : qAsConst(places))
        QCOMPARE(count, 5);
}

void tst_RehearseMovement::theCostOfObliqueArrowsIsFoundInTheScores()
{
    const Rehearsed rehearsed;
    const auto run =
        rehearsed.playTask(task, rehearsed.observer(
                                     R"({"movement": {"reactionTime": {"mean": 900, "spread": 0},
                                   "obliqueCost": 300, "unknown": 0.1, "misses": 0.1}})"));
    QVERIFY2(run.code == 0, run.error.constData());
    // Each side has two oblique places and a cardinal one.
    QCOMPARE(run.out.trimmed().split(';').mid(firstScore + 4).join(';'),
             QByteArray("1200.000000;900.000000;1100.000000;1100.000000;1100.000000;1100.000000"));
    QVERIFY(errors(rehearsed.trials()) > 0);
}

void tst_RehearseMovement::wrongAndUnknownDirectionsAreErrors()
{
    const Rehearsed rehearsed;
    const auto run = rehearsed.playTask(
        task, words("--number 100") +
                  rehearsed.observer(R"({"movement": {"rightDirections": 0.75, "unknown": 0.2,
                                                      "misses": 0}})"));
    QVERIFY2(run.code == 0, run.error.constData());
    const auto rows = rehearsed.trials();
    for (qsizetype i = 0; i + 1 < rows.size(); ++i) {
        if (rows.at(i).at(Error) == "1") {
            QVERIFY(!rows.at(i).at(MovementTime).isEmpty());
            QCOMPARE(rows.at(i + 1).at(Place), rows.at(i).at(Place));
            QCOMPARE(rows.at(i + 1).at(RankTask), rows.at(i).at(RankTask));
        }
    }
    // 0.8 x 0.75 of the trials are valid: 100 of about 167, with a standard deviation of 11.
    QVERIFY2(std::abs(rows.size() - 167) < 32, qPrintable(QString::number(rows.size())));
}

void tst_RehearseMovement::withoutALimitAMissIsAVeryLateAnswer()
{
    const Rehearsed rehearsed;
    const auto run = rehearsed.playTask(task, words("--training") + rehearsed.observer(missing));
    QVERIFY2(run.code == 0, run.error.constData());
    for (const auto &row : rehearsed.trials())
        QCOMPARE(row.at(MovementTime), QByteArray(row.at(Error) == "1" ? "6000" : "900"));
    QVERIFY(errors(rehearsed.trials()) > 0);
}

void tst_RehearseMovement::underFixedDurationAMissIsATimeOut()
{
    const Rehearsed rehearsed;
    const auto run =
        rehearsed.playTask(task, words("--fixed-duration") + rehearsed.observer(missing));
    QVERIFY2(run.code == 0, run.error.constData());
    const auto rows = rehearsed.trials();
    for (const auto &row : rows)
        QCOMPARE(row.at(MovementTime), QByteArray(row.at(Error) == "1" ? "2500" : "900"));
    QVERIFY(errors(rows) > 0);
    // Every trial has taken its cycle of 7500 ms.
    QCOMPARE(rows.size(), 40 + errors(rows));
    QCOMPARE(run.out.split(';').at(9),
             QTime(0, 0).addMSecs(int(rows.size()) * 7500).toString().toLatin1());
}

void tst_RehearseMovement::whoIsFasterThanTheLimitBeginsIsUnderstood()
{
    const Rehearsed rehearsed;
    const auto run = rehearsed.playTask(
        task, rehearsed.observer(
                  R"({"movement": {"reactionTime": {"mean": 300, "spread": 0}, "obliqueCost": 0,
                                   "misses": 0, "unknown": 0, "rightDirections": 1}})"));
    QVERIFY2(run.code == 0, run.error.constData());
    QCOMPARE(rehearsed.trials().size(), 40);
    for (const auto &row : rehearsed.trials())
        QCOMPARE(row.at(MovementTime), QByteArray("300"));
}

void tst_RehearseMovement::aPausedTrialBeginsAnew()
{
    const Rehearsed rehearsed;
    const auto run = rehearsed.playTask(task, words("--number 6") + rehearsed.observer(steady) +
                                                  rehearsed.keys("2 4 P 100\n5 5 P 100\n"));
    QVERIFY2(run.code == 0, run.error.constData());
    const auto rows = rehearsed.trials();
    QCOMPARE(rows.size(), 8);
    for (const int marker : {1, 4})
        QCOMPARE(rows.at(marker).join(';'), QByteArray(identity) + "paused");
    const QList<int> trials{0, 2, 3, 5, 6, 7};
    for (int rank = 0; rank < trials.size(); ++rank) {
        const auto &row = rows.at(trials.at(rank));
        QCOMPARE(row.at(RankTask), QByteArray::number(rank + 1));
        QCOMPARE(row.at(MovementTime), QByteArray("900"));
        QCOMPARE(row.at(Error), QByteArray("0"));
    }
    QCOMPARE(run.out.split(';').at(10), QByteArray("6"));
    QCOMPARE(run.out.split(';').at(firstScore + 1), QByteArray("0.0"));
}

void tst_RehearseMovement::aStruckTrialIsAnErrorWithoutATime()
{
    const Rehearsed rehearsed;
    const auto run = rehearsed.playTask(task, words("--number 6") + rehearsed.observer(steady) +
                                                  rehearsed.keys("2 5 E\n4 5 E 400\n"));
    QVERIFY2(run.code == 0, run.error.constData());
    const auto rows = rehearsed.trials();
    QCOMPARE(rows.size(), 8);
    for (const int struck : {1, 3}) {
        QCOMPARE(rows.at(struck).at(MovementTime), QByteArray());
        QCOMPARE(rows.at(struck).at(Error), QByteArray("1"));
        QCOMPARE(rows.at(struck + 1).at(Place), rows.at(struck).at(Place));
        QCOMPARE(rows.at(struck + 1).at(RankTask), rows.at(struck).at(RankTask));
        QCOMPARE(rows.at(struck + 1).at(Error), QByteArray("0"));
    }
    QCOMPARE(run.out.split(';').at(10), QByteArray("8"));
    QCOMPARE(run.out.split(';').at(firstScore + 1), QByteArray("25.0"));
}

void tst_RehearseMovement::aLateSpaceDoesNotCount()
{
    const Rehearsed rehearsed;
    const auto run = rehearsed.playTask(
        task, words("--number 5") + rehearsed.observer(steady) +
                  rehearsed.keys("1 3 late\n2 3 late 5000\n3 3 late 5001\n5 4 late 3000\n"));
    QVERIFY2(run.code == 0, run.error.constData());
    const auto rows = rehearsed.trials();
    const QList<QByteArray> times{"2500", "5000", "5001", "900", "3500", "900"};
    QCOMPARE(rows.size(), times.size());
    for (int i = 0; i < times.size(); ++i) { // the fourth stage begins 500 ms behind the arrow
        QCOMPARE(rows.at(i).at(MovementTime), times.at(i));
        QCOMPARE(rows.at(i).at(Error), QByteArray(i == 2 ? "1" : "0"));
    }
}

void tst_RehearseMovement::anEarlySpaceCountsFromTheArrow()
{
    const Rehearsed rehearsed;
    const auto run = rehearsed.playTask(
        task, words("--number 5") + rehearsed.observer(steady) +
                  rehearsed.keys("1 1 early 90\n2 3 early 20\n3 3 early 600\n5 6 early 10\n"));
    QVERIFY2(run.code == 0, run.error.constData());
    const auto rows = rehearsed.trials();
    // A Space in the waits has no consequence; 20 ms are too short to see where the patch moves.
    const QList<QByteArray> times{"900", "20", "600", "900", "900", "900"};
    QCOMPARE(rows.size(), times.size());
    for (int i = 0; i < times.size(); ++i) {
        QCOMPARE(rows.at(i).at(MovementTime), times.at(i));
        QCOMPARE(rows.at(i).at(Error), QByteArray(i == 1 ? "1" : "0"));
    }
}

void tst_RehearseMovement::aLateDirectionCounts()
{
    const Rehearsed rehearsed;
    const QStringList number = words("--number 3");
    const QStringList late = rehearsed.observer(steady) + rehearsed.keys("2 5 late 60000\n");
    QCOMPARE(rehearsed.playTask(task, number + late).code, 0);
    QCOMPARE(rehearsed.trials().size(), 3);
    QCOMPARE(errors(rehearsed.trials()), 0);
    // Under a limit the time of the Space stays, and the trial is invalid.
    const Rehearsed limited;
    QCOMPARE(limited.playTask(task, number + late + words("--fixed-duration")).code, 0);
    QCOMPARE(limited.trials().size(), 4);
    QCOMPARE(limited.trials().at(1).at(Error), QByteArray("1"));
    QCOMPARE(limited.trials().at(1).at(MovementTime), QByteArray("900"));
}

void tst_RehearseMovement::keysThatAreNotDueChangeNothing_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<QByteArray>("keys");
    QTest::newRow("before the arrow and after the answer")
        << QStringLiteral("--training --number 8")
        << QByteArray("1 1 P 90\n2 1 E\n3 2 P\n4 2 E\n1 3 P\n2 3 E 9\n3 4 E 9\n4 6 P\n5 6 E 100\n");
    QTest::newRow("under fixed duration")
        << QStringLiteral("--fixed-duration --number 8")
        << QByteArray("1 5 P 90\n2 5 E 90\n3 4 P\n4 6 E\n5 1 P\n");
}

void tst_RehearseMovement::keysThatAreNotDueChangeNothing()
{
    QFETCH(QString, arguments);
    QFETCH(QByteArray, keys);
    const Rehearsed plain;
    const Rehearsed pressed;
    const QStringList words = arguments.split(u' ') + plain.observer(steady);
    QCOMPARE(plain.playTask(task, words).code, 0);
    QCOMPARE(pressed.playTask(task, words + pressed.keys(keys)).code, 0);
    QCOMPARE(pressed.files(), plain.files());
}

void tst_RehearseMovement::anEscapeBreaksTheTestOff()
{
    const Rehearsed rehearsed;
    const auto run =
        rehearsed.playTask(task, rehearsed.observer(steady) + rehearsed.keys("4 5 Escape 50\n"));
    Rehearsed::isComplaint(run, 4, "The test was broken off before its end.");
    const auto rows = rehearsed.trials();
    QCOMPARE(rows.size(), 4);
    QCOMPARE(rows.at(3).join(';'), QByteArray(identity) + "interrupted");
    QCOMPARE(rehearsed.bytes(resultsFile), QByteArray());
    QCOMPARE(rehearsed.bytes(patientsFile),
             QByteArray("Mrs.;REHEARSAL;Patient;01.01.1960;0;0;0;0;0;0;0;0;0;0\r\n"));
    // The number that the button had raised is free again.
    QCOMPARE(rehearsed.playTask(task, words("--number 3")).out.split(';').at(Session),
             QByteArray("1"));
}

QTEST_GUILESS_MAIN(tst_RehearseMovement)
#include "tst_RehearseMovement.moc"
