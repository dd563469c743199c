#include "DataRoot.h"
#include "WebViewer.h"
#include "documents.h"

#include <QFileInfo>
#include <QLoggingCategory>
#include <QTest>

#include <memory>

/// The documents beside the program: where each is sought, and what is shown of it.
class tst_WebViewer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void aDocumentIsSoughtInTheLanguageOfTheRun_data();
    void aDocumentIsSoughtInTheLanguageOfTheRun();
    void aMissingDocumentIsSoughtInEnglish_data();
    void aMissingDocumentIsSoughtInEnglish();
    void theDocumentOfTheLanguageComesFirst();
    void aboutTellsVersionAndAssessor();
    void theRecordIsPrintedOnlyWhenAskedFor();
    void aboutWithoutAnAssessorKeepsItsPlaceholders();
    void onlyTheFirstLineOfTheRecordIsRead();
    void markupInTheRecordIsText();
    void theOtherDocumentsHaveNoPlaceholders();
    void lettersBeyondAsciiAreKept();
    void aDocumentThatCannotBeReadIsTold_data();
    void aDocumentThatCannotBeReadIsTold();
    void theWindowIsShownFirst();

private:
    void show(documents::Document document);

    std::unique_ptr<DataRoot> m_root;
    std::unique_ptr<Boxes> m_boxes;
    std::unique_ptr<WebViewer> m_viewer;
};

Q_DECLARE_METATYPE(documents::Document)

void tst_WebViewer::init()
{
    m_root = std::make_unique<DataRoot>();
    m_boxes = std::make_unique<Boxes>();
    m_viewer = std::make_unique<WebViewer>();
    m_viewer->setLayingOut(false);
}

void tst_WebViewer::cleanup()
{
    m_viewer.reset();
    m_boxes.reset();
    m_root.reset();
}

void tst_WebViewer::show(documents::Document document)
{
    switch (document) {
    case documents::About:
        m_viewer->goAbout();
        break;
    case documents::Publications:
        m_viewer->goPublications();
        break;
    default:
        m_viewer->goVideo_instructions();
    }
}

void tst_WebViewer::aDocumentIsSoughtInTheLanguageOfTheRun_data()
{
    QTest::addColumn<documents::Document>("document");
    QTest::addColumn<int>("language");
    QTest::addColumn<QString>("path");

    const auto add = [](documents::Document document, int language, const char *path) {
        QTest::newRow(path) << document << language << QString::fromLatin1(path);
    };
    add(documents::About, 0, "Languages/En/Kelmoran_About_en.html");
    add(documents::About, 1, "Languages/Fr/Kelmoran_About_fr.html");
    add(documents::About, 2, "Languages/DeKelmoran_About_de.html");
    add(documents::Publications, 3, "Languages/ItKelmoran_Publications_it.html");
    add(documents::VideoInstructions, 4, "Languages/EsKelmoran_Video-instructions_es.html");
    add(documents::InstructionBook, 5, "Languages/NlKelmoran_Instruction-book_nl.pdf");
    add(documents::InstructionBook, 1, "Languages/Fr/Kelmoran_Instruction-book_fr.pdf");
}

void tst_WebViewer::aDocumentIsSoughtInTheLanguageOfTheRun()
{
    QFETCH(documents::Document, document);
    QFETCH(int, language);
    QFETCH(QString, path);
    const QString root = QFileInfo(m_root->path(QString())).canonicalFilePath();
    QCOMPARE(documents::path(document, language), root + u'/' + path);
}

void tst_WebViewer::aMissingDocumentIsSoughtInEnglish_data()
{
    QTest::addColumn<documents::Document>("document");
    QTest::addColumn<int>("language");
    QTest::addColumn<QString>("path");

    const auto add = [](documents::Document document, int language, const char *path) {
        QTest::addRow("%d %s", language, path) << document << language << QString::fromLatin1(path);
    };
    // About stays in the folder of the language.
    add(documents::About, 1, "Languages/Fr/Kelmoran_About_en.html");
    add(documents::About, 2, "Languages/DeKelmoran_About_en.html");
    add(documents::Publications, 1, "Languages/En/Kelmoran_Publications_en.html");
    add(documents::Publications, 5, "Languages/En/Kelmoran_Publications_en.html");
    add(documents::VideoInstructions, 2, "Languages/En/Kelmoran_Video-instructions_en.html");
}

void tst_WebViewer::aMissingDocumentIsSoughtInEnglish()
{
    QFETCH(documents::Document, document);
    QFETCH(int, language);
    QFETCH(QString, path);
    m_root->write(path, "<p>in English</p>");
    sessionStore().language = language;
    show(document);
    QCOMPARE(m_viewer->text(), QStringLiteral("<p>in English</p>"));
}

void tst_WebViewer::theDocumentOfTheLanguageComesFirst()
{
    m_root->write(QStringLiteral("Languages/En/Kelmoran_Publications_en.html"), "English");
    m_root->write(QStringLiteral("Languages/NlKelmoran_Publications_nl.html"), "Nederlands");
    sessionStore().language = 5;
    show(documents::Publications);
    QCOMPARE(m_viewer->text(), QStringLiteral("Nederlands"));
}

