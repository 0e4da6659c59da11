#pragma once

#include <array>
#include <cstdint>
#include <limits>
#include <span>

#include "Cluster/ItemStore.h"
#include "Cluster/SearchSquare.h"

namespace pelta::detail {

/// What the clustering remembers of an entry of the tree: its best seed so far.
struct Claim {
    double distance = std::numeric_limits<double>::infinity();  // squared
    std::uint32_t seed = none;
    std::uint32_t leaf = 0;  // of the tree, in which the entry stands
};

/// Runs some records ahead of the clustering, has the processor bring near what the searches will read, and
/// finds the ranges of entries of small searches.
///
/// Seeds lie all over the world; without this, most of the time would go by waiting for memory. Each step
/// stands so far behind the one before that what that asked for has come.
class SearchAhead {
 public:
    SearchAhead(const ItemStore& items, std::span<const Claim> claims, double halfWidth);

    /// Must be called for each record in turn.
    void moveTo(std::uint32_t record);

    /// Calls `visit(first, last, isInside)` as `QuadTreeIndex::forEachRange` does for the square around the
    /// record that was moved to.
    template <class Visit>
    void forEachRange(std::uint32_t leaf, const PQTBounds& area, Visit&& visit) const {
        const Plan& plan = plans_[record_ % plans_.size()];
        if (!plan.isMade) {
            items_.tree().forEachRange(leaf, area, visit);
            return;
        }
        for (std::uint32_t i = 0; i < plan.count; ++i) {
            visit(plan.ranges[i].first, plan.ranges[i].last, plan.ranges[i].isInside);
        }
    }

 private:
    struct Range {
        std::uint32_t first;
        std::uint32_t last;
        bool isInside;
    };
    struct Plan {
        bool isMade = false;
        std::uint32_t count = 0;
        std::array<Range, 16> ranges;
    };

    [[nodiscard]] std::uint32_t openEntry(std::uint32_t record) const;
    [[nodiscard]] PQTBounds areaAround(std::uint32_t entry) const;
    void planSearch(std::uint32_t record);
    void fetchEntries(const Range& range) const;

    const ItemStore& items_;
    std::span<const ItemRecord> records_;
    std::span<const PQTPoint> points_;
    std::span<const Claim> claims_;
    double halfWidth_;
    std::uint32_t record_ = 0;
    std::array<Plan, 8> plans_;
};

}  // namespace pelta::detail
