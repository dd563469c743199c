#pragma once

/// How likely an observer answers right, by the exposure: a logistic function of its logarithm,
/// between the share that is guessed and the share that is not failed.
struct Psychometric
{
    double threshold = 100.0; ///< ms, above 0: half of what is not guessed is seen
    double steepness = 4.0;   ///< of the rise, on the natural logarithm of the exposure; above 0
    double lapse = 0.0;       ///< share of trials failed however long the exposure
    double guess = 0.0;       ///< share of trials right however short; guess + lapse is 1 at most

    /// Of an exposure of so many ms, 0 to 1.
    double chanceOfSuccess(double exposure) const;
    /// The exposure, ms, at which this share of all answers is right, guessed ones included; 0 if
    /// that share is guessed already, infinity if it is never reached.
    double exposureAt(double success) const;
};
