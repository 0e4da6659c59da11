#pragma once

#include <memory>
#include <optional>

#include <pelta/Geometry/PgmCameraPosition.h>

namespace pelta {

/// How a camera update is carried out.
enum class PgmCameraUpdateAnimation : unsigned {
    none = 0,     ///< At once.
    linear = 1,   ///< At constant speed.
    easeIn = 2,   ///< Slow at first.
    easeOut = 3,  ///< Slow at the end.
    fly = 4,      ///< Along an arc that zooms out and in again.
};

/// The animation of that raw value; nothing for 5 and above.
[[nodiscard]] std::optional<PgmCameraUpdateAnimation> PgmCameraUpdateAnimationFromRaw(unsigned raw) noexcept;

/// Why the camera moves.
enum class PgmCameraUpdateReason : int {
    developer = 0,  ///< The program moved it.
    gesture = -1,   ///< The user moved it with a gesture.
    control = -2,   ///< The user turned it back to north with the compass.
    reserved = -3,  ///< Valid, but never reported.
};

/// The reason of that raw value; nothing but for -3 to 0.
[[nodiscard]] std::optional<PgmCameraUpdateReason> PgmCameraUpdateReasonFromRaw(int raw) noexcept;

/// What a camera update changes: target, zoom, tilt and bearing are each left alone, set, or shifted.
///
/// Setting a quantity forgets its shift and the other way round. Values are kept as given; see
/// `PgmCameraPosition`.
class PgmCameraUpdateParams {
 public:
    /// A record that changes nothing yet.
    [[nodiscard]] static std::shared_ptr<PgmCameraUpdateParams> create();
    /// The same as `create`.
    [[nodiscard]] static std::shared_ptr<PgmCameraUpdateParams> cameraUpdateParams();

    /// Moves the centre to a coordinate.
    void targetTo(CLLocationCoordinate2D target) noexcept;
    /// Moves the map's content by this many points: a positive x moves it to the right, a positive y down.
    void targetBy(CGPoint delta) noexcept;
    /// Moves to a zoom level.
    void zoomTo(double zoom) noexcept;
    /// Moves by so many zoom levels, closer when positive.
    void zoomBy(double delta) noexcept;
    /// `zoomBy(1)`.
    void zoomIn() noexcept { zoomBy(1.0); }
    /// `zoomBy(-1)`.
    void zoomOut() noexcept { zoomBy(-1.0); }
    /// Degrees.
    void tiltTo(double tilt) noexcept;
    /// Tilts further by so many degrees.
    void tiltBy(double delta) noexcept;
    /// Degrees clockwise.
    void bearingTo(double bearing) noexcept;
    /// Turns by so many degrees clockwise.
    void bearingBy(double delta) noexcept;

    /// Target to move to, degrees; absent when it is left alone or shifted.
    [[nodiscard]] const std::optional<CLLocationCoordinate2D>& target() const noexcept { return target_; }
    /// Shift of the target, points; absent when it is left alone or set.
    [[nodiscard]] const std::optional<CGPoint>& targetDelta() const noexcept { return targetDelta_; }
    /// Zoom level to move to; absent when it is left alone or shifted.
    [[nodiscard]] std::optional<double> zoom() const noexcept { return zoom_; }
    /// Shift of the zoom level; absent when it is left alone or set.
    [[nodiscard]] std::optional<double> zoomDelta() const noexcept { return zoomDelta_; }
    /// Tilt to move to, degrees; absent when it is left alone or shifted.
    [[nodiscard]] std::optional<double> tilt() const noexcept { return tilt_; }
    /// Shift of the tilt, degrees; absent when it is left alone or set.
    [[nodiscard]] std::optional<double> tiltDelta() const noexcept { return tiltDelta_; }
    /// Bearing to move to, degrees; absent when it is left alone or shifted.
    [[nodiscard]] std::optional<double> bearing() const noexcept { return bearing_; }
    /// Shift of the bearing, degrees; absent when it is left alone or set.
    [[nodiscard]] std::optional<double> bearingDelta() const noexcept { return bearingDelta_; }
    /// The rectangle to fit; null unless the update was made to fit one.
    [[nodiscard]] const std::shared_ptr<PgmLatLngBounds>& bounds() const noexcept { return bounds_; }
    /// Points to keep free around `bounds`; absent counts as zero.
    [[nodiscard]] const std::optional<UIEdgeInsets>& paddingInsets() const noexcept { return paddingInsets_; }

