#include "DataRoot.h"
#include "assessorRecord.h"
#include "reportText.h"

#include <QLocale>
#include <QTest>

#include <limits>

using namespace reportText;

namespace {

Head head()
{
    return {QStringLiteral("Anne"),
            QStringLiteral("Martin"),
            QDate(1951, 12, 30),
            QDateTime(QDate(2024, 3, 5), QTime(14, 7, 9)),
            QStringLiteral("07"),
            QTime(1, 2, 3),
            101};
}

QStringList record()
{
    return {QStringLiteral("Dr."),       QStringLiteral("Muster"),
            QStringLiteral("Erika"),     QStringLiteral("Institut <A&B>"),
            QStringLiteral("Weg 1"),     QStringLiteral("12345"),
            QStringLiteral("Ort \"x\""), QStringLiteral("Land")};
}

QString headFilled(const QString &text, const std::optional<QStringList> &assessor = record())
{
    return filled(text, headValues(head(), assessor));
}

QString scoresFilled(int task, const QString &text, const QList<double> &numbers)
{
    return filled(text, scoreValues(task, numbers));
}

} // namespace

class tst_reportText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();
    void theTemplateIsThatOfTheLanguage_data();
    void theTemplateIsThatOfTheLanguage();
    void aSessionHasAtLeastTwoDigits_data();
    void aSessionHasAtLeastTwoDigits();
    void theHeadIsFilled_data();
    void theHeadIsFilled();
    void aShortRecordLeavesItsFieldsEmpty();
    void withoutARecordItsPlaceholdersStay();
    void textsAreEscaped();
    void aValueIsNeverSearchedForPlaceholders();
    void placeholdersAreReplacedWhereverTheyStand_data();
    void placeholdersAreReplacedWhereverTheyStand();
    void theFirstReportHasWholeNumbers();
    void theSecondReportIsPaddedAndRounded();
    void theThirdReportIsPaddedAndRounded();
    void theFourthReportIsPaddedAndRounded();
    void scoresFollowTheLocale_data();
    void scoresFollowTheLocale();
    void whatIsNoNumberIsShownAsSuch();
    void aMissingNumberLeavesItsPlaceholder();
};

void tst_reportText::cleanup()
{
    QLocale::setDefault(QLocale::c());
}

void tst_reportText::theTemplateIsThatOfTheLanguage_data()
{
    QTest::addColumn<int>("language");
    QTest::addColumn<QString>("installed");
    QTest::addColumn<QString>("found");
    const QString english = QStringLiteral("Languages/En/Kelmoran_Task3_en.html");
    const QString french = QStringLiteral("Languages/Fr/Kelmoran_Task3_fr.html");
    const QString german = QStringLiteral("Languages/DeKelmoran_Task3_de.html");
    QTest::newRow("English") << 0 << english << english;
    QTest::newRow("French") << 1 << french << french;
    QTest::newRow("German, joined as it stands") << 2 << german << german;
    QTest::newRow("German in a folder isn't found")
        << 2 << QStringLiteral("Languages/De/Kelmoran_Task3_de.html") << english;
    QTest::newRow("French falls back") << 1 << english << english;
    QTest::newRow("Dutch falls back") << 5 << french << english;
    QTest::newRow("none at all") << 3 << QStringLiteral("Languages/readme") << english;
    QTest::newRow("no such language") << 6 << english << english;
    QTest::newRow("negative language") << -1 << english << english;
}

void tst_reportText::theTemplateIsThatOfTheLanguage()
{
    QFETCH(int, language);
    QFETCH(QString, installed);
    QFETCH(QString, found);
    const DataRoot root;
    root.write(installed, "a template");
    QCOMPARE(templatePath(QFileInfo(root.path(QStringLiteral("bin"))).path(), 3, language),
             root.path(found));
}

void tst_reportText::aSessionHasAtLeastTwoDigits_data()
{
    QTest::addColumn<int>("session");
    QTest::addColumn<QString>("text");
    QTest::newRow("0") << 0 << QStringLiteral("00");
    QTest::newRow("7") << 7 << QStringLiteral("07");
    QTest::newRow("9") << 9 << QStringLiteral("09");
    QTest::newRow("10") << 10 << QStringLiteral("10");
    QTest::newRow("12") << 12 << QStringLiteral("12");
    QTest::newRow("123") << 123 << QStringLiteral("123");
}

