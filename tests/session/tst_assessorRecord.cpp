#include "assessorRecord.h"

#include "DataRoot.h"
#include "FullDisk.h"

#include <QTest>

namespace {
const QByteArray someRecord = "Dr.;Muster;Anna;Clinic;High Street 1;1000;Town;Country\n"_qba;

QStringList filesIn(const DataRoot &root)
{
    return QDir(root.path(u"Parameters"_qs)).entryList(QDir::Files | QDir::Hidden);
}
} // namespace

class tst_assessorRecord : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void withoutAFileThereIsNoRecord()
    {
        const DataRoot root;
        QVERIFY(!assessorRecord::read().has_value());
    }

    void theFieldsOfTheFirstLineAreRead_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QStringList>("fields");

        const QStringList eight{u"Dr."_qs,           u"Muster"_qs, u"Anna"_qs, u"Clinic"_qs,
                                u"High Street 1"_qs, u"1000"_qs,   u"Town"_qs, u"Country"_qs};
        QTest::newRow("as written") << someRecord << eight;
        QTest::newRow("no line ending") << someRecord.chopped(1) << eight;
        QTest::newRow("carriage return") << someRecord.chopped(1) + "\r\n" << eight;
        QTest::newRow("a second line") << someRecord + "Mr.;Other\n" << eight;
        QTest::newRow("short") << QByteArray("Mrs.;Muster\n")
                               << QStringList{u"Mrs."_qs, u"Muster"_qs};
        QTest::newRow("empty file") << QByteArray("") << QStringList{QString()};
        QTest::newRow("other letters") << QByteArray("Prof.;\xC5\x9E"
                                                     "ahin;\xC5\x81ukasz\n")
                                       << QStringList{u"Prof."_qs, u"Şahin"_qs, u"Łukasz"_qs};
    }
    void theFieldsOfTheFirstLineAreRead()
    {
        QFETCH(const QByteArray, bytes);
        QFETCH(const QStringList, fields);
        const DataRoot root;
        root.write(u"Parameters/assessor.txt"_qs, bytes);
        const auto record = assessorRecord::read();
        QVERIFY(record.has_value());
        QCOMPARE(*record, fields);
    }

    void aFieldBeyondTheRecordIsEmpty()
    {
        const QStringList record{u"Mrs."_qs, u"Muster"_qs};
        QCOMPARE(assessorRecord::field(record, assessorRecord::LastName), u"Muster"_qs);
        QCOMPARE(assessorRecord::field(record, assessorRecord::Country), QString());
        QCOMPARE(assessorRecord::field({}, assessorRecord::Title), QString());
    }

    void aPersonIsAddressedByTitleFirstNameLastName()
    {
        QCOMPARE(assessorRecord::fullName({u"Dr."_qs, u"Muster"_qs, u"Anna"_qs}),
                 u"Dr. Anna Muster"_qs);
        QCOMPARE(assessorRecord::fullName({u"%2"_qs, u"%3"_qs, u"%1"_qs}), u"%2 %1 %3"_qs);
        QCOMPARE(assessorRecord::fullName({}), u"  "_qs);
    }

    void theRecordIsOneLineAndKeepsItsLetters()
    {
        const DataRoot root;
        const QStringList record{u"Prof."_qs,    u"Œuvrard"_qs, u"Łukasz"_qs, u"Şehir"_qs,
                                 u"Straße 5"_qs, u"75001"_qs,   u"Zürich"_qs, u"日本"_qs};
        QCOMPARE(assessorRecord::write(record), QString());
        QCOMPARE(root.bytes(u"Parameters/assessor.txt"_qs),
                 u"Prof.;Œuvrard;Łukasz;Şehir;Straße 5;75001;Zürich;日本\n"_qs.toUtf8());
        QCOMPARE(assessorRecord::read().value_or(QStringList()), record);
    }

    void aLongerRecordLeavesNothingBehind()
    {
        const DataRoot root;
        root.write(u"Parameters/assessor.txt"_qs, someRecord + "second line\n");
        QCOMPARE(assessorRecord::write({u"Mr."_qs, u"A"_qs}), QString());
        QCOMPARE(root.bytes(u"Parameters/assessor.txt"_qs), QByteArray("Mr.;A\n"));
        QCOMPARE(filesIn(root), QStringList{u"assessor.txt"_qs});
    }

    void aRecordThatCannotBeOpenedIsTold()
    {
        const DataRoot root;
        root.block(u"Parameters/assessor.txt"_qs);
        QVERIFY(!assessorRecord::write({u"Mr."_qs}).isEmpty());
        QVERIFY(filesIn(root).isEmpty());
        QVERIFY(!assessorRecord::read().has_value());
    }

    void onAFullDiskTheOldRecordStays()
    {
        const DataRoot root;
        root.write(u"Parameters/assessor.txt"_qs, someRecord);
        QString error;
        {
            const FullDisk disk(4);
            error = assessorRecord::write({u"Mrs."_qs, u"Other"_qs, u"Berta"_qs});
        }
        QVERIFY(!error.isEmpty());
        QCOMPARE(root.bytes(u"Parameters/assessor.txt"_qs), someRecord);
        QCOMPARE(filesIn(root), QStringList{u"assessor.txt"_qs});
    }
};

QTEST_GUILESS_MAIN(tst_assessorRecord)
#include "tst_assessorRecord.moc"
