#include "Rehearsed.h"
#include "TrialRow.h"

#include <QFileInfo>
#include <QTest>

/// Whole tests, played by the program that is installed.
class tst_Rehearse : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void anEmptyRootIsLaidOutAndFilled();
    void theRowOfScoresIsPrinted();
    void oneSeedGivesTheSameBytesTwice_data();
    void oneSeedGivesTheSameBytesTwice();
    void anotherSeedGivesAnotherTest();
    void aSecondRunGoesOnFromTheFiles();
    void severalTestsArePlayedInOneRun();
    void anotherPatientIsRegisteredBesideTheFirst();
    void theNumberIsTypedIntoThePanel_data();
    void theNumberIsTypedIntoThePanel();
    void theTrainingLeavesNoRow();
    void theFrequencyIsSetInThePreferences();
    void theStartSetsTheDates();

    void aPauseLeavesAMarkerAndSkipsARank();
    void aStruckTrialIsAnErrorWithoutATime();
    void anEscapeBreaksTheTestOff();
    void anEarlyAnswerIsAnAnticipation();
    void aLateAnswerDoesNotCount();
    void underFixedDurationAMissIsATimeOut();
    void withoutFixedDurationAMissIsAVeryLateAnswer();

    void theReportIsMadeInTheLanguageAskedFor();
};

namespace {

using namespace column;

constexpr QLatin1String resultsFile("Results/results_T2.csv");
constexpr QLatin1String patientsFile("Parameters/patients_list.txt");

QStringList words(const char *line)
{
    return QString::fromLatin1(line).split(u' ', Qt::SkipEmptyParts);
}

QStringList steadyWithKeys(const Rehearsed &rehearsed, const QByteArray &keys)
{
    return {QStringLiteral("--observer"),
            rehearsed.write(QStringLiteral("observer.json"),
                            R"({"reactionTime": {"mean": 300, "spread": 0}, "learningSlope": 0,
                                "gainFromAlert": 0, "gainFromOrientation": 0,
                                "anticipations": 0, "misses": 0})"),
            QStringLiteral("--keys"), rehearsed.write(QStringLiteral("keys.txt"), keys)};
}

QStringList missing(const Rehearsed &rehearsed)
{
    return {
        QStringLiteral("--observer"),
        rehearsed.write(QStringLiteral("observer.json"), R"({"anticipations": 0, "misses": 0.2})")};
}

} // namespace

void tst_Rehearse::anEmptyRootIsLaidOutAndFilled()
{
    const Rehearsed rehearsed;
    QCOMPARE(rehearsed.play().code, 0);
    const QStringList expected{
        QStringLiteral("Archives/REHEARSAL Patient 01.01.1960/"
                       "results_T2_REHEARSAL Patient 01.01.1960.csv"),
        patientsFile,
        QStringLiteral("Parameters/screen.pix"),
        QStringLiteral("Results/output.csv"),
        resultsFile,
        QStringLiteral("Results/timing.csv"),
        QStringLiteral("Results/valid-output.csv"),
    };
    QCOMPARE(rehearsed.files().keys(), expected);
    QVERIFY(QFileInfo(rehearsed.path(QStringLiteral("root/bin"))).isDir());
    QCOMPARE(rehearsed.bytes(QStringLiteral("Parameters/screen.pix")).toHex(),
             QByteArray("0000010e0000010e00000000")); // 270 mm, and twice 135
    QCOMPARE(rehearsed.bytes(patientsFile),
             QByteArray("Mrs.;REHEARSAL;Patient;01.01.1960;0;1;0;0;0;0;0;0;0;0\r\n"));
}

void tst_Rehearse::theRowOfScoresIsPrinted()
{
    const Rehearsed rehearsed;
    const auto run = rehearsed.play();
    QCOMPARE(run.code, 0);
    QCOMPARE(run.error, QByteArray());
    QCOMPARE(run.out.count('\n'), 1);
    QVERIFY(run.out.startsWith(";Mrs.;REHEARSAL;Patient;01/01/1960;2;1;06/01/2025;09:0"));
    QVERIFY(rehearsed.bytes(resultsFile).endsWith('\n' + run.out));
    QCOMPARE(rehearsed.bytes(QStringLiteral("Archives/REHEARSAL Patient 01.01.1960/"
                                            "results_T2_REHEARSAL Patient 01.01.1960.csv")),
             rehearsed.bytes(resultsFile));
}

