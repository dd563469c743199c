#pragma once

#include <QByteArray>
#include <QString>

/// Files that are replaced as a whole.
namespace wholeFile {

/// Puts these bytes in the place of the file in one step: whatever fails on the way, a full disk
/// included, the old file stands as it was. Returns the error string, empty if all went well.
QString replace(const QString &path, const QByteArray &bytes);

} // namespace wholeFile
