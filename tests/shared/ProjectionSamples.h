#pragma once

#include <cstdint>
#include <vector>

#include <pelta/Engine/MLNTypes.h>

namespace pelta::shared {

/// One camera, one coordinate inside its view, and where the coordinate is drawn.
struct ProjectionSample {
    CGSize size;
    UIEdgeInsets inset;
    CameraState camera;
    CLLocationCoordinate2D coordinate;
    CGPoint point;
};

/// Samples over the whole range of cameras: zoom 2 to 21, pitch 0 to 60, any bearing, with and without
/// content insets. The same ones for the same seed, on every platform.
[[nodiscard]] std::vector<ProjectionSample> projectionSamples(std::size_t count, std::uint32_t seed);

}  // namespace pelta::shared
