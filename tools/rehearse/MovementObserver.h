#pragma once

#include "ResponseTime.h"

class JsonReader;

/// What a simulated patient is like in the movement detection task.
struct MovementObserver
{
    enum class Answer { Keys, Mouse };

    ResponseTime reactionTime{700.0, 60.0, 200.0}; ///< from the arrow to the Space
    double obliqueCost = 40.0;                     ///< ms by which an oblique arrow lengthens it
    double misses = 0.01;          ///< share of arrows at which the patient doesn't look in time
    double unknown = 0.01;         ///< share of trials that are answered by "?"
    double rightDirections = 0.97; ///< share of the directions told that are those seen
    ResponseTime answerTime{600.0, 100.0, 150.0}; ///< from the pad to the direction
    Answer answer = Answer::Keys;

    void read(JsonReader reader);
};
