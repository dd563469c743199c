#include "Fuzz.h"
#include "dataFolders.h"
#include "resultFiles.h"
#include "rows.h"

// The first line of an input is a site's code, what follows is a patient's key.

using fuzz::demand;

namespace {

const fuzz::PrivateRoot &root()
{
    static const fuzz::PrivateRoot root;
    return root;
}

void trySite(const QByteArray &bytes)
{
    root().write(QStringLiteral("Parameters/site.txt"), bytes);
    rows::Identity who;
    who.code = dataFolders::readSiteCode();
    demand(!who.code.contains(u'\n'), "a site's code is one line");
    const QByteArray row = rows::trialT2(who, {}, {}, 0);
    demand(row.endsWith('\n') && row.count('\n') == 1, "a row is one line, whatever the site");
}

void tryKey(const QString &key)
{
    const QString name = dataFolders::asFileName(key);
    demand(dataFolders::asFileName(name) == name, "a file name stays as it is");
    resultFiles::createArchive(key);
    QFile log;
    demand(resultFiles::appendScores(2, key, "a;412\n", log).isEmpty(), "scores are filed");
    demand(resultFiles::appendScores(2, key, "a;398\n", log).isEmpty(), "scores are filed again");

    const QString archives = QStringLiteral("Archives");
    const QStringList inside = root().entries(archives);
    demand(inside.size() == 1, "the archive has what was filed, and nothing else");
    QDir folder(root().path(archives + u'/' + inside.first()));
    if (name.isEmpty())
        QFile::remove(root().path(archives + u'/' + inside.first())); // the file of nobody
    else {
        demand(inside.first() == name, "the folder has the patient's name");
        demand(folder.entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot) ==
                   QStringList{QStringLiteral("results_T2_%1.csv").arg(name)},
               "the folder holds the patient's scores");
        folder.removeRecursively();
    }
    QFile::remove(root().path(QStringLiteral("Results/results_T2.csv")));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray input(reinterpret_cast<const char *>(data), qsizetype(size));
    const auto [site, key] = fuzz::firstLine(input);
    trySite(site);
    tryKey(QString::fromUtf8(key));
    root().demandNothingOutside();
    return 0;
}
