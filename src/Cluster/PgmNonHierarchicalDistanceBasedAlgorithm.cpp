#include <cmath>
#include <utility>

#include <pelta/Cluster/PgmClusterAlgorithm.h>

#include "Cluster/ClusterFormation.h"
#include "Cluster/ItemStore.h"

namespace pelta {

namespace {

using Clusters = std::vector<std::shared_ptr<PgmCluster>>;
using Items = std::vector<std::shared_ptr<PgmClusterItem>>;

std::shared_ptr<PgmCluster> largeCluster(const detail::FormedClusters& formed, std::size_t cluster,
                                         std::span<const detail::ItemRecord> records) {
    Items items;
    items.reserve(formed.membersOf(cluster).size());
    for (const std::uint32_t member : formed.membersOf(cluster)) {
        items.push_back(records[member].item);
    }
    return std::make_shared<PgmStaticCluster>(records[formed.seeds[cluster]].item->position(),
                                              std::move(items));
}

std::shared_ptr<PgmCluster> clusterOfOne(const std::shared_ptr<PgmClusterItem>& item) {
    return std::make_shared<PgmStaticCluster>(item->position(), Items{item});
}

/// Large clusters, then what is left of the small ones.
Clusters brokenUp(const detail::FormedClusters& formed, std::span<const detail::ItemRecord> records,
                  std::uint64_t smallestCount) {
    std::size_t total = 0;
    const auto isLarge = [&](std::size_t cluster) {
        return formed.membersOf(cluster).size() >= smallestCount;
    };
    for (std::size_t cluster = 0; cluster < formed.seeds.size(); ++cluster) {
        total += isLarge(cluster) ? 1 : formed.membersOf(cluster).size();
    }
    Clusters clusters;
    clusters.reserve(total);
    for (std::size_t cluster = 0; cluster < formed.seeds.size(); ++cluster) {
        if (isLarge(cluster)) {
            clusters.push_back(largeCluster(formed, cluster, records));
        }
    }
    for (std::size_t cluster = 0; cluster < formed.seeds.size(); ++cluster) {
        if (!isLarge(cluster)) {
            for (const std::uint32_t member : formed.membersOf(cluster)) {
                clusters.push_back(clusterOfOne(records[member].item));
            }
        }
    }
    return clusters;
}

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
    return brokenUp(formed, items_->records(), minClusteringCount_);
}

}  // namespace pelta
