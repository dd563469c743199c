#include "Desk.h"
#include "WebViewer.h"
#include "desktop.h"

#include <QFileInfo>

/// The menu's documents, and the reports of earlier tests.
class tst_KelmoranDocuments : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void theMenuOpensTheDocument_data();
    void theMenuOpensTheDocument();
    void aDocumentThatCannotBeReadIsTold_data();
    void aDocumentThatCannotBeReadIsTold();
    void theBookIsOpenedInTheLanguageOfTheRun();
    void aBookThatIsMissingIsOpenedInEnglish();
    void aBookThatIsNowhereIsTold();
    void anEarlierReportIsPickedInThePatientsFolder();
    void aReportThatCannotBeOpenedIsTold_data();
    void aReportThatCannotBeOpenedIsTold();
    void earlierReportsAreThereOnceAPatientIsChosen();
    void aFileThatIsNotThereIsOpenedByNoViewer();
    void aComputerWithoutAViewerTellsThatTheBookCannotBeShown();
    void aComputerWithoutAViewerTellsThatAReportCannotBeShown();

private:
    void trigger(const char *action) const
    {
        m_desk->find<QAction>(QString::fromLatin1(action))->trigger();
    }

    std::unique_ptr<Desk> m_desk;
    QList<QUrl> m_opened;
    bool m_opens = true; ///< the desktop has a viewer
    QString m_missing;   ///< a file that isn't there
    desktop::Question m_question;
    QString m_picked;
    std::unique_ptr<desktop::Handling> m_desktop;
};

void tst_KelmoranDocuments::init()
{
    m_desk = std::make_unique<Desk>();
    m_opened.clear();
    m_opens = true;
    m_missing.clear();
    m_question = {};
    m_picked.clear();
    m_desktop = std::make_unique<desktop::Handling>(
        [this](const QUrl &file) {
            m_opened.append(file);
            return m_opens && (m_missing.isEmpty() || !file.path().endsWith(m_missing));
        },
        [this](const desktop::Question &question) {
            m_question = question;
            return m_picked;
        });
}

void tst_KelmoranDocuments::cleanup()
{
    m_desktop.reset();
    m_desk.reset();
}

void tst_KelmoranDocuments::theMenuOpensTheDocument_data()
{
    QTest::addColumn<QByteArray>("action");
    QTest::addColumn<QString>("file");
    QTest::newRow("About") << QByteArray("actionAbout_Kelmoran")
                           << QStringLiteral("Kelmoran_About_en.html");
    QTest::newRow("Publications") << QByteArray("actionPublications")
                                  << QStringLiteral("Kelmoran_Publications_en.html");
    QTest::newRow("Video instructions") << QByteArray("actionVideo_instructions")
                                        << QStringLiteral("Kelmoran_Video-instructions_en.html");
}

void tst_KelmoranDocuments::theMenuOpensTheDocument()
{
    QFETCH(QByteArray, action);
    QFETCH(QString, file);
    m_desk->root.write(QStringLiteral("Languages/En/") + file, "what it says");
    m_desk->openWith(Desk::patient("Berg"));
    WebViewer &viewer = m_desk->window()->webViewer();
    viewer.setLayingOut(false);
    trigger(action.constData());
    QVERIFY(viewer.isVisible());
    QCOMPARE(viewer.text(), QStringLiteral("what it says"));
}

void tst_KelmoranDocuments::aDocumentThatCannotBeReadIsTold_data()
{
    theMenuOpensTheDocument_data();
}

void tst_KelmoranDocuments::aDocumentThatCannotBeReadIsTold()
{
    QFETCH(QByteArray, action);
    QFETCH(QString, file);
    m_desk->root.block(QStringLiteral("Languages/En/") + file);
    m_desk->openWith(Desk::patient("Berg"));
    WebViewer &viewer = m_desk->window()->webViewer();
    trigger(action.constData());
    const auto boxes = m_desk->boxes.take();
    QCOMPARE(boxes.size(), 1);
    QCOMPARE(boxes.at(0).kind, messages::Kind::Information);
    QCOMPARE(boxes.at(0).title, QStringLiteral("Unable to open file"));
    QVERIFY(viewer.isVisible());
    QVERIFY(viewer.text().isEmpty());
}

void tst_KelmoranDocuments::theBookIsOpenedInTheLanguageOfTheRun()
{
    m_desk->openWith(Desk::patient("Berg"));
    sessionStore().language = 1;
    trigger("actionInstruction_book");
    QCOMPARE(m_opened.size(), 1);
    QVERIFY(m_opened.at(0).isLocalFile());
    QVERIFY(m_opened.at(0).path().endsWith(u"/Languages/Fr/Kelmoran_Instruction-book_fr.pdf"));
}

void tst_KelmoranDocuments::aBookThatIsMissingIsOpenedInEnglish()
{
    m_desk->openWith(Desk::patient("Berg"));
    sessionStore().language = 2;
    m_missing = QStringLiteral("/Languages/DeKelmoran_Instruction-book_de.pdf");
    trigger("actionInstruction_book");
    QCOMPARE(m_opened.size(), 2);
    QVERIFY(m_opened.at(0).path().endsWith(m_missing));
    QVERIFY(m_opened.at(1).path().endsWith(u"/Languages/En/Kelmoran_Instruction-book_en.pdf"));
}

