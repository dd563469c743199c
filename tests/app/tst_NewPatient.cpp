#include "NewPatient.h"

#include "Calibration.h"
#include "DataRoot.h"

#include <QClipboard>
#include <QLoggingCategory>
#include <QTest>

namespace {

/// The dialog, open, and an assessor at the keyboard.
struct Desk
{
    DataRoot root;
    Boxes boxes;
    NewPatient dialog;

    Desk() { open(); }

    void open()
    {
        QCoreApplication::processEvents();
        dialog.goNewPatient();
        QCoreApplication::processEvents(); // the window becomes the active one
    }

    QComboBox *gender() const { return dialog.findChild<QComboBox *>(u"cob_genre"_qs); }
    QLineEdit *lastName() const { return dialog.findChild<QLineEdit *>(u"le_lastName"_qs); }
    QLineEdit *firstName() const { return dialog.findChild<QLineEdit *>(u"le_firstName"_qs); }
    QDateEdit *dateOfBirth() const { return dialog.findChild<QDateEdit *>(u"de_dateOfBirth"_qs); }
    QPushButton *ok() const { return dialog.findChild<QPushButton *>(u"pb_ok"_qs); }
    QPushButton *cancel() const { return dialog.findChild<QPushButton *>(u"pb_cancel"_qs); }

    void fill() const
    {
        gender()->setCurrentIndex(1);
        lastName()->setText(u"Muster"_qs);
        firstName()->setText(u"Anna"_qs);
        dateOfBirth()->setDate(QDate(1950, 3, 2));
    }
};

void click(QPushButton *button)
{
    QTest::mouseClick(button, Qt::LeftButton);
}

} // namespace

