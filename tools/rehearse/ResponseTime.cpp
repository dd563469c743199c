#include "ResponseTime.h"

#include "Draws.h"
#include "JsonReader.h"

#include <algorithm>
#include <cmath>

void ResponseTime::read(JsonReader reader)
{
    const bool whole = reader.has(QStringLiteral("mean")) || reader.has(QStringLiteral("spread"));
    const bool parts = reader.has(QStringLiteral("mu")) || reader.has(QStringLiteral("sigma")) ||
                       reader.has(QStringLiteral("tau"));
    if (whole && parts)
        reader.complainOf(QStringLiteral("has mean and spread, or mu, sigma and tau"));
    double mean = mu + tau;
    double spread = std::hypot(sigma, tau);
    reader.number(QStringLiteral("mean"), 100, 5000, mean);
    reader.number(QStringLiteral("spread"), 0, 2000, spread);
    reader.number(QStringLiteral("mu"), 0, 5000, mu);
    reader.number(QStringLiteral("sigma"), 0, 2000, sigma);
    reader.number(QStringLiteral("tau"), 0, 2000, tau);
    reader.finish();
    if (whole)
        fromMeanAndSpread(mean, spread);
}

/// Four fifths of the spread lie in the tail, which is near what is found in people.
void ResponseTime::fromMeanAndSpread(double mean, double spread)
{
    sigma = 0.6 * spread;
    tau = 0.8 * spread;
    mu = mean - tau;
}

int ResponseTime::draw(Draws &draws, double added) const
{
    double time = mu + sigma * draws.normal(); // drawn first, whatever the compiler
    time += tau * draws.exponential();
    return std::max(int(std::lround(time + added)), fastest);
}
