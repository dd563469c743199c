#pragma once

#include "MemoryObserver.h"
#include "MovementObserver.h"
#include "ResponseTime.h"
#include "VisionObserver.h"

#include <QByteArray>
#include <QString>

#include <optional>

class Draws;

/// What a simulated patient is like. The mean of a healthy adult's simple reaction time is near
/// 230 ms (Woods et al. 2015), and a patient's rather 300.
struct Observer
{
    enum class Cue { None, Alert, Orientation };
    enum class Answer { Space, LeftButton };

    // In the attention task.
    ResponseTime time{240.0, 25.0, 60.0};
    double gainFromAlert = 25.0;       ///< ms by which an alert shortens the answer
    double gainFromOrientation = 40.0; ///< ms by which a pointing arrow shortens it
    double learningSlope = -8.0;       ///< ms on the natural logarithm of the rank
    double anticipations = 0.02;       ///< share of targets that the patient doesn't wait for
    double misses = 0.01;              ///< share of targets that the patient overlooks
    Answer answer = Answer::Space;

    VisionObserver vision;
    MovementObserver movement;
    MemoryObserver memory;

    /// Reads a description in JSON. What is missing keeps its default. Nothing is returned, and one
    /// line of `error` says why, if the text is no JSON, has a key that is not known, a value of
    /// another type or one out of its range.
    static std::optional<Observer> parse(const QByteArray &json, QString &error);

    /// One reaction time in whole ms. The rank counts the targets with this cue from 1.
    int reactionTime(Cue cue, int rank, Draws &draws) const;
};
