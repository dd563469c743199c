#include "VisionObserver.h"

#include "JsonReader.h"

#include <cmath>

double VisionObserver::Sight::chanceOfSeeing(double exposure) const
{
    // The logistic function of the exposure's logarithm.
    return (1.0 - lapses) / (1.0 + std::pow(threshold / exposure, steepness));
}

void VisionObserver::Sight::read(JsonReader reader)
{
    reader.number(QStringLiteral("threshold"), 1, 10'000, threshold);
    reader.number(QStringLiteral("steepness"), 0, 100, steepness);
    reader.number(QStringLiteral("lapses"), 0, 1, lapses);
    reader.finish();
}

void VisionObserver::read(JsonReader reader)
{
    const QStringList manners{QStringLiteral("as seen"), QStringLiteral("always right"),
                              QStringLiteral("always wrong"), QStringLiteral("silent")};
    int manner = int(answers);
    central.read(reader.object(QStringLiteral("central")));
    peripheral.read(reader.object(QStringLiteral("peripheral")));
    dual.read(reader.object(QStringLiteral("dual")));
    answerTime.read(reader.object(QStringLiteral("answerTime")));
    reader.word(QStringLiteral("answers"), manners, manner);
    reader.finish();
    answers = Answers(manner);
}
