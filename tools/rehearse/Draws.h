#pragma once

#include <QtGlobal>

#include <random>

/// The chances of a simulated patient. They are worked out from a Mersenne twister by plain
/// arithmetic, since the library's distributions differ from system to system: the same seed makes
/// the same patient everywhere.
class Draws
{
public:
    explicit Draws(quint32 seed);

    /// Between 0 and 1, both excluded.
    double uniform();
    /// Mean 0, standard deviation 1.
    double normal();
    /// Mean 1, not negative.
    double exponential();
    /// True with this probability, 0 to 1.
    bool happens(double probability);

private:
    std::mt19937 m_engine;
};
