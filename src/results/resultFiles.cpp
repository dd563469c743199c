#include "resultFiles.h"

#include "dataFolders.h"
#include "rows.h"
#include "tables.h"
#include "wholeFile.h"

#include <QDir>
#include <QFile>

#include <array>
#include <cerrno>
#include <cstring>

#include <sys/stat.h>

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
        error = wholeFile::onDisk(file);
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
    const QString path = inResults(trialLogName);
    // In one step: a log without its header would stay so.
    if (!QFile::exists(path))
        wholeFile::replace(path, tables::_headerArchive);
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

/// Whether the file of an open log is still the one at its place; the error string if not.
QString lossOf(const QFile &log)
{
    struct stat open = {};
    struct stat there = {};
    int error = 0;
    if (::fstat(log.handle(), &open) != 0 ||
        ::stat(QFile::encodeName(log.fileName()).constData(), &there) != 0)
        error = errno;
    else if (open.st_ino != there.st_ino || open.st_dev != there.st_dev)
        error = ESTALE;
    return error == 0 ? QString() : QString::fromLocal8Bit(std::strerror(error));
}

/// What is written goes on in the file that now stands there, or in a new one. Where none can be
/// made, the open one is all there is: its folder may only have been moved.
void openAnew(QFile &log)
{
    const QString path = log.fileName();
    if (!QFile(path).open(appending))
        return;
    const bool ofTiming = path.endsWith(QLatin1String(timingLogName));
    openLog(log, path, ofTiming ? rows::timingHeader() : QByteArray(tables::_headerArchive));
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
    if (!log.isOpen())
        return {};
    const QString loss = lossOf(log);
    if (!loss.isEmpty())
        openAnew(log);
    const QString error = append(log, row);
    return loss.isEmpty() ? error : loss;
}

QString closeLog(QFile &log)
{
    if (!log.isOpen())
        return {};
    QString error = wholeFile::onDisk(log);
    if (error.isEmpty())
        error = lossOf(log);
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
