#include "StationaryWalk.h"

#include <cmath>
#include <numeric>

using exposures::highest;
using exposures::lowest;

/// The balance is solved without a quotient, so that an observer who never fails, or always, needs
/// no case of their own: the share of i is that of all failures below it and all successes above.
StationaryWalk::StationaryWalk(const Chances &success)
    : m_success(success)
{
    for (int index = lowest; index <= highest; ++index) {
        double product = 1.0;
        for (int other = lowest; other <= highest; ++other) {
            const double chance = m_success[std::size_t(other)];
            if (other != index)
                product *= other < index ? 1.0 - chance : chance;
        }
        m_shares[std::size_t(index)] = product;
    }
    const double sum = std::accumulate(m_shares.begin(), m_shares.end(), 0.0);
    for (double &share : m_shares)
        share /= sum;
}

double StationaryWalk::atFloor() const
{
    return share(lowest) * m_success[std::size_t(lowest)];
}

double StationaryWalk::atCeiling() const
{
    return share(highest) * (1.0 - m_success[std::size_t(highest)]);
}

double StationaryWalk::geometricMean(const exposures::Row &row) const
{
    double sum = 0.0;
    for (int index = lowest; index <= highest; ++index)
        sum += share(index) * std::log(double(row[std::size_t(index)]));
    return std::exp(sum);
}
