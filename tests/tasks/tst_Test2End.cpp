#include "AttentionDesk.h"

#include <algorithm>
#include <array>
#include <cmath>

using namespace column;

/// The end of a test, and the ways out of it: what is filed, and what is told when it can't be.
class tst_Test2End : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aWholeTestFilesItsScores();
    void aPausedRankLeavesAnEmptyPlaceInTheScores();
    void aShortTestCountsItsEmptyPlaces();
    void aLongTestRunsOverIntoTheNextRow();
    void aTestWithoutInvalidTrialsHasNoErrors();
    void invalidTrialsAreInTheLogOnly();
    void onlyTheTasksFieldOfThePatientChanges();
    void aSecondTestWritesNoSecondHeader();
    void aDeletedFileGetsItsHeaderAgain();
    void theReportIsAskedForWhenItIsWanted();
    void mainMenuClosesTheTask();
    void escapeInTheTestKeepsItsRows();
    void escapeAtTheEndKeepsTheSession();
    void theKeysFileNothingTwice();
    void aSecondRunStartsFromZero();
    void aLogThatCannotBeOpenedIsTold();
    void whatCannotBeFiledIsToldAndTheRestIsFiled();
    void aRowThatCouldNotBeWrittenIsToldAtTheEnd();
    void everyTrialOfTheTestLeavesItsTimes();
    void aBrokenOffTestKeepsItsTimes();
    void aPictureThatCameMuchTooLateIsToldUnderTheButtons();
    void aTestInTimeTellsNothingOfIt();
    void timesThatCannotBeWrittenAreTold();
};

namespace {

constexpr const char *scoreFile = "Archives/Doe Jane 01.02.1950/results_T2_Doe Jane 01.02.1950.csv";

constexpr const char *timingFile = "Results/timing.csv";

/// Lets every paint of the task take this long.
class SlowPaint : public QObject
{
public:
    SlowPaint(AttentionDesk &desk, int ms)
        : m_desk(desk)
        , m_ms(ms)
    {
        QCoreApplication::processEvents(); // a window that isn't exposed paints nothing
        desk.task.installEventFilter(this);
    }

    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::UpdateRequest && m_desk.task.stage() == 2)
            m_desk.time.advance(m_ms);
        return false;
    }

private:
    AttentionDesk &m_desk;
    const int m_ms;
};

/// The scores, worked out again from the rows alone: slots by condition and rank, a line by the
/// normal equations, and the times carried forward to rank 20.
struct Expected
{
    std::array<double, 3> value{};
    std::array<double, 3> error{};
    std::array<double, 3> slope{};
    std::array<double, 3> r2{};
};

Expected recomputed(const QList<QStringList> &rows)
{
    std::array<std::array<long double, 32>, 3> times{};
    std::array<int, 3> errors{};
    int trials = 0;
    for (const QStringList &row : rows) {
        if (row.size() != Count)
            continue;
        ++trials;
        const auto condition = std::size_t(row[Subtask].toInt() - 1);
        if (row[Error] == QStringLiteral("1"))
            ++errors[condition];
        else
            times[condition][std::size_t(row[RankSub].toInt() - 1)] = row[Rt].toInt();
    }

    Expected result;
    std::array<double, 3> mean{};
    for (std::size_t c = 0; c < 3; ++c) {
        long double sx = 0;
        long double sy = 0;
        long double sxx = 0;
        long double sxy = 0;
        long double syy = 0;
        for (std::size_t i = 0; i < 20; ++i) {
            const long double x = std::log(static_cast<long double>(i + 1));
            const long double y = times[c][i];
            sx += x;
            sy += y;
            sxx += x * x;
            sxy += x * y;
            syy += y * y;
        }
        const long double covariance = 20 * sxy - sx * sy;
        const long double slope = covariance / (20 * sxx - sx * sx);
        long double sum = 0;
        for (std::size_t i = 0; i < 32; ++i) {
            const long double forward = std::log(20.0L) - std::log(static_cast<long double>(i + 1));
            sum += times[c][i] + (i < 20 ? slope * forward : 0);
        }
        mean[c] = double(sum / 32);
        result.slope[c] = double(slope);
        result.r2[c] = double(slope * covariance / (20 * syy - sy * sy));
        result.value[c] = c == 0 ? mean[0] : mean[0] - mean[c];
        result.error[c] = 100.0 * errors[c] / trials;
    }
    return result;
}

