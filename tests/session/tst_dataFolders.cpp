#include "dataFolders.h"

#include "DataRoot.h"

#include <QTest>

class tst_dataFolders : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void missingFoldersAreMade()
    {
        const DataRoot root(DataRoot::Folders::Missing);
        dataFolders::create();
        const QDir folder(root.path(QString()));
        QCOMPARE(folder.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name),
                 QStringList({u"Archives"_qs, u"Parameters"_qs, u"Results"_qs, u"bin"_qs}));
    }

    void aFolderThatIsThereIsLeftAlone()
    {
        const DataRoot root(DataRoot::Folders::Missing);
        root.write(u"Parameters/screen.pix"_qs, "kept");
        dataFolders::create();
        QCOMPARE(root.bytes(u"Parameters/screen.pix"_qs), QByteArray("kept"));
    }

    void aFileInAFoldersPlaceStopsNeitherItNorTheOthers()
    {
        const DataRoot root(DataRoot::Folders::Missing);
        root.write(u"Archives"_qs, "a file");
        dataFolders::create();
        QCOMPARE(root.bytes(u"Archives"_qs), QByteArray("a file"));
        QVERIFY(root.exists(u"Parameters"_qs));
        QVERIFY(root.exists(u"Results"_qs));
    }

    void aPathIsFolderAndNameAsTheyStand()
    {
        QCOMPARE(dataFolders::path(dataFolders::archives, u"%1"_qs), u"../Archives/%1"_qs);
        QCOMPARE(dataFolders::path(dataFolders::parameters, u"a b"_qs), u"../Parameters/a b"_qs);
        QCOMPARE(dataFolders::path(dataFolders::results, QString()), u"../Results/"_qs);
    }

    void noKeyLeadsOutOfTheArchive_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("folder");

        QTest::newRow("usual") << u"Muster Anna 02.03.1950"_qs
                               << u"../Archives/Muster Anna 02.03.1950/"_qs;
        QTest::newRow("other letters")
            << u"Şahin Łukasz 02.03.1950"_qs << u"../Archives/Şahin Łukasz 02.03.1950/"_qs;
        QTest::newRow("slashes") << u"../../etc a/b 02.03.1950"_qs
                                 << u"../Archives/.._.._etc a_b 02.03.1950/"_qs;
        QTest::newRow("absolute") << u"/etc"_qs << u"../Archives/_etc/"_qs;
        QTest::newRow("two dots") << u".."_qs << u"../Archives/_/"_qs;
        QTest::newRow("one dot") << u"."_qs << u"../Archives/_/"_qs;
        QTest::newRow("a null") << QString(u"a"_qs + QChar(u'\0') + u"b"_qs)
                                << u"../Archives/a_b/"_qs;
        QTest::newRow("300 letters")
            << QString(300, u'M') << u"../Archives/%1~303318044bd3cb6e/"_qs.arg(QString(193, u'M'));
        QTest::newRow("300 characters of three bytes")
            << QString(300, u'王')
            << u"../Archives/%1~842159054b786d7b/"_qs.arg(QString(64, u'王'));
        QTest::newRow("placeholders")
            << u"%1 %2 01.01.1950"_qs << u"../Archives/%1 %2 01.01.1950/"_qs;
    }
    void noKeyLeadsOutOfTheArchive()
    {
        QFETCH(const QString, key);
        QTEST(dataFolders::archiveOf(key), "folder");
    }

    void longKeysKeepApartAndFitIntoTheNameOfAFile()
    {
        const QString one = dataFolders::asFileName(QString(300, u'é') + u" Anna 02.03.1950"_qs);
        const QString other = dataFolders::asFileName(QString(300, u'é') + u" Anna 02.03.1951"_qs);
        QVERIFY(one != other);
        QVERIFY(one.toUtf8().size() <= 210);
        QCOMPARE(dataFolders::asFileName(one), one);
        const QString fits(210, u'M');
        QCOMPARE(dataFolders::asFileName(fits), fits);
    }

    void theSiteCodeIsTheFirstLineOfItsFile_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("code");

        QTest::newRow("one line") << QByteArray("FR01\n") << u"FR01"_qs;
        QTest::newRow("no line ending") << QByteArray("FR01") << u"FR01"_qs;
        QTest::newRow("carriage return") << QByteArray("FR01\r\nmore\r\n") << u"FR01"_qs;
        QTest::newRow("empty") << QByteArray("") << QString();
    }
    void theSiteCodeIsTheFirstLineOfItsFile()
    {
        QFETCH(const QByteArray, bytes);
        const DataRoot root;
        root.write(u"Parameters/site.txt"_qs, bytes);
        QTEST(dataFolders::readSiteCode(), "code");
    }

    void withoutItsFileTheSiteCodeIsEmpty()
    {
        const DataRoot root;
        QVERIFY(dataFolders::readSiteCode().isEmpty());
    }
};

QTEST_GUILESS_MAIN(tst_dataFolders)
#include "tst_dataFolders.moc"
