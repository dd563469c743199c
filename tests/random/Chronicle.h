#pragma once

#include <QString>

/// The last events, so that a failure of any kind can be told: a promise that isn't kept, a crash,
/// a finding of the sanitizers.
namespace chronicle {

/// From now on the end of the program by a fault prints what was noted. The title is printed first.
void begin(const QString &title);
void note(const QString &event);
/// The title and the last events, to the standard error output. Takes no memory.
void print();

} // namespace chronicle
