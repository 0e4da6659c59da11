#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include <pelta/Cluster/PgmCluster.h>

/// @file
/// Grouping items for a zoom level.

namespace pelta {

namespace detail {
class ItemStore;
}

/// Holds items and groups them for a zoom level. Main thread only.
class PgmClusterAlgorithm {
 public:
    virtual ~PgmClusterAlgorithm() = default;

    /// Smallest number of items that stay together; smaller groups are broken up.
    [[nodiscard]] virtual std::uint64_t minClusteringCount() const = 0;
    virtual void setMinClusteringCount(std::uint64_t count) = 0;

    /// How far items are searched from the middle of a cluster; the unit is the algorithm's.
    [[nodiscard]] virtual std::uint64_t maxDistanceBetweenItems() const = 0;
    virtual void setMaxDistanceBetweenItems(std::uint64_t distance) = 0;

    /// Adds an item, which the algorithm then shares. A null item is ignored.
    virtual void add(std::shared_ptr<PgmClusterItem> item) = 0;
    /// Adds the items in their order.
    virtual void add(std::span<const std::shared_ptr<PgmClusterItem>> items) = 0;
    /// Removes an item; a null item is ignored.
    virtual void remove(const std::shared_ptr<PgmClusterItem>& item) = 0;
    /// Removes the items in their order.
    virtual void remove(std::span<const std::shared_ptr<PgmClusterItem>> items) = 0;
    /// Removes all items.
    virtual void clear() = 0;

    /// Groups the items.
    /// @param zoom  the engine's zoom level; any value.
    [[nodiscard]] virtual std::vector<std::shared_ptr<PgmCluster>> clustersAtZoom(float zoom) = 0;
};

/// Groups items that lie in a square around one of them.
///
/// Items are walked in the order of adding. Each that no earlier one has claimed becomes the seed of a
/// cluster and claims all items within a square around it, 2 × `maxDistanceBetweenItems` × 2^-(zoom + 11) of
/// the world's width to each side; at the default of 200 that is 100 points of the screen. An item that two
/// seeds claim goes to the nearer one, on equal distances to the later one. A cluster's position is that of
/// its seed. Clusters of fewer than `minClusteringCount` items are then broken up into clusters of one, each
/// at its item's own position, which follow the others. Within a cluster, items come in the order in which a
/// quad tree over the whole world (`PQTPointQuadTree`) finds them. The result depends only on the items and
/// on the order in which they were added and removed.
///
/// Positions are laid out in a square Mercator world. Latitudes beyond 85.05112878° count as that. An item
/// whose longitude is above 180° or below -540°, or that lies so near the southern edge that rounding carries
/// it out of the world, belongs to no cluster and does not come back from `clustersAtZoom`, though as a seed
/// it may claim others. An item with a coordinate that is not finite is nowhere: it belongs to no cluster and
/// is no seed. It is held all the same, until it is removed.
///
/// The time grows with the number of items, a little faster than in proportion, however they are spread; the
/// order of items is worked out once after a change and kept. Holding an item takes at most 96 bytes beside
/// the item itself. At most 2^30 items. Main thread only.
class PgmNonHierarchicalDistanceBasedAlgorithm final : public PgmClusterAlgorithm {
 public:
    /// No items; the defaults of the two settings.
    PgmNonHierarchicalDistanceBasedAlgorithm();
    ~PgmNonHierarchicalDistanceBasedAlgorithm() override;
    PgmNonHierarchicalDistanceBasedAlgorithm(const PgmNonHierarchicalDistanceBasedAlgorithm&) = delete;
    PgmNonHierarchicalDistanceBasedAlgorithm& operator=(const PgmNonHierarchicalDistanceBasedAlgorithm&) =
        delete;

    /// 2 by default. At 0 and 1 no cluster is broken up, and one that lost all its items to others stays at
    /// 0.
    [[nodiscard]] std::uint64_t minClusteringCount() const override { return minClusteringCount_; }
    void setMinClusteringCount(std::uint64_t count) override { minClusteringCount_ = count; }

    /// Half points of the screen at 512 points for the world at zoom 0; 200 by default. At 0 only items at
    /// the very same position come together.
    [[nodiscard]] std::uint64_t maxDistanceBetweenItems() const override { return maxDistanceBetweenItems_; }
    void setMaxDistanceBetweenItems(std::uint64_t distance) override { maxDistanceBetweenItems_ = distance; }

    /// Adds an item at its present position. Added twice, it is held twice.
    void add(std::shared_ptr<PgmClusterItem> item) override;
    void add(std::span<const std::shared_ptr<PgmClusterItem>> items) override;

    /// Ends every occurrence of the item as a seed, and takes one item at the item's present position out of
    /// what searches find: the earliest added there, whichever it is. So of several items at exactly one
    /// position another may cease to be found, also when `item` itself was never added. Removing an item as
    /// often as it was added takes time in proportion to that.
    void remove(const std::shared_ptr<PgmClusterItem>& item) override;
    void remove(std::span<const std::shared_ptr<PgmClusterItem>> items) override;
    void clear() override;

    /// Groups the items; none give an empty result. The zoom is used as it is, negative or fractional. Every
    /// cluster is a new `PgmStaticCluster`.
    [[nodiscard]] std::vector<std::shared_ptr<PgmCluster>> clustersAtZoom(float zoom) override;

 private:
    std::uint64_t minClusteringCount_ = 2;
    std::uint64_t maxDistanceBetweenItems_ = 200;
    std::unique_ptr<detail::ItemStore> items_;
};

}  // namespace pelta
