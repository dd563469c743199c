#pragma once

#include <QDate>
#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>

#include <optional>

/// `../Parameters/patients_list.txt`: one patient a line, fields separated by ";", lines ending in
/// "\r\n", UTF-8. The first empty line ends the list for every reader. A field made by hand that
/// is no UTF-8 is read as Latin-1.
namespace patientsList {

inline constexpr char name[] = "patients_list.txt";

enum Field {
    Gender,
    LastName,
    FirstName,
    DateOfBirth,      ///< dd.MM.yyyy
    SessionT1,        ///< number of the last finished session; T2 to T7 follow
    ThresholdS1 = 11, ///< ms, 0: none yet; S2 and S3 follow
    FieldCount = 14
};
inline constexpr int sessionCount = 7;

/// What identifies a patient: last name, first name, date of birth, separated by blanks.
QString key(const QString &lastName, const QString &firstName, const QDate &dateOfBirth);
/// The key of a line; missing fields are empty.
QString key(const QStringList &fields);

/// Makes an empty list if there is none that can be read.
void createIfMissing();

/// The lines up to the first empty one, split into fields; nothing if the list can't be read.
std::optional<QList<QStringList>> read();

/// The fields of the first line with this key; empty if there is none or the list can't be read.
/// The latter is noted in the session store if this is the chosen patient. Reads no further than
/// that line.
QStringList find(const QString &patientKey);

/// Adds a new patient with zeros for all numbers behind the others, in front of the first empty
/// line if there is one. The list is replaced in one step. Returns the error string, empty if all
/// went well; if not, the list is as it was.
QString append(const QString &gender, const QString &lastName, const QString &firstName,
               const QDate &dateOfBirth);

/// Writes numbers into fields of every line with this key, and leaves all other lines as they are,
/// those behind an empty line included. The list is copied to `_patients_list.txt` in the working
/// directory, flushed to the disk and put in place of the old one in one step. Returns the error
/// string, empty if all went well; if anything failed the old list stands as it was. So it does for
/// the chosen patient while their line is noted as unread: the numbers go on from another's.
QString rewritePatientLine(const QString &patientKey, const QMap<int, int> &numbers);

} // namespace patientsList
