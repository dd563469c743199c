#include "Rehearsed.h"
#include "TrialRow.h"

#include <QTest>

#include <algorithm>

/// Whole working memory tests, played by the program that is installed.
class tst_RehearseMemory : public QObject
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

    void whoForgetsNothingIsNoMillimetreOff();
    void eachLoadComesFiveTimes();
    void aConfusedRunIsOffByTheSameTwice();
    void moreCrossesMakeLongerDistances();

    void aPausedRunGoesOnAtItsLatestCross();
    void aPauseAtTheQuestionBringsANewRun();
    void aStruckTrialTakesBackAFurtherRank();
    void aStrikeInTheFirstTrialLeadsToRank0();
    void aLateAnswerCounts();
    void aClickOutOfTurnIsAnsweredOnceMore();
    void aClickOutOfTurnCanEndATrial();
    void keysThatAreNotDueChangeNothing_data();
    void keysThatAreNotDueChangeNothing();
    void anEscapeBreaksTheTestOff();
};

namespace {

using namespace column;
enum Memory { FirstDistance = 25, LastDistance, FirstSector, LastSector };
constexpr qsizetype firstScore = 11;

constexpr QLatin1String resultsFile("Results/results_T4.csv");
constexpr QLatin1String validFile("Results/valid-output.csv");
constexpr QLatin1String patientsFile("Parameters/patients_list.txt");
constexpr QLatin1String task("test4");

/// Clicks where the crosses have stood, a second after each question.
constexpr char exact[] =
    R"({"memory": {"first": {"spread": 0}, "last": {"spread": 0}, "confusions": 0,
                   "answerTime": {"mean": 1000, "spread": 0}}})";
/// The same, who takes the first cross for the last one in every third run.
constexpr char confused[] =
    R"({"memory": {"first": {"spread": 0}, "last": {"spread": 0}, "confusions": 0.33}})";

constexpr char identity[] = ";Mrs.;REHEARSAL;Patient;01/01/1960;";
constexpr char nearest[] = "    1.00";

QStringList words(const char *line)
{
    return QString::fromLatin1(line).split(u' ', Qt::SkipEmptyParts);
}

QList<QByteArray> fields(const QList<QList<QByteArray>> &rows, int column)
{
    QList<QByteArray> fields;
    for (const QList<QByteArray> &row : rows)
        fields.append(row.value(column));
    return fields;
}

} // namespace

void tst_RehearseMemory::aWholeTestLeavesItsFiles()
{
    const Rehearsed rehearsed;
    const auto run = rehearsed.playTask(task);
    QCOMPARE(run.error, QByteArray());
    QCOMPARE(run.code, 0);
    QCOMPARE(run.out.count('\n'), 1);
    QVERIFY(run.out.startsWith(";Mrs.;REHEARSAL;Patient;01/01/1960;4;0;06/01/2025;09:0"));
    const QString archived = QStringLiteral("Archives/REHEARSAL Patient 01.01.1960/"
                                            "results_T4_REHEARSAL Patient 01.01.1960.csv");
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
             QByteArray("Mrs.;REHEARSAL;Patient;01.01.1960;0;0;0;1;0;0;0;0;0;0\r\n"));
    QCOMPARE(rehearsed.rows(validFile).size(), 30);
}

void tst_RehearseMemory::oneSeedGivesTheSameBytesTwice_data()
{
    QTest::addColumn<QString>("arguments");
    for (const char *arguments : {"--seed 6", "--seed 7 --instruction --training --number 12"})
        QTest::newRow(arguments) << QString::fromLatin1(arguments);
}

void tst_RehearseMemory::oneSeedGivesTheSameBytesTwice()
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

void tst_RehearseMemory::anotherSeedGivesAnotherTest()
{
    const Rehearsed first;
    const Rehearsed second;
    const auto one = first.playTask(task, words("--seed 1 --number 5"));
    const auto two = second.playTask(task, words("--seed 2 --number 5"));
    QCOMPARE(one.code, 0);
    QCOMPARE(two.code, 0);
    QVERIFY(one.out != two.out);
}

void tst_RehearseMemory::severalTestsArePlayedInOneRun()
{
    const Rehearsed rehearsed;
    const auto run = rehearsed.playTask(task, words("--number 6 --repeat 2"));
    QVERIFY2(run.code == 0, run.error.constData());
    QCOMPARE(run.out.count('\n'), 2);
    const auto rows = rehearsed.trials();
    QCOMPARE(rows.size(), 12);
    QCOMPARE(rows.at(5).at(Session), QByteArray("1"));
    QCOMPARE(rows.at(6).at(Session), QByteArray("2"));
    QCOMPARE(rehearsed.bytes(patientsFile),
             QByteArray("Mrs.;REHEARSAL;Patient;01.01.1960;0;0;0;2;0;0;0;0;0;0\r\n"));
}