void tst_Rehearse::oneSeedGivesTheSameBytesTwice_data()
{
    QTest::addColumn<QString>("arguments");
    for (const char *arguments :
         {"--seed 5", "--seed 6 --fixed-duration", "--seed 7 --instruction --training --number 12",
          "--seed 8 --repeat 3 --number 7 --frequency 120"})
        QTest::newRow(arguments) << QString::fromLatin1(arguments);
}

void tst_Rehearse::oneSeedGivesTheSameBytesTwice()
{
    QFETCH(QString, arguments);
    const Rehearsed first;
    const Rehearsed second;
    const auto one = first.play(arguments.split(u' '));
    const auto two = second.play(arguments.split(u' '));
    QVERIFY2(one.code == 0, one.error.constData());
    QCOMPARE(two.out, one.out);
    QCOMPARE(second.files(), first.files());
}

void tst_Rehearse::anotherSeedGivesAnotherTest()
{
    const Rehearsed first;
    const Rehearsed second;
    QVERIFY(first.play(words("--seed 1")).out != second.play(words("--seed 2")).out);
}

void tst_Rehearse::aSecondRunGoesOnFromTheFiles()
{
    const Rehearsed rehearsed;
    const auto first = rehearsed.play(words("--number 6"));
    const QByteArray after = rehearsed.bytes(resultsFile);
    const auto second = rehearsed.play(words("--number 6"));
    QCOMPARE(second.code, 0);
    QCOMPARE(rehearsed.bytes(resultsFile), after + second.out);
    QCOMPARE(second.out.split(';').at(Session), QByteArray("2"));
    QVERIFY(second.out != first.out);
    QCOMPARE(rehearsed.bytes(patientsFile),
             QByteArray("Mrs.;REHEARSAL;Patient;01.01.1960;0;2;0;0;0;0;0;0;0;0\r\n"));
    QCOMPARE(rehearsed.bytes(QStringLiteral("Results/output.csv")).count("code;gender"), 1);
}

void tst_Rehearse::severalTestsArePlayedInOneRun()
{
    const Rehearsed rehearsed;
    const auto run = rehearsed.play(words("--number 6 --repeat 2"));
    QVERIFY2(run.code == 0, run.error.constData());
    QCOMPARE(run.out.count('\n'), 2);
    QVERIFY(rehearsed.bytes(resultsFile).endsWith('\n' + run.out));
    const auto scores = rehearsed.rows(resultsFile);
    QCOMPARE(scores.at(0).at(Session), QByteArray("1"));
    QCOMPARE(scores.at(1).at(Session), QByteArray("2"));
}

void tst_Rehearse::anotherPatientIsRegisteredBesideTheFirst()
{
    const Rehearsed rehearsed;
    const QStringList adams{QStringLiteral("--patient"),
                            QString::fromUtf8("ŞAHİN;Émile;31.12.1900;Mr.")};
    const QStringList short6 = words("--number 6");
    QCOMPARE(rehearsed.play(short6).code, 0);
    QCOMPARE(rehearsed.play(short6 + adams).code, 0);
    QCOMPARE(rehearsed.play(short6).code, 0);
    QCOMPARE(rehearsed.play(short6 + adams).code, 0);
    QCOMPARE(rehearsed.bytes(patientsFile),
             QString::fromUtf8("Mrs.;REHEARSAL;Patient;01.01.1960;0;2;0;0;0;0;0;0;0;0\r\n"
                               "Mr.;ŞAHİN;Émile;31.12.1900;0;2;0;0;0;0;0;0;0;0\r\n")
                 .toUtf8());
}

void tst_Rehearse::theNumberIsTypedIntoThePanel_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<int>("trials");
    QTest::newRow("as the task has it") << QString() << 96;
    QTest::newRow("6") << QStringLiteral("--number 6") << 6;
    QTest::newRow("120") << QStringLiteral("--number 120") << 120;
    QTest::newRow("6 after training") << QStringLiteral("--number 6 --training") << 6;
    QTest::newRow("6 after both") << QStringLiteral("--number 6 --training --instruction") << 6;
    QTest::newRow("6 under fixed duration") << QStringLiteral("--number 6 --fixed-duration") << 6;
}

void tst_Rehearse::theNumberIsTypedIntoThePanel()
{
    QFETCH(QString, arguments);
    QFETCH(int, trials);
    const Rehearsed rehearsed;
    const auto run =
        rehearsed.play(arguments.split(u' ', Qt::SkipEmptyParts) + steadyWithKeys(rehearsed, ""));
    QVERIFY2(run.code == 0, run.error.constData());
    QCOMPARE(rehearsed.trials().size(), trials);
}

