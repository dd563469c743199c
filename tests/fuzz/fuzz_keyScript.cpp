#include "Fuzz.h"
#include "KeyScript.h"

// An input is a script of keys for a rehearsal.

using fuzz::demand;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray text(reinterpret_cast<const char *>(data), qsizetype(size));
    QString error;
    const auto script = KeyScript::parse(text, error);
    demand(script.has_value() == error.isEmpty(), "a refusal has a reason, and only a refusal");
    demand(!error.contains(u'\n'), "a reason is one line");
    if (!script)
        return 0;
    for (const KeyScript::Line &line : script->lines)
        demand(line.trial >= 1 && line.stage >= 0 && line.stage <= 6 && line.ms >= 0,
               "a line that is taken can be played");
    return 0;
}
