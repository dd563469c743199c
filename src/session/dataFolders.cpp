#include "dataFolders.h"

#include <QDir>
#include <QFile>
#include <QTextStream>

namespace dataFolders {

void create()
{
    for (const char *folder : {archives, parameters, results}) {
        const QString name = QString::fromLatin1(folder);
        if (!QDir(name).exists())
            QDir().mkdir(name);
    }
}

QString path(const char *folder, const QString &fileName)
{
    return QStringLiteral("%1%2").arg(QString::fromLatin1(folder), fileName);
}

QString asFileName(const QString &patientKey)
{
    QString name = patientKey;
    name.replace(u'/', u'_').replace(QChar(u'\0'), u'_');
    return name == u"." || name == u".." ? QStringLiteral("_") : name;
}

QString archiveOf(const QString &patientKey)
{
    return QStringLiteral("%1%2/").arg(QString::fromLatin1(archives), asFileName(patientKey));
}

QString readSiteCode()
{
    QFile file(path(parameters, QStringLiteral("site.txt")));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QTextStream(&file).readLine();
}

} // namespace dataFolders
