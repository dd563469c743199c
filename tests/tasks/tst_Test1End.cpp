#include "VisionDesk.h"

#include "FullDisk.h"
#include "rows.h"
#include "tables.h"

#include <QRandomGenerator>

#include <cmath>
#include <string_view>

using namespace column;

/// The end of a test, and the ways out of it: what is filed, and what is told when it can't be.
class tst_Test1End : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theRowOfScoresHasTheShapeOfItsMode_data();
    void theRowOfScoresHasTheShapeOfItsMode();
    void theScoresFollowFromTheRows_data();
    void theScoresFollowFromTheRows();
    void theThresholdIsCutFromTheMean();
    void aRowOfScoresBearsThePressOfGoAndTheLengthOfTheTest();
    void theHeadersStandAsTheyShould();
    void aTestWithoutStrikesHasAllItsRowsAmongTheValidOnes();
    void struckTrialsAndMarkersAreInTheLogOnly();
    void aTrialThatTimedOutIsAmongTheValidRows();
    void thePatientsLineTakesSessionAndThresholds_data();
    void thePatientsLineTakesSessionAndThresholds();
    void otherPatientsKeepTheirLines();
    void twoTestsShareOneHeader();
    void aDeletedFileGetsItsHeaderAgain();
    void aSecondRunStartsFromZero();
    void aTrainingLeavesNothingInTheScores();
    void aNumberThatWasLoweredEndsTheTestWithoutAResult();
    void theTwoButtonsStandAloneOnTheScreen();
    void resultsShowsTheReport();
    void mainMenuMakesTheReportUnseen();
    void aMissingTemplateIsTold_data();
    void aMissingTemplateIsTold();
    void theKeysFileNothingTwice();
    void escapeAtTheButtonsKeepsTheSession();
    void whatCannotBeFiledIsToldAndTheRestIsFiled();
    void aListThatCannotBeRewrittenIsToldAtTheEnd();
    void aListThatCannotBeRewrittenIsToldAtEscape_data();
    void aListThatCannotBeRewrittenIsToldAtEscape();
    void aFullDiskLeavesNoHalfRow();
    void aRowThatCouldNotBeWrittenIsToldAtTheEnd();
    void aRowThatCouldNotBeWrittenIsToldAtEscape();
    void aMarkerThatCouldNotBeWrittenIsToldAtTheBreak();
    void aLogThatCannotBeOpenedIsTold();
};

namespace {

constexpr const char *trialLog = "Results/output.csv";
constexpr const char *validLog = "Results/valid-output.csv";
constexpr const char *scoreFile = "Results/results_T1.csv";
constexpr const char *archive = "Archives/Doe Jane 01.02.1950";
constexpr const char *archivedScores =
    "Archives/Doe Jane 01.02.1950/results_T1_Doe Jane 01.02.1950.csv";
constexpr qsizetype firstGroup = 11;
constexpr qsizetype groupSize = 7;

QByteArray bytes(const VisionDesk &desk, const char *file)
{
    return desk.root.bytes(QString::fromLatin1(file));
}

bool exists(const VisionDesk &desk, const char *file)
{
    return desk.root.exists(QString::fromLatin1(file));
}

QStringList lastScores(VisionDesk &desk)
{
    return desk.rows(scoreFile).constLast();
}

QString group(VisionDesk &desk, int subtask)
{
    return lastScores(desk).mid(firstGroup + groupSize * subtask, groupSize).join(u';');
}

/// Right and wrong in turn: over after twenty trials of the subtask, with peaks at the step where
/// it began and troughs one below.
bool toAndFro(VisionDesk &desk, int trials = 20)
{
    for (int trial = 0; trial < trials; ++trial) {
        if (!desk.runTrial(trial % 2 == 0))
            return false;
    }
    return true;
}

/// An interleaved test, every subtask to and fro; 60 trials.
bool interleaved(VisionDesk &desk)
{
    std::array<int, 3> done{};
    for (int trial = 0; trial < 60; ++trial) {
        const auto subtask = std::size_t(desk.text("le_subtask").toInt() - 1);
        if (!desk.runTrial(done.at(subtask)++ % 2 == 0))
            return false;
    }
    return true;
}

/// A whole test of one subtask.
void playTest(VisionDesk &desk, int mode = 1)
{
    desk.startTest({.mode = mode});
    QVERIFY(toAndFro(desk));
    QVERIFY(desk.shown("pb_results") && desk.shown("pb_mainMenu"));
}

/// The measure of one subtask, worked out again from its rows alone.
class Measure
{
public:
    explicit Measure(int threshold)
        : m_exposure(threshold)
    {
        while (m_index < 20 && exposures[std::size_t(m_index)] < threshold)
            ++m_index;
        m_tab[0] = m_index;
    }

    void take(const QStringList &row)
    {
        if (row[Answer].isEmpty()) { // struck
            ++m_errors;
            return;
        }
        if (row[Error] == QStringLiteral("1"))
            ++m_errors;
        else
            step(row[Answer] == QStringLiteral("0"));
        ++m_n;
        turningPoints();
        settle();
    }

