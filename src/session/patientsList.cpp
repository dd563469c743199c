#include "patientsList.h"

#include "SessionStore.h"
#include "dataFolders.h"
#include "wholeFile.h"

#include <QFile>
#include <QStringDecoder>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>

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
template <typename Bytes>
Bytes chopped(Bytes line)
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

/// Tells the lines of one patient from the others.
class Sought
{
public:
    explicit Sought(const QString &patientKey)
        : m_key(patientKey)
        , m_bytes(patientKey.toUtf8())
    {
    }

    bool isOf(const QByteArray &line) const
    {
        return mayBeOf(line) && key(fieldsOf(line)) == m_key;
    }

    /// Only lines that pass are worth being read as text: that takes ten times as long, and there
    /// may be a hundred thousand of others.
    bool mayBeOf(QByteArrayView line) const
    {
        const qsizetype gender = line.indexOf(';');
        const QByteArrayView names = line.sliced(gender < 0 ? line.size() : gender + 1);
        if (names.size() < m_bytes.size() || !line.isValidUtf8())
            return true; // fields are missing, or no UTF-8
        return std::equal(m_bytes.begin(), m_bytes.end(), names.begin(),
                          [](char sought, char there) {
                              return there == sought || (there == ';' && sought == ' ');
                          });
    }

private:
    QString m_key;
    QByteArray m_bytes;
};

/// The length of the line that begins there, its ending included.
qsizetype lineLength(const QByteArray &list, qsizetype from)
{
    const qsizetype lineFeed = list.indexOf('\n', from);
    return (lineFeed < 0 ? list.size() : lineFeed + 1) - from;
}

/// Hands out the patients' lines, until one is the last that is wanted. Returns why the list can't
/// be read, empty if it can.
template <typename Take>
QString eachLine(Take take)
{
    QFile list(listPath());
    if (!list.open(QIODevice::ReadOnly))
        return list.errorString();
    while (!list.atEnd()) {
        const QByteArray line = chopped(list.readLine());
        // An error of the disk must not pass for the end of the list.
        if (list.error() != QFileDevice::NoError)
            return list.errorString();
        if (line.isEmpty() || !take(line))
            break;
    }
    return {};
}

/// What a disk refuses once it may give the second time.
template <typename Look>
QString twice(Look look)
{
    const QString error = look();
    return error.isEmpty() ? error : look();
}

/// Where the last patient's line ends: at the first empty line or at the end of the list.
qsizetype endOfPatients(const QByteArray &list)
{
    qsizetype end = 0;
    while (end < list.size()) {
        const qsizetype length = lineLength(list, end);
        if (chopped(QByteArrayView(list).sliced(end, length)).isEmpty())
            break;
        end += length;
    }
    return end;
}

QString writeFile(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        return file.errorString();
    QString error = wholeFile::writeThrough(file, bytes);
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

QByteArray rewrittenLine(const QByteArray &line, const QMap<int, int> &numbers)
{
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
    const Sought sought(patientKey);
    const qsizetype end = endOfPatients(list);
    for (qsizetype from = 0, length = 0; from < end; from += length) {
        length = lineLength(list, from);
        const QByteArray line = chopped(list.sliced(from, length));
        result += sought.isOf(line) ? rewrittenLine(line, numbers) : line;
        result += "\r\n";
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
    QList<QStringList> patients;
    const auto readAll = [&patients] {
        patients.clear();
        return eachLine([&patients](const QByteArray &line) {
            patients.append(fieldsOf(line));
            return true;
        });
    };
    if (!twice(readAll).isEmpty())
        return std::nullopt;
    return patients;
}

QStringList find(const QString &patientKey)
{
    const Sought sought(patientKey);
    QStringList fields;
    const auto look = [&sought, &fields] {
        return eachLine([&sought, &fields](const QByteArray &line) {
            if (!sought.isOf(line))
                return true;
            fields = fieldsOf(line);
            return false;
        });
    };
    const QString error = twice(look);
    SessionStore &store = sessionStore();
    if (!error.isEmpty() && patientKey == store.patientName)
        store.unread = error;
    return fields;
}

QString append(const QString &gender, const QString &lastName, const QString &firstName,
               const QDate &dateOfBirth)
{
    QFile list(listPath());
    QByteArray before;
    if (list.exists()) {
        if (!list.open(QIODevice::ReadOnly))
            return list.errorString();
        before = list.readAll();
        if (list.error() != QFileDevice::NoError)
            return list.errorString();
    }
    // The whole list in one step: a program killed in the middle of a write leaves a part of it.
    const qsizetype end = endOfPatients(before); // behind an empty line no reader would find it
    const QByteArray patients = before.first(end);
    const QByteArray line = newLine(gender, lastName, firstName, dateOfBirth);
    return wholeFile::replace(listPath(),
                              patients + missingEnding(patients) + line + before.sliced(end));
}

QString rewritePatientLine(const QString &patientKey, const QMap<int, int> &numbers)
{
    const SessionStore &store = sessionStore();
    if (patientKey == store.patientName && !store.unread.isEmpty())
        return store.unread; // what there is to write doesn't come from their line
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
