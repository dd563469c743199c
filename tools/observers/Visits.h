#pragma once

#include "Dice.h"
#include "Psychometric.h"
#include "Staircase.h"
#include "StationaryWalk.h"
#include "exposures.h"

enum class Answer { Right, Wrong, None };

/// What a test of one subtask came to.
struct Outcome
{
    bool settled = false; ///< false: the measure was given up as unstable
    int result = 0;       ///< ms, if it has settled
    int trials = 0;       ///< of the test, training not counted
    int limitSup = 0;     ///< peaks of the result beyond the longest exposure
    int limitInf = 0;     ///< troughs of the result below the shortest one
};

/// One test of one subtask alone, with the checks in the order in which they are made: a measure
/// that settles with the fiftieth entry is given up. `answer` gives the Answer to a trial, by an
/// index and whether this is the first trial, which is shown at the start itself.
template <typename Answering>
Outcome measure(int frequency, int start, Answering &&answer)
{
    Staircase track;
    track.seed(frequency, start);
    Outcome outcome;
    while (true) {
        const Answer given = answer(track.index(), outcome.trials == 0);
        if (given != Answer::None)
            track.step(given == Answer::Right);
        track.advance();
        ++outcome.trials;
        if (track.isSpent())
            return outcome;
        if (!track.analyse())
            continue;
        const Staircase::Score &score = track.score();
        outcome.settled = true;
        outcome.result = int(score.mean); // cut, as in the test
        outcome.limitSup = score.limitSup;
        outcome.limitInf = score.limitInf;
        return outcome;
    }
}

/// The training of a subtask that was never measured: ten trials on the coarse ladder, from the
/// longest exposure down. The tenth makes no step down, and a trial without an answer no step.
class Training
{
public:
    static constexpr int trials = 10;

    int rung() const { return m_rung; }
    int exposure() const { return exposures::_t_timer02_T1[std::size_t(m_rung)]; }
    void take(Answer answer);

private:
    int m_rung = exposures::trainingIndex(exposures::longest);
    int m_trial = 0;
};

/// Where a test begins.
struct Start
{
    enum class From {
        Training, ///< what a simulated training leaves. One without a step down, which the program
                  ///< would have repeated, leaves the longest exposure.
        Known,    ///< the observer's own threshold, in whole ms, as after a visit that found it
        Exposure, ///< always the same
    };

    From from = From::Training;
    int exposure = exposures::longest; ///< ms, for From::Exposure
};

/// Visits of one observer to one screen, each independent of the others.
class Visits
{
public:
    /// Frequency 0 is 60 Hz, 1 is 120 Hz. `missed` is the share of trials without an answer in
    /// time, as there are under a fixed duration.
    Visits(const Psychometric &observer, int frequency, Start start, double missed, Dice dice);

    Outcome next();

private:
    Answer answer(double chance);
    int startOfVisit();

    Psychometric m_observer;
    int m_frequency;
    Start m_start;
    double m_missed;
    Dice m_dice;
    StationaryWalk::Chances m_chances;
    std::array<double, exposures::_t_timer02_T1.size()> m_trainingChances{};
};

/// The chance of a success by index of the table.
StationaryWalk::Chances chancesOf(const Psychometric &observer, int frequency);
