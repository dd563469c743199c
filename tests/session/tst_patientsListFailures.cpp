#include "patientsList.h"

#include "DataRoot.h"
#include "FullDisk.h"

#include <QTest>

#include <cerrno>

#include <sys/syscall.h>
#include <unistd.h>

// Whatever fails, the list of the patients is never lost.

namespace {

const QString listFile = u"Parameters/patients_list.txt"_qs;
const QString copyFile = u"bin/_patients_list.txt"_qs;
const QByteArray list = "Mrs.;Muster;Anna;02.03.1950;1;2;3;4;5;6;7;51;52;53\r\n"_qba
                        "Mr.;Beispiel;Bruno;11.12.1948;0;0;0;0;0;0;0;0;0;0\r\n"_qba;
const QByteArray rewrittenList = "Mrs.;Muster;Anna;02.03.1950;2;2;3;4;5;6;7;51;52;53\r\n"_qba
                                 "Mr.;Beispiel;Bruno;11.12.1948;0;0;0;0;0;0;0;0;0;0\r\n"_qba;

QString rewrite()
{
    return patientsList::rewritePatientLine(u"Muster Anna 02.03.1950"_qs,
                                            {{patientsList::SessionT1, 2}});
}

QString append()
{
    return patientsList::append(u"Mrs."_qs, u"Castel"_qs, u"Clara"_qs, QDate(1961, 6, 30));
}

int s_failingReads = 0; ///< so many of the next reads fail

} // namespace

/// In place of the system's own.
extern "C" ssize_t read(int file, void *into, size_t size)
{
    if (s_failingReads > 0) {
        --s_failingReads;
        errno = EIO;
        return -1;
    }
    return ::syscall(SYS_read, file, into, size);
}