void tst_RehearseMemory::instructionAndTrainingLeaveNoRow()
{
    const Rehearsed rehearsed;
    const auto run =
        rehearsed.playTask(task, words("--instruction --training") + rehearsed.observer(exact));
    QVERIFY2(run.code == 0, run.error.constData());
    const auto rows = rehearsed.trials();
    QCOMPARE(rows.size(), 30);
    for (qsizetype i = 0; i < rows.size(); ++i)
        QCOMPARE(rows.at(i).at(RankTask), QByteArray::number(i + 1));
    QCOMPARE(rehearsed.rows(validFile), rows);
    QCOMPARE(run.out.split(';').at(10), QByteArray("30")); // of the test alone
}

void tst_RehearseMemory::theNumberIsTypedIntoThePanel_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<int>("trials");
    QTest::newRow("36") << QStringLiteral("--number 36") << 36;
    QTest::newRow("6 after both") << QStringLiteral("--number 6 --training --instruction") << 6;
}

void tst_RehearseMemory::theNumberIsTypedIntoThePanel()
{
    QFETCH(QString, arguments);
    QFETCH(int, trials);
    const Rehearsed rehearsed;
    const auto run = rehearsed.playTask(task, arguments.split(u' ') + rehearsed.observer(exact));
    QVERIFY2(run.code == 0, run.error.constData());
    QCOMPARE(rehearsed.trials().size(), trials);
}

void tst_RehearseMemory::whoForgetsNothingIsNoMillimetreOff()
{
    const Rehearsed rehearsed;
    const auto run = rehearsed.playTask(task, rehearsed.observer(exact));
    QVERIFY2(run.code == 0, run.error.constData());
    const auto rows = rehearsed.trials();
    QCOMPARE(rows.size(), 30);
    for (const auto &row : rows) {
        QCOMPARE(row.at(FirstDistance), QByteArray(nearest));
        QCOMPARE(row.at(LastDistance), QByteArray(nearest));
        QVERIFY(row.at(FirstSector) != row.at(LastSector));
    }
    const auto scores = run.out.trimmed().split(';').mid(firstScore);
    QCOMPARE(scores.mid(0, 4).join(';'), QByteArray("1.000000;1.000000;1.000000;1.000000"));
    QCOMPARE(scores.at(5), QByteArray("0.000000")); // the practice line is flat
    QCOMPARE(scores.at(7), QByteArray("0.000000")); // no errors
    for (const int r2 : {4, 6})                     // of numbers that are all alike
        QVERIFY2(scores.at(r2).contains("nan"), scores.at(r2).constData());
}

void tst_RehearseMemory::eachLoadComesFiveTimes()
{
    const Rehearsed rehearsed;
    const auto run = rehearsed.playTask(task);
    QVERIFY2(run.code == 0, run.error.constData());
    const auto loads = fields(rehearsed.trials(), Subtask);
    for (int load = 0; load < 6; ++load)
        QCOMPARE(loads.count(QByteArray::number(load)), 5);
}

void tst_RehearseMemory::aConfusedRunIsOffByTheSameTwice()
{
    const Rehearsed rehearsed;
    const auto run = rehearsed.playTask(task, words("--seed 3") + rehearsed.observer(confused));
    QVERIFY2(run.code == 0, run.error.constData());
    const auto rows = rehearsed.trials();
    for (const auto &row : rows)
        QCOMPARE(row.at(LastDistance), row.at(FirstDistance));
    const auto right = fields(rows, FirstDistance).count(nearest);
    QVERIFY2(right > 10 && right < 28, qPrintable(QString::number(right)));
}

void tst_RehearseMemory::moreCrossesMakeLongerDistances()
{
    const Rehearsed rehearsed;
    const auto run = rehearsed.playTask(
        task, rehearsed.observer(R"({"memory": {"first": {"spread": 2, "growth": 2},
                                                "last": {"spread": 20, "growth": 0.6},
                                                "confusions": 0}})"));
    QVERIFY2(run.code == 0, run.error.constData());
    double shortRuns = 0.0;
    double longRuns = 0.0;
    double lastOfShortRuns = 0.0;
    double lastOfLongRuns = 0.0;
    const auto rows = rehearsed.trials();
    for (const auto &row : rows) {
        const bool isShort = row.at(Subtask).toInt() < 3;
        (isShort ? shortRuns : longRuns) += row.at(FirstDistance).trimmed().toDouble();
        (isShort ? lastOfShortRuns : lastOfLongRuns) += row.at(LastDistance).trimmed().toDouble();
    }
    QVERIFY(longRuns > 3.0 * shortRuns);
    QVERIFY(lastOfLongRuns < lastOfShortRuns / 2.0);
}

