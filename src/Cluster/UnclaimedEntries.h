#pragma once

#include <algorithm>
#include <cstddef>
#include <span>
#include <vector>

#include "Cluster/SearchSquare.h"

namespace pelta::detail {

/// Finds entries that nobody has claimed yet, each only once.
///
/// Over blocks of neighbouring entries stands a pyramid of boxes around those still unclaimed; what has been
/// taken is never looked at again. Claims made elsewhere are noticed when a block is next looked at.
class UnclaimedEntries {
 public:
    /// @param points  in the tree's order, in which neighbours lie near each other. Must outlive this.
    explicit UnclaimedEntries(std::span<const PQTPoint> points);

    /// Calls `claim(entry)` for every entry within the area for which `isClaimed(entry)` is false.
    template <class IsClaimed, class Claim>
    void take(const PQTBounds& area, IsClaimed&& isClaimed, Claim&& claim) {
        for (std::size_t i = 0; i < levels_.back().size(); ++i) {
            takeBox(levels_.size() - 1, i, area, isClaimed, claim);
        }
    }

 private:
    static constexpr std::size_t blockSize = 32;  // entries a box of the lowest level
    static constexpr std::size_t fanOut = 8;      // boxes a box of the other levels

    static PQTBounds nothing() noexcept;
    static void extend(PQTBounds& box, const PQTBounds& by) noexcept;
    static bool meet(const PQTBounds& a, const PQTBounds& b) noexcept;

    template <class IsClaimed, class Claim>
    void takeBox(std::size_t level, std::size_t index, const PQTBounds& area, IsClaimed& isClaimed,
                 Claim& claim) {
        PQTBounds& box = levels_[level][index];
        if (!meet(box, area)) {
            return;
        }
        box = nothing();
        if (level == 0) {
            const std::size_t end = std::min(points_.size(), (index + 1) * blockSize);
            for (std::size_t entry = index * blockSize; entry < end; ++entry) {
                if (isClaimed(entry)) {
                    continue;
                }
                if (contains(area, points_[entry])) {
                    claim(entry);
                } else {
                    extend(box, {points_[entry].x, points_[entry].y, points_[entry].x, points_[entry].y});
                }
            }
            return;
        }
        const std::size_t end = std::min(levels_[level - 1].size(), (index + 1) * fanOut);
        for (std::size_t child = index * fanOut; child < end; ++child) {
            takeBox(level - 1, child, area, isClaimed, claim);
            extend(box, levels_[level - 1][child]);
        }
    }

    std::span<const PQTPoint> points_;
    std::vector<std::vector<PQTBounds>> levels_;  // the lowest first
};

}  // namespace pelta::detail