class tst_patientsListFailures : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aListThatIsMissingIsNotReplacedByAnEmptyOne()
    {
        const DataRoot root;
        QVERIFY(!rewrite().isEmpty());
        QVERIFY(!root.exists(listFile));
        QVERIFY(!root.exists(copyFile));
    }

    void aListThatCannotBeReadStays()
    {
        const DataRoot root;
        root.block(listFile);
        QVERIFY(!rewrite().isEmpty());
        QVERIFY(!append().isEmpty());
        QVERIFY(!patientsList::read().has_value());
        QVERIFY(patientsList::find(u"Muster Anna 02.03.1950"_qs).isEmpty());
        patientsList::createIfMissing();
        QVERIFY(QFileInfo(root.path(listFile)).isDir());
        QVERIFY(root.exists(listFile + u"/in the way"_qs));
        QVERIFY(!root.exists(copyFile));
    }

    void withoutItsFolderThereIsNoList()
    {
        const DataRoot root(DataRoot::Folders::Missing);
        patientsList::createIfMissing();
        QVERIFY(!append().isEmpty());
        QVERIFY(!rewrite().isEmpty());
        QVERIFY(!root.exists(u"Parameters"_qs));
    }

    void whenTheCopyCannotBeMadeTheListStays()
    {
        const DataRoot root;
        root.write(listFile, list);
        root.block(copyFile);
        QVERIFY(!rewrite().isEmpty());
        QCOMPARE(root.bytes(listFile), list);
        root.unblock(copyFile);
        QCOMPARE(rewrite(), QString());
        QCOMPARE(root.bytes(listFile), rewrittenList);
    }

    void whenTheDiskIsFullTheListStaysAndNoHalfCopyIsLeft()
    {
        const DataRoot root;
        root.write(listFile, list);
        QString error;
        {
            const FullDisk disk(60);
            error = rewrite();
        }
        QVERIFY(!error.isEmpty());
        QCOMPARE(root.bytes(listFile), list);
        QVERIFY(!root.exists(copyFile));
    }

    void whenTheDiskIsFullNoHalfPatientIsRegistered()
    {
        const DataRoot root;
        root.write(listFile, list);
        QString error;
        {
            const FullDisk disk(rlim_t(list.size()) + 10);
            error = append();
        }
        QVERIFY(!error.isEmpty());
        QCOMPARE(root.bytes(listFile), list);
        QCOMPARE(append(), QString());
        QCOMPARE(root.bytes(listFile),
                 list + "Mrs.;Castel;Clara;30.06.1961;0;0;0;0;0;0;0;0;0;0\r\n");
    }

    void aRegistrationDoesNotWriteIntoTheListThatStands()
    {
        const DataRoot root;
        root.write(listFile, list);
        QFile former(root.path(listFile));
        QVERIFY(former.open(QIODevice::ReadOnly));
        QCOMPARE(append(), QString());
        QCOMPARE(former.readAll(), list); // a kill in the middle of the write leaves this one
        QCOMPARE(root.bytes(listFile),
                 list + "Mrs.;Castel;Clara;30.06.1961;0;0;0;0;0;0;0;0;0;0\r\n");
    }

    void whenTheDiskIsFullThePatientBeforeAnEmptyLineIsNotRegistered()
    {
        const DataRoot root;
        root.write(listFile, list + "\r\n");
        QString error;
        {
            const FullDisk disk(rlim_t(list.size()) + 10);
            error = append();
        }
        QVERIFY(!error.isEmpty());
        QCOMPARE(root.bytes(listFile), list + "\r\n");
    }

    void aListOnAnotherFileSystemIsReplacedByWayOfACopyBesideIt()
    {
        const DataRoot root(DataRoot::Folders::Missing);
        const QTemporaryDir memory(u"/dev/shm/kelmoran-XXXXXX"_qs);
        QVERIFY(memory.isValid());
        QVERIFY(QFile::link(memory.path(), root.path(u"Parameters"_qs)));
        root.write(listFile, list);
        QCOMPARE(rewrite(), QString());
        QCOMPARE(root.bytes(listFile), rewrittenList);
        QVERIFY(!root.exists(copyFile));
        QVERIFY(!root.exists(u"Parameters/_patients_list.txt"_qs));
    }

    void numbersThatDontComeFromAPatientsLineAreNotWrittenOverIt()
    {
        const DataRoot root;
        const QString anna = u"Muster Anna 02.03.1950"_qs;
        sessionStore().patientName = anna;
        root.block(listFile);
        QVERIFY(patientsList::find(u"Beispiel Bruno 11.12.1948"_qs).isEmpty());
        QCOMPARE(sessionStore().unread, QString()); // somebody else's
        QVERIFY(patientsList::find(anna).isEmpty());
        QVERIFY(!sessionStore().unread.isEmpty());

        root.unblock(listFile); // too late
        root.write(listFile, list);
        QCOMPARE(rewrite(), sessionStore().unread);
        QCOMPARE(root.bytes(listFile), list);
        QVERIFY(!root.exists(copyFile));

        sessionStore().unread.clear(); // chosen once more
        QCOMPARE(patientsList::find(anna).size(), int(patientsList::FieldCount));
        QCOMPARE(rewrite(), QString());
        QCOMPARE(root.bytes(listFile), rewrittenList);
    }

    void aDiskThatFailsOnceIsAskedAgain_data()
    {
        QTest::addColumn<int>("failures");
        QTest::addColumn<bool>("found");
        QTest::newRow("once") << 1 << true;
        QTest::newRow("for good") << 2 << false;
    }

    void aDiskThatFailsOnceIsAskedAgain()
    {
        QFETCH(int, failures);
        QFETCH(bool, found);
        const DataRoot root;
        root.write(listFile, list);
        const QString bruno = u"Beispiel Bruno 11.12.1948"_qs;
        sessionStore().patientName = bruno;
        s_failingReads = failures;
        QCOMPARE(!patientsList::find(bruno).isEmpty(), found);
        QCOMPARE(sessionStore().unread.isEmpty(), found);
        QCOMPARE(s_failingReads, 0);
        s_failingReads = failures;
        QCOMPARE(patientsList::read().has_value(), found);
        QCOMPARE(patientsList::read()->size(), 2);
    }

    void aListThatIsALinkIntoNowhereIsNotRead()
    {
        const DataRoot root;
        QVERIFY(QFile::link(root.path(u"nowhere/list.txt"_qs), root.path(listFile)));
        QVERIFY(!patientsList::read().has_value());
        QVERIFY(!rewrite().isEmpty());
        QVERIFY(QFileInfo(root.path(listFile)).isSymLink());
    }
};

QTEST_GUILESS_MAIN(tst_patientsListFailures)
#include "tst_patientsListFailures.moc"