void tst_reportText::aSessionHasAtLeastTwoDigits()
{
    QFETCH(int, session);
    QFETCH(QString, text);
    QCOMPARE(sessionText(session), text);
}

void tst_reportText::theHeadIsFilled_data()
{
    QTest::addColumn<QString>("placeholder");
    QTest::addColumn<QString>("value");
    const auto row = [](const char *placeholder, const char *value) {
        QTest::newRow(placeholder) << QString::fromUtf8(placeholder) << QString::fromUtf8(value);
    };
    row("v_version", "1.1");
    row("v_assessor", "Dr. Erika Muster");
    row("v_institution", "Institut &lt;A&amp;B&gt;");
    row("v_street", "Weg 1");
    row("v_code", "12345");
    row("v_city", "Ort &quot;x&quot;");
    row("v_country", "Land");
    row("v_f_name", "Anne");
    row("v_l_name", "Martin");
    row("v_dob", "30.12.1951");
    row("v_date", "05.03.2024");
    row("v_time", "14:07");
    row("v_session", "07");
    row("v_duration", "02:03"); // of 1 h 02 min 03 s
    row("v_trials", "101");
}

void tst_reportText::theHeadIsFilled()
{
    QFETCH(QString, placeholder);
    QFETCH(QString, value);
    QCOMPARE(headFilled(QStringLiteral("<td>%1</td>").arg(placeholder)),
             QStringLiteral("<td>%1</td>").arg(value));
}

void tst_reportText::aShortRecordLeavesItsFieldsEmpty()
{
    QCOMPARE(headFilled(QStringLiteral("[v_assessor][v_street][v_country]"),
                        QStringList{QStringLiteral("Dr."), QStringLiteral("Muster")}),
             QStringLiteral("[Dr.  Muster][][]"));
}

void tst_reportText::withoutARecordItsPlaceholdersStay()
{
    const QString text =
        QStringLiteral("v_assessor v_institution v_street v_code v_city v_country");
    QCOMPARE(headFilled(text, std::nullopt), text);
    QCOMPARE(headFilled(QStringLiteral("v_version v_l_name"), std::nullopt),
             QStringLiteral("1.1 Martin"));
}

void tst_reportText::textsAreEscaped()
{
    Head marked = head();
    marked.lastName = QStringLiteral("<b>Ma & rtin</b>");
    marked.firstName = QStringLiteral("%1 \"A\"");
    QCOMPARE(filled(QStringLiteral("v_l_name v_f_name"), headValues(marked, record())),
             QStringLiteral("&lt;b&gt;Ma &amp; rtin&lt;/b&gt; %1 &quot;A&quot;"));
}

void tst_reportText::aValueIsNeverSearchedForPlaceholders()
{
    Head odd = head();
    odd.lastName = QStringLiteral("v_dob v_f_name v_");
    odd.firstName = QStringLiteral("v_l_name");
    QCOMPARE(filled(QStringLiteral("v_f_name, v_l_name, v_l_namedob"), headValues(odd, record())),
             QStringLiteral("v_l_name, v_dob v_f_name v_, v_dob v_f_name v_dob"));
}

void tst_reportText::placeholdersAreReplacedWhereverTheyStand_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");
    QTest::newRow("twice") << QStringLiteral("v_trials v_trials") << QStringLiteral("101 101");
    QTest::newRow("joined") << QStringLiteral("v_trialsv_trials") << QStringLiteral("101101");
    QTest::newRow("within a word") << QStringLiteral("xv_trialsx") << QStringLiteral("x101x");
    QTest::newRow("behind half of one") << QStringLiteral("v_v_trials") << QStringLiteral("v_101");
    QTest::newRow("unknown") << QStringLiteral("v_unknown") << QStringLiteral("v_unknown");
    QTest::newRow("other letters")
        << QStringLiteral("V_TRIALS v_Trials") << QStringLiteral("V_TRIALS v_Trials");
    QTest::newRow("cut off") << QStringLiteral("v_trial") << QStringLiteral("v_trial");
    QTest::newRow("none") << QStringLiteral("<p>é</p>") << QStringLiteral("<p>é</p>");
    QTest::newRow("empty") << QString() << QString();
}

void tst_reportText::placeholdersAreReplacedWhereverTheyStand()
{
    QFETCH(QString, text);
    QFETCH(QString, expected);
    QCOMPARE(headFilled(text), expected);
}

