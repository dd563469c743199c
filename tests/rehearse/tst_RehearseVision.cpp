#include "Rehearsed.h"
#include "TrialRow.h"

#include <QSet>
#include <QTest>

#include <cmath>
#include <numeric>

/// Whole visual perception tests, played by the program that is installed.
class tst_RehearseVision : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void afterATrainingThePatientCanBeTested_data();
    void afterATrainingThePatientCanBeTested();
    void thePartsKeepTheirThresholdsApart();
    void oneSeedGivesTheSameBytesTwice_data();
    void oneSeedGivesTheSameBytesTwice();
    void severalTestsArePlayedInOneRun();
    void instructionAndTrainingLeaveNoRow_data();
    void instructionAndTrainingLeaveNoRow();
    void theNumberCutsTheTestShort_data();
    void theNumberCutsTheTestShort();

    void theExposuresAreThoseOfTheScreen_data();
    void theExposuresAreThoseOfTheScreen();
    void whatIsShownLongEnoughIsAnsweredRightly();
    void whoIsAlwaysRightGoesToTheFloor_data();
    void whoIsAlwaysRightGoesToTheFloor();
    void whoIsAlwaysWrongGoesToTheCeiling();
    void theMeasuredThresholdsAreThePatientsOwn();

    void underFixedDurationEveryTrialTakesOneCycle_data();
    void underFixedDurationEveryTrialTakesOneCycle();
    void aLimitThatRunsOutMakesNoStep();
    void withoutALimitALateAnswerCounts();
    void aClickAsideChangesNothing();

    void aPausedTrialIsRepeatedAtItsRank();
    void aStruckTrialIsRepeatedAtItsRank();
    void aTrialStruckBetweenItsHalvesGoesOnInOneOfThem();
    void keysThatAreNotDueChangeNothing_data();
    void keysThatAreNotDueChangeNothing();
    void anEscapeKeepsTheExposuresOfTheMoment();
    void anEscapeInTheFirstTrainingLeavesNoThreshold();
};

namespace {

using namespace column;
enum Vision { Exposure = 12, Figure, FigureAnswer, Place, PlaceAnswer, AnswerTime, AnswerCode };
constexpr qsizetype firstGroup = 11;
constexpr qsizetype groupSize = 7;

constexpr QLatin1String resultsFile("Results/results_T1.csv");
constexpr QLatin1String validFile("Results/valid-output.csv");
constexpr QLatin1String training("--training");
constexpr QLatin1String test1("test1");

constexpr char right[] = R"({"vision": {"answers": "always right"}})";
constexpr char wrong[] = R"({"vision": {"answers": "always wrong"}})";
/// Answers after a second.
constexpr char steady[] = R"({"vision": {"answerTime": {"mean": 1000, "spread": 0}}})";

using Row = QList<QByteArray>;

QStringList words(const char *line)
{
    return QString::fromLatin1(line).split(u' ', Qt::SkipEmptyParts);
}

/// The tasks by name, with the first and the last subtask that they ask for.
void addTasks()
{
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("last");
    QTest::newRow("test1") << 0 << 2;
    QTest::newRow("test5") << 0 << 0;
    QTest::newRow("test6") << 1 << 1;
    QTest::newRow("test7") << 2 << 2;
}

QString currentTask()
{
    return QString::fromLatin1(QTest::currentDataTag()).section(u' ', 0, 0);
}

/// The patient's line.
Row line(const Rehearsed &rehearsed)
{
    return rehearsed.bytes(QStringLiteral("Parameters/patients_list.txt")).trimmed().split(';');
}

Row thresholds(const Rehearsed &rehearsed)
{
    return line(rehearsed).mid(11);
}

/// The value of each group of a row of scores.
Row values(const QByteArray &scores)
{
    const Row fields = scores.trimmed().split(';');
    return {fields.at(firstGroup), fields.at(firstGroup + groupSize),
            fields.at(firstGroup + 2 * groupSize)};
}

/// The first exposure of a subtask, 0 to 2, among these rows.
QByteArray firstExposure(const QList<Row> &rows, int subtask)
{
    for (const Row &row : rows) {
        if (row.at(Subtask).toInt() == subtask + 1)
            return row.at(Exposure);
    }
    return {};
}

constexpr char identity[] = ";Mrs.;REHEARSAL;Patient;01/01/1960;";

/// A geometric mean as it stands in the scores: of four equal peaks and four equal troughs, by
/// their logarithms, cut to a whole number.
QByteArray cutMean(double ms)
{
    const double sum = 4 * std::log(ms) + 4 * std::log(ms);
    return QByteArray::number(int(std::exp(sum / 8.0)));
}

} // namespace

