#include "VisionPatient.h"

#include "Screen.h"
#include "TimeSource.h"
#include "hands.h"

#include <QPushButton>

#include <algorithm>
#include <array>

namespace {

constexpr std::array figureButtons{QLatin1String("pb_uniform"), QLatin1String("pb_shape"),
                                   QLatin1String("pb_contrast"), QLatin1String("pb_orientation"),
                                   QLatin1String("pb_size")};
constexpr std::array positionButtons{QLatin1String("pb_pos0"), QLatin1String("pb_pos1"),
                                     QLatin1String("pb_pos2"), QLatin1String("pb_pos3"),
                                     QLatin1String("pb_pos4"), QLatin1String("pb_pos5")};

template <typename Names>
QList<QWidget *> onScreen(const Names &names)
{
    QList<QWidget *> buttons;
    for (const QLatin1String name : names) {
        if (QWidget *button = Screen::visible(name))
            buttons.append(button);
    }
    return buttons;
}

QList<QWidget *> answersOnScreen()
{
    return onScreen(figureButtons) + onScreen(positionButtons);
}

template <typename Names>
bool isOneOf(const QWidget *widget, const Names &names)
{
    return std::any_of(names.begin(), names.end(),
                       [widget](QLatin1String name) { return widget->objectName() == name; });
}

bool isAnswer(const QWidget *widget)
{
    return isOneOf(widget, figureButtons) || isOneOf(widget, positionButtons);
}

/// Beside the answers there is a button for the assessor.
bool assessorLeads(const QWidget *window)
{
    const auto buttons = window->findChildren<QPushButton *>();
    return std::any_of(buttons.begin(), buttons.end(), [](const QPushButton *button) {
        return button->isVisible() && !isAnswer(button);
    });
}

qint64 now()
{
    return TimeSource::current().nanoseconds();
}

} // namespace

VisionPatient::VisionPatient(const VisionObserver &observer, quint32 seed, const Screen &screen,
                             QObject *parent)
    : Patient(parent)
    , m_observer(observer)
    , m_draws(seed)
{
    m_answer.setSingleShot(true);
    connect(&screen, &Screen::appeared, this, &VisionPatient::see);
    connect(&screen, &Screen::vanished, this, &VisionPatient::lose);
    connect(&m_answer, &TaskTimer::timeout, this, &VisionPatient::answer);
}

void VisionPatient::see(QWidget *widget)
{
    if (Glance::isFigure(widget) || Glance::isTriangle(widget)) {
        if (m_shown.isEmpty())
            m_onset = now();
        m_shown.append(widget);
    } else if (isAnswer(widget) && !m_answer.isActive()) {
        beginAnswer();
    }
}

void VisionPatient::lose(const QWidget *widget)
{
    if (!m_shown.isEmpty() && m_shown.contains(widget)) { // all of them go at once
        constexpr double nanosecondsPerMillisecond = 1e6;
        m_exposure = double(now() - m_onset) / nanosecondsPerMillisecond;
        m_glance = Glance::at(m_shown);
        m_shown.clear();
    } else if (isAnswer(widget) && answersOnScreen().isEmpty()) {
        m_answer.stop();
    }
}

const VisionObserver::Sight &VisionPatient::sight() const
{
    if (m_glance.hasFigures && m_glance.hasTriangles)
        return m_observer.dual;
    return m_glance.hasFigures ? m_observer.central : m_observer.peripheral;
}

void VisionPatient::beginAnswer()
{
    if (m_observer.answers == VisionObserver::Answers::Silent)
        return;
    m_seen = m_draws.happens(sight().chanceOfSeeing(m_exposure));
    m_answer.start(m_observer.answerTime.draw(m_draws));
}

void VisionPatient::answer()
{
    const QList<QWidget *> figures = onScreen(figureButtons);
    const QList<QWidget *> positions = onScreen(positionButtons);
    const QList<QWidget *> all = figures + positions;
    if (all.isEmpty() || assessorLeads(all.constFirst()->window()))
        return;
    constexpr double even = 0.5; // either half may come first
    const bool central = !figures.isEmpty() && (positions.isEmpty() || m_draws.happens(even));
    hands::click(central ? choose(figures, rightFigure(figures))
                         : choose(positions, rightPosition(positions)));
    const bool otherHalf = !figures.isEmpty() && !positions.isEmpty();
    if (otherHalf && m_observer.answers != VisionObserver::Answers::Silent)
        m_answer.start(m_observer.answerTime.draw(m_draws));
}

QWidget *VisionPatient::choose(const QList<QWidget *> &buttons, QWidget *right)
{
    using Answers = VisionObserver::Answers;
    const Answers manner = m_observer.answers;
    if (right && (manner == Answers::AlwaysRight || (manner == Answers::AsSeen && m_seen)))
        return right;
    QList<QWidget *> choice = buttons;
    if (manner == Answers::AlwaysWrong)
        choice.removeOne(right);
    return choice.at(qsizetype(m_draws.uniform() * double(choice.size())));
}

QWidget *VisionPatient::rightFigure(const QList<QWidget *> &buttons) const
{
    const auto it = std::find_if(buttons.begin(), buttons.end(), [this](const QWidget *button) {
        return button->objectName() == m_glance.figureButton;
    });
    return it == buttons.end() ? nullptr : *it;
}

QWidget *VisionPatient::rightPosition(const QList<QWidget *> &buttons) const
{
    if (!m_glance.oddDirection || buttons.isEmpty())
        return nullptr;
    const auto off = [this](const QWidget *button) {
        return Glance::between(Glance::direction(button), *m_glance.oddDirection);
    };
    return *std::min_element(
        buttons.begin(), buttons.end(),
        [off](const QWidget *one, const QWidget *other) { return off(one) < off(other); });
}

void VisionPatient::answerIn(int ms)
{
    if (!answersOnScreen().isEmpty())
        m_answer.start(ms);
    else
        pressIn(ms);
}

void VisionPatient::press()
{
    hands::clickAside();
}
