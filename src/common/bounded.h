#pragma once

#include <QtGlobal>

#include <algorithm>
#include <initializer_list>

namespace bounded {

/// Of waits in ms, some of which a person has typed: no sum goes beyond eleven days, so that what
/// is computed with it stays within an int.
constexpr int sum(std::initializer_list<qint64> waits)
{
    constexpr qint64 most = 1'000'000'000;
    qint64 total = 0;
    for (const qint64 wait : waits)
        total += wait;
    return int(std::clamp(total, -most, most));
}

} // namespace bounded
