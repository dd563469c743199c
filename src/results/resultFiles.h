#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

class QFile;
class QIODevice;

/// The result files. They are only added to; a row stands in one of them whole or not at all.
namespace resultFiles {

inline constexpr char trialLogName[] = "output.csv";
inline constexpr char timingLogName[] = "timing.csv";
inline constexpr char validLogName[] = "valid-output.csv";

/// A file that could not be written, for the box that tells it.
struct Failure
{
    QString fileName; ///< without its folder
    QString error;
};
using Failures = QList<Failure>;

/// The step of the program's start: ../Results/output.csv with its header, if there is none. What
/// fails is not told here; the task that opens the log tells it.
void createTrialLog();

/// Opens ../Results/output.csv for appending; a log that is open is closed first. If a kill in the
/// middle of a write left half a line, the log goes on with a fresh one. Returns the error string,
/// empty if all went well; the log is then open.
QString openTrialLog(QFile &log);

/// Opens ../Results/timing.csv in the same manner; a new or empty one gets its header first.
QString openTimingLog(QFile &log);

/// Appends a row and hands it to the system at once, so that a program killed afterwards has lost
/// nothing. Outside the test phase the log is closed, and the row is dropped without a word.
/// Returns the error string, empty if all went well; what was written of the row is then taken
/// back. If the log was deleted or moved away since it was opened, that is the error, and the row
/// goes into a new one where one can be made.
QString appendRow(QFile &log, const QByteArray &row);

/// Sees the rows on the disk and at their place, and closes the log, of trials or of timing.
/// Nothing happens if it is closed.
QString closeLog(QFile &log);

/// The folder of the patient, made if it is missing. What can't be made is found out by the first
/// file in it.
void createArchive(const QString &patientKey);

/// The valid rows of a finished test, to ../Results/valid-output.csv. A new or empty file gets its
/// header first. The rows are on the disk when this returns.
Failures appendValidRows(const QByteArray &validRows, QFile &validLog);

/// The row of scores of a finished test, to results_Tn_<patient key>.csv in the patient's folder
/// and to ../Results/results_Tn.csv, in the same manner.
/// @param task 1 to 4
Failures appendScores(int task, const QString &patientKey, const QByteArray &scoreRow,
                      QFile &resultLog);

/// The core of all of them: writes all of the bytes to an open device, through any buffer. Returns
/// the error string, empty if all went well; a file is then cut back to the length it had.
QString append(QIODevice &device, const QByteArray &bytes);

} // namespace resultFiles
