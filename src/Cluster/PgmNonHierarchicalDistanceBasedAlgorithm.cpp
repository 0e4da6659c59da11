#include <cmath>
#include <utility>

#include <pelta/Cluster/PgmClusterAlgorithm.h>

#include "Cluster/ClusterFormation.h"
#include "Cluster/ItemStore.h"

namespace pelta {

namespace {

using Clusters = std::vector<std::shared_ptr<PgmCluster>>;
using Items = std::vector<std::shared_ptr<PgmClusterItem>>;

/// Turns formed clusters into those that are handed out.
class Handover {
 public:
    Handover(const detail::FormedClusters& formed, std::span<const detail::ItemRecord> records,
             std::uint64_t smallestCount)
        : formed_(formed), records_(records), smallestCount_(smallestCount) {}

    /// Large clusters, then what is left of the small ones.
    Clusters clusters() const {
        Clusters clusters;
        clusters.reserve(count());
        for (std::size_t cluster = 0; cluster < formed_.seeds.size(); ++cluster) {
            if (isLarge(cluster)) {
                clusters.push_back(large(cluster));
            }
        }
        for (std::size_t cluster = 0; cluster < formed_.seeds.size(); ++cluster) {
            if (!isLarge(cluster)) {
                for (std::uint32_t i = formed_.starts[cluster]; i < formed_.starts[cluster + 1]; ++i) {
                    const auto& item = member(i);
                    clusters.push_back(std::make_shared<PgmStaticCluster>(item->position(), item));
                }
            }
        }
        return clusters;
    }

 private:
    bool isLarge(std::size_t cluster) const { return formed_.sizeOf(cluster) >= smallestCount_; }

    std::size_t count() const {
        std::size_t count = 0;
        for (std::size_t cluster = 0; cluster < formed_.seeds.size(); ++cluster) {
            count += isLarge(cluster) ? 1 : formed_.sizeOf(cluster);
        }
        return count;
    }

    std::shared_ptr<PgmCluster> large(std::size_t cluster) const {
        Items items;
        items.reserve(formed_.sizeOf(cluster));
        for (std::uint32_t i = formed_.starts[cluster]; i < formed_.starts[cluster + 1]; ++i) {
            items.push_back(member(i));
        }
        const auto& seed = records_[formed_.seeds[cluster]].item;
        return std::make_shared<PgmStaticCluster>(seed->position(), std::move(items));
    }

    /// Members lie scattered in memory, and so do their items; those that come next are fetched ahead.
    const std::shared_ptr<PgmClusterItem>& member(std::uint32_t i) const {
        const auto& members = formed_.members;
        if (i + 16 < members.size()) {
            __builtin_prefetch(&records_[members[i + 16]]);
            __builtin_prefetch(records_[members[i + 8]].item.get(), 1);
        }
        return records_[members[i]].item;
    }

    const detail::FormedClusters& formed_;
    std::span<const detail::ItemRecord> records_;
    std::uint64_t smallestCount_;
};

}  // namespace

PgmNonHierarchicalDistanceBasedAlgorithm::PgmNonHierarchicalDistanceBasedAlgorithm()
    : items_(std::make_unique<detail::ItemStore>()) {}

PgmNonHierarchicalDistanceBasedAlgorithm::~PgmNonHierarchicalDistanceBasedAlgorithm() = default;

void PgmNonHierarchicalDistanceBasedAlgorithm::add(std::shared_ptr<PgmClusterItem> item) {
    if (item != nullptr) {
        items_->add(std::move(item));
    }
}

void PgmNonHierarchicalDistanceBasedAlgorithm::add(std::span<const std::shared_ptr<PgmClusterItem>> items) {
    for (const auto& item : items) {
        add(item);
    }
}

void PgmNonHierarchicalDistanceBasedAlgorithm::remove(const std::shared_ptr<PgmClusterItem>& item) {
    // The argument may be the caller's own record of the item, gone by the end.
    const std::shared_ptr<PgmClusterItem> kept = item;
    if (kept != nullptr) {
        items_->remove(*kept);
    }
}

void PgmNonHierarchicalDistanceBasedAlgorithm::remove(
    std::span<const std::shared_ptr<PgmClusterItem>> items) {
    for (const auto& item : items) {
        remove(item);
    }
}

void PgmNonHierarchicalDistanceBasedAlgorithm::clear() {
    items_->clear();
}

std::vector<std::shared_ptr<PgmCluster>> PgmNonHierarchicalDistanceBasedAlgorithm::clustersAtZoom(
    float zoom) {
    items_->arrange();
    const double scale = std::pow(2.0, static_cast<double>(zoom + 11.0F));
    const double halfWidth = 2.0 * static_cast<double>(maxDistanceBetweenItems_) / scale;
    const auto formed = detail::ClusterFormation(*items_, halfWidth).form();
    return Handover(formed, items_->records(), minClusteringCount_).clusters();
}

}  // namespace pelta
