#include "MovementDesk.h"

#include <cmath>

using namespace column;

/// The end of a test, and the ways out of it: what is filed, and what is told when it can't be.
class tst_Test3End : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aWholeTestFilesItsScores();
    void aTestWithoutInvalidTrialsHasNoErrors();
    void invalidTrialsAreCountedAndInTheLogOnly();
    void heldTrialsCountAsTheyWereHeld();
    void anotherNumberLeavesTheDivisorsAlone_data();
    void anotherNumberLeavesTheDivisorsAlone();
    void thePlacesAreSummedApart();
    void theTimesUnderFixedDurationAreScored();
    void theLengthOfATestHoldsItsPauses();
    void onlyTheTasksFieldOfThePatientChanges();
    void aSecondTestWritesNoSecondHeader();
    void aDeletedFileGetsItsHeaderAgain();
    void theTrainingIsNotScored();
    void theTwoButtonsEndTheTest();
    void theReportIsAskedForWhenItIsWanted();
    void mainMenuClosesTheTask();
    void escapeAtTheEndKeepsTheSession();
    void theKeysFileNothingTwice();
    void aSecondRunStartsFromZero();
    void aLogThatCannotBeOpenedIsTold_data();
    void aLogThatCannotBeOpenedIsTold();
    void whatCannotBeFiledIsToldAndTheRestIsFiled();
    void aScoreFileThatCannotBeOpenedIsTold();
    void aRowThatCouldNotBeWrittenIsToldAtTheEnd();
    void aMarkerThatCouldNotBeWrittenIsTold();
};

namespace {

constexpr const char *allScores = "Results/results_T3.csv";
constexpr const char *ownScores = "Archives/Doe Jane 01.02.1950/results_T3_Doe Jane 01.02.1950.csv";
constexpr const char *validRows = "Results/valid-output.csv";

constexpr const char *scoreHeader =
    "code;gender;l_name;f_name;dob;task;session;date;time;duration;trials;t3_rt;t3_error;t3_slope;"
    "t3_r2;oblique;cardinal;left;right;top;bottom";

QByteArray bytes(const MovementDesk &desk, const char *file)
{
    return desk.root.bytes(QString::fromLatin1(file));
}

/// The ten scores, worked out again from the rows of the log alone: a line by the normal equations,
/// the times carried forward to rank 40, and sums by the letters of the place.
QString recomputed(const QList<QStringList> &rows)
{
    constexpr std::size_t ranks = 40;
    std::array<long double, 96> times{};
    int errors = 0;
    int trials = 0;
    std::array<int, 6> sums{}; // oblique, cardinal, left, right, top, bottom
    for (const QStringList &row : rows) {
        if (row.size() != Count)
            continue;
        ++trials;
        if (row[Error] == QStringLiteral("1")) {
            ++errors;
            continue;
        }
        const int rt = row[MovementTime].toInt();
        const QString &place = row[MovementPlace];
        times.at(std::size_t(row[RankTask].toInt() - 1)) = rt;
        sums[place.size() == 2 ? 0 : 1] += rt;
        constexpr std::array letters{u'W', u'E', u'N', u'S'};
        for (std::size_t side = 0; side < letters.size(); ++side)
            sums.at(2 + side) += place.contains(letters.at(side)) ? rt : 0;
    }

    long double sx = 0;
    long double sy = 0;
    long double sxx = 0;
    long double sxy = 0;
    long double syy = 0;
    for (std::size_t i = 0; i < ranks; ++i) {
        const long double x = std::log(static_cast<long double>(i + 1));
        sx += x;
        sy += times.at(i);
        sxx += x * x;
        sxy += x * times.at(i);
        syy += times.at(i) * times.at(i);
    }
    const long double covariance = ranks * sxy - sx * sy;
    const long double slope = covariance / (ranks * sxx - sx * sx);
    const long double r2 = slope * covariance / (ranks * syy - sy * sy);
    // The mean of what is carried forward: the logarithms' distance from that of 40.
    const long double mean = (sy + slope * (ranks * std::log(40.0L) - sx)) / ranks;
    return QString::asprintf("%f;%.1f;%f;%f;%f;%f;%f;%f;%f;%f", double(mean),
                             100.0 * errors / trials, double(slope), double(r2), sums[0] / 20.0,
                             sums[1] / 20.0, sums[2] / 15.0, sums[3] / 15.0, sums[4] / 15.0,
                             sums[5] / 15.0);
}

/// Falls with the trials and scatters.
int reactionTime(int trial)
{
    return 1400 - int(130 * std::log(trial + 1)) + trial * 137 % 151;
}

bool play(MovementDesk &desk, int validTrials)
{
    for (int trial = 0; trial < validTrials; ++trial) {
        if (!desk.runTrial(reactionTime(trial)))
            return false;
    }
    return true;
}

/// A whole test of so many valid trials.
bool playShort(MovementDesk &desk, int number, bool fixedDuration = false)
{
    desk.go({.parameters = true, .fixedDuration = fixedDuration});
    desk.type("le_number", QString::number(number));
    desk.click("pb_go");
    return play(desk, number) && desk.shown("pb_results");
}

/// The scores of the last test of a file.
QString lastScores(MovementDesk &desk)
{
    return desk.rows(allScores).constLast().mid(11).join(u';');
}

QStringList tellings(const QList<messages::Message> &messages)
{
    QStringList texts;
    for (const messages::Message &message : messages)
        texts.append(message.title + u'|' + message.text);
    return texts;
}

} // namespace

