#include "VirtualTime.h"

#include <QCoreApplication>
#include <QEvent>

namespace {
constexpr qint64 nanosecondsPerMillisecond = 1'000'000;
constexpr qint64 nanosecondsPerSecond = 1'000'000'000;

/// How often an event is sent round before the clock jumps: what has been posted belongs to the
/// moment that has been, and so does what that posts in its turn.
constexpr int probes = 3;

QEvent::Type probeEvent()
{
    static const auto type = QEvent::Type(QEvent::registerEventType());
    return type;
}
} // namespace

VirtualTime::VirtualTime(Mode mode, const QDateTime &start, quint32 seed)
    : m_mode(mode)
    , m_start(start)
    , m_seed(seed)
{
    m_idle.setInterval(0);
    connect(&m_idle, &QTimer::timeout, this, &VirtualTime::noteIdle);
    setCurrent(this);
}

VirtualTime::~VirtualTime()
{
    setCurrent(nullptr);
}

QDateTime VirtualTime::defaultStart()
{
    return {QDate(2025, 1, 6), QTime(9, 0), Qt::UTC};
}

QDateTime VirtualTime::currentDateTime() const
{
    return m_start.addMSecs(m_now / nanosecondsPerMillisecond);
}

quint32 VirtualTime::seedSeconds() const
{
    return m_seed + quint32(m_now / nanosecondsPerSecond);
}

void VirtualTime::hold()
{
    ++m_held;
    m_idle.stop();
}

void VirtualTime::release()
{
    if (--m_held == 0)
        wakeAt(earliest());
}

void VirtualTime::advance(int ms)
{
    const qint64 target = m_now + ms * nanosecondsPerMillisecond;
    while (earliest() && *earliest() <= target) {
        m_now = std::max(m_now, *earliest());
        fireEarliest();
    }
    m_now = std::max(m_now, target); // a slot may have moved it further
}

void VirtualTime::wakeAt(std::optional<qint64> due)
{
    if (m_mode == Mode::Stepped || m_held > 0)
        return;
    if (due)
        m_idle.start();
    else
        m_idle.stop();
}

void VirtualTime::noteIdle()
{
    if (m_probes > 0 || !earliest())
        return;
    m_probes = probes;
    postProbe();
}

void VirtualTime::postProbe()
{
    QCoreApplication::postEvent(this, new QEvent(probeEvent()), Qt::LowEventPriority);
}

bool VirtualTime::event(QEvent *event)
{
    if (event->type() != probeEvent())
        return QObject::event(event);
    if (--m_probes > 0)
        postProbe();
    else
        jump();
    return true;
}

void VirtualTime::jump()
{
    // From an event of its own and not from the idle timer: a slot that opens a box must leave that
    // one free to beat in the event loop of the box.
    if (!earliest() || m_held > 0)
        return;
    m_now = std::max(m_now, *earliest());
    fireEarliest();
}
