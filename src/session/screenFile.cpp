#include "screenFile.h"

#include "SessionStore.h"
#include "dataFolders.h"

#include <QDataStream>
#include <QFile>
#include <QSaveFile>

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
    QSaveFile file(filePath());
    if (!file.open(QIODevice::WriteOnly))
        return file.errorString();
    QDataStream stream(&file);
    const SessionStore &store = sessionStore();
    stream << store.horzPixel << store.vertPixel << store.frequency;
    if (!file.flush()) // a full disk, which commit() alone doesn't notice
        return file.errorString();
    return file.commit() ? QString() : file.errorString();
}
