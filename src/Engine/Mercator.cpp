#include "Engine/Mercator.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace pelta::mercator {
namespace {

constexpr double degreesPerRadian = 180 / std::numbers::pi;

}  // namespace

Position fromCoordinate(CLLocationCoordinate2D coordinate) noexcept {
    const double latitude = std::clamp(coordinate.latitude, -maximumLatitude, maximumLatitude);
    const double stretched = std::asinh(std::tan(latitude / degreesPerRadian));
    return {(coordinate.longitude + 180) / 360, 0.5 - stretched / (2 * std::numbers::pi)};
}

CLLocationCoordinate2D toCoordinate(Position position) noexcept {
    const double stretched = (0.5 - position.y) * 2 * std::numbers::pi;
    return {std::atan(std::sinh(stretched)) * degreesPerRadian, position.x * 360 - 180};
}

double worldSize(double zoom) noexcept {
    return 512 * std::exp2(zoom);
}

double wrapLongitude(double longitude) noexcept {
    const double turned = std::remainder(longitude, 360.0);
    return turned < 180 ? turned : -180;
}

double nearestLongitude(double longitude, double other) noexcept {
    const double distance = longitude - other;
    return std::abs(distance) <= 180 ? longitude : other + std::remainder(distance, 360.0);
}

double normalizeBearing(double bearing) noexcept {
    if (bearing >= 0 && bearing < 360) {
        return bearing;
    }
    const double turned = std::remainder(bearing, 360.0);
    const double positive = turned < 0 ? turned + 360 : turned;
    return positive < 360 ? positive : 0;
}

}  // namespace pelta::mercator
