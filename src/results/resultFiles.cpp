#include "resultFiles.h"

#include "dataFolders.h"
#include "rows.h"
#include "tables.h"

#include <QDir>
#include <QFile>

#include <array>
#include <cerrno>
#include <cstring>

#include <unistd.h>

namespace resultFiles {
namespace {

// Without a buffer: a row that the disk refused must not come back with the next one.
constexpr auto appending = QIODevice::Append | QIODevice::Unbuffered;

constexpr std::array<const char *, 4> resultHeaders{rows::_headerResult_T1, rows::_headerResult_T2,
                                                    rows::_headerResult_T3, rows::_headerResult_T4};

QString inResults(const char *fileName)
{
    return dataFolders::path(dataFolders::results, QString::fromLatin1(fileName));
}

/// A program killed in the middle of a write leaves half a line.
bool endsInHalfALine(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || !file.seek(file.size() - 1))
        return false;
    const QByteArray last = file.read(1);
    return !last.isEmpty() && last != "\n";
}

QString onDisk(QFile &file)
{
    return ::fsync(file.handle()) == 0 ? QString() : QString::fromLocal8Bit(std::strerror(errno));
}

QString appendToFile(QFile &file, const QString &path, const char *header, const QByteArray &bytes)
{
    const bool half = endsInHalfALine(path);
    file.close();
    file.setFileName(path);
    if (!file.open(appending))
        return file.errorString();
    QByteArray all = bytes;
    if (file.size() == 0)
        all.prepend(header);
    else if (half)
        all.prepend('\n');
    QString error = append(file, all);
    if (error.isEmpty())
        error = onDisk(file);
    file.close();
    return error;
}

Failures failures(const QString &fileName, const QString &error)
{
    return error.isEmpty() ? Failures() : Failures{{fileName, error}};
}

} // namespace

QString append(QIODevice &device, const QByteArray &bytes)
{
    auto *file = qobject_cast<QFile *>(&device);
    const qint64 before = device.size();
    qint64 written = 0;
    while (written < bytes.size()) {
        // A disk that runs full takes a part first, and says why with the next.
        const qint64 part = device.write(bytes.sliced(written));
        if (part <= 0)
            break;
        written += part;
    }
    if (written == bytes.size() && (!file || file->flush()))
        return {};
    QString error = device.errorString();
    if (file)
        file->resize(before);
    return error;
}

void createTrialLog()
{
    QFile log(inResults(trialLogName));
    if (log.open(QIODevice::ReadOnly) || !log.open(QIODevice::WriteOnly | QIODevice::Append))
        return;
    if (log.size() == 0)
        append(log, tables::_headerArchive);
}

namespace {
QString openLog(QFile &log, const QString &path, const QByteArray &header)
{
    const bool half = endsInHalfALine(path);
    log.close();
    log.setFileName(path);
    if (!log.open(appending))
        return log.errorString();
    QString error;
    if (half)
        error = append(log, "\n");
    else if (log.size() == 0 && !header.isEmpty())
        error = append(log, header);
    if (!error.isEmpty())
        log.close();
    return error;
}
} // namespace

QString openTrialLog(QFile &log)
{
    return openLog(log, inResults(trialLogName), {});
}

QString openTimingLog(QFile &log)
{
    return openLog(log, inResults(timingLogName), rows::timingHeader());
}

QString appendRow(QFile &log, const QByteArray &row)
{
    return log.isOpen() ? append(log, row) : QString();
}

QString closeLog(QFile &log)
{
    if (!log.isOpen())
        return {};
    QString error = onDisk(log);
    log.close();
    return error;
}

void createArchive(const QString &patientKey)
{
    QDir().mkdir(dataFolders::archiveOf(patientKey));
}

Failures appendValidRows(const QByteArray &validRows, QFile &validLog)
{
    return failures(
        QString::fromLatin1(validLogName),
        appendToFile(validLog, inResults(validLogName), tables::_headerArchive, validRows));
}

Failures appendScores(int task, const QString &patientKey, const QByteArray &scoreRow,
                      QFile &resultLog)
{
    const char *header = resultHeaders.at(std::size_t(task - 1));
    const QString ofAll = QStringLiteral("results_T%1.csv").arg(task);
    const QString ofPatient = QStringLiteral("results_T%1_%2.csv")
                                  .arg(QString::number(task), dataFolders::asFileName(patientKey));
    const QString archive = dataFolders::archiveOf(patientKey);

    QFile patientLog;
    Failures failed =
        failures(ofPatient, appendToFile(patientLog, archive + ofPatient, header, scoreRow));
    failed +=
        failures(ofAll, appendToFile(resultLog, dataFolders::path(dataFolders::results, ofAll),
                                     header, scoreRow));
    return failed;
}

} // namespace resultFiles