void tst_Test3End::aWholeTestFilesItsScores()
{
    MovementDesk desk;
    sessionStore().siteCode = QStringLiteral("UKB");
    desk.startTest();
    const QDateTime start = desk.time.currentDateTime();
    for (int trial = 0; trial < 40; ++trial) {
        if (trial % 8 == 3)
            QVERIFY(desk.runTrial(900, false));
        QVERIFY(desk.runTrial(reactionTime(trial)));
    }
    const QDateTime end = desk.time.currentDateTime();
    QVERIFY(desk.shown("pb_results") && desk.shown("pb_mainMenu"));

    QCOMPARE(desk.rows().size(), 45);
    const QTime length = QTime(0, 0).addSecs(int(start.msecsTo(end) / 1000));
    const QString row =
        QStringLiteral("UKB;Mrs.;Doe;Jane;01/02/1950;3;4;%1;%2;45;%3")
            .arg(end.toString(QStringLiteral("dd/MM/yyyy;hh:mm:ss.zzz")),
                 length.toString(QStringLiteral("hh:mm:ss")), recomputed(desk.rows()));
    QCOMPARE(QString::fromLatin1(bytes(desk, allScores)),
             QLatin1String(scoreHeader) + u'\n' + row + u'\n');
    QCOMPARE(bytes(desk, ownScores), bytes(desk, allScores));
    QCOMPARE(row.section(u';', 12, 12), QStringLiteral("11.1")); // 5 of 45
}

void tst_Test3End::aTestWithoutInvalidTrialsHasNoErrors()
{
    MovementDesk desk;
    desk.startTest();
    QVERIFY(play(desk, 40));
    QVERIFY(desk.shown("pb_results"));
    const QStringList scores = desk.rows(allScores).constLast();
    QCOMPARE(scores.size(), 21);
    QCOMPARE(scores[10], QStringLiteral("40"));
    QCOMPARE(scores[12], QStringLiteral("0.0"));
    QCOMPARE(lastScores(desk), recomputed(desk.rows()));
    QCOMPARE(bytes(desk, validRows), bytes(desk, "Results/output.csv")); // all were valid
    // Every place was asked for five times: the halves have the mean of the whole.
    const auto score = [&scores](int at) { return scores.at(at).toDouble(); };
    double sum = 0.0;
    for (const QStringList &trial : desk.rows())
        sum += trial[MovementTime].toDouble();
    QVERIFY(std::abs((score(15) + score(16)) / 2 - sum / 40) < 1e-5);
}

void tst_Test3End::invalidTrialsAreCountedAndInTheLogOnly()
{
    MovementDesk desk;
    desk.go({.parameters = true});
    desk.type("le_number", QStringLiteral("3"));
    desk.click("pb_go");
    QVERIFY(desk.runTrial(700));
    QVERIFY(desk.runTrial(650, false)); // wrong
    QVERIFY(desk.pressSpace(660));      // not known
    desk.answer(MovementDesk::unknown);
    QVERIFY(desk.finishTrial());
    QVERIFY(desk.runTrial(710));
    QVERIFY(desk.runTrial(5001)); // too late
    QVERIFY(desk.runTrial(720));
    QVERIFY(desk.shown("pb_results"));

    const QList<QByteArray> log = bytes(desk, "Results/output.csv").split('\n');
    QCOMPARE(log.size(), 8);
    QCOMPARE(bytes(desk, validRows),
             QByteArrayList({log[0], log[1], log[4], log[6], QByteArray()}).join('\n'));
    const QStringList scores = desk.rows(allScores).constLast();
    QCOMPARE(scores[10], QStringLiteral("6"));
    QCOMPARE(scores[12], QStringLiteral("50.0"));
    QCOMPARE(lastScores(desk), recomputed(desk.rows()));
}

