#include "Cluster/Map/ShownClusters.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

namespace pelta::detail {

namespace {

using Markers = std::vector<std::shared_ptr<PgmMarker>>;

struct PositionHash {
    std::size_t operator()(CLLocationCoordinate2D position) const noexcept {
        const std::hash<double> hash;
        return hash(position.latitude) * 31 + hash(position.longitude);
    }
};

/// Hands detached markers out to positions: each to the position where it stood, the rest in any order. Null
/// where they do not suffice.
Markers markersFor(const std::vector<CLLocationCoordinate2D>& positions, Markers detached) {
    std::unordered_map<CLLocationCoordinate2D, std::size_t, PositionHash> byPosition;
    for (std::size_t i = 0; i < detached.size(); ++i) {
        byPosition.insert_or_assign(detached[i]->position(), i);
    }
    Markers markers(positions.size());
    for (std::size_t i = 0; i < positions.size(); ++i) {
        if (const auto found = byPosition.find(positions[i]); found != byPosition.end()) {
            markers[i] = std::move(detached[found->second]);
            byPosition.erase(found);
        }
    }
    auto next = detached.begin();
    for (auto& marker : markers) {
        next = std::find_if(next, detached.end(), [](const auto& other) { return other != nullptr; });
        if (next != detached.end() && !marker) {
            marker = std::move(*next);
        }
    }
    return markers;
}

void show(const std::shared_ptr<PgmMarker>& marker, const std::shared_ptr<PgmCluster>& cluster,
          const ShownClusters::Stage& stage) {
    stage.prepare(marker, cluster);
    marker->setMapView(stage.view);
}

}  // namespace

ShownClusters::~ShownClusters() {
    for (const Shown& shown : shown_) {
        shown.marker->setMapView(nullptr);
    }
}

void ShownClusters::replace(Clusters clusters, bool force, const Stage& stage) {
    ClusterIndex next(std::move(clusters));
    std::vector<Shown> shown;
    std::vector<bool> isShown(next.clusters().size());
    Markers detached;
    for (const auto& [number, marker] : shown_) {
        const auto& cluster = *index_.clusters()[number];
        const auto again = force ? std::nullopt : next.find(cluster);
        if (again && !isShown[*again] && stage.bounds.contains(cluster.position())) {
            isShown[*again] = true;
            shown.push_back({*again, marker});
        } else {
            // Off the map, a marker takes any number of changes for the price of one.
            marker->setMapView(nullptr);
            detached.push_back(marker);
        }
    }
    auto missing = next.within(stage.bounds);
    std::erase_if(missing, [&](std::uint32_t number) { return isShown[number]; });
    std::vector<CLLocationCoordinate2D> positions;
    positions.reserve(missing.size());
    for (const std::uint32_t number : missing) {
        positions.push_back(next.clusters()[number]->position());
    }
    const Markers markers = markersFor(positions, std::move(detached));
    for (std::size_t i = 0; i < missing.size(); ++i) {
        const auto marker = markers[i] ? markers[i] : PgmMarker::create();
        show(marker, next.clusters()[missing[i]], stage);
        isShown[missing[i]] = true;
        shown.push_back({missing[i], marker});
    }
    // What was shown before is released last: the end of an application's object may run its code.
    std::swap(shown_, shown);
    std::swap(isShown_, isShown);
    std::swap(index_, next);
}

void ShownClusters::extend(const Stage& stage) {
    for (const std::uint32_t number : index_.within(stage.bounds)) {
        if (!isShown_[number]) {
            const auto marker = PgmMarker::create();
            show(marker, index_.clusters()[number], stage);
            isShown_[number] = true;
            shown_.push_back({number, marker});
        }
    }
}

std::shared_ptr<PgmCluster> ShownClusters::clusterOf(const PgmShape& marker) const {
    const auto found = std::find_if(shown_.begin(), shown_.end(),
                                    [&](const Shown& shown) { return shown.marker.get() == &marker; });
    return found == shown_.end() ? nullptr : index_.clusters()[found->number];
}

}  // namespace pelta::detail
