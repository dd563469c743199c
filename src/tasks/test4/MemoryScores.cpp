#include "MemoryScores.h"

#include <cmath>

namespace {

using Line = std::array<double, MemoryScores::ranks>;

/// The load of every place of the table by load: five times each.
constexpr Line loadAxis = [] {
    Line axis{};
    for (std::size_t i = 0; i < axis.size(); ++i) {
        const std::size_t load = i / MemoryScores::blocks;
        axis[i] = double(load);
    }
    return axis;
}();

Line carriedForward(const Line &logarithms, double slope)
{
    Line corrected{};
    statistics::correction(logarithms.data(), corrected.data(), slope, double(corrected.size()));
    return corrected;
}

double geometricMean(const Line &logarithms)
{
    const auto n = int(logarithms.size());
    return std::exp(statistics::somme(logarithms.data(), n) / double(n));
}

} // namespace

void MemoryScores::clear()
{
    *this = MemoryScores();
}

void MemoryScores::store(int rank, int load, double distFirst, double distLast)
{
    ++m_counts.at(std::size_t(load));
    if (rank < 0 || rank >= ranks)
        return;
    const auto at = std::size_t(rank);
    m_lnFirst[at] = std::log(distFirst);
    m_lnLast[at] = std::log(distLast);
    m_loads[at] = load;
}

MemoryScores::Scores MemoryScores::compute(int errors, int trialCount) const
{
    Line lnRank{};
    statistics::logLn(lnRank.data(), ranks);

    Scores scores;
    scores.practiceF = statistics::regression(lnRank.data(), m_lnFirst.data(), ranks);
    const Line corrFirst = carriedForward(m_lnFirst, scores.practiceF.slope);
    scores.averageF = geometricMean(corrFirst);

    scores.practiceL = statistics::regression(lnRank.data(), m_lnLast.data(), ranks);
    scores.averageL = geometricMean(carriedForward(m_lnLast, scores.practiceL.slope));

    Line loadGrouped{};
    for (std::size_t rank = 0; rank < ranks; ++rank) {
        const std::size_t block = rank / memoryField::loads;
        loadGrouped.at(std::size_t(m_loads[rank]) * blocks + block) = corrFirst[rank];
    }
    const RegressionResult growth =
        statistics::regression(loadAxis.data(), loadGrouped.data(), ranks);
    scores.slope = std::exp(growth.slope);
    scores.intercept = std::exp(growth.intercept);
    scores.r2 = growth.r2;

    scores.error = double(errors) / double(trialCount) * 100.0;
    return scores;
}
