#pragma once

#include <algorithm>
#include <array>

/// @file
/// Plain geometry of the interface kit. Lengths are points (1/96 inch nominally, `screenScale` pixels each),
/// angles are radians, x grows to the right and y downwards.

namespace pelta {

/// Length in points.
using CGFloat = double;

/// Position in points.
struct CGPoint {
    CGFloat x = 0;  ///< Rightwards.
    CGFloat y = 0;  ///< Downwards.
    friend bool operator==(const CGPoint&, const CGPoint&) = default;
};

/// Displacement in points.
struct CGVector {
    CGFloat dx = 0;  ///< Rightwards.
    CGFloat dy = 0;  ///< Downwards.
    friend bool operator==(const CGVector&, const CGVector&) = default;
};

/// Extent in points. Negative values are kept as given; nothing is drawn for them.
struct CGSize {
    CGFloat width = 0;   ///< Rightwards.
    CGFloat height = 0;  ///< Downwards.
    friend bool operator==(const CGSize&, const CGSize&) = default;
};

/// Axis-parallel rectangle in points.
struct CGRect {
    CGPoint origin;  ///< Top left corner.
    CGSize size;     ///< Extent from there.

    /// Left edge.
    [[nodiscard]] CGFloat minX() const noexcept { return origin.x; }
    /// Top edge.
    [[nodiscard]] CGFloat minY() const noexcept { return origin.y; }
    /// Right edge.
    [[nodiscard]] CGFloat maxX() const noexcept { return origin.x + size.width; }
    /// Bottom edge.
    [[nodiscard]] CGFloat maxY() const noexcept { return origin.y + size.height; }
    /// Middle between left and right.
    [[nodiscard]] CGFloat midX() const noexcept { return origin.x + size.width * 0.5; }
    /// Middle between top and bottom.
    [[nodiscard]] CGFloat midY() const noexcept { return origin.y + size.height * 0.5; }

    /// True when the point lies inside or on the left or top edge.
    [[nodiscard]] bool contains(CGPoint point) const noexcept {
        return point.x >= minX() && point.x < maxX() && point.y >= minY() && point.y < maxY();
    }

    /// The rectangle moved inwards by `dx` on the left and right and by `dy` at the top and bottom.
    [[nodiscard]] CGRect insetBy(CGFloat dx, CGFloat dy) const noexcept {
        return {{origin.x + dx, origin.y + dy}, {size.width - 2 * dx, size.height - 2 * dy}};
    }

    friend bool operator==(const CGRect&, const CGRect&) = default;
};

/// Distances from the four edges of a rectangle, in points; positive values move inwards.
struct UIEdgeInsets {
    CGFloat top = 0;     ///< From the top edge down.
    CGFloat left = 0;    ///< From the left edge rightwards.
    CGFloat bottom = 0;  ///< From the bottom edge up.
    CGFloat right = 0;   ///< From the right edge leftwards.
    friend bool operator==(const UIEdgeInsets&, const UIEdgeInsets&) = default;
};

/// Affine map of the plane: (x, y) becomes (a·x + c·y + tx, b·x + d·y + ty).
struct CGAffineTransform {
    CGFloat a = 1;   ///< x' for each x.
    CGFloat b = 0;   ///< y' for each x.
    CGFloat c = 0;   ///< x' for each y.
    CGFloat d = 1;   ///< y' for each y.
    CGFloat tx = 0;  ///< Shift rightwards.
    CGFloat ty = 0;  ///< Shift downwards.

    /// Rotation about the origin by `angle` radians, clockwise on the screen.
    [[nodiscard]] static CGAffineTransform rotation(CGFloat angle) noexcept;

    friend bool operator==(const CGAffineTransform&, const CGAffineTransform&) = default;
};

/// Map of space as a row-major 4 × 4 matrix applied to row vectors, identity by default.
struct CATransform3D {
    /// The sixteen numbers, row by row; the unit matrix at first.
    std::array<CGFloat, 16> m{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};

    /// This transform preceded by a rotation of `angle` radians about the axis (x, y, z). A zero axis changes
    /// nothing.
    [[nodiscard]] CATransform3D rotatedBy(CGFloat angle, CGFloat x, CGFloat y, CGFloat z) const noexcept;

    friend bool operator==(const CATransform3D&, const CATransform3D&) = default;
};

}  // namespace pelta