void tst_RehearseVision::afterATrainingThePatientCanBeTested_data()
{
    addTasks();
}

void tst_RehearseVision::afterATrainingThePatientCanBeTested()
{
    QFETCH(int, first);
    QFETCH(int, last);
    const Rehearsed rehearsed;
    const auto trained = rehearsed.playTask(currentTask(), {training});
    QVERIFY2(trained.code == 0, trained.error.constData());
    const Row stored = thresholds(rehearsed);
    const auto before = rehearsed.trials().size();
    const auto tested = rehearsed.playTask(currentTask(), {});
    QVERIFY2(tested.code == 0, tested.error.constData());

    const int task = currentTask().last(1).toInt();
    const QByteArray printed = trained.out + tested.out;
    QCOMPARE(line(rehearsed).at(3 + task), QByteArray("2"));
    QCOMPARE(printed.count('\n'), 2);
    QVERIFY(rehearsed.bytes(resultsFile).endsWith('\n' + printed));
    QCOMPARE(rehearsed.bytes(QStringLiteral("Archives/REHEARSAL Patient 01.01.1960/"
                                            "results_T1_REHEARSAL Patient 01.01.1960.csv")),
             rehearsed.bytes(resultsFile));
    for (const auto &[run, session] : {std::pair(trained.out, "1"), std::pair(tested.out, "2")}) {
        const Row fields = run.trimmed().split(';');
        QCOMPARE(fields.size(), firstGroup + 3 * groupSize);
        QCOMPARE(fields.at(Task), QByteArray::number(task));
        QCOMPARE(fields.at(Session), QByteArray(session));
        for (qsizetype i = firstGroup; i < fields.size(); ++i) {
            const auto group = (i - firstGroup) / groupSize;
            QCOMPARE(!fields.at(i).isEmpty(), group >= first && group <= last);
        }
    }
    for (int subtask = 0; subtask < 3; ++subtask) {
        const bool asked = subtask >= first && subtask <= last;
        QCOMPARE(stored.at(subtask), asked ? values(trained.out).at(subtask) : QByteArray("0"));
        QCOMPARE(thresholds(rehearsed).at(subtask),
                 asked ? values(tested.out).at(subtask) : QByteArray("0"));
        if (asked) // the staircase begins where the last test has ended
            QCOMPARE(firstExposure(rehearsed.trials().mid(before), subtask), stored.at(subtask));
    }
}

void tst_RehearseVision::thePartsKeepTheirThresholdsApart()
{
    const Rehearsed rehearsed;
    rehearsed.storeThresholds();
    Row expected = line(rehearsed);
    const QList<std::pair<QString, int>> parts{
        {QStringLiteral("test5"), 0}, {QStringLiteral("test6"), 1}, {QStringLiteral("test7"), 2}};
    for (const auto &[task, subtask] : parts) {
        const auto run = rehearsed.playTask(task, {});
        QVERIFY2(run.code == 0, run.error.constData());
        expected[8 + subtask] = "1";
        expected[11 + subtask] = values(run.out).at(subtask);
        QCOMPARE(line(rehearsed), expected);
    }
    QCOMPARE(rehearsed.bytes(resultsFile).count("code;gender"), 1);
}

