#include "Cluster/Map/ShownClusters.h"

#include <algorithm>
#include <iterator>
#include <unordered_map>
#include <utility>

#include "Cluster/Map/ClusterTable.h"
#include "Cluster/Map/PositionHash.h"

namespace pelta::detail {

namespace {

constexpr std::uint32_t none = Grouping::none;

using Markers = ShownClusters::Markers;

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

void showMarker(const std::shared_ptr<PgmMarker>& marker, const std::shared_ptr<PgmCluster>& cluster,
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

void ShownClusters::show(Clusters clusters, bool force, const Stage& stage) {
    Grouping next(std::move(clusters));
    if (force) {
        replace(std::move(next), std::vector(grouping_.size(), none), stage);
        return;
    }
    const Comparison comparison = compare(next);
    if (comparison.isSame) {
        extend(stage);
    } else {
        replace(std::move(next), comparison.nextNumbers, stage);
    }
}

ShownClusters::Comparison ShownClusters::compare(const Grouping& next) const {
    // Of groupings of different sizes, which are not the same, it matters only what becomes of the shown
    // ones.
    Comparison result{next.size() == grouping_.size(), std::vector(grouping_.size(), none)};
    ClusterTable table(grouping_, result.isSame ? grouping_.size() : shown_.size());
    if (result.isSame) {
        for (std::uint32_t number = 0; number < grouping_.size(); ++number) {
            table.insert(number);
        }
    } else {
        for (const Shown& shown : shown_) {
            table.insert(shown.number);
        }
    }
    std::size_t found = 0;
    for (std::uint32_t number = 0; number < next.size(); ++number) {
        const std::uint32_t same = table.find(next, number);
        if (same == none) {
            result.isSame = false;
        } else if (result.nextNumbers[same] == none) {
            result.nextNumbers[same] = number;
            ++found;
        }
    }
    result.isSame = result.isSame && found == table.size();
    return result;
}

void ShownClusters::replace(Grouping next, std::span<const std::uint32_t> nextNumbers, const Stage& stage) {
    std::vector<bool> isShown(next.size());
    Markers detached;
    for (Shown& shown : shown_) {
        shown.nextNumber = nextNumbers[shown.number];
        if (shown.nextNumber != none && stage.area.contains(grouping_.positions()[shown.number])) {
            isShown[shown.nextNumber] = true;
        } else {
            shown.nextNumber = none;
            // Off the map, a marker takes any number of changes for the price of one.
            shown.marker->setMapView(nullptr);
            detached.push_back(shown.marker);
        }
    }
    auto added = add(next, isShown, std::move(detached), stage);
    std::vector<Shown> all;
    all.reserve(shown_.size() + added.size());
    for (Shown& shown : shown_) {
        if (shown.nextNumber != none) {
            all.push_back({shown.nextNumber, none, std::move(shown.marker)});
        }
    }
    std::move(added.begin(), added.end(), std::back_inserter(all));
    places_ = PlaceGrid(next.positions());
    // What was shown before is released last: the end of an application's object may run its code.
    std::swap(shown_, all);
    std::swap(isShown_, isShown);
    std::swap(grouping_, next);
}

/// Shows what is within the area and not shown yet, with the detached markers as far as they suffice.
std::vector<ShownClusters::Shown> ShownClusters::add(const Grouping& grouping, std::vector<bool>& isShown,
                                                     Markers detached, const Stage& stage) {
    std::vector<std::uint32_t> missing;
    std::vector<CLLocationCoordinate2D> positions;
    for (std::uint32_t number = 0; number < isShown.size(); ++number) {
        if (!isShown[number] && stage.area.contains(grouping.positions()[number])) {
            missing.push_back(number);
            positions.push_back(grouping.positions()[number]);
        }
    }
    const Markers markers = markersFor(positions, std::move(detached));
    std::vector<Shown> added;
    for (std::size_t i = 0; i < missing.size(); ++i) {
        const auto marker = markers[i] ? markers[i] : PgmMarker::create();
        showMarker(marker, grouping.clusters()[missing[i]], stage);
        isShown[missing[i]] = true;
        added.push_back({missing[i], none, marker});
    }
    return added;
}

void ShownClusters::extend(const Stage& stage) {
    std::vector<std::uint32_t> missing;
    places_.forEachIn(stage.area, [&](std::uint32_t number) {
        if (!isShown_[number]) {
            missing.push_back(number);
        }
    });
    std::sort(missing.begin(), missing.end());
    for (const std::uint32_t number : missing) {
        const auto marker = PgmMarker::create();
        showMarker(marker, grouping_.clusters()[number], stage);
        isShown_[number] = true;
        shown_.push_back({number, none, marker});
    }
}

std::shared_ptr<PgmCluster> ShownClusters::clusterOf(const PgmShape& marker) const {
    const auto found = std::find_if(shown_.begin(), shown_.end(),
                                    [&](const Shown& shown) { return shown.marker.get() == &marker; });
    return found == shown_.end() ? nullptr : grouping_.clusters()[found->number];
}

}  // namespace pelta::detail
