#include "Rehearsed.h"

#include <QLockFile>
#include <QTest>

/// What the rehearsal says, and with which code it ends, when there are no scores.
class tst_RehearsalRefusals : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void badArgumentsEndWith2_data();
    void badArgumentsEndWith2();
    void withoutThresholdsThereIsNoVisionTest_data();
    void withoutThresholdsThereIsNoVisionTest();
    void oneThresholdIsEnoughForItsPartOnly();
    void aFailedTrainingIsRefused_data();
    void aFailedTrainingIsRefused();
    void silenceIsAFailedTrainingOrAStandstill();
    void aNameThatTheDialogDoesNotTakeIsRefused();
    void aLogThatCannotBeOpenedIsRefused();
    void aRootThatAnotherProgramHoldsIsRefused();
    void aReportWithoutATemplateIsRefused();
    void theInstructionAloneHasNoScores_data();
    void theInstructionAloneHasNoScores();
    void helpEndsWith0();
};

namespace {
constexpr QLatin1String patientsFile("Parameters/patients_list.txt");
constexpr char untouchedLine[] = "Mrs.;REHEARSAL;Patient;01.01.1960;0;0;0;0;0;0;0;0;0;0\r\n";

QStringList words(const char *line)
{
    return QString::fromLatin1(line).split(u' ', Qt::SkipEmptyParts);
}

void addVisionTasks()
{
    QTest::addColumn<int>("number");
    for (const int number : {1, 5, 6, 7})
        QTest::addRow("test%d", number) << number;
}
} // namespace

void tst_RehearsalRefusals::badArgumentsEndWith2_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<QByteArray>("complaint");
    QTest::newRow("none") << QString() << QByteArray("--root is needed");
    QTest::newRow("no such task") << QStringLiteral("--root r --task test0")
                                  << QByteArray("--task: \"test0\" is none of test1 to test7");
    QTest::newRow("no such option")
        << QStringLiteral("--fast") << QByteArray("Unknown option 'fast'.");
    QTest::newRow("no such observer")
        << QStringLiteral("--root r --task test2 --observer /no/such/file")
        << QByteArray("--observer: /no/such/file: No such file or directory");
    QTest::newRow("a fixed duration of the memory task")
        << QStringLiteral("--root r --task test4 --fixed-duration")
        << QByteArray("--fixed-duration: the working memory task has none");
    QTest::newRow("a root that can't be made") << QStringLiteral("--root /dev/null/r --task test2")
                                               << QByteArray("--root: /dev/null/r can't be made.");
}

void tst_RehearsalRefusals::badArgumentsEndWith2()
{
    QFETCH(QString, arguments);
    QFETCH(QByteArray, complaint);
    Rehearsed::isComplaint(Rehearsed::withArguments(arguments.split(u' ', Qt::SkipEmptyParts)), 2,
                           complaint);
}

void tst_RehearsalRefusals::withoutThresholdsThereIsNoVisionTest_data()
{
    addVisionTasks();
}

void tst_RehearsalRefusals::withoutThresholdsThereIsNoVisionTest()
{
    const Rehearsed rehearsed;
    const QString task = QString::fromLatin1(QTest::currentDataTag());
    for (int time = 0; time < 2; ++time) { // and the second time no session is lost
        Rehearsed::isComplaint(rehearsed.playTask(task), 3,
                               "Error: Unable to start! Please undergo training!");
        QCOMPARE(rehearsed.bytes(patientsFile), QByteArray(untouchedLine));
        QCOMPARE(rehearsed.trials().size(), 0);
    }
}

void tst_RehearsalRefusals::oneThresholdIsEnoughForItsPartOnly()
{
    const Rehearsed rehearsed;
    QCOMPARE(rehearsed.playTask(QStringLiteral("test5"), words("--training")).code, 0);
    QCOMPARE(rehearsed.playTask(QStringLiteral("test5")).code, 0);
    for (const char *task : {"test1", "test6", "test7"})
        Rehearsed::isComplaint(rehearsed.playTask(QString::fromLatin1(task)), 3,
                               "Error: Unable to start! Please undergo training!");
}

void tst_RehearsalRefusals::aFailedTrainingIsRefused_data()
{
    addVisionTasks();
}