/// Compares the twelve scores of a row with the recomputed ones.
void compareScores(const QStringList &row, const Expected &expected)
{
    QCOMPARE(row.size(), 23);
    for (std::size_t c = 0; c < 3; ++c) {
        const qsizetype at = 11 + 4 * qsizetype(c);
        QVERIFY2(std::abs(row[at].toDouble() - expected.value[c]) < 1e-5, qPrintable(row[at]));
        QCOMPARE(row[at + 1], QString::asprintf("%.1f", expected.error[c]));
        QVERIFY2(std::abs(row[at + 2].toDouble() - expected.slope[c]) < 1e-5,
                 qPrintable(row[at + 2]));
        QVERIFY2(std::abs(row[at + 3].toDouble() - expected.r2[c]) < 1e-5, qPrintable(row[at + 3]));
    }
}

/// A whole test; the reaction times fall with the trials and scatter.
void play(AttentionDesk &desk, int validTrials)
{
    desk.click("pb_go");
    for (int trial = 0; trial < validTrials; ++trial)
        QVERIFY(desk.answer(350 - int(25 * std::log(trial + 1)) + trial * 37 % 41));
}

void playShort(AttentionDesk &desk, int number)
{
    desk.goTest(true);
    desk.type("le_number", QString::number(number));
    play(desk, number);
    QVERIFY(desk.shown("pb_results"));
}

} // namespace

void tst_Test2End::aWholeTestFilesItsScores()
{
    AttentionDesk desk;
    desk.goTest();
    const QDateTime start = desk.time.currentDateTime();
    play(desk, 96);
    const int length = int(start.msecsTo(desk.time.currentDateTime()));
    QVERIFY(desk.shown("pb_results") && desk.shown("pb_mainMenu"));
    const QPoint middle(desk.task.width() / 2, desk.task.height() / 2);
    QCOMPARE(desk.widget("pb_results")->geometry().center().x() + 1, middle.x() - 100);
    QCOMPARE(desk.widget("pb_mainMenu")->geometry().center().x() + 1, middle.x() + 100);

    const QList<QStringList> rows = desk.rows();
    QCOMPARE(rows.size(), 96);
    const QByteArray log = desk.root.bytes(QStringLiteral("Results/output.csv"));
    QCOMPARE(desk.root.bytes(QStringLiteral("Results/valid-output.csv")), log); // all were valid

    const QList<QStringList> scores = desk.rows("Results/results_T2.csv");
    QCOMPARE(scores.size(), 1);
    QCOMPARE(scores[0].mid(0, 11).join(u';'),
             QStringLiteral(";Mrs.;Doe;Jane;01/02/1950;2;3;%1;%2;%3;96")
                 .arg(desk.time.currentDateTime().toString(QStringLiteral("dd/MM/yyyy")),
                      desk.time.currentDateTime().toString(QStringLiteral("hh:mm:ss.zzz")),
                      TaskDialog::msToQtime(length).toString(QStringLiteral("hh:mm:ss"))));
    compareScores(scores[0], recomputed(rows));
    QCOMPARE(desk.root.bytes(QString::fromLatin1(scoreFile)),
             desk.root.bytes(QStringLiteral("Results/results_T2.csv")));
}

