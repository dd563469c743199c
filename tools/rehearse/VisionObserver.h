#pragma once

#include "ResponseTime.h"

class JsonReader;

/// What a simulated patient is like in the visual perception task.
struct VisionObserver
{
    /// How exposures of one kind are seen. What isn't seen is guessed.
    struct Sight
    {
        double threshold = 100.0; ///< ms: half of what the patient looks at is seen
        double steepness = 4.0;   ///< of the rise, on the natural logarithm of the exposure
        double lapses = 0.02;     ///< share of trials at which the patient doesn't look

        /// Of an exposure of so many ms, 0 to 1.
        double chanceOfSeeing(double exposure) const;
        void read(JsonReader reader);
    };

    enum class Answers { AsSeen, AlwaysRight, AlwaysWrong, Silent };

    Sight central{60.0};
    Sight peripheral{45.0};
    Sight dual{150.0};
    ResponseTime answerTime{1200.0, 300.0, 400.0};
    Answers answers = Answers::AsSeen;

    void read(JsonReader reader);
};
