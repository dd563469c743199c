#include "MemoryPatient.h"

#include "DrawCrossThick.h"
#include "Screen.h"
#include "SessionStore.h"
#include "hands.h"

#include <QPushButton>
#include <QScopedValueRollback>

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

constexpr QLatin1String lastQuestion("lbl_lastCross");
constexpr QLatin1String firstQuestion("lbl_firstCross");

/// The screen is as large as its calibration tells. Before there is one, a pixel is a millimetre.
int pixels(double mm, int micrometresPerPixel)
{
    constexpr double micrometres = 1000.0;
    return int(std::lround(micrometresPerPixel > 0 ? mm * micrometres / micrometresPerPixel : mm));
}

} // namespace

MemoryPatient::MemoryPatient(const MemoryObserver &observer, quint32 seed, const Screen &screen,
                             QObject *parent)
    : Patient(parent)
    , m_observer(observer)
    , m_draws(seed)
{
    for (TaskTimer *timer : {&m_notice, &m_answer})
        timer->setSingleShot(true);
    connect(&screen, &Screen::appeared, this, &MemoryPatient::see);
    connect(&screen, &Screen::vanished, this, &MemoryPatient::lose);
    connect(&screen, &Screen::pointerAppeared, this, [this] { m_notice.start(0); });
    connect(&m_notice, &TaskTimer::timeout, this, &MemoryPatient::notice);
    connect(&m_answer, &TaskTimer::timeout, this, &MemoryPatient::answer);
}

QWidget **MemoryPatient::question(const QWidget *widget)
{
    const QString name = widget->objectName();
    if (name == lastQuestion)
        return &m_lastQuestion;
    return name == firstQuestion ? &m_firstQuestion : nullptr;
}

void MemoryPatient::see(QWidget *widget)
{
    if (const auto *cross = qobject_cast<const DrawCrossThick *>(widget)) {
        if (!m_clicking && !Screen::showsButton(widget->window()))
            seeCross(*cross);
    } else if (qobject_cast<const QPushButton *>(widget)) {
        seeButton(*widget);
    } else if (QWidget **asked = question(widget)) {
        *asked = widget;
        m_notice.start(0);
    }
}

void MemoryPatient::lose(const QWidget *widget)
{
    QWidget **asked = question(widget);
    if (!asked)
        return;
    *asked = nullptr;
    m_answer.stop();
    m_notice.start(0); // the other one may be there
}

void MemoryPatient::seeCross(const QWidget &cross)
{
    if (m_again && !m_run.isEmpty())
        m_run.removeLast();
    m_again = false;
    m_run.append(cross.mapTo(cross.window(), QPoint(cross.width() / 2, cross.height() / 2)));
}

/// A run that was asked for is over. One that a pause has cut goes on at its latest cross.
void MemoryPatient::seeButton(const QWidget &button)
{
    const bool blockBegins = button.objectName() == QLatin1String("pb_go");
    m_notice.stop();
    m_answer.stop();
    if (blockBegins)
        m_rank = 0;
    if (blockBegins || m_asked)
        forget();
    else
        m_again = true;
}

void MemoryPatient::forget()
{
    m_run.clear();
    m_again = false;
    m_asked = false;
}

void MemoryPatient::notice()
{
    if ((!m_lastQuestion && !m_firstQuestion) || m_answer.isActive())
        return;
    const QWidget *window = (m_lastQuestion ? m_lastQuestion : m_firstQuestion)->window();
    if (!Screen::showsPointer(window) || Screen::showsButton(window))
        return;
    if (!m_asked)
        recall(*window);
    m_answer.start(m_observer.answerTime.draw(m_draws));
}

void MemoryPatient::recall(const QWidget &window)
{
    m_asked = true;
    ++m_rank;
    if (m_run.isEmpty()) // who has seen nothing points at the middle
        m_run.append(window.rect().center());
    m_recalledFirst = scattered(m_run.constFirst(), m_observer.first);
    m_recalledLast = scattered(m_run.constLast(), m_observer.last);
    if (m_draws.happens(m_observer.confusions))
        std::swap(m_recalledFirst, m_recalledLast);
    for (QPoint *click : {&m_recalledFirst, &m_recalledLast}) { // the pointer stays on the screen
        click->setX(std::clamp(click->x(), 0, window.width() - 1));
        click->setY(std::clamp(click->y(), 0, window.height() - 1));
    }
}

QPoint MemoryPatient::scattered(const QPoint &place, const MemoryObserver::Trace &trace)
{
    const double spread = trace.spreadAfter(int(m_run.size())) * m_observer.practised(m_rank);
    const double across = spread * m_draws.normal(); // drawn in this order, whatever the compiler
    const double up = spread * m_draws.normal();
    return place +
           QPoint(pixels(across, sessionStore().horzPixel), pixels(up, sessionStore().vertPixel));
}

void MemoryPatient::answer()
{
    const QScopedValueRollback clicking(m_clicking, true);
    // The last cross is asked for first: a question that a pause has left comes behind it.
    if (m_lastQuestion)
        hands::clickAt(m_lastQuestion->window(), m_recalledLast);
    else
        hands::clickAt(m_firstQuestion->window(), m_recalledFirst);
}

void MemoryPatient::press()
{
    const QScopedValueRollback clicking(m_clicking, true);
    hands::clickAside();
}

void MemoryPatient::answerIn(int ms)
{
    notice();
    if (m_answer.isActive())
        m_answer.start(ms);
    else
        pressIn(ms);
}