    /// Of the next trial, ms: at first the stored threshold, then the step reached.
    int exposure() const { return m_exposure; }
    bool hasResult() const { return m_mean > 0.0; }
    QString scores() const
    {
        return QStringLiteral("%1;%2;%3;%4;%5;%6;%7")
            .arg(QString::number(int(m_mean)), QString::number(m_errors),
                 QString::number(m_max.size() + m_min.size()), QString::number(m_sup, 'f', 6),
                 QString::number(m_limitSup), QString::number(m_inf, 'f', 6),
                 QString::number(m_limitInf));
    }
    int threshold() const { return int(m_mean); }

private:
    static constexpr std::array<int, 22> exposures{17,   17,   33,   33,   50,   67,  83,  117,
                                                   150,  217,  283,  367,  483,  650, 850, 1133,
                                                   1500, 1983, 2633, 3500, 4633, 4633};

    void step(bool success)
    {
        m_index += success ? -1 : 1;
        at(m_n + 1) = m_index;
        if (m_index == 0 || m_index == 21) {
            m_index = m_index == 0 ? 1 : 20;
            ++m_n;
            at(m_n + 1) = m_index;
        }
        m_exposure = exposures.at(std::size_t(m_index));
    }

    void turningPoints()
    {
        const int n = m_n;
        if (n > 1 && at(n - 2) < at(n - 1) && at(n) < at(n - 1))
            m_max.append(at(n - 1));
        if (n > 1 && at(n - 2) > at(n - 1) && at(n) > at(n - 1))
            m_min.append(at(n - 1));
        if (n > 2 && at(n - 3) == 21 && at(n - 2) < 21 && at(n - 1) > at(n - 2))
            m_min.append(at(n - 2));
        if (n > 2 && at(n - 3) == 0 && at(n - 2) > 0 && at(n - 1) < at(n - 2))
            m_max.append(at(n - 2));
    }

    /// The latest four within three neighbouring steps; empty if there are none.
    static QList<int> settled(const QList<int> &points)
    {
        for (qsizetype p = points.size() - 1; p >= 3; --p) {
            QList<int> best;
            qsizetype bestAt = -1;
            for (const int band : {0, 1, 2}) {
                QList<int> found{points[p]};
                qsizetype k = p - 1;
                for (; k >= 0; --k) {
                    if (points[k] > points[p] - 1 - band && points[k] < points[p] + 3 - band)
                        found.append(points[k]);
                    if (found.size() == 4)
                        break;
                }
                if (found.size() == 4 && k > bestAt) {
                    best = found;
                    bestAt = k;
                }
            }
            if (!best.isEmpty())
                return best;
        }
        return {};
    }

    void settle()
    {
        const QList<int> peaks = settled(m_max);
        const QList<int> troughs = settled(m_min);
        if (peaks.isEmpty() || troughs.isEmpty() || m_n < 20)
            return;
        double peakSum = 0.0;
        double troughSum = 0.0;
        for (const int peak : peaks)
            peakSum += std::log(exposures.at(std::size_t(peak)));
        for (const int trough : troughs)
            troughSum += std::log(exposures.at(std::size_t(trough)));
        m_sup = std::exp(0.25 * peakSum);
        m_inf = std::exp(0.25 * troughSum);
        m_mean = std::exp(0.125 * (peakSum + troughSum));
        m_limitSup = int(peaks.count(21));
        m_limitInf = int(troughs.count(0));
    }

    int &at(int place) { return m_tab.at(std::size_t(place)); }

    int m_exposure = 0;
    std::array<int, 200> m_tab{};
    int m_index = 1;
    int m_n = 0;
    QList<int> m_max;
    QList<int> m_min;
    int m_errors = 0;
    double m_mean = 0.0;
    double m_sup = 0.0;
    double m_inf = 0.0;
    int m_limitSup = 0;
    int m_limitInf = 0;
};

/// What each file that is told in a box failed with, by the names in the order of the box.
QStringList toldFiles(const QString &text)
{
    QStringList names;
    for (const QString &part : text.split(QStringLiteral("\n\n"))) {
        const QStringList lines = part.split(u'\n');
        const auto opening = QStringLiteral("Failed to open ");
        if (lines.size() != 2 || !lines[0].startsWith(opening) || lines[1].isEmpty())
            return {QStringLiteral("not the box: ") + text};
        names.append(lines[0].sliced(opening.size()));
    }
    return names;
}

} // namespace

void tst_Test1End::theRowOfScoresHasTheShapeOfItsMode_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<QString>("head"); // task and session
    QTest::addColumn<QString>("tail"); // trials and the three groups
    const auto empty = QStringLiteral(";;;;;;");
    // The roots of 283 * 217, 367 * 283 and 483 * 367.
    const auto central = QStringLiteral("247;0;19;283.000000;0;217.000000;0");
    const auto peripheral = QStringLiteral("322;0;19;367.000000;0;283.000000;0");
    const auto dual = QStringLiteral("421;0;19;483.000000;0;367.000000;0");
    const auto row = [](const QString &trials, const QString &a, const QString &b,
                        const QString &c) {
        return QStringList({trials, a, b, c}).join(u';');
    };
    const auto sixty = QStringLiteral("60");
    const auto twenty = QStringLiteral("20");
    QTest::newRow("interleaved") << 0 << "1;2" << row(sixty, central, peripheral, dual);
    QTest::newRow("central") << 1 << "5;6" << row(twenty, central, empty, empty);
    QTest::newRow("peripheral") << 2 << "6;7" << row(twenty, empty, peripheral, empty);
    QTest::newRow("dual") << 3 << "7;8" << row(twenty, empty, empty, dual);
}

