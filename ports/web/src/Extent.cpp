#include "Extent.h"

#include <algorithm>
#include <cmath>
#include <span>

#include <pelta/Engine/MLNTypes.h>

namespace pelta {

namespace {

/// As the engine lays out the square: latitudes beyond its edges are not clamped.
double mercatorY(double latitude) {
    constexpr double pi = 3.14159265358979323846;
    constexpr double furthest = 89.999999;
    const double angle = std::clamp(latitude, -furthest, furthest) * pi / 180;
    return 0.5 - std::asinh(std::tan(angle)) / (2 * pi);
}

double mercatorX(double longitude) {
    return longitude / 360 + 0.5;
}

std::span<const CLLocationCoordinate2D> coordinatesOf(const MLNShape& shape) {
    if (shape.kind() == MLNShapeKind::polyline) {
        return static_cast<const MLNPolylineFeature&>(shape).coordinates();
    }
    if (shape.kind() == MLNShapeKind::polygon) {
        return static_cast<const MLNPolygonFeature&>(shape).coordinates();
    }
    return {};
}

}  // namespace

Extent Extent::grownBy(double margin) const noexcept {
    const double turns = std::floor(minX - margin);
    return {minX - margin - turns, std::clamp(minY - margin, 0.0, 1.0), maxX + margin - turns,
            std::clamp(maxY + margin, 0.0, 1.0)};
}

Extent extentOf(const MLNShape& shape) {
    CLLocationCoordinate2D least;
    CLLocationCoordinate2D greatest;
    if (shape.kind() == MLNShapeKind::point) {
        least = greatest = static_cast<const MLNPointFeature&>(shape).coordinate();
    } else if (const auto coordinates = coordinatesOf(shape); !coordinates.empty()) {
        least = greatest = coordinates.front();
        for (const CLLocationCoordinate2D coordinate : coordinates) {
            least.latitude = std::min(least.latitude, coordinate.latitude);
            least.longitude = std::min(least.longitude, coordinate.longitude);
            greatest.latitude = std::max(greatest.latitude, coordinate.latitude);
            greatest.longitude = std::max(greatest.longitude, coordinate.longitude);
        }
    }
    return {mercatorX(least.longitude), mercatorY(greatest.latitude), mercatorX(greatest.longitude),
            mercatorY(least.latitude)};
}

}  // namespace pelta
