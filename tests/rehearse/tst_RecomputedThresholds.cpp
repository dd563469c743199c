#include "Rehearsed.h"

#include <QTest>

/// The staircases of whole tests, walked a second time in another language from the rows of the
/// trials alone.
class tst_RecomputedThresholds : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void theThresholdsFollowFromTheTrials_data();
    void theThresholdsFollowFromTheTrials();
    void anUnstableMeasureEndsWhereItMust();
    void aBrokenOffTestLeavesItsExposures();
    void aWrongNumberIsFound_data();
    void aWrongNumberIsFound();

private:
    Rehearsed m_sound; ///< a test in which all numbers agree
};

namespace {

constexpr QLatin1String training("--training");

/// Guesses a lot: the walks are long.
constexpr char wild[] = R"({"vision": {"central": {"steepness": 0.5, "lapses": 0.2},
                                       "peripheral": {"steepness": 0.3},
                                       "dual": {"steepness": 1}}})";
constexpr char slow[] = R"({"vision": {"answerTime": {"mean": 2300, "spread": 900}}})";
constexpr char right[] = R"({"vision": {"answers": "always right"}})";
constexpr char wrong[] = R"({"vision": {"answers": "always wrong"}})";
constexpr char silent[] = R"({"vision": {"answers": "silent"}})";
constexpr char marks[] = "2 5 P 30\n3 5 E\n4 5 E 1700\n9 5 E 90\n10 5 E 90\n14 5 P\n20 5 E 500\n";

constexpr QLatin1String patientsFile("Parameters/patients_list.txt");
constexpr char unstable[] = "Error: Unstable measures, please start task over again";

Rehearsed::Run recompute(const Rehearsed &rehearsed)
{
    return Rehearsed::execute(QStringLiteral(KELMORAN_PYTHON),
                              {QStringLiteral("-B"),
                               QStringLiteral(KELMORAN_WITNESSES "/recompute_thresholds.py"),
                               rehearsed.path(QStringLiteral("root"))});
}

} // namespace

void tst_RecomputedThresholds::initTestCase()
{
    QCOMPARE(m_sound.playTask(QStringLiteral("test1"), {training}).code, 0);
    const auto recomputed = recompute(m_sound);
    QVERIFY2(recomputed.code == 0, recomputed.out.constData());
}

void tst_RecomputedThresholds::theThresholdsFollowFromTheTrials_data()
{
    QTest::addColumn<QByteArray>("observer");
    QTest::addColumn<QByteArray>("keys");
    QTest::addColumn<QString>("task");
    QTest::addColumn<QString>("arguments");
    const auto row = [](const char *name, const char *task, const char *observer, const char *keys,
                        const char *arguments) {
        QTest::addRow("%s, %s, %s", task, name, arguments)
            << QByteArray(observer) << QByteArray(keys) << QString::fromLatin1(task)
            << QString::fromLatin1(arguments);
    };
    for (const char *task : {"test1", "test5", "test6", "test7"}) {
        row("typical", task, "{}", "", "--training --seed 2");
        row("typical", task, "{}", "", "--training --seed 3 --frequency 120 --repeat 2");
        row("marks", task, "{}", marks, "--seed 4");
        row("wild", task, wild, marks, "--training --seed 5");
        row("wild", task, wild, "", "--training --seed 6 --frequency 120");
        row("slow", task, slow, "", "--fixed-duration --seed 7");
        row("right", task, right, "", "--training --seed 8 --frequency 120");
        row("wrong", task, wrong, marks, "--seed 9");
    }
    row("typical", "test1", "{}", "", "--instruction --training --seed 10");
    row("typical", "test1", "{}", "", "--number 1 --seed 11");
    row("wild", "test1", wild, marks, "--number 40 --seed 12");
    row("typical", "test7", "{}", "", "--number 12 --seed 13");
    row("typical", "test5", "{}", "", "--number 400 --training --seed 14");
    row("slow", "test1", slow, "", "--fixed-duration --training --seed 15 --repeat 2");
}

void tst_RecomputedThresholds::theThresholdsFollowFromTheTrials()
{
    QFETCH(QByteArray, observer);
    QFETCH(QByteArray, keys);
    QFETCH(QString, task);
    QFETCH(QString, arguments);
    const Rehearsed rehearsed;
    if (!arguments.contains(training))
        rehearsed.storeThresholds();
    const auto played = rehearsed.playTask(
        task, arguments.split(u' ') + rehearsed.observer(observer) + rehearsed.keys(keys));
    if (played.code != 0) // a walk may come to no result, which has to follow from the trials too
        QCOMPARE(played.error, QByteArray("kelmoran-rehearse: ") + unstable + '\n');
    QVERIFY(!rehearsed.trials().isEmpty());
    const auto recomputed = recompute(rehearsed);
    QVERIFY2(recomputed.code == 0, (recomputed.out + recomputed.error).constData());
}

