#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <vector>

#include <pelta/Annotations/PgmMarker.h>

#include "Cluster/Map/Grouping.h"
#include "Cluster/Map/PlaceGrid.h"
#include "Cluster/Map/VisibleArea.h"

namespace pelta::detail {

/// The clusters of the latest grouping and the markers of those that are on the map.
///
/// Whoever prepares a marker may run the application's code, but must not change this meanwhile.
class ShownClusters {
 public:
    using Clusters = Grouping::Clusters;
    using Markers = std::vector<std::shared_ptr<PgmMarker>>;
    /// Makes a detached marker ready to show a cluster.
    using Prepare =
        std::function<void(const std::shared_ptr<PgmMarker>&, const std::shared_ptr<PgmCluster>&)>;

    /// Where clusters are shown.
    struct Stage {
        const std::shared_ptr<PgmMapView>& view;
        VisibleArea area;  // only clusters within it get a marker
        Prepare prepare;
    };

    ShownClusters() = default;
    ShownClusters(const ShownClusters&) = delete;
    ShownClusters& operator=(const ShownClusters&) = delete;
    /// Takes the markers off the map.
    ~ShownClusters();

    /// The latest grouping.
    [[nodiscard]] const Clusters& clusters() const noexcept { return grouping_.clusters(); }

    /// Shows a grouping. One with the same clusters as the present one only extends that; of another, a
    /// marker of a cluster that both have stays as it is while it is within the area, and the others are used
    /// again or taken off the map. With `force` no marker stays as it is.
    void show(Clusters clusters, bool force, const Stage& stage);
    /// Shows those clusters that have come into the area. None is taken away.
    void extend(const Stage& stage);

    /// The cluster that a marker shows; null when the marker is none of these.
    [[nodiscard]] std::shared_ptr<PgmCluster> clusterOf(const PgmShape& marker) const;

 private:
    struct Shown {
        std::uint32_t number;
        std::uint32_t nextNumber;  // in the grouping that is about to be shown; none if the marker goes
        std::shared_ptr<PgmMarker> marker;
    };

    /// How the next grouping differs from the present one.
    struct Comparison {
        bool isSame;  // the same set of clusters, as many
        // By present number: that of the same cluster in the next grouping, or none. Of equal clusters only
        // one has one, and of groupings of different sizes only the shown have.
        std::vector<std::uint32_t> nextNumbers;
    };

    [[nodiscard]] Comparison compare(const Grouping& next) const;
    void replace(Grouping next, std::span<const std::uint32_t> nextNumbers, const Stage& stage);
    [[nodiscard]] static std::vector<Shown> add(const Grouping& grouping, std::vector<bool>& isShown,
                                                Markers detached, const Stage& stage);

    Grouping grouping_;
    PlaceGrid places_;
    std::vector<Shown> shown_;
    std::vector<bool> isShown_;  // by number
};

}  // namespace pelta::detail
