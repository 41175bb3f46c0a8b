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

/// What the same work takes in two ways.
struct Comparison {
    double bare;
    double own;

    double ratio() const { return own / bare; }
};

/// Measures two ways in turns, each of them first every other time, so that both meet whatever else the machine does.
/// @param bare,own do the work and return the milliseconds. @return the medians.
template <class Bare, class Own>
Comparison compare(int runs, Bare bare, Own own)
{
    std::vector<double> bareTimes;
    std::vector<double> ownTimes;
    for (int i = 0; i < runs; ++i) {
        if (i % 2 == 0)
            bareTimes.push_back(bare());
        ownTimes.push_back(own());
        if (i % 2 == 1)
            bareTimes.push_back(bare());
    }
    return {median(bareTimes), median(ownTimes)};
}

} // namespace Measure
