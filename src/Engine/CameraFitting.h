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

/// The camera that shows a coordinate rectangle as large as the frame and the limits allow, turned and
/// pitched as `present`. The size is found as if the map were seen from straight above. Corners may come in
/// any order; with non-finite ones the answer is `present`.
[[nodiscard]] CameraState cameraFitting(const MLNCoordinateBounds& bounds, const FittingFrame& frame,
                                        const CameraState& present, const CameraLimits& limits);

}  // namespace pelta
