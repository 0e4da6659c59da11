#pragma once

#include <pelta/Engine/MLNShape.h>

namespace pelta {

/// A rectangle of the Web Mercator square: x from 0 at the antimeridian eastwards to 1, y from 0 at the
/// northern edge southwards to 1. An x beyond that is in the neighbouring copy of the world.
struct Extent {
    double minX = 0;
    double minY = 0;
    double maxX = 0;
    double maxY = 0;

    friend bool operator==(const Extent&, const Extent&) = default;
    /// With a margin on all sides, turned around the world until it begins in 0 ≤ x < 1. What lies beyond the
    /// northern and southern edges counts as lying at them.
    [[nodiscard]] Extent grownBy(double margin) const noexcept;
    /// Whether two rectangles of one copy of the world have a point in common.
    [[nodiscard]] bool meets(const Extent& other) const noexcept {
        return minX <= other.maxX && other.minX <= maxX && minY <= other.maxY && other.minY <= maxY;
    }
};

/// What a shape that is drawable spans.
[[nodiscard]] Extent extentOf(const MLNShape& shape);

}  // namespace pelta
