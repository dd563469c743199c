#include "Study.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <thread>

namespace {

constexpr std::array steepnesses{1.0, 2.0, 4.0, 8.0};
constexpr std::array lapses{0.0, 0.02, 0.05};
constexpr int frequencies = 2;

/// Thresholds from the shortest exposure to the longest, in equal ratios, in whole ms.
std::array<double, 12> thresholds()
{
    constexpr double shortest = 17.0;
    std::array<double, 12> values{};
    const double ratio =
        std::pow(double(exposures::longest) / shortest, 1.0 / double(values.size() - 1));
    for (std::size_t i = 0; i < values.size(); ++i)
        values[i] = std::round(shortest * std::pow(ratio, double(i)));
    return values;
}

/// The draws of a condition depend on the seed and its number alone.
Finding examine(const Condition &condition, std::uint64_t number, const study::Settings &settings)
{
    Visits visits(condition.observer, condition.frequency, settings.start, settings.missed,
                  Dice(settings.seed, number));
    std::vector<Outcome> outcomes;
    outcomes.reserve(std::size_t(settings.visits));
    for (int i = 0; i < settings.visits; ++i)
        outcomes.push_back(visits.next());
    const StationaryWalk walk(chancesOf(condition.observer, condition.frequency));
    return {condition, condition.observer.exposureAt(0.5),
            walk.geometricMean(exposures::row(condition.frequency)), Summary::of(outcomes)};
}

} // namespace

std::vector<Condition> study::conditions()
{
    std::vector<Condition> all;
    for (int subtask = 0; subtask < int(subtasks.size()); ++subtask) {
        const double guess = subtasks[std::size_t(subtask)].guess;
        for (int frequency = 0; frequency < frequencies; ++frequency) {
            for (const double threshold : thresholds()) {
                for (const double steepness : steepnesses) {
                    for (const double lapse : lapses)
                        all.push_back({subtask, frequency, {threshold, steepness, lapse, guess}});
                }
            }
        }
    }
    return all;
}

std::vector<Finding> study::run(const std::vector<Condition> &conditions, const Settings &settings)
{
    std::vector<Finding> findings(conditions.size());
    std::atomic<std::size_t> next = 0;
    const auto work = [&] {
        for (std::size_t i = next++; i < conditions.size(); i = next++)
            findings[i] = examine(conditions[i], i, settings);
    };
    std::vector<std::jthread> helpers;
    for (int i = 1; i < settings.threads; ++i)
        helpers.emplace_back(work);
    work();
    helpers.clear(); // waits for them
    return findings;
}
