#pragma once

#include <array>
#include <cstddef>

/// The exposures of the visual perception task, in milliseconds. Each is a whole number of frames
/// of the screen, rounded to a millisecond.
namespace exposures {

inline constexpr int lowest = 1;   ///< index of the shortest exposure that the staircase shows
inline constexpr int highest = 20; ///< index of the longest one
/// The indices beyond: they repeat their neighbours, and the staircase is reflected at them.
inline constexpr int floor = 0;
inline constexpr int ceiling = 21;

using Row = std::array<int, 22>;

/// The test: a row for a screen of 60 Hz and one for 120 Hz.
inline constexpr std::array<Row, 2> _e_timer02_T1{
    Row{17,  17,  33,  33,  50,   67,   83,   117,  150,  217,  283,
        367, 483, 650, 850, 1133, 1500, 1983, 2633, 3500, 4633, 4633},
    Row{17,  17,  33,  42,  50,   67,   92,   117,  158,  208,  275,
        367, 492, 650, 858, 1133, 1500, 1992, 2633, 3492, 4633, 4633}};

/// The training: a coarser ladder, the same for both frequencies.
inline constexpr std::array<int, 9> _t_timer02_T1{17, 33, 67, 133, 283, 567, 1133, 2283, 4633};

inline constexpr int longest = 4633;          ///< ms, the first exposure of an untrained subtask
inline constexpr int ofTrainedPatient = 1133; ///< ms, where the training of any other begins

/// The row of a frequency, 0 for 60 Hz and 1 for 120 Hz; any other number counts as 60 Hz.
constexpr const Row &row(int frequency)
{
    return _e_timer02_T1[frequency == 1 ? 1 : 0];
}

/// The first index from `lowest` to `highest` whose exposure is at least `ms`, else `highest`.
constexpr int testIndex(int frequency, int ms)
{
    int index = lowest;
    while (index < highest && row(frequency)[std::size_t(index)] < ms)
        ++index;
    return index;
}

/// The first rung of the training's ladder that is at least `ms`; the last for 0 or less, and for
/// more than the ladder has.
constexpr int trainingIndex(int ms)
{
    constexpr int last = int(_t_timer02_T1.size()) - 1;
    if (ms <= 0)
        return last;
    int index = 0;
    while (index < last && _t_timer02_T1[std::size_t(index)] < ms)
        ++index;
    return index;
}

} // namespace exposures
