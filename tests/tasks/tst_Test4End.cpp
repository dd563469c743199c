#include "MemoryDesk.h"

#include <QLoggingCategory>

#include <cmath>

using namespace column;

/// The end of a test, and the ways out of it: what is filed, and what is told when it can't be.
class tst_Test4End : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aTestOnThePlacesFilesARowThatIsKnown();
    void equalDistancesComeBackAsTheyAre();
    void aWholeTestFilesItsScores();
    void anErrorThatGrowsWithTheLoadIsFound();
    void invalidTrialsAreAddedAndCountedAgainstTheValidOnes();
    void aStrikeOnTheFirstTrialCostsNothingButATrial();
    void anotherNumberLeavesTheThirtyRanksAlone_data();
    void anotherNumberLeavesTheThirtyRanksAlone();
    void aNumberBelowTheTrialsDoneEndsTheTestWithTheNextTrial_data();
    void aNumberBelowTheTrialsDoneEndsTheTestWithTheNextTrial();
    void aTestOfStruckTrialsAloneStillEnds();
    void behindABlockThatAStrikeEndsNoClickIsAnswered_data();
    void behindABlockThatAStrikeEndsNoClickIsAnswered();
    void anAnswerThatAPauseHasCutOffIsScoredAsItWasGiven();
    void theLengthOfATestHoldsItsPauses();
    void onlyTheTasksFieldOfThePatientChanges();
    void aSecondTestWritesNoSecondHeader();
    void aDeletedFileGetsItsHeaderAgain();
    void theTrainingIsNotScored();
    void theTwoButtonsEndTheTest();
    void theReportIsAskedForWhenItIsWanted();
    void mainMenuClosesTheTask();
    void mainMenuIsPrintedUnderTheOtherButtonsWord();
    void escapeAtTheEndKeepsTheSession();
    void theKeysFileNothingTwice();
    void aSecondRunStartsFromZero();
    void aLogThatCannotBeOpenedIsTold_data();
    void aLogThatCannotBeOpenedIsTold();
    void whatCannotBeFiledIsToldAndTheRestIsFiled();
    void aRowThatCouldNotBeWrittenIsToldAtTheEnd();
};

