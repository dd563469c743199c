#include "MemoryObserver.h"

#include "JsonReader.h"

#include <algorithm>
#include <cmath>

double MemoryObserver::Trace::spreadAfter(int crosses) const
{
    constexpr int shortestRun = 2;
    return spread * std::pow(growth, std::max(crosses - shortestRun, 0));
}

void MemoryObserver::Trace::read(JsonReader reader)
{
    reader.number(QStringLiteral("spread"), 0, 200, spread);
    reader.number(QStringLiteral("growth"), 0.2, 5, growth);
    reader.finish();
}

double MemoryObserver::practised(int rank) const
{
    return std::pow(double(std::max(rank, 1)), -practice);
}

void MemoryObserver::read(JsonReader reader)
{
    first.read(reader.object(QStringLiteral("first")));
    last.read(reader.object(QStringLiteral("last")));
    reader.number(QStringLiteral("practice"), -1, 1, practice);
    reader.number(QStringLiteral("confusions"), 0, 1, confusions);
    answerTime.read(reader.object(QStringLiteral("answerTime")));
    reader.finish();
}
