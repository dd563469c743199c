#include "SessionStore.h"
#include "rows.h"
#include "tables.h"

#include <QLocale>
#include <QTest>

#include <array>
#include <clocale>
#include <cmath>
#include <cstdio>
#include <limits>
#include <string>

using namespace rows;

namespace {

constexpr double noNumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinite = std::numeric_limits<double>::infinity();

Identity anne()
{
    return {QStringLiteral("S1"), QStringLiteral("Mrs."), QStringLiteral("Martin"),
            QStringLiteral("Anne"), QDate(1951, 12, 30)};
}

QDateTime stamp()
{
    return {QDate(2024, 3, 5), QTime(14, 7, 9, 42)};
}

TrialHead trialHead()
{
    return {2, 7, stamp(), 3, 12};
}

ScoreHead scoreHead()
{
    return {2, 7, stamp(), QTime(0, 4, 32), 101};
}

constexpr GroupT1 group{132, 1, 8, 150.0, 0, 117.25, 1};

qsizetype columnsOf(const QByteArray &row)
{
    return row.count(';') + 1;
}

} // namespace

class tst_rows : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();
    void headersStandToTheLetter_data();
    void headersStandToTheLetter();
    void everyRowHasTheColumnsOfItsHeader_data();
    void everyRowHasTheColumnsOfItsHeader();
    void trialRowsStandToTheByte_data();
    void trialRowsStandToTheByte();
    void scoreRowsStandToTheByte_data();
    void scoreRowsStandToTheByte();
    void aTimingRowTellsItsIntervalsAndTheWorst();
    void aTimingRowHasTheColumnsOfItsHeader();
    void aMarkerRowIsShort();
    void theIdentityIsThatOfTheStore();
    void anEmptyIdentityMakesAValidRow();
    void aLetterThatLatin1LacksIsAQuestionMark();
    void aSeparatorShiftsAndALineBreakDoesNot();
    void numbersHoldAPointInEveryLocale();
    void whatIsNoNumberStandsAsPrintfPrintsIt_data();
    void whatIsNoNumberStandsAsPrintfPrintsIt();
    void localNumbersCanBeReadInARow_data();
    void localNumbersCanBeReadInARow();
};

void tst_rows::cleanup()
{
    QLocale::setDefault(QLocale::c());
    std::setlocale(LC_ALL, "C");
    sessionStore() = SessionStore();
}

void tst_rows::headersStandToTheLetter_data()
{
    QTest::addColumn<QByteArray>("header");
    QTest::addColumn<QByteArray>("expected");
    const QByteArray first =
        "code;gender;l_name;f_name;dob;task;session;date;time;duration;trials;";
    QTest::newRow("visual perception")
        << QByteArray(_headerResult_T1)
        << first + "t1_central;t1a_errors;t1a_reversals;t1a_sup;t1a_limits_s;t1a_inf;t1a_limit_i;"
                   "t1_peripheral;t1b_errors;t1b_reversals;t1b_sup;t1b_limits_s;t1b_inf;"
                   "t1b_limit_i;t1_dual;t1c_errors;t1c_reversals;t1c_sup;t1c_limits_s;t1c_inf;"
                   "t1c_limit_i\n";
    QTest::newRow("attention") << QByteArray(_headerResult_T2)
                               << first + "t2a;t2a_error;t2a_slope;t2a_r2;t2b;t2b_error;t2b_slope;"
                                          "t2b_r2;t2c;t2c_error;t2c_slope;t2c_r2\n";
    QTest::newRow("movement detection")
        << QByteArray(_headerResult_T3)
        << first + "t3_rt;t3_error;t3_slope;t3_r2;oblique;cardinal;left;right;top;bottom\n";
    QTest::newRow("memory") << QByteArray(_headerResult_T4)
                            << first + "average_f;average_l;t4_slope;t4_intercept;t4_r2;t4l_slope;"
                                       "t4l_r2;t4_error\n";
    QTest::newRow("trials") << QByteArray(tables::_headerArchive)
                            << QByteArray(
                                   "code;gender;l_name;f_name;dob;task;session;date;time;subtask;"
                                   "rank_task;rank_sub;t1_time;t1c_figure;t1c_answer;"
                                   "t1p_position;t1p_answer;t1_tanswer;t1_answer;t1_implement;"
                                   "t2_rt;t2_position;t3_rt;t3_position;t3_dir_mov;t4_dist_first;"
                                   "t4_dist_last;t4_pos_first;t4_pos_last;error\n");
}

