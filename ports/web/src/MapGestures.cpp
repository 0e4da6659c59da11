#include "MapGestures.h"

#include <algorithm>
#include <cmath>
#include <string>

using emscripten::val;

namespace pelta {

namespace {

/// False for what differs by rounding alone.
bool isDifferent(double a, double b) {
    return std::abs(a - b) > 1e-9;
}

void enable(const val& handler, bool enabled) {
    handler.call<void>(enabled ? "enable" : "disable");
}

/// How far a drag carries on. GL JS slows a fling down evenly; a rate `r` a millisecond stops one of speed v
/// within v × τ, τ = −1 / (1000 ln r) seconds. The even slowing that carries as far is exact at a usual
/// speed.
val flingOptions(double decelerationRate) {
    constexpr double usualSpeed = 1000;  // Points a second.
    const bool flings = decelerationRate > 0 && decelerationRate < 1;
    const double carry = flings ? -1 / (1000 * std::log(decelerationRate)) : 1;
    val options = val::object();
    options.set("linearity", 1);
    options.set("maxSpeed", flings ? 2500 : 0);
    options.set("deceleration", std::max(1.0, usualSpeed / (2 * carry)));
    return options;
}

}  // namespace

void applyGestures(const val& map, const GestureSettings& settings) {
    if (settings.isScrollEnabled) {
        map["dragPan"].call<void>("enable", flingOptions(settings.decelerationRate));
    } else {
        enable(map["dragPan"], false);
    }
    for (const char* zoomHandler : {"scrollZoom", "boxZoom"}) {
        enable(map[zoomHandler], settings.isZoomEnabled);
    }
    enable(map["doubleClickZoom"], false);  // Taps that zoom are the map view's.
    enable(map["touchPitch"], settings.isPitchEnabled);
    // Two handlers serve two settings each; their halves are switched one by one.
    const val drag = map["dragRotate"];
    enable(drag, true);
    enable(drag["_mouseRotate"], settings.isRotateEnabled);
    enable(drag["_mousePitch"], settings.isPitchEnabled);
    const val fingers = map["touchZoomRotate"];
    enable(fingers, settings.isZoomEnabled || settings.isRotateEnabled);
    fingers.call<void>(settings.isRotateEnabled ? "enableRotation" : "disableRotation");
    enable(fingers["_touchZoom"], settings.isZoomEnabled);
    enable(fingers["_tapDragZoom"], settings.isZoomEnabled);
    const val keyboard = map["keyboard"];
    enable(keyboard, settings.isScrollEnabled && settings.isZoomEnabled);
    keyboard.call<void>(settings.isRotateEnabled && settings.isPitchEnabled ? "enableRotation"
                                                                            : "disableRotation");
}

GestureCause causeOfEvent(const val& originalEvent) {
    if (originalEvent.isUndefined() || originalEvent.isNull()) {
        return GestureCause::continuous;
    }
    const auto type = originalEvent["type"].as<std::string>();
    if (type == "keydown" || type == "mouseup") {
        return GestureCause::step;
    }
    if (type == "touchmove" && originalEvent["touches"]["length"].as<int>() == 1) {
        return GestureCause::oneFinger;
    }
    return GestureCause::continuous;
}

MLNCameraChangeReason reasonForMovement(const CameraState& from, const CameraState& to, GestureCause cause) {
    using Reason = MLNCameraChangeReason;
    Reason reason = Reason::none;
    if (isDifferent(to.zoom, from.zoom)) {
        const Reason step = to.zoom > from.zoom ? Reason::gestureZoomIn : Reason::gestureZoomOut;
        reason = reason | (cause == GestureCause::step        ? step
                           : cause == GestureCause::oneFinger ? Reason::gestureOneFingerZoom
                                                              : Reason::gesturePinch);
    }
    if (isDifferent(to.bearing, from.bearing)) {
        reason = reason | Reason::gestureRotate;
    }
    if (isDifferent(to.pitch, from.pitch)) {
        reason = reason | Reason::gestureTilt;
    }
    const bool isElsewhere = isDifferent(to.center.latitude, from.center.latitude) ||
                             isDifferent(to.center.longitude, from.center.longitude);
    if (reason == Reason::none && isElsewhere) {
        reason = Reason::gesturePan;
    }
    return reason;
}

}  // namespace pelta