void tst_KelmoranDocuments::aBookThatIsNowhereIsTold()
{
    m_desk->openWith(Desk::patient("Berg"));
    m_opens = false;
    trigger("actionInstruction_book");
    const auto boxes = m_desk->boxes.take();
    QCOMPARE(boxes.size(), 1);
    QCOMPARE(boxes.at(0).kind, messages::Kind::Critical);
    QCOMPARE(boxes.at(0).title, QStringLiteral("Error"));
    QCOMPARE(boxes.at(0).text, QStringLiteral("Unable to find Kelmoran_Instruction-book.pdf"));
}

void tst_KelmoranDocuments::anEarlierReportIsPickedInThePatientsFolder()
{
    m_desk->openWith(Desk::patient("Berg"));
    m_desk->choose(0);
    m_picked = m_desk->root.path(QStringLiteral("Archives/one/Output_T2_S01_one.pdf"));
    trigger("actionPrevious_reports");
    QCOMPARE(m_question.caption, QStringLiteral("Ouvrir"));
    QCOMPARE(m_question.filter, QStringLiteral("Previous reports (*.pdf)"));
    const QString folder = QDir::cleanPath(m_question.folder);
    QVERIFY(QDir::isAbsolutePath(folder));
    QVERIFY2(folder.endsWith(QStringLiteral("/Archives/") + sessionStore().patientName),
             qPrintable(folder));
    QCOMPARE(m_opened, QList<QUrl>{QUrl::fromLocalFile(m_picked)});
}

void tst_KelmoranDocuments::aReportThatCannotBeOpenedIsTold_data()
{
    QTest::addColumn<QString>("picked");
    QTest::newRow("no viewer") << QStringLiteral("/somewhere/report.pdf");
    QTest::newRow("after Cancel") << QString();
}

void tst_KelmoranDocuments::aReportThatCannotBeOpenedIsTold()
{
    QFETCH(QString, picked);
    m_desk->openWith(Desk::patient("Berg"));
    m_desk->choose(0);
    m_picked = picked;
    m_opens = false;
    trigger("actionPrevious_reports");
    const auto boxes = m_desk->boxes.take();
    QCOMPARE(boxes.size(), 1);
    QCOMPARE(boxes.at(0).kind, messages::Kind::Critical);
    QCOMPARE(boxes.at(0).title, QStringLiteral("Error"));
    QCOMPARE(boxes.at(0).text, QStringLiteral("Unable to open the file..."));
}

void tst_KelmoranDocuments::earlierReportsAreThereOnceAPatientIsChosen()
{
    m_desk->openWith(Desk::patient("Berg"));
    QVERIFY(!m_desk->isEnabled(QStringLiteral("actionPrevious_reports")));
    m_desk->choose(0);
    QVERIFY(m_desk->isEnabled(QStringLiteral("actionPrevious_reports")));
}

void tst_KelmoranDocuments::aFileThatIsNotThereIsOpenedByNoViewer()
{
    m_desktop.reset(); // the desktop itself
    QVERIFY(!desktop::open(QUrl()));
    QVERIFY(!desktop::open(QUrl::fromLocalFile(QStringLiteral("/no/such/book.pdf"))));
    QVERIFY(!desktop::open(QUrl::fromLocalFile(m_desk->root.path(QString())))); // a folder
}

// The platform that the tests run on has no viewer for any file.

void tst_KelmoranDocuments::aComputerWithoutAViewerTellsThatTheBookCannotBeShown()
{
    m_desk->root.write(QStringLiteral("Languages/En/Kelmoran_Instruction-book_en.pdf"), "%PDF-1.4");
    m_desk->openWith(Desk::patient("Berg"));
    m_desktop.reset();
    trigger("actionInstruction_book");
    const auto boxes = m_desk->boxes.take();
    QCOMPARE(boxes.size(), 1);
    QCOMPARE(boxes.at(0).kind, messages::Kind::Critical);
    QCOMPARE(boxes.at(0).text, QStringLiteral("Unable to find Kelmoran_Instruction-book.pdf"));
}

void tst_KelmoranDocuments::aComputerWithoutAViewerTellsThatAReportCannotBeShown()
{
    const QString report = QStringLiteral("Archives/one/Output_T2_S01_one.pdf");
    m_desk->root.write(report, "%PDF-1.4");
    m_desk->openWith(Desk::patient("Berg"));
    m_desk->choose(0);
    m_desktop.reset();
    const desktop::Handling picked(
        {}, [&](const desktop::Question &) { return m_desk->root.path(report); });
    trigger("actionPrevious_reports");
    const auto boxes = m_desk->boxes.take();
    QCOMPARE(boxes.size(), 1);
    QCOMPARE(boxes.at(0).kind, messages::Kind::Critical);
    QCOMPARE(boxes.at(0).text, QStringLiteral("Unable to open the file..."));
}

QTEST_MAIN(tst_KelmoranDocuments)
#include "tst_KelmoranDocuments.moc"