void tst_rows::headersStandToTheLetter()
{
    QFETCH(QByteArray, header);
    QFETCH(QByteArray, expected);
    QCOMPARE(header, expected);
}

void tst_rows::everyRowHasTheColumnsOfItsHeader_data()
{
    QTest::addColumn<QByteArray>("row");
    QTest::addColumn<QByteArray>("header");
    QTest::addColumn<int>("columns");
    const QByteArray trials(tables::_headerArchive);
    QTest::newRow("trial 1") << trialT1(anne(), trialHead(), {}, 0) << trials << 30;
    QTest::newRow("trial 2") << trialT2(anne(), trialHead(), {}, 0) << trials << 30;
    QTest::newRow("trial 3") << trialT3(anne(), trialHead(), {}, 0) << trials << 30;
    QTest::newRow("trial 4") << trialT4(anne(), trialHead(), {}, 0) << trials << 30;
    const QByteArray header1(_headerResult_T1);
    QTest::newRow("scores 1, all")
        << scoresT1(anne(), scoreHead(), {group, group, group}) << header1 << 32;
    QTest::newRow("scores 1, none") << scoresT1(anne(), scoreHead(), {}) << header1 << 32;
    QTest::newRow("scores 2") << scoresT2(anne(), scoreHead(), {}) << QByteArray(_headerResult_T2)
                              << 23;
    QTest::newRow("scores 3") << scoresT3(anne(), scoreHead(), {}) << QByteArray(_headerResult_T3)
                              << 21;
    QTest::newRow("scores 4") << scoresT4(anne(), scoreHead(), {}) << QByteArray(_headerResult_T4)
                              << 19;
}

void tst_rows::everyRowHasTheColumnsOfItsHeader()
{
    QFETCH(QByteArray, row);
    QFETCH(QByteArray, header);
    QFETCH(int, columns);
    QCOMPARE(columnsOf(row), columns);
    QCOMPARE(columnsOf(header), columns);
    QVERIFY(row.endsWith('\n'));
    QCOMPARE(row.count('\n'), 1);
}

void tst_rows::trialRowsStandToTheByte_data()
{
    QTest::addColumn<QByteArray>("row");
    QTest::addColumn<QByteArray>("rest"); // behind the eleven columns that all share
    const TrialT1 one{4,
                      117,
                      QStringLiteral("ShR"),
                      QStringLiteral("Sh"),
                      QStringLiteral("TL"),
                      QStringLiteral("ML"),
                      1830,
                      QStringLiteral("2"),
                      1};
    QTest::newRow("visual perception") << trialT1(anne(), trialHead(), one, 0)
                                       << QByteArray("4;117;ShR;Sh;TL;ML;1830;2;1;;;;;;;;;;0\n");
    TrialT1 struck = one;
    struck.figureAnswer = struck.positionAnswer = struck.answer = QString();
    struck.answerTime = 0;
    QTest::newRow("visual perception, struck") << trialT1(anne(), trialHead(), struck, 1)
                                               << QByteArray("4;117;ShR;;TL;;0;;1;;;;;;;;;;1\n");
    QTest::newRow("attention") << trialT2(anne(), trialHead(),
                                          {5, QStringLiteral("412"), QStringLiteral("NE")}, 0)
                               << QByteArray("5;;;;;;;;;412;NE;;;;;;;;0\n");
    QTest::newRow("attention, anticipation")
        << trialT2(anne(), trialHead(), {5, QStringLiteral("-73"), QStringLiteral("S")}, 1)
        << QByteArray("5;;;;;;;;;-73;S;;;;;;;;1\n");
    QTest::newRow("movement detection")
        << trialT3(anne(), trialHead(),
                   {QStringLiteral("655"), QStringLiteral("SW"), QStringLiteral("N")}, 0)
        << QByteArray(";;;;;;;;;;;655;SW;N;;;;;0\n");
    QTest::newRow("memory") << trialT4(
                                   anne(), trialHead(),
                                   {QStringLiteral("   12.35"), QStringLiteral("    7.00"), 12, 1},
                                   0)
                            << QByteArray(";;;;;;;;;;;;;;   12.35;    7.00;12;1;0\n");
    QTest::newRow("memory, invalid")
        << trialT4(anne(), trialHead(), {{}, {}, 3, 4}, 1) << QByteArray(";;;;;;;;;;;;;;;;3;4;1\n");
}

