#include "Rhythm.h"

namespace {
constexpr int apart = 390;       // ms between two taps
constexpr int closingWait = 600; // ms from an answer to the next trial, at the patient's pace
constexpr int slowPause = 3000;  // ms without a target; at the patient's pace it is 2700 at most

QList<int> row(int first, int last)
{
    QList<int> taps;
    for (int at = first; at <= last; at += apart)
        taps.append(at);
    return taps;
}
} // namespace

void Rhythm::reset()
{
    *this = Rhythm();
}

void Rhythm::targetAppeared(qint64 now)
{
    if (m_answered)
        m_slow = now - m_gone > slowPause;
    m_appeared = now;
}

void Rhythm::targetGone(qint64 now, bool answered)
{
    m_gone = now;
    // A late answer shortens the pause of a slow test: it teaches nothing.
    constexpr int ordinary = 1500;
    m_answered = answered && now - m_appeared < ordinary;
}

QList<int> Rhythm::taps() const
{
    if (!m_slow) {
        QList<int> taps = tapsOfTrial();
        for (int &at : taps)
            at += closingWait;
        return taps;
    }
    // From target to target it takes one cycle, 1200 ms more or less.
    constexpr int earliest = 6150;
    constexpr int latest = 8900;
    const int shown = int(m_gone - m_appeared);
    QList<int> taps = row(earliest - shown, latest - shown);
    taps.removeIf([](int at) { return at <= 0; });
    return taps;
}

QList<int> Rhythm::tapsOfTrial()
{
    constexpr int earliest = 1000; // a target comes 900 to 2099 ms after the trial began
    constexpr int latest = 1800;
    return row(earliest, latest);
}
