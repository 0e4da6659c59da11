#pragma once

#include <pelta/Engine/MLNTypes.h>

#include "Engine/CameraLimits.h"

namespace pelta {

/// The area into which something is to be fitted.
struct FittingFrame {
    CGSize viewSize;       ///< Points.
    UIEdgeInsets inset;    ///< The view's content inset, whose middle shows the camera's centre.
    UIEdgeInsets padding;  ///< Further distances to keep.
};

/// The camera that shows all four corners of a coordinate rectangle inside the frame, turned and pitched as
/// `present`, at the largest zoom at which any centre does, as far as the limits allow. Of the centres that
/// do, the one that leaves the corners nearest to the middle of the frame. Where the frame has no room the
/// zoom is the smallest. Corners may come in any order; with non-finite ones the answer is `present`.
[[nodiscard]] CameraState cameraFitting(const MLNCoordinateBounds& bounds, const FittingFrame& frame,
                                        const CameraState& present, const CameraLimits& limits);

}  // namespace pelta