void tst_RehearseVision::oneSeedGivesTheSameBytesTwice_data()
{
    QTest::addColumn<QString>("arguments");
    for (const char *row :
         {"test1 --seed 5 --training", "test1 --seed 6 --training --instruction --fixed-duration",
          "test1 --seed 7 --training --frequency 120 --repeat 2",
          "test5 --seed 8 --training --number 7", "test6 --seed 9 --training",
          "test7 --seed 10 --training --instruction"})
        QTest::newRow(row) << QString::fromLatin1(row).section(u' ', 1);
}

void tst_RehearseVision::oneSeedGivesTheSameBytesTwice()
{
    QFETCH(QString, arguments);
    const Rehearsed first;
    const Rehearsed second;
    const auto one = first.playTask(currentTask(), arguments.split(u' '));
    const auto two = second.playTask(currentTask(), arguments.split(u' '));
    QVERIFY2(one.code == 0, one.error.constData());
    QCOMPARE(two.out, one.out);
    QCOMPARE(second.files(), first.files());
}

void tst_RehearseVision::severalTestsArePlayedInOneRun()
{
    const Rehearsed rehearsed;
    const auto run = rehearsed.playTask(test1, words("--training --repeat 3"));
    QVERIFY2(run.code == 0, run.error.constData());
    QCOMPARE(run.out.count('\n'), 3);
    const auto scores = rehearsed.rows(resultsFile);
    for (int i = 0; i < 3; ++i)
        QCOMPARE(scores.at(i).at(Session), QByteArray::number(i + 1));
    QCOMPARE(thresholds(rehearsed), values(run.out.split('\n').at(2)));
}

void tst_RehearseVision::instructionAndTrainingLeaveNoRow_data()
{
    addTasks();
}

void tst_RehearseVision::instructionAndTrainingLeaveNoRow()
{
    const Rehearsed rehearsed;
    const auto run = rehearsed.playTask(currentTask(), words("--instruction --training"));
    QVERIFY2(run.code == 0, run.error.constData());
    const auto rows = rehearsed.trials();
    QVERIFY(rows.size() >= 20);
    for (qsizetype i = 0; i < rows.size(); ++i)
        QCOMPARE(rows.at(i).at(RankTask), QByteArray::number(i + 1));
    QCOMPARE(rehearsed.rows(validFile), rows);
}

void tst_RehearseVision::theNumberCutsTheTestShort_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::newRow("test1") << QStringLiteral("--number 7");
    QTest::newRow("test5") << QStringLiteral("--number 4 --fixed-duration");
    QTest::newRow("test6") << QStringLiteral("--number 4 --training");
    QTest::newRow("test7") << QStringLiteral("--number 4 --training --instruction");
}

void tst_RehearseVision::theNumberCutsTheTestShort()
{
    QFETCH(QString, arguments);
    const Rehearsed rehearsed;
    rehearsed.storeThresholds();
    const auto run = rehearsed.playTask(currentTask(), arguments.split(u' '));
    QVERIFY2(run.code == 0, run.error.constData());
    const int number = currentTask() == test1 ? 7 : 4;
    QCOMPARE(rehearsed.trials().size(), number);
    QCOMPARE(run.out.split(';').at(10), QByteArray("0")); // the test has found nothing
}

void tst_RehearseVision::theExposuresAreThoseOfTheScreen_data()
{
    QTest::addColumn<QList<int>>("exposures");
    QTest::newRow("60") << QList<int>{17,  33,  50,  67,   83,   117,  150,  217,  283, 367,
                                      483, 650, 850, 1133, 1500, 1983, 2633, 3500, 4633};
    QTest::newRow("120") << QList<int>{17,  33,  42,  50,  67,   92,   117,  158,  208,  275,
                                       367, 492, 650, 858, 1133, 1500, 1992, 2633, 3492, 4633};
}

