#pragma once

#include <memory>

#include <pelta/Annotations/PgmMarkerOptions.h>
#include <pelta/Cluster/PgmCluster.h>

namespace pelta {

class PgmClusterManager;

/// What an application decides about the markers of a cluster manager, on the main thread. Every method may
/// be left alone. A method may do anything, also change the manager's items, take shapes from the map or
/// release the manager or the map; clustering that this asks for takes place after the present one.
///
/// Where the algorithm's `minClusteringCount` is 2 or more, a cluster of one item is shown and reported as
/// that item; otherwise as a cluster like any other.
class PgmClusterManagerDelegate {
 public:
    virtual ~PgmClusterManagerDelegate() = default;

    /// The marker of a cluster is about to be shown. It stands at the cluster's position with the icon for
    /// its count; everything else is as in a new marker.
    /// @param options  the marker's properties, to be changed as one likes.
    virtual void willRenderCluster(PgmClusterManager& manager, const std::shared_ptr<PgmCluster>& cluster,
                                   PgmMarkerOptions& options);
    /// The marker of a single item is about to be shown. It stands at the item's position and is otherwise as
    /// a new marker.
    virtual void willRenderClusterItem(PgmClusterManager& manager,
                                       const std::shared_ptr<PgmClusterItem>& item,
                                       PgmMarkerOptions& options);
    /// The marker of a cluster was tapped.
    /// @return whether the tap has been dealt with; otherwise the map takes it for one on itself. False
    ///         unless overridden.
    virtual bool didTapCluster(PgmClusterManager& manager, const std::shared_ptr<PgmCluster>& cluster,
                               PgmMarkerOptions& options);
    /// As `didTapCluster`, for the marker of a single item.
    virtual bool didTapClusterItem(PgmClusterManager& manager, const std::shared_ptr<PgmClusterItem>& item,
                                   PgmMarkerOptions& options);
};

}  // namespace pelta
