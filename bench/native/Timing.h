#pragma once

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

// What the benchmarks that stand beside a rival have in common: work is timed in turns, ours and the rival's
// one after the other, so that whatever else the machine does hits both.

namespace pelta::bench {

/// Whether the command line asks for the short form, `--short`: everything runs once and on little, which
/// shows that it still runs. Anything else ends the program.
inline bool isShortForm(int count, char** words) {
    const bool isShort = count == 2 && std::string_view(words[1]) == "--short";
    if (count > 1 && !isShort) {
        std::fprintf(stderr, "usage: %s [--short]\n", words[0]);
        std::exit(2);
    }
    return isShort;
}

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