void tst_RehearseVision::theExposuresAreThoseOfTheScreen()
{
    QFETCH(QList<int>, exposures);
    const Rehearsed rehearsed;
    const auto run = rehearsed.playTask(
        test1, {training, QStringLiteral("--frequency"), QLatin1String(QTest::currentDataTag())});
    QVERIFY2(run.code == 0, run.error.constData());
    QSet<int> seen;
    // The first trial of each subtask is shown for what the training has found.
    for (const Row &row : rehearsed.trials().mid(3)) {
        seen.insert(row.at(Exposure).toInt());
        QVERIFY2(exposures.contains(row.at(Exposure).toInt()), row.at(Exposure).constData());
    }
    QVERIFY(seen.size() > 5);
}

void tst_RehearseVision::whatIsShownLongEnoughIsAnsweredRightly()
{
    const Rehearsed rehearsed;
    // All is seen above the threshold, and nothing below it.
    const auto run = rehearsed.playTask(
        test1, QStringList{training} +
                   rehearsed.observer(
                       R"({"vision": {"central": {"threshold": 75, "steepness": 100, "lapses": 0},
                               "peripheral": {"threshold": 40, "steepness": 100, "lapses": 0},
                               "dual": {"threshold": 180, "steepness": 100, "lapses": 0}}})"));
    QVERIFY2(run.code == 0, run.error.constData());
    const QList<int> limits{75, 40, 180};
    int guesses = 0;
    int errors = 0;
    for (const Row &row : rehearsed.trials()) {
        const int subtask = row.at(Subtask).toInt() - 1;
        const bool seen = row.at(Exposure).toInt() > limits.at(subtask);
        if (seen)
            QCOMPARE(row.at(AnswerCode), QByteArray("0"));
        guesses += seen ? 0 : 1;
        errors += row.at(AnswerCode) == "0" ? 0 : 1;
    }
    QVERIFY(guesses > 10);
    QVERIFY2(errors > guesses / 2, qPrintable(QString::number(errors)));
}

void tst_RehearseVision::whoIsAlwaysRightGoesToTheFloor_data()
{
    addTasks();
}

void tst_RehearseVision::whoIsAlwaysRightGoesToTheFloor()
{
    QFETCH(int, first);
    QFETCH(int, last);
    const Rehearsed rehearsed;
    const auto run =
        rehearsed.playTask(currentTask(), QStringList{training} + rehearsed.observer(right));
    QVERIFY2(run.code == 0, run.error.constData());
    const Row fields = run.out.trimmed().split(';');
    for (int group = first; group <= last; ++group) {
        const Row scores = fields.mid(firstGroup + group * groupSize, groupSize);
        QCOMPARE(scores.at(0), cutMean(17));
        QCOMPARE(scores.at(1), QByteArray("0"));
        QCOMPARE(scores.mid(3).join(';'), QByteArray("17.000000;0;17.000000;4"));
    }
    // At the floor every trial takes two places on the track, so that 20 are reached soon.
    QVERIFY(fields.at(10).toInt() < 20 * (last - first + 1));
}

void tst_RehearseVision::whoIsAlwaysWrongGoesToTheCeiling()
{
    const Rehearsed rehearsed;
    rehearsed.storeThresholds();
    const auto run = rehearsed.playTask(test1, rehearsed.observer(wrong));
    QVERIFY2(run.code == 0, run.error.constData());
    const Row fields = run.out.trimmed().split(';');
    for (int group = 0; group < 3; ++group) {
        const Row scores = fields.mid(firstGroup + group * groupSize, groupSize);
        QCOMPARE(scores.at(0), cutMean(4633));
        QCOMPARE(scores.mid(3).join(';'), QByteArray("4633.000000;4;4633.000000;0"));
    }
    const QList<QByteArray> codes{"1", "2", "3"};
    for (const Row &row : rehearsed.trials())
        QCOMPARE(row.at(AnswerCode), codes.at(row.at(Subtask).toInt() - 1));
}

