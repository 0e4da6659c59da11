#include "SortKeys.h"

#include <algorithm>
#include <cmath>

#include "AscendingRun.h"

namespace pelta {

namespace {

/// Least distance of two keys, and the largest one: they cross as decimal numbers of 12 digits.
constexpr double leastStep = 1e-4;
constexpr double largestKey = 1e7;

/// The members that keep their key.
std::vector<bool> stayingMembers(const Run& run) {
    std::vector<double> keys;
    std::vector<std::size_t> indices;
    for (std::size_t i = 0; i < run.members.size(); ++i) {
        const ModelLayer& member = *run.members[i];
        if (member.sent.feature != nullptr && member.sent.run == run.number) {
            keys.push_back(member.sent.sortKey);
            indices.push_back(i);
        }
    }
    std::vector<bool> stays(run.members.size());
    const std::vector<bool> ascends = longestAscendingRun(keys);
    for (std::size_t i = 0; i < indices.size(); ++i) {
        stays[indices[i]] = ascends[i];
    }
    return stays;
}

/// Spreads keys over the members from `first` to before `end`, between those of their neighbours.
/// @return false when there is no room left.
bool spread(const Run& run, std::size_t first, std::size_t end) {
    const bool hasLower = first > 0;
    const bool hasUpper = end < run.members.size();
    const auto count = static_cast<double>(end - first);
    const double upper = hasUpper ? run.members[end]->sent.sortKey : 0;
    const double lower = hasLower ? run.members[first - 1]->sortKey : (hasUpper ? upper - count - 1 : 0);
    const double step = hasLower && hasUpper ? (upper - lower) / (count + 1) : 1;
    double key = lower;
    for (std::size_t i = first; i < end; ++i) {
        run.members[i]->sortKey = (key += step);
    }
    return step >= leastStep && std::max(std::abs(lower), std::abs(key)) < largestKey;
}

/// @return false when there is no room left between two keys.
bool assignBetween(const Run& run, const std::vector<bool>& stays) {
    bool hasRoom = true;
    for (std::size_t i = 0; i < stays.size() && hasRoom; ++i) {
        if (stays[i]) {
            run.members[i]->sortKey = run.members[i]->sent.sortKey;
            continue;
        }
        const std::size_t first = i;
        while (i + 1 < stays.size() && !stays[i + 1]) {
            ++i;
        }
        hasRoom = spread(run, first, i + 1);
    }
    return hasRoom;
}

}  // namespace

void assignSortKeys(Run& run) {
    if (!assignBetween(run, stayingMembers(run))) {
        double key = 0;
        for (ModelLayer* member : run.members) {
            member->sortKey = ++key;
        }
    }
    run.needsSortKeys = false;
}

}  // namespace pelta