void tst_RehearseMemory::aPausedRunGoesOnAtItsLatestCross()
{
    const Rehearsed rehearsed;
    // Before Continue, before the first cross, at it, behind it, at the second cross, behind it,
    // and twice in one run.
    const auto run = rehearsed.playTask(
        task, words("--number 12") + rehearsed.observer(exact) +
                  rehearsed.keys("2 0 P 100\n3 1 P 100\n5 2 P 100\n7 3 P 100\n9 2 P 1600\n"
                                 "11 3 P 1600\n13 2 P 1600\n14 2 P 100\n"));
    QVERIFY2(run.code == 0, run.error.constData());
    auto rows = rehearsed.trials();
    QCOMPARE(rows.removeIf(
                 [](const auto &row) { return row.join(';') == QByteArray(identity) + "paused"; }),
             8);
    QCOMPARE(rows.size(), 12);
    for (int i = 0; i < rows.size(); ++i) {
        QCOMPARE(rows.at(i).at(RankTask), QByteArray::number(i + 1));
        QCOMPARE(rows.at(i).at(FirstDistance), QByteArray(nearest));
        QCOMPARE(rows.at(i).at(LastDistance), QByteArray(nearest));
        QCOMPARE(rows.at(i).at(Error), QByteArray("0"));
    }
}

void tst_RehearseMemory::aPauseAtTheQuestionBringsANewRun()
{
    const Rehearsed rehearsed;
    // One at the first question, and one at the second.
    const auto run = rehearsed.playTask(task, words("--number 4") + rehearsed.observer(exact) +
                                                  rehearsed.keys("2 4 P 100\n4 4 P 1100\n"));
    QVERIFY2(run.code == 0, run.error.constData());
    auto rows = rehearsed.trials();
    QCOMPARE(rows.size(), 6);
    QCOMPARE(rows.takeAt(3).join(';'), QByteArray(identity) + "paused");
    QCOMPARE(rows.takeAt(1).join(';'), QByteArray(identity) + "paused");
    QCOMPARE(fields(rows, RankTask), QList<QByteArray>({"1", "2", "3", "4"}));
    QCOMPARE(fields(rows, FirstDistance).count(nearest), 4);
    QCOMPARE(fields(rows, LastDistance).count(nearest), 4);
}

void tst_RehearseMemory::aStruckTrialTakesBackAFurtherRank()
{
    const Rehearsed rehearsed;
    const auto run = rehearsed.playTask(task, words("--number 6") + rehearsed.observer(exact) +
                                                  rehearsed.keys("3 4 E\n7 4 E 1100\n"));
    QVERIFY2(run.code == 0, run.error.constData());
    const auto rows = rehearsed.trials();
    QCOMPARE(fields(rows, RankTask),
             QList<QByteArray>({"1", "2", "3", "2", "3", "4", "5", "4", "5", "6"}));
    QCOMPARE(fields(rows, Error),
             QList<QByteArray>({"0", "0", "1", "0", "0", "0", "1", "0", "0", "0"}));
    for (const int struck : {2, 6}) {
        QCOMPARE(rows.at(struck).at(FirstDistance), QByteArray());
        QCOMPARE(rows.at(struck).at(LastDistance), QByteArray());
        QCOMPARE(rows.at(struck + 1).at(Subtask), rows.at(struck).at(Subtask));
    }
    const auto scores = run.out.trimmed().split(';');
    QCOMPARE(scores.at(10), QByteArray("8")); // the valid ones
    QCOMPARE(scores.at(firstScore + 7), QByteArray("25.000000"));
}

void tst_RehearseMemory::aStrikeInTheFirstTrialLeadsToRank0()
{
    const Rehearsed rehearsed;
    const auto run = rehearsed.playTask(task, words("--number 3") + rehearsed.observer(exact) +
                                                  rehearsed.keys("1 4 E\n"));
    QVERIFY2(run.code == 0, run.error.constData());
    QCOMPARE(fields(rehearsed.trials(), RankTask), QList<QByteArray>({"1", "0", "1", "2", "3"}));
}

