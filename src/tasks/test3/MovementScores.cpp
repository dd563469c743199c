#include "MovementScores.h"

#include <initializer_list>

namespace {
// Places of the ring, by their direction.
enum Place : std::size_t { E, SE, S, SW, W, NW, N, NE };
} // namespace

void MovementScores::clear()
{
    *this = MovementScores();
}

void MovementScores::store(int rank, int place, double rt)
{
    if (rank >= 0 && rank < int(m_block.size()))
        m_block[std::size_t(rank)] = rt;
    m_sums.at(std::size_t(place)) += rt;
}

double MovementScores::time(int rank) const
{
    return m_block.at(std::size_t(rank));
}

double MovementScores::corrected(int rank) const
{
    return m_block.at(std::size_t{ranks} + std::size_t(rank));
}

MovementScores::Scores MovementScores::compute(int errors, int trialCount)
{
    std::array<double, ranks> logarithms{};
    statistics::logLn(logarithms.data(), ranks);
    double *raw = m_block.data();
    double *correctedTimes = raw + ranks;

    Scores scores;
    scores.fit = statistics::regression(logarithms.data(), raw, ranks);
    statistics::correction(raw, correctedTimes, scores.fit.slope, double(ranks));
    scores.rt = statistics::somme(correctedTimes, ranks) / double(ranks);
    scores.error = double(errors) / double(trialCount) * 100.0;

    constexpr double trialsOfPlace = double(ranks) / places;
    const auto mean = [this](std::initializer_list<Place> of) {
        double sum = 0.0;
        for (const Place place : of)
            sum += m_sums[place];
        return sum / (trialsOfPlace * double(of.size()));
    };
    scores.oblique = mean({SE, SW, NW, NE});
    scores.cardinal = mean({E, S, W, N});
    scores.left = mean({SW, W, NW});
    scores.right = mean({E, SE, NE});
    scores.top = mean({NW, N, NE});
    scores.bottom = mean({SE, S, SW});
    return scores;
}
