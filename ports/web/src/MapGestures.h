#pragma once

#include <emscripten/val.h>

#include <pelta/Engine/MLNTypes.h>

namespace pelta {

/// Switches the gestures of a GL JS map on and off.
void applyGestures(const emscripten::val& map, const GestureSettings& settings);

/// What caused a movement of the map that GL JS makes by itself.
enum class GestureCause : unsigned {
    continuous,  ///< Fingers, a drag or the wheel.
    oneFinger,   ///< A finger that drags after a tap, which zooms.
    step,        ///< A key, or the end of a drawn box: an animated step.
};

/// Reads the cause from the event that GL JS names for a movement; undefined counts as continuous.
[[nodiscard]] GestureCause causeOfEvent(const emscripten::val& originalEvent);

/// The reasons by which a gesture has moved the camera from one state to another; `none` when they are equal.
[[nodiscard]] MLNCameraChangeReason reasonForMovement(const CameraState& from, const CameraState& to,
                                                      GestureCause cause);

}  // namespace pelta
