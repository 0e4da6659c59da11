#include "Cluster/Map/ClusterIndex.h"

#include <algorithm>
#include <cmath>

namespace pelta::detail {

namespace {

constexpr std::size_t mostCellsOnASide = 512;

bool haveSameItems(const PgmCluster& a, const PgmCluster& b) {
    const auto itemsOfA = a.items();
    const auto itemsOfB = b.items();
    if (itemsOfA.size() != itemsOfB.size()) {
        return false;
    }
    if (std::equal(itemsOfA.begin(), itemsOfA.end(), itemsOfB.begin())) {
        return true;
    }
    std::vector sortedA(itemsOfA.begin(), itemsOfA.end());
    std::vector sortedB(itemsOfB.begin(), itemsOfB.end());
    std::sort(sortedA.begin(), sortedA.end());
    std::sort(sortedB.begin(), sortedB.end());
    return sortedA == sortedB;
}

bool areSame(const PgmCluster& a, const PgmCluster& b) {
    return a.position() == b.position() && haveSameItems(a, b);
}

/// Part of a grid's side; what lies beyond the side's ends, or nowhere, goes to the cells at the ends.
std::size_t part(double fraction, std::size_t side) noexcept {
    const double place = fraction * static_cast<double>(side);
    if (!(place > 0)) {
        return 0;
    }
    return place < static_cast<double>(side) ? static_cast<std::size_t>(place) : side - 1;
}

}  // namespace

ClusterIndex::ClusterIndex(Clusters clusters)
    : clusters_(std::move(clusters)),
      side_(std::clamp<std::size_t>(
          static_cast<std::size_t>(std::sqrt(static_cast<double>(clusters_.size()))), 1, mostCellsOnASide)),
      places_(clusters_.size()),
      starts_(side_ * side_ + 1) {
    std::vector<Place> unsorted(clusters_.size());
    for (std::uint32_t number = 0; number < clusters_.size(); ++number) {
        unsorted[number] = {clusters_[number]->position(), number};
        ++starts_[cell(unsorted[number].position) + 1];
    }
    for (std::size_t i = 1; i < starts_.size(); ++i) {
        starts_[i] += starts_[i - 1];
    }
    auto ends = starts_;
    for (const Place& place : unsorted) {
        places_[ends[cell(place.position)]++] = place;
    }
}

std::size_t ClusterIndex::row(double latitude) const noexcept {
    return part((latitude + 90) / 180, side_);
}

std::size_t ClusterIndex::column(double longitude) const noexcept {
    return part((longitude + 180) / 360, side_);
}

std::size_t ClusterIndex::cell(CLLocationCoordinate2D position) const noexcept {
    return row(position.latitude) * side_ + column(position.longitude);
}

std::vector<std::uint32_t> ClusterIndex::within(const PgmLatLngBounds& bounds) const {
    std::vector<std::uint32_t> numbers;
    const CLLocationCoordinate2D southWest = bounds.southWest();
    const CLLocationCoordinate2D northEast = bounds.northEast();
    if (places_.empty() || southWest.longitude > northEast.longitude) {
        return numbers;
    }
    const std::size_t west = column(southWest.longitude);
    const std::size_t east = column(northEast.longitude);
    for (std::size_t y = row(southWest.latitude); y <= row(northEast.latitude); ++y) {
        for (std::size_t i = starts_[y * side_ + west]; i < starts_[y * side_ + east + 1]; ++i) {
            if (bounds.contains(places_[i].position)) {
                numbers.push_back(places_[i].number);
            }
        }
    }
    std::sort(numbers.begin(), numbers.end());
    return numbers;
}

std::optional<std::uint32_t> ClusterIndex::find(const PgmCluster& cluster) const {
    if (places_.empty()) {
        return std::nullopt;
    }
    const CLLocationCoordinate2D position = cluster.position();
    const std::size_t where = cell(position);
    for (std::size_t i = starts_[where]; i < starts_[where + 1]; ++i) {
        const Place& place = places_[i];
        if (place.position == position && haveSameItems(*clusters_[place.number], cluster)) {
            return place.number;
        }
    }
    return std::nullopt;
}

bool ClusterIndex::holdsTheSame(const Clusters& others) const {
    if (others.size() != clusters_.size()) {
        return false;
    }
    bool isInOrder = true;
    for (std::size_t i = 0; i < others.size(); ++i) {
        if (areSame(*clusters_[i], *others[i])) {
            continue;
        }
        isInOrder = false;
        if (!find(*others[i])) {
            return false;
        }
    }
    if (isInOrder) {
        return true;
    }
    const ClusterIndex othersByPlace(others);
    return std::all_of(clusters_.begin(), clusters_.end(),
                       [&](const auto& cluster) { return othersByPlace.find(*cluster).has_value(); });
}

}  // namespace pelta::detail
