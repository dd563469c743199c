#include "wholeFile.h"

#include <QSaveFile>

#include <cerrno>
#include <cstring>

#include <unistd.h>

namespace {
QString systemError()
{
    return QString::fromLocal8Bit(std::strerror(errno));
}
} // namespace

QString wholeFile::replace(const QString &path, const QByteArray &bytes)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        return file.errorString();
    // A commit doesn't notice that the last bytes found no room, or never reached the disk.
    if (QString error = writeThrough(file, bytes); !error.isEmpty())
        return error;
    errno = 0;
    if (file.commit())
        return {};
    // The toolkit doesn't always say why.
    return file.error() == QFileDevice::UnspecifiedError && errno != 0 ? systemError()
                                                                       : file.errorString();
}

QString wholeFile::writeThrough(QFileDevice &file, const QByteArray &bytes)
{
    qint64 written = 0;
    while (written < bytes.size()) {
        // A disk that runs full takes a part first, and says why with the next.
        const qint64 part = file.write(bytes.sliced(written));
        if (part <= 0)
            return file.errorString();
        written += part;
    }
    return onDisk(file);
}

QString wholeFile::onDisk(const QFileDevice &file)
{
    return ::fsync(file.handle()) == 0 ? QString() : systemError();
}
