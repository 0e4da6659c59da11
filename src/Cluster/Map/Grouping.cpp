#include "Cluster/Map/Grouping.h"

#include <algorithm>
#include <utility>

#include "Cluster/Map/PositionHash.h"

namespace pelta::detail {

namespace {

std::uint64_t addressOf(const std::shared_ptr<PgmClusterItem>& item) noexcept {
    return reinterpret_cast<std::uintptr_t>(item.get());
}

bool haveSameItems(const PgmCluster& a, const PgmCluster& b) {
    const auto itemsOfA = a.items();
    const auto itemsOfB = b.items();
    if (std::equal(itemsOfA.begin(), itemsOfA.end(), itemsOfB.begin(), itemsOfB.end())) {
        return true;
    }
    std::vector sortedA(itemsOfA.begin(), itemsOfA.end());
    std::vector sortedB(itemsOfB.begin(), itemsOfB.end());
    std::sort(sortedA.begin(), sortedA.end());
    std::sort(sortedB.begin(), sortedB.end());
    return sortedA == sortedB;
}

}  // namespace

Grouping::Grouping(Clusters clusters) : clusters_(std::move(clusters)) {
    positions_.reserve(clusters_.size());
    contents_.reserve(clusters_.size());
    for (const auto& cluster : clusters_) {
        positions_.push_back(cluster->position());
        contents_.push_back(contentsOf(*cluster));
    }
}

Grouping::Contents Grouping::contentsOf(const PgmCluster& cluster) {
    const auto items = cluster.items();
    if (items.size() == 1) {
        return {1, addressOf(items.front())};
    }
    std::uint64_t sum = 0;
    for (const auto& item : items) {
        sum += mixed(addressOf(item));
    }
    return {items.size(), sum};
}

std::size_t Grouping::hash(std::uint32_t number) const noexcept {
    return static_cast<std::size_t>(mixed(PositionHash{}(positions_[number]) ^ contents_[number].mark));
}

bool Grouping::isSame(std::uint32_t number, const Grouping& others, std::uint32_t other) const {
    return positions_[number] == others.positions_[other] && contents_[number] == others.contents_[other] &&
           (contents_[number].count < 2 || haveSameItems(*clusters_[number], *others.clusters_[other]));
}

}  // namespace pelta::detail
