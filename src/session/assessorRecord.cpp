#include "assessorRecord.h"

#include "dataFolders.h"
#include "wholeFile.h"

#include <QFile>
#include <QLoggingCategory>
#include <QTextStream>

Q_LOGGING_CATEGORY(lcAssessor, "kelmoran.assessor", QtCriticalMsg)

namespace assessorRecord {
namespace {
QString filePath()
{
    return dataFolders::path(dataFolders::parameters, QStringLiteral("assessor.txt"));
}
} // namespace

std::optional<QStringList> read()
{
    QFile file(filePath());
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    const QString line = QTextStream(&file).readLine();
    qCDebug(lcAssessor, "line %s", qPrintable(line));
    return line.split(u';');
}

QString field(const QStringList &record, Field number)
{
    return record.value(number);
}

QString fullName(const QStringList &record)
{
    return QStringLiteral("%1 %2 %3")
        .arg(record.value(Title), record.value(FirstName), record.value(LastName));
}

QString write(const QStringList &record)
{
    return wholeFile::replace(filePath(), (record.join(u';') + u'\n').toUtf8());
}

} // namespace assessorRecord
