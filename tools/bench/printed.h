#pragma once

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <vector>

/// How the benches print a set of measured times.
namespace printed {

/// The value below which this share of them lies; 0 if there are none.
inline double percentile(std::vector<double> values, double share)
{
    if (values.empty())
        return 0.0;
    std::sort(values.begin(), values.end());
    return values[std::size_t(std::lround(share * double(values.size() - 1)))];
}

/// One line: median, 95 %, 99 % and the worst, in ms.
inline void line(const char *what, const std::vector<double> &values)
{
    std::printf("%-34s n %4zu  median %7.3f  95%% %7.3f  99%% %7.3f  worst %7.3f ms\n", what,
                values.size(), percentile(values, 0.5), percentile(values, 0.95),
                percentile(values, 0.99), percentile(values, 1.0));
}

} // namespace printed
