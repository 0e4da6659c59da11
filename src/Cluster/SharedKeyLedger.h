#pragma once

#include <cstdint>
#include <vector>

#include "Cluster/ItemKeys.h"

namespace pelta::detail {

/// Follows the items of shared keys from cluster to cluster.
///
/// Equal objects share one distance and one "last cluster", but leave a cluster only as themselves. So an
/// object may stay behind in an earlier cluster when the key was last taken by an equal one, and may end up
/// in several.
class SharedKeyLedger {
 public:
    /// An object's stay in a cluster.
    struct Stay {
        std::uint32_t index;  // of the entry among the shared ones
        std::uint32_t seed;
        bool hasEnded;
    };

    explicit SharedKeyLedger(const ItemKeys& keys);

    /// A search has found the entry, which is number `index` of `ItemKeys::sharedEntries`.
    void find(std::uint32_t index, std::uint32_t seed, double distance);

    [[nodiscard]] bool isClaimed(std::uint32_t key) const { return keys_[key].seed != none; }

    /// The stays that have not ended, ascending by index, then by seed.
    [[nodiscard]] std::vector<Stay> stays() const;

 private:
    struct Key {
        double distance = 0;
        std::uint32_t seed = none;
    };

    const ItemKeys& items_;
    std::vector<Key> keys_;
    std::vector<std::uint32_t> objects_;  // by shared entry: number of its object among those of shared keys
    std::vector<std::uint32_t> latestStays_;  // by object
    std::vector<Stay> stays_;
};

}  // namespace pelta::detail