namespace {

constexpr const char *allScores = "Results/results_T4.csv";
constexpr const char *ownScores = "Archives/Doe Jane 01.02.1950/results_T4_Doe Jane 01.02.1950.csv";
constexpr const char *validRows = "Results/valid-output.csv";

constexpr const char *scoreHeader =
    "code;gender;l_name;f_name;dob;task;session;date;time;duration;trials;average_f;average_l;"
    "t4_slope;t4_intercept;t4_r2;t4l_slope;t4l_r2;t4_error";

/// The task's columns of a score row.
enum { Trials = 10, AverageF, AverageL, Slope, Intercept, R2, LSlope, LR2, ErrorRate };

QByteArray bytes(const MemoryDesk &desk, const char *file)
{
    return desk.root.bytes(QString::fromLatin1(file));
}

constexpr std::size_t ranks = 30;
using Table = std::array<long double, ranks>;

struct Line
{
    long double slope, intercept, r2;
};

/// By the normal equations.
Line fitted(const Table &xs, const Table &ys)
{
    long double sx = 0;
    long double sy = 0;
    long double sxx = 0;
    long double sxy = 0;
    long double syy = 0;
    for (std::size_t i = 0; i < ranks; ++i) {
        sx += xs.at(i);
        sy += ys.at(i);
        sxx += xs.at(i) * xs.at(i);
        sxy += xs.at(i) * ys.at(i);
        syy += ys.at(i) * ys.at(i);
    }
    const long double covariance = ranks * sxy - sx * sy;
    const long double slope = covariance / (ranks * sxx - sx * sx);
    return {slope, (sy - slope * sx) / ranks, slope * covariance / (ranks * syy - sy * sy)};
}

/// The eight scores, worked out again from the rows of the log alone. Distances are whole
/// hundredths of a millimetre, so that the rows hold them as they are.
QString recomputed(const QList<QStringList> &rows)
{
    Table lnRank{};
    Table first{};
    Table last{};
    Table axis{};
    std::array<std::size_t, ranks> loads{};
    for (std::size_t i = 0; i < ranks; ++i) {
        lnRank.at(i) = std::log(static_cast<long double>(i + 1));
        axis.at(i) = static_cast<long double>(i / 5);
    }
    int valid = 0;
    int invalid = 0;
    for (const QStringList &row : rows) {
        if (row.size() != Count)
            continue;
        if (row[Error] == QStringLiteral("1")) {
            ++invalid;
            continue;
        }
        ++valid;
        const int rank = row[RankTask].toInt() - 1;
        if (rank < 0 || rank >= int(ranks))
            continue;
        first.at(std::size_t(rank)) = std::log(row[DistFirst].toDouble());
        last.at(std::size_t(rank)) = std::log(row[DistLast].toDouble());
        loads.at(std::size_t(rank)) = std::size_t(row[Subtask].toInt());
    }
    const Line practiceF = fitted(lnRank, first);
    const Line practiceL = fitted(lnRank, last);
    Table grouped{};
    long double sumF = 0;
    long double sumL = 0;
    for (std::size_t i = 0; i < ranks; ++i) {
        const long double toGo = std::log(30.0L) - lnRank.at(i);
        const long double corrected = first.at(i) + toGo * practiceF.slope;
        sumF += corrected;
        sumL += last.at(i) + toGo * practiceL.slope;
        grouped.at(loads.at(i) * 5 + i / 6) = corrected;
    }
    const Line growth = fitted(axis, grouped);
    return QString::asprintf(
        "%f;%f;%f;%f;%f;%f;%f;%f", double(std::exp(sumF / ranks)), double(std::exp(sumL / ranks)),
        double(std::exp(growth.slope)), double(std::exp(growth.intercept)), double(growth.r2),
        double(practiceF.slope), double(practiceF.r2), 100.0 * invalid / valid);
}

/// A trial whose clicks fall so many pixels to the right of the true places; four make a
/// millimetre.
bool answerTrial(MemoryDesk &desk, int first, int last)
{
    const QList<QPoint> places = desk.runToQuestion();
    if (places.size() < 2)
        return false;
    desk.answer(places.constLast() + QPoint(last, 0), places.constFirst() + QPoint(first, 0));
    return desk.finishTrial();
}

bool strike(MemoryDesk &desk)
{
    if (desk.runToQuestion().size() < 2)
        return false;
    desk.key(Qt::Key_E);
    return desk.task.stage() == 0;
}

/// So many valid trials, whose distances fall with the trials and scatter.
bool play(MemoryDesk &desk, int validTrials)
{
    for (int trial = 0; trial < validTrials; ++trial) {
        const int practice = int(14 * std::log(trial + 1));
        if (!answerTrial(desk, 76 - practice + trial * 37 % 23, 60 - practice + trial * 29 % 17))
            return false;
    }
    return true;
}

void goWithNumber(MemoryDesk &desk, int number)
{
    desk.go({});
    desk.type("le_number", QString::number(number));
    desk.click("pb_go");
}

/// A whole test of so many valid trials.
bool playShort(MemoryDesk &desk, int number)
{
    goWithNumber(desk, number);
    return play(desk, number) && desk.shown("pb_results");
}

/// The last row of scores.
QStringList scoreRow(MemoryDesk &desk)
{
    return desk.rows(allScores).constLast();
}

/// The scores of the last test of a file.
QString lastScores(MemoryDesk &desk)
{
    return scoreRow(desk).mid(AverageF).join(u';');
}

QStringList tellings(const QList<messages::Message> &messages)
{
    QStringList texts;
    for (const messages::Message &message : messages)
        texts.append(message.title + u'|' + message.text);
    return texts;
}

} // namespace

