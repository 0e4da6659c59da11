#include "BusRoute.h"

#include <algorithm>
#include <cmath>
#include <utility>

using namespace pelta;

namespace {

std::vector<CLLocationCoordinate2D> positionsOf(const std::vector<BusStop>& stops) {
    std::vector<CLLocationCoordinate2D> positions;
    positions.reserve(stops.size());
    for (const auto& stop : stops) {
        positions.push_back(stop.position);
    }
    return positions;
}

}  // namespace

BusRoute::BusRoute(std::shared_ptr<PgmMapView> map, std::vector<BusStop> stops, UIColor color)
    : map_(std::move(map)), stops_(std::move(stops)), line_(PgmPolyline::create(positionsOf(stops_))) {
    line_->setColor(color);
    line_->setWidth(5);
    line_->setMapView(map_);
    for (const auto& stop : stops_) {
        auto marker = PgmMarker::markerWithPosition(stop.position);
        marker->setTitle(stop.name);
        marker->setVisibleMinZoom(10);
        marker->setMapView(map_);
        markers_.push_back(std::move(marker));
    }
}

BusRoute::~BusRoute() {
    line_->setMapView(nullptr);
    for (const auto& marker : markers_) {
        marker->setMapView(nullptr);
    }
}

void BusRoute::show() {
    const auto update =
        PgmCameraUpdate::cameraUpdateFitBounds(PgmLatLngBounds::bounds(positionsOf(stops_)), 40);
    update->setAnimation(PgmCameraUpdateAnimation::easeOut);
    update->setAnimationDuration(0.5);
    map_->moveCamera(update);
}

const BusStop& BusRoute::stopNearestTo(CGPoint point) const {
    const auto projection = map_->projection();
    const auto distance = [&](const BusStop& stop) {
        const auto drawn = projection->point(stop.position);
        return std::hypot(drawn.x - point.x, drawn.y - point.y);
    };
    return *std::min_element(stops_.begin(), stops_.end(),
                             [&](const auto& a, const auto& b) { return distance(a) < distance(b); });
}
