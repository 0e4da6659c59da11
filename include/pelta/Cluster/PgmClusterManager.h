#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

#include <pelta/Cluster/PgmCluster.h>
#include <pelta/Cluster/PgmClusterAlgorithm.h>
#include <pelta/Cluster/PgmClusterIconGenerator.h>
#include <pelta/Cluster/PgmClusterManagerDelegate.h>
#include <pelta/Geometry/PgmCameraPosition.h>
#include <pelta/Platform/Make.h>
#include <pelta/View/PgmMapDelegate.h>

namespace pelta {

namespace detail {
class ShownClusters;
}

/// Shows any number of items on a map as numbered markers, grouped anew for each whole zoom level.
///
/// A change of items is clustered once, 0.2 seconds after the last one; a camera that comes to another
/// rounded zoom level at once. Only clusters within the map's visible bounds get a marker, whichever copy of
/// the world is seen there, also beyond the antimeridian. Panning at one zoom level, another size of the view
/// and another content inset add the markers of clusters that come into view and leave those that went out of
/// it; these go at the next clustering that groups the items otherwise.
///
/// The application keeps the manager; releasing it takes its markers off the map and ends what it was asked
/// for. The manager hears of the camera and of the visible area as the map view's `clusterDelegate`, so a
/// view has one manager at a time. Where the application's code moves the camera while clusters are formed or
/// shown, what follows from that is done in a later turn of the main queue. Main thread only.
class PgmClusterManager : public PgmMapDelegate, public std::enable_shared_from_this<PgmClusterManager> {
 public:
    /// A manager without items.
    /// @param mapView  held weakly; once it is gone, nothing more is clustered.
    [[nodiscard]] static std::shared_ptr<PgmClusterManager> create(
        const std::shared_ptr<PgmMapView>& mapView);
    /// For `make`; use the factory.
    explicit PgmClusterManager(const std::shared_ptr<PgmMapView>& mapView);
    ~PgmClusterManager() override;
    PgmClusterManager(const PgmClusterManager&) = delete;
    PgmClusterManager& operator=(const PgmClusterManager&) = delete;
    /// For `make`: becomes the map view's `clusterDelegate`.
    virtual void completeConstruction(std::string_view className);

    /// @name Items
    /// Passed on to the algorithm, which says which positions can be clustered. An item that cannot is shown
    /// nowhere and can be removed like any other.
    /// @{
    /// Adds an item; null is ignored.
    void addItem(std::shared_ptr<PgmClusterItem> item);
    /// Adds items in their order.
    void addItems(std::span<const std::shared_ptr<PgmClusterItem>> items);
    /// Removes an item; null is ignored.
    void removeItem(const std::shared_ptr<PgmClusterItem>& item);
    /// Removes items in their order.
    void removeItems(std::span<const std::shared_ptr<PgmClusterItem>> items);
    /// Removes all items.
    void clearItems();
    /// @}

    /// Clusters at once and configures every marker anew, asking the delegate for each; for settings that
    /// have changed. The name is spelled so on purpose.
    void Pgmalidate();

    /// @name Settings
    /// @{
    /// Styles markers and hears of taps on them. Held weakly; null at first.
    [[nodiscard]] std::shared_ptr<PgmClusterManagerDelegate> delegate() const { return delegate_.lock(); }
    void setDelegate(const std::shared_ptr<PgmClusterManagerDelegate>& delegate) { delegate_ = delegate; }
    /// Makes the icons of markers that are configured from now on; a `PgmDefaultClusterIconGenerator` at
    /// first. Null is ignored.
    [[nodiscard]] const std::shared_ptr<PgmClusterIconGenerator>& clusterIconGenerator() const noexcept {
        return clusterIconGenerator_;
    }
    void setClusterIconGenerator(std::shared_ptr<PgmClusterIconGenerator> generator);
    /// Groups the items; a `PgmNonHierarchicalDistanceBasedAlgorithm` at first. Its settings take effect at
    /// the next clustering.
    [[nodiscard]] const std::shared_ptr<PgmClusterAlgorithm>& algorithm() const noexcept {
        return algorithm_;
    }
    /// Another algorithm, with the items that it holds, from the next clustering on. Null is ignored.
    void setAlgorithm(std::shared_ptr<PgmClusterAlgorithm> algorithm);
    /// True: a change of items is clustered at once. False at first.
    [[nodiscard]] bool sync() const noexcept { return sync_; }
    void setSync(bool sync) noexcept { sync_ = sync; }
    /// True, the first value: another rounded zoom level is clustered while the camera still moves. False:
    /// 0.2 seconds after it has last moved at another one.
    [[nodiscard]] bool cameraChangedImmy() const noexcept { return cameraChangedImmy_; }
    void setCameraChangedImmy(bool immediately) noexcept { cameraChangedImmy_ = immediately; }
    /// @}

    /// The map view; null once it is gone.
    [[nodiscard]] std::shared_ptr<PgmMapView> mapView() const { return mapView_.lock(); }
    /// The latest grouping, on the map and beyond its edges. Valid until the next clustering.
    [[nodiscard]] const std::vector<std::shared_ptr<PgmCluster>>& clusters() const noexcept;

    /// For the map view: the camera moves.
    void regionIsChangingWithReason(PgmMapView& mapView, PgmCameraUpdateReason reason) override;
    /// For the map view: its size or its content inset has changed.
    void mapViewDidChangeVisibleArea(PgmMapView& mapView) override;

 private:
    class Run;
    /// What came up during a run; the greater includes the lesser.
    enum class Deferred { nothing, check, run, forcedRun };

    void requestCluster();
    void scheduleRequest(double delay);
    void requestIsDue();
    void checkNeedCluster();
    void cluster(bool force);
    void updateCluster(const std::shared_ptr<PgmMapView>& view);
    template <class Work>
    void onStage(const std::shared_ptr<PgmMapView>& view, Work&& work);
    void doLater(Deferred work);
    void doDeferred();
    void prepareMarker(const std::shared_ptr<PgmMarker>& marker, const std::shared_ptr<PgmCluster>& cluster);
    [[nodiscard]] bool isShownAsItem(const PgmCluster& cluster) const;
    bool didTap(const std::shared_ptr<PgmMarker>& marker);

    std::weak_ptr<PgmMapView> mapView_;
    std::shared_ptr<PgmCameraPosition> previousCamera_;
    std::shared_ptr<PgmClusterAlgorithm> algorithm_;
    std::shared_ptr<PgmClusterIconGenerator> clusterIconGenerator_;
    std::weak_ptr<PgmClusterManagerDelegate> delegate_;
    std::unique_ptr<detail::ShownClusters> shown_;
    double requestDue_ = 0;            // port's clock
    bool isRequestScheduled_ = false;  // one task at most, which waits on when a later request moved the time
    Deferred deferred_ = Deferred::nothing;
    bool isClustering_ = false;
    bool sync_ = false;
    bool cameraChangedImmy_ = true;
};

}  // namespace pelta
