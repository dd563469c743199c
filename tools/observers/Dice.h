#pragma once

#include <array>
#include <bit>
#include <cstdint>

/// A fast stream of draws (xoshiro256++), the same on every machine. Streams of one seed are
/// independent of each other, whichever thread draws them.
class Dice
{
public:
    Dice(std::uint64_t seed, std::uint64_t stream)
    {
        std::uint64_t counter = scrambled(seed) ^ stream;
        for (std::uint64_t &word : m_state)
            word = scrambled(counter += golden);
    }

    /// True in this share of the throws.
    bool falls(double chance)
    {
        constexpr double unit = 0x1.0p-53;
        return double(next() >> 11U) * unit < chance;
    }

    std::uint64_t next()
    {
        const std::uint64_t result = std::rotl(m_state[0] + m_state[3], 23) + m_state[0];
        const std::uint64_t shifted = m_state[1] << 17U;
        m_state[2] ^= m_state[0];
        m_state[3] ^= m_state[1];
        m_state[1] ^= m_state[2];
        m_state[0] ^= m_state[3];
        m_state[2] ^= shifted;
        m_state[3] = std::rotl(m_state[3], 45);
        return result;
    }

private:
    static constexpr std::uint64_t golden = 0x9e3779b97f4a7c15U;

    /// The mixing of SplitMix64, which makes states of any seed.
    static constexpr std::uint64_t scrambled(std::uint64_t x)
    {
        x = (x ^ (x >> 30U)) * 0xbf58476d1ce4e5b9U;
        x = (x ^ (x >> 27U)) * 0x94d049bb133111ebU;
        return x ^ (x >> 31U);
    }

    std::array<std::uint64_t, 4> m_state{};
};
