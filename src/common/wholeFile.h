#pragma once

#include <QByteArray>
#include <QString>

class QFileDevice;

/// Files that are replaced as a whole.
namespace wholeFile {

/// Puts these bytes in the place of the file in one step: whatever fails on the way, a full disk
/// included, the old file stands as it was. Returns the error string, empty if all went well.
QString replace(const QString &path, const QByteArray &bytes);

/// Writes all bytes to a file that is open without a buffer, and sees them on the disk. Returns the
/// error string, empty if all went well.
QString writeThrough(QFileDevice &file, const QByteArray &bytes);

/// Sees on the disk itself what was written to an open file and flushed: some disks say only now
/// that they couldn't take it. Returns the error string, empty if all went well.
QString onDisk(const QFileDevice &file);

} // namespace wholeFile
