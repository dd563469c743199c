#pragma once

#include <QtGlobal>

#include <vector>

/// Every draw of the battery goes through this one generator, a Mersenne twister: the same seed
/// gives the same draws on every machine.
namespace randomness {

/// The largest number that next() can return.
inline constexpr int maximum = 0x7fffffff;

/// Starts the generator anew.
void seed(quint32 value);
/// Starts the generator anew from the seconds of the clock.
void seedFromClock();
/// The next draw, 0 to `maximum`, all equally likely.
int next();

/// A shuffled table of 0 to n-1, each exactly once, after seeding with `seedValue`. n is 2 or more.
/// It takes n-1 draws.
std::vector<int> shuffled(int n, quint32 seedValue);

/// The twelve sectors of a circle: a drawn sector first, then its two neighbours, then the other
/// nine shuffled. It takes nine draws.
std::vector<int> sectors(quint32 seedValue);

} // namespace randomness
