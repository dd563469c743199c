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
    void aTaskThatIsNotThereIsRefused_data();
    void aTaskThatIsNotThereIsRefused();
    void aNameThatTheDialogDoesNotTakeIsRefused();
    void aLogThatCannotBeOpenedIsRefused();
    void aRootThatAnotherProgramHoldsIsRefused();
    void aReportWithoutATemplateIsRefused();
    void theInstructionAloneHasNoScores();
    void helpEndsWith0();
};

namespace {
constexpr QLatin1String patientsFile("Parameters/patients_list.txt");

QStringList words(const char *line)
{
    return QString::fromLatin1(line).split(u' ', Qt::SkipEmptyParts);
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

void tst_RehearsalRefusals::aTaskThatIsNotThereIsRefused_data()
{
    QTest::addColumn<QString>("task");
    QTest::addColumn<QByteArray>("button");
    QTest::newRow("test1") << QStringLiteral("test1") << QByteArray("Visual recognition task");
    QTest::newRow("test3") << QStringLiteral("test3") << QByteArray("Movement detection task");
    QTest::newRow("test4") << QStringLiteral("test4") << QByteArray("Working memory task");
    QTest::newRow("test5") << QStringLiteral("test5") << QByteArray("Central visual perception");
    QTest::newRow("test6") << QStringLiteral("test6") << QByteArray("Peripheral visual perception");
    QTest::newRow("test7") << QStringLiteral("test7") << QByteArray("Dual task processing");
}

void tst_RehearsalRefusals::aTaskThatIsNotThereIsRefused()
{
    QFETCH(QString, task);
    QFETCH(QByteArray, button);
    const Rehearsed rehearsed;
    const auto run =
        Rehearsed::withArguments({QStringLiteral("--root"), rehearsed.path(QStringLiteral("root")),
                                  QStringLiteral("--task"), task});
    Rehearsed::isComplaint(run, 3, '"' + button + "\" starts nothing.");
    QCOMPARE(rehearsed.bytes(patientsFile),
             QByteArray("Mrs.;REHEARSAL;Patient;01.01.1960;0;0;0;0;0;0;0;0;0;0\r\n"));
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

void tst_RehearsalRefusals::theInstructionAloneHasNoScores()
{
    const Rehearsed rehearsed;
    Rehearsed::isComplaint(rehearsed.play(words("--instruction")), 4,
                           "The instruction was shown; without training no test follows it.");
    QCOMPARE(rehearsed.trials().size(), 0);
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
