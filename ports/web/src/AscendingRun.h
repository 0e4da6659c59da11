#pragma once

#include <algorithm>
#include <vector>

namespace pelta {

/// Marks the elements of a longest ascending run of `ranks`, which need not be adjacent: what can stay in
/// place while the others are moved around it.
template <class Rank>
[[nodiscard]] std::vector<bool> longestAscendingRun(const std::vector<Rank>& ranks) {
    std::vector<std::size_t> ends;  // Index of the smallest last element of a run of each length.
    std::vector<std::size_t> previous(ranks.size(), ranks.size());
    for (std::size_t i = 0; i < ranks.size(); ++i) {
        const auto longer =
            std::lower_bound(ends.begin(), ends.end(), ranks[i],
                             [&](std::size_t end, const Rank& rank) { return ranks[end] < rank; });
        if (longer != ends.begin()) {
            previous[i] = *(longer - 1);
        }
        if (longer == ends.end()) {
            ends.push_back(i);
        } else {
            *longer = i;
        }
    }
    std::vector<bool> isInRun(ranks.size(), false);
    for (std::size_t i = ends.empty() ? ranks.size() : ends.back(); i < ranks.size(); i = previous[i]) {
        isInRun[i] = true;
    }
    return isInRun;
}

}  // namespace pelta
