#pragma once

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <utility>

#include <dirent.h>

/// What the fuzzers share.
namespace fuzz {

/// What is promised of every input: if it isn't kept, the fuzzer stops and keeps the input.
inline void demand(bool kept, const char *promise)
{
    if (kept)
        return;
    std::fprintf(stderr, "not kept: %s\n", promise);
    std::abort();
}

/// A data root in memory, where there is such a place, whose bin/ is the working directory. Around
/// it lies a folder that holds nothing else, so that a step out of the root is seen.
class PrivateRoot
{
public:
    PrivateRoot()
        : m_outside(place())
    {
        bool made = m_outside.isValid();
        for (const char *folder : {"bin", "Archives", "Parameters", "Results", "Languages"})
            made = made && QDir(m_outside.path())
                               .mkpath(QStringLiteral("root/") + QString::fromLatin1(folder));
        if (!made || !QDir::setCurrent(path(QStringLiteral("bin"))))
            qFatal("no private data root");
    }

    ~PrivateRoot() { QDir::setCurrent(QStringLiteral("/")); }

    PrivateRoot(const PrivateRoot &) = delete;
    PrivateRoot &operator=(const PrivateRoot &) = delete;

    /// Of a file or folder of the root.
    QString path(const QString &relative) const
    {
        return m_outside.filePath(QStringLiteral("root/") + relative);
    }

    /// Replaces the file.
    void write(const QString &relative, const QByteArray &bytes) const
    {
        QFile file(path(relative));
        demand(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size(),
               "the fuzzer can write into its own root");
    }

    QByteArray bytes(const QString &relative) const
    {
        QFile file(path(relative));
        demand(file.open(QIODevice::ReadOnly), "the file can be read");
        return file.readAll();
    }

    /// What lies in a folder, hidden things included.
    QStringList entries(const QString &relative) const { return entriesOf(path(relative)); }

    /// That nothing lies beside the root, nor beside its five folders.
    void demandNothingOutside() const
    {
        demand(entriesOf(m_outside.path()).size() == 1, "nothing is written outside the data root");
        demand(entries(QString()).size() == 5, "nothing is written beside the data folders");
    }

private:
    /// By hand: QDir takes several times as long, and this is asked for every input.
    static QStringList entriesOf(const QString &path)
    {
        QStringList names;
        DIR *folder = ::opendir(QFile::encodeName(path).constData());
        demand(folder != nullptr, "the folder can be read");
        while (const dirent *entry = ::readdir(folder)) {
            const QString name = QFile::decodeName(entry->d_name);
            if (name != u"." && name != u"..")
                names.append(name);
        }
        ::closedir(folder);
        return names;
    }

    static QString place()
    {
        const bool inMemory = !qEnvironmentVariableIsSet("TMPDIR") &&
                              QFileInfo(QStringLiteral("/dev/shm")).isWritable();
        return (inMemory ? QStringLiteral("/dev/shm") : QDir::tempPath()) +
               QStringLiteral("/kelmoran-fuzz-XXXXXX");
    }

    QTemporaryDir m_outside;
};

/// The part in front of the first line feed, and what lies behind it.
inline std::pair<QByteArray, QByteArray> firstLine(const QByteArray &input)
{
    const qsizetype end = input.indexOf('\n');
    if (end < 0)
        return {input, QByteArray()};
    return {input.first(end), input.sliced(end + 1)};
}

} // namespace fuzz
