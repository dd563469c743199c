#pragma once

#include "Dice.h"

#include <initializer_list>

/// What the random assessor and patient do next: draws of one seed.
class Luck
{
public:
    explicit Luck(std::uint64_t seed)
        : m_dice(seed, 1)
    {
    }

    bool falls(double chance) { return m_dice.falls(chance); }
    /// 0 to n - 1; n above 0.
    int below(int n) { return int(m_dice.next() % std::uint64_t(n)); }
    /// Both ends included.
    int between(int low, int high) { return low + below(high - low + 1); }
    /// The number of one of these, the more often the greater it is.
    int weighted(std::initializer_list<int> weights)
    {
        int sum = 0;
        for (const int weight : weights)
            sum += weight;
        int left = below(sum);
        int number = 0;
        for (const int weight : weights) {
            left -= weight;
            if (left < 0)
                break;
            ++number;
        }
        return number;
    }
    /// One of a list that isn't empty.
    template <typename List>
    auto pick(const List &list)
    {
        return *(std::begin(list) + below(int(std::size(list))));
    }

private:
    Dice m_dice;
};
