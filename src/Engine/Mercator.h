#pragma once

#include <pelta/Engine/MLNTypes.h>

/// @file
/// Arithmetic of the Web Mercator square that the engine's own calculations share.

namespace pelta::mercator {

/// Edge of the square, degrees.
inline constexpr double maximumLatitude = 85.05112878;

/// Place in the square: x from 0 at the antimeridian eastwards to 1, y from 0 at the northern edge southwards
/// to 1. An x outside of 0…1 is the same place in a neighbouring copy of the world.
struct Position {
    double x = 0;
    double y = 0;
};

/// Latitudes are clamped to the square, longitudes are not wrapped.
[[nodiscard]] Position fromCoordinate(CLLocationCoordinate2D coordinate) noexcept;
/// The inverse; longitudes are not wrapped.
[[nodiscard]] CLLocationCoordinate2D toCoordinate(Position position) noexcept;

/// Side of the square at a zoom level, points.
[[nodiscard]] double worldSize(double zoom) noexcept;

/// The same longitude within -180 ≤ longitude < 180.
[[nodiscard]] double wrapLongitude(double longitude) noexcept;
/// The same longitude on the turn around the world on which it is within 180 degrees of another.
[[nodiscard]] double nearestLongitude(double longitude, double other) noexcept;
/// The same direction within 0 ≤ bearing < 360.
[[nodiscard]] double normalizeBearing(double bearing) noexcept;

}  // namespace pelta::mercator