void tst_RecomputedThresholds::anUnstableMeasureEndsWhereItMust()
{
    for (const char *task : {"test1", "test5", "test6", "test7"}) {
        const Rehearsed rehearsed;
        rehearsed.storeThresholds();
        const QByteArray list = rehearsed.bytes(patientsFile);
        const auto run = rehearsed.playTask(QString::fromLatin1(task),
                                            QStringList{QStringLiteral("--fixed-duration")} +
                                                rehearsed.observer(silent));
        Rehearsed::isComplaint(run, 3, unstable);
        const auto rows = rehearsed.trials();
        QCOMPARE(rows.size(), (qstrcmp(task, "test1") == 0 ? 150 : 50) + 1);
        QCOMPARE(rows.constLast().constLast(), QByteArray("interrupted"));
        const auto recomputed = recompute(rehearsed);
        QVERIFY2(recomputed.code == 0, (recomputed.out + recomputed.error).constData());
        QCOMPARE(rehearsed.bytes(patientsFile), list);
        // The next test is none the worse for it.
        QCOMPARE(rehearsed.playTask(QString::fromLatin1(task)).code, 0);
    }
}

void tst_RecomputedThresholds::aBrokenOffTestLeavesItsExposures()
{
    for (const char *task : {"test1", "test5", "test6", "test7"}) {
        const Rehearsed rehearsed;
        rehearsed.storeThresholds();
        const auto run = rehearsed.playTask(QString::fromLatin1(task),
                                            rehearsed.keys("3 5 E 10\n13 2 Escape\n"));
        QCOMPARE(run.code, 4);
        const auto recomputed = recompute(rehearsed);
        QVERIFY2(recomputed.code == 0, (recomputed.out + recomputed.error).constData());
    }
}

void tst_RecomputedThresholds::aWrongNumberIsFound_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<int>("line"); // counted from the end, the last one being 1
    QTest::addColumn<int>("column");
    QTest::addColumn<QByteArray>("complaint");
    const auto row = [](const char *name, const char *file, int line, int column,
                        const char *complaint) {
        QTest::newRow(name) << QString::fromLatin1(file) << line << column << QByteArray(complaint);
    };
    row("an exposure", "Results/output.csv", 4, 12, "the exposure is");
    row("an answer", "Results/output.csv", 4, 18, "the code of the answer is");
    row("a rank", "Results/output.csv", 4, 10, "the rank is");
    row("a rank in the subtask", "Results/output.csv", 4, 11, "the rank in the subtask is");
    row("a mark of the limit", "Results/output.csv", 4, 19, "the mark of the limit is");
    row("a valid row", "Results/valid-output.csv", 4, 12, "the valid rows are not");
    row("the number of trials", "Results/results_T1.csv", 1, 10, "trials, not");
    row("a threshold", "Results/results_T1.csv", 1, 11, "subtask 1 has");
    row("the errors", "Results/results_T1.csv", 1, 19, "subtask 2 has");
    row("the reversals", "Results/results_T1.csv", 1, 20, "subtask 2 has");
    row("the mean of the peaks", "Results/results_T1.csv", 1, 28, "subtask 3 has");
    row("the limits of the troughs", "Results/results_T1.csv", 1, 31, "subtask 3 has");
    row("a threshold on the list", "Parameters/patients_list.txt", 1, 13, "stands on the list");
    row("a session on the list", "Parameters/patients_list.txt", 1, 4, "stands on the list");
}

void tst_RecomputedThresholds::aWrongNumberIsFound()
{
    QFETCH(QString, file);
    QFETCH(int, line);
    QFETCH(int, column);
    QFETCH(QByteArray, complaint);
    const QByteArray sound = m_sound.bytes(file);
    QList<QByteArray> lines = sound.split('\n');
    const auto at = lines.size() - 1 - line;
    QList<QByteArray> fields = lines.at(at).split(';');
    QByteArray &field = fields[column];
    const qsizetype digit = field.endsWith('\r') ? field.size() - 2 : field.size() - 1;
    field[digit] = field.at(digit) == '5' ? '7' : '5';
    lines[at] = fields.join(';');
    m_sound.write(QStringLiteral("root/") + file, lines.join('\n'));
    const auto recomputed = recompute(m_sound);
    m_sound.write(QStringLiteral("root/") + file, sound);
    QCOMPARE(recomputed.code, 1);
    QVERIFY2(recomputed.out.contains(complaint), recomputed.out.constData());
}

QTEST_GUILESS_MAIN(tst_RecomputedThresholds)
#include "tst_RecomputedThresholds.moc"
