#pragma once

#include <pelta/Cluster/PQTPointQuadTree.h>
#include <pelta/Platform/CoreLocation.h>

namespace pelta::detail {

/// Position in the square Mercator world of side 1: x grows eastwards from the antimeridian, y southwards
/// from 85.05112878° N. Rounding may carry a position at the southern edge a little beyond 1.
[[nodiscard]] PQTPoint clusterPoint(CLLocationCoordinate2D coordinate) noexcept;

}  // namespace pelta::detail
