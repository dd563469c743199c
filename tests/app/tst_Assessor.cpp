#include "Assessor.h"

#include "DataRoot.h"
#include "FullDisk.h"

#include <QClipboard>
#include <QLoggingCategory>
#include <QTest>

namespace {

const QString assessorFile = u"Parameters/assessor.txt"_qs;
const QByteArray someRecord = "Dr.;Muster;Anna;Clinic;High Street 1;1000;Town;Country\n"_qba;

/// The line edits that are filed, in the order of the entry path.
QStringList fieldNames()
{
    return {u"le_lastName"_qs,   u"le_firstName"_qs, u"le_institution"_qs, u"le_street"_qs,
            u"le_postalCode"_qs, u"le_city"_qs,      u"le_country"_qs};
}

/// The dialog and an assessor at the keyboard.
struct Desk
{
    DataRoot root;
    Boxes boxes;
    Assessor dialog;

    void open()
    {
        QCoreApplication::processEvents();
        dialog.goAssessor();
        QCoreApplication::processEvents(); // the window becomes the active one
    }

    QComboBox *title() const { return dialog.findChild<QComboBox *>(u"cob_title"_qs); }
    QLineEdit *field(const QString &name) const { return dialog.findChild<QLineEdit *>(name); }
    void click(const QString &button) const
    {
        QTest::mouseClick(dialog.findChild<QPushButton *>(button), Qt::LeftButton);
    }

    QStringList texts() const
    {
        QStringList all;
        const QStringList names = fieldNames();
        for (const QString &name : names)
            all.append(field(name)->text());
        return all;
    }
};

} // namespace