void tst_WebViewer::aboutTellsVersionAndAssessor()
{
    m_root->write(QStringLiteral("Parameters/assessor.txt"),
                  "Dr.;Łukasz;Anna;Klinik am See;Weg 1;1000;Bern;CH\n");
    m_root->write(QStringLiteral("Languages/En/Kelmoran_About_en.html"),
                  "v_version, v_assessor (v_institution), V_VERSION, v_version");
    show(documents::About);
    QCOMPARE(m_viewer->text(),
             QStringLiteral("1.1, Dr. Anna Łukasz (Klinik am See), V_VERSION, 1.1"));
}

void tst_WebViewer::theRecordIsPrintedOnlyWhenAskedFor()
{
    m_root->write(QStringLiteral("Parameters/assessor.txt"), "Dr.;Muster;Anna;Clinic;;;;\n");
    m_root->write(QStringLiteral("Languages/En/Kelmoran_About_en.html"), "v_assessor");
    QLoggingCategory::setFilterRules(QStringLiteral("kelmoran.viewer.debug=true"));
    QTest::ignoreMessage(QtDebugMsg, "line Dr.;Muster;Anna;Clinic;;;;");
    show(documents::About);
    QLoggingCategory::setFilterRules(QString());
}

void tst_WebViewer::aboutWithoutAnAssessorKeepsItsPlaceholders()
{
    m_root->write(QStringLiteral("Languages/En/Kelmoran_About_en.html"),
                  "v_version v_assessor v_institution");
    show(documents::About);
    QCOMPARE(m_viewer->text(), QStringLiteral("1.1 v_assessor v_institution"));
}

void tst_WebViewer::onlyTheFirstLineOfTheRecordIsRead()
{
    m_root->write(QStringLiteral("Parameters/assessor.txt"), "Mr.;Doe;John;A\nMrs.;Roe;Jane;B\n");
    m_root->write(QStringLiteral("Languages/En/Kelmoran_About_en.html"),
                  "v_assessor v_institution");
    show(documents::About);
    QCOMPARE(m_viewer->text(), QStringLiteral("Mr. John Doe A"));
}

void tst_WebViewer::markupInTheRecordIsText()
{
    m_root->write(QStringLiteral("Parameters/assessor.txt"), "Mr.;<b>Doe</b>;J & J;v_version\n");
    m_root->write(QStringLiteral("Languages/En/Kelmoran_About_en.html"),
                  "v_assessor v_institution");
    show(documents::About);
    QCOMPARE(m_viewer->text(), QStringLiteral("Mr. J &amp; J &lt;b&gt;Doe&lt;/b&gt; v_version"));
}

void tst_WebViewer::theOtherDocumentsHaveNoPlaceholders()
{
    m_root->write(QStringLiteral("Languages/En/Kelmoran_Publications_en.html"), "v_version");
    m_root->write(QStringLiteral("Languages/En/Kelmoran_Video-instructions_en.html"), "v_version");
    for (const documents::Document document :
         {documents::Publications, documents::VideoInstructions}) {
        show(document);
        QCOMPARE(m_viewer->text(), QStringLiteral("v_version"));
    }
}

void tst_WebViewer::lettersBeyondAsciiAreKept()
{
    m_root->write(QStringLiteral("Languages/Fr/Kelmoran_Publications_fr.html"),
                  "Œuvres choisies – αβγ");
    sessionStore().language = 1;
    show(documents::Publications);
    QCOMPARE(m_viewer->text(), QStringLiteral("Œuvres choisies – αβγ"));
}

void tst_WebViewer::aDocumentThatCannotBeReadIsTold_data()
{
    QTest::addColumn<documents::Document>("document");
    QTest::addColumn<QString>("blocked");
    QTest::newRow("About, missing") << documents::About << QString();
    QTest::newRow("Publications, missing") << documents::Publications << QString();
    QTest::newRow("Video instructions, missing") << documents::VideoInstructions << QString();
    QTest::newRow("About, not to be read")
        << documents::About << QStringLiteral("Languages/En/Kelmoran_About_en.html");
}

void tst_WebViewer::aDocumentThatCannotBeReadIsTold()
{
    QFETCH(documents::Document, document);
    QFETCH(QString, blocked);
    if (!blocked.isEmpty())
        m_root->block(blocked);
    show(document);
    const auto boxes = m_boxes->take();
    QCOMPARE(boxes.size(), 1);
    QCOMPARE(boxes.at(0).kind, messages::Kind::Information);
    QCOMPARE(boxes.at(0).title, QStringLiteral("Unable to open file"));
    QVERIFY(!boxes.at(0).text.isEmpty());
    QCOMPARE(m_boxes->parent(), m_viewer.get());
    QVERIFY(m_viewer->text().isEmpty());
}

void tst_WebViewer::theWindowIsShownFirst()
{
    QVERIFY(!m_viewer->isVisible());
    show(documents::About);
    QVERIFY(m_viewer->isVisible());
    QCOMPARE(m_viewer->windowTitle(), QStringLiteral("WebViewer"));
    QCOMPARE(m_viewer->size(), QSize(850, 840));
    QCOMPARE(m_boxes->take().size(), 1); // no document is there
}

QTEST_MAIN(tst_WebViewer)
#include "tst_WebViewer.moc"
