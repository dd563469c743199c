#include "VirtualTime.h"

#include <QCoreApplication>
#include <QEvent>

namespace {
constexpr qint64 nanosecondsPerMillisecond = 1'000'000;
constexpr qint64 nanosecondsPerSecond = 1'000'000'000;

QEvent::Type fireEvent()
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
    connect(&m_idle, &QTimer::timeout, this, &VirtualTime::jump);
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
    m_now = target;
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

void VirtualTime::jump()
{
    if (m_firing || !earliest())
        return;
    // The timer is fired from an event of its own: a slot that opens a box must leave the idle
    // timer free to beat in the event loop of the box.
    m_now = std::max(m_now, *earliest());
    m_firing = true;
    QCoreApplication::postEvent(this, new QEvent(fireEvent()));
}

bool VirtualTime::event(QEvent *event)
{
    if (event->type() != fireEvent())
        return QObject::event(event);
    m_firing = false;
    fireEarliest();
    return true;
}
