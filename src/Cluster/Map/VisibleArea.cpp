#include "Cluster/Map/VisibleArea.h"

#include <algorithm>
#include <cmath>

namespace pelta::detail {

namespace {

constexpr double wholeTurn = 360;
constexpr double halfTurn = 180;

double standardLongitude(double longitude) noexcept {
    if (longitude >= -halfTurn && longitude < halfTurn) {
        return longitude;
    }
    const double rest = std::remainder(longitude, wholeTurn);
    return rest < halfTurn ? rest : -halfTurn;
}

}  // namespace

VisibleArea::VisibleArea(const PgmLatLngBounds& bounds) noexcept {
    const auto [south, west] = bounds.southWest();
    const auto [north, east] = bounds.northEast();
    if (east - west >= wholeTurn) {
        parts_[0] = {south, -halfTurn, north, halfTurn};
        return;
    }
    const double first = standardLongitude(west);
    const double last = east + (first - west);
    parts_[0] = {south, first, north, last};
    if (last >= halfTurn) {
        parts_[1] = {south, -halfTurn, north, last - wholeTurn};
        count_ = 2;
    }
}

CLLocationCoordinate2D VisibleArea::standard(CLLocationCoordinate2D position) noexcept {
    return {position.latitude, standardLongitude(position.longitude)};
}

bool VisibleArea::contains(CLLocationCoordinate2D position) const noexcept {
    const auto place = standard(position);
    return std::any_of(parts().begin(), parts().end(),
                       [place](const Part& part) { return part.contains(place); });
}

}  // namespace pelta::detail
