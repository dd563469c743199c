#include "AttentionScores.h"

namespace {
constexpr double perRank = 0.03125; // a thirty-second
}

void AttentionScores::clear()
{
    m_block.fill(0.0);
}

void AttentionScores::store(int condition, int rank, double rt)
{
    const int place = condition * ranks + rank - 1;
    if (rank < 1 || place >= int(m_block.size()))
        return;
    m_block[std::size_t(place)] = rt;
}

double AttentionScores::time(int condition, int rank) const
{
    return m_block.at(std::size_t(condition * ranks + rank - 1));
}

double AttentionScores::corrected(int condition, int rank) const
{
    return m_block.at(std::size_t(tableSize + condition * ranks + rank - 1));
}

AttentionScores::Scores AttentionScores::compute(const std::array<int, conditions> &errors,
                                                 int trialCount)
{
    Scores scores;
    std::array<double, conditions> means{};
    for (std::size_t c = 0; c < conditions; ++c) {
        means[c] = meanOf(int(c), scores[c].fit);
        scores[c].value = c == 0 ? means[0] : means[0] - means[c];
        scores[c].error = double(errors[c]) / double(trialCount) * 100.0;
    }
    return scores;
}

double AttentionScores::meanOf(int condition, RegressionResult &fit)
{
    std::array<double, fitted> logarithms{};
    statistics::logLn(logarithms.data(), fitted);

    double *raw = &m_block.at(std::size_t(condition) * std::size_t{ranks});
    double *correctedTimes = raw + tableSize;
    fit = statistics::regression(logarithms.data(), raw, fitted);
    statistics::correction(raw, correctedTimes, fit.slope, double(fitted));
    return (statistics::somme(correctedTimes, fitted) +
            statistics::somme(raw + fitted, ranks - fitted)) *
           perRank;
}
