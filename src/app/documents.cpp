#include "documents.h"

#include "tables.h"

#include <QDir>
#include <QFile>

#include <array>

namespace documents {
namespace {

struct Name
{
    QLatin1String base;
    QLatin1String extension;
};

constexpr std::array names{
    Name{QLatin1String("Kelmoran_About"), QLatin1String(".html")},
    Name{QLatin1String("Kelmoran_Publications"), QLatin1String(".html")},
    Name{QLatin1String("Kelmoran_Video-instructions"), QLatin1String(".html")},
    Name{QLatin1String("Kelmoran_Instruction-book"), QLatin1String(".pdf")},
};

/// @param folder the language whose folder is meant
/// @param suffix the language that ends the file name
QString joined(Document document, int folder, int suffix)
{
    QDir root = QDir::current();
    root.cdUp();
    const Name &name = names.at(document);
    return QStringLiteral("%1%2%3%4%5")
        .arg(root.absolutePath(), tables::_pathLanguage.at(std::size_t(folder)), name.base,
             tables::_language.at(std::size_t(suffix)), name.extension);
}

} // namespace

QString baseName(Document document)
{
    const Name &name = names.at(document);
    return name.base + name.extension;
}

QString path(Document document, int language)
{
    return joined(document, language, language);
}

QString englishPath(Document document, int language)
{
    return joined(document, document == About ? language : 0, 0);
}

QString find(Document document, int language)
{
    const QString own = path(document, language);
    return QFile::exists(own) ? own : englishPath(document, language);
}

} // namespace documents