void tst_RehearsalRefusals::aFailedTrainingIsRefused()
{
    const Rehearsed rehearsed;
    const QString task = QString::fromLatin1(QTest::currentDataTag());
    const QList<QStringList> failing{
        rehearsed.observer(R"({"vision": {"answers": "always wrong"}})"),
        rehearsed.observer(R"({"vision": {"answers": "always wrong"}})") + words("--instruction"),
        rehearsed.observer(R"({"vision": {"answers": "always wrong"}})") +
            words("--fixed-duration")};
    for (const QStringList &arguments : failing) {
        Rehearsed::isComplaint(rehearsed.playTask(task, words("--training") + arguments), 3,
                               "Error: Exposure time > 4633ms Check visual fields and start "
                               "training over again for this subtask");
        QCOMPARE(rehearsed.bytes(patientsFile), QByteArray(untouchedLine));
        QCOMPARE(rehearsed.trials().size(), 0);
    }
}

void tst_RehearsalRefusals::silenceIsAFailedTrainingOrAStandstill()
{
    const Rehearsed rehearsed;
    const QStringList silent = rehearsed.observer(R"({"vision": {"answers": "silent"}})");
    const QString test1 = QStringLiteral("test1");
    Rehearsed::isComplaint(rehearsed.playTask(test1, words("--training --fixed-duration") + silent),
                           3,
                           "Error: Exposure time > 4633ms Check visual fields and start training "
                           "over again for this subtask");
    Rehearsed::isComplaint(rehearsed.playTask(test1, words("--training") + silent), 4,
                           "The test came to a standstill.");
}

void tst_RehearsalRefusals::aNameThatTheDialogDoesNotTakeIsRefused()
{
    const Rehearsed rehearsed;
    Rehearsed::isComplaint(
        rehearsed.play({QStringLiteral("--patient"), QStringLiteral("A/B;C;01.01.1960;")}), 3,
        "The patient's dialog does not take the name \"A/B\", \"C\".");
    QCOMPARE(rehearsed.bytes(patientsFile), QByteArray());
}

void tst_RehearsalRefusals::aLogThatCannotBeOpenedIsRefused()
{
    const Rehearsed rehearsed;
    QVERIFY(QDir().mkpath(rehearsed.path(QStringLiteral("root/Results/output.csv/in the way"))));
    const auto run = rehearsed.play();
    QCOMPARE(run.code, 3);
    QVERIFY2(run.error.startsWith("kelmoran-rehearse: Error: Failed to open output.csv "),
             run.error.constData());
    QCOMPARE(run.error.count('\n'), 1);
}

void tst_RehearsalRefusals::aRootThatAnotherProgramHoldsIsRefused()
{
    const Rehearsed rehearsed;
    QVERIFY(QDir().mkpath(rehearsed.path(QStringLiteral("root"))));
    QLockFile lock(rehearsed.path(QStringLiteral("root/kelmoran.lock")));
    QVERIFY(lock.lock());
    Rehearsed::isComplaint(rehearsed.play(), 3,
                           "Kelmoran is already running with the same data folders.");
}

void tst_RehearsalRefusals::aReportWithoutATemplateIsRefused()
{
    const Rehearsed rehearsed;
    Rehearsed::isComplaint(rehearsed.play(words("--report --number 3")), 3,
                           "Unable to open file: No such file or directory");
}

void tst_RehearsalRefusals::theInstructionAloneHasNoScores_data()
{
    addVisionTasks();
    QTest::newRow("test2") << 2;
    QTest::newRow("test3") << 3;
    QTest::newRow("test4") << 4;
}

void tst_RehearsalRefusals::theInstructionAloneHasNoScores()
{
    const Rehearsed rehearsed;
    const auto run =
        rehearsed.playTask(QString::fromLatin1(QTest::currentDataTag()), words("--instruction"));
    Rehearsed::isComplaint(run, 4,
                           "The instruction was shown; without training no test follows it.");
    QCOMPARE(rehearsed.trials().size(), 0);
    QCOMPARE(rehearsed.bytes(patientsFile), QByteArray(untouchedLine));
}

void tst_RehearsalRefusals::helpEndsWith0()
{
    const auto run = Rehearsed::withArguments(words("--help"));
    QCOMPARE(run.code, 0);
    QVERIFY(run.out.contains("--observer"));
    QCOMPARE(run.error, QByteArray());
}

QTEST_GUILESS_MAIN(tst_RehearsalRefusals)
#include "tst_RehearsalRefusals.moc"
