#include "randomness.h"

#include "TimeSource.h"

#include <cstddef>
#include <numeric>
#include <random>

namespace {
std::mt19937 &generator()
{
    static std::mt19937 engine; // NOLINT: the seed is set by every draw of a table
    return engine;
}

/// Moves a drawn value of the pool to the end of the table, again and again. The pool stays in
/// ascending order; the order of its last two values is one draw's parity.
void drawAll(std::vector<int> &pool, std::vector<int> &table)
{
    while (pool.size() > 2) {
        const auto index = std::ptrdiff_t(randomness::next() % int(pool.size()));
        table.push_back(pool[std::size_t(index)]);
        pool.erase(pool.begin() + index);
    }
    const bool ascending = randomness::next() % 2 == 0;
    table.push_back(ascending ? pool[0] : pool[1]);
    table.push_back(ascending ? pool[1] : pool[0]);
}

std::vector<int> ascendingPool(int n)
{
    std::vector<int> pool(static_cast<std::size_t>(n));
    std::iota(pool.begin(), pool.end(), 0);
    return pool;
}
} // namespace

void randomness::seed(quint32 value)
{
    generator().seed(value);
}

void randomness::seedFromClock()
{
    seed(TimeSource::current().seedSeconds());
}

int randomness::next()
{
    return int(generator()() >> 1);
}

std::vector<int> randomness::shuffled(int n, quint32 seedValue)
{
    Q_ASSERT(n >= 2);
    seed(seedValue);
    std::vector<int> pool = ascendingPool(n);
    std::vector<int> table;
    table.reserve(pool.size());
    drawAll(pool, table);
    return table;
}

std::vector<int> randomness::sectors(quint32 seedValue)
{
    constexpr int count = 12;
    seed(seedValue);
    const int first = next() % count;
    const int after = (first + 1) % count;
    const int before = (first + count - 1) % count;
    std::vector<int> pool = ascendingPool(count);
    std::erase_if(pool, [=](int s) { return s == first || s == after || s == before; });
    std::vector<int> table{first, after, before};
    table.reserve(count);
    drawAll(pool, table);
    return table;
}
