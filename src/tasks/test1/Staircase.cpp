#include "Staircase.h"

#include "exposures.h"

#include <algorithm>
#include <cmath>

void Staircase::clear()
{
    *this = Staircase();
}

void Staircase::seed(int frequency, int exposure)
{
    m_frequency = frequency;
    m_index = exposures::testIndex(frequency, exposure);
    m_track[0] = short(m_index);
}

void Staircase::rewind()
{
    m_position = 0;
}

void Staircase::enter(int value)
{
    const std::size_t next = std::size_t(m_position) + 1;
    if (next < m_track.size())
        m_track[next] = short(value);
}

bool Staircase::step(bool success)
{
    m_index += success ? -1 : 1;
    enter(m_index);
    if (m_index != exposures::floor && m_index != exposures::ceiling)
        return false;
    m_index = std::clamp(m_index, exposures::lowest, exposures::highest);
    advance();
    enter(m_index);
    return true;
}

void Staircase::advance()
{
    m_position = std::min(m_position + 1, capacity - 1);
}

int Staircase::exposure() const
{
    return exposures::row(m_frequency)[std::size_t(m_index)];
}

std::span<const short> Staircase::track() const
{
    return {m_track.data(), std::size_t(m_position) + 1};
}

bool Staircase::analyse()
{
    findTurningPoints();
    m_peaks.search();
    m_troughs.search();
    if (!isSettled() || m_position < least)
        return false;
    computeScore();
    return true;
}

void Staircase::findTurningPoints()
{
    const int n = m_position;
    if (n > 1) {
        const short before = at(n - 2);
        const short here = at(n - 1);
        const short after = at(n);
        if (before < here && after < here)
            m_peaks.add(here);
        if (before > here && after > here)
            m_troughs.add(here);
    }
    if (n > 2) {
        // The reflection at a limit takes two entries at once, so that the turning point behind it
        // was stepped over.
        const short limit = at(n - 3);
        const short here = at(n - 2);
        const short after = at(n - 1);
        if (limit == exposures::ceiling && here < limit && after > here)
            m_troughs.add(here);
        if (limit == exposures::floor && here > limit && after < here)
            m_peaks.add(here);
    }
}

void Staircase::TurningPoints::add(short value)
{
    if (count < capacity)
        values[std::size_t(count++)] = value;
}

/// From the newest point backwards: a point and the three before it that lie within three
/// neighbouring steps. There are three such bands about a point: the point is their lowest step,
/// their middle one, or their highest. Points outside the band are passed over.
void Staircase::TurningPoints::search()
{
    constexpr int bands = 3;
    found = false;
    int best = -1; // the band whose oldest member is the most recent
    for (int newest = count - 1; newest >= groupSize - 1 && !found; --newest) {
        const short point = values[std::size_t(newest)];
        for (int band = 0; band < bands; ++band) {
            const int low = point - band;
            const int high = low + bands - 1;
            Group group{point};
            int members = 1;
            int k = newest;
            while (members < groupSize && --k >= 0) {
                const short value = values[std::size_t(k)];
                if (value >= low && value <= high)
                    group[std::size_t(members++)] = value;
            }
            if (members < groupSize)
                continue;
            found = true;
            if (k > best) { // a tie goes to the lower band
                best = k;
                settled = group;
            }
        }
    }
}

void Staircase::computeScore()
{
    const exposures::Row &table = exposures::row(m_frequency);
    const auto sumOfLogs = [&](const Group &group) {
        double sum = 0.0;
        for (const short index : group)
            sum += std::log(double(table[std::size_t(index)]));
        return sum;
    };
    const double peaks = sumOfLogs(m_peaks.settled);
    const double troughs = sumOfLogs(m_troughs.settled);
    m_score.sup = std::exp(0.25 * peaks);
    m_score.inf = std::exp(0.25 * troughs);
    m_score.mean = std::exp(0.125 * (peaks + troughs));
    m_score.limitSup = int(std::ranges::count(m_peaks.settled, exposures::ceiling));
    m_score.limitInf = int(std::ranges::count(m_troughs.settled, exposures::floor));
}