void tst_rows::trialRowsStandToTheByte()
{
    QFETCH(QByteArray, row);
    QFETCH(QByteArray, rest);
    QCOMPARE(row, "S1;Mrs.;Martin;Anne;30/12/1951;2;7;05/03/2024;14:07:09.042;3;12;" + rest);
}

void tst_rows::scoreRowsStandToTheByte_data()
{
    QTest::addColumn<QByteArray>("row");
    QTest::addColumn<QByteArray>("rest");
    const QByteArray filled = "132;1;8;150.000000;0;117.250000;1";
    const QByteArray empty = ";;;;;;";
    QTest::newRow("visual perception, all") << scoresT1(anne(), scoreHead(), {group, group, group})
                                            << filled + ";" + filled + ";" + filled + "\n";
    QTest::newRow("visual perception, central")
        << scoresT1(anne(), scoreHead(), {group, std::nullopt, std::nullopt})
        << filled + ";" + empty + ";" + empty + "\n";
    QTest::newRow("visual perception, peripheral")
        << scoresT1(anne(), scoreHead(), {std::nullopt, group, std::nullopt})
        << empty + ";" + filled + ";" + empty + "\n";
    QTest::newRow("visual perception, dual")
        << scoresT1(anne(), scoreHead(), {std::nullopt, std::nullopt, group})
        << empty + ";" + empty + ";" + filled + "\n";
    QTest::newRow("attention") << scoresT2(anne(), scoreHead(),
                                           {ConditionT2{412.4, 1.98, -21.3, 0.4},
                                            ConditionT2{-31.6, 0.0, 15.25, 0.1234567},
                                            ConditionT2{47.0, 2.97, 0.0, 1.0}})
                               << QByteArray("412.400000;2.0;-21.300000;0.400000;"
                                             "-31.600000;0.0;15.250000;0.123457;"
                                             "47.000000;3.0;0.000000;1.000000\n");
    QTest::newRow("movement detection")
        << scoresT3(anne(), scoreHead(),
                    {655.5, 6.98, -33.3, 0.512, 700.0, 690.5, 650.0, 660.0, 670.0, 680.0})
        << QByteArray("655.500000;7.0;-33.300000;0.512000;700.000000;690.500000;650.000000;"
                      "660.000000;670.000000;680.000000\n");
    QTest::newRow("memory") << scoresT4(anne(), scoreHead(),
                                        {12.4, 15.6, 1.26, 7.3, 0.789, -0.123, 0.456, 9.0909090909})
                            << QByteArray("12.400000;15.600000;1.260000;7.300000;0.789000;"
                                          "-0.123000;0.456000;9.090909\n");
}

void tst_rows::scoreRowsStandToTheByte()
{
    QFETCH(QByteArray, row);
    QFETCH(QByteArray, rest);
    QCOMPARE(row,
             "S1;Mrs.;Martin;Anne;30/12/1951;2;7;05/03/2024;14:07:09.042;00:04:32;101;" + rest);
}

