#include "Observer.h"

#include "Draws.h"
#include "JsonReader.h"

#include <QJsonDocument>

#include <algorithm>
#include <cmath>

namespace {
void readAttention(JsonReader &reader, Observer &observer)
{
    const QStringList hands{QStringLiteral("space"), QStringLiteral("left button")};
    int hand = int(observer.answer);
    observer.time.read(reader.object(QStringLiteral("reactionTime")));
    reader.number(QStringLiteral("gainFromAlert"), -1000, 1000, observer.gainFromAlert);
    reader.number(QStringLiteral("gainFromOrientation"), -1000, 1000, observer.gainFromOrientation);
    reader.number(QStringLiteral("learningSlope"), -500, 500, observer.learningSlope);
    // A patient who never answers in time would never come to the end of a test.
    reader.number(QStringLiteral("anticipations"), 0, 0.45, observer.anticipations);
    reader.number(QStringLiteral("misses"), 0, 0.45, observer.misses);
    reader.word(QStringLiteral("answer"), hands, hand);
    observer.answer = Observer::Answer(hand);
}
} // namespace

std::optional<Observer> Observer::parse(const QByteArray &json, QString &error)
{
    QJsonParseError trouble{};
    const QJsonDocument document = QJsonDocument::fromJson(json, &trouble);
    error.clear();
    if (trouble.error != QJsonParseError::NoError)
        error = trouble.errorString();
    else if (!document.isObject())
        error = QStringLiteral("not a JSON object");
    if (!error.isEmpty())
        return std::nullopt;

    Observer observer;
    JsonReader reader(document.object(), error);
    readAttention(reader, observer);
    observer.vision.read(reader.object(QStringLiteral("vision")));
    observer.movement.read(reader.object(QStringLiteral("movement")));
    observer.memory.read(reader.object(QStringLiteral("memory")));
    reader.finish();
    if (!error.isEmpty())
        return std::nullopt;
    return observer;
}

int Observer::reactionTime(Cue cue, int rank, Draws &draws) const
{
    double added = learningSlope * std::log(double(std::max(rank, 1)));
    if (cue == Cue::Alert)
        added -= gainFromAlert;
    else if (cue == Cue::Orientation)
        added -= gainFromOrientation;
    return time.draw(draws, added);
}
