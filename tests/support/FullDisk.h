#pragma once

#include <QtGlobal>

#include <csignal>

#include <sys/resource.h>

/// While one lives, no file of the process grows beyond this many bytes: the write fails half-way,
/// as on a full disk.
class FullDisk
{
public:
    explicit FullDisk(rlim_t bytes)
        : m_formerHandler(std::signal(SIGXFSZ, SIG_IGN))
    {
        rlimit limit{};
        if (getrlimit(RLIMIT_FSIZE, &limit) != 0)
            qFatal("the limit can't be read");
        m_former = limit.rlim_cur;
        limit.rlim_cur = bytes;
        if (setrlimit(RLIMIT_FSIZE, &limit) != 0)
            qFatal("the limit can't be set");
    }

    ~FullDisk()
    {
        rlimit limit{};
        getrlimit(RLIMIT_FSIZE, &limit);
        limit.rlim_cur = m_former;
        setrlimit(RLIMIT_FSIZE, &limit);
        std::signal(SIGXFSZ, m_formerHandler);
    }

    FullDisk(const FullDisk &) = delete;
    FullDisk &operator=(const FullDisk &) = delete;

private:
    using Handler = void (*)(int);
    Handler m_formerHandler;
    rlim_t m_former = RLIM_INFINITY;
};