void tst_Test1End::theRowOfScoresHasTheShapeOfItsMode()
{
    QFETCH(const int, mode);
    QFETCH(const QString, head);
    QFETCH(const QString, tail);
    VisionDesk desk;
    sessionStore().siteCode = QStringLiteral("UKB");
    desk.startTest({.mode = mode});
    const QDateTime start = desk.time.currentDateTime();
    QVERIFY(mode == 0 ? interleaved(desk) : toAndFro(desk));
    QVERIFY(desk.shown("pb_results"));
    const auto length = int(start.msecsTo(desk.time.currentDateTime()) / 1000);

    const QString row =
        QStringLiteral("UKB;Mrs.;Doe;Jane;01/02/1950;%1;06/01/2025;09:00:00.000;%2;%3\n")
            .arg(head, QTime(0, 0).addSecs(length).toString(QStringLiteral("hh:mm:ss")), tail);
    QCOMPARE(row.count(u';'), 31);
    QCOMPARE(bytes(desk, scoreFile), rows::_headerResult_T1 + row.toLatin1());
    QCOMPARE(bytes(desk, archivedScores), bytes(desk, scoreFile));
}

void tst_Test1End::theScoresFollowFromTheRows_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<quint32>("seed");
    QTest::addColumn<bool>("fixedDuration");
    for (const quint32 seed : {1U, 2U, 3U}) {
        for (int mode = 0; mode <= 3; ++mode) {
            QTest::addRow("mode %d, observer %u", mode, seed) << mode << seed << false;
            QTest::addRow("mode %d, slow observer %u", mode, seed) << mode << seed << true;
        }
    }
}

void tst_Test1End::theScoresFollowFromTheRows()
{
    QFETCH(const int, mode);
    QFETCH(const quint32, seed);
    QFETCH(const bool, fixedDuration);
    constexpr std::array thresholds{283, 367, 483};
    VisionDesk desk;
    desk.startTest({.mode = mode, .parameters = true, .fixedDuration = fixedDuration});
    QRandomGenerator dice(seed);
    while (desk.task.stage() == 1) {
        // The longer the exposure, the surer the answer; one in twenty comes too late or is struck.
        const auto subtask = Test1::Subtask(desk.text("le_subtask").toInt() - 1);
        const double sure = desk.task.exposure(subtask) / 300.0;
        const bool right = dice.generateDouble() < sure * sure / (1 + sure * sure);
        const bool lost = dice.bounded(20) == 0;
        QVERIFY(desk.reach(5));
        if (lost && fixedDuration) {
            desk.time.advance(5000);
            while (desk.task.stage() == 6)
                desk.time.advance(1);
        } else if (lost) {
            desk.key(Qt::Key_E);
            desk.click("pb_continue");
        } else {
            QVERIFY(desk.runTrial(right));
        }
    }
    QVERIFY(desk.shown("pb_results"));

    std::array measures{Measure(thresholds[0]), Measure(thresholds[1]), Measure(thresholds[2])};
    int trials = 0;
    for (const QStringList &row : desk.rows()) {
        Measure &measure = measures.at(std::size_t(row[Subtask].toInt() - 1));
        QCOMPARE(row[Exposure], QString::number(measure.exposure()));
        measure.take(row);
        trials += row[Answer].isEmpty() ? 0 : 1;
    }
    QCOMPARE(lastScores(desk).at(10), QString::number(trials));
    QStringList kept;
    for (int subtask = 0; subtask < 3; ++subtask) {
        const Measure &measure = measures.at(std::size_t(subtask));
        const bool measured = mode == 0 || mode == subtask + 1;
        QCOMPARE(measure.hasResult(), measured);
        QCOMPARE(group(desk, subtask), measured ? measure.scores() : QStringLiteral(";;;;;;"));
        kept.append(
            QString::number(measured ? measure.threshold() : thresholds.at(std::size_t(subtask))));
    }
    QCOMPARE(desk.thresholds(), kept.join(u';'));
}

void tst_Test1End::theThresholdIsCutFromTheMean()
{
    VisionDesk desk;
    desk.writePatient("150;0;0");
    playTest(desk);
    // The root of 150 * 117 is 132.476.
    QCOMPARE(group(desk, 0), QStringLiteral("132;0;19;150.000000;0;117.000000;0"));
    QCOMPARE(desk.thresholds(), QStringLiteral("132;0;0"));
    QCOMPARE(desk.task.exposure(Test1::Central), 132);
}

