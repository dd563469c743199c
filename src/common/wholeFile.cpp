#include "wholeFile.h"

#include <QSaveFile>

QString wholeFile::replace(const QString &path, const QByteArray &bytes)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return file.errorString();
    // Flushed by hand: a commit doesn't notice that the last bytes found no room.
    if (file.write(bytes) != bytes.size() || !file.flush() || !file.commit())
        return file.errorString();
    return {};
}
