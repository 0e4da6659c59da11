#include "map/MapContents.h"

#include <algorithm>
#include <utility>

#include <pelta/Annotations/PgmMarker.h>

namespace pelta::viewer {

namespace {

std::shared_ptr<PgmLatLngBounds> unionOf(const std::shared_ptr<PgmLatLngBounds>& a,
                                         const std::shared_ptr<PgmLatLngBounds>& b) {
    if (!a || !b) {
        return a ? a : b;
    }
    return PgmLatLngBounds::create({std::min(a->southWest().latitude, b->southWest().latitude),
                                    std::min(a->southWest().longitude, b->southWest().longitude)},
                                   {std::max(a->northEast().latitude, b->northEast().latitude),
                                    std::max(a->northEast().longitude, b->northEast().longitude)});
}

}  // namespace

MapContents::MapContents(const std::shared_ptr<PgmMapView>& map)
    : map_(map),
      clusters_(std::make_shared<ClusterLayer>(
          map, [map = std::weak_ptr(map), title = std::weak_ptr(titleWindow_)](const ClusterLayer::Tap& tap) {
              if (const auto window = title.lock()) {
                  window->open(map.lock(), tap.place, tap.text, tap.height);
              }
          })) {}

void MapContents::showScene(Shapes shapes, std::shared_ptr<PgmLatLngBounds> bounds) {
    put(std::move(shapes));
    bounds_ = std::move(bounds);
}

void MapContents::add(MapData document) {
    put(shapesOf(document, pins_));
    bounds_ = unionOf(bounds_, boundsOf(document));
    documents_.push_back(std::make_unique<const MapData>(std::move(document)));
    updateClusters();
}

void MapContents::clear() {
    closeTitle();
    for (const auto& shape : shapes_) {
        shape->setMapView(nullptr);
    }
    shapes_.clear();
    documents_.clear();
    bounds_ = nullptr;
    updateClusters();
}

void MapContents::setIsClustered(bool isClustered) {
    isClustered_ = isClustered;
    closeTitle();
    for (const auto& shape : shapes_) {
        place(shape);
    }
    updateClusters();
}

std::size_t MapContents::clusteredCount() const {
    return isClustered_ ? clusters_->count() : 0;
}

bool MapContents::needsWorldPlaces() const {
    return isClustered_ && documents_.empty() && worldPlaces_ == nullptr;
}

void MapContents::setWorldPlaces(MapData places) {
    worldPlaces_ = std::make_unique<const MapData>(std::move(places));
    updateClusters();
}

void MapContents::put(Shapes shapes) {
    for (auto& shape : shapes) {
        if (const auto marker = std::dynamic_pointer_cast<PgmMarker>(shape)) {
            marker->setTouchEvent([title = std::weak_ptr(titleWindow_)](PgmShape& touched) {
                const auto window = title.lock();
                if (window != nullptr) {
                    window->toggle(std::static_pointer_cast<PgmMarker>(touched.shared_from_this()));
                }
                return window != nullptr;
            });
        }
        place(shape);
        shapes_.push_back(std::move(shape));
    }
}

/// Markers are off the map while there are clusters in their place.
void MapContents::place(const std::shared_ptr<PgmShape>& shape) const {
    const bool isHidden = isClustered_ && std::dynamic_pointer_cast<PgmMarker>(shape) != nullptr;
    const auto wanted = isHidden ? nullptr : map_;
    if (shape->mapView() != wanted) {
        shape->setMapView(wanted);
    }
}

void MapContents::updateClusters() {
    std::vector<const MapData*> shown;
    if (isClustered_) {
        for (const auto& document : documents_) {
            shown.push_back(document.get());
        }
        if (documents_.empty() && worldPlaces_ != nullptr) {
            shown.push_back(worldPlaces_.get());
        }
    }
    if (!shown.empty() || clusters_->count() > 0) {
        clusters_->show(shown);
    }
}

}  // namespace pelta::viewer
