#include "Cluster/SearchAhead.h"

#include <algorithm>

namespace pelta::detail {

namespace {

// Records by which each step runs ahead; the last must be less than there are plans.
constexpr std::uint32_t claimStep = 36;
constexpr std::uint32_t leafStep = 28;
constexpr std::uint32_t siblingStep = 20;
constexpr std::uint32_t neighbourStep = 12;
constexpr std::uint32_t planStep = 6;

constexpr std::uint32_t entriesInCacheLine = 4;
constexpr std::uint32_t mostFetched = 64;

}  // namespace

SearchAhead::SearchAhead(const ItemStore& items, std::span<const Claim> claims, double halfWidth)
    : items_(items),
      records_(items.records()),
      points_(items.tree().points()),
      claims_(claims),
      halfWidth_(halfWidth) {
    for (std::uint32_t record = 0; record < planStep; ++record) {
        planSearch(record);
    }
}

void SearchAhead::moveTo(std::uint32_t record) {
    record_ = record;
    const QuadTreeIndex& tree = items_.tree();
    if (record + claimStep < records_.size() && records_[record + claimStep].entry != none) {
        __builtin_prefetch(&claims_[records_[record + claimStep].entry], 1);
        __builtin_prefetch(&points_[records_[record + claimStep].entry]);
    }
    if (const std::uint32_t entry = openEntry(record + leafStep); entry != none) {
        tree.fetchLeaf(claims_[entry].leaf);
    }
    if (const std::uint32_t entry = openEntry(record + siblingStep); entry != none) {
        tree.fetchSiblings(claims_[entry].leaf, areaAround(entry));
    }
    if (const std::uint32_t entry = openEntry(record + neighbourStep); entry != none) {
        tree.fetchNeighbours(claims_[entry].leaf, areaAround(entry));
    }
    planSearch(record + planStep);
}

/// The entry of a record that is still to be searched around as far as can be seen, or `none`.
[[gnu::always_inline]] inline std::uint32_t SearchAhead::openEntry(std::uint32_t record) const {
    if (record >= records_.size()) {
        return none;
    }
    const std::uint32_t entry = records_[record].entry;
    return entry != none && claims_[entry].seed == none ? entry : none;
}

[[gnu::always_inline]] inline PQTBounds SearchAhead::areaAround(std::uint32_t entry) const {
    return searchSquare(points_[entry], halfWidth_);
}

void SearchAhead::planSearch(std::uint32_t record) {
    Plan& plan = plans_[record % plans_.size()];
    plan.isMade = false;
    const std::uint32_t entry = openEntry(record);
    if (entry == none || !items_.tree().isSmall(claims_[entry].leaf, halfWidth_)) {
        return;
    }
    plan.count = 0;
    items_.tree().forEachRange(claims_[entry].leaf, areaAround(entry),
                               [&](std::uint32_t first, std::uint32_t last, bool isInside) {
                                   if (first < last && plan.count++ < plan.ranges.size()) {
                                       plan.ranges[plan.count - 1] = {first, last, isInside};
                                       fetchEntries(plan.ranges[plan.count - 1]);
                                   }
                               });
    plan.isMade = plan.count <= plan.ranges.size();
}

inline void SearchAhead::fetchEntries(const Range& range) const {
    const std::uint32_t last = range.first + std::min(range.last - range.first, mostFetched);
    for (std::uint32_t entry = range.first; entry < last; entry += entriesInCacheLine) {
        __builtin_prefetch(&points_[entry]);
        __builtin_prefetch(&claims_[entry], 1);
    }
}

}  // namespace pelta::detail
