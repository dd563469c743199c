#pragma once

#include <cstdint>

/// Moments are nanoseconds of CLOCK_MONOTONIC, which all processes of a machine share.
namespace moment {

using Ns = std::int64_t;

inline constexpr Ns perMs = 1'000'000;

[[nodiscard]] Ns now();

/// Sleeps until shortly before the moment and looks at the clock for the rest, so that no wake-up
/// of the kernel stands between the moment and the return.
void waitUntil(Ns due);

/// How long before its moment a wait ends and the looking at the clock begins.
inline constexpr Ns lead = 200'000;

/// Asks for a low real-time priority, and for exact timers where that is refused. Whether the
/// priority was granted.
bool askForPriority();

} // namespace moment
