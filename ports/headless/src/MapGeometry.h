#pragma once

#include <array>
#include <span>

#include <pelta/Platform/CoreGraphics.h>

namespace pelta {

/// Four corners in order around an area; a side or the whole may be without extent.
using MapQuad = std::array<CGPoint, 4>;

/// Smallest axis-parallel box around points.
struct MapBox {
    double minX = 0;
    double minY = 0;
    double maxX = 0;
    double maxY = 0;

    /// @param points  at least one.
    [[nodiscard]] static MapBox around(std::span<const CGPoint> points) noexcept;
    /// True when a distance of at most `margin` in x and in y separates the two.
    [[nodiscard]] bool isNear(const MapBox& other, double margin) const noexcept;
    [[nodiscard]] MapBox shiftedBy(double dx) const noexcept { return {minX + dx, minY, maxX + dx, maxY}; }
};

/// True when some point of the line (one point makes a dot) is within `distance` of the quad.
[[nodiscard]] bool isLineNearQuad(std::span<const CGPoint> line, const MapQuad& quad,
                                  double distance) noexcept;

/// Corners of a line or a ring.
using MapLine = std::span<const CGPoint>;

/// True when the area of rings and the quad share a point. Rings close themselves; the even-odd rule tells
/// inside from outside.
[[nodiscard]] bool doesAreaTouchQuad(std::span<const MapLine> rings, const MapQuad& quad) noexcept;

}  // namespace pelta
