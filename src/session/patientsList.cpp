#include "patientsList.h"

#include "dataFolders.h"

#include <QFile>

#include <cerrno>
#include <cstring>

#include <cstdio>
#include <unistd.h>

namespace patientsList {
namespace {

QString listPath()
{
    return dataFolders::path(dataFolders::parameters, QString::fromLatin1(name));
}

const QString copyName = u"_patients_list.txt"_qs;

QString systemError()
{
    return QString::fromLocal8Bit(std::strerror(errno));
}

/// The line without its ending.
QByteArray chopped(QByteArray line)
{
    if (line.endsWith('\n'))
        line.chop(1);
    if (line.endsWith('\r'))
        line.chop(1);
    return line;
}

QStringList fieldsOf(const QByteArray &line)
{
    return QString::fromUtf8(line).split(u';');
}

/// Writes all bytes and sees them on the disk.
QString writeThrough(QFile &file, const QByteArray &bytes)
{
    if (file.write(bytes) != bytes.size() || !file.flush())
        return file.errorString();
    if (::fsync(file.handle()) != 0)
        return systemError();
    return {};
}

QString writeFile(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return file.errorString();
    QString error = writeThrough(file, bytes);
    file.close();
    if (!error.isEmpty())
        QFile::remove(path);
    return error;
}

bool renamed(const QString &from, const QString &to)
{
    return std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) == 0;
}

/// Puts the copy in the list's place; from another file system by way of a copy beside the list.
QString replaceList(const QByteArray &bytes)
{
    if (renamed(copyName, listPath()))
        return {};
    QString error = systemError();
    if (errno == EXDEV) {
        const QString beside = dataFolders::path(dataFolders::parameters, copyName);
        error = writeFile(beside, bytes);
        if (error.isEmpty() && !renamed(beside, listPath())) {
            error = systemError();
            QFile::remove(beside);
        }
    }
    QFile::remove(copyName);
    return error;
}

QByteArray rewrittenLine(const QByteArray &line, const QString &patientKey,
                         const QMap<int, int> &numbers)
{
    QStringList fields = fieldsOf(line);
    if (key(fields) != patientKey)
        return line;
    for (auto it = numbers.cbegin(); it != numbers.cend(); ++it) {
        while (fields.size() <= it.key()) // a short line made by hand
            fields.append(QString());
        fields[it.key()] = QStringLiteral("%1").arg(it.value());
    }
    return fields.join(u';').toUtf8();
}

QByteArray rewritten(const QByteArray &list, const QString &patientKey,
                     const QMap<int, int> &numbers)
{
    QByteArray result;
    result.reserve(list.size() + 64);
    qsizetype from = 0;
    while (from < list.size()) {
        const qsizetype lineFeed = list.indexOf('\n', from);
        const qsizetype end = lineFeed < 0 ? list.size() : lineFeed + 1;
        const QByteArray line = chopped(list.sliced(from, end - from));
        if (line.isEmpty())
            break;
        result += rewrittenLine(line, patientKey, numbers) + "\r\n";
        from = end;
    }
    return result + list.sliced(from);
}

} // namespace

QString key(const QString &lastName, const QString &firstName, const QDate &dateOfBirth)
{
    return QStringLiteral("%1 %2 %3")
        .arg(lastName, firstName, dateOfBirth.toString(QStringLiteral("dd.MM.yyyy")));
}

QString key(const QStringList &fields)
{
    return QStringLiteral("%1 %2 %3")
        .arg(fields.value(LastName), fields.value(FirstName), fields.value(DateOfBirth));
}

void createIfMissing()
{
    QFile list(listPath());
    if (!list.open(QIODevice::ReadOnly))
        list.open(QIODevice::WriteOnly | QIODevice::Append); // never empties what it can't read
}

std::optional<QList<QStringList>> read()
{
    QFile list(listPath());
    if (!list.open(QIODevice::ReadOnly))
        return std::nullopt;
    QList<QStringList> patients;
    while (!list.atEnd()) {
        const QByteArray line = chopped(list.readLine());
        if (line.isEmpty())
            break;
        patients.append(fieldsOf(line));
    }
    return patients;
}

QStringList find(const QString &patientKey)
{
    QFile list(listPath());
    if (!list.open(QIODevice::ReadOnly))
        return {};
    while (!list.atEnd()) {
        const QByteArray line = chopped(list.readLine());
        if (line.isEmpty())
            break;
        QStringList fields = fieldsOf(line);
        if (key(fields) == patientKey)
            return fields;
    }
    return {};
}

QString append(const QString &gender, const QString &lastName, const QString &firstName,
               const QDate &dateOfBirth)
{
    QFile list(listPath());
    // Unbuffered, so that no half of a line waits to be written once more.
    if (!list.open(QIODevice::ReadWrite | QIODevice::Append | QIODevice::Unbuffered))
        return list.errorString();
    const qint64 before = list.size();
    QStringList fields{gender, lastName, firstName,
                       dateOfBirth.toString(QStringLiteral("dd.MM.yyyy"))};
    while (fields.size() < FieldCount)
        fields.append(QStringLiteral("0"));
    QByteArray line = fields.join(u';').toUtf8() + "\r\n";
    if (before > 0 && list.seek(before - 1) && list.read(1) != "\n")
        line.prepend("\r\n"); // a list edited by hand may lack its last line ending
    QString error = writeThrough(list, line);
    if (!error.isEmpty())
        list.resize(before);
    return error;
}

QString rewritePatientLine(const QString &patientKey, const QMap<int, int> &numbers)
{
    QFile list(listPath());
    if (!list.open(QIODevice::ReadOnly))
        return list.errorString();
    const QByteArray bytes = list.readAll();
    if (list.error() != QFileDevice::NoError)
        return list.errorString();
    list.close();

    const QByteArray result = rewritten(bytes, patientKey, numbers);
    const QString error = writeFile(copyName, result);
    return error.isEmpty() ? replaceList(result) : error;
}

} // namespace patientsList