void tst_Test1End::aRowOfScoresBearsThePressOfGoAndTheLengthOfTheTest()
{
    VisionDesk desk;
    desk.time.advance(86'399'000); // one second before nine o'clock of the next day
    desk.go({.mode = 1});
    desk.time.advance(1234);
    desk.click("pb_go");
    const QDateTime pressed = desk.time.currentDateTime();
    QVERIFY(toAndFro(desk, 5));
    QVERIFY(desk.reach(5));
    desk.time.advance(3'725'000); // the patient takes an hour, two minutes and five seconds
    QVERIFY(desk.runTrial(false));
    for (int trial = 6; trial < 20; ++trial)
        QVERIFY(desk.runTrial(trial % 2 == 0));
    const auto over = int(pressed.msecsTo(desk.time.currentDateTime()) / 1000);
    desk.time.advance(500'000);
    const QStringList row = lastScores(desk);
    QCOMPARE(row[7], QStringLiteral("07/01/2025"));
    QCOMPARE(row[8], QStringLiteral("09:00:00.234"));
    QCOMPARE(row[9], QTime(0, 0).addSecs(over).toString(QStringLiteral("hh:mm:ss")));
    QVERIFY(row[9].startsWith(QStringLiteral("01:")));
}

void tst_Test1End::theHeadersStandAsTheyShould()
{
    VisionDesk desk;
    playTest(desk);
    const QByteArray trialHeader =
        "code;gender;l_name;f_name;dob;task;session;date;time;subtask;rank_task;rank_sub;t1_time;"
        "t1c_figure;t1c_answer;t1p_position;t1p_answer;t1_tanswer;t1_answer;t1_implement;t2_rt;"
        "t2_position;t3_rt;t3_position;t3_dir_mov;t4_dist_first;t4_dist_last;t4_pos_first;"
        "t4_pos_last;error\n";
    const QByteArray scoreHeader =
        "code;gender;l_name;f_name;dob;task;session;date;time;duration;trials;"
        "t1_central;t1a_errors;t1a_reversals;t1a_sup;t1a_limits_s;t1a_inf;t1a_limit_i;"
        "t1_peripheral;t1b_errors;t1b_reversals;t1b_sup;t1b_limits_s;t1b_inf;t1b_limit_i;"
        "t1_dual;t1c_errors;t1c_reversals;t1c_sup;t1c_limits_s;t1c_inf;t1c_limit_i\n";
    QVERIFY(bytes(desk, trialLog).startsWith(trialHeader));
    QVERIFY(bytes(desk, validLog).startsWith(trialHeader));
    QVERIFY(bytes(desk, scoreFile).startsWith(scoreHeader));
    QVERIFY(bytes(desk, archivedScores).startsWith(scoreHeader));
    for (const char *file : {trialLog, validLog, scoreFile, archivedScores}) {
        QVERIFY(bytes(desk, file).endsWith('\n'));
        QVERIFY(!bytes(desk, file).contains('\r'));
    }
}

void tst_Test1End::aTestWithoutStrikesHasAllItsRowsAmongTheValidOnes()
{
    VisionDesk desk;
    desk.startTest({.mode = 0});
    QVERIFY(interleaved(desk));
    QCOMPARE(desk.rows().size(), 60);
    QCOMPARE(bytes(desk, validLog), bytes(desk, trialLog));
    for (int subtask = 0; subtask < 3; ++subtask)
        QCOMPARE(group(desk, subtask).section(u';', 1, 1), QStringLiteral("0"));
}

void tst_Test1End::struckTrialsAndMarkersAreInTheLogOnly()
{
    VisionDesk desk;
    desk.startTest({.mode = 1});
    for (int trial = 0; trial < 20; ++trial) {
        for (const auto &[turn, key] : {std::pair(3, Qt::Key_E), std::pair(5, Qt::Key_P)}) {
            if (trial % turn == 0) {
                QVERIFY(desk.reach(5));
                desk.key(key);
                desk.click("pb_continue");
            }
        }
        QVERIFY(desk.runTrial(trial % 2 == 0));
    }
    QByteArray valid = tables::_headerArchive;
    int others = 0;
    const QList<QByteArray> lines = bytes(desk, trialLog).split('\n');
    for (const QByteArray &line : lines.sliced(1, lines.size() - 2)) {
        if (line.endsWith(";0"))
            valid += line + '\n';
        else
            ++others;
    }
    QCOMPARE(others, 7 + 4); // struck ones, and pauses
    QCOMPARE(bytes(desk, validLog), valid);
    QCOMPARE(desk.rows(validLog).size(), 20);
    QCOMPARE(group(desk, 0), QStringLiteral("247;7;19;283.000000;0;217.000000;0"));
    QCOMPARE(lastScores(desk).at(10), QStringLiteral("20"));
}

void tst_Test1End::aTrialThatTimedOutIsAmongTheValidRows()
{
    VisionDesk desk;
    desk.startTest({.mode = 1, .parameters = true, .fixedDuration = true});
    QVERIFY(toAndFro(desk, 2));
    QVERIFY(desk.reach(5));
    desk.time.advance(5000);
    QVERIFY(desk.reach(1));
    desk.type("le_number", QStringLiteral("4"));
    QVERIFY(desk.runTrial(true));
    QVERIFY(desk.shown("pb_results"));
    QCOMPARE(bytes(desk, validLog), bytes(desk, trialLog));
    QCOMPARE(desk.rows(validLog).size(), 4);
    QCOMPARE(desk.rows(validLog).at(2)[Error], QStringLiteral("1"));
    QCOMPARE(group(desk, 0).section(u';', 1, 1), QStringLiteral("1"));
}

void tst_Test1End::thePatientsLineTakesSessionAndThresholds_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<QByteArray>("line");
    const QByteArray name = "Mrs.;Doe;Jane;01.02.1950;";
    QTest::newRow("interleaved") << 0 << name + "2;2;3;4;5;6;7;247;322;421\r\n";
    QTest::newRow("central") << 1 << name + "1;2;3;4;6;6;7;247;367;483\r\n";
    QTest::newRow("peripheral") << 2 << name + "1;2;3;4;5;7;7;283;322;483\r\n";
    QTest::newRow("dual") << 3 << name + "1;2;3;4;5;6;8;283;367;421\r\n";
}

void tst_Test1End::thePatientsLineTakesSessionAndThresholds()
{
    QFETCH(const int, mode);
    QFETCH(const QByteArray, line);
    VisionDesk desk;
    desk.startTest({.mode = mode});
    QVERIFY(mode == 0 ? interleaved(desk) : toAndFro(desk));
    QCOMPARE(bytes(desk, VisionDesk::patients), line);
    QVERIFY(!sessionStore().escapeSeq);
}

