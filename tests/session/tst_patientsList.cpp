#include "patientsList.h"

#include "DataRoot.h"

#include <QTest>

namespace {

const QString listFile = u"Parameters/patients_list.txt"_qs;
const QByteArray anna = "Mrs.;Muster;Anna;02.03.1950;1;2;3;4;5;6;7;51;52;53\r\n"_qba;
const QByteArray bruno = "Mr.;Beispiel;Bruno;11.12.1948;0;0;0;0;0;0;0;0;0;0\r\n"_qba;
const QByteArray clara = "Mrs.;Castel;Clara;30.06.1961;9;9;9;9;9;9;9;99;99;99\r\n"_qba;
const QString annasKey = u"Muster Anna 02.03.1950"_qs;

QStringList annasFields()
{
    return QString::fromUtf8(anna.chopped(2)).split(u';');
}

QByteArray onlyLineFeeds(QByteArray lines)
{
    return lines.replace("\r\n", "\n");
}

QStringList keysOfList()
{
    QStringList keys;
    const auto patients = patientsList::read().value_or(QList<QStringList>());
    for (const QStringList &fields : patients)
        keys.append(patientsList::key(fields));
    return keys;
}

} // namespace

class tst_patientsList : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aKeyIsLastNameFirstNameAndDateOfBirth()
    {
        QCOMPARE(patientsList::key(u"Muster"_qs, u"Anna"_qs, QDate(1950, 3, 2)), annasKey);
        QCOMPARE(patientsList::key(annasFields()), annasKey);
        QCOMPARE(patientsList::key(u"%2"_qs, u"%3"_qs, QDate(1950, 3, 2)), u"%2 %3 02.03.1950"_qs);
        QCOMPARE(patientsList::key(u""_qs, u""_qs, QDate()), u"  "_qs);
        QCOMPARE(patientsList::key(QStringList{u"Mr."_qs, u"Short"_qs}), u"Short  "_qs);
    }

    void aMissingListIsMadeEmpty()
    {
        const DataRoot root;
        QVERIFY(!patientsList::read().has_value());
        patientsList::createIfMissing();
        QVERIFY(root.exists(listFile));
        QCOMPARE(root.bytes(listFile), QByteArray(""));
        QVERIFY(patientsList::read().has_value());
    }

    void aListThatIsThereIsNotMadeAnew()
    {
        const DataRoot root;
        root.write(listFile, anna);
        patientsList::createIfMissing();
        QCOMPARE(root.bytes(listFile), anna);
    }

    void theListIsReadUpToItsFirstEmptyLine_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QStringList>("keys");

        const QStringList two{annasKey, u"Beispiel Bruno 11.12.1948"_qs};
        QTest::newRow("empty") << QByteArray("") << QStringList();
        QTest::newRow("as written") << anna + bruno << two;
        QTest::newRow("line feeds only") << onlyLineFeeds(anna + bruno) << two;
        QTest::newRow("no final line ending") << anna + bruno.chopped(2) << two;
        QTest::newRow("an empty line") << anna + bruno + "\r\n" + clara << two;
        QTest::newRow("an empty line of a line feed") << anna + bruno + "\n" + clara << two;
        QTest::newRow("an empty line at the start") << "\r\n" + anna << QStringList();
        QTest::newRow("the same patient twice") << anna + anna << QStringList{annasKey, annasKey};
        QTest::newRow("a short line")
            << QByteArray("Mr.;Short\r\n") + bruno << QStringList{u"Short  "_qs, two.at(1)};
        QTest::newRow("a line of one blank")
            << QByteArray(" \r\n") + bruno << QStringList{u"  "_qs, two.at(1)};
        QTest::newRow("slashes") << QByteArray("Mr.;../..;a/b;01.01.1950\r\n")
                                 << QStringList{u"../.. a/b 01.01.1950"_qs};
        QTest::newRow("a semicolon in a name shifts the fields")
            << QByteArray("Mr.;Mus;ter;Anna;02.03.1950;0\r\n") << QStringList{u"Mus ter Anna"_qs};
        QTest::newRow("other letters") << u"Mr.;Şahin;Łukasz;01.01.1950\r\n"_qs.toUtf8()
                                       << QStringList{u"Şahin Łukasz 01.01.1950"_qs};
        QTest::newRow("a byte-order mark") << "\xEF\xBB\xBF" + anna << QStringList{annasKey};
    }
    void theListIsReadUpToItsFirstEmptyLine()
    {
        QFETCH(const QByteArray, bytes);
        const DataRoot root;
        root.write(listFile, bytes);
        QTEST(keysOfList(), "keys");
        QCOMPARE(root.bytes(listFile), bytes);
    }

    void aPatientIsFoundByTheKey()
    {
        const DataRoot root;
        root.write(listFile, bruno + anna + clara);
        QCOMPARE(patientsList::find(annasKey), annasFields());
        QVERIFY(patientsList::find(u"Muster Anna 03.03.1950"_qs).isEmpty());
        QVERIFY(patientsList::find(QString()).isEmpty());
    }

    void aKeyFindsOnlyTheLineWhoseFieldsMakeIt_data()
    {
        QTest::addColumn<QByteArray>("line");
        QTest::addColumn<QString>("sought");
        QTest::addColumn<bool>("found");

        QTest::newRow("the same") << anna << annasKey << true;
        QTest::newRow("blanks within the fields")
            << QByteArray("Mr.;van der;Berg Jan;02.03.1950\r\n")
            << u"van der Berg Jan 02.03.1950"_qs << true;
        QTest::newRow("a longer date")
            << QByteArray("Mrs.;Muster;Anna;02.03.19501;0\r\n") << annasKey << false;
        QTest::newRow("a field too many")
            << QByteArray("Mrs.;Muster;;Anna;02.03.1950\r\n") << annasKey << false;
        QTest::newRow("a field too few")
            << QByteArray("Mrs.;Muster Anna;02.03.1950;0\r\n") << annasKey << false;
        QTest::newRow("a short line") << QByteArray("Mr.;Short\r\n") << u"Short  "_qs << true;
        QTest::newRow("a line without a separator")
            << QByteArray("Mr. and Mrs.\r\n") << u"  "_qs << true;
        QTest::newRow("a blank for a name") << QByteArray("; ; ;\r\n") << u"    "_qs << true;
        QTest::newRow("other letters") << u"Mr.;Şahin;Łukasz;01.01.1950\r\n"_qs.toUtf8()
                                       << u"Şahin Łukasz 01.01.1950"_qs << true;
        QTest::newRow("no UTF-8") << QByteArray("Mr.;M\xFCller;Jan;01.01.1950;0\r\n")
                                  << u"Müller Jan 01.01.1950"_qs << true;
        QTest::newRow("no UTF-8 behind the names")
            << QByteArray("Mr.;Berg;Jan;01.01.1950;\xFC\r\n") << u"Berg Jan 01.01.1950"_qs << true;
        QTest::newRow("half a character")
            << QByteArray("Mr.;\xEF\xBF\xBD;Jan;01.01.1950\r\n")
            << QString(QChar(0xD800)) + u" Jan 01.01.1950"_qs << false;
        QTest::newRow("a byte-order mark") << "\xEF\xBB\xBF" + anna << annasKey << true;
    }
    void aKeyFindsOnlyTheLineWhoseFieldsMakeIt()
    {
        QFETCH(const QByteArray, line);
        QFETCH(const QString, sought);
        QFETCH(const bool, found);
        const DataRoot root;
        root.write(listFile, bruno + line + clara);
        QCOMPARE(!patientsList::find(sought).isEmpty(), found);
        QCOMPARE(patientsList::rewritePatientLine(sought, {{patientsList::SessionT1, 77}}),
                 QString());
        QCOMPARE(root.bytes(listFile).contains(";77"), found);
    }

    void ofTwoLinesWithOneKeyTheFirstIsFound()
    {
        const DataRoot root;
        root.write(listFile, QByteArray("Mr.;Muster;Anna;02.03.1950;8\r\n") + anna);
        QCOMPARE(patientsList::find(annasKey).value(patientsList::SessionT1), u"8"_qs);
    }

    void noPatientIsFoundBehindAnEmptyLine()
    {
        const DataRoot root;
        root.write(listFile, bruno + "\r\n" + anna);
        QVERIFY(patientsList::find(annasKey).isEmpty());
    }

    void aShortLineReadsAsEmptyFields()
    {
        const DataRoot root;
        root.write(listFile, "Mrs.;Muster;Anna;02.03.1950;4\r\n");
        const QStringList fields = patientsList::find(annasKey);
        QCOMPARE(fields.value(patientsList::SessionT1).toInt(), 4);
        QCOMPARE(fields.value(patientsList::ThresholdS1), QString());
        QCOMPARE(fields.value(patientsList::ThresholdS1).toInt(), 0);
    }

    void aNewPatientIsALineWithTenZeros()
    {
        const DataRoot root;
        root.write(listFile, anna);
        QCOMPARE(patientsList::append(u"Mr."_qs, u"Beispiel"_qs, u"Bruno"_qs, QDate(1948, 12, 11)),
                 QString());
        QCOMPARE(root.bytes(listFile), anna + bruno);
        QVERIFY(!patientsList::find(u"Beispiel Bruno 11.12.1948"_qs).isEmpty());
    }

    void theFirstPatientMakesTheList()
    {
        const DataRoot root;
        QCOMPARE(patientsList::append(u"Mr."_qs, u"Beispiel"_qs, u"Bruno"_qs, QDate(1948, 12, 11)),
                 QString());
        QCOMPARE(root.bytes(listFile), bruno);
    }

    void aNewPatientNeverJoinsALineWithoutAnEnding()
    {
        const DataRoot root;
        root.write(listFile, anna.chopped(2));
        patientsList::append(u"Mr."_qs, u"Beispiel"_qs, u"Bruno"_qs, QDate(1948, 12, 11));
        QCOMPARE(root.bytes(listFile), anna + bruno);
    }

    void aNewPatientComesBeforeAnEmptyLine_data()
    {
        QTest::addColumn<QByteArray>("behind");
        QTest::newRow("at the end") << QByteArray("\r\n");
        QTest::newRow("of a line feed") << QByteArray("\n");
        QTest::newRow("with more behind it") << "\r\n\r\n" + clara + "no ending, \xff";
    }
    void aNewPatientComesBeforeAnEmptyLine()
    {
        QFETCH(const QByteArray, behind);
        const DataRoot root;
        root.write(listFile, anna + behind);
        QCOMPARE(patientsList::append(u"Mr."_qs, u"Beispiel"_qs, u"Bruno"_qs, QDate(1948, 12, 11)),
                 QString());
        QCOMPARE(root.bytes(listFile), anna + bruno + behind);
        QCOMPARE(QDir(root.path(u"Parameters"_qs)).entryList(QDir::Files | QDir::Hidden),
                 QStringList{u"patients_list.txt"_qs});
    }

    void halfALineEndingIsCompleted()
    {
        const DataRoot root;
        root.write(listFile, anna.chopped(1));
        patientsList::append(u"Mr."_qs, u"Beispiel"_qs, u"Bruno"_qs, QDate(1948, 12, 11));
        QCOMPARE(root.bytes(listFile), anna + bruno);
    }

    void genderAndNamesMayBeEmpty()
    {
        const DataRoot root;
        patientsList::append(QString(), QString(), QString(), QDate(1901, 1, 1));
        QCOMPARE(root.bytes(listFile), QByteArray(";;;01.01.1901;0;0;0;0;0;0;0;0;0;0\r\n"));
        QVERIFY(!patientsList::find(u"  01.01.1901"_qs).isEmpty());
    }

    void aNameKeepsItsLettersAndIsFoundAgain()
    {
        const DataRoot root;
        patientsList::append(u"Mr."_qs, u"Şahin %1"_qs, u"Łukasz 🙂"_qs, QDate(1950, 1, 2));
        QCOMPARE(root.bytes(listFile),
                 u"Mr.;Şahin %1;Łukasz 🙂;02.01.1950;0;0;0;0;0;0;0;0;0;0\r\n"_qs.toUtf8());
        QVERIFY(!patientsList::find(u"Şahin %1 Łukasz 🙂 02.01.1950"_qs).isEmpty());
    }

    void theSamePatientMayBeRegisteredTwice()
    {
        const DataRoot root;
        for (int i = 0; i < 2; ++i)
            patientsList::append(u"Mr."_qs, u"Beispiel"_qs, u"Bruno"_qs, QDate(1948, 12, 11));
        QCOMPARE(root.bytes(listFile), bruno + bruno);
    }

    void aRewriteChangesItsFieldsAndNothingElse()
    {
        const DataRoot root;
        root.write(listFile, bruno + anna + clara);
        QCOMPARE(patientsList::rewritePatientLine(annasKey, {{patientsList::SessionT1 + 1, 12}}),
                 QString());
        QCOMPARE(root.bytes(listFile),
                 bruno + "Mrs.;Muster;Anna;02.03.1950;1;12;3;4;5;6;7;51;52;53\r\n" + clara);
        QVERIFY(!root.exists(u"bin/_patients_list.txt"_qs));
        QCOMPARE(QDir(root.path(u"Parameters"_qs)).entryList(QDir::Files | QDir::Hidden),
                 QStringList{u"patients_list.txt"_qs});
    }

    void aRewriteOfTheThresholdsLeavesTheSessions()
    {
        const DataRoot root;
        root.write(listFile, anna);
        patientsList::rewritePatientLine(annasKey, {{11, 0}, {12, 117}, {13, 250}});
        QCOMPARE(root.bytes(listFile),
                 QByteArray("Mrs.;Muster;Anna;02.03.1950;1;2;3;4;5;6;7;0;117;250\r\n"));
    }

    void aRewriteOfOddListsCarriesEverythingOver_data()
    {
        QTest::addColumn<QByteArray>("before");
        QTest::addColumn<QByteArray>("after");

        const QByteArray annas5("Mrs.;Muster;Anna;02.03.1950;5;2;3;4;5;6;7;51;52;53\r\n");
        const QByteArray behind = "\r\n" + anna + "garbage\nno ending, \xff\xfe";
        QTest::newRow("both lines of one key") << anna + bruno + anna << annas5 + bruno + annas5;
        QTest::newRow("what is behind an empty line")
            << anna + clara + behind << annas5 + clara + behind;
        QTest::newRow("behind an empty line of a line feed")
            << anna + "\n" + anna << annas5 + "\n" + anna;
        QTest::newRow("an empty line at the start") << behind << behind;
        QTest::newRow("lines of a line feed only") << onlyLineFeeds(bruno + anna) << bruno + annas5;
        QTest::newRow("no final line ending") << bruno + anna.chopped(2) << bruno + annas5;
        QTest::newRow("a patient who isn't there") << bruno + clara << bruno + clara;
        QTest::newRow("an empty list") << QByteArray("") << QByteArray("");
        QTest::newRow("a short line") << QByteArray("Mrs.;Muster;Anna;02.03.1950\r\n")
                                      << QByteArray("Mrs.;Muster;Anna;02.03.1950;5\r\n");
        QTest::newRow("a line with more fields") << anna.chopped(2) + ";54;note\r\n"
                                                 << annas5.chopped(2) + ";54;note\r\n";
        QTest::newRow("others that are no UTF-8")
            << "Mr.;M\xFCller;J\xF6rg;01.01.1950;1\r\n" + anna
            << "Mr.;M\xFCller;J\xF6rg;01.01.1950;1\r\n" + annas5;
        QTest::newRow("a field of its own that is no UTF-8") << anna.chopped(2) + ";M\xFC;\r\n"
                                                             << annas5.chopped(2) + ";M\xFC;\r\n";
        QTest::newRow("a mark of the encoding") << "\xEF\xBB\xBF" + anna << "\xEF\xBB\xBF" + annas5;
        QTest::newRow("a semicolon in the name hides the line")
            << QByteArray("Mrs.;Mus;ter;Anna;02.03.1950\r\n")
            << QByteArray("Mrs.;Mus;ter;Anna;02.03.1950\r\n");
    }
    void aRewriteOfOddListsCarriesEverythingOver()
    {
        QFETCH(const QByteArray, before);
        const DataRoot root;
        root.write(listFile, before);
        QCOMPARE(patientsList::rewritePatientLine(annasKey, {{patientsList::SessionT1, 5}}),
                 QString());
        QTEST(root.bytes(listFile), "after");
    }

    void aShortLineGrowsToTheFieldThatIsWritten()
    {
        const DataRoot root;
        root.write(listFile, "Mrs.;Muster;Anna;02.03.1950\r\n");
        patientsList::rewritePatientLine(annasKey, {{patientsList::SessionT1 + 3, 2}});
        QCOMPARE(root.bytes(listFile), QByteArray("Mrs.;Muster;Anna;02.03.1950;;;;2\r\n"));
    }

    void aHandMadeKeyWithSlashesIsRewrittenInPlace()
    {
        const DataRoot root;
        root.write(listFile, "Mr.;../..;a/b;01.01.1950;0\r\n");
        QCOMPARE(patientsList::rewritePatientLine(u"../.. a/b 01.01.1950"_qs, {{4, 1}}), QString());
        QCOMPARE(root.bytes(listFile), QByteArray("Mr.;../..;a/b;01.01.1950;1\r\n"));
    }

    void ofTwoNamesThatAreNoUtf8NeitherIsTakenForTheOther()
    {
        const DataRoot root;
        const QByteArray moller = "Mr.;M\xF6ller;J\xF6rg;01.01.1950;1\r\n";
        root.write(listFile, "Mr.;M\xFCller;J\xF6rg;01.01.1950;\xFF\r\n" + moller);
        const QString key = u"Müller Jörg 01.01.1950"_qs;
        QVERIFY(!patientsList::find(key).isEmpty());
        QCOMPARE(patientsList::rewritePatientLine(key, {{patientsList::SessionT1, 7}}), QString());
        QCOMPARE(root.bytes(listFile), "Mr.;M\xFCller;J\xF6rg;01.01.1950;7\r\n" + moller);
        QVERIFY(!patientsList::find(key).isEmpty());
    }

    void aNumberThatMakesALineUtf8LeavesItsKey()
    {
        const DataRoot root;
        root.write(listFile, "Mr.;\xC3\x9C;J;01.01.1950;\xFF\r\n");
        const QString key = u"Ü J 01.01.1950"_qs;
        QVERIFY(!patientsList::find(key).isEmpty());
        QCOMPARE(patientsList::rewritePatientLine(key, {{patientsList::SessionT1, 7}}), QString());
        QCOMPARE(patientsList::find(key).value(patientsList::SessionT1), u"7"_qs);
    }

    void otherLettersSurviveARewrite()
    {
        const DataRoot root;
        root.write(listFile, u"Mr.;Şahin;Łukasz;01.01.1950;0\r\n"_qs.toUtf8());
        patientsList::rewritePatientLine(u"Şahin Łukasz 01.01.1950"_qs, {{4, 1}});
        QCOMPARE(root.bytes(listFile), u"Mr.;Şahin;Łukasz;01.01.1950;1\r\n"_qs.toUtf8());
    }

    void aCopyLeftByAKilledProgramIsWrittenOver()
    {
        const DataRoot root;
        root.write(listFile, anna);
        root.write(u"bin/_patients_list.txt"_qs, QByteArray(1000, 'x'));
        QCOMPARE(patientsList::rewritePatientLine(annasKey, {{4, 1}}), QString());
        QCOMPARE(root.bytes(listFile), anna);
        QVERIFY(!root.exists(u"bin/_patients_list.txt"_qs));
    }
};

QTEST_GUILESS_MAIN(tst_patientsList)
#include "tst_patientsList.moc"
