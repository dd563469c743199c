#include "DataRoot.h"
#include "languages.h"

#include <QDataStream>
#include <QFile>
#include <QLibraryInfo>
#include <QTest>
#include <QTranslator>

/// Which catalogue decides the language of the run. The catalogues are real ones, made when the
/// tests are built; each says its language where the program says "Error".
class tst_languages : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theLowestNumberThatHasACatalogueWins_data();
    void theLowestNumberThatHasACatalogueWins();
    void aCatalogueThatDoesNotLoadCountsAndEmptiesTheTranslator();
    void whatIsNoCatalogueCountsAndSaysNothing_data();
    void whatIsNoCatalogueCountsAndSaysNothing();
    void aDamagedCatalogueCountsAndSaysNothing_data();
    void aDamagedCatalogueCountsAndSaysNothing();
    void noChangedByteEndsTheProgram();
    void aBrokenCatalogueOfAHigherNumberDoesNoHarm();
    void theTextsOfTheToolkitComeWhereTheToolkitBringsThem();
    void aLanguageThatDoesNotExistHasNoTextsOfTheToolkit();
};

namespace {

QByteArray catalogue(const QString &language)
{
    QFile file(QStringLiteral(CATALOGUES "/tiny_%1.qm").arg(language));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// "de Dekelmoran_de.qm": the German catalogue in the place that is told behind Languages/.
void install(const DataRoot &root, const QStringList &catalogues)
{
    for (const QString &entry : catalogues) {
        const QByteArray bytes = catalogue(entry.section(u' ', 0, 0));
        QVERIFY(!bytes.isEmpty());
        root.write(QStringLiteral("Languages/") + entry.section(u' ', 1), bytes);
    }
}

/// The German catalogue with another byte at a place.
QByteArray changed(qsizetype at, char byte)
{
    QByteArray bytes = catalogue(QStringLiteral("de"));
    bytes[at] = byte;
    return bytes;
}

/// A section with the name of another catalogue.
QByteArray naming(const QString &other)
{
    QByteArray section;
    QDataStream stream(&section, QIODevice::WriteOnly);
    const auto nameLength = quint32(sizeof(quint32) + 2 * std::size_t(other.size()));
    stream << quint8(0x96) << nameLength << other;
    return section;
}

QString errorText(const QTranslator &translator)
{
    return translator.translate("Kelmoran", "Error");
}

} // namespace

void tst_languages::theLowestNumberThatHasACatalogueWins_data()
{
    QTest::addColumn<QStringList>("catalogues");
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("text");

    const QString en = QStringLiteral("en En/kelmoran_en.qm");
    const QString fr = QStringLiteral("fr Fr/kelmoran_fr.qm");
    const QString de = QStringLiteral("de Dekelmoran_de.qm");
    const QString it = QStringLiteral("it Itkelmoran_it.qm");
    const QString es = QStringLiteral("es Eskelmoran_es.qm");
    const QString nl = QStringLiteral("nl Nlkelmoran_nl.qm");

    QTest::newRow("none") << QStringList() << 0 << QString();
    QTest::newRow("English") << QStringList{en} << 0 << QStringLiteral("Error in en");
    QTest::newRow("French") << QStringList{fr} << 1 << QStringLiteral("Error in fr");
    QTest::newRow("German") << QStringList{de} << 2 << QStringLiteral("Error in de");
    QTest::newRow("Italian") << QStringList{it} << 3 << QStringLiteral("Error in it");
    QTest::newRow("Spanish") << QStringList{es} << 4 << QStringLiteral("Error in es");
    QTest::newRow("Dutch") << QStringList{nl} << 5 << QStringLiteral("Error in nl");
    QTest::newRow("English and French")
        << QStringList{en, fr} << 0 << QStringLiteral("Error in en");
    QTest::newRow("German and Dutch") << QStringList{nl, de} << 2 << QStringLiteral("Error in de");
    QTest::newRow("all") << QStringList{en, fr, de, it, es, nl} << 0
                         << QStringLiteral("Error in en");
    QTest::newRow("German in a folder of its own")
        << QStringList{QStringLiteral("de De/kelmoran_de.qm")} << 0 << QString();
    QTest::newRow("French without its folder")
        << QStringList{QStringLiteral("fr Frkelmoran_fr.qm")} << 0 << QString();
}

void tst_languages::theLowestNumberThatHasACatalogueWins()
{
    QFETCH(QStringList, catalogues);
    QFETCH(int, number);
    QFETCH(QString, text);
    const DataRoot root;
    install(root, catalogues);
    sessionStore().language = 4;

    QTranslator translator;
    QCOMPARE(selectLanguage(translator), number);
    QCOMPARE(sessionStore().language, number);
    QCOMPARE(errorText(translator), text);
    QCOMPARE(translator.isEmpty(), text.isEmpty());
}

void tst_languages::aCatalogueThatDoesNotLoadCountsAndEmptiesTheTranslator()
{
    const DataRoot root;
    install(root, {QStringLiteral("nl Nlkelmoran_nl.qm")});
    root.write(QStringLiteral("Languages/Fr/kelmoran_fr.qm"), "no catalogue");

    QTranslator translator;
    QCOMPARE(selectLanguage(translator), 1);
    QCOMPARE(sessionStore().language, 1);
    QVERIFY(translator.isEmpty());
}

void tst_languages::whatIsNoCatalogueCountsAndSaysNothing_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("place");
    QTest::addColumn<QByteArray>("bytes"); // nothing, for a folder in its place

