#pragma once

#include <pelta/Platform/CoreGraphics.h>
#include <pelta/Platform/CoreLocation.h>

namespace pelta {

/// Maps coordinates into a square Web Mercator world.
///
/// x grows eastwards from the antimeridian, y southwards from 85.05112878° N. Latitudes beyond the square
/// are clamped to it; a NaN latitude counts as the northern edge. Longitudes are not wrapped.
struct MapProjection {
    /// @param coordinate  WGS84, degrees.
    /// @param worldSize   side of the world in any unit; 512 × 2^zoom gives points at that zoom.
    /// @return position in that unit, (0, 0) at the north-west corner.
    [[nodiscard]] static CGPoint project(CLLocationCoordinate2D coordinate, double worldSize) noexcept;
};

}  // namespace pelta
