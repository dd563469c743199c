#include "screenFile.h"

#include "SessionStore.h"
#include "dataFolders.h"
#include "wholeFile.h"

#include <QDataStream>
#include <QFile>

namespace {
QString filePath()
{
    return dataFolders::path(dataFolders::parameters, QString::fromLatin1(screenFile::name));
}
} // namespace

bool screenFile::canBeRead()
{
    return QFile(filePath()).open(QIODevice::ReadOnly);
}

QString screenFile::read()
{
    QFile file(filePath());
    if (!file.open(QIODevice::ReadOnly))
        return file.errorString();
    QDataStream stream(&file);
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