void tst_rows::aTimingRowTellsItsIntervalsAndTheWorst()
{
    const QByteArray row =
        timing(trialHead(), {{150, 150'000'499}, {400, 402'123'456}, {17, 16'900'000}}, 0);
    QCOMPARE(row, "05/03/2024;14:07:09.042;2;7;12;2.123;150;150.000;400;402.123;17;16.900" +
                      QByteArray(25, ';') + '\n');
    QCOMPARE(timing(trialHead(), {{17, 16'900'000}}, 0).left(39),
             QByteArray("05/03/2024;14:07:09.042;2;7;12;-0.100;1"));
}

void tst_rows::aTimingRowHasTheColumnsOfItsHeader()
{
    const qsizetype columns = columnsOf(timingHeader());
    QCOMPARE(columns, 37);
    QVERIFY(
        timingHeader().startsWith("date;time;task;session;rank_task;late;nominal_1;achieved_1;"));
    QVERIFY(timingHeader().endsWith(";nominal_15;achieved_15;refresh\n"));
    QCOMPARE(columnsOf(timing(trialHead(), {}, 0)), columns);
    std::vector<ShownInterval> many(timingIntervals + 3, {10, 10'000'000});
    many.back().achieved = 12'000'000; // beyond the room, and yet the worst
    const QByteArray row = timing(trialHead(), many, 1e9 / 60);
    QCOMPARE(columnsOf(row), columns);
    QVERIFY(row.contains(";12;2.000;10;10.000;"));
    QVERIFY(row.endsWith(";10;10.000;16.667\n"));
}

void tst_rows::aMarkerRowIsShort()
{
    QCOMPARE(marker(anne(), QLatin1String("paused")),
             QByteArray("S1;Mrs.;Martin;Anne;30/12/1951;paused\n"));
    QCOMPARE(marker(anne(), QLatin1String("interrupted")),
             QByteArray("S1;Mrs.;Martin;Anne;30/12/1951;interrupted\n"));
}

void tst_rows::theIdentityIsThatOfTheStore()
{
    SessionStore &store = sessionStore();
    store.siteCode = anne().code;
    store.gender = anne().gender;
    store.lastName = anne().lastName;
    store.firstName = anne().firstName;
    store.dob = anne().dob;
    QCOMPARE(marker(identity(), QLatin1String("paused")), marker(anne(), QLatin1String("paused")));
}

void tst_rows::anEmptyIdentityMakesAValidRow()
{
    QCOMPARE(marker({}, QLatin1String("paused")), QByteArray(";;;;;paused\n"));
}

void tst_rows::aLetterThatLatin1LacksIsAQuestionMark()
{
    Identity who = anne();
    who.lastName = QStringLiteral("Şahin-Müller");
    who.firstName = QStringLiteral("Œuvrard é 視");
    QCOMPARE(marker(who, QLatin1String("paused")),
             QByteArray("S1;Mrs.;?ahin-M\xfcller;?uvrard \xe9 ?;30/12/1951;paused\n"));
}

void tst_rows::aSeparatorShiftsAndALineBreakDoesNot()
{
    Identity who = anne();
    who.lastName = QStringLiteral("Mar;tin");
    who.firstName = QStringLiteral("An\r\nne");
    QCOMPARE(marker(who, QLatin1String("paused")),
             QByteArray("S1;Mrs.;Mar;tin;An  ne;30/12/1951;paused\n"));
}