void tst_Test1End::otherPatientsKeepTheirLines()
{
    VisionDesk desk;
    const QByteArray before = "Mr.;Doe;John;01.02.1950;9;8;7;6;5;4;3;11;22;33\r\n";
    const QByteArray behind = "Mrs.;Doe;Jane;02.02.1950;0;0;0;0;0;0;0;0;0;0\r\n";
    desk.root.write(QString::fromLatin1(VisionDesk::patients),
                    before + bytes(desk, VisionDesk::patients) + behind);
    playTest(desk);
    QCOMPARE(bytes(desk, VisionDesk::patients),
             before + "Mrs.;Doe;Jane;01.02.1950;1;2;3;4;6;6;7;247;367;483\r\n" + behind);
}

void tst_Test1End::twoTestsShareOneHeader()
{
    VisionDesk desk;
    for (const int mode : {1, 3}) {
        playTest(desk, mode);
        desk.click("pb_mainMenu");
    }
    for (const char *file : {scoreFile, archivedScores, validLog, trialLog}) {
        QVERIFY(bytes(desk, file).startsWith("code;gender;"));
        QCOMPARE(bytes(desk, file).count("code;gender;"), 1);
    }
    const QList<QStringList> scores = desk.rows(archivedScores);
    QCOMPARE(scores.size(), 2);
    QCOMPARE(scores[0].mid(5, 2).join(u';'), QStringLiteral("5;6"));
    QCOMPARE(scores[1].mid(5, 2).join(u';'), QStringLiteral("7;8"));
    QCOMPARE(bytes(desk, archivedScores), bytes(desk, scoreFile));
    QCOMPARE(desk.rows(validLog).size(), 40);
}

void tst_Test1End::aDeletedFileGetsItsHeaderAgain()
{
    VisionDesk desk;
    playTest(desk);
    desk.click("pb_mainMenu");
    for (const char *file : {validLog, archivedScores})
        QVERIFY(QFile::remove(desk.root.path(QString::fromLatin1(file))));
    playTest(desk, 2);
    QCOMPARE(bytes(desk, validLog).count("code;"), 1);
    QCOMPARE(desk.rows(validLog).size(), 20);
    QCOMPARE(bytes(desk, archivedScores).count("code;"), 1);
    QCOMPARE(desk.rows(archivedScores).size(), 1);
    QCOMPARE(desk.rows(scoreFile).size(), 2);
}

void tst_Test1End::aSecondRunStartsFromZero()
{
    VisionDesk desk;
    desk.startTest({.mode = 1});
    for (int trial = 0; trial < 20; ++trial) {
        QVERIFY(desk.reach(5));
        desk.key(Qt::Key_E);
        desk.click("pb_continue");
        QVERIFY(desk.runTrial(trial % 2 == 0));
    }
    QCOMPARE(group(desk, 0), QStringLiteral("247;20;19;283.000000;0;217.000000;0"));
    desk.click("pb_mainMenu");
    QCOMPARE(desk.thresholds(), QStringLiteral("247;367;483"));

    desk.startTest({.mode = 1});
    QVERIFY(desk.runTrial(true));
    const QStringList row = desk.rows().constLast();
    QCOMPARE(row[RankTask], QStringLiteral("1"));
    QCOMPARE(row[RankSub], QStringLiteral("1"));
    QCOMPARE(row[Exposure], QStringLiteral("247")); // the result of the first
    for (int trial = 1; trial < 20; ++trial)
        QVERIFY(desk.runTrial(trial % 2 == 0));
    QVERIFY(desk.shown("pb_results"));
    QCOMPARE(group(desk, 0), QStringLiteral("247;0;19;283.000000;0;217.000000;0"));
    QCOMPARE(lastScores(desk).at(10), QStringLiteral("20"));
    QCOMPARE(desk.rows(validLog).size(), 40);
}

