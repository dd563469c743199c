#pragma once

#include "Psychometric.h"
#include "Summary.h"
#include "Visits.h"

#include <cstdint>
#include <vector>

/// The three subtasks, by how often a guess is right: one of five figures, one of six places, both.
struct Subtask
{
    const char *name;
    double guess;
};

inline constexpr std::array<Subtask, 3> subtasks{
    {{"central", 1.0 / 5.0}, {"peripheral", 1.0 / 6.0}, {"dual", 1.0 / 30.0}}};

/// One observer at one screen.
struct Condition
{
    int subtask = 0;   ///< 0 to 2
    int frequency = 0; ///< 0 is 60 Hz, 1 is 120 Hz
    Psychometric observer;
};

/// What the table tells of a condition.
struct Finding
{
    Condition condition;
    double halfRight = 0.0; ///< ms, the exposure at which half of all answers is right
    double walk = 0.0;      ///< ms, geometric mean of the exposures of an endless staircase, exact
    Summary summary;
};

/// The staircase against observers whose threshold is known.
namespace study {

struct Settings
{
    int visits = 10'000; ///< of each observer
    double missed = 0.0; ///< share of trials without an answer in time
    std::uint64_t seed = 1;
    int threads = 1;
    Start start;
};

/// Every observer of the study at both screens.
std::vector<Condition> conditions();
/// A row for each condition, in their order. The same for the same seed, whatever the threads.
std::vector<Finding> run(const std::vector<Condition> &conditions, const Settings &settings);

} // namespace study
