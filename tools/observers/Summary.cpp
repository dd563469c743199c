#include "Summary.h"

#include "Visits.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <vector>

namespace {

constexpr double nothing = std::numeric_limits<double>::quiet_NaN();
constexpr double most = 0.95;

double mean(const std::vector<double> &values)
{
    return values.empty()
               ? nothing
               : std::accumulate(values.begin(), values.end(), 0.0) / double(values.size());
}

double deviation(const std::vector<double> &values)
{
    if (values.size() < 2)
        return nothing;
    const double centre = mean(values);
    double sum = 0.0;
    for (const double value : values)
        sum += (value - centre) * (value - centre);
    return std::sqrt(sum / double(values.size() - 1));
}

/// The smallest value that this share of the values doesn't exceed.
double quantile(std::vector<double> values, double share)
{
    if (values.empty())
        return nothing;
    const auto rank = std::size_t(std::ceil(share * double(values.size())));
    const auto it = values.begin() + std::ptrdiff_t(std::max<std::size_t>(rank, 1) - 1);
    std::nth_element(values.begin(), it, values.end());
    return *it;
}

double median(std::vector<double> values)
{
    if (values.empty())
        return nothing;
    std::sort(values.begin(), values.end());
    const std::size_t half = values.size() / 2;
    return values.size() % 2 == 1 ? values[half] : 0.5 * (values[half - 1] + values[half]);
}

/// A logarithm, written this way for a result of 0 to be no trouble: the shortest is 17 ms.
double logOf(const Outcome &outcome)
{
    return std::log(double(std::max(outcome.result, 1)));
}

std::vector<double> differences(std::span<const Outcome> outcomes)
{
    std::vector<double> pairs;
    for (std::size_t i = 0; i + 1 < outcomes.size(); i += 2) {
        if (outcomes[i].settled && outcomes[i + 1].settled)
            pairs.push_back(std::abs(logOf(outcomes[i]) - logOf(outcomes[i + 1])));
    }
    return pairs;
}

template <typename Predicate>
double share(std::span<const Outcome> outcomes, std::size_t total, Predicate predicate)
{
    return total == 0 ? nothing
                      : double(std::ranges::count_if(outcomes, predicate)) / double(total);
}

} // namespace

Summary Summary::of(std::span<const Outcome> outcomes)
{
    std::vector<double> logs;
    std::vector<double> trials;
    for (const Outcome &outcome : outcomes) {
        trials.push_back(double(outcome.trials));
        if (outcome.settled)
            logs.push_back(logOf(outcome));
    }
    const double spread = deviation(logs);
    Summary summary;
    summary.visits = int(outcomes.size());
    summary.unstable =
        share(outcomes, outcomes.size(), [](const Outcome &o) { return !o.settled; });
    summary.mean = std::exp(::mean(logs));
    summary.median = std::exp(::median(logs));
    summary.spread = spread;
    summary.smallestChange = std::exp(1.96 * std::sqrt(2.0) * spread);
    summary.change95 = std::exp(quantile(differences(outcomes), most));
    summary.trialsMean = ::mean(trials);
    summary.trials95 = quantile(trials, most);
    summary.atFloor = share(outcomes, logs.size(), [](const Outcome &o) { return o.limitInf > 0; });
    summary.atCeiling =
        share(outcomes, logs.size(), [](const Outcome &o) { return o.limitSup > 0; });
    return summary;
}