void tst_Test4End::aTestOnThePlacesFilesARowThatIsKnown()
{
    MemoryDesk desk;
    sessionStore().siteCode = QStringLiteral("UKB");
    desk.startTest();
    QVERIFY(desk.runTrials(30)); // every click nearer than a millimetre
    QVERIFY(desk.shown("pb_results") && desk.shown("pb_mainMenu"));
    // A second before each run and one behind it, a second and a half for each of 135 crosses.
    QCOMPARE(bytes(desk, allScores).replace("-nan", "nan"), // its sign is the machine's
             QByteArray(scoreHeader) +
                 "\nUKB;Mrs.;Doe;Jane;01/02/1950;4;2;06/01/2025;09:04:22.500;00:04:22;30;"
                 "1.000000;1.000000;1.000000;1.000000;nan;0.000000;nan;0.000000\n");
    QCOMPARE(bytes(desk, ownScores), bytes(desk, allScores));
    QCOMPARE(bytes(desk, validRows), bytes(desk, "Results/output.csv")); // all were valid
    for (const QStringList &row : desk.rows())
        QCOMPARE(row[Session], QStringLiteral("5")); // its own, where the scores bear another's
}

void tst_Test4End::equalDistancesComeBackAsTheyAre()
{
    MemoryDesk desk;
    desk.startTest();
    for (int trial = 0; trial < 30; ++trial)
        QVERIFY(answerTrial(desk, 50, 33));
    const QStringList scores = scoreRow(desk);
    QCOMPARE(scores.size(), 19);
    QCOMPARE(scores[AverageF], QStringLiteral("12.500000"));
    QCOMPARE(scores[AverageL], QStringLiteral("8.250000"));
    QCOMPARE(scores[Slope], QStringLiteral("1.000000"));
    QCOMPARE(scores[Intercept], QStringLiteral("12.500000"));
    QVERIFY(std::abs(scores[LSlope].toDouble()) < 1e-6);
}

void tst_Test4End::aWholeTestFilesItsScores()
{
    MemoryDesk desk;
    desk.startTest();
    const QDateTime start = desk.time.currentDateTime();
    QVERIFY(play(desk, 30));
    const QDateTime end = desk.time.currentDateTime();
    QVERIFY(desk.shown("pb_results"));
    QCOMPARE(desk.rows().size(), 30);
    const QTime length = QTime(0, 0).addSecs(int(start.msecsTo(end) / 1000));
    const QString row =
        QStringLiteral(";Mrs.;Doe;Jane;01/02/1950;4;2;%1;%2;30;%3")
            .arg(end.toString(QStringLiteral("dd/MM/yyyy;hh:mm:ss.zzz")),
                 length.toString(QStringLiteral("hh:mm:ss")), recomputed(desk.rows()));
    QCOMPARE(QString::fromLatin1(bytes(desk, allScores)),
             QLatin1String(scoreHeader) + u'\n' + row + u'\n');
    QCOMPARE(bytes(desk, ownScores), bytes(desk, allScores));
    QVERIFY(scoreRow(desk).at(LSlope).toDouble() < -0.1); // there was practice to find
}

void tst_Test4End::anErrorThatGrowsWithTheLoadIsFound()
{
    MemoryDesk desk;
    desk.startTest();
    for (int trial = 0; trial < 30; ++trial) {
        const QList<QPoint> places = desk.runToQuestion();
        const int pixels = int(std::lround(16 * std::pow(1.5, double(places.size() - 2))));
        desk.answer(places.constLast(), places.constFirst() - QPoint(0, pixels));
        QVERIFY(desk.finishTrial());
    }
    const QStringList scores = scoreRow(desk);
    QCOMPARE(lastScores(desk), recomputed(desk.rows()));
    QVERIFY(std::abs(scores[Slope].toDouble() - 1.5) < 0.1);
    QVERIFY(std::abs(scores[Intercept].toDouble() - 3.2) < 0.7); // 16 pixels of 0.2 mm
    QVERIFY(scores[R2].toDouble() > 0.9);
    QCOMPARE(scores[AverageL], QStringLiteral("1.000000"));
}

