#include "RealTime.h"

#include <QCoreApplication>
#include <QDir>
#include <QSocketNotifier>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <ctime>

#include <sched.h>
#include <sys/resource.h>
#include <sys/timerfd.h>
#include <unistd.h>

namespace {
constexpr qint64 nanosecondsPerSecond = 1'000'000'000;
constexpr qint64 nanosecondsPerMillisecond = 1'000'000;

/// Longer than a sleeping process takes to come back on a computer that isn't overloaded.
constexpr qint64 wakeUp = 1'500'000; // ns

constexpr int urgentPriority = 1; // of those in real time, the last
constexpr int urgentNice = -10;

bool isUsual(pid_t thread)
{
    return (sched_getscheduler(thread) & ~SCHED_RESET_ON_FORK) == SCHED_OTHER &&
           getpriority(PRIO_PROCESS, id_t(thread)) == 0;
}

void hurry(pid_t thread)
{
    sched_param parameters{};
    parameters.sched_priority = urgentPriority;
    // What the process starts in the meantime is none of the trial's business.
    if (sched_setscheduler(thread, SCHED_RR | SCHED_RESET_ON_FORK, &parameters) != 0)
        setpriority(PRIO_PROCESS, id_t(thread), urgentNice);
}

void relax(pid_t thread)
{
    const sched_param usual{};
    // Without the flag this would be refused to all but an administrator.
    sched_setscheduler(thread, SCHED_OTHER | SCHED_RESET_ON_FORK, &usual);
    setpriority(PRIO_PROCESS, id_t(thread), 0);
}
} // namespace

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

qint64 RealTime::lead() const
{
    return wakeUp;
}

void RealTime::waitUntil(qint64 moment) const
{
    while (nanoseconds() < moment) {
    }
}

qint64 RealTime::inputMoment(quint64 timestamp) const
{
    return latestMoment(timestamp, nanoseconds());
}

qint64 RealTime::latestMoment(quint64 timestamp, qint64 now)
{
    constexpr quint32 believable = 1000; // ms
    const auto age = quint32(now / nanosecondsPerMillisecond) - quint32(timestamp);
    if (timestamp == 0 || age > believable)
        return now;
    const qint64 millisecond = now / nanosecondsPerMillisecond - age;
    return std::min(now, (millisecond + 1) * nanosecondsPerMillisecond);
}

void RealTime::setUrgent(bool urgent)
{
    // A browser's threads have an order of their own, which stays as it is.
    std::for_each(m_hurried.begin(), m_hurried.end(), relax);
    m_hurried.clear();
    if (!urgent)
        return;
    const QDir folder(QStringLiteral("/proc/self/task"));
    const QStringList threads = folder.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString &name : threads) {
        const pid_t thread = name.toInt();
        if (!isUsual(thread))
            continue;
        hurry(thread);
        m_hurried.push_back(thread);
    }
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
