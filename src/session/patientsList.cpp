#include "patientsList.h"

#include "dataFolders.h"
#include "wholeFile.h"

#include <QFile>
#include <QStringDecoder>

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

/// A field that is no UTF-8 was made by hand, elsewhere. Read as Latin-1 its letters stay apart, so
/// that of two such patients neither is taken for the other.
QString decoded(const QByteArray &field)
{
    if (!field.isValidUtf8())
        return QString::fromLatin1(field);
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom);
    return decoder(field);
}

QStringList fieldsOf(const QByteArray &line)
{
    if (line.isValidUtf8())
        return QString::fromUtf8(line).split(u';');
    // Each by itself: a number written into one must not change how the names are read.
    QStringList fields;
    const QList<QByteArray> parts = line.split(';');
    for (const QByteArray &part : parts)
        fields.append(decoded(part));
    return fields;
}

/// The length of the line that begins there, its ending included.
qsizetype lineLength(const QByteArray &list, qsizetype from)
{
    const qsizetype lineFeed = list.indexOf('\n', from);
    return (lineFeed < 0 ? list.size() : lineFeed + 1) - from;
}

/// Where the last patient's line ends: at the first empty line or at the end of the list.
qsizetype endOfPatients(const QByteArray &list)
{
    qsizetype end = 0;
    while (end < list.size()) {
        const qsizetype length = lineLength(list, end);
        if (chopped(list.sliced(end, length)).isEmpty())
            break;
        end += length;
    }
    return end;
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
    if (key(fieldsOf(line)) != patientKey)
        return line;
    QList<QByteArray> fields = line.split(';'); // bytes, so that the others keep theirs
    for (auto it = numbers.cbegin(); it != numbers.cend(); ++it) {
        while (fields.size() <= it.key()) // a short line made by hand
            fields.append(QByteArray());
        fields[it.key()] = QByteArray::number(it.value());
    }
    return fields.join(';');
}

QByteArray rewritten(const QByteArray &list, const QString &patientKey,
                     const QMap<int, int> &numbers)
{
    QByteArray result;
    result.reserve(list.size() + 64);
    const qsizetype end = endOfPatients(list);
    for (qsizetype from = 0, length = 0; from < end; from += length) {
        length = lineLength(list, from);
        const QByteArray line = chopped(list.sliced(from, length));
        result += rewrittenLine(line, patientKey, numbers) + "\r\n";
    }
    return result + list.sliced(end);
}

/// What a list edited by hand may lack at its end.
QByteArray missingEnding(const QByteArray &patients)
{
    if (patients.isEmpty() || patients.endsWith('\n'))
        return {};
    return patients.endsWith('\r') ? "\n" : "\r\n";
}

QByteArray newLine(const QString &gender, const QString &lastName, const QString &firstName,
                   const QDate &dateOfBirth)
{
    QStringList fields{gender, lastName, firstName,
                       dateOfBirth.toString(QStringLiteral("dd.MM.yyyy"))};
    while (fields.size() < FieldCount)
        fields.append(QStringLiteral("0"));
    return fields.join(u';').toUtf8() + "\r\n";
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
    list.seek(0);
    const QByteArray before = list.readAll();
    if (list.error() != QFileDevice::NoError)
        return list.errorString();
    const QByteArray line = newLine(gender, lastName, firstName, dateOfBirth);
    const qsizetype end = endOfPatients(before);
    const QByteArray patients = before.first(end);
    if (end < before.size()) {
        // Behind an empty line no reader would find it.
        list.close();
        return wholeFile::replace(listPath(), patients + line + before.sliced(end));
    }
    QString error = writeThrough(list, missingEnding(patients) + line);
    if (!error.isEmpty())
        list.resize(before.size());
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