 private:
    friend class PgmCameraUpdate;

    std::optional<CLLocationCoordinate2D> target_;
    std::optional<CGPoint> targetDelta_;
    std::optional<double> zoom_;
    std::optional<double> zoomDelta_;
    std::optional<double> tilt_;
    std::optional<double> tiltDelta_;
    std::optional<double> bearing_;
    std::optional<double> bearingDelta_;
    std::shared_ptr<PgmLatLngBounds> bounds_;
    std::optional<UIEdgeInsets> paddingInsets_;
};

/// A request to move the camera: what to change, and how. Handed to `PgmMapView::moveCamera`, any number of
/// times; shifts start from the camera at that moment. A new one is not animated.
class PgmCameraUpdate {
 public:
    /// How updates are passed around.
    using Ptr = std::shared_ptr<PgmCameraUpdate>;

    /// An update that shares the given record: later changes of it count. Null counts as a new record.
    [[nodiscard]] static Ptr cameraUpdateWithParams(std::shared_ptr<PgmCameraUpdateParams> params);
    /// Sets target, zoom, tilt and bearing of the position; bounds of it are not taken over.
    [[nodiscard]] static Ptr cameraUpdateWithPosition(const PgmCameraPosition& position);
    /// Moves to a target, degrees.
    [[nodiscard]] static Ptr cameraUpdateTargetTo(CLLocationCoordinate2D target);
    /// Moves to a target, degrees, at a zoom level.
    [[nodiscard]] static Ptr cameraUpdateTargetToZoomTo(CLLocationCoordinate2D target, double zoom);
    /// One level closer.
    [[nodiscard]] static Ptr cameraUpdateZoomIn();
    /// One level further away.
    [[nodiscard]] static Ptr cameraUpdateZoomOut();
    /// So many levels closer; further away when negative.
    [[nodiscard]] static Ptr cameraUpdateZoomBy(double delta);
    /// Moves to a zoom level.
    [[nodiscard]] static Ptr cameraUpdateZoomTo(double zoom);
    /// Moves to a tilt, degrees from looking straight down.
    [[nodiscard]] static Ptr cameraUpdateTiltTo(double tilt);
    /// Turns the map until this direction points up, degrees clockwise from north.
    [[nodiscard]] static Ptr cameraUpdateBearingTo(double bearing);
    /// Shows all four corners of a rectangle at the largest zoom at which any centre does, with the map's
    /// present tilt and bearing.
    [[nodiscard]] static Ptr cameraUpdateFitBounds(std::shared_ptr<PgmLatLngBounds> bounds);
    /// @param padding  points to keep free on each of the four sides.
    [[nodiscard]] static Ptr cameraUpdateFitBounds(std::shared_ptr<PgmLatLngBounds> bounds, CGFloat padding);
    /// @param paddingInsets  points to keep free on each side.
    [[nodiscard]] static Ptr cameraUpdateFitBounds(std::shared_ptr<PgmLatLngBounds> bounds,
                                                   UIEdgeInsets paddingInsets);

    PgmCameraUpdate() = delete;
    /// For the factories.
    explicit PgmCameraUpdate(std::shared_ptr<PgmCameraUpdateParams> params) noexcept
        : updateParams_(std::move(params)) {}

    /// `none` at first.
    [[nodiscard]] PgmCameraUpdateAnimation animation() const noexcept { return animation_; }
    void setAnimation(PgmCameraUpdateAnimation animation) noexcept { animation_ = animation; }
    /// Seconds, 0.3 at first; counts only with an animation. 0, negative and non-finite values move at once,
    /// but a negative one lets a flight choose its duration by the distance.
    [[nodiscard]] double animationDuration() const noexcept { return animationDuration_; }
    void setAnimationDuration(double seconds) noexcept { animationDuration_ = seconds; }
    /// What the update changes; never null.
    [[nodiscard]] const std::shared_ptr<PgmCameraUpdateParams>& updateParams() const noexcept {
        return updateParams_;
    }

    /// For the map view: where the update leads from the present camera; null without an engine view. A
    /// shift that would lead beyond a pole keeps the centre and says so in the log.
    [[nodiscard]] std::shared_ptr<PgmCameraPosition> getCameraPosition(const PgmMapView& mapView) const;

 private:
    PgmCameraUpdateAnimation animation_ = PgmCameraUpdateAnimation::none;
    double animationDuration_ = 0.3;
    std::shared_ptr<PgmCameraUpdateParams> updateParams_;
};

}  // namespace pelta