class tst_NewPatient : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void itOpensEmpty()
    {
        const Desk desk;
        QVERIFY(desk.dialog.isVisible());
        QCOMPARE(desk.dialog.windowTitle(), u"NewPatient"_qs);
        QCOMPARE(desk.gender()->currentIndex(), -1);
        QCOMPARE(desk.lastName()->text(), QString());
        QCOMPARE(desk.firstName()->text(), QString());
        QCOMPARE(desk.dateOfBirth()->date(), QDate(1900, 1, 1));
        QCOMPARE(desk.dateOfBirth()->text(), u"01.01.1900"_qs);
        QVERIFY(!desk.ok()->isEnabled());
        QVERIFY(desk.cancel()->isEnabled());
        QCOMPARE(QApplication::focusWidget(), desk.gender());
    }

    void itOpensEmptyAgainAfterAPatient()
    {
        Desk desk;
        desk.fill();
        click(desk.ok());
        desk.open();
        QCOMPARE(desk.gender()->currentIndex(), -1);
        QCOMPARE(desk.lastName()->text(), QString());
        QCOMPARE(desk.firstName()->text(), QString());
        QCOMPARE(desk.dateOfBirth()->date(), QDate(1900, 1, 1));
        QVERIFY(!desk.ok()->isEnabled());
    }

    void theGendersAreTold()
    {
        const Desk desk;
        QCOMPARE(desk.gender()->count(), 2);
        QCOMPARE(desk.gender()->itemText(0), u"Mr."_qs);
        QCOMPARE(desk.gender()->itemText(1), u"Mrs."_qs);
    }

    void theEntryPathLeadsFromGenderToDate()
    {
        const Desk desk;
        Q_EMIT desk.gender()->activated(0);
        QCOMPARE(QApplication::focusWidget(), desk.lastName());
        QTest::keyClick(desk.lastName(), Qt::Key_Return);
        QCOMPARE(QApplication::focusWidget(), desk.firstName());
        QTest::keyClick(desk.firstName(), Qt::Key_Return);
        QCOMPARE(QApplication::focusWidget(), desk.dateOfBirth());
        QTest::keyClick(desk.dateOfBirth(), Qt::Key_Return);
        QVERIFY(desk.dialog.isVisible());
        QVERIFY(!sessionStore().newPatient);
    }

    void aDateIsTypedAsItIsWritten_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::newRow("with points") << u"14.03.1952"_qs;
        QTest::newRow("without") << u"14031952"_qs;
        QTest::newRow("without zeros") << u"14.3.1952"_qs;
        QTest::newRow("with slashes") << u"14/03/1952"_qs;
    }

    void aDateIsTypedAsItIsWritten()
    {
        QFETCH(const QString, typed);
        const Desk desk;
        QTest::keyClick(desk.firstName(), Qt::Key_Return);
        QTest::keyClicks(desk.dateOfBirth(), typed);
        QCOMPARE(desk.dateOfBirth()->date(), QDate(1952, 3, 14));
        QVERIFY(desk.ok()->isEnabled());
    }

    void aDateIsTypedAnew_data()
    {
        QTest::addColumn<QKeySequence>("keys");
        QTest::newRow("from its beginning") << QKeySequence(Qt::Key_Home);
        QTest::newRow("over all of it") << QKeySequence(QKeySequence::SelectAll);
    }

    void aDateIsTypedAnew()
    {
        QFETCH(const QKeySequence, keys);
        const Desk desk;
        QTest::keyClick(desk.firstName(), Qt::Key_Return);
        QTest::keyClicks(desk.dateOfBirth(), u"01.02.1960"_qs);
        QTest::keySequence(desk.dateOfBirth(), keys);
        QTest::keyClicks(desk.dateOfBirth(), u"14.03.1952"_qs);
        QCOMPARE(desk.dateOfBirth()->date(), QDate(1952, 3, 14));
    }

    void okNeedsAnotherYearOfBirth_data()
    {
        QTest::addColumn<QList<QDate>>("dates");
        QTest::addColumn<bool>("enabled");
        QTest::newRow("none") << QList<QDate>{} << false;
        QTest::newRow("another year") << QList<QDate>{{1950, 3, 2}} << true;
        QTest::newRow("another day of 1900") << QList<QDate>{{1900, 3, 2}} << false;
        QTest::newRow("the year before") << QList<QDate>{{1899, 12, 31}} << true;
        QTest::newRow("away and back to 1900") << QList<QDate>{{1901, 3, 2}, {1900, 3, 2}} << true;
    }
    void okNeedsAnotherYearOfBirth()
    {
        QFETCH(const QList<QDate>, dates);
        const Desk desk;
        for (const QDate date : dates)
            desk.dateOfBirth()->setDate(date);
        QTEST(desk.ok()->isEnabled(), "enabled");
    }

    void aDateIsTypedDayFirst()
    {
        const Desk desk;
        desk.dateOfBirth()->setFocus();
        desk.dateOfBirth()->setSelectedSection(QDateTimeEdit::DaySection);
        QTest::keyClicks(desk.dateOfBirth(), u"17041952"_qs);
        QCOMPARE(desk.dateOfBirth()->date(), QDate(1952, 4, 17));
        QVERIFY(desk.ok()->isEnabled());
    }

    void okLeavesThePatientInTheStoreAndRaisesTheFlag()
    {
        const Desk desk;
        desk.fill();
        click(desk.ok());
        QVERIFY(!desk.dialog.isVisible());
        QCOMPARE(sessionStore().gender, u"Mrs."_qs);
        QCOMPARE(sessionStore().lastName, u"Muster"_qs);
        QCOMPARE(sessionStore().firstName, u"Anna"_qs);
        QCOMPARE(sessionStore().dob, QDate(1950, 3, 2));
        QVERIFY(sessionStore().newPatient);
        QVERIFY(sessionStore().patientName.isEmpty());
        QVERIFY(!desk.root.exists(u"Parameters/patients_list.txt"_qs));
    }

    void genderAndNamesMayBeEmpty()
    {
        const Desk desk;
        sessionStore().gender = u"Mr."_qs;
        sessionStore().lastName = u"Former"_qs;
        desk.dateOfBirth()->setDate(QDate(1950, 3, 2));
        click(desk.ok());
        QVERIFY(sessionStore().newPatient);
        QCOMPARE(sessionStore().gender, QString());
        QCOMPARE(sessionStore().lastName, QString());
        QCOMPARE(sessionStore().firstName, QString());
    }

    void cancelAndEscapeLeaveNothing_data()
    {
        QTest::addColumn<bool>("byKey");
        QTest::newRow("cancel") << false;
        QTest::newRow("escape") << true;
    }
    void cancelAndEscapeLeaveNothing()
    {
        QFETCH(const bool, byKey);
        const Desk desk;
        desk.fill();
        if (byKey)
            QTest::keyClick(desk.lastName(), Qt::Key_Escape);
        else
            click(desk.cancel());
        QVERIFY(!desk.dialog.isVisible());
        QVERIFY(!sessionStore().newPatient);
        QCOMPARE(sessionStore().lastName, QString());
        QVERIFY(!sessionStore().dob.isValid());
    }

    void returnInAFieldPressesNothing()
    {
        const Desk desk;
        desk.fill();
        for (QWidget *field :
             QList<QWidget *>{desk.lastName(), desk.firstName(), desk.dateOfBirth()})
            QTest::keyClick(field, Qt::Key_Return);
        QVERIFY(desk.dialog.isVisible());
        QVERIFY(!sessionStore().newPatient);
    }

    void theNamesTakeNoSeparatorsAndNothingThatNoFolderMayBeCalled()
    {
        const Desk desk;
        for (QLineEdit *edit : {desk.lastName(), desk.firstName()}) {
            QTest::keyClicks(edit, u"../;M\\u:s*t?e\"r<>|"_qs);
            QCOMPARE(edit->text(), u"..Muster"_qs);
            edit->clear();
            QApplication::clipboard()->setText(u"Müller;\r\nJörg\n"_qs);
            edit->paste();
            QCOMPARE(edit->text(), u"MüllerJörg"_qs);
        }
    }

    void aNameKeepsItsLetters()
    {
        const Desk desk;
        desk.lastName()->insert(u"Şahin"_qs);
        desk.firstName()->insert(u"Łukasz 🙂"_qs);
        desk.dateOfBirth()->setDate(QDate(1950, 3, 2));
        click(desk.ok());
        QCOMPARE(sessionStore().lastName, u"Şahin"_qs);
        QCOMPARE(sessionStore().firstName, u"Łukasz 🙂"_qs);
    }

    void bothGroupsOfControlsAreRaisedByThreePoints()
    {
        const Desk desk;
        for (const QString &label :
             {u"lbl_gender"_qs, u"lbl_lastName"_qs, u"lbl_firstName"_qs, u"lbl_dateOfBirth"_qs}) {
            const QFont font = desk.dialog.findChild<QLabel *>(label)->font();
            QCOMPARE(font.family(), u"Arial"_qs);
            QCOMPARE(font.pointSize(), 12);
        }
        for (const QWidget *field : QList<QWidget *>{desk.gender(), desk.lastName(),
                                                     desk.firstName(), desk.dateOfBirth()}) {
            QCOMPARE(field->font().family(), u"Courier New"_qs);
            QCOMPARE(field->font().pointSize(), 12);
        }
    }

    void thePatientIsPrintedOnlyWhenAskedFor()
    {
        const Desk desk;
        desk.fill();
        QLoggingCategory::setFilterRules(u"kelmoran.newPatient.debug=true"_qs);
        QTest::ignoreMessage(QtDebugMsg, "Mrs.");
        QTest::ignoreMessage(QtDebugMsg, "lastName Muster");
        QTest::ignoreMessage(QtDebugMsg, "firstName Anna");
        QTest::ignoreMessage(QtDebugMsg, "date of birth 02/03/1950");
        click(desk.ok());
        QLoggingCategory::setFilterRules(QString());
        QVERIFY(sessionStore().newPatient);
    }
};

QTEST_MAIN(tst_NewPatient)
#include "tst_NewPatient.moc"
