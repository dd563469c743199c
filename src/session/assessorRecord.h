#pragma once

#include <QString>
#include <QStringList>

#include <optional>

/// `../Parameters/assessor.txt`: one line of eight fields separated by ";": title, last name, first
/// name, institution, street, postal code, city, country. UTF-8.
namespace assessorRecord {

enum Field { Title, LastName, FirstName, Institution, Street, PostalCode, City, Country };

/// The fields of the first line, however many it has; nothing if the file can't be opened.
std::optional<QStringList> read();

/// A field of a record, empty if the record is too short for it.
QString field(const QStringList &record, Field number);

/// Title, first name, last name: as a person is addressed.
QString fullName(const QStringList &record);

/// Replaces the file in one step. Returns the error string, empty if all went well; the old record
/// then stands as it was.
QString write(const QStringList &record);

} // namespace assessorRecord
