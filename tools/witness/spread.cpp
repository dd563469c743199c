#include "spread.h"

#include <algorithm>

Spread Spread::of(std::vector<moment::Ns> values)
{
    if (values.empty())
        return {};
    std::ranges::sort(values);
    const auto percentile = [&values](std::size_t percent) {
        return values[(values.size() * percent + 99) / 100 - 1];
    };
    return {values.size(), percentile(50), percentile(95), percentile(99), values.back()};
}