    const QStringList places{
        QStringLiteral("En/kelmoran_en.qm"), QStringLiteral("Fr/kelmoran_fr.qm"),
        QStringLiteral("Dekelmoran_de.qm"),  QStringLiteral("Itkelmoran_it.qm"),
        QStringLiteral("Eskelmoran_es.qm"),  QStringLiteral("Nlkelmoran_nl.qm")};
    for (int number = 0; number < places.size(); ++number) {
        const QString &place = places.at(number);
        const QByteArray name = place.toLatin1();
        QTest::addRow("%s, empty", name.constData()) << number << place << QByteArray("");
        QTest::addRow("%s, cut short", name.constData())
            << number << place << catalogue(QStringLiteral("de")).left(20);
        QTest::addRow("%s, a folder", name.constData()) << number << place << QByteArray();
    }
}

/// The file is what decides; what isn't in it is said in English, as the sources have it.
void tst_languages::whatIsNoCatalogueCountsAndSaysNothing()
{
    QFETCH(int, number);
    QFETCH(QString, place);
    QFETCH(QByteArray, bytes);
    const DataRoot root;
    place.prepend(QStringLiteral("Languages/"));
    if (bytes.isNull())
        root.block(place);
    else
        root.write(place, bytes);

    QTranslator translator;
    QCOMPARE(selectLanguage(translator), number);
    QCOMPARE(sessionStore().language, number);
    QVERIFY(translator.isEmpty());
    QCOMPARE(errorText(translator), QString());
}

void tst_languages::aDamagedCatalogueCountsAndSaysNothing_data()
{
    // A mark of 16 bytes, the language in 7, a hash and its place in 5 and 8, the messages.
    constexpr qsizetype placeOfMessage = 32;
    constexpr qsizetype lengthOfText = 42;
    constexpr qsizetype endOfMessage = 96;
    const QByteArray whole = catalogue(QStringLiteral("de"));
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("cut in the last section") << whole.chopped(1);
    QTest::newRow("a byte too many") << whole + 'x';
    QTest::newRow("a message behind the end") << changed(placeOfMessage, '\x7f');
    QTest::newRow("a text longer than the file") << changed(lengthOfText, '\x7f');
    QTest::newRow("a message that isn't ended") << changed(endOfMessage, '\x07');
    QTest::newRow("one that names itself") << whole + naming(QStringLiteral("Dekelmoran_de.qm"));
}

void tst_languages::aDamagedCatalogueCountsAndSaysNothing()
{
    QFETCH(QByteArray, bytes);
    const DataRoot root;
    root.write(QStringLiteral("Languages/Dekelmoran_de.qm"), bytes);
    QTranslator translator;
    QCOMPARE(selectLanguage(translator), 2);
    QVERIFY(translator.isEmpty());
    QCOMPARE(errorText(translator), QString());
}

void tst_languages::noChangedByteEndsTheProgram()
{
    const DataRoot root;
    const qsizetype size = catalogue(QStringLiteral("de")).size();
    int refused = 0;
    for (qsizetype at = 0; at < size; ++at) {
        root.write(QStringLiteral("Languages/Dekelmoran_de.qm"), changed(at, '\xf1'));
        QTranslator translator;
        QCOMPARE(selectLanguage(translator), 2);
        if (translator.isEmpty())
            ++refused;
        QVERIFY(errorText(translator).size() <= size);
    }
    QVERIFY(refused > 0 && refused < size); // a letter of a text is none of its lengths
}

void tst_languages::aBrokenCatalogueOfAHigherNumberDoesNoHarm()
{
    const DataRoot root;
    root.write(QStringLiteral("Languages/Nlkelmoran_nl.qm"), "no catalogue");
    install(root, {QStringLiteral("fr Fr/kelmoran_fr.qm")});

    QTranslator translator;
    QCOMPARE(selectLanguage(translator), 1);
    QCOMPARE(errorText(translator), QStringLiteral("Error in fr"));
}

void tst_languages::theTextsOfTheToolkitComeWhereTheToolkitBringsThem()
{
    const QStringList languages{QStringLiteral("fr"), QStringLiteral("de"), QStringLiteral("it"),
                                QStringLiteral("es"), QStringLiteral("nl")};
    for (int number = 1; number <= 5; ++number) {
        QTranslator translator;
        loadToolkitTexts(translator, number);
        const QString file =
            QStringLiteral("%1/qtbase_%2.qm")
                .arg(QLibraryInfo::path(QLibraryInfo::TranslationsPath), languages.at(number - 1));
        QCOMPARE(translator.isEmpty(), !QFile::exists(file));
    }
}

void tst_languages::aLanguageThatDoesNotExistHasNoTextsOfTheToolkit()
{
    for (const int number : {-1, 6}) {
        QTranslator translator;
        loadToolkitTexts(translator, number);
        QVERIFY(translator.isEmpty());
    }
}

QTEST_MAIN(tst_languages)
#include "tst_languages.moc"
