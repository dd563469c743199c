#include "Draws.h"

#include <cmath>
#include <numbers>

namespace {
/// The tables of the task are drawn from the bare seed; the patient must not go in step with them.
quint32 apart(quint32 seed)
{
    return seed * 2654435761U + 1013904223U;
}
} // namespace

Draws::Draws(quint32 seed)
    : m_engine(apart(seed))
{
}

double Draws::uniform()
{
    constexpr double range = 4294967296.0;
    return (double(m_engine()) + 0.5) / range;
}

double Draws::normal()
{
    const double radius = std::sqrt(-2.0 * std::log(uniform()));
    return radius * std::cos(2.0 * std::numbers::pi * uniform());
}

double Draws::exponential()
{
    return -std::log(uniform());
}

bool Draws::happens(double probability)
{
    return uniform() < probability;
}
