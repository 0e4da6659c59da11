#pragma once

#include <cstdint>

#include <pelta/Platform/CoreGraphics.h>
#include <pelta/Platform/CoreLocation.h>

/// @file
/// Small types of the map engine.

namespace pelta {

/// Coordinate rectangle, degrees. Corners are kept as given; a rectangle across the antimeridian has an east
/// beyond 180 or a west below -180.
struct MLNCoordinateBounds {
    CLLocationCoordinate2D sw;  ///< South-western corner.
    CLLocationCoordinate2D ne;  ///< North-eastern corner.
    friend bool operator==(const MLNCoordinateBounds&, const MLNCoordinateBounds&) = default;
};

/// Why the camera changes: a set of bits.
enum class MLNCameraChangeReason : std::uint64_t {
    none = 0,
    programmatic = 1,
    resetNorth = 2,
    gesturePan = 4,
    gesturePinch = 8,
    gestureRotate = 16,
    gestureZoomIn = 32,
    gestureZoomOut = 64,
    gestureOneFingerZoom = 128,
    gestureTilt = 256,
};

/// Both sets together.
[[nodiscard]] constexpr MLNCameraChangeReason operator|(MLNCameraChangeReason a,
                                                        MLNCameraChangeReason b) noexcept {
    return static_cast<MLNCameraChangeReason>(static_cast<std::uint64_t>(a) | static_cast<std::uint64_t>(b));
}

/// How the camera follows the user's location.
enum class MLNUserTrackingMode : unsigned {
    none = 0,
    follow = 1,
    followWithHeading = 2,
    followWithCourse = 3
};

/// Which gestures move the camera, and how far a fling carries.
struct GestureSettings {
    bool isZoomEnabled = true;    ///< Two fingers, double taps, taps of two fingers zoom.
    bool isScrollEnabled = true;  ///< A finger moves the map.
    bool isRotateEnabled = true;  ///< Two fingers turn the map.
    bool isPitchEnabled = true;   ///< Two fingers side by side tilt the map.
    /// Share of its speed that a fling keeps each millisecond: above 0 and below 1, 0.998 normal, 0.99 fast.
    /// 0 switches flinging off.
    CGFloat decelerationRate = 0.998;
    friend bool operator==(const GestureSettings&, const GestureSettings&) = default;
};

/// What the camera is at: the centre of the area that the content inset leaves, and the view on it.
struct CameraState {
    CLLocationCoordinate2D center;  ///< Degrees.
    double zoom = 0;                ///< World size is 512 × 2^zoom points.
    double pitch = 0;               ///< Degrees from looking straight down.
    double bearing = 0;             ///< Degrees clockwise from north, 0 ≤ bearing < 360.
    friend bool operator==(const CameraState&, const CameraState&) = default;
};

}  // namespace pelta
