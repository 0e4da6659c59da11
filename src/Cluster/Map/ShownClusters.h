#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

#include <pelta/Annotations/PgmMarker.h>

#include "Cluster/Map/ClusterIndex.h"

namespace pelta::detail {

/// The clusters of the latest grouping and the markers of those that are on the map.
///
/// Whoever prepares a marker may run the application's code, but must not change this meanwhile.
class ShownClusters {
 public:
    using Clusters = ClusterIndex::Clusters;
    /// Makes a detached marker ready to show a cluster.
    using Prepare =
        std::function<void(const std::shared_ptr<PgmMarker>&, const std::shared_ptr<PgmCluster>&)>;

    /// Where clusters are shown.
    struct Stage {
        const std::shared_ptr<PgmMapView>& view;
        const PgmLatLngBounds& bounds;  // only clusters within them get a marker
        Prepare prepare;
    };

    ShownClusters() = default;
    ShownClusters(const ShownClusters&) = delete;
    ShownClusters& operator=(const ShownClusters&) = delete;
    /// Takes the markers off the map.
    ~ShownClusters();

    [[nodiscard]] const ClusterIndex& index() const noexcept { return index_; }

    /// Shows another grouping. A marker of a cluster that both groupings have stays as it is while it is
    /// within the bounds, unless `force` is set; the others are used again or taken off the map.
    void replace(Clusters clusters, bool force, const Stage& stage);
    /// Shows those clusters that have come into the bounds. None is taken away.
    void extend(const Stage& stage);

    /// The cluster that a marker shows; null when the marker is none of these.
    [[nodiscard]] std::shared_ptr<PgmCluster> clusterOf(const PgmShape& marker) const;

 private:
    struct Shown {
        std::uint32_t number;
        std::shared_ptr<PgmMarker> marker;
    };

    ClusterIndex index_;
    std::vector<Shown> shown_;
    std::vector<bool> isShown_;  // by number
};

}  // namespace pelta::detail
