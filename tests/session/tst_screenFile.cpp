#include "screenFile.h"

#include "DataRoot.h"
#include "FullDisk.h"

#include <QTest>

namespace {

const QString screenPix = u"Parameters/screen.pix"_qs;

/// Can be opened, but its first bytes can't be read: nothing lies at this address of the process.
const QString unreadable = u"/proc/self/mem"_qs;

/// 270, 320, 120 Hz
const QByteArray calibrated = "\0\0\1\x0e\0\0\1\x40\0\0\0\1"_qba;

void setStore(int horzPixel, int vertPixel, int frequency)
{
    sessionStore().horzPixel = horzPixel;
    sessionStore().vertPixel = vertPixel;
    sessionStore().frequency = frequency;
}

QList<int> store()
{
    return {sessionStore().horzPixel, sessionStore().vertPixel, sessionStore().frequency};
}

} // namespace

class tst_screenFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theFileHoldsThreeBigEndianNumbers()
    {
        const DataRoot root;
        setStore(270, 320, 1);
        QCOMPARE(screenFile::write(), QString());
        QCOMPARE(root.bytes(screenPix), calibrated);
    }

    void whatIsWrittenIsReadAgain_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QList<int>>("numbers");

        QTest::newRow("calibrated") << calibrated << QList<int>{270, 320, 1};
        QTest::newRow("bytes behind") << calibrated + "more" << QList<int>{270, 320, 1};
        QTest::newRow("frequency missing") << calibrated.first(8) << QList<int>{270, 320, 0};
        QTest::newRow("cut in a number") << calibrated.first(6) << QList<int>{270, 0, 0};
        QTest::newRow("empty") << QByteArray("") << QList<int>{0, 0, 0};
        QTest::newRow("negative") << QByteArray(12, '\xff') << QList<int>{-1, -1, -1};
    }
    void whatIsWrittenIsReadAgain()
    {
        QFETCH(const QByteArray, bytes);
        const DataRoot root;
        root.write(screenPix, bytes);
        setStore(1, 2, 3);
        QCOMPARE(screenFile::read(), QString());
        QTEST(store(), "numbers");
    }

    void withoutAFileTheStoreStays()
    {
        const DataRoot root;
        setStore(1, 2, 3);
        QVERIFY(!screenFile::exists());
        QVERIFY(!screenFile::read().isEmpty());
        QCOMPARE(store(), QList<int>({1, 2, 3}));
        root.write(screenPix, {});
        QVERIFY(screenFile::exists());
    }

    void aFolderInItsPlaceIsTold()
    {
        const DataRoot root;
        root.block(screenPix);
        setStore(1, 2, 3);
        QVERIFY(!screenFile::exists());
        QVERIFY(!screenFile::read().isEmpty());
        QVERIFY(!screenFile::write().isEmpty());
        QCOMPARE(store(), QList<int>({1, 2, 3}));
    }

    void anErrorOfTheDiskLeavesTheStore()
    {
        const DataRoot root;
        QVERIFY(QFile::link(unreadable, root.path(screenPix)));
        setStore(1, 2, 3);
        QVERIFY(screenFile::exists());
        QCOMPARE(screenFile::read(), u"Input/output error"_qs);
        QCOMPARE(store(), QList<int>({1, 2, 3}));
    }

    void withoutItsFolderNothingIsWritten()
    {
        const DataRoot root(DataRoot::Folders::Missing);
        QVERIFY(!screenFile::write().isEmpty());
        QVERIFY(!root.exists(u"Parameters"_qs));
    }

    void onAFullDiskTheOldFileStays()
    {
        const DataRoot root;
        root.write(screenPix, calibrated);
        setStore(1, 2, 0);
        QString error;
        {
            const FullDisk disk(8);
            error = screenFile::write();
        }
        QVERIFY(!error.isEmpty());
        QCOMPARE(root.bytes(screenPix), calibrated);
        QCOMPARE(QDir(root.path(u"Parameters"_qs)).entryList(QDir::Files | QDir::Hidden),
                 QStringList{u"screen.pix"_qs});
    }
};

QTEST_GUILESS_MAIN(tst_screenFile)
#include "tst_screenFile.moc"
