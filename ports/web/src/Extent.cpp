#include "Extent.h"

#include <algorithm>
#include <cmath>
#include <limits>
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

/// A rectangle of coordinates, empty at first.
struct Range {
    static constexpr double infinity = std::numeric_limits<double>::infinity();
    CLLocationCoordinate2D least{infinity, infinity};
    CLLocationCoordinate2D greatest{-infinity, -infinity};

    void include(std::span<const CLLocationCoordinate2D> coordinates) {
        for (const CLLocationCoordinate2D coordinate : coordinates) {
            least.latitude = std::min(least.latitude, coordinate.latitude);
            least.longitude = std::min(least.longitude, coordinate.longitude);
            greatest.latitude = std::max(greatest.latitude, coordinate.latitude);
            greatest.longitude = std::max(greatest.longitude, coordinate.longitude);
        }
    }
};

Range rangeOf(const MLNShape& shape) {
    Range range;
    if (shape.kind() == MLNShapeKind::point) {
        const CLLocationCoordinate2D place = static_cast<const MLNPointFeature&>(shape).coordinate();
        range.include({&place, 1});
    } else if (shape.kind() == MLNShapeKind::polyline) {
        range.include(static_cast<const MLNPolylineFeature&>(shape).coordinates());
    } else if (shape.kind() == MLNShapeKind::polygon) {
        const auto& area = static_cast<const MLNPolygonFeature&>(shape);
        range.include(area.coordinates());
        for (const auto& hole : area.holes()) {
            range.include(hole);
        }
    }
    return range;
}

}  // namespace

Extent Extent::grownBy(double margin) const noexcept {
    const double turns = std::floor(minX - margin);
    return {minX - margin - turns, std::clamp(minY - margin, 0.0, 1.0), maxX + margin - turns,
            std::clamp(maxY + margin, 0.0, 1.0)};
}

Extent extentOf(const MLNShape& shape) {
    const auto [least, greatest] = rangeOf(shape);
    return {mercatorX(least.longitude), mercatorY(greatest.latitude), mercatorX(greatest.longitude),
            mercatorY(least.latitude)};
}

}  // namespace pelta
