#pragma once

#include "TaskTimer.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QMap>
#include <QMutex>
#include <QObject>
#include <QSet>
#include <QThread>
#include <QTimer>

#include <algorithm>

#include <malloc.h>
#include <unistd.h>

/// The toolkit's own list of functions to be told of every object made and gone, for tools that
/// look into a running program (qhooks_p.h). Its first entry is its version.
extern quintptr qtHookData[];

/// Keeps a list of all living QObjects for as long as it lives. To be made before the first of
/// them.
class LivingObjects
{
public:
    LivingObjects()
    {
        qtHookData[Made] = reinterpret_cast<quintptr>(&made);
        qtHookData[Gone] = reinterpret_cast<quintptr>(&gone);
    }
    ~LivingObjects() { qtHookData[Made] = qtHookData[Gone] = 0; }
    LivingObjects(const LivingObjects &) = delete;
    LivingObjects &operator=(const LivingObjects &) = delete;

    /// Calls a function with each that belongs to this thread.
    template <typename Function>
    static void forEach(Function function)
    {
        const QMutexLocker lock(&mutex());
        for (const QObject *object : qAsConst(living())) {
            if (object->thread() == QThread::currentThread())
                function(object);
        }
    }

private:
    enum { Made = 3, Gone = 4 }; // entries of the toolkit's list

    static void made(QObject *object)
    {
        const QMutexLocker lock(&mutex());
        living().insert(object);
    }
    static void gone(QObject *object)
    {
        const QMutexLocker lock(&mutex());
        living().remove(object);
    }

    static QMutex &mutex()
    {
        static QMutex mutex;
        return mutex;
    }
    static QSet<QObject *> &living()
    {
        static QSet<QObject *> objects;
        return objects;
    }
};

/// What the process holds at a moment: of what grows, a program that runs all day dies.
class Footprint
{
public:
    static Footprint now()
    {
        Footprint footprint;
        footprint.countObjects();
        footprint.countDescriptors();
        footprint.countThreads();
        footprint.m_counts["processes"] = processesBelow(QByteArray::number(::getpid()));
        footprint.m_bytes = mallinfo2().uordblks;
        return footprint;
    }

    /// What there is more of than at an earlier moment, a line each; empty if there is nothing.
    QByteArray growthSince(const Footprint &earlier) const
    {
        QByteArray lines;
        for (auto it = m_counts.cbegin(); it != m_counts.cend(); ++it) {
            const int before = earlier.m_counts.value(it.key());
            if (it.value() > before)
                lines += it.key() + ": " + QByteArray::number(before) + ", then " +
                         QByteArray::number(it.value()) + '\n';
        }
        return lines;
    }

    /// Takes the counts of an earlier moment where they are higher: what rests may come back.
    void raiseTo(const Footprint &earlier)
    {
        for (auto it = earlier.m_counts.cbegin(); it != earlier.m_counts.cend(); ++it)
            m_counts[it.key()] = std::max(m_counts.value(it.key()), it.value());
    }

    /// Of the memory that the program has asked for, what it hasn't given back.
    qint64 bytes() const { return qint64(m_bytes); }
    int count(const QByteArray &what) const { return m_counts.value(what); }

    /// One line of figures.
    QByteArray summary() const
    {
        return QByteArray::number(count("objects")) + " objects, " +
               QByteArray::number(count("timers armed")) + " timers armed, " +
               QByteArray::number(count("descriptors")) + " descriptors, " +
               QByteArray::number(count("threads")) + " threads, " +
               QByteArray::number(count("processes")) + " processes, " +
               QByteArray::number(m_bytes / 1024) + " KiB in use, " +
               QByteArray::number(resident()) + " KiB resident";
    }

private:
    static constexpr QDir::Filters everything =
        QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot;

    /// Each under its class; and of the timers, those that are armed.
    void countObjects()
    {
        LivingObjects::forEach([this](const QObject *object) {
            ++m_counts["objects"];
            ++m_counts[object->metaObject()->className()];
            const auto *task = qobject_cast<const TaskTimer *>(object);
            const auto *timer = qobject_cast<const QTimer *>(object);
            if ((task && task->isActive()) || (timer && timer->isActive()))
                ++m_counts["timers armed"];
        });
    }

    /// Without those of the browser's pools, which come and go with the work.
    void countThreads()
    {
        const QDir folder(QStringLiteral("/proc/self/task"));
        const QStringList names = folder.entryList(everything);
        for (const QString &thread : names) {
            QFile file(folder.filePath(thread + QStringLiteral("/comm")));
            if (file.open(QIODevice::ReadOnly) && !file.readAll().startsWith("ThreadPool"))
                ++m_counts["threads"];
        }
    }

    /// Each under what kind of thing it leads to, or in which folder.
    void countDescriptors()
    {
        const QDir folder(QStringLiteral("/proc/self/fd"));
        const QStringList names = folder.entryList(everything);
        for (const QString &name : names) {
            const QByteArray path = QFile::encodeName(folder.filePath(name));
            char target[256];
            const ssize_t length = ::readlink(path.constData(), target, sizeof target);
            if (length < 0)
                continue; // the one through which the folder was read
            const QByteArray kind(target, qsizetype(length));
            ++m_counts["descriptors"];
            const qsizetype end = kind.startsWith('/') ? kind.lastIndexOf('/') : kind.indexOf(':');
            ++m_counts["descriptor " + kind.left(end)];
        }
    }

    static int processesBelow(const QByteArray &process)
    {
        int count = 0;
        const QDir threads(QStringLiteral("/proc/%1/task").arg(QString::fromLatin1(process)));
        const QStringList names = threads.entryList(everything);
        for (const QString &thread : names) {
            QFile file(threads.filePath(thread + QStringLiteral("/children")));
            if (!file.open(QIODevice::ReadOnly))
                continue;
            const QList<QByteArray> children = file.readAll().simplified().split(' ');
            for (const QByteArray &child : children) {
                if (!child.isEmpty())
                    count += 1 + processesBelow(child);
            }
        }
        return count;
    }

    static qint64 resident() // KiB
    {
        QFile file(QStringLiteral("/proc/self/statm"));
        if (!file.open(QIODevice::ReadOnly))
            return 0;
        return file.readAll().split(' ').value(1).toLongLong() * ::sysconf(_SC_PAGESIZE) / 1024;
    }

    QMap<QByteArray, int> m_counts;
    std::size_t m_bytes = 0;
};