void tst_Test2End::aPausedRankLeavesAnEmptyPlaceInTheScores()
{
    AttentionDesk desk;
    desk.goTest(true);
    desk.type("le_number", QStringLiteral("60"));
    desk.click("pb_go");
    for (int trial = 0; trial < 60; ++trial) {
        if (trial == 5 || trial == 31) {
            QVERIFY(desk.reach(4));
            desk.key(Qt::Key_P);
            desk.click("pb_continue");
        }
        QVERIFY(desk.answer(300 + trial));
    }
    const QList<QStringList> rows = desk.rows();
    QCOMPARE(rows.size(), 62);
    compareScores(desk.rows("Results/results_T2.csv").constFirst(), recomputed(rows));
}

void tst_Test2End::aShortTestCountsItsEmptyPlaces()
{
    AttentionDesk desk;
    playShort(desk, 7);
    const QStringList scores = desk.rows("Results/results_T2.csv").constFirst();
    compareScores(scores, recomputed(desk.rows()));
    QCOMPARE(scores[10], QStringLiteral("7"));
}

void tst_Test2End::aLongTestRunsOverIntoTheNextRow()
{
    AttentionDesk desk;
    desk.goTest(true);
    desk.type("le_number", QStringLiteral("99"));
    desk.click("pb_go");
    std::array<double, 3> last{}; // the 33rd time of each condition
    for (int trial = 0; trial < 99; ++trial) {
        QVERIFY(desk.answer(trial < 96 ? 300 : 1000 + trial));
    }
    for (const QStringList &row : desk.rows()) {
        if (row[RankSub] == QStringLiteral("33"))
            last[std::size_t(row[Subtask].toInt() - 1)] = row[Rt].toDouble();
    }
    QVERIFY(last[0] > 1000 && last[1] > 1000 && last[2] > 1000);
    // The neutral 33rd is the first of the alerted row, the alerted one the first of the oriented.
    const QStringList scores = desk.rows("Results/results_T2.csv").constFirst();
    QCOMPARE(scores[11], QStringLiteral("300.000000"));
    QVERIFY(scores[15].toDouble() != 0.0);
    QVERIFY(scores[17].toDouble() < 0.0); // a slow first trial: a falling curve
    QVERIFY(scores[21].toDouble() < scores[17].toDouble());
}

void tst_Test2End::aTestWithoutInvalidTrialsHasNoErrors()
{
    AttentionDesk desk;
    playShort(desk, 6);
    const QStringList scores = desk.rows("Results/results_T2.csv").constFirst();
    for (const int at : {12, 16, 20})
        QCOMPARE(scores[at], QStringLiteral("0.0"));
}

void tst_Test2End::invalidTrialsAreInTheLogOnly()
{
    AttentionDesk desk;
    desk.goTest(true);
    desk.type("le_number", QStringLiteral("3"));
    desk.click("pb_go");
    QVERIFY(desk.answer(300));
    QVERIFY(desk.reach(3));
    desk.key(Qt::Key_Space);
    desk.time.advance(600);
    QVERIFY(desk.answer(310));
    QVERIFY(desk.answer(2222));
    QVERIFY(desk.answer(320));
    QVERIFY(desk.shown("pb_results"));
    QCOMPARE(desk.rows().size(), 5);
    const QList<QStringList> valid = desk.rows("Results/valid-output.csv");
    QCOMPARE(valid.size(), 3);
    for (qsizetype i = 0; i < 3; ++i) {
        QCOMPARE(valid[i][Error], QStringLiteral("0"));
        QCOMPARE(valid[i][Rt], QString::number(300 + 10 * i));
    }
    const QStringList scores = desk.rows("Results/results_T2.csv").constFirst();
    QCOMPARE(scores[10], QStringLiteral("5"));
    compareScores(scores, recomputed(desk.rows()));
    QCOMPARE(scores[12].toDouble() + scores[16].toDouble() + scores[20].toDouble(), 40.0);
}

void tst_Test2End::onlyTheTasksFieldOfThePatientChanges()
{
    AttentionDesk desk;
    playShort(desk, 3);
    QCOMPARE(desk.root.bytes(QStringLiteral("Parameters/patients_list.txt")),
             "Mrs.;Doe;Jane;01.02.1950;1;3;3;4;5;6;7;8;9;10\r\n");
}