void tst_Test1End::aTrainingLeavesNothingInTheScores()
{
    VisionDesk desk;
    desk.writePatient("0;367;0");
    desk.go({.mode = 1, .training = true});
    desk.click("pb_go");
    for (const char answer : std::string_view("RRRRRWRWRW")) { // from 4633 down to 283
        QVERIFY(desk.reach(5));
        desk.key(Qt::Key_E);
        desk.click("pb_continue");
        QVERIFY(desk.runTrial(answer == 'R'));
    }
    QVERIFY(desk.shown("pb_go"));
    QVERIFY(desk.rows().isEmpty());
    desk.time.advance(60'000);
    const QDateTime start = desk.time.currentDateTime();
    desk.click("pb_go");
    QVERIFY(toAndFro(desk));
    QVERIFY(desk.shown("pb_results"));
    const QStringList scores = lastScores(desk);
    QCOMPARE(scores[7] + u' ' + scores[8],
             start.toString(QStringLiteral("dd/MM/yyyy hh:mm:ss.zzz")));
    QVERIFY(scores[9] < QStringLiteral("00:01:30"));
    QCOMPARE(scores[10], QStringLiteral("20"));
    QCOMPARE(group(desk, 0), QStringLiteral("247;0;19;283.000000;0;217.000000;0"));
    QCOMPARE(desk.rows(validLog).size(), 20);
    // Wherever a threshold was stored, the training was to start at 1133 ms.
    QCOMPARE(desk.thresholds(), QStringLiteral("247;1133;0"));
}

void tst_Test1End::aNumberThatWasLoweredEndsTheTestWithoutAResult()
{
    VisionDesk desk;
    desk.startTest({.mode = 0, .parameters = true});
    for (const bool right : {true, true, true, false, false, false})
        QVERIFY(desk.runTrial(right));
    desk.type("le_number", QStringLiteral("4"));
    QVERIFY(desk.reach(5));
    QVERIFY(!desk.shown("pb_results"));
    const int subtask = desk.text("le_subtask").toInt() - 1;
    QVERIFY(desk.runTrial(true));
    QVERIFY(desk.shown("pb_results"));

    std::array exposures{283, 367, 483}; // down and up again
    constexpr std::array below{217, 283, 367};
    exposures.at(std::size_t(subtask)) = below.at(std::size_t(subtask));
    QCOMPARE(lastScores(desk).at(10), QStringLiteral("0"));
    QStringList kept;
    for (int s = 0; s < 3; ++s) {
        kept.append(QString::number(exposures.at(std::size_t(s))));
        // A trough, and where the seventh trial ran also a peak.
        QCOMPARE(group(desk, s), QStringLiteral("%1;0;%2;0.000000;0;0.000000;0")
                                     .arg(kept.constLast(), QString::number(s == subtask ? 2 : 1)));
    }
    QCOMPARE(desk.thresholds(), kept.join(u';'));
    QCOMPARE(desk.rows(validLog).size(), 7);
}

void tst_Test1End::theTwoButtonsStandAloneOnTheScreen()
{
    VisionDesk desk;
    desk.startTest({.mode = 3});
    QVERIFY(toAndFro(desk));
    QVERIFY(desk.task.isRunning());
    QVERIFY(desk.nothingIsShown());
    QCOMPARE(desk.task.cursor().shape(), Qt::ArrowCursor);
    for (const char *name : {"pb_go", "pb_next", "pb_continue", "lbl_mode", "lbl_instruction"})
        QVERIFY2(!desk.shown(name), name);
    for (const auto &[name, aside] :
         {std::pair("pb_results", -100), std::pair("pb_mainMenu", 100)}) {
        QVERIFY(desk.shown(name));
        const QRect place = desk.widget(name)->geometry();
        QCOMPARE(place.topLeft(),
                 desk.centre() + QPoint(aside, 0) - QPoint(place.width() / 2, place.height() / 2));
    }
    QCOMPARE(desk.task.styleSheet(), QStringLiteral("background-color:rgb(0, 0, 0)"));
    QCOMPARE(desk.task.stage(), 0);
    desk.time.advance(3'600'000); // it waits
    QVERIFY(desk.shown("pb_results") && desk.shown("pb_mainMenu"));
    QCOMPARE(desk.rows().size(), 20);
}

void tst_Test1End::resultsShowsTheReport()
{
    VisionDesk desk;
    playTest(desk);
    desk.click("pb_results");
    QVERIFY(!desk.task.isRunning());
    QVERIFY(desk.task.result().isVisible());
    QVERIFY(!desk.widget("pb_results")->isDown());
    QVERIFY(!sessionStore().escapeSeq);
    QCOMPARE(desk.task.styleSheet(), QStringLiteral("background-color:rgb(240, 240, 240)"));
    desk.time.advance(1000);
    QVERIFY(desk.task.result().isVisible());
    desk.task.result().close();
}

void tst_Test1End::mainMenuMakesTheReportUnseen()
{
    VisionDesk desk;
    playTest(desk);
    desk.click("pb_mainMenu");
    QVERIFY(!desk.task.isRunning());
    QVERIFY(!desk.task.result().isVisible());
    QVERIFY(!sessionStore().escapeSeq); // the session has been taken
    QCOMPARE(desk.task.styleSheet(), QStringLiteral("background-color:rgb(240, 240, 240)"));
    desk.time.advance(1000);
    QVERIFY(!desk.task.result().isVisible());
    desk.go({.mode = 1}); // black again
    QCOMPARE(desk.task.styleSheet(), QStringLiteral("background-color:rgb(0, 0, 0)"));
    QVERIFY(!desk.shown("pb_results") && !desk.shown("pb_mainMenu"));
}

void tst_Test1End::aMissingTemplateIsTold_data()
{
    QTest::addColumn<QByteArray>("button");
    QTest::newRow("results") << QByteArray("pb_results");
    QTest::newRow("main menu") << QByteArray("pb_mainMenu");
}

void tst_Test1End::aMissingTemplateIsTold()
{
    QFETCH(const QByteArray, button);
    VisionDesk desk;
    playTest(desk);
    // Both ask for the report: the one without its template says so.
    QVERIFY(QFile::remove(desk.root.path(QString::fromLatin1(VisionDesk::reportTemplate))));
    desk.click(button.constData());
    const auto messages = desk.boxes.take();
    QCOMPARE(messages.size(), 1);
    QCOMPARE(messages[0].title, QStringLiteral("Unable to open file"));
    QVERIFY(!desk.task.isRunning());
    QVERIFY(!sessionStore().escapeSeq);
    QCOMPARE(desk.rows(scoreFile).size(), 1); // what is filed stays
    desk.task.result().close();
}

void tst_Test1End::theKeysFileNothingTwice()
{
    VisionDesk desk;
    playTest(desk);
    QList<QByteArray> before;
    for (const char *file : {trialLog, validLog, scoreFile, archivedScores, VisionDesk::patients})
        before.append(bytes(desk, file));
    for (const Qt::Key key : {Qt::Key_E, Qt::Key_P, Qt::Key_C, Qt::Key_Return, Qt::Key_E}) {
        desk.key(key);
        desk.time.advance(60'000);
    }
    QTest::mouseClick(&desk.task, Qt::LeftButton, {}, {10, 700});
    desk.time.advance(60'000);
    QVERIFY(!desk.shown("pb_continue"));
    QVERIFY(desk.shown("pb_results"));
    QList<QByteArray> after;
    for (const char *file : {trialLog, validLog, scoreFile, archivedScores, VisionDesk::patients})
        after.append(bytes(desk, file));
    QCOMPARE(after, before);
}

void tst_Test1End::escapeAtTheButtonsKeepsTheSession()
{
    VisionDesk desk;
    playTest(desk);
    const QByteArray rows = bytes(desk, trialLog);
    desk.key(Qt::Key_Escape);
    QVERIFY(!desk.task.isRunning());
    QVERIFY(sessionStore().escapeSeq);
    QVERIFY(!desk.task.result().isVisible());
    QCOMPARE(bytes(desk, trialLog), rows); // closed: no marker
    QCOMPARE(desk.rows(scoreFile).size(), 1);
    QCOMPARE(desk.patientLine(),
             QStringLiteral("Mrs.;Doe;Jane;01.02.1950;1;2;3;4;6;6;7;247;367;483"));
}

void tst_Test1End::whatCannotBeFiledIsToldAndTheRestIsFiled()
{
    VisionDesk desk;
    desk.root.block(QString::fromLatin1(validLog));
    desk.root.block(QString::fromLatin1(archivedScores));
    playTest(desk);
    const auto messages = desk.boxes.take();
    QCOMPARE(messages.size(), 1);
    QCOMPARE(messages[0].title, QStringLiteral("Error"));
    QCOMPARE(toldFiles(messages[0].text),
             QStringList({QStringLiteral("valid-output.csv"),
                          QStringLiteral("results_T1_Doe Jane 01.02.1950.csv")}));
    QVERIFY(desk.task.isRunning()); // back behind the box
    QVERIFY(desk.task.isFullScreen());
    QCOMPARE(desk.task.styleSheet(), QStringLiteral("background-color:rgb(0, 0, 0)"));
    QCOMPARE(desk.rows(scoreFile).size(), 1);
    QCOMPARE(desk.rows().size(), 20);
    QCOMPARE(desk.patientLine(),
             QStringLiteral("Mrs.;Doe;Jane;01.02.1950;1;2;3;4;6;6;7;247;367;483"));
    desk.click("pb_mainMenu");
    QVERIFY(!desk.task.isRunning());

    desk.root.unblock(QString::fromLatin1(validLog)); // told once, not with the next test too
    playTest(desk);
    QCOMPARE(toldFiles(desk.boxes.take().constFirst().text),
             QStringList({QStringLiteral("results_T1_Doe Jane 01.02.1950.csv")}));
    QCOMPARE(desk.rows(validLog).size(), 20);
}

void tst_Test1End::aListThatCannotBeRewrittenIsToldAtTheEnd()
{
    VisionDesk desk;
    const QByteArray list = bytes(desk, VisionDesk::patients);
    desk.root.block(QStringLiteral("bin/_patients_list.txt"));
    playTest(desk);
    const auto messages = desk.boxes.take();
    QCOMPARE(messages.size(), 1);
    // Session and thresholds go into the same line: it is one file that fails.
    QCOMPARE(toldFiles(messages[0].text), QStringList({QStringLiteral("patients_list.txt")}));
    QCOMPARE(bytes(desk, VisionDesk::patients), list);
    QCOMPARE(desk.rows(validLog).size(), 20);
    QCOMPARE(desk.rows(scoreFile).size(), 1);
    QCOMPARE(desk.rows(archivedScores).size(), 1);
    QVERIFY(desk.task.isRunning());
}

void tst_Test1End::aListThatCannotBeRewrittenIsToldAtEscape_data()
{
    QTest::addColumn<bool>("training");
    QTest::newRow("in the test") << false;
    QTest::newRow("in the training") << true;
}

void tst_Test1End::aListThatCannotBeRewrittenIsToldAtEscape()
{
    QFETCH(const bool, training);
    VisionDesk desk;
    const QByteArray list = bytes(desk, VisionDesk::patients);
    desk.root.block(QStringLiteral("bin/_patients_list.txt"));
    desk.go({.mode = 1, .training = training});
    desk.click("pb_go");
    QVERIFY(desk.runTrial(true));
    QVERIFY(desk.boxes.take().isEmpty());
    desk.key(Qt::Key_Escape);
    const auto messages = desk.boxes.take();
    QCOMPARE(messages.size(), 1);
    QCOMPARE(messages[0].title, QStringLiteral("Error"));
    QCOMPARE(toldFiles(messages[0].text), QStringList({QStringLiteral("patients_list.txt")}));
    QCOMPARE(bytes(desk, VisionDesk::patients), list);
    QVERIFY(!desk.task.isRunning());
    QVERIFY(sessionStore().escapeSeq);
    QCOMPARE(desk.rows().size(), training ? 0 : 2);
    if (!training)
        QCOMPARE(desk.rows().constLast().constLast(), QStringLiteral("interrupted"));
}

void tst_Test1End::aFullDiskLeavesNoHalfRow()
{
    VisionDesk desk;
    desk.startTest({.mode = 1});
    QVERIFY(toAndFro(desk, 19));
    const QByteArray before = bytes(desk, trialLog);
    QVERIFY(desk.reach(5));
    {
        // The last row no longer fits into the log, nor do the twenty into their file.
        const FullDisk disk{rlim_t(before.size()) + 10};
        QVERIFY(desk.runTrial(false));
    }
    const auto messages = desk.boxes.take();
    QCOMPARE(messages.size(), 1);
    QCOMPARE(toldFiles(messages[0].text),
             QStringList({QStringLiteral("output.csv"), QStringLiteral("timing.csv"),
                          QStringLiteral("valid-output.csv")}));
    QCOMPARE(bytes(desk, trialLog), before);
    QVERIFY(bytes(desk, validLog).isEmpty());
    QVERIFY(desk.shown("pb_results"));
    QCOMPARE(group(desk, 0), QStringLiteral("247;0;19;283.000000;0;217.000000;0"));
    QCOMPARE(bytes(desk, archivedScores), bytes(desk, scoreFile));
    QCOMPARE(desk.thresholds(), QStringLiteral("247;367;483"));
}

void tst_Test1End::aRowThatCouldNotBeWrittenIsToldAtTheEnd()
{
    VisionDesk desk;
    desk.startTest({.mode = 1});
    QVERIFY(toAndFro(desk, 10));
    {
        const FullDisk disk{rlim_t(bytes(desk, trialLog).size()) + 10};
        QVERIFY(toAndFro(desk, 2));
    }
    QVERIFY(desk.boxes.take().isEmpty()); // not in the middle of the test
    QVERIFY(toAndFro(desk, 8));
    const auto messages = desk.boxes.take();
    QCOMPARE(messages.size(), 1);
    QCOMPARE(toldFiles(messages[0].text),
             QStringList({QStringLiteral("output.csv"), QStringLiteral("timing.csv")}));
    QCOMPARE(desk.rows().size(), 18);
    for (const QStringList &row : desk.rows())
        QCOMPARE(row.size(), int(Count));
    QCOMPARE(desk.rows(validLog).size(), 20); // the valid rows are kept
    QCOMPARE(desk.rows(scoreFile).size(), 1);
}

void tst_Test1End::aRowThatCouldNotBeWrittenIsToldAtEscape()
{
    VisionDesk desk;
    desk.startTest({.mode = 1});
    QVERIFY(toAndFro(desk, 2));
    {
        const FullDisk disk{rlim_t(bytes(desk, trialLog).size()) + 10};
        QVERIFY(toAndFro(desk, 1));
    }
    QVERIFY(desk.boxes.take().isEmpty());
    desk.key(Qt::Key_Escape);
    const auto messages = desk.boxes.take();
    QCOMPARE(messages.size(), 1);
    QCOMPARE(toldFiles(messages[0].text),
             QStringList({QStringLiteral("output.csv"), QStringLiteral("timing.csv")}));
    QVERIFY(!desk.task.isRunning());
    QVERIFY(sessionStore().escapeSeq);
    QCOMPARE(desk.rows().size(), 3);
    QCOMPARE(desk.thresholds(), QStringLiteral("217;367;483"));
}

void tst_Test1End::aMarkerThatCouldNotBeWrittenIsToldAtTheBreak()
{
    VisionDesk desk;
    desk.startTest({.mode = 1});
    for (int trial = 0; trial < 49; ++trial)
        QVERIFY(desk.runTrial(trial < 8 || (trial >= 25 && trial < 42)));
    {
        const FullDisk disk{rlim_t(bytes(desk, trialLog).size()) + 10};
        QVERIFY(desk.runTrial(false));
    }
    const auto messages = desk.boxes.take();
    QCOMPARE(messages.size(), 2);
    QCOMPARE(messages[0].text, QStringLiteral("Unstable measures, please start task over again"));
    QCOMPARE(toldFiles(messages[1].text),
             QStringList({QStringLiteral("output.csv"), QStringLiteral("timing.csv")}));
    QVERIFY(!desk.task.isRunning());
    QCOMPARE(desk.rows().size(), 49);
    QVERIFY(!exists(desk, archive));
}

void tst_Test1End::aLogThatCannotBeOpenedIsTold()
{
    VisionDesk desk;
    desk.root.block(QString::fromLatin1(trialLog));
    const QByteArray list = bytes(desk, VisionDesk::patients);
    desk.go({.mode = 1});
    const auto messages = desk.boxes.take();
    QCOMPARE(messages.size(), 1);
    QCOMPARE(messages[0].title, QStringLiteral("Error"));
    QCOMPARE(toldFiles(messages[0].text), QStringList({QStringLiteral("output.csv")}));
    QVERIFY(!desk.task.isRunning());
    QVERIFY(!sessionStore().escapeSeq);
    QCOMPARE(bytes(desk, VisionDesk::patients), list);
    QCOMPARE(desk.task.styleSheet(), QStringLiteral("background-color:rgb(0, 0, 0)"));

    desk.root.unblock(QString::fromLatin1(trialLog));
    desk.go({.mode = 1}); // the next attempt works
    QVERIFY(desk.shown("pb_go"));
}

QTEST_MAIN(tst_Test1End)
#include "tst_Test1End.moc"
