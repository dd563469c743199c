#include "dataFolders.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QTextStream>

namespace dataFolders {
namespace {
/// Cut to what the name of a file can hold, in bytes, with room for what the files of a patient
/// are called around the key. A number made of the whole key keeps two long ones apart.
QString shortened(const QString &name)
{
    constexpr qsizetype longest = 210;
    constexpr qsizetype numberLength = 16;
    const QByteArray bytes = name.toUtf8();
    if (bytes.size() <= longest)
        return name;
    const QByteArray number = QCryptographicHash::hash(bytes, QCryptographicHash::Sha1).toHex();
    qsizetype end = longest - 1 - numberLength;
    while ((quint8(bytes.at(end)) & 0xC0U) == 0x80U) // in the middle of a character
        --end;
    return QString::fromUtf8(bytes.first(end) + '~' + number.first(numberLength));
}
} // namespace

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
    return name == u"." || name == u".." ? QStringLiteral("_") : shortened(name);
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
