#include "Kelmoran.h"

#include "Messages.h"
#include "SessionStore.h"
#include "WebViewer.h"
#include "dataFolders.h"
#include "desktop.h"
#include "documents.h"

#include <QDir>
#include <QLoggingCategory>

// The documents beside the program, and the reports of earlier tests.

Q_DECLARE_LOGGING_CATEGORY(lcKelmoran)

void Kelmoran::toAbout_Kelmoran()
{
    m_webViewer->goAbout();
}

void Kelmoran::toPublications()
{
    m_webViewer->goPublications();
}

void Kelmoran::toVideo_instructions()
{
    m_webViewer->goVideo_instructions();
}

void Kelmoran::toInstruction_book()
{
    constexpr auto book = documents::InstructionBook;
    const int language = sessionStore().language;
    const auto open = [](const QString &path) { return desktop::open(QUrl::fromLocalFile(path)); };
    if (!open(documents::path(book, language)) && !open(documents::englishPath(book, language)))
        messages::critical(this, tr("Error"), tr("Unable to find ") + documents::baseName(book));
    qCDebug(lcKelmoran, "Instruction book");
}

void Kelmoran::toPrevious_reports()
{
    const QString folder =
        QDir::currentPath() + u'/' +
        dataFolders::archiveOf(dataFolders::asFileName(sessionStore().patientName));
    qCDebug(lcKelmoran, "%s", qPrintable(folder));
    const QString path =
        desktop::pickFile(this, {QStringLiteral("Ouvrir"), folder, tr("Previous reports (*.pdf)")});
    // After Cancel there is no file, and the box tells that too.
    if (!desktop::open(QUrl::fromLocalFile(path)))
        messages::critical(this, tr("Error"), tr("Unable to open the file..."));
    qCDebug(lcKelmoran, "Previous reports");
}