void tst_RehearseVision::theMeasuredThresholdsAreThePatientsOwn()
{
    const Rehearsed rehearsed;
    const auto run = rehearsed.playTask(
        test1, words("--training --repeat 10") +
                   rehearsed.observer(
                       R"({"vision": {"central": {"threshold": 120, "steepness": 4, "lapses": 0},
                               "peripheral": {"threshold": 300, "steepness": 4, "lapses": 0},
                               "dual": {"threshold": 600, "steepness": 4, "lapses": 0}}})"));
    QVERIFY2(run.code == 0, run.error.constData());
    // The staircase goes to where half of the answers are right: of n possible ones, with the share
    // s seen, s + (1 - s) / n = 1/2.
    const QList<double> expected{120 * std::pow(0.375 / 0.625, 0.25),
                                 300 * std::pow(0.4 / 0.6, 0.25),
                                 600 * std::pow((14.0 / 29) / (15.0 / 29), 0.25)};
    QList<double> logs{0.0, 0.0, 0.0};
    const auto scores = rehearsed.rows(resultsFile);
    QCOMPARE(scores.size(), 10);
    for (const Row &row : scores) {
        for (int group = 0; group < 3; ++group)
            logs[group] += std::log(row.at(firstGroup + group * groupSize).toDouble()) / 10.0;
    }
    for (int group = 0; group < 3; ++group) {
        const double off = std::exp(logs.at(group)) / expected.at(group);
        QVERIFY2(off > 0.88 && off < 1.12, qPrintable(QString::number(off)));
    }
}

void tst_RehearseVision::underFixedDurationEveryTrialTakesOneCycle_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<bool>("stored");
    QTest::addColumn<int>("shown"); // ms in the cycle
    // Without thresholds a cycle has no exposure in it, and with them it has that of the training.
    QTest::newRow("test5") << QString() << true << 67;
    QTest::newRow("test6 after training") << QStringLiteral("--training") << true << 1133;
    QTest::newRow("test7 after the first training") << QStringLiteral("--training") << false << 0;
}

void tst_RehearseVision::underFixedDurationEveryTrialTakesOneCycle()
{
    QFETCH(QString, arguments);
    QFETCH(bool, stored);
    QFETCH(int, shown);
    const Rehearsed rehearsed;
    if (stored)
        rehearsed.storeThresholds();
    const auto run = rehearsed.playTask(
        currentTask(), words("--fixed-duration") + arguments.split(u' ', Qt::SkipEmptyParts));
    QVERIFY2(run.code == 0, run.error.constData());
    const auto rows = rehearsed.trials();
    for (qsizetype i = 1; i < rows.size(); ++i) {
        const auto at = [&rows](qsizetype trial) {
            return QTime::fromString(QString::fromLatin1(rows.at(trial).at(Time)),
                                     QStringLiteral("hh:mm:ss.zzz"));
        };
        QCOMPARE(at(i - 1).msecsTo(at(i)), 500 + 200 + 500 + 5000 + 1000 + shown);
    }
}

void tst_RehearseVision::aLimitThatRunsOutMakesNoStep()
{
    const Rehearsed rehearsed;
    rehearsed.storeThresholds();
    const auto run = rehearsed.playTask(QStringLiteral("test5"),
                                        words("--fixed-duration") + rehearsed.observer(steady) +
                                            rehearsed.keys("2 5 late 5001\n4 5 late 4999\n"));
    QVERIFY2(run.code == 0, run.error.constData());
    const auto rows = rehearsed.trials();
    QCOMPARE(rows.at(1).at(AnswerTime), QByteArray("5000"));
    QCOMPARE(rows.at(1).at(Error), QByteArray("1"));
    QCOMPARE(rows.at(1).at(RankSub), QByteArray("2"));
    QCOMPARE(rows.at(2).at(Exposure), rows.at(1).at(Exposure));
    QCOMPARE(rows.at(3).at(AnswerTime), QByteArray("4999"));
    QCOMPARE(rows.at(3).at(Error), QByteArray("0"));
    QCOMPARE(run.out.split(';').at(firstGroup + 1), QByteArray("1"));
    QCOMPARE(rehearsed.rows(validFile), rows); // it stays among the valid rows
}