class tst_Assessor : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void withoutAFileItOpensEmpty()
    {
        Desk desk;
        desk.field(u"le_city"_qs)->setText(u"left over"_qs);
        desk.title()->setCurrentIndex(2);
        desk.open();
        QVERIFY(desk.dialog.isVisible());
        QCOMPARE(desk.dialog.windowTitle(), u"Assessor"_qs);
        QCOMPARE(desk.title()->currentIndex(), -1);
        QCOMPARE(desk.texts().join(u""_qs), QString());
        QCOMPARE(QApplication::focusWidget(), desk.title());
    }

    void okWithoutAFileMakesOneWithAnEmptyTitle()
    {
        Desk desk;
        desk.open();
        desk.click(u"pb_ok"_qs);
        QCOMPARE(desk.root.bytes(assessorFile), QByteArray(";;;;;;;\n"));
        QVERIFY(sessionStore().assessor);
        QVERIFY(!desk.dialog.isVisible());
    }

    void theRecordIsShownAsItIsFiled_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<int>("title");
        QTest::addColumn<QStringList>("texts");

        const QStringList all{u"Muster"_qs, u"Anna"_qs, u"Clinic"_qs, u"High Street 1"_qs,
                              u"1000"_qs,   u"Town"_qs, u"Country"_qs};
        QTest::newRow("Mr.") << QByteArray(someRecord).replace("Dr.", "Mr.") << 0 << all;
        QTest::newRow("Mrs.") << QByteArray(someRecord).replace("Dr.", "Mrs.") << 1 << all;
        QTest::newRow("Dr.") << someRecord << 2 << all;
        QTest::newRow("Prof.") << QByteArray(someRecord).replace("Dr.", "Prof.") << 3 << all;
        QTest::newRow("a title of a translated form")
            << QByteArray(someRecord).replace("Dr.", "Herr") << -1 << all;
        QTest::newRow("a title in other case")
            << QByteArray(someRecord).replace("Dr.", "dr.") << -1 << all;
        QTest::newRow("a second line") << someRecord + "Mr.;Other\n" << 2 << all;
        QTest::newRow("a short record") << QByteArray("Mrs.;Muster\n") << 1
                                        << QStringList{u"Muster"_qs, {}, {}, {}, {}, {}, {}};
        QTest::newRow("an empty file")
            << QByteArray("") << -1 << QStringList{{}, {}, {}, {}, {}, {}, {}};
        QTest::newRow("a semicolon shifts the fields")
            << QByteArray("Mr.;Mus;ter;Anna;Clinic;High Street 1;1000;Town;Country\n") << 0
            << QStringList{u"Mus"_qs,           u"ter"_qs,  u"Anna"_qs, u"Clinic"_qs,
                           u"High Street 1"_qs, u"1000"_qs, u"Town"_qs};
        QTest::newRow("control characters, made by hand")
            << QByteArray("Mr.;Mus\tter;An\x07na\n") << 0
            << QStringList{u"Mus\tter"_qs, u"An\u0007na"_qs, {}, {}, {}, {}, {}};
    }
    void theRecordIsShownAsItIsFiled()
    {
        QFETCH(const QByteArray, bytes);
        Desk desk;
        desk.root.write(assessorFile, bytes);
        desk.open();
        QTEST(desk.title()->currentIndex(), "title");
        QTEST(desk.texts(), "texts");
        QCOMPARE(QApplication::focusWidget(), desk.title());
    }

    void aNewOpeningForgetsWhatWasTypedAndCancelled()
    {
        Desk desk;
        desk.root.write(assessorFile, someRecord);
        desk.open();
        desk.field(u"le_lastName"_qs)->setText(u"Other"_qs);
        desk.title()->setCurrentIndex(0);
        desk.click(u"pb_cancel"_qs);
        QVERIFY(!desk.dialog.isVisible());
        QVERIFY(!sessionStore().assessor);
        QCOMPARE(desk.root.bytes(assessorFile), someRecord);
        desk.open();
        QCOMPARE(desk.field(u"le_lastName"_qs)->text(), u"Muster"_qs);
        QCOMPARE(desk.title()->currentIndex(), 2);
    }

    void theEntryPathLeadsThroughTheFields()
    {
        Desk desk;
        desk.open();
        Q_EMIT desk.title()->activated(0);
        const QStringList names = fieldNames();
        for (const QString &name : names) {
            QCOMPARE(QApplication::focusWidget(), desk.field(name));
            QTest::keyClick(desk.field(name), Qt::Key_Return);
        }
        QCOMPARE(QApplication::focusWidget(), desk.field(u"le_country"_qs)); // the path ends here
        QVERIFY(desk.dialog.isVisible());
        QVERIFY(!desk.root.exists(assessorFile));
    }

    void okFilesTheRecord()
    {
        Desk desk;
        desk.root.write(assessorFile, someRecord + "second line\n");
        desk.open();
        desk.title()->setCurrentIndex(1);
        desk.field(u"le_lastName"_qs)->setText(u"Œuvrard"_qs);
        desk.field(u"le_firstName"_qs)->setText(u"Łucja"_qs);
        desk.field(u"le_city"_qs)->setText(u"İzmir 100 %1"_qs);
        desk.click(u"pb_ok"_qs);
        QVERIFY(!desk.dialog.isVisible());
        QVERIFY(sessionStore().assessor);
        QCOMPARE(
            desk.root.bytes(assessorFile),
            u"Mrs.;Œuvrard;Łucja;Clinic;High Street 1;1000;İzmir 100 %1;Country\n"_qs.toUtf8());
    }

    void theExtraFirstNameIsNeitherReadNorFiled()
    {
        Desk desk;
        desk.root.write(assessorFile, someRecord);
        desk.open();
        QCOMPARE(desk.field(u"le_firstName_2"_qs)->text(), QString());
        desk.field(u"le_firstName_2"_qs)->setText(u"Berta"_qs);
        desk.click(u"pb_ok"_qs);
        QCOMPARE(desk.root.bytes(assessorFile), someRecord);
    }

    void noFieldTakesASeparator()
    {
        Desk desk;
        desk.open();
        const QStringList names = fieldNames();
        for (const QString &name : names) {
            QTest::keyClicks(desk.field(name), u"c/o: A;B"_qs);
            QCOMPARE(desk.field(name)->text(), u"c/o: AB"_qs);
            desk.field(name)->clear();
            QApplication::clipboard()->setText(u"High Street 1;\r\nFlat\t2\n"_qs);
            desk.field(name)->paste();
            QCOMPARE(desk.field(name)->text(), u"High Street 1Flat2"_qs);
        }
    }

    void aRecordThatCannotBeFiledLosesNothingTyped()
    {
        Desk desk;
        desk.open();
        desk.field(u"le_lastName"_qs)->setText(u"Muster"_qs);
        desk.root.block(assessorFile);
        desk.click(u"pb_ok"_qs);
        const auto told = desk.boxes.take();
        QCOMPARE(told.size(), 1);
        QCOMPARE(int(told.at(0).kind), int(messages::Kind::Warning));
        QCOMPARE(told.at(0).title, u"Error"_qs);
        QVERIFY(told.at(0).text.startsWith(u"Failed to open assessor.txt\n"));
        QVERIFY(told.at(0).text.size() > u"Failed to open assessor.txt\n"_qs.size());
        QCOMPARE(desk.boxes.parent(), &desk.dialog);
        QVERIFY(!sessionStore().assessor);
        QVERIFY(desk.dialog.isVisible());
        QCOMPARE(desk.field(u"le_lastName"_qs)->text(), u"Muster"_qs);

        desk.root.unblock(assessorFile);
        desk.click(u"pb_ok"_qs);
        QCOMPARE(desk.root.bytes(assessorFile), QByteArray(";Muster;;;;;;\n"));
        QVERIFY(sessionStore().assessor);
        QVERIFY(!desk.dialog.isVisible());
    }

    void aRecordThatCannotBeReadIsOnlyReplacedByOk()
    {
        Desk desk;
        desk.root.block(assessorFile);
        desk.open();
        QCOMPARE(desk.texts().join(u""_qs), QString());
        desk.field(u"le_lastName"_qs)->setText(u"Muster"_qs);
        desk.click(u"pb_cancel"_qs);
        QVERIFY(desk.root.exists(assessorFile + u"/in the way"_qs));
        QVERIFY(!sessionStore().assessor);
    }

    void onAFullDiskTheOldRecordStays()
    {
        Desk desk;
        desk.root.write(assessorFile, someRecord);
        desk.open();
        desk.field(u"le_lastName"_qs)->setText(u"Other"_qs);
        {
            const FullDisk disk(4);
            desk.click(u"pb_ok"_qs);
        }
        QCOMPARE(desk.boxes.take().size(), 1);
        QCOMPARE(desk.root.bytes(assessorFile), someRecord);
        QVERIFY(desk.dialog.isVisible());
        QVERIFY(!sessionStore().assessor);
    }

    void bothGroupsOfControlsAreRaisedByThreePoints()
    {
        const Desk desk;
        const auto labels =
            desk.dialog.findChildren<QLabel *>(QString(), Qt::FindDirectChildrenOnly);
        QCOMPARE(labels.size(), 9);
        for (const QLabel *label : labels) {
            QCOMPARE(label->font().family(), u"Arial"_qs);
            QCOMPARE(label->font().pointSize(), 12);
        }
        const QStringList edits = fieldNames() + QStringList{u"le_firstName_2"_qs};
        for (const QString &name : edits)
            QCOMPARE(desk.field(name)->font(), desk.title()->font());
        QCOMPARE(desk.title()->font().family(), u"Courier New"_qs);
        QCOMPARE(desk.title()->font().pointSize(), 12);
    }

    void theRecordIsPrintedOnlyWhenAskedFor()
    {
        Desk desk;
        desk.root.write(assessorFile, someRecord);
        desk.open();
        QLoggingCategory::setFilterRules(u"kelmoran.assessor.debug=true"_qs);
        for (const char *line :
             {"Dr.", "lastName Muster", "firstName Anna", "institution Clinic",
              "street High Street 1", "postalCode 1000", "city Town", "country Country"})
            QTest::ignoreMessage(QtDebugMsg, line);
        desk.click(u"pb_ok"_qs);
        QLoggingCategory::setFilterRules(QString());
        QVERIFY(sessionStore().assessor);
    }
};

QTEST_MAIN(tst_Assessor)
#include "tst_Assessor.moc"
