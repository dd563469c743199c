#include "AttentionPatient.h"

#include "Screen.h"
#include "TimeSource.h"
#include "hands.h"

#include <QWidget>

#include <utility>

namespace {
constexpr qint64 nanosecondsPerMillisecond = 1'000'000;

qint64 now()
{
    return TimeSource::current().nanoseconds();
}

bool is(const QWidget *widget, const char *className)
{
    return qstrcmp(widget->metaObject()->className(), className) == 0;
}

bool hasName(const QWidget *widget, QLatin1String name)
{
    return widget->objectName() == name;
}
} // namespace

AttentionPatient::AttentionPatient(const Observer &observer, quint32 seed, const Screen &screen,
                                   QObject *parent)
    : Patient(parent)
    , m_observer(observer)
    , m_draws(seed)
{
    m_answer.setSingleShot(true);
    m_tap.setSingleShot(true);
    connect(&screen, &Screen::appeared, this, &AttentionPatient::see);
    connect(&screen, &Screen::vanished, this, &AttentionPatient::lose);
    connect(&m_answer, &TaskTimer::timeout, this, &AttentionPatient::answer);
    connect(&m_tap, &TaskTimer::timeout, this, &AttentionPatient::tapNext);
}

void AttentionPatient::see(QWidget *widget)
{
    if (is(widget, "DrawRectangle")) {
        m_target = true;
        m_watching = Screen::showsButton(widget->window());
        if (!m_watching)
            seeTarget();
    } else if (is(widget, "DrawArrow")) {
        m_arrow = true;
        if (m_hasty) // the trial is seen to begin
            becomeHasty(Rhythm::tapsOfTrial());
    } else if (is(widget, "QPushButton")) {
        m_answer.stop();
        m_tap.stop();
        m_hasty = false;
    }
}

void AttentionPatient::lose(QWidget *widget)
{
    if (is(widget, "DrawRectangle"))
        loseTarget();
    else if (is(widget, "DrawArrow"))
        m_arrow = false;
    else if (hasName(widget, QLatin1String("lbl_asterisk")))
        seeAlertEnd();
    else if (hasName(widget, QLatin1String("pb_go")))
        beginBlock();
}

void AttentionPatient::beginBlock()
{
    m_rank.fill(0);
    m_rhythm.reset();
    m_alertEnd = -1;
}

Observer::Cue AttentionPatient::cue() const
{
    constexpr qint64 alertLasts = 1000 * nanosecondsPerMillisecond;
    if (m_arrow)
        return Observer::Cue::Orientation;
    if (m_alertEnd >= 0 && now() - m_alertEnd < alertLasts)
        return Observer::Cue::Alert;
    return Observer::Cue::None;
}

void AttentionPatient::seeTarget()
{
    constexpr int overlooked = 6000; // ms: behind every time limit
    m_tap.stop();
    m_hasty = false;
    m_answered = false;
    m_rhythm.targetAppeared(now() / nanosecondsPerMillisecond);
    const Observer::Cue seen = cue();
    int &rank = m_rank.at(std::size_t(seen));
    ++rank;
    const bool missed = m_draws.happens(m_observer.misses);
    const int time = m_observer.reactionTime(seen, rank, m_draws);
    m_answer.start(missed ? overlooked : time);
}

void AttentionPatient::loseTarget()
{
    m_target = false;
    m_answer.stop();
    if (m_watching)
        return;
    m_watching = true;
    m_rhythm.targetGone(now() / nanosecondsPerMillisecond, m_answered);
    if (m_draws.happens(m_observer.anticipations)) {
        m_hasty = true;
        becomeHasty(m_rhythm.taps());
    }
}

void AttentionPatient::seeAlertEnd()
{
    m_alertEnd = now();
    constexpr double soonest = 40.0; // ms; the target is due after 400
    constexpr double span = 320.0;
    if (m_hasty)
        becomeHasty({int(soonest + span * m_draws.uniform())});
}

void AttentionPatient::becomeHasty(const QList<int> &taps)
{
    m_taps.clear();
    int last = 0;
    for (const int at : taps)
        m_taps.append(at - std::exchange(last, at));
    if (!m_taps.isEmpty())
        m_tap.start(m_taps.takeFirst());
}

void AttentionPatient::tapNext()
{
    press();
    if (m_taps.isEmpty())
        m_hasty = false;
    else
        m_tap.start(m_taps.takeFirst());
}

void AttentionPatient::answer()
{
    m_answered = true;
    press();
}

void AttentionPatient::answerIn(int ms)
{
    if (m_target && !m_watching) {
        m_answer.start(ms);
        return;
    }
    pressIn(ms);
}

void AttentionPatient::press()
{
    if (m_observer.answer == Observer::Answer::LeftButton)
        hands::clickAside();
    else
        hands::press(Qt::Key_Space, QStringLiteral(" "));
}