void tst_Test4End::invalidTrialsAreAddedAndCountedAgainstTheValidOnes()
{
    MemoryDesk desk;
    desk.startTest();
    for (int struck = 0; struck < 3; ++struck) {
        QVERIFY(play(desk, 7));
        QVERIFY(strike(desk));
    }
    QVERIFY(play(desk, 11));
    QVERIFY(!desk.shown("pb_results"));
    QVERIFY(play(desk, 1)); // each has taken a valid one back: thirty and three
    QVERIFY(desk.shown("pb_results"));

    QCOMPARE(desk.rows().size(), 36);
    QCOMPARE(desk.rows(validRows).size(), 33);
    QCOMPARE(desk.rows().constLast()[RankTask], QStringLiteral("30"));
    const QStringList scores = scoreRow(desk);
    QCOMPARE(scores[Trials], QStringLiteral("33"));
    QCOMPARE(scores[ErrorRate], QStringLiteral("9.090909")); // 3 of 33
    QCOMPARE(lastScores(desk), recomputed(desk.rows()));

    QByteArrayList log = bytes(desk, "Results/output.csv").split('\n');
    log.removeIf([](const QByteArray &row) { return row.endsWith(";1"); });
    QCOMPARE(bytes(desk, validRows), log.join('\n'));
}

void tst_Test4End::aStrikeOnTheFirstTrialCostsNothingButATrial()
{
    MemoryDesk desk;
    desk.startTest();
    QVERIFY(strike(desk));
    QVERIFY(strike(desk));
    QVERIFY(play(desk, 32)); // of which the first two stand below the first rank
    QVERIFY(desk.shown("pb_results"));
    const QList<QStringList> rows = desk.rows(validRows);
    QCOMPARE(rows.size(), 32);
    QCOMPARE(rows[0][RankTask] + u' ' + rows[1][RankTask] + u' ' + rows[2][RankTask],
             QStringLiteral("-1 0 1"));
    const QStringList scores = scoreRow(desk);
    QCOMPARE(scores[Trials], QStringLiteral("32"));
    QCOMPARE(scores[ErrorRate], QStringLiteral("6.250000"));
    QCOMPARE(lastScores(desk), recomputed(desk.rows()));
}

void tst_Test4End::anotherNumberLeavesTheThirtyRanksAlone_data()
{
    QTest::addColumn<int>("number");
    for (const int number : {1, 6, 29, 31, 37, 70})
        QTest::addRow("%d", number) << number;
}

void tst_Test4End::anotherNumberLeavesTheThirtyRanksAlone()
{
    QFETCH(const int, number);
    MemoryDesk desk;
    QVERIFY(playShort(desk, number));
    QCOMPARE(desk.rows().size(), number);
    QCOMPARE(desk.rows(validRows).size(), number);
    QCOMPARE(scoreRow(desk).at(Trials), QString::number(number));
    QCOMPARE(lastScores(desk), recomputed(desk.rows()));
}

void tst_Test4End::aNumberBelowTheTrialsDoneEndsTheTestWithTheNextTrial_data()
{
    QTest::addColumn<QString>("number");
    QTest::newRow("fewer") << u"2"_qs;
    QTest::newRow("none") << u"0"_qs;
    QTest::newRow("no number") << u"abc"_qs;
}

void tst_Test4End::aNumberBelowTheTrialsDoneEndsTheTestWithTheNextTrial()
{
    QFETCH(const QString, number);
    MemoryDesk desk;
    desk.startTest();
    QVERIFY(play(desk, 4));
    desk.type("le_number", number);
    QVERIFY(!desk.shown("pb_results"));
    QVERIFY(play(desk, 1));
    QVERIFY(desk.shown("pb_results"));
    QCOMPARE(desk.rows().size(), 5);
    QCOMPARE(scoreRow(desk).at(Trials), QStringLiteral("5"));
    QCOMPARE(lastScores(desk), recomputed(desk.rows()));
}

void tst_Test4End::aTestOfStruckTrialsAloneStillEnds()
{
    MemoryDesk desk;
    goWithNumber(desk, -1);
    QVERIFY(desk.runToQuestion().size() >= 2);
    desk.key(Qt::Key_E); // one below the first rank: that is enough
    QVERIFY(desk.shown("pb_results"));
    const QStringList scores = scoreRow(desk);
    QCOMPARE(scores[Trials], QStringLiteral("0"));
    QCOMPARE(scores[AverageF], QStringLiteral("1.000000"));
    QCOMPARE(scores[ErrorRate], QStringLiteral("inf"));
    QCOMPARE(desk.rows(validRows).size(), 0);
}

