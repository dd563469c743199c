#pragma once

#include "Boxes.h" // IWYU pragma: export
#include "SessionStore.h"
#include "dataFolders.h"
#include "resources.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QString>
#include <QTemporaryDir>

/// A data root of a test's own: a temporary folder whose bin/ is the working directory for as long
/// as this lives, and a session store as at the start of the program. Paths are relative to the
/// root
/// ("Parameters/screen.pix").
class DataRoot
{
public:
    enum class Folders { Made, Missing };

    /// With the three data folders, or as it is before the first start of the program.
    explicit DataRoot(Folders folders = Folders::Made)
        : m_former(QDir::currentPath())
    {
        if (!m_root.isValid() || !QDir(m_root.path()).mkdir(QStringLiteral("bin")) ||
            !QDir::setCurrent(path(QStringLiteral("bin"))))
            qFatal("no temporary data root");
        if (folders == Folders::Made)
            dataFolders::create();
        sessionStore() = SessionStore();
        initResources();
    }

    ~DataRoot()
    {
        QDir::setCurrent(m_former);
        sessionStore() = SessionStore();
    }

    DataRoot(const DataRoot &) = delete;
    DataRoot &operator=(const DataRoot &) = delete;

    QString path(const QString &relative) const { return m_root.filePath(relative); }

    bool exists(const QString &relative) const { return QFileInfo::exists(path(relative)); }

    /// The whole file; null if it can't be read.
    QByteArray bytes(const QString &relative) const
    {
        QFile file(path(relative));
        if (!file.open(QIODevice::ReadOnly))
            return {};
        const QByteArray all = file.readAll();
        return all.isNull() ? QByteArray("") : all;
    }

    /// Replaces the file, and makes the folders above it.
    void write(const QString &relative, const QByteArray &bytes) const
    {
        QFile file(path(relative));
        if (!QDir().mkpath(QFileInfo(file).path()) || !file.open(QIODevice::WriteOnly) ||
            file.write(bytes) != bytes.size())
            qFatal("%s can't be written", qPrintable(relative));
    }

    /// Puts a folder there, in place of any file: whatever wants to open a file of this name fails,
    /// whoever runs the test.
    void block(const QString &relative) const
    {
        QFile::remove(path(relative));
        if (!QDir().mkpath(path(relative + QStringLiteral("/in the way"))))
            qFatal("%s can't be blocked", qPrintable(relative));
    }

    /// Takes away again what block() put there.
    void unblock(const QString &relative) const { QDir(path(relative)).removeRecursively(); }

private:
    QTemporaryDir m_root;
    QString m_former;
};
