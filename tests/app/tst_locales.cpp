#include "Calibration.h"
#include "NewPatient.h"
#include "Test1.h"
#include "Test2.h"
#include "Test3.h"
#include "Test4.h"

#include "DataRoot.h"
#include "VirtualTime.h"
#include "parsed.h"
#include "reportText.h"
#include "rows.h"

#include <QDateEdit>
#include <QGuiApplication>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>
#include <QTest>

#include <functional>

namespace {

/// What a locale does to a number.
struct Told
{
    const char *locale;
    const char *report; ///< -12.4 as a score
    const char *row;    ///< 1234.5 as a distance
};

const QList<Told> &told()
{
    static const QList<Told> all{{"C", "-12.4", " 1234.50"},
                                 {"en_GB", "-12.4", " 1234.50"},
                                 {"fr_FR", "-12,4", " 1234,50"},
                                 {"de_DE", "-12,4", " 1234,50"},
                                 {"it_IT", "-12,4", " 1234,50"},
                                 {"es_ES", "-12,4", " 1234,50"},
                                 {"nl_NL", "-12,4", " 1234,50"},
                                 {"de_CH", "-12.4", " 1234.50"},
                                 {"sv_SE", "−12,4", " 1234,50"},
                                 {"tr_TR", "-12,4", " 1234,50"},
                                 {"fa_IR", "‎−۱۲٫۴", " 1234.50"},
                                 {"ar_EG", "؜-١٢٫٤", " 1234.50"}};
    return all;
}

Told here()
{
    for (const Told &one : told()) {
        if (QLocale().name() == QLatin1String(one.locale))
            return one;
    }
    return {};
}

/// In the digits of this locale.
QString inOwnDigits(QString text)
{
    const int zero = QLocale().zeroDigit().front().unicode();
    for (QChar &letter : text) {
        if (letter.isDigit())
            letter = QChar(zero + letter.digitValue());
    }
    return text;
}

struct NewPatientDesk
{
    DataRoot root;
    Boxes boxes;
    NewPatient dialog;

    NewPatientDesk()
    {
        dialog.goNewPatient();
        QCoreApplication::processEvents(); // the window becomes the active one
        auto *name = dialog.findChild<QLineEdit *>(QStringLiteral("le_firstName"));
        QTest::keyClick(name, Qt::Key_Return);
    }
    QDateEdit *born() const { return dialog.findChild<QDateEdit *>(); }
};

/// Types what is written in these digits, as a keyboard of the language sends it.
void type(QWidget *into, const QString &text, const QString &digits)
{
    for (const QChar letter : text) {
        const QChar sent = letter.isDigit() ? digits.at(letter.digitValue()) : letter;
        QTest::sendKeyEvent(QTest::Click, into, Qt::Key(sent.unicode()), QString(sent),
                            Qt::NoModifier);
    }
}

/// Goes through every field of the parameter panel, as the Tab key does, and leaves it as it is.
/// Returns those that show something else afterwards.
QStringList changedByPassing(QWidget &task)
{
    QStringList changed;
    const auto edits = task.findChildren<QLineEdit *>(QString(), Qt::FindDirectChildrenOnly);
    for (QLineEdit *edit : edits) {
        const QString before = edit->text();
        edit->setFocus();
        Q_EMIT edit->editingFinished();
        if (edit->text() != before)
            changed.append(
                QStringLiteral("%1 \"%2\" \"%3\"").arg(edit->objectName(), before, edit->text()));
    }
    return changed;
}

} // namespace

