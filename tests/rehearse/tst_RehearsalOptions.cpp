#include "Options.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

class tst_RehearsalOptions : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void rootAndTaskAreEnough();
    void everyArgumentIsTaken();
    void descriptionsAreReadFromTheirFiles();
    void visionAndMovementHaveASixthStage_data();
    void visionAndMovementHaveASixthStage();
    void memoryAloneWaitsInStage0_data();
    void memoryAloneWaitsInStage0();
    void memoryKnowsNoFixedDuration();
    void badArgumentsAreToldInOneLine_data();
    void badArgumentsAreToldInOneLine();
    void helpIsGivenWithoutAnyOtherArgument();
};

namespace {
Options::Parsed parse(const QStringList &arguments)
{
    return Options::parse(QStringList(QStringLiteral("kelmoran-rehearse")) + arguments);
}

QStringList words(const char *line)
{
    return QString::fromUtf8(line).split(u' ', Qt::SkipEmptyParts);
}

/// A test of this name with a script of these keys.
Options::Parsed parseKeys(const char *task, const char *keys)
{
    const QTemporaryDir folder;
    QFile script(folder.filePath(QStringLiteral("keys.txt")));
    if (!script.open(QIODevice::WriteOnly))
        qFatal("no script can be written");
    script.write(keys);
    script.close();
    return parse({QStringLiteral("--root"), QStringLiteral("/r"), QStringLiteral("--task"),
                  QString::fromLatin1(task), QStringLiteral("--keys"), script.fileName()});
}
} // namespace

void tst_RehearsalOptions::rootAndTaskAreEnough()
{
    const auto parsed = parse(words("--root some/where --task test2"));
    QVERIFY(parsed.wish == Options::Wish::Rehearse);
    const Options &options = parsed.options;
    QCOMPARE(options.root, QDir::current().absoluteFilePath(QStringLiteral("some/where")));
    QCOMPARE(options.task, 2);
    QCOMPARE(options.patient.key(), QStringLiteral("REHEARSAL Patient 01.01.1960"));
    QVERIFY(!options.instruction && !options.training && !options.fixedDuration);
    QVERIFY(!options.report && !options.number && !options.language && !options.frequency);
    QCOMPARE(options.seed, 1U);
    QCOMPARE(options.repeat, 1);
    QCOMPARE(options.start, QDateTime(QDate(2025, 1, 6), QTime(9, 0), Qt::UTC));
    QVERIFY(options.keys.lines.isEmpty());
}

void tst_RehearsalOptions::everyArgumentIsTaken()
{
    const auto parsed =
        parse(words("--root /r --task test7 --patient DOE;Jane;29.02.1972;Mrs. --instruction "
                    "--training --fixed-duration --number 6 --seed 4294967295 --repeat 3 "
                    "--language de --frequency 120 --report --start 2026-03-01T08:15:30"));
    QVERIFY2(parsed.wish == Options::Wish::Rehearse, qPrintable(parsed.text));
    const Options &options = parsed.options;
    QCOMPARE(options.task, 7);
    QCOMPARE(options.patient.key(), QStringLiteral("DOE Jane 29.02.1972"));
    QCOMPARE(options.patient.gender, QStringLiteral("Mrs."));
    QVERIFY(options.instruction && options.training && options.fixedDuration && options.report);
    QCOMPARE(options.number, std::optional(6));
    QCOMPARE(options.seed, 4294967295U);
    QCOMPARE(options.repeat, 3);
    QCOMPARE(options.language, std::optional(2));
    QCOMPARE(options.frequency, std::optional(1));
    QCOMPARE(options.start, QDateTime(QDate(2026, 3, 1), QTime(8, 15, 30), Qt::UTC));
}

void tst_RehearsalOptions::descriptionsAreReadFromTheirFiles()
{
    const QTemporaryDir folder;
    const QString observer = folder.filePath(QStringLiteral("observer.json"));
    const QString keys = folder.filePath(QStringLiteral("keys.txt"));
    QFile json(observer);
    QVERIFY(json.open(QIODevice::WriteOnly));
    json.write(R"({"misses": 0.25})");
    json.close();
    QFile script(keys);
    QVERIFY(script.open(QIODevice::WriteOnly));
    script.write("4 4 P\n");
    script.close();

    const QStringList bare = words("--root /r --task test2");
    const auto parsed = parse(
        bare + QStringList{QStringLiteral("--observer"), observer, QStringLiteral("--keys"), keys});
    QVERIFY2(parsed.wish == Options::Wish::Rehearse, qPrintable(parsed.text));
    QCOMPARE(parsed.options.observer.misses, 0.25);
    QCOMPARE(parsed.options.keys.lines.size(), 1);

    const auto wrong = parse(bare + QStringList{QStringLiteral("--keys"), observer});
    QVERIFY(wrong.wish == Options::Wish::Complain);
    QCOMPARE(wrong.text,
             QStringLiteral("--keys: %1: line 1: not \"trial stage action [ms]\"").arg(observer));
}

