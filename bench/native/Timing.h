#pragma once

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <string>
#include <vector>

// What the benchmarks that stand beside a rival have in common: work is timed in turns, ours and the rival's
// one after the other, so that whatever else the machine does hits both.

namespace pelta::bench {

template <class Work>
double milliseconds(Work&& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

inline double median(std::vector<double> times) {
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

/// Median, smallest and largest.
inline std::string described(const std::vector<double>& times) {
    char text[80];
    std::snprintf(text, sizeof text, "%8.1f  (%.1f to %.1f)", median(times),
                  *std::min_element(times.begin(), times.end()),
                  *std::max_element(times.begin(), times.end()));
    return text;
}

}  // namespace pelta::bench