void tst_RehearseVision::withoutALimitALateAnswerCounts()
{
    const Rehearsed rehearsed;
    rehearsed.storeThresholds();
    const auto run =
        rehearsed.playTask(QStringLiteral("test6"),
                           rehearsed.observer(steady) + rehearsed.keys("2 5 late 60000\n3 5 late\n"
                                                                       "4 5 early 70\n"));
    QVERIFY2(run.code == 0, run.error.constData());
    const auto rows = rehearsed.trials();
    const QList<QByteArray> times{"1000", "60000", "2500", "70", "1000"};
    for (int i = 0; i < 5; ++i) {
        QCOMPARE(rows.at(i).at(AnswerTime), times.at(i));
        QCOMPARE(rows.at(i).at(Error), QByteArray("0"));
    }
}

void tst_RehearseVision::aClickAsideChangesNothing()
{
    const Rehearsed plain;
    const Rehearsed clicked;
    QCOMPARE(plain.playTask(test1, {training}).code, 0);
    QCOMPARE(clicked
                 .playTask(test1, QStringList{training} +
                                      clicked.keys("1 1 early 50\n2 2 early 10\n3 3 early\n"
                                                   "4 4 early 20\n5 6 early 30\n"))
                 .code,
             0);
    QCOMPARE(clicked.files(), plain.files());
}

void tst_RehearseVision::aPausedTrialIsRepeatedAtItsRank()
{
    const Rehearsed rehearsed;
    rehearsed.storeThresholds();
    const auto run = rehearsed.playTask(test1, words("--number 6") + rehearsed.observer(steady) +
                                                   rehearsed.keys("2 5 P 100\n"));
    QVERIFY2(run.code == 0, run.error.constData());
    const auto rows = rehearsed.trials();
    QCOMPARE(rows.size(), 7);
    QCOMPARE(rows.at(1).join(';'), QByteArray(identity) + "paused");
    QCOMPARE(rows.at(2).at(RankTask), QByteArray("2"));
    QCOMPARE(rows.at(2).at(RankSub), QByteArray("1"));
    QCOMPARE(rows.at(2).at(Error), QByteArray("0"));
}

void tst_RehearseVision::aStruckTrialIsRepeatedAtItsRank()
{
    const Rehearsed rehearsed;
    rehearsed.storeThresholds();
    const auto run = rehearsed.playTask(QStringLiteral("test7"), words("--number 6") +
                                                                     rehearsed.observer(steady) +
                                                                     rehearsed.keys("3 5 E 100\n"));
    QVERIFY2(run.code == 0, run.error.constData());
    const auto rows = rehearsed.trials();
    QCOMPARE(rows.size(), 7);
    const Row &struck = rows.at(2);
    const Row &repeated = rows.at(3);
    QCOMPARE(struck.at(RankTask), QByteArray("2"));
    QCOMPARE(struck.mid(FigureAnswer, 6), (Row{"", struck.at(Place), "", "0", "", "0"}));
    QCOMPARE(struck.at(Error), QByteArray("1"));
    QCOMPARE(repeated.at(RankTask), QByteArray("3"));
    for (const int same : {int(Subtask), int(Exposure), int(Figure), int(Place)})
        QCOMPARE(repeated.at(same), struck.at(same));
    QCOMPARE(repeated.at(Error), QByteArray("0"));
    QCOMPARE(rehearsed.rows(validFile).size(), 6);
    QCOMPARE(run.out.split(';').at(firstGroup + 2 * groupSize + 1), QByteArray("1"));
}