void tst_Test2End::aSecondTestWritesNoSecondHeader()
{
    AttentionDesk desk;
    for (const int session : {3, 4}) {
        sessionStore().sessionNb[1] = session;
        playShort(desk, 3);
        desk.click("pb_mainMenu");
    }
    for (const char *file : {"Results/results_T2.csv", scoreFile, "Results/valid-output.csv"}) {
        const QByteArray all = desk.root.bytes(QString::fromLatin1(file));
        QVERIFY(all.startsWith("code;gender;"));
        QCOMPARE(all.count("code;gender;"), 1);
    }
    const QList<QStringList> scores = desk.rows(scoreFile);
    QCOMPARE(scores.size(), 2);
    QCOMPARE(scores[0][6], QStringLiteral("3"));
    QCOMPARE(scores[1][6], QStringLiteral("4"));
}

void tst_Test2End::aDeletedFileGetsItsHeaderAgain()
{
    AttentionDesk desk;
    playShort(desk, 3);
    desk.click("pb_mainMenu");
    QFile::remove(desk.root.path(QStringLiteral("Results/valid-output.csv")));
    playShort(desk, 3);
    QCOMPARE(desk.root.bytes(QStringLiteral("Results/valid-output.csv")).count("code;"), 1);
    QCOMPARE(desk.rows("Results/valid-output.csv").size(), 3);
}

void tst_Test2End::theReportIsAskedForWhenItIsWanted()
{
    AttentionDesk desk;
    // The report of a test whose template is missing says so: it has been asked for.
    playShort(desk, 3);
    QVERIFY(QFile::remove(desk.root.path(QString::fromLatin1(AttentionDesk::reportTemplate))));
    desk.click("pb_results");
    const auto messages = desk.boxes.take();
    QCOMPARE(messages.size(), 1);
    QCOMPARE(messages[0].title, QStringLiteral("Unable to open file"));
    QVERIFY(!desk.task.isRunning());
    QVERIFY(!sessionStore().escapeSeq);
}

void tst_Test2End::mainMenuClosesTheTask()
{
    AttentionDesk desk;
    playShort(desk, 3);
    desk.click("pb_mainMenu");
    QVERIFY(!desk.task.isRunning());
    QVERIFY(!desk.task.result().isVisible());
    QVERIFY(!sessionStore().escapeSeq); // the session has been taken
}