void tst_Rehearse::theTrainingLeavesNoRow()
{
    const Rehearsed rehearsed;
    QCOMPARE(rehearsed.play(words("--training --instruction")).code, 0);
    const auto valid = rehearsed.rows(QStringLiteral("Results/valid-output.csv"));
    QCOMPARE(valid.size(), 96);
    QCOMPARE(valid.constFirst().at(RankTask), QByteArray("1"));
    QCOMPARE(valid.constLast().at(RankTask), QByteArray("96"));
}

void tst_Rehearse::theFrequencyIsSetInThePreferences()
{
    const Rehearsed rehearsed;
    const QString file = QStringLiteral("Parameters/screen.pix");
    QCOMPARE(rehearsed.play(words("--number 3 --frequency 120")).code, 0);
    QCOMPARE(rehearsed.bytes(file).toHex(), QByteArray("0000010e0000010e00000001"));
    QCOMPARE(rehearsed.play(words("--number 3")).code, 0);
    QCOMPARE(rehearsed.bytes(file).toHex(), QByteArray("0000010e0000010e00000001"));
    QCOMPARE(rehearsed.play(words("--number 3 --frequency 60")).code, 0);
    QCOMPARE(rehearsed.bytes(file).toHex(), QByteArray("0000010e0000010e00000000"));
}

void tst_Rehearse::theStartSetsTheDates()
{
    const Rehearsed rehearsed;
    QCOMPARE(rehearsed.play(words("--number 3 --start 2031-12-31T23:59:55")).code, 0);
    // Calibrating and registering have taken the test into the new year.
    for (const auto &row : rehearsed.trials()) {
        QCOMPARE(row.at(Date), QByteArray("01/01/2032"));
        QVERIFY(row.at(Time).startsWith("00:00:"));
    }
}

void tst_Rehearse::aPauseLeavesAMarkerAndSkipsARank()
{
    const Rehearsed rehearsed;
    const auto run =
        rehearsed.play(words("--number 12") + steadyWithKeys(rehearsed, "2 4 P 100\n"));
    QVERIFY2(run.code == 0, run.error.constData());
    const auto rows = rehearsed.trials();
    QCOMPARE(rows.size(), 13);
    QCOMPARE(rows.at(1).join(';'), QByteArray(";Mrs.;REHEARSAL;Patient;01/01/1960;paused"));
    QCOMPARE(rows.at(2).at(RankTask), QByteArray("2"));
    QCOMPARE(rows.at(2).at(RankSub), QByteArray("2")); // the first of its condition that counts
    QCOMPARE(rows.at(2).at(Error), QByteArray("0"));
}

void tst_Rehearse::aStruckTrialIsAnErrorWithoutATime()
{
    const Rehearsed rehearsed;
    const auto run =
        rehearsed.play(words("--number 6") + steadyWithKeys(rehearsed, "2 4 E 100\n4 4 E 700\n"));
    QVERIFY2(run.code == 0, run.error.constData());
    const auto rows = rehearsed.trials();
    QCOMPARE(rows.size(), 8);
    for (const int struck : {1, 3}) { // the second one had been answered already
        QCOMPARE(rows.at(struck).at(Rt), QByteArray());
        QCOMPARE(rows.at(struck).at(Error), QByteArray("1"));
        QCOMPARE(rows.at(struck + 1).at(Subtask), rows.at(struck).at(Subtask));
        QCOMPARE(rows.at(struck + 1).at(Position), rows.at(struck).at(Position));
        QCOMPARE(rows.at(struck + 1).at(Error), QByteArray("0"));
    }
}

void tst_Rehearse::anEscapeBreaksTheTestOff()
{
    const Rehearsed rehearsed;
    const auto run = rehearsed.play(steadyWithKeys(rehearsed, "4 2 Escape\n"));
    Rehearsed::isComplaint(run, 4, "The test was broken off before its end.");
    const auto rows = rehearsed.trials();
    QCOMPARE(rows.size(), 4);
    QCOMPARE(rows.at(3).join(';'), QByteArray(";Mrs.;REHEARSAL;Patient;01/01/1960;interrupted"));
    QCOMPARE(rehearsed.bytes(resultsFile), QByteArray());
    QCOMPARE(rehearsed.bytes(patientsFile),
             QByteArray("Mrs.;REHEARSAL;Patient;01.01.1960;0;0;0;0;0;0;0;0;0;0\r\n"));
    // The number that the button had raised is free again.
    QCOMPARE(rehearsed.play(words("--number 3")).out.split(';').at(Session), QByteArray("1"));
}

