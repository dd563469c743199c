#pragma once

class Draws;
class JsonReader;

/// How long a person takes to answer. The time is ex-Gaussian, a normal and an exponential part
/// added up, which gives it the long right tail of a person's.
struct ResponseTime
{
    double mu = 0.0;    ///< ms, mean of the normal part
    double sigma = 0.0; ///< ms, standard deviation of the normal part
    double tau = 0.0;   ///< ms, mean of the exponential part

    /// No answer is faster than this, ms.
    static constexpr int fastest = 100;

    /// Takes a description by the three parts, or by mean and standard deviation of the whole.
    void read(JsonReader reader);
    /// One time, with what shortens or lengthens it added; whole ms, `fastest` or more.
    int draw(Draws &draws, double added = 0.0) const;

private:
    void fromMeanAndSpread(double mean, double spread);
};
