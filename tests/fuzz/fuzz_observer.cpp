#include "Draws.h"
#include "Fuzz.h"
#include "Observer.h"

// An input is the description of a simulated patient.

using fuzz::demand;

namespace {

bool isShare(double share)
{
    return share >= 0.0 && share <= 1.0;
}

void live(const Observer &observer)
{
    Draws draws(1);
    for (const auto cue : {Observer::Cue::None, Observer::Cue::Alert, Observer::Cue::Orientation}) {
        for (const int rank : {0, 1, 96})
            demand(observer.reactionTime(cue, rank, draws) >= ResponseTime::fastest,
                   "nobody answers faster than a person can");
    }
    demand(isShare(observer.anticipations) && isShare(observer.misses), "a share is a share");
    demand(isShare(observer.vision.dual.chanceOfSeeing(17)), "a chance is a chance");
    demand(observer.memory.last.spreadAfter(7) >= 0.0, "no spread is negative");
    demand(observer.memory.practised(40) > 0.0, "practice leaves something");
    demand(observer.movement.answerTime.draw(draws) >= ResponseTime::fastest,
           "nobody clicks faster than a person can");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray json(reinterpret_cast<const char *>(data), qsizetype(size));
    QString error;
    const auto observer = Observer::parse(json, error);
    demand(observer.has_value() == error.isEmpty(), "a refusal has a reason, and only a refusal");
    demand(!error.contains(u'\n'), "a reason is one line");
    if (observer)
        live(*observer);
    return 0;
}