void tst_RehearsalOptions::visionAndMovementHaveASixthStage_data()
{
    QTest::addColumn<bool>("taken");
    for (int task = 1; task <= 7; ++task)
        QTest::addRow("test%d", task) << (task != 2 && task != 4);
}

void tst_RehearsalOptions::visionAndMovementHaveASixthStage()
{
    QFETCH(bool, taken);
    const auto parsed = parseKeys(QTest::currentDataTag(), "3 5 P\n4 6 Escape\n");
    QCOMPARE(parsed.wish == Options::Wish::Rehearse, taken);
    QCOMPARE(parsed.text,
             taken ? QString() : QStringLiteral("--keys: a trial of this task has no stage 6"));
}

void tst_RehearsalOptions::memoryAloneWaitsInStage0_data()
{
    QTest::addColumn<bool>("taken");
    for (int task = 1; task <= 7; ++task)
        QTest::addRow("test%d", task) << (task == 4);
}

void tst_RehearsalOptions::memoryAloneWaitsInStage0()
{
    QFETCH(bool, taken);
    const auto parsed = parseKeys(QTest::currentDataTag(), "3 1 P\n4 0 S\n");
    QCOMPARE(parsed.wish == Options::Wish::Rehearse, taken);
    QCOMPARE(parsed.text,
             taken ? QString() : QStringLiteral("--keys: a trial of this task has no stage 0"));
}

void tst_RehearsalOptions::memoryKnowsNoFixedDuration()
{
    for (int task = 1; task <= 7; ++task) {
        const auto parsed = parse(words("--root /r --fixed-duration --task") +
                                  QStringList(QStringLiteral("test%1").arg(task)));
        QCOMPARE(parsed.text, task == 4 ? QStringLiteral("--fixed-duration: the working memory "
                                                         "task has none")
                                        : QString());
        QCOMPARE(parsed.wish == Options::Wish::Complain, task == 4);
    }
}

void tst_RehearsalOptions::badArgumentsAreToldInOneLine_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<QString>("complaint");
    const auto row = [](const char *arguments, const char *complaint) {
        QTest::newRow(*arguments != '\0' ? arguments : "none")
            << QString::fromLatin1(arguments) << QString::fromLatin1(complaint);
    };
    const auto more = [row](const char *argument, const char *complaint) {
        row(qPrintable(
                QStringLiteral("--root /r --task test2 %1").arg(QString::fromLatin1(argument))),
            complaint);
    };
    row("", "--root is needed");
    row("--root /r", "--task is needed");
    row("--task test2", "--root is needed");
    row("--root /r --task test8", "--task: \"test8\" is none of test1 to test7");
    row("--root /r --task", "Missing value after '--task'.");
    more("--speed 3", "Unknown option 'speed'.");
    more("now", "unexpected argument \"now\"");
    more("--number 0", "--number: \"0\" is no number from 1 to 10000");
    more("--number six", "--number: \"six\" is no number from 1 to 10000");
    more("--repeat 0", "--repeat: \"0\" is no number from 1 to 10000");
    more("--seed -1", "--seed: \"-1\" is no number from 0 to 4294967295");
    more("--frequency 75", "--frequency: \"75\" is neither 60 nor 120");
    more("--language pt", "--language: \"pt\" is none of en, fr, de, it, es and nl");
    more("--start today", "--start: \"today\" is no date and time, yyyy-MM-ddThh:mm:ss");
    more("--patient DOE;Jane", "--patient: \"DOE;Jane\" is not \"LAST;FIRST;dd.MM.yyyy;GENDER\"");
    more("--patient DOE;Jane;30.02.1972;Mrs.",
         "--patient: \"30.02.1972\" is no date of birth, dd.MM.yyyy");
    more("--patient DOE;Jane;28.02.1972;Ms.", "--patient: \"Ms.\" is neither Mr. nor Mrs.");
    more("--observer /no/such/file", "--observer: /no/such/file: No such file or directory");
    more("--report=yes", "Unexpected value after '--report'.");
}

void tst_RehearsalOptions::badArgumentsAreToldInOneLine()
{
    QFETCH(QString, arguments);
    QFETCH(QString, complaint);
    const auto parsed = parse(arguments.split(u' ', Qt::SkipEmptyParts));
    QVERIFY(parsed.wish == Options::Wish::Complain);
    QCOMPARE(parsed.text, complaint);
}

void tst_RehearsalOptions::helpIsGivenWithoutAnyOtherArgument()
{
    const auto parsed = parse({QStringLiteral("--help")});
    QVERIFY(parsed.wish == Options::Wish::Help);
    QVERIFY(parsed.text.contains(QStringLiteral("--fixed-duration")));
}

QTEST_GUILESS_MAIN(tst_RehearsalOptions)
#include "tst_RehearsalOptions.moc"
