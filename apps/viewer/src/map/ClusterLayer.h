#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <pelta/Cluster/PgmClusterManager.h>
#include <pelta/View/PgmMapView.h>

#include "data/MapData.h"

namespace pelta::viewer {

/// The points of documents as clusters. A tap on a cluster shows its items; a tap on a single point is told.
class ClusterLayer final : public PgmClusterManagerDelegate,
                           public std::enable_shared_from_this<ClusterLayer> {
 public:
    /// A tap on what stands for one place, or for several in one and the same place.
    struct Tap {
        CLLocationCoordinate2D place;
        std::string text;
        double height;  ///< Of the picture above the place, points.
    };
    using Tapped = std::function<void(const Tap&)>;

    ClusterLayer(const std::shared_ptr<PgmMapView>& map, Tapped tapped);

    /// Shows the points of these documents, and no others; none takes all clusters off the map.
    void show(const std::vector<const MapData*>& documents);
    [[nodiscard]] std::size_t count() const noexcept { return count_; }

    void willRenderClusterItem(PgmClusterManager& manager, const std::shared_ptr<PgmClusterItem>& item,
                               PgmMarkerOptions& options) override;
    bool didTapCluster(PgmClusterManager& manager, const std::shared_ptr<PgmCluster>& cluster,
                       PgmMarkerOptions& options) override;
    bool didTapClusterItem(PgmClusterManager& manager, const std::shared_ptr<PgmClusterItem>& item,
                           PgmMarkerOptions& options) override;

 private:
    std::shared_ptr<PgmClusterManager> manager_;
    Tapped tapped_;
    std::size_t count_ = 0;
};

}  // namespace pelta::viewer
