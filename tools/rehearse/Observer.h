#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

class Draws;

/// What a simulated patient is like. A reaction time is ex-Gaussian, a normal and an exponential
/// part added up, which gives it the long right tail of a person's; the mean of a healthy adult's
/// simple reaction time is near 230 ms (Woods et al. 2015), and a patient's rather 300.
struct Observer
{
    enum class Cue { None, Alert, Orientation };
    enum class Answer { Space, LeftButton };

    double mu = 240.0;                 ///< ms, mean of the normal part
    double sigma = 25.0;               ///< ms, standard deviation of the normal part
    double tau = 60.0;                 ///< ms, mean of the exponential part
    double gainFromAlert = 25.0;       ///< ms by which an alert shortens the answer
    double gainFromOrientation = 40.0; ///< ms by which a pointing arrow shortens it
    double learningSlope = -8.0;       ///< ms on the natural logarithm of the rank
    double anticipations = 0.02;       ///< share of targets that the patient doesn't wait for
    double misses = 0.01;              ///< share of targets that the patient overlooks
    Answer answer = Answer::Space;

    /// No answer is faster than this, ms.
    static constexpr int fastest = 100;

    /// Reads a description in JSON. What is missing keeps its default. Nothing is returned, and one
    /// line of `error` says why, if the text is no JSON, has a key that is not known, a value of
    /// another type or one out of its range.
    static std::optional<Observer> parse(const QByteArray &json, QString &error);

    /// One reaction time in whole ms, `fastest` or more. The rank counts the targets with this cue
    /// from 1.
    int reactionTime(Cue cue, int rank, Draws &draws) const;
};