void tst_rows::numbersHoldAPointInEveryLocale()
{
    const QByteArray plain = scoresT4(anne(), scoreHead(), {1234567.5, -0.5, 1e20, 0, 0, 0, 0, 0});
    QVERIFY(plain.contains(";1234567.500000;-0.500000;100000000000000000000.000000;"));
    QLocale::setDefault(QLocale(QLocale::German));
    // Where German is installed the C library writes a comma from here on.
    std::setlocale(LC_ALL, "de_DE.UTF-8");
    QCOMPARE(scoresT4(anne(), scoreHead(), {1234567.5, -0.5, 1e20, 0, 0, 0, 0, 0}), plain);
    QLocale::setDefault(QLocale(QLocale::Persian));
    QCOMPARE(scoresT4(anne(), scoreHead(), {1234567.5, -0.5, 1e20, 0, 0, 0, 0, 0}), plain);
    QVERIFY(trialT2(anne(), trialHead(), {}, 0).contains(";05/03/2024;14:07:09.042;3;12;"));
}

void tst_rows::whatIsNoNumberStandsAsPrintfPrintsIt_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<QByteArray>("six");
    QTest::addColumn<QByteArray>("one");
    QTest::newRow("nan") << noNumber << QByteArray("nan") << QByteArray("nan");
    QTest::newRow("-nan") << std::copysign(noNumber, -1.0) << QByteArray("-nan")
                          << QByteArray("-nan");
    QTest::newRow("inf") << infinite << QByteArray("inf") << QByteArray("inf");
    QTest::newRow("-inf") << -infinite << QByteArray("-inf") << QByteArray("-inf");
    QTest::newRow("-0") << -0.0 << QByteArray("-0.000000") << QByteArray("-0.0");
    QTest::newRow("half to even") << 0.25 << QByteArray("0.250000") << QByteArray("0.2");
    QTest::newRow("the largest") << 1e300 << QByteArray::fromStdString(std::to_string(1e300))
                                 << QByteArray::fromStdString(std::to_string(1e300)).chopped(5);
}

void tst_rows::whatIsNoNumberStandsAsPrintfPrintsIt()
{
    QFETCH(double, value);
    QFETCH(QByteArray, six);
    QFETCH(QByteArray, one);
    const ConditionT2 condition{value, value, 0.0, 0.0};
    const QByteArray row = scoresT2(anne(), scoreHead(), {condition, condition, condition});
    QCOMPARE(row.split(';').at(11), six);
    QCOMPARE(row.split(';').at(12), one);
    std::array<char, 400> printed{};
    std::snprintf(printed.data(), printed.size(), "%f", value);
    QCOMPARE(six, QByteArray(printed.data()));
}

void tst_rows::localNumbersCanBeReadInARow_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<double>("value");
    QTest::addColumn<QString>("text");
    QTest::newRow("plain") << QStringLiteral("C") << 12.345 << QStringLiteral("   12.35");
    QTest::newRow("English") << QStringLiteral("en_US") << 1234.5 << QStringLiteral(" 1234.50");
    QTest::newRow("German") << QStringLiteral("de_DE") << 1234.5 << QStringLiteral(" 1234,50");
    QTest::newRow("French") << QStringLiteral("fr_FR") << -1234.5 << QStringLiteral("-1234,50");
    QTest::newRow("Swedish") << QStringLiteral("sv_SE") << -0.5 << QStringLiteral("   -0,50");
    QTest::newRow("Persian") << QStringLiteral("fa_IR") << 1234.5 << QStringLiteral(" 1234.50");
    QTest::newRow("Arabic") << QStringLiteral("ar_EG") << 1234.5 << QStringLiteral(" 1234.50");
    QTest::newRow("too wide") << QStringLiteral("de_DE") << 123456.75
                              << QStringLiteral("123456,75");
    QTest::newRow("no number") << QStringLiteral("de_DE") << noNumber << QStringLiteral("     nan");
}

void tst_rows::localNumbersCanBeReadInARow()
{
    QFETCH(QString, locale);
    QFETCH(double, value);
    QFETCH(QString, text);
    QLocale::setDefault(QLocale(locale));
    QCOMPARE(localNumber(value, 8, 2), text);
}

QTEST_APPLESS_MAIN(tst_rows)

#include "tst_rows.moc"
