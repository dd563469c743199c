#include "Witness.h"

#include <array>
#include <csignal>
#include <cstdio>

#include <poll.h>
#include <sys/signalfd.h>
#include <sys/timerfd.h>
#include <unistd.h>

namespace {

constexpr moment::Ns perSecond = 1'000'000'000;

/// A descriptor that can be read once the process was asked to end.
int endDescriptor()
{
    sigset_t asked;
    sigemptyset(&asked);
    sigaddset(&asked, SIGTERM);
    sigaddset(&asked, SIGINT);
    sigprocmask(SIG_BLOCK, &asked, nullptr);
    return signalfd(-1, &asked, SFD_CLOEXEC);
}

/// A line for each event, out at once: who drives the test reads along.
void tell(const char *kind, moment::Ns at, const std::string &what, const Shadow *place, int pixels,
          moment::Ns due)
{
    if (place) {
        std::printf("%s,%lld,%s,%016llx,%.3f,%d,\n", kind, static_cast<long long>(at), what.c_str(),
                    static_cast<unsigned long long>(place->hash()), place->brightness(), pixels);
    } else {
        std::printf("%s,%lld,%s,,,,%lld\n", kind, static_cast<long long>(at), what.c_str(),
                    static_cast<long long>(due));
    }
    std::fflush(stdout);
}

} // namespace

Witness::Witness(Desk &desk, std::vector<Shadow> places, std::vector<Errand> errands,
                 std::uint64_t seed)
    : m_desk(desk)
    , m_places(std::move(places))
    , m_errands(std::move(errands))
    , m_dice(seed)
    , m_timer(timerfd_create(CLOCK_MONOTONIC, TFD_CLOEXEC))
    , m_end(endDescriptor())
{
}

QString Witness::run()
{
    for (const Errand &errand : m_errands) {
        for (const Press &press : errand.presses) {
            if (!m_desk.hasKey(press))
                return QStringLiteral("no key for %1").arg(QString::fromStdString(press.name));
        }
    }
    m_desk.watch();
    std::printf("kind,at_ns,what,hash,brightness,pixels,due_ns\n");
    QString error = lookAround();
    if (!error.isEmpty())
        return error;
    enum { Screen, Timer, End };
    std::array<pollfd, 3> awaited{
        {{m_desk.descriptor(), POLLIN, 0}, {m_timer, POLLIN, 0}, {m_end, POLLIN, 0}}};
    while (!m_desk.isLost()) {
        takeIn();
        poll(awaited.data(), awaited.size(), -1);
        if (awaited[End].revents != 0)
            return {};
        if (awaited[Timer].revents != 0)
            pressDue();
    }
    return QStringLiteral("the screen is gone");
}

/// What the places look like before anything has changed.
QString Witness::lookAround()
{
    for (Shadow &place : m_places) {
        const auto pixels = m_desk.look(place.area());
        if (pixels.empty())
            return QStringLiteral("%1 is not on the screen")
                .arg(QString::fromStdString(place.name()));
        const moment::Ns at = moment::now();
        tell("place", at, place.name(), &place, place.look(place.area(), pixels), 0);
    }
    return {};
}

/// All that was drawn is stamped before the first look, since a look takes its time. While it does,
/// more may come, and the library keeps that for us: nobody would wake us for it.
void Witness::takeIn()
{
    for (auto drawn = m_desk.drawings(); !drawn.empty(); drawn = m_desk.drawings()) {
        std::vector<Change> changes;
        for (const Desk::Drawing &drawing : drawn) {
            for (Shadow &place : m_places) {
                const Area part = place.area().cut(drawing.area);
                if (!part.isEmpty())
                    changes.push_back({&place, part, drawing.at});
            }
        }
        for (const Change &change : changes)
            judge(change);
    }
}

/// Only what looks different has changed.
void Witness::judge(const Change &change)
{
    Shadow &place = *change.place;
    const double before = place.brightness();
    const auto pixels = m_desk.look(change.part);
    const int changed = pixels.empty() ? 0 : place.look(change.part, pixels);
    if (changed == 0)
        return;
    sendFor(place.name(), before, place.brightness(), change.at);
    tell("change", change.at, place.name(), &place, changed, 0);
}

void Witness::sendFor(const std::string &place, double before, double after, moment::Ns at)
{
    for (const Errand &errand : m_errands) {
        if (errand.isFor(QString::fromStdString(place), before, after)) {
            const moment::Ns due = at + errand.drawDelay(m_dice);
            m_due.emplace(due, errand.drawPress(m_dice));
            setTimer();
        }
    }
}

/// Wakes us a little before the next press is due.
void Witness::setTimer() const
{
    itimerspec next{};
    if (!m_due.empty()) {
        const moment::Ns wake = m_due.begin()->first - moment::lead;
        next.it_value = {wake / perSecond, wake % perSecond};
    }
    timerfd_settime(m_timer, TFD_TIMER_ABSTIME, &next, nullptr);
}

void Witness::pressDue()
{
    std::uint64_t count = 0;
    [[maybe_unused]] const auto size = read(m_timer, &count, sizeof count);
    if (m_due.empty())
        return;
    const auto [due, press] = *m_due.begin();
    m_due.erase(m_due.begin());
    moment::waitUntil(due);
    const moment::Ns sent = m_desk.press(press);
    setTimer();
    tell("press", sent, press.name, nullptr, 0, due);
}