void tst_Test3End::heldTrialsCountAsTheyWereHeld()
{
    MovementDesk desk;
    desk.go({.parameters = true});
    desk.type("le_number", QStringLiteral("2"));
    desk.click("pb_go");
    QVERIFY(desk.reach(4)); // a paused trial is none
    desk.key(Qt::Key_P);
    desk.click("pb_continue");
    QVERIFY(desk.runTrial(700));
    QVERIFY(desk.pressSpace(650)); // a struck one is invalid
    desk.key(Qt::Key_E);
    desk.click("pb_continue");
    QVERIFY(desk.finishTrial());
    QVERIFY(desk.pressSpace(650));
    desk.key(Qt::Key_P);
    desk.click("pb_continue");
    QVERIFY(desk.runTrial(710));
    QVERIFY(desk.shown("pb_results"));

    QCOMPARE(desk.rows().size(), 5);
    QCOMPARE(desk.rows(validRows).size(), 2);
    const QStringList scores = desk.rows(allScores).constLast();
    QCOMPARE(scores[10], QStringLiteral("3"));
    QCOMPARE(scores[12], QStringLiteral("33.3"));
    QCOMPARE(lastScores(desk), recomputed(desk.rows()));
}

void tst_Test3End::anotherNumberLeavesTheDivisorsAlone_data()
{
    QTest::addColumn<int>("number");
    for (const int number : {1, 8, 39, 41, 48, 80})
        QTest::addRow("%d", number) << number;
}

void tst_Test3End::anotherNumberLeavesTheDivisorsAlone()
{
    QFETCH(const int, number);
    MovementDesk desk;
    QVERIFY(playShort(desk, number));
    QCOMPARE(desk.rows().size(), number);
    const QStringList scores = desk.rows(allScores).constLast();
    QCOMPARE(scores[10], QString::number(number));
    QCOMPARE(lastScores(desk), recomputed(desk.rows()));
    if (number == 1) { // the first of a pass: 40 places, all but one of them empty
        const double rt = reactionTime(0);
        QCOMPARE(scores[15].toDouble() + scores[16].toDouble(), rt / 20);
    }
}

void tst_Test3End::thePlacesAreSummedApart()
{
    MovementDesk desk;
    desk.startTest();
    // By place clockwise from the right, in ms; the mean by place is then plain.
    constexpr std::array<int, 8> times{600, 620, 650, 700, 780, 890, 990, 1100};
    for (int trial = 0; trial < 40; ++trial) {
        QVERIFY(desk.reach(3));
        QVERIFY(desk.runTrial(times.at(std::size_t(desk.asked()))));
    }
    const QStringList scores = desk.rows(allScores).constLast();
    QCOMPARE(scores[15], QStringLiteral("827.500000")); // SE, SW, NW, NE
    QCOMPARE(scores[16], QStringLiteral("755.000000")); // E, S, W, N
    QCOMPARE(scores[17], QStringLiteral("790.000000")); // SW, W, NW
    QCOMPARE(scores[18], QStringLiteral("773.333333")); // E, SE, NE
    QCOMPARE(scores[19], QStringLiteral("993.333333")); // NW, N, NE
    QCOMPARE(scores[20], QStringLiteral("656.666667")); // SE, S, SW
    QCOMPARE(lastScores(desk), recomputed(desk.rows()));
}

void tst_Test3End::theTimesUnderFixedDurationAreScored()
{
    MovementDesk desk;
    desk.go({.parameters = true, .fixedDuration = true});
    desk.type("le_number", QStringLiteral("6"));
    const QDateTime start = desk.time.currentDateTime();
    desk.click("pb_go");
    for (int trial = 0; trial < 6; ++trial) {
        if (trial == 2) { // nothing is pressed
            QVERIFY(desk.reach(6));
            QVERIFY(desk.finishTrial());
        }
        QVERIFY(desk.runTrial(reactionTime(trial)));
    }
    QVERIFY(desk.shown("pb_results"));
    QCOMPARE(start.msecsTo(desk.time.currentDateTime()), qint64{7} * 7500);
    const QStringList scores = desk.rows(allScores).constLast();
    QCOMPARE(scores[9], QStringLiteral("00:00:52"));
    QCOMPARE(scores[10], QStringLiteral("7"));
    QCOMPARE(lastScores(desk), recomputed(desk.rows()));
}

