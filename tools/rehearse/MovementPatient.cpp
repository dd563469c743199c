#include "MovementPatient.h"

#include "DrawArrow.h"
#include "Screen.h"
#include "hands.h"

#include <QPushButton>

#include <algorithm>
#include <array>

namespace {

using Direction = PatchGlance::Direction;

constexpr QLatin1String unknownButton("pb_center");
constexpr std::array<QLatin1String, PatchGlance::directions> directionButtons{
    QLatin1String("pb_right"), QLatin1String("pb_down"), QLatin1String("pb_left"),
    QLatin1String("pb_up")};

bool isUnknownButton(const QWidget *widget)
{
    return widget->objectName() == unknownButton;
}

bool isOfPad(const QWidget *widget)
{
    return isUnknownButton(widget) ||
           std::any_of(directionButtons.begin(), directionButtons.end(),
                       [widget](QLatin1String name) { return widget->objectName() == name; });
}

/// There is a button for the assessor.
bool assessorLeads(const QWidget *window)
{
    const auto buttons = window->findChildren<QPushButton *>();
    return std::any_of(buttons.begin(), buttons.end(), [](const QPushButton *button) {
        return button->isVisible() && !isOfPad(button);
    });
}

void clickPad(std::optional<Direction> direction)
{
    if (QWidget *button =
            Screen::visible(direction ? directionButtons.at(*direction) : unknownButton))
        hands::click(button);
}

void pressArrowKey(Direction direction)
{
    constexpr std::array keys{Qt::Key_Right, Qt::Key_Down, Qt::Key_Left, Qt::Key_Up};
    hands::press(keys.at(direction));
}

// A patient presses when the movement has been seen: the glances come just before. Between them the
// lines move by 3 pixels.
constexpr int lookAhead = 75;      // ms from the first glance to the Space
constexpr int betweenGlances = 45; // ms
constexpr int overlooked = 6000;   // ms: behind every time limit

} // namespace

MovementPatient::MovementPatient(const MovementObserver &observer, quint32 seed,
                                 const Screen &screen, QObject *parent)
    : Patient(parent)
    , m_observer(observer)
    , m_draws(seed)
{
    for (TaskTimer *timer : {&m_look, &m_space, &m_answer})
        timer->setSingleShot(true);
    connect(&screen, &Screen::appeared, this, &MovementPatient::see);
    connect(&screen, &Screen::vanished, this, &MovementPatient::lose);
    connect(&m_look, &TaskTimer::timeout, this, &MovementPatient::look);
    connect(&m_space, &TaskTimer::timeout, this, &MovementPatient::press);
    connect(&m_answer, &TaskTimer::timeout, this, &MovementPatient::answer);
}

void MovementPatient::see(const QWidget *widget)
{
    if (const DrawArrow *arrow = PatchGlance::arrow(widget)) {
        if (!Screen::showsButton(widget->window()))
            seeArrow(*arrow);
    } else if (isUnknownButton(widget) && !assessorLeads(widget->window())) {
        seePad();
    }
}

void MovementPatient::lose(const QWidget *widget)
{
    if (PatchGlance::arrow(widget)) {
        m_arrow = nullptr;
        m_look.stop();
        m_space.stop();
    } else if (isUnknownButton(widget)) {
        m_answer.stop();
    }
}

void MovementPatient::seeArrow(const DrawArrow &arrow)
{
    m_arrow = &arrow;
    const bool missed = m_draws.happens(m_observer.misses);
    const int time = m_observer.reactionTime.draw(
        m_draws, PatchGlance::isOblique(arrow) ? m_observer.obliqueCost : 0.0);
    pressSpaceIn(missed ? overlooked : time);
}

void MovementPatient::pressSpaceIn(int ms)
{
    m_firstGlance.reset();
    m_seen.reset();
    m_look.start(std::max(ms - lookAhead, 0));
    m_space.start(ms);
}

void MovementPatient::look()
{
    const PatchGlance glance(*m_arrow);
    if (m_firstGlance) {
        m_seen = glance.movedSince(*m_firstGlance);
    } else {
        m_firstGlance = glance;
        m_look.start(betweenGlances);
    }
}

void MovementPatient::press()
{
    hands::press(Qt::Key_Space, QStringLiteral(" "));
}

void MovementPatient::seePad()
{
    m_keyFailed = false;
    m_told = chooseAnswer();
    m_answer.start(m_observer.answerTime.draw(m_draws));
}

/// Draws the same number of chances in every trial.
std::optional<Direction> MovementPatient::chooseAnswer()
{
    const bool unknown = m_draws.happens(m_observer.unknown);
    const bool right = m_draws.happens(m_observer.rightDirections);
    const int others = PatchGlance::directions - 1;
    const int turn = 1 + int(m_draws.uniform() * others);
    if (unknown || !m_seen)
        return std::nullopt;
    return right ? *m_seen : Direction((*m_seen + turn) % PatchGlance::directions);
}

void MovementPatient::answer()
{
    const bool byKey = m_observer.answer == MovementObserver::Answer::Keys && m_told;
    if (byKey && !m_keyFailed)
        pressArrowKey(*m_told);
    else
        clickPad(m_told);
    if (byKey && Screen::visible(unknownButton)) { // then by the mouse
        m_keyFailed = true;
        m_answer.start(m_observer.answerTime.draw(m_draws));
    }
}

void MovementPatient::answerIn(int ms)
{
    if (m_arrow)
        pressSpaceIn(ms);
    else if (m_answer.isActive())
        m_answer.start(ms);
    else
        pressIn(ms);
}
