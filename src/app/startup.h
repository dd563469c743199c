#pragma once

class QLockFile;

/// What the program needs of its surroundings before its window can be made.
namespace startup {

/// Before the application object: settles the platform. Where X11 and Wayland are both to be had
/// and nobody has chosen, it asks for X11, since under Wayland a program may not place the pointer.
void prepareEnvironment();

inline constexpr char lockName[] = "../kelmoran.lock";

/// One program a data root: two that write into the same files would spoil them. Returns false,
/// after a box has said so, if another living program holds the lock. Where no lock can be made the
/// answer is true: that is no reason to stop.
bool takeDataRoot(QLockFile &lock);

} // namespace startup
