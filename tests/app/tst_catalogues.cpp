#include <QFile>
#include <QRegularExpression>
#include <QTest>
#include <QTranslator>
#include <QXmlStreamReader>

#include <array>

/// The catalogues of the six languages, as they are installed.
class tst_catalogues : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyTextIsTranslated_data();
    void everyTextIsTranslated();
    void theTranslationsKeepWhatTheProgramNeeds_data();
    void theTranslationsKeepWhatTheProgramNeeds();
    void englishIsTheSource();
    void everyTemplateHasThePlaceholdersOfTheEnglishOne_data();
    void everyTemplateHasThePlaceholdersOfTheEnglishOne();
    void everyDocumentIsThere_data();
    void everyDocumentIsThere();
};

namespace {

constexpr std::array languages{"en", "fr", "de", "it", "es", "nl"};

struct Entry
{
    QString context;
    QString source;
    QString translation;
    bool finished = false;

    QString name() const { return context + QStringLiteral(": ") + source; }
};

QList<Entry> entries(const QString &language)
{
    QFile file(QStringLiteral(LANGUAGES "/kelmoran_%1.ts").arg(language));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QList<Entry> all;
    QString context;
    QXmlStreamReader xml(&file);
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (xml.name() == u"name") {
            context = xml.readElementText();
        } else if (xml.name() == u"source") {
            all.append({context, xml.readElementText(), {}});
        } else if (xml.name() == u"translation") {
            all.last().finished = !xml.attributes().hasAttribute(QStringLiteral("type"));
            all.last().translation = xml.readElementText();
        }
    }
    return all;
}

void addLanguages()
{
    QTest::addColumn<QString>("language");
    for (const char *language : languages)
        QTest::newRow(language) << QString::fromLatin1(language);
}

QStringList placeholders(const QString &text)
{
    static const QRegularExpression pattern(QStringLiteral("%L?[0-9n]"));
    QStringList found;
    auto matches = pattern.globalMatch(text);
    while (matches.hasNext())
        found.append(matches.next().captured());
    found.sort();
    return found;
}

QString textOf(const QString &language, const QString &name)
{
    QFile file(QStringLiteral(LANGUAGES "/%1/%2_%1.html").arg(language, name));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

/// The words of a template or document that a value takes the place of.
QStringList values(const QString &html)
{
    static const QRegularExpression pattern(QStringLiteral("\\bv_[a-z0-9_]+"));
    QStringList found;
    auto matches = pattern.globalMatch(html);
    while (matches.hasNext())
        found.append(matches.next().captured());
    found.sort();
    return found;
}

} // namespace

void tst_catalogues::everyTextIsTranslated_data()
{
    addLanguages();
}

void tst_catalogues::everyTextIsTranslated()
{
    QFETCH(QString, language);
    const QList<Entry> all = entries(language);
    const QList<Entry> english = entries(QStringLiteral("en"));
    QVERIFY(all.size() > 200);
    QCOMPARE(all.size(), english.size());

    QTranslator translator;
    QVERIFY(translator.load(QStringLiteral(CATALOGUES "/kelmoran_%1.qm").arg(language)));
    for (qsizetype i = 0; i < all.size(); ++i) {
        const Entry &entry = all.at(i);
        QCOMPARE(entry.name(), english.at(i).name());
        QVERIFY2(entry.finished && !entry.translation.isEmpty(), qPrintable(entry.name()));
        QCOMPARE(translator.translate(qPrintable(entry.context), entry.source.toUtf8().constData()),
                 entry.translation);
    }
}

void tst_catalogues::theTranslationsKeepWhatTheProgramNeeds_data()
{
    addLanguages();
}

void tst_catalogues::theTranslationsKeepWhatTheProgramNeeds()
{
    QFETCH(QString, language);
    const QList<Entry> all = entries(language);
    for (const Entry &entry : all) {
        const QString &from = entry.source;
        const QString &to = entry.translation;
        const QByteArray name = entry.name().toUtf8();
        QVERIFY2(placeholders(from) == placeholders(to), name.constData());
        QVERIFY2(!from.trimmed().endsWith(u':') || to.trimmed().endsWith(u':'), name.constData());
        QVERIFY2(from.endsWith(u' ') == to.endsWith(u' '), name.constData());
        QVERIFY2(from.endsWith(u'\n') == to.endsWith(u'\n'), name.constData());
        QVERIFY2(from.contains(u"(*.pdf)") == to.contains(u"(*.pdf)"), name.constData());
    }
}

void tst_catalogues::englishIsTheSource()
{
    const QList<Entry> all = entries(QStringLiteral("en"));
    for (const Entry &entry : all)
        QCOMPARE(entry.translation, entry.source);
}

void tst_catalogues::everyTemplateHasThePlaceholdersOfTheEnglishOne_data()
{
    addLanguages();
}

void tst_catalogues::everyTemplateHasThePlaceholdersOfTheEnglishOne()
{
    QFETCH(QString, language);
    for (int task = 1; task <= 4; ++task) {
        const QString name = QStringLiteral("Kelmoran_Task%1").arg(task);
        const QStringList expected = values(textOf(QStringLiteral("en"), name));
        QVERIFY(expected.size() > 10);
        QCOMPARE(values(textOf(language, name)), expected);
        QVERIFY(textOf(language, name).contains(u"href=\"kelmoran-report.css\""));
    }
}

void tst_catalogues::everyDocumentIsThere_data()
{
    addLanguages();
}

void tst_catalogues::everyDocumentIsThere()
{
    QFETCH(QString, language);
    for (const char *name : {"Kelmoran_About", "Kelmoran_Publications",
                             "Kelmoran_Video-instructions", "Kelmoran_Instruction-book"}) {
        const QString html = textOf(language, QString::fromLatin1(name));
        QVERIFY2(html.size() > 500, name);
        QCOMPARE(values(html), values(textOf(QStringLiteral("en"), QString::fromLatin1(name))));
    }
    QFile book(QStringLiteral(CATALOGUES "/Kelmoran_Instruction-book_%1.pdf").arg(language));
    QVERIFY(book.open(QIODevice::ReadOnly));
    QVERIFY(book.readAll().startsWith("%PDF"));
}

QTEST_GUILESS_MAIN(tst_catalogues)
#include "tst_catalogues.moc"