void tst_Rehearse::anEarlyAnswerIsAnAnticipation()
{
    const Rehearsed rehearsed;
    const auto run =
        rehearsed.play(words("--number 6") +
                       steadyWithKeys(rehearsed, "1 1 early 50\n2 3 early 150\n3 4 early 90\n"));
    QVERIFY2(run.code == 0, run.error.constData());
    const auto rows = rehearsed.trials();
    QCOMPARE(rows.size(), 7);
    QCOMPARE(rows.at(0).at(Rt), QByteArray("300")); // a press in the first wait has no effect
    QCOMPARE(rows.at(1).at(Rt), QByteArray("-250"));
    QCOMPARE(rows.at(1).at(Error), QByteArray("1"));
    QCOMPARE(rows.at(2).at(Rt), QByteArray("90"));
    QCOMPARE(rows.at(2).at(Error), QByteArray("0"));
}

void tst_Rehearse::aLateAnswerDoesNotCount()
{
    const Rehearsed rehearsed;
    const auto run =
        rehearsed.play(words("--number 6") +
                       steadyWithKeys(rehearsed, "2 4 late\n4 4 late 2000\n5 4 late 2001\n"));
    QVERIFY2(run.code == 0, run.error.constData());
    const auto rows = rehearsed.trials();
    QCOMPARE(rows.size(), 8);
    QCOMPARE(rows.at(1).at(Rt), QByteArray("2500"));
    QCOMPARE(rows.at(1).at(Error), QByteArray("1"));
    QCOMPARE(rows.at(3).at(Rt), QByteArray("2000"));
    QCOMPARE(rows.at(3).at(Error), QByteArray("0"));
    QCOMPARE(rows.at(4).at(Rt), QByteArray("2001"));
    QCOMPARE(rows.at(4).at(Error), QByteArray("1"));
}

void tst_Rehearse::underFixedDurationAMissIsATimeOut()
{
    const Rehearsed rehearsed;
    const auto run = rehearsed.play(words("--fixed-duration --number 30") + missing(rehearsed));
    QVERIFY2(run.code == 0, run.error.constData());
    int missed = 0;
    for (const auto &row : rehearsed.trials()) {
        QCOMPARE(row.at(Rt) == "5000", row.at(Error) == "1");
        missed += row.at(Error) == "1" ? 1 : 0;
    }
    QVERIFY(missed > 0);
    // Every trial has taken its cycle of 7700 ms.
    const int trials = int(rehearsed.trials().size());
    QCOMPARE(trials, 30 + missed);
    QCOMPARE(run.out.split(';').at(9),
             QTime(0, 0).addSecs(trials * 7700 / 1000).toString().toLatin1());
}

void tst_Rehearse::withoutFixedDurationAMissIsAVeryLateAnswer()
{
    const Rehearsed rehearsed;
    const auto run = rehearsed.play(words("--number 30") + missing(rehearsed));
    QVERIFY2(run.code == 0, run.error.constData());
    int missed = 0;
    for (const auto &row : rehearsed.trials()) {
        QCOMPARE(row.at(Rt) == "6000", row.at(Error) == "1");
        missed += row.at(Error) == "1" ? 1 : 0;
    }
    QVERIFY(missed > 0);
}

void tst_Rehearse::theReportIsMadeInTheLanguageAskedFor()
{
    const Rehearsed rehearsed;
    QVERIFY(QDir().mkpath(rehearsed.path(QStringLiteral("root/Languages"))));
    // From German on a path and its file name run into one another. There is none in English.
    rehearsed.write(QStringLiteral("root/Languages/DeKelmoran_Task2_de.html"),
                    "<html><body><p>v_t2a_neutral ms</p></body></html>");
    const auto run = rehearsed.play(words("--report --language de --number 3 --repeat 2"));
    QVERIFY2(run.code == 0, run.error.constData());
    for (const char *session : {"S01", "S02"}) {
        const QByteArray pdf =
            rehearsed.bytes(QStringLiteral("Archives/REHEARSAL Patient 01.01.1960/Output_T2_%1_"
                                           "REHEARSAL Patient 01.01.1960.pdf")
                                .arg(QLatin1String(session)));
        QVERIFY(pdf.startsWith("%PDF-"));
        QVERIFY(pdf.trimmed().endsWith("%%EOF"));
    }
}

QTEST_GUILESS_MAIN(tst_Rehearse)
#include "tst_Rehearse.moc"
