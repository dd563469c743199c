#include "Visits.h"

#include <algorithm>
#include <cmath>

void Training::take(Answer answer)
{
    constexpr int last = int(exposures::_t_timer02_T1.size()) - 1;
    const bool mayGoDown = m_trial < trials - 1;
    ++m_trial;
    if (answer == Answer::Right && mayGoDown)
        m_rung = std::max(m_rung - 1, 0);
    else if (answer == Answer::Wrong)
        m_rung = std::min(m_rung + 1, last);
}

StationaryWalk::Chances chancesOf(const Psychometric &observer, int frequency)
{
    StationaryWalk::Chances chances{};
    std::ranges::transform(exposures::row(frequency), chances.begin(), [&](int exposure) {
        return observer.chanceOfSuccess(double(exposure));
    });
    return chances;
}

Visits::Visits(const Psychometric &observer, int frequency, Start start, double missed, Dice dice)
    : m_observer(observer)
    , m_frequency(frequency)
    , m_start(start)
    , m_missed(missed)
    , m_dice(dice)
    , m_chances(chancesOf(observer, frequency))
{
    std::ranges::transform(exposures::_t_timer02_T1, m_trainingChances.begin(), [&](int exposure) {
        return observer.chanceOfSuccess(double(exposure));
    });
}

Answer Visits::answer(double chance)
{
    if (m_missed > 0.0 && m_dice.falls(m_missed))
        return Answer::None;
    return m_dice.falls(chance) ? Answer::Right : Answer::Wrong;
}

int Visits::startOfVisit()
{
    switch (m_start.from) {
    case Start::From::Known:
        return int(std::lround(m_observer.threshold));
    case Start::From::Exposure:
        return m_start.exposure;
    case Start::From::Training:
        break;
    }
    Training training;
    for (int trial = 0; trial < Training::trials; ++trial)
        training.take(answer(m_trainingChances[std::size_t(training.rung())]));
    return training.exposure();
}

Outcome Visits::next()
{
    const int start = startOfVisit();
    // The first trial runs at the start itself, whether or not that is a value of the table.
    const double firstChance = m_observer.chanceOfSuccess(double(start));
    return measure(m_frequency, start, [&](int index, bool first) {
        return answer(first ? firstChance : m_chances[std::size_t(index)]);
    });
}
