#include "screenFile.h"

#include "SessionStore.h"
#include "dataFolders.h"
#include "wholeFile.h"

#include <QDataStream>
#include <QFile>
#include <QFileInfo>

namespace {
QString filePath()
{
    return dataFolders::path(dataFolders::parameters, QString::fromLatin1(screenFile::name));
}
} // namespace

bool screenFile::exists()
{
    return QFileInfo(filePath()).isFile();
}

QString screenFile::read()
{
    QFile file(filePath());
    if (!file.open(QIODevice::ReadOnly))
        return file.errorString();
    constexpr int length = 3 * sizeof(qint32);
    const QByteArray bytes = file.read(length);
    // An error of the disk must not pass for a screen that was never calibrated.
    if (file.error() != QFileDevice::NoError)
        return file.errorString();
    QDataStream stream(bytes);
    SessionStore &store = sessionStore();
    stream >> store.horzPixel >> store.vertPixel >> store.frequency;
    return {};
}

QString screenFile::write()
{
    const SessionStore &store = sessionStore();
    QByteArray bytes;
    QDataStream(&bytes, QIODevice::WriteOnly)
        << store.horzPixel << store.vertPixel << store.frequency;
    return wholeFile::replace(filePath(), bytes);
}