void tst_Test3End::theLengthOfATestHoldsItsPauses()
{
    MovementDesk desk;
    desk.go({.parameters = true});
    desk.type("le_number", QStringLiteral("2"));
    desk.time.advance(50'000); // not what comes before the first trial
    desk.click("pb_go");
    const QDateTime start = desk.time.currentDateTime();
    QVERIFY(desk.runTrial(700));
    QVERIFY(desk.reach(4));
    desk.key(Qt::Key_P);
    desk.time.advance(3'661'000);
    desk.click("pb_continue");
    QVERIFY(desk.runTrial(700));
    const auto seconds = int(start.msecsTo(desk.time.currentDateTime()) / 1000);
    desk.time.advance(50'000); // nor what comes behind the last
    const QStringList scores = desk.rows(allScores).constLast();
    QVERIFY(scores[9].startsWith(QStringLiteral("01:01:")));
    QCOMPARE(scores[9], QTime(0, 0).addSecs(seconds).toString(QStringLiteral("hh:mm:ss")));
}

void tst_Test3End::onlyTheTasksFieldOfThePatientChanges()
{
    MovementDesk desk;
    const QByteArray other = "Mr.;Roe;Jim;03.04.1961;9;9;9;9;9;9;9;9;9;9\r\n";
    const QByteArray before = bytes(desk, MovementDesk::patients);
    desk.root.write(QString::fromLatin1(MovementDesk::patients), other + before);
    QVERIFY(playShort(desk, 3));
    QCOMPARE(bytes(desk, MovementDesk::patients),
             other + "Mrs.;Doe;Jane;01.02.1950;1;2;4;4;5;6;7;8;9;10\r\n");
}

void tst_Test3End::aSecondTestWritesNoSecondHeader()
{
    MovementDesk desk;
    for (const int session : {4, 5}) {
        sessionStore().sessionNb[2] = session;
        QVERIFY(playShort(desk, 3));
        desk.click("pb_mainMenu");
    }
    for (const char *file : {allScores, ownScores, validRows}) {
        QVERIFY(bytes(desk, file).startsWith("code;gender;"));
        QCOMPARE(bytes(desk, file).count("code;gender;"), 1);
    }
    const QList<QStringList> scores = desk.rows(ownScores);
    QCOMPARE(scores.size(), 2);
    QCOMPARE(scores[0][6], QStringLiteral("4"));
    QCOMPARE(scores[1][6], QStringLiteral("5"));
    QCOMPARE(bytes(desk, ownScores), bytes(desk, allScores));
    QCOMPARE(desk.rows(validRows).size(), 6);
    QVERIFY(bytes(desk, MovementDesk::patients).contains(";1;2;5;4;"));
}

void tst_Test3End::aDeletedFileGetsItsHeaderAgain()
{
    MovementDesk desk;
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

void tst_Test3End::theTrainingIsNotScored()
{
    MovementDesk desk;
    desk.startTest({.training = true, .parameters = true});
    QVERIFY(desk.runTrial(3333, false));
    for (int trial = 0; trial < 5; ++trial)
        QVERIFY(desk.runTrial(3333));
    QVERIFY(desk.shown("pb_go"));
    QVERIFY(!desk.shown("pb_results"));
    for (const char *file : {allScores, ownScores, validRows})
        QVERIFY(!desk.root.exists(QString::fromLatin1(file)));
    desk.time.advance(90'000);
    desk.click("pb_go");
    const QDateTime start = desk.time.currentDateTime();
    QVERIFY(play(desk, 40));
    QVERIFY(desk.shown("pb_results"));
    const auto seconds = int(start.msecsTo(desk.time.currentDateTime()) / 1000);
    const QStringList scores = desk.rows(allScores).constLast();
    QCOMPARE(scores[9], QTime(0, 0).addSecs(seconds).toString(QStringLiteral("hh:mm:ss")));
    QCOMPARE(scores[10], QStringLiteral("40"));
    QCOMPARE(scores[12], QStringLiteral("0.0"));
    QCOMPARE(desk.rows().size(), 40);
    QCOMPARE(lastScores(desk), recomputed(desk.rows()));
}

void tst_Test3End::theTwoButtonsEndTheTest()
{
    MovementDesk desk;
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

void tst_Test3End::theReportIsAskedForWhenItIsWanted()
{
    MovementDesk desk;
    // The report of a test whose template is missing says so: it has been asked for.
    QVERIFY(playShort(desk, 3));
    QVERIFY(QFile::remove(desk.root.path(QString::fromLatin1(MovementDesk::reportTemplate))));
    desk.click("pb_results");
    const auto messages = desk.boxes.take();
    QCOMPARE(messages.size(), 1);
    QCOMPARE(messages[0].title, QStringLiteral("Unable to open file"));
    QVERIFY(!desk.task.isRunning());
    QVERIFY(!sessionStore().escapeSeq);
}

void tst_Test3End::mainMenuClosesTheTask()
{
    MovementDesk desk;
    QVERIFY(playShort(desk, 3));
    desk.click("pb_mainMenu");
    QVERIFY(!desk.task.isRunning());
    QVERIFY(!desk.task.result().isVisible());
    QVERIFY(!sessionStore().escapeSeq); // the session has been taken
}

void tst_Test3End::escapeAtTheEndKeepsTheSession()
{
    MovementDesk desk;
    QVERIFY(playShort(desk, 3));
    const QByteArray log = bytes(desk, "Results/output.csv");
    const QByteArray scores = bytes(desk, allScores);
    desk.key(Qt::Key_Escape);
    QVERIFY(!desk.task.isRunning());
    QVERIFY(!desk.task.result().isVisible());
    QVERIFY(sessionStore().escapeSeq);
    QCOMPARE(bytes(desk, "Results/output.csv"), log); // the log is closed: no marker
    QCOMPARE(bytes(desk, allScores), scores);
    QVERIFY(bytes(desk, MovementDesk::patients).contains(";1;2;4;4;"));
}

void tst_Test3End::theKeysFileNothingTwice()
{
    MovementDesk desk;
    QVERIFY(playShort(desk, 3));
    const QByteArray log = bytes(desk, "Results/output.csv");
    const QByteArray scores = bytes(desk, allScores);
    for (const Qt::Key key : {Qt::Key_E, Qt::Key_P, Qt::Key_Space, Qt::Key_Right, Qt::Key_Down,
                              Qt::Key_Left, Qt::Key_Up, Qt::Key_C}) {
        desk.key(key);
        desk.time.advance(60'000);
        QVERIFY(desk.nothingIsShown());
        QVERIFY(!desk.shown("pb_continue"));
        QCOMPARE(desk.task.stage(), 0);
    }
    QTest::mouseClick(&desk.task, Qt::LeftButton, {}, {10, 700});
    desk.time.advance(60'000);
    QCOMPARE(bytes(desk, "Results/output.csv"), log);
    QCOMPARE(bytes(desk, allScores), scores);
    QCOMPARE(desk.rows(validRows).size(), 3);
    QVERIFY(desk.shown("pb_results") && desk.shown("pb_mainMenu"));
}

void tst_Test3End::aSecondRunStartsFromZero()
{
    MovementDesk desk;
    desk.go({.parameters = true});
    desk.type("le_number", QStringLiteral("41"));
    desk.click("pb_go");
    QVERIFY(desk.runTrial(800, false));
    QVERIFY(play(desk, 41));
    desk.click("pb_mainMenu");
    QVERIFY(playShort(desk, 6));
    QList<QStringList> rows = desk.rows().mid(42);
    QCOMPARE(rows.size(), 6);
    QCOMPARE(rows[0][RankTask], QStringLiteral("1"));
    QCOMPARE(desk.rows(allScores).constLast()[10], QStringLiteral("6"));
    QCOMPARE(lastScores(desk), recomputed(rows));
    QCOMPARE(desk.rows(validRows).size(), 47);
    desk.click("pb_mainMenu");

    desk.startTest(); // nor is anything left of one that was broken off
    QVERIFY(play(desk, 7));
    desk.key(Qt::Key_Escape);
    QVERIFY(playShort(desk, 5));
    rows = desk.rows().mid(42 + 6 + 7 + 1);
    QCOMPARE(rows.size(), 5);
    QCOMPARE(lastScores(desk), recomputed(rows));
    QCOMPARE(desk.rows(validRows).size(), 47 + 5);
}

void tst_Test3End::aLogThatCannotBeOpenedIsTold_data()
{
    QTest::addColumn<bool>("training");
    QTest::newRow("at the start") << false;
    QTest::newRow("behind the training") << true;
}

void tst_Test3End::aLogThatCannotBeOpenedIsTold()
{
    QFETCH(const bool, training);
    MovementDesk desk;
    desk.root.block(QStringLiteral("Results/output.csv"));
    desk.go({.training = training});
    if (training) {
        QVERIFY(desk.boxes.take().isEmpty());
        desk.click("pb_go");
        QVERIFY(play(desk, 5));
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

void tst_Test3End::whatCannotBeFiledIsToldAndTheRestIsFiled()
{
    MovementDesk desk;
    desk.root.block(QString::fromLatin1(validRows));
    desk.root.block(QStringLiteral("bin/_patients_list.txt"));
    desk.root.block(QString::fromLatin1(ownScores));
    const QByteArray list = bytes(desk, MovementDesk::patients);
    QVERIFY(playShort(desk, 3));

    const QStringList told = tellings(desk.boxes.take());
    QCOMPARE(told.size(), 1);
    QVERIFY(told[0].startsWith(QStringLiteral("Error|")));
    QCOMPARE(told[0].count(QStringLiteral("Failed to open ")), 3);
    for (const char *file :
         {"patients_list.txt", "valid-output.csv", "results_T3_Doe Jane 01.02.1950.csv"})
        QVERIFY2(told[0].contains(QStringLiteral("Failed to open %1\n").arg(QLatin1String(file))),
                 qPrintable(told[0]));
    QVERIFY(desk.task.isRunning());
    QVERIFY(desk.shown("pb_results") && desk.shown("pb_mainMenu"));
    QCOMPARE(desk.rows(allScores).size(), 1);
    QCOMPARE(lastScores(desk), recomputed(desk.rows()));
    QCOMPARE(bytes(desk, MovementDesk::patients), list);
}

void tst_Test3End::aScoreFileThatCannotBeOpenedIsTold()
{
    MovementDesk desk;
    desk.root.block(QString::fromLatin1(allScores));
    QVERIFY(playShort(desk, 3));
    const QStringList told = tellings(desk.boxes.take());
    QCOMPARE(told.size(), 1);
    QVERIFY(told[0].startsWith(QStringLiteral("Error|Failed to open results_T3.csv\n")));
    QCOMPARE(told[0].count(QStringLiteral("Failed to open ")), 1);
    QCOMPARE(desk.rows(ownScores).size(), 1);
    QCOMPARE(desk.rows(validRows).size(), 3);
    QVERIFY(bytes(desk, MovementDesk::patients).contains(";1;2;4;4;"));
}

void tst_Test3End::aRowThatCouldNotBeWrittenIsToldAtTheEnd()
{
    if (!QFile::exists(QStringLiteral("/dev/full")))
        QFAIL("this system has no device that is always full");
    MovementDesk desk;
    const QString log = desk.root.path(QStringLiteral("Results/output.csv"));
    QFile::remove(log);
    QVERIFY(QFile::link(QStringLiteral("/dev/full"), log));
    desk.go({.parameters = true});
    desk.type("le_number", QStringLiteral("3"));
    desk.click("pb_go");
    QVERIFY(play(desk, 2));
    QVERIFY(desk.boxes.take().isEmpty()); // not in the middle of the test
    QVERIFY(desk.runTrial(700));
    const auto messages = desk.boxes.take();
    QCOMPARE(messages.size(), 1);
    QVERIFY(messages[0].text.startsWith(QStringLiteral("Failed to open output.csv\n")));
    QVERIFY(desk.shown("pb_results"));
    QCOMPARE(desk.rows(validRows).size(), 3); // the valid rows are kept
    QCOMPARE(lastScores(desk), recomputed(desk.rows(validRows)));
    QFile::remove(log);
}

void tst_Test3End::aMarkerThatCouldNotBeWrittenIsTold()
{
    if (!QFile::exists(QStringLiteral("/dev/full")))
        QFAIL("this system has no device that is always full");
    MovementDesk desk;
    const QString log = desk.root.path(QStringLiteral("Results/output.csv"));
    QFile::remove(log);
    QVERIFY(QFile::link(QStringLiteral("/dev/full"), log));
    desk.startTest();
    QVERIFY(desk.reach(4));
    desk.key(Qt::Key_P);
    QVERIFY(desk.boxes.take().isEmpty());
    desk.key(Qt::Key_Escape);
    const auto messages = desk.boxes.take();
    QCOMPARE(messages.size(), 1);
    QVERIFY(messages[0].text.startsWith(QStringLiteral("Failed to open output.csv\n")));
    QVERIFY(!desk.task.isRunning());
    QFile::remove(log);
}

QTEST_MAIN(tst_Test3End)
#include "tst_Test3End.moc"