void tst_Test4End::behindABlockThatAStrikeEndsNoClickIsAnswered_data()
{
    QTest::addColumn<bool>("training");
    QTest::addColumn<QString>("shown");
    QTest::newRow("training") << true << u"pb_go"_qs;
    QTest::newRow("test") << false << u"pb_results"_qs;
}

void tst_Test4End::behindABlockThatAStrikeEndsNoClickIsAnswered()
{
    QFETCH(const bool, training);
    QFETCH(const QString, shown);
    MemoryDesk desk;
    desk.startTest({.training = training});
    QVERIFY(play(desk, 2));
    QVERIFY(desk.runToQuestion().size() >= 2);
    desk.type("le_number", QStringLiteral("1")); // the strike takes one of the two back
    desk.key(Qt::Key_E);
    QVERIFY(desk.shown(qPrintable(shown)));
    const QByteArray log = bytes(desk, "Results/output.csv");
    const QByteArray scores = bytes(desk, allScores);
    for (int click = 0; click < 2; ++click) {
        desk.clickAt(desk.centre() + QPoint(0, 200));
        desk.time.advance(60'000);
        QVERIFY(desk.nothingIsShown());
        QCOMPARE(desk.task.stage(), 0);
        QVERIFY(desk.shown(qPrintable(shown)));
    }
    QCOMPARE(bytes(desk, "Results/output.csv"), log);
    QCOMPARE(bytes(desk, allScores), scores);
    QCOMPARE(desk.rows(validRows).size(), training ? 0 : 2);
}

void tst_Test4End::anAnswerThatAPauseHasCutOffIsScoredAsItWasGiven()
{
    MemoryDesk desk;
    desk.startTest();
    QVERIFY(desk.runTrials(28));
    // The last cross is answered, the trial is paused, and the next click answers for the first.
    const QList<QPoint> places = desk.runToQuestion();
    desk.clickAt(places.constLast());
    desk.key(Qt::Key_P);
    desk.clickAt(places.constFirst());
    QVERIFY(desk.finishTrial());
    QCOMPARE(desk.rows().constLast()[DistLast], QStringLiteral(" 9999.00"));
    QVERIFY(desk.runTrial());
    QVERIFY(desk.shown("pb_results"));
    QCOMPARE(scoreRow(desk).at(AverageF), QStringLiteral("1.000000"));
    QCOMPARE(scoreRow(desk).at(AverageL), QStringLiteral("1.000000")); // the click was on the place
}

void tst_Test4End::theLengthOfATestHoldsItsPauses()
{
    MemoryDesk desk;
    desk.go({});
    desk.type("le_number", QStringLiteral("2"));
    desk.time.advance(50'000); // not what comes before the first trial
    desk.click("pb_go");
    const QDateTime start = desk.time.currentDateTime();
    QVERIFY(desk.runTrial());
    desk.key(Qt::Key_P);
    desk.time.advance(3'661'000);
    QVERIFY(desk.runTrial());
    const auto seconds = int(start.msecsTo(desk.time.currentDateTime()) / 1000);
    desk.time.advance(50'000); // nor what comes behind the last
    const QStringList scores = scoreRow(desk);
    QVERIFY(scores[9].startsWith(QStringLiteral("01:01:")));
    QCOMPARE(scores[9], QTime(0, 0).addSecs(seconds).toString(QStringLiteral("hh:mm:ss")));
}

void tst_Test4End::onlyTheTasksFieldOfThePatientChanges()
{
    MemoryDesk desk;
    const QByteArray other = "Mr.;Roe;Jim;03.04.1961;9;9;9;9;9;9;9;9;9;9\r\n";
    const QByteArray before = bytes(desk, MemoryDesk::patients);
    desk.root.write(QString::fromLatin1(MemoryDesk::patients), other + before);
    QVERIFY(playShort(desk, 3));
    QCOMPARE(bytes(desk, MemoryDesk::patients),
             other + "Mrs.;Doe;Jane;01.02.1950;1;2;3;5;5;6;7;8;9;10\r\n");
}

void tst_Test4End::aSecondTestWritesNoSecondHeader()
{
    MemoryDesk desk;
    for (const int session : {5, 6}) {
        sessionStore().sessionNb[3] = session;
        QVERIFY(playShort(desk, 3));
        desk.click("pb_mainMenu");
    }
    for (const char *file : {allScores, ownScores, validRows}) {
        QVERIFY(bytes(desk, file).startsWith("code;gender;"));
        QCOMPARE(bytes(desk, file).count("code;gender;"), 1);
    }
    const QList<QStringList> scores = desk.rows(ownScores);
    QCOMPARE(scores.size(), 2);
    QCOMPARE(scores[0][6] + scores[1][6], QStringLiteral("22")); // that of the attention task
    QCOMPARE(bytes(desk, ownScores), bytes(desk, allScores));
    const QList<QStringList> valid = desk.rows(validRows);
    QCOMPARE(valid.size(), 6);
    QCOMPARE(valid[0][Session] + valid[5][Session], QStringLiteral("56"));
    QVERIFY(bytes(desk, MemoryDesk::patients).contains(";1;2;3;6;5;"));
}

void tst_Test4End::aDeletedFileGetsItsHeaderAgain()
{
    MemoryDesk desk;
    QVERIFY(playShort(desk, 3));
    desk.click("pb_mainMenu");
    for (const char *file : {allScores, ownScores, validRows})
        QVERIFY(QFile::remove(desk.root.path(QString::fromLatin1(file))));
    QVERIFY(playShort(desk, 3));
    for (const char *file : {allScores, ownScores, validRows})
        QCOMPARE(bytes(desk, file).count("code;"), 1);
    QCOMPARE(desk.rows(validRows).size(), 3);
    QCOMPARE(desk.rows(allScores).size(), 1);
}

void tst_Test4End::theTrainingIsNotScored()
{
    MemoryDesk desk;
    desk.startTest({.training = true});
    QVERIFY(strike(desk));
    for (int trial = 0; trial < 4; ++trial)
        QVERIFY(answerTrial(desk, 200, 300));
    QVERIFY(desk.shown("pb_go"));
    QVERIFY(!desk.shown("pb_results"));
    for (const char *file : {allScores, ownScores, validRows})
        QVERIFY(!desk.root.exists(QString::fromLatin1(file)));
    desk.time.advance(90'000);
    desk.click("pb_go");
    const QDateTime start = desk.time.currentDateTime();
    QVERIFY(play(desk, 30)); // thirty again, whatever the training had
    QVERIFY(desk.shown("pb_results"));
    const auto seconds = int(start.msecsTo(desk.time.currentDateTime()) / 1000);
    const QStringList scores = scoreRow(desk);
    QCOMPARE(scores[9], QTime(0, 0).addSecs(seconds).toString(QStringLiteral("hh:mm:ss")));
    QCOMPARE(scores[Trials], QStringLiteral("30"));
    QCOMPARE(scores[ErrorRate], QStringLiteral("0.000000"));
    QCOMPARE(desk.rows().size(), 30);
    QCOMPARE(lastScores(desk), recomputed(desk.rows()));
}

void tst_Test4End::theTwoButtonsEndTheTest()
{
    MemoryDesk desk;
    QVERIFY(playShort(desk, 3));
    QVERIFY(desk.shown("pb_results") && desk.shown("pb_mainMenu"));
    QVERIFY(desk.nothingIsShown());
    for (const char *name : {"pb_go", "pb_next", "pb_continue", "lbl_mode", "lbl_instruction"})
        QVERIFY2(!desk.shown(name), name);
    QCOMPARE(desk.task.cursor().shape(), Qt::ArrowCursor);
    QCOMPARE(desk.widget("pb_results")->geometry().center().x() + 1, desk.centre().x() - 100);
    QCOMPARE(desk.widget("pb_mainMenu")->geometry().center().x() + 1, desk.centre().x() + 100);
    QCOMPARE(desk.task.stage(), 0);
    QVERIFY(desk.task.isRunning());
    QVERIFY(!sessionStore().escapeSeq);
}

void tst_Test4End::theReportIsAskedForWhenItIsWanted()
{
    MemoryDesk desk;
    // The report of a test whose template is missing says so: it has been asked for.
    QVERIFY(playShort(desk, 3));
    QVERIFY(QFile::remove(desk.root.path(QString::fromLatin1(MemoryDesk::reportTemplate))));
    desk.click("pb_results");
    const auto messages = desk.boxes.take();
    QCOMPARE(messages.size(), 1);
    QCOMPARE(messages[0].title, QStringLiteral("Unable to open file"));
    QVERIFY(!desk.task.isRunning());
    QVERIFY(!sessionStore().escapeSeq);
}

void tst_Test4End::mainMenuClosesTheTask()
{
    MemoryDesk desk;
    QVERIFY(playShort(desk, 3));
    desk.click("pb_mainMenu");
    QVERIFY(!desk.task.isRunning());
    QVERIFY(!desk.task.result().isVisible());
    QVERIFY(!sessionStore().escapeSeq); // the session has been taken
}

void tst_Test4End::mainMenuIsPrintedUnderTheOtherButtonsWord()
{
    MemoryDesk desk;
    QVERIFY(playShort(desk, 3));
    QLoggingCategory::setFilterRules(QStringLiteral("kelmoran.task.debug=true"));
    QTest::ignoreMessage(QtDebugMsg, "Results");
    desk.click("pb_mainMenu");
    QLoggingCategory::setFilterRules(QString());
}

void tst_Test4End::escapeAtTheEndKeepsTheSession()
{
    MemoryDesk desk;
    QVERIFY(playShort(desk, 3));
    const QByteArray log = bytes(desk, "Results/output.csv");
    const QByteArray scores = bytes(desk, allScores);
    desk.key(Qt::Key_Escape);
    QVERIFY(!desk.task.isRunning());
    QVERIFY(!desk.task.result().isVisible());
    QVERIFY(sessionStore().escapeSeq);
    QCOMPARE(bytes(desk, "Results/output.csv"), log); // the log is closed: no marker
    QCOMPARE(bytes(desk, allScores), scores);
    QVERIFY(bytes(desk, MemoryDesk::patients).contains(";1;2;3;5;5;"));
}

void tst_Test4End::theKeysFileNothingTwice()
{
    MemoryDesk desk;
    QVERIFY(playShort(desk, 3));
    const QByteArray log = bytes(desk, "Results/output.csv");
    const QByteArray scores = bytes(desk, allScores);
    for (const Qt::Key key : {Qt::Key_E, Qt::Key_P, Qt::Key_Space, Qt::Key_C}) {
        desk.key(key);
        desk.clickAt(desk.centre() + QPoint(0, 200));
        desk.time.advance(60'000);
        QVERIFY(desk.nothingIsShown());
        QVERIFY(!desk.shown("pb_continue"));
        QCOMPARE(desk.task.stage(), 0);
    }
    QCOMPARE(bytes(desk, "Results/output.csv"), log);
    QCOMPARE(bytes(desk, allScores), scores);
    QCOMPARE(desk.rows(validRows).size(), 3);
    QVERIFY(desk.shown("pb_results") && desk.shown("pb_mainMenu"));
}

void tst_Test4End::aSecondRunStartsFromZero()
{
    MemoryDesk desk;
    goWithNumber(desk, 31);
    QVERIFY(play(desk, 3));
    QVERIFY(strike(desk));
    QVERIFY(play(desk, 29));
    QVERIFY(desk.shown("pb_results"));
    desk.click("pb_mainMenu");
    QVERIFY(playShort(desk, 6));
    QList<QStringList> rows = desk.rows().mid(33);
    QCOMPARE(rows.size(), 6);
    QCOMPARE(rows[0][RankTask], QStringLiteral("1"));
    QCOMPARE(scoreRow(desk).at(Trials), QStringLiteral("6"));
    QCOMPARE(lastScores(desk), recomputed(rows));
    QCOMPARE(desk.rows(validRows).size(), 32 + 6);
    desk.click("pb_mainMenu");

    desk.startTest(); // nor is anything left of one that was broken off
    QVERIFY(play(desk, 7));
    desk.key(Qt::Key_Escape);
    QVERIFY(playShort(desk, 5));
    rows = desk.rows().mid(33 + 6 + 7 + 1);
    QCOMPARE(rows.size(), 5);
    QCOMPARE(lastScores(desk), recomputed(rows));
    QCOMPARE(desk.rows(validRows).size(), 32 + 6 + 5);
}

void tst_Test4End::aLogThatCannotBeOpenedIsTold_data()
{
    QTest::addColumn<bool>("training");
    QTest::newRow("at the start") << false;
    QTest::newRow("behind the training") << true;
}

void tst_Test4End::aLogThatCannotBeOpenedIsTold()
{
    QFETCH(const bool, training);
    MemoryDesk desk;
    desk.root.block(QStringLiteral("Results/output.csv"));
    desk.go({.training = training});
    if (training) {
        QVERIFY(desk.boxes.take().isEmpty());
        desk.click("pb_go");
        QVERIFY(play(desk, 3));
    }
    const auto messages = desk.boxes.take();
    QCOMPARE(messages.size(), 1);
    QCOMPARE(messages[0].title, QStringLiteral("Error"));
    QVERIFY(messages[0].text.startsWith(QStringLiteral("Failed to open output.csv\n")));
    QVERIFY(!desk.task.isRunning());
    QVERIFY(!sessionStore().escapeSeq);
    QCOMPARE(desk.task.styleSheet(), QStringLiteral("background-color:rgb(0, 0, 0)"));

    desk.root.unblock(QStringLiteral("Results/output.csv"));
    desk.go({}); // the next attempt works
    QVERIFY(desk.task.isRunning());
}

void tst_Test4End::whatCannotBeFiledIsToldAndTheRestIsFiled()
{
    MemoryDesk desk;
    desk.root.block(QString::fromLatin1(validRows));
    desk.root.block(QStringLiteral("bin/_patients_list.txt"));
    desk.root.block(QString::fromLatin1(ownScores));
    const QByteArray list = bytes(desk, MemoryDesk::patients);
    QVERIFY(playShort(desk, 3));

    const QStringList told = tellings(desk.boxes.take());
    QCOMPARE(told.size(), 1);
    QVERIFY(told[0].startsWith(QStringLiteral("Error|")));
    QCOMPARE(told[0].count(QStringLiteral("Failed to open ")), 3);
    for (const char *file :
         {"patients_list.txt", "valid-output.csv", "results_T4_Doe Jane 01.02.1950.csv"})
        QVERIFY2(told[0].contains(QStringLiteral("Failed to open %1\n").arg(QLatin1String(file))),
                 qPrintable(told[0]));
    QVERIFY(desk.task.isRunning());
    QVERIFY(desk.shown("pb_results") && desk.shown("pb_mainMenu"));
    QCOMPARE(desk.rows(allScores).size(), 1);
    QCOMPARE(lastScores(desk), recomputed(desk.rows()));
    QCOMPARE(bytes(desk, MemoryDesk::patients), list);
}

void tst_Test4End::aRowThatCouldNotBeWrittenIsToldAtTheEnd()
{
    if (!QFile::exists(QStringLiteral("/dev/full")))
        QFAIL("this system has no device that is always full");
    MemoryDesk desk;
    const QString log = desk.root.path(QStringLiteral("Results/output.csv"));
    QFile::remove(log);
    QVERIFY(QFile::link(QStringLiteral("/dev/full"), log));
    goWithNumber(desk, 3);
    QVERIFY(play(desk, 2));
    desk.key(Qt::Key_P);                  // nor can the marker be
    QVERIFY(desk.boxes.take().isEmpty()); // not in the middle of the test
    QVERIFY(answerTrial(desk, 40, 44));
    const auto messages = desk.boxes.take();
    QCOMPARE(messages.size(), 1);
    QVERIFY(messages[0].text.startsWith(QStringLiteral("Failed to open output.csv\n")));
    QVERIFY(desk.shown("pb_results"));
    QCOMPARE(desk.rows(validRows).size(), 3); // the valid rows are kept
    QCOMPARE(lastScores(desk), recomputed(desk.rows(validRows)));
    QFile::remove(log);
}

QTEST_MAIN(tst_Test4End)
#include "tst_Test4End.moc"
