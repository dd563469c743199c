#include "MovementObserver.h"

#include "JsonReader.h"

void MovementObserver::read(JsonReader reader)
{
    const QStringList hands{QStringLiteral("keys"), QStringLiteral("mouse")};
    int hand = int(answer);
    reactionTime.read(reader.object(QStringLiteral("reactionTime")));
    reader.number(QStringLiteral("obliqueCost"), -1000, 1000, obliqueCost);
    // A patient who is never right in time would never come to the end of a test.
    reader.number(QStringLiteral("misses"), 0, 0.45, misses);
    reader.number(QStringLiteral("unknown"), 0, 0.45, unknown);
    reader.number(QStringLiteral("rightDirections"), 0.25, 1, rightDirections);
    answerTime.read(reader.object(QStringLiteral("answerTime")));
    reader.word(QStringLiteral("answer"), hands, hand);
    reader.finish();
    answer = Answer(hand);
}
