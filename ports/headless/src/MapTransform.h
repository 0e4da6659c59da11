#pragma once

#include <pelta/Engine/MLNTypes.h>

namespace pelta {

/// The perspective of one camera: where the ground is on the screen, and the reverse.
///
/// Positions on the ground are fractions of the Mercator square: (0, 0) at its north-west corner, x growing
/// eastwards and not wrapped, y southwards. The eye looks at the camera's centre from 1.5 view heights away
/// (field of view 2·atan(1/3)); a content inset moves the picture without turning the eye. Pure arithmetic on
/// values, without any port behind it.
class MapTransform {
 public:
    MapTransform() noexcept : MapTransform(CameraState{}, CGSize{}, UIEdgeInsets{}) {}
    /// @param camera  finite, pitch 0 to 85, latitude within the Mercator square.
    /// @param size    of the view in points; sides below 1 count as 1.
    /// @param inset   the middle of the area that it leaves shows the camera's centre; the middle stays
    ///                within the view.
    MapTransform(const CameraState& camera, CGSize size, UIEdgeInsets inset) noexcept;

    /// As `MapRenderer::pointForCoordinate`.
    [[nodiscard]] CGPoint pointForCoordinate(CLLocationCoordinate2D coordinate) const noexcept;
    /// As `MapRenderer::coordinateForPoint`.
    [[nodiscard]] CLLocationCoordinate2D coordinateForPoint(CGPoint point) const noexcept;

    /// Where a ground position is drawn. One behind the eye gives a finite point far outside of the view.
    [[nodiscard]] CGPoint pointForGround(CGPoint ground) const noexcept;
    /// What is drawn at a point; a point above the horizon counts as the horizon's nearest point.
    [[nodiscard]] CGPoint groundForPoint(CGPoint point) const noexcept;
    /// The ground position `right` and `down` points from another, measured on the ground along the screen's
    /// axes.
    [[nodiscard]] CGPoint groundShifted(CGPoint ground, CGVector byPoints) const noexcept;

    /// Distance of a ground position from the eye, measured along the view direction, as a multiple of that
    /// of the camera's centre. Not above 0 behind the eye.
    [[nodiscard]] double relativeDistance(CGPoint ground) const noexcept;
    /// The screen's y above which no ground is seen; minus infinity when the camera looks straight down.
    [[nodiscard]] double horizon() const noexcept { return horizon_; }
    /// Degrees clockwise from north to the screen's upward direction.
    [[nodiscard]] double bearing() const noexcept { return bearing_; }
    /// Side of the Mercator square in points.
    [[nodiscard]] double worldSize() const noexcept { return worldSize_; }

    /// The ground position of a coordinate. Latitudes end at the poles, which lie a finite way outside of the
    /// square.
    [[nodiscard]] static CGPoint groundForCoordinate(CLLocationCoordinate2D coordinate) noexcept;
    /// The reverse of `groundForCoordinate`.
    [[nodiscard]] static CLLocationCoordinate2D coordinateForGround(CGPoint ground) noexcept;

 private:
    /// A ground position relative to the centre in points, turned so that y points down the screen.
    [[nodiscard]] CGVector turned(CGPoint ground) const noexcept;

    CLLocationCoordinate2D centerCoordinate_;
    CGPoint centerGround_;
    CGPoint centerPoint_;
    double bearing_;
    double worldSize_;
    double eyeDistance_;
    double sinPitch_;
    double cosPitch_;
    double sinBearing_;
    double cosBearing_;
    double horizon_;
};

}  // namespace pelta
