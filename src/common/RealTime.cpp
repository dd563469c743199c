#include "RealTime.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <ctime>

#include <sys/timerfd.h>
#include <unistd.h>

namespace {
constexpr qint64 nanosecondsPerSecond = 1'000'000'000;
}

RealTime &RealTime::instance()
{
    static RealTime time;
    return time;
}

RealTime::~RealTime()
{
    if (m_descriptor >= 0)
        ::close(m_descriptor);
}

qint64 RealTime::nanoseconds() const
{
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return qint64(now.tv_sec) * nanosecondsPerSecond + now.tv_nsec;
}

QDateTime RealTime::currentDateTime() const
{
    return QDateTime::currentDateTime();
}

quint32 RealTime::seedSeconds() const
{
    return quint32(std::time(nullptr));
}

bool RealTime::open()
{
    if (m_notifier)
        return true;
    if (m_descriptor < 0)
        m_descriptor = timerfd_create(CLOCK_MONOTONIC, TFD_NONBLOCK | TFD_CLOEXEC);
    if (m_descriptor < 0)
        qFatal("no timer can be made: %s", std::strerror(errno));
    m_notifier = std::make_unique<QSocketNotifier>(m_descriptor, QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(),
                     [this] { wake(); });
    // The notifier must not outlive the event loop that serves it.
    qAddPostRoutine([] { instance().m_notifier.reset(); });
    return true;
}

void RealTime::wakeAt(std::optional<qint64> due)
{
    if (!QCoreApplication::instance() || !open())
        return;
    itimerspec at{};
    if (due) { // a moment of zero would stop the descriptor
        const qint64 moment = std::max<qint64>(*due, 1);
        at.it_value.tv_sec = moment / nanosecondsPerSecond;
        at.it_value.tv_nsec = moment % nanosecondsPerSecond;
    }
    timerfd_settime(m_descriptor, TFD_TIMER_ABSTIME, &at, nullptr);
}

void RealTime::wake()
{
    quint64 expirations = 0;
    if (::read(m_descriptor, &expirations, sizeof expirations) < 0)
        return; // stopped or moved in the meantime
    fireEarliest();
}
