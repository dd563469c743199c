#include "languages.h"

#include "Calibration.h"
#include "catalogue.h"
#include "tables.h"

#include <QFile>
#include <QLibraryInfo>
#include <QTranslator>

namespace {
/// From German on the path and the file name run into one another: "../Languages/Dekelmoran_de.qm".
QString cataloguePath(std::size_t number)
{
    return QStringLiteral("..%1kelmoran%2.qm")
        .arg(tables::_pathLanguage.at(number), tables::_language.at(number));
}
} // namespace

int selectLanguage(QTranslator &translator)
{
    int selected = 0;
    for (std::size_t number = tables::_language.size(); number-- > 0;) {
        const QString path = cataloguePath(number);
        if (!QFile::exists(path))
            continue;
        [[maybe_unused]] const bool loaded = loadCatalogue(translator, path);
        selected = int(number);
    }
    Calibration().setLanguage(selected);
    return selected;
}

void loadToolkitTexts(QTranslator &translator, int language)
{
    const auto number = std::size_t(language);
    [[maybe_unused]] const bool loaded =
        number < tables::_language.size() &&
        translator.load(QStringLiteral("qtbase%1").arg(tables::_language[number]),
                        QLibraryInfo::path(QLibraryInfo::TranslationsPath));
}