void tst_RehearseVision::aTrialStruckBetweenItsHalvesGoesOnInOneOfThem()
{
    const Rehearsed rehearsed;
    rehearsed.storeThresholds();
    const auto run = rehearsed.playTask(QStringLiteral("test7"),
                                        words("--number 3") + rehearsed.observer(steady) +
                                            rehearsed.keys("1 5 E 1500\n"));
    QVERIFY2(run.code == 0, run.error.constData());
    const auto rows = rehearsed.trials();
    QCOMPARE(rows.size(), 4);
    // The struck row names what comes next, and the repeated trial shows that.
    QCOMPARE(rows.at(1).at(Figure), rows.at(0).at(Figure));
    QCOMPARE(rows.at(1).at(Place), rows.at(0).at(Place));
    QCOMPARE(rows.at(0).at(AnswerTime), QByteArray("0"));
}

void tst_RehearseVision::keysThatAreNotDueChangeNothing_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<QByteArray>("keys");
    QTest::newRow("before and after the answer")
        << QStringLiteral("--training")
        << QByteArray("1 1 P 90\n2 1 E\n3 2 P\n4 2 E\n5 3 P\n6 3 E 9\n7 4 P\n8 4 E 9\n9 6 P\n"
                      "10 6 E 100\n");
    QTest::newRow("under fixed duration") << QStringLiteral("--training --fixed-duration")
                                          << QByteArray("1 5 P 90\n2 5 E 90\n3 1 P\n4 6 E\n");
}

void tst_RehearseVision::keysThatAreNotDueChangeNothing()
{
    QFETCH(QString, arguments);
    QFETCH(QByteArray, keys);
    const Rehearsed plain;
    const Rehearsed pressed;
    const QStringList words = arguments.split(u' ');
    QCOMPARE(plain.playTask(test1, words).code, 0);
    QCOMPARE(pressed.playTask(test1, words + pressed.keys(keys)).code, 0);
    QCOMPARE(pressed.files(), plain.files());
}

void tst_RehearseVision::anEscapeKeepsTheExposuresOfTheMoment()
{
    const Rehearsed rehearsed;
    rehearsed.storeThresholds();
    const auto run = rehearsed.playTask(QStringLiteral("test5"),
                                        rehearsed.observer(right) + rehearsed.keys("4 2 Escape"));
    Rehearsed::isComplaint(run, 4, "The test was broken off before its end.");
    const auto rows = rehearsed.trials();
    QCOMPARE(rows.size(), 4);
    QCOMPARE(rows.at(3).join(';'), QByteArray(identity) + "interrupted");
    // Three steps down the table, of 50, 33 and 33 ms.
    QCOMPARE(thresholds(rehearsed), (Row{"33", "50", "150"}));
    QCOMPARE(line(rehearsed).at(8), QByteArray("0"));
    QCOMPARE(rehearsed.bytes(resultsFile), QByteArray());
    // The number that the button had raised is free again.
    QCOMPARE(rehearsed.playTask(QStringLiteral("test5"), {}).out.split(';').at(Session),
             QByteArray("1"));
}

void tst_RehearseVision::anEscapeInTheFirstTrainingLeavesNoThreshold()
{
    const Rehearsed rehearsed;
    const auto run =
        rehearsed.playTask(test1, QStringList{training} + rehearsed.keys("5 4 Escape"));
    Rehearsed::isComplaint(run, 4, "The test was broken off before its end.");
    QCOMPARE(thresholds(rehearsed), (Row{"0", "0", "0"}));
    QCOMPARE(rehearsed.trials().size(), 0);
}

QTEST_GUILESS_MAIN(tst_RehearseVision)
#include "tst_RehearseVision.moc"
