#pragma once

#include <pelta/Cluster/PQTPointQuadTree.h>

/// @file
/// The arithmetic of searches around a seed, the same to the last bit wherever it is done.

namespace pelta::detail {

[[nodiscard]] inline PQTBounds searchSquare(PQTPoint middle, double halfWidth) noexcept {
    return {middle.x - halfWidth, middle.y - halfWidth, middle.x + halfWidth, middle.y + halfWidth};
}

/// Borders included; false for NaN.
[[nodiscard]] inline bool contains(const PQTBounds& area, PQTPoint point) noexcept {
    return (area.minX <= point.x) & (point.x <= area.maxX) & (area.minY <= point.y) & (point.y <= area.maxY);
}

[[nodiscard]] inline double squaredDistance(PQTPoint a, PQTPoint b) noexcept {
    const double x = a.x - b.x;
    const double y = a.y - b.y;
    return x * x + y * y;
}

}  // namespace pelta::detail
