#include "FullDisk.h"
#include "wholeFile.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

class tst_wholeFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aFileIsMadeAndReplaced();
    void aFullDiskLeavesTheOldFile();
    void aFolderInItsPlaceIsTold();
    void aMissingFolderIsTold();
    void whatTheDiskDoesNotTakeIsTold();

private:
    QString path(const char *name) const { return m_folder.filePath(QString::fromLatin1(name)); }
    QByteArray bytes(const char *name) const
    {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("none");
    }

    QTemporaryDir m_folder;
};

void tst_wholeFile::aFileIsMadeAndReplaced()
{
    QCOMPARE(wholeFile::replace(path("a"), "first"), QString());
    QCOMPARE(bytes("a"), "first");
    QCOMPARE(wholeFile::replace(path("a"), "2"), QString());
    QCOMPARE(bytes("a"), "2");
    QCOMPARE(QDir(m_folder.path()).entryList(QDir::Files | QDir::Hidden).size(), 1);
}

void tst_wholeFile::aFullDiskLeavesTheOldFile()
{
    QCOMPARE(wholeFile::replace(path("full"), "the old file"), QString());
    QString error;
    {
        const FullDisk disk(4);
        error = wholeFile::replace(path("full"), "a file for which there is no room");
    }
    QVERIFY(!error.isEmpty());
    QCOMPARE(bytes("full"), "the old file");
}

void tst_wholeFile::aFolderInItsPlaceIsTold()
{
    QVERIFY(QDir(m_folder.path()).mkdir(QStringLiteral("folder")));
    QVERIFY(!wholeFile::replace(path("folder"), "x").isEmpty());
    QVERIFY(QDir(path("folder")).exists());
}

void tst_wholeFile::aMissingFolderIsTold()
{
    QVERIFY(!wholeFile::replace(path("missing/file"), "x").isEmpty());
}

void tst_wholeFile::whatTheDiskDoesNotTakeIsTold()
{
    QFile file(path("taken"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(wholeFile::onDisk(file), QString());
    QFile noDisk(QStringLiteral("/dev/null")); // no disk is behind it
    QVERIFY(noDisk.open(QIODevice::WriteOnly));
    QVERIFY(!wholeFile::onDisk(noDisk).isEmpty());
}

QTEST_MAIN(tst_wholeFile)
#include "tst_wholeFile.moc"
