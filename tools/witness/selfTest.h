#pragma once

#include <QString>

/// How exact the witness is, measured on the screen at hand.
namespace selfTest {

/// Draws on a window of its own and stamps what it sees of it, and presses a key and receives it,
/// each `rounds` times. It tells a line for each measure on the standard output, in microseconds.
/// What went wrong, if anything: a change that wasn't seen within a second, or a key that didn't
/// arrive.
QString run(int rounds);

} // namespace selfTest
