#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "Cluster/ItemKeys.h"
#include "Cluster/ItemStore.h"
#include "Cluster/SearchAhead.h"
#include "Cluster/SearchSquare.h"
#include "Cluster/SharedKeyLedger.h"
#include "Cluster/StraySeeds.h"
#include "Cluster/UnclaimedEntries.h"

namespace pelta::detail {

/// The clusters around their seeds, before small ones are broken up. All numbers are of records.
struct FormedClusters {
    std::vector<std::uint32_t> seeds;   // of each cluster, in order
    std::vector<std::uint32_t> starts;  // where each cluster's members start; one more at the end
    std::vector<std::uint32_t> members;

    [[nodiscard]] std::size_t sizeOf(std::size_t cluster) const {
        return starts[cluster + 1] - starts[cluster];
    }
};

/// Chooses the seeds and hands the items out to them.
///
/// An entry belongs to the nearest of the seeds that find it, of equally near ones to the latest. So nobody
/// has to be taken out of a list: each entry remembers its best seed so far, and the lists are written at the
/// end, in the tree's order, which is the order of every search.
class ClusterFormation {
 public:
    /// @param items      must be arranged and outlive this.
    /// @param halfWidth  of the square in which a seed finds items, in the tree's plane.
    ClusterFormation(const ItemStore& items, double halfWidth);

    [[nodiscard]] FormedClusters form();

 private:
    void readPositions();
    void setKeysApart();
    [[nodiscard]] bool isClaimed(std::uint32_t record) const;
    void plant(std::uint32_t record);
    void claimAround(std::uint32_t leaf, PQTPoint position, std::uint32_t seed);
    void claimOrPass(std::uint32_t entry, PQTPoint position, std::uint32_t seed);
    void claimAsStray(PQTPoint position, std::uint32_t seed);
    void findShared(std::uint32_t index, PQTPoint position, std::uint32_t seed);
    void handOutToStrays();
    [[nodiscard]] FormedClusters collect();

    const ItemStore& items_;
    double halfWidth_;
    std::span<const PQTPoint> stored_;   // by entry: where searches find it
    std::span<const PQTPoint> current_;  // by entry: where its item lies now
    std::vector<PQTPoint> moved_;        // what `current_` refers to when an item has moved
    std::vector<Claim> claims_;          // by entry
    std::vector<std::uint32_t> seeds_;
    std::optional<SearchAhead> ahead_;  // while seeds are chosen
    StraySeeds strays_;
    std::optional<UnclaimedEntries> unclaimed_;  // made for the first stray
    std::optional<ItemKeys> keys_;               // only when items repeat or are hashable
    std::vector<std::uint32_t> foundShared_;     // by one search: places among the shared entries
    std::optional<SharedKeyLedger> ledger_;      // with `keys_`
};

}  // namespace pelta::detail