/// What must be the same in every language of the session, and what follows it: this program is run
/// once for each of some, by LC_ALL.
class tst_locales : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theLocaleIsTheOneAskedFor()
    {
        const QString asked = qEnvironmentVariable("LC_ALL").section(u'.', 0, 0);
        QCOMPARE(QLocale().name(), asked);
        QVERIFY(here().locale != nullptr);
    }

    void windowsReadFromLeftToRight()
    {
        QCOMPARE(QGuiApplication::layoutDirection(), Qt::LeftToRight);
    }

    void aDateOfBirthIsTypedInTheDigitsOfEveryKeyboardAndOfTheLanguage_data()
    {
        const QString digits = QStringLiteral("0123456789");
        QTest::addColumn<QString>("digits");
        QTest::newRow("of every keyboard") << digits;
        QTest::newRow("of this language") << inOwnDigits(digits);
    }
    void aDateOfBirthIsTypedInTheDigitsOfEveryKeyboardAndOfTheLanguage()
    {
        QFETCH(const QString, digits);
        for (const char *date : {"14.03.1952", "14031952", "14/3/1952"}) {
            const NewPatientDesk desk;
            type(desk.born(), QString::fromLatin1(date), digits);
            QCOMPARE(desk.born()->date(), QDate(1952, 3, 14));
            QVERIFY(desk.dialog.findChild<QPushButton *>(QStringLiteral("pb_ok"))->isEnabled());
        }
    }

    void aDateOfBirthIsOneOfTheCommonCalendar()
    {
        const NewPatientDesk desk;
        desk.born()->setDate(QDate(1952, 3, 14));
        QCOMPARE(desk.born()->text(), inOwnDigits(QStringLiteral("14.03.1952")));
        QVERIFY(desk.born()->calendar().isGregorian());
    }

    void aLengthIsTypedInTheDigitsOfEveryKeyboardAndOfTheLanguage()
    {
        for (const QString &length : {QStringLiteral("270"), inOwnDigits(QStringLiteral("270"))})
            QCOMPARE(parsed::toInt(length), 270);
    }

    void whoPassesThroughTheParametersChangesNone_data()
    {
        QTest::addColumn<int>("number");
        for (int number = 1; number <= 4; ++number)
            QTest::addRow("task %d", number) << number;
    }
    void whoPassesThroughTheParametersChangesNone()
    {
        QFETCH(const int, number);
        const DataRoot root;
        const Boxes boxes;
        const VirtualTime time(VirtualTime::Mode::Stepped);
        sessionStore().horzPixel = 1270;
        sessionStore().vertPixel = 1268;
        root.write(QStringLiteral("Parameters/patients_list.txt"),
                   "Mrs.;Doe;Jane;01.02.1950;1;2;3;4;5;6;7;283;367;483\r\n");
        sessionStore().patientName = QStringLiteral("Doe Jane 01.02.1950");
        QWidget window;
        Test1 vision(&window);
        Test2 attention(&window);
        Test3 movement(&window);
        Test4 memory(&window);
        const QList<std::pair<QWidget *, std::function<void()>>> tasks{
            {&vision, [&] { vision.goTest1(0, true, false, true, true); }},
            {&attention, [&] { attention.goTest2(0, true, false, true, true); }},
            {&movement, [&] { movement.goTest3(1, true, false, true, true); }},
            {&memory, [&] { memory.goTest4(true, false, true); }}};
        const auto &[task, go] = tasks.at(number - 1);
        go();
        QCOMPARE(changedByPassing(*task), QStringList());
        task->close();
    }

    void theNumbersOfARowHaveAPoint()
    {
        const QDateTime stamp(QDate(2025, 1, 6), QTime(9, 5, 7, 89));
        const rows::Identity who{QStringLiteral("UKB"), QStringLiteral("Mrs."),
                                 QStringLiteral("Doe"), QStringLiteral("Jane"), QDate(1950, 2, 1)};
        const rows::ScoresT4 scores{1234.5, -0.25, 1e6, 0, 0.5, 0, 0, 12.0};
        QCOMPARE(rows::scoresT4(who, {4, 7, stamp, QTime(0, 12, 34), 30}, scores),
                 QByteArray("UKB;Mrs.;Doe;Jane;01/02/1950;4;7;06/01/2025;09:05:07.089;00:12:34;30;"
                            "1234.500000;-0.250000;1000000.000000;0.000000;0.500000;0.000000;"
                            "0.000000;12.000000\n"));
    }

    void aDistanceHasTheSeparatorOfTheLanguageAndTheDigitsOfEveryKeyboard()
    {
        QCOMPARE(rows::localNumber(1234.5, 8, 2), QString::fromUtf8(here().row));
    }

    void aReportHasTheNumbersOfTheLanguage()
    {
        const auto values = reportText::scoreValues(2, {300, -12.4});
        QCOMPARE(values.at(1).second, QString::fromUtf8(here().report).rightJustified(5));
        QCOMPARE(reportText::scoreValues({1234}).at(0).second, QStringLiteral("1234"));
    }

    void aDateInAReportIsThatOfEveryLanguage()
    {
        const reportText::Head head{QStringLiteral("Jane"),
                                    QStringLiteral("Doe"),
                                    QDate(1950, 2, 1),
                                    QDateTime(QDate(2025, 1, 6), QTime(9, 5)),
                                    QStringLiteral("07"),
                                    QTime(0, 12, 34),
                                    30};
        QStringList values;
        for (const auto &value : reportText::headValues(head, std::nullopt))
            values.append(value.second);
        QCOMPARE(values.join(u' '),
                 QStringLiteral("1.1 Jane Doe 01.02.1950 06.01.2025 09:05 07 12:34 30"));
    }
};

QTEST_MAIN(tst_locales)
#include "tst_locales.moc"
