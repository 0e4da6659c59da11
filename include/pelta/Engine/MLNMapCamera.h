#pragma once

#include <pelta/Engine/MLNTypes.h>

namespace pelta {

/// Height in metres above the ground at which a camera shows a zoom level.
///
/// altitude = cos(latitude) × 2π × 6378137 / (512 × 2^zoom) × height / 2 / tan 15° × sin(90° − pitch), with
/// the height of the view in points (less than 1e-9 counts as 1), that is, half a view seen under 15 degrees.
/// The drawn perspective is another one (field of view 2·atan(1/3)), on purpose. Always finite: non-finite
/// arguments count as 0.
[[nodiscard]] double MLNAltitudeForZoomLevel(double zoomLevel, double pitch, double latitude,
                                             CGSize size) noexcept;

/// The exact inverse of `MLNAltitudeForZoomLevel` in the zoom level. An altitude that is not above 0, and a
/// pitch that leaves no height, count as the smallest height that gives a finite result.
[[nodiscard]] double MLNZoomLevelForAltitude(double altitude, double pitch, double latitude,
                                             CGSize size) noexcept;

/// Metres a point at a latitude and zoom level: cos φ × 2π × 6378137 / (512 × 2^zoom).
[[nodiscard]] double MLNMetersPerPoint(double latitude, double zoomLevel) noexcept;

/// A view point described by its height above the ground, which stands for a zoom level only together with
/// the size of a view, and only as exactly as numbers are rounded. `CameraState` says the same without a
/// height.
struct MLNMapCamera {
    CLLocationCoordinate2D centerCoordinate;  ///< Degrees.
    double altitude = 0;                      ///< Metres.
    double pitch = 0;                         ///< Degrees.
    double heading = 0;                       ///< Degrees clockwise from north.

    /// A camera on a coordinate. `distance` (metres) is kept unchanged as the camera's altitude, whatever the
    /// pitch.
    [[nodiscard]] static MLNMapCamera cameraLookingAtCenterCoordinate(CLLocationCoordinate2D center,
                                                                      double distance, double pitch,
                                                                      double heading) noexcept {
        return {center, distance, pitch, heading};
    }

    /// The camera of a view of that size, points, that shows a state.
    [[nodiscard]] static MLNMapCamera cameraShowing(const CameraState& state, CGSize size) noexcept {
        return {state.center, MLNAltitudeForZoomLevel(state.zoom, state.pitch, state.center.latitude, size),
                state.pitch, state.bearing};
    }

    friend bool operator==(const MLNMapCamera&, const MLNMapCamera&) = default;
};

}  // namespace pelta
