#include "Psychometric.h"

#include <cmath>
#include <limits>

double Psychometric::chanceOfSuccess(double exposure) const
{
    const double seen = 1.0 / (1.0 + std::pow(threshold / exposure, steepness));
    return guess + (1.0 - guess - lapse) * seen;
}

double Psychometric::exposureAt(double success) const
{
    if (success <= guess)
        return 0.0;
    if (success >= 1.0 - lapse)
        return std::numeric_limits<double>::infinity();
    const double seen = (success - guess) / (1.0 - guess - lapse);
    return threshold * std::pow(seen / (1.0 - seen), 1.0 / steepness);
}