void tst_reportText::theFirstReportHasWholeNumbers()
{
    QList<int> numbers;
    for (int i = 0; i < 21; ++i)
        numbers.append(1000 + i);
    QCOMPARE(filled(QStringLiteral(
                        "v_t1_central v_t1a_errors v_t1a_reversals v_t1a_sup v_t1a_limit_s "
                        "v_t1a_inf v_t1a_limit_i v_t1_peripheral v_t1b_errors v_t1b_reversals "
                        "v_t1b_sup v_t1b_limit_s v_t1b_inf v_t1b_limit_i v_t1_dual v_t1c_errors "
                        "v_t1c_reversals v_t1c_sup v_t1c_limit_s v_t1c_inf v_t1c_limit_i"),
                    scoreValues(numbers)),
             QStringLiteral("1000 1001 1002 1003 1004 1005 1006 1007 1008 1009 1010 1011 1012 1013 "
                            "1014 1015 1016 1017 1018 1019 1020"));
}

void tst_reportText::theSecondReportIsPaddedAndRounded()
{
    QCOMPARE(scoresFilled(2,
                          QStringLiteral("[v_t2a_neutral][v_t2a_error][v_t2a_slope][v_t2a_r2]"
                                         "[v_t2b_alerting][v_t2b_error][v_t2b_slope][v_t2b_r2]"
                                         "[v_t2c_orientation][v_t2c_error][v_t2c_slope][v_t2c_r2]"),
                          {412.4, 1.98, -21.3, 0.4125, 31.6, 0.0, -5.2, 0.5, -7.0, 12.34, 0.4, 1}),
             QStringLiteral("[412][  2.0][-21][0.412]"
                            "[ 32][  0.0][ -5][0.500]"
                            "[ -7][ 12.3][  0][1.000]"));
}

void tst_reportText::theThirdReportIsPaddedAndRounded()
{
    QCOMPARE(scoresFilled(3,
                          QStringLiteral("[v_t3rt][v_t3_error][v_t3_slope][v_t3_r2]"
                                         "[v_t3_oc][v_t3_lr][v_t3_bt]"),
                          {655.6, 6.98, -33.3, 0.5, 21.4, -11.6, 5.2}),
             QStringLiteral("[656][  7.0][-33][0.500][ 21][-12][  5]"));
}

void tst_reportText::theFourthReportIsPaddedAndRounded()
{
    QCOMPARE(scoresFilled(4,
                          QStringLiteral("[v_t4_average_f][v_t4_average_l][v_t4_error]"
                                         "[v_t4l_slope][v_t4l_r2]"
                                         "[v_t4_slope][v_t4_intercept][v_t4_r2]"),
                          {12.4, 115.6, 9.09, -0.1234, 0.456, 1.26, 7.3, 0.789}),
             QStringLiteral("[ 12][116][  9.1][-0.123][0.456][  1.3][  7][0.789]"));
}

void tst_reportText::scoresFollowTheLocale_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("value");
    QTest::newRow("English") << QStringLiteral("en_US") << QStringLiteral("1,234 56.7");
    QTest::newRow("German") << QStringLiteral("de_DE") << QStringLiteral("1.234 56,7");
}

void tst_reportText::scoresFollowTheLocale()
{
    QFETCH(QString, locale);
    QFETCH(QString, value);
    QLocale::setDefault(QLocale(locale));
    QCOMPARE(scoresFilled(3, QStringLiteral("v_t3rt v_t3_error"), {1234, 56.7}).simplified(),
             value);
}

void tst_reportText::whatIsNoNumberIsShownAsSuch()
{
    QCOMPARE(scoresFilled(3, QStringLiteral("[v_t3rt][v_t3_error]"),
                          {std::numeric_limits<double>::quiet_NaN(),
                           std::numeric_limits<double>::infinity()}),
             QStringLiteral("[nan][  inf]"));
}

void tst_reportText::aMissingNumberLeavesItsPlaceholder()
{
    QCOMPARE(scoresFilled(3, QStringLiteral("v_t3rt v_t3_error"), {655}),
             QStringLiteral("655 v_t3_error"));
    QVERIFY(scoresOf(1).isEmpty());
    QVERIFY(scoresOf(5).isEmpty());
}

QTEST_APPLESS_MAIN(tst_reportText)

#include "tst_reportText.moc"
