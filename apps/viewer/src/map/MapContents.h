#pragma once

#include <memory>
#include <vector>

#include <pelta/Geometry/PgmLatLngBounds.h>
#include <pelta/View/PgmMapView.h>

#include "data/MapData.h"
#include "map/ClusterLayer.h"
#include "map/Overlays.h"
#include "map/PinPictures.h"
#include "map/TitleWindow.h"

namespace pelta::viewer {

/// What lies on the map: the scene that it opens with, or documents. Points are shown as markers, which tell
/// their title when they are tapped, or as clusters; while there are no documents, the clusters are those of
/// all places of the world.
class MapContents {
 public:
    explicit MapContents(const std::shared_ptr<PgmMapView>& map);

    void showScene(Shapes shapes, std::shared_ptr<PgmLatLngBounds> bounds);
    void add(MapData document);
    void clear();
    /// Closes the title that was opened by a tap.
    void closeTitle() { titleWindow_->close(); }

    [[nodiscard]] bool isClustered() const noexcept { return isClustered_; }
    void setIsClustered(bool isClustered);
    /// Points in clusters, on the map and beyond its edges.
    [[nodiscard]] std::size_t clusteredCount() const;
    /// True when the places of the world are to be clustered and have not been given yet.
    [[nodiscard]] bool needsWorldPlaces() const;
    void setWorldPlaces(MapData places);

    /// Around everything on the map; null when it is empty.
    [[nodiscard]] const std::shared_ptr<PgmLatLngBounds>& bounds() const noexcept { return bounds_; }

 private:
    void put(Shapes shapes);
    void place(const std::shared_ptr<PgmShape>& shape) const;
    void updateClusters();

    std::shared_ptr<PgmMapView> map_;
    PinPictures pins_;
    std::vector<std::unique_ptr<const MapData>> documents_;
    std::unique_ptr<const MapData> worldPlaces_;
    Shapes shapes_;
    std::shared_ptr<PgmLatLngBounds> bounds_;
    std::shared_ptr<TitleWindow> titleWindow_ = std::make_shared<TitleWindow>();
    std::shared_ptr<ClusterLayer> clusters_;
    bool isClustered_ = false;
};

}  // namespace pelta::viewer
