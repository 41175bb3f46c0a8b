#pragma once

#include <algorithm>
#include <chrono>
#include <vector>

namespace Measure {

/// The wall-clock milliseconds that @p work takes.
template <class Work>
double milliseconds(Work work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

/// The middle one of at least one value.
inline double median(std::vector<double> values)
{
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

} // namespace Measure