void tst_Test2End::escapeInTheTestKeepsItsRows()
{
    AttentionDesk desk;
    desk.goTest();
    desk.click("pb_go");
    QVERIFY(desk.answer(300));
    QVERIFY(desk.reach(4));
    desk.key(Qt::Key_Escape);
    QVERIFY(!desk.task.isRunning());
    QVERIFY(sessionStore().escapeSeq);
    const QList<QStringList> rows = desk.rows();
    QCOMPARE(rows.size(), 2);
    QCOMPARE(rows[1].join(u';'), QStringLiteral(";Mrs.;Doe;Jane;01/02/1950;interrupted"));
    for (const char *file : {"Results/valid-output.csv", "Results/results_T2.csv", scoreFile})
        QVERIFY(!desk.root.exists(QString::fromLatin1(file)));
    desk.time.advance(60'000); // and nothing goes on
    QCOMPARE(desk.rows().size(), 2);
    QVERIFY(!desk.task.isRunning());
}

void tst_Test2End::escapeAtTheEndKeepsTheSession()
{
    AttentionDesk desk;
    playShort(desk, 3);
    const QByteArray log = desk.root.bytes(QStringLiteral("Results/output.csv"));
    desk.key(Qt::Key_Escape);
    QVERIFY(!desk.task.isRunning());
    QVERIFY(sessionStore().escapeSeq);
    QCOMPARE(desk.root.bytes(QStringLiteral("Results/output.csv")), log);
    QVERIFY(desk.root.bytes(QStringLiteral("Parameters/patients_list.txt")).contains(";1;3;3;"));
}

void tst_Test2End::theKeysFileNothingTwice()
{
    AttentionDesk desk;
    playShort(desk, 3);
    for (const Qt::Key key : {Qt::Key_E, Qt::Key_P, Qt::Key_Space}) {
        desk.key(key);
        desk.time.advance(60'000);
    }
    QTest::mouseClick(&desk.task, Qt::LeftButton, {}, {10, 700});
    desk.time.advance(60'000);
    QCOMPARE(desk.rows().size(), 3);
    QCOMPARE(desk.rows("Results/results_T2.csv").size(), 1);
    QVERIFY(!desk.shown("pb_continue"));
}

void tst_Test2End::aSecondRunStartsFromZero()
{
    AttentionDesk desk;
    playShort(desk, 3);
    desk.click("pb_mainMenu");
    playShort(desk, 6);
    const QList<QStringList> rows = desk.rows().mid(3);
    QCOMPARE(rows.size(), 6);
    QCOMPARE(rows[0][RankTask], QStringLiteral("1"));
    QCOMPARE(rows[0][RankSub], QStringLiteral("1"));
    const QStringList scores = desk.rows("Results/results_T2.csv").constLast();
    QCOMPARE(scores[10], QStringLiteral("6"));
    compareScores(scores, recomputed(rows));
}

void tst_Test2End::aLogThatCannotBeOpenedIsTold()
{
    AttentionDesk desk;
    desk.root.block(QStringLiteral("Results/output.csv"));
    desk.goTest();
    const auto messages = desk.boxes.take();
    QCOMPARE(messages.size(), 1);
    QCOMPARE(messages[0].title, QStringLiteral("Error"));
    QVERIFY(messages[0].text.startsWith(QStringLiteral("Failed to open output.csv\n")));
    QVERIFY(!desk.task.isRunning());
    QVERIFY(!sessionStore().escapeSeq);
    QCOMPARE(desk.task.styleSheet(), QStringLiteral("background-color:rgb(0, 0, 0)"));

    desk.root.unblock(QStringLiteral("Results/output.csv"));
    desk.goTest(); // the next attempt works
    QVERIFY(desk.task.isRunning());
}

void tst_Test2End::whatCannotBeFiledIsToldAndTheRestIsFiled()
{
    AttentionDesk desk;
    desk.root.block(QStringLiteral("Results/valid-output.csv"));
    desk.root.block(QStringLiteral("bin/_patients_list.txt"));
    desk.root.block(QString::fromLatin1(scoreFile));
    const QByteArray list = desk.root.bytes(QStringLiteral("Parameters/patients_list.txt"));
    desk.goTest(true);
    desk.type("le_number", QStringLiteral("3"));
    play(desk, 3);

    const auto messages = desk.boxes.take();
    QCOMPARE(messages.size(), 1);
    for (const char *file :
         {"patients_list.txt", "valid-output.csv", "results_T2_Doe Jane 01.02.1950.csv"})
        QVERIFY2(messages[0].text.contains(
                     QStringLiteral("Failed to open %1\n").arg(QLatin1String(file))),
                 qPrintable(messages[0].text));
    QVERIFY(desk.task.isRunning());
    QVERIFY(desk.shown("pb_results") && desk.shown("pb_mainMenu"));
    QCOMPARE(desk.rows("Results/results_T2.csv").size(), 1);
    QCOMPARE(desk.root.bytes(QStringLiteral("Parameters/patients_list.txt")), list);
}

void tst_Test2End::aRowThatCouldNotBeWrittenIsToldAtTheEnd()
{
    if (!QFile::exists(QStringLiteral("/dev/full")))
        QFAIL("this system has no device that is always full");
    AttentionDesk desk;
    const QString log = desk.root.path(QStringLiteral("Results/output.csv"));
    QFile::remove(log);
    QVERIFY(QFile::link(QStringLiteral("/dev/full"), log));
    desk.goTest(true);
    desk.type("le_number", QStringLiteral("3"));
    desk.click("pb_go");
    QVERIFY(desk.answer(300));
    QVERIFY(desk.answer(300));
    QVERIFY(desk.boxes.take().isEmpty()); // not in the middle of the test
    QVERIFY(desk.answer(300));
    const auto messages = desk.boxes.take();
    QCOMPARE(messages.size(), 1);
    QVERIFY(messages[0].text.startsWith(QStringLiteral("Failed to open output.csv\n")));
    QCOMPARE(desk.rows("Results/valid-output.csv").size(), 3); // the valid rows are kept
    QCOMPARE(desk.rows("Results/results_T2.csv").size(), 1);
    QFile::remove(log);
}

void tst_Test2End::everyTrialOfTheTestLeavesItsTimes()
{
    AttentionDesk desk;
    playShort(desk, 6);
    const QList<QStringList> trials = desk.rows();
    const QList<QStringList> times = desk.rows(timingFile);
    QCOMPARE(times.size(), trials.size());
    for (qsizetype i = 0; i < times.size(); ++i) {
        const QStringList &row = times.at(i);
        QCOMPARE(row.size(), 37);
        QCOMPARE(row.mid(0, 2), trials.at(i).mid(7, 2)); // date and time
        QCOMPARE(row.mid(2, 3).join(u';'), QStringLiteral("2;3;%1").arg(i + 1));
        QCOMPARE(row.at(5), QStringLiteral("0.000"));
        QCOMPARE(row.at(7), row.at(6) + QStringLiteral(".000")); // the foreperiod, drawn
        QCOMPARE(row.mid(8, 5).join(u';'), QStringLiteral("100;100.000;400;400.000;"));
    }
}

void tst_Test2End::aBrokenOffTestKeepsItsTimes()
{
    AttentionDesk desk;
    desk.goTest();
    desk.click("pb_go");
    QVERIFY(desk.answer(300));
    desk.key(Qt::Key_Escape);
    QCOMPARE(desk.rows(timingFile).size(), 1);
}

void tst_Test2End::aPictureThatCameMuchTooLateIsToldUnderTheButtons()
{
    AttentionDesk desk;
    desk.goTest(true);
    desk.type("le_number", QStringLiteral("3"));
    SlowPaint slow(desk, 25);
    play(desk, 3);
    QVERIFY(desk.label("lbl_late").contains(QStringLiteral("25 ms")));
    const QWidget *note = desk.widget<QLabel>("lbl_late");
    QVERIFY(note->y() > desk.widget("pb_results")->geometry().bottom());
    const QList<QStringList> times = desk.rows(timingFile);
    QVERIFY(std::any_of(times.begin(), times.end(),
                        [](const QStringList &row) { return row.at(5) == u"25.000"; }));
}

void tst_Test2End::aTestInTimeTellsNothingOfIt()
{
    AttentionDesk desk;
    desk.goTest(true);
    desk.type("le_number", QStringLiteral("3"));
    SlowPaint slow(desk, 16); // less than a frame of 60 Hz
    play(desk, 3);
    QVERIFY(desk.shown("pb_results"));
    QVERIFY(!desk.shown("lbl_late"));
}

void tst_Test2End::timesThatCannotBeWrittenAreTold()
{
    AttentionDesk desk;
    QVERIFY(QDir().mkpath(QString::fromLatin1("../") + QString::fromLatin1(timingFile)));
    playShort(desk, 3);
    const auto messages = desk.boxes.take();
    QCOMPARE(messages.size(), 1);
    QVERIFY(messages.at(0).text.startsWith(QStringLiteral("Failed to open timing.csv\n")));
    QCOMPARE(desk.rows().size(), 3);
}

QTEST_MAIN(tst_Test2End)
#include "tst_Test2End.moc"