void tst_RehearseMemory::aLateAnswerCounts()
{
    const Rehearsed rehearsed;
    const auto run = rehearsed.playTask(task, words("--number 3") + rehearsed.observer(exact) +
                                                  rehearsed.keys("2 4 late 600000\n"));
    QVERIFY2(run.code == 0, run.error.constData());
    QCOMPARE(fields(rehearsed.trials(), LastDistance).count(nearest), 3);
    QVERIFY2(run.out.split(';').at(9) > "00:10:00", run.out.constData());
}

void tst_RehearseMemory::aClickOutOfTurnIsAnsweredOnceMore()
{
    const Rehearsed rehearsed;
    // The pause has left the question for the last cross; the click comes in the run behind it.
    const auto run = rehearsed.playTask(task, words("--number 4") + rehearsed.observer(exact) +
                                                  rehearsed.keys("2 4 P 100\n3 1 early 10\n"));
    QVERIFY2(run.code == 0, run.error.constData());
    auto rows = rehearsed.trials();
    QCOMPARE(rows.size(), 5);
    rows.removeAt(1);
    QCOMPARE(fields(rows, FirstDistance).count(nearest), 4);
    QCOMPARE(fields(rows, LastDistance).count(nearest), 4);
}

void tst_RehearseMemory::aClickOutOfTurnCanEndATrial()
{
    const Rehearsed rehearsed;
    // The pause has left the question for the first cross.
    const auto run = rehearsed.playTask(task, words("--number 4") + rehearsed.observer(exact) +
                                                  rehearsed.keys("2 4 P 1100\n3 1 early 10\n"));
    QVERIFY2(run.code == 0, run.error.constData());
    const auto rows = rehearsed.trials();
    QCOMPARE(rows.at(1).join(';'), QByteArray(identity) + "paused");
    QCOMPARE(rows.at(2).at(RankTask), QByteArray("2"));
    QCOMPARE(rows.at(2).at(LastDistance), QByteArray(" 9999.00"));
    QVERIFY(rows.at(2).at(FirstDistance).trimmed().toDouble() > 10.0);
    QCOMPARE(rows.at(2).at(Error), QByteArray("0"));
}

void tst_RehearseMemory::keysThatAreNotDueChangeNothing_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<QByteArray>("keys");
    QTest::newRow("strikes outside the question")
        << QStringLiteral("--number 8")
        << QByteArray("2 0 E 100\n3 1 E\n4 2 E\n5 2 E 1600\n6 3 E\n7 5 E\n8 5 E 500\n");
    QTest::newRow("pauses behind the answers")
        << QStringLiteral("--training --number 8") << QByteArray("1 5 P\n3 5 P 500\n7 5 P 999\n");
    QTest::newRow("the guides") << QStringLiteral("--training --number 8")
                                << QByteArray(
                                       "1 1 S\n2 0 S 100\n3 1 S\n4 2 S\n5 3 S\n6 4 S\n7 5 S\n");
}

void tst_RehearseMemory::keysThatAreNotDueChangeNothing()
{
    QFETCH(QString, arguments);
    QFETCH(QByteArray, keys);
    const Rehearsed plain;
    const Rehearsed pressed;
    const QStringList words = arguments.split(u' ') + plain.observer(exact);
    QCOMPARE(plain.playTask(task, words).code, 0);
    QCOMPARE(pressed.playTask(task, words + pressed.keys(keys)).code, 0);
    QCOMPARE(pressed.files(), plain.files());
}

void tst_RehearseMemory::anEscapeBreaksTheTestOff()
{
    const Rehearsed rehearsed;
    const auto run =
        rehearsed.playTask(task, rehearsed.observer(exact) + rehearsed.keys("4 4 Escape 50\n"));
    Rehearsed::isComplaint(run, 4, "The test was broken off before its end.");
    const auto rows = rehearsed.trials();
    QCOMPARE(rows.size(), 4);
    QCOMPARE(rows.at(3).join(';'), QByteArray(identity) + "interrupted");
    QCOMPARE(rehearsed.bytes(resultsFile), QByteArray());
    QCOMPARE(rehearsed.bytes(patientsFile),
             QByteArray("Mrs.;REHEARSAL;Patient;01.01.1960;0;0;0;0;0;0;0;0;0;0\r\n"));
    // The number that the button had raised is free again.
    QCOMPARE(rehearsed.playTask(task, words("--number 3")).code, 0);
    QCOMPARE(rehearsed.trials().constLast().at(Session), QByteArray("1"));
}

QTEST_GUILESS_MAIN(tst_RehearseMemory)
#include "tst_RehearseMemory.moc"
