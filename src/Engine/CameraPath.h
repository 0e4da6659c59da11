#pragma once

#include <functional>

#include <pelta/Engine/MLNTypes.h>

/// @file
/// The ways from one camera to another. Both go the shorter way around the world and turn the shorter way.

namespace pelta {

/// The camera at a progress from 0 (the start) to 1 (the end).
using CameraPath = std::function<CameraState(double progress)>;

/// Changes zoom, pitch and bearing evenly, the centre so that on the screen everything moves towards or away
/// from one fixed point.
[[nodiscard]] CameraPath makeEasePath(const CameraState& start, const CameraState& end);

/// An arc that zooms out, travels and zooms in.
struct CameraFlight {
    CameraPath path;
    double duration = 0;  ///< Seconds that suit the distance.
};

/// Van Wijk and Nuij, "Smooth and efficient zooming and panning" (2003): of all ways the one on which the
/// picture flows most evenly over the screen.
[[nodiscard]] CameraFlight makeFlight(const CameraState& start, const CameraState& end, CGSize viewSize);

}  // namespace pelta
