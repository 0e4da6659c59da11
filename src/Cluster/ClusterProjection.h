#pragma once

#include <cmath>

#include <pelta/Cluster/PQTPointQuadTree.h>
#include <pelta/Platform/CoreLocation.h>

namespace pelta::detail {

/// Position in the square Mercator world of side 1: x grows eastwards from the antimeridian, y southwards
/// from 85.05112878° N. Rounding may carry a position at the southern edge a little beyond 1. A coordinate
/// that is not finite is nowhere: both x and y are NaN.
[[nodiscard]] PQTPoint clusterPoint(CLLocationCoordinate2D coordinate) noexcept;

/// Whether a point made by `clusterPoint` is anywhere.
[[nodiscard]] inline bool isSomewhere(PQTPoint point) noexcept {
    return !std::isnan(point.x);
}

}  // namespace pelta::detail
