#include "map/ClusterLayer.h"

#include <algorithm>
#include <utility>

#include <pelta/Annotations/PgmImage.h>
#include <pelta/Geometry/PgmCameraUpdate.h>
#include <pelta/Geometry/PgmLatLngBounds.h>

#include "map/PlaceTexts.h"

namespace pelta::viewer {

namespace {

constexpr UIEdgeInsets fitPadding{72, 48, 48, 48};
constexpr double flightDuration = 0.8;
constexpr std::uint64_t shownNames = 3;

class NamedPoint final : public PgmClusterItem {
 public:
    NamedPoint(CLLocationCoordinate2D place, std::string_view name) : place_(place), name_(name) {}
    [[nodiscard]] CLLocationCoordinate2D position() const override { return place_; }
    [[nodiscard]] const std::string& name() const noexcept { return name_; }

 private:
    CLLocationCoordinate2D place_;
    std::string name_;
};

const std::string& nameOf(const PgmClusterItem& item) {
    return static_cast<const NamedPoint&>(item).name();
}

std::shared_ptr<PgmLatLngBounds> boundsOf(const PgmCluster& cluster) {
    CLLocationCoordinate2D low = cluster.position();
    CLLocationCoordinate2D high = low;
    for (const auto& item : cluster.items()) {
        const CLLocationCoordinate2D place = item->position();
        low = {std::min(low.latitude, place.latitude), std::min(low.longitude, place.longitude)};
        high = {std::max(high.latitude, place.latitude), std::max(high.longitude, place.longitude)};
    }
    return PgmLatLngBounds::create(low, high);
}

double heightOf(const PgmMarkerOptions& options) {
    const auto icon = options.iconImage();
    return icon == nullptr ? 0 : icon->image().size().height * options.iconScale();
}

/// "Seoul, Incheon, Suwon and 4 more".
std::string namesOf(const PgmCluster& cluster) {
    std::string text;
    const auto items = cluster.items();
    for (std::size_t i = 0; i < items.size() && i < shownNames; ++i) {
        text += (i == 0 ? "" : ", ") + nameOf(*items[i]);
    }
    return items.size() > shownNames ? text + " and " + std::to_string(items.size() - shownNames) + " more"
                                     : text;
}

}  // namespace

ClusterLayer::ClusterLayer(const std::shared_ptr<PgmMapView>& map, Tapped tapped)
    : manager_(PgmClusterManager::create(map)), tapped_(std::move(tapped)) {
    // Items come and go all at once.
    manager_->setSync(true);
}

void ClusterLayer::show(const std::vector<const MapData*>& documents) {
    manager_->setDelegate(shared_from_this());
    const auto points = std::make_shared<std::vector<NamedPoint>>();
    for (const MapData* document : documents) {
        for (const DataShape& shape : document->shapes) {
            if (shape.kind == ShapeKind::marker) {
                points->emplace_back(document->coordinatesOf(shape).front(),
                                     document->styles[shape.style].title);
            }
        }
    }
    std::vector<std::shared_ptr<PgmClusterItem>> items;
    items.reserve(points->size());
    for (NamedPoint& point : *points) {
        items.emplace_back(points, &point);
    }
    count_ = items.size();
    manager_->clearItems();
    manager_->addItems(items);
}

void ClusterLayer::willRenderClusterItem(PgmClusterManager&, const std::shared_ptr<PgmClusterItem>& item,
                                         PgmMarkerOptions& options) {
    options.setTitle(nameOf(*item));
    options.setIsAllowOverlapTitle(false);
}

bool ClusterLayer::didTapCluster(PgmClusterManager& manager, const std::shared_ptr<PgmCluster>& cluster,
                                 PgmMarkerOptions& options) {
    const auto bounds = boundsOf(*cluster);
    if (bounds->southWest() == bounds->northEast()) {
        tapped_({cluster->position(), namesOf(*cluster), heightOf(options) / 2});
        return true;
    }
    if (const auto map = manager.mapView()) {
        const auto update = PgmCameraUpdate::cameraUpdateFitBounds(bounds, fitPadding);
        update->setAnimation(PgmCameraUpdateAnimation::fly);
        update->setAnimationDuration(flightDuration);
        map->moveCamera(update);
    }
    return true;
}

bool ClusterLayer::didTapClusterItem(PgmClusterManager&, const std::shared_ptr<PgmClusterItem>& item,
                                     PgmMarkerOptions& options) {
    const std::string& name = nameOf(*item);
    tapped_({item->position(), name.empty() ? placeTexts(item->position()).front().numbers : name,
             heightOf(options)});
    return true;
}

}  // namespace pelta::viewer
