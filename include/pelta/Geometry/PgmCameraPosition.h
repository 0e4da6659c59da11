#pragma once

#include <memory>
#include <optional>

#include <pelta/Engine/MLNMapCamera.h>
#include <pelta/Geometry/PgmLatLngBounds.h>
#include <pelta/Platform/CoreGraphics.h>
#include <pelta/Platform/CoreLocation.h>

namespace pelta {

class PgmCameraUpdate;
class PgmMapView;

/// A view on the map: a centre with zoom, tilt and bearing. Immutable.
///
/// Values are kept as given. Where a position is used, the map brings zoom and tilt into its limits and the
/// bearing into 0…360; of what is not finite (the target counts as one) the camera keeps what it has.
class PgmCameraPosition {
 public:
    /// @param target   what is seen in the middle, degrees.
    /// @param zoom     zoom level; the world is 512 × 2^zoom points wide.
    /// @param tilt     degrees from looking straight down.
    /// @param bearing  direction that points up, degrees clockwise from north.
    [[nodiscard]] static std::shared_ptr<PgmCameraPosition> create(CLLocationCoordinate2D target, double zoom,
                                                                   double tilt, double bearing);
    /// The same as `create`.
    [[nodiscard]] static std::shared_ptr<PgmCameraPosition> cameraPosition(CLLocationCoordinate2D target,
                                                                           double zoom, double tilt,
                                                                           double bearing);
    /// A position that looks straight down with north up.
    [[nodiscard]] static std::shared_ptr<PgmCameraPosition> cameraPosition(CLLocationCoordinate2D target,
                                                                           double zoom);

    PgmCameraPosition() = delete;
    /// For `create`.
    PgmCameraPosition(CLLocationCoordinate2D target, double zoom, double tilt, double bearing) noexcept
        : target_(target), zoom_(zoom), tilt_(tilt), bearing_(bearing) {}

    /// What is seen in the middle, degrees.
    [[nodiscard]] CLLocationCoordinate2D target() const noexcept { return target_; }
    /// Zoom level; the world is 512 × 2^zoom points wide.
    [[nodiscard]] double zoom() const noexcept { return zoom_; }
    /// Degrees from looking straight down.
    [[nodiscard]] double tilt() const noexcept { return tilt_; }
    /// Direction that points up, degrees clockwise from north.
    [[nodiscard]] double bearing() const noexcept { return bearing_; }
    /// The rectangle that the camera fits in place of the four values above; null for ordinary positions.
    /// Only a camera update that fits bounds makes such a position.
    [[nodiscard]] const std::shared_ptr<PgmLatLngBounds>& bounds() const noexcept { return bounds_; }
    /// Points to keep free around `bounds`; absent counts as zero.
    [[nodiscard]] const std::optional<UIEdgeInsets>& paddingInsets() const noexcept { return paddingInsets_; }

    /// The engine's camera for this position, by its altitude. The map view itself moves by zoom levels,
    /// which an altitude would round.
    ///
    /// @param size     extent of the map view, points.
    /// @param mapView  the view to fit `bounds` in; without an engine view the answer is a default camera.
    [[nodiscard]] MLNMapCamera getMLNMapCamera(CGSize size, const PgmMapView& mapView) const;

 private:
    friend class PgmCameraUpdate;

    CLLocationCoordinate2D target_;
    std::shared_ptr<PgmLatLngBounds> bounds_;
    std::optional<UIEdgeInsets> paddingInsets_;
    double zoom_;
    double tilt_;
    double bearing_;
};

}  // namespace pelta
