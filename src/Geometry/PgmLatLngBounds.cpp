#include <algorithm>

#include <pelta/Geometry/PgmLatLngBounds.h>
#include <pelta/Platform/Log.h>

namespace pelta {

std::shared_ptr<PgmLatLngBounds> PgmLatLngBounds::create(CLLocationCoordinate2D southWest,
                                                         CLLocationCoordinate2D northEast) {
    return std::make_shared<PgmLatLngBounds>(southWest, northEast);
}

std::shared_ptr<PgmLatLngBounds> PgmLatLngBounds::bounds(CLLocationCoordinate2D southWest,
                                                         CLLocationCoordinate2D northEast) {
    return create(southWest, northEast);
}

std::shared_ptr<PgmLatLngBounds> PgmLatLngBounds::bounds(std::span<const CLLocationCoordinate2D> coords) {
    if (coords.size() < 2) {
        fatalError("coords count must be 2 or more", "PgmLatLngBounds", 39);
    }
    CLLocationCoordinate2D southWest{90, 180};
    CLLocationCoordinate2D northEast{-90, -180};
    // With the accumulated value first, std::min and std::max keep it where the new one is NaN.
    for (const auto& coord : coords) {
        southWest.latitude = std::min(southWest.latitude, coord.latitude);
        southWest.longitude = std::min(southWest.longitude, coord.longitude);
        northEast.latitude = std::max(northEast.latitude, coord.latitude);
        northEast.longitude = std::max(northEast.longitude, coord.longitude);
    }
    return create(southWest, northEast);
}

bool PgmLatLngBounds::contains(CLLocationCoordinate2D coordinate) const noexcept {
    return northEast_.latitude >= coordinate.latitude && southWest_.latitude <= coordinate.latitude &&
           northEast_.longitude >= coordinate.longitude && southWest_.longitude <= coordinate.longitude;
}

bool PgmLatLngBounds::contains(const PgmLatLngBounds& bounds) const noexcept {
    return contains(bounds.northEast_) && contains(bounds.southWest_);
}

}  // namespace pelta
