#include "MapTransform.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace pelta {

namespace {

constexpr double radiansPerDegree = std::numbers::pi / 180;
/// Close enough to the poles to be out of sight, far enough for finite arithmetic.
constexpr double largestLatitude = 90 - 1e-9;
/// Further round the world, degrees, than anything that can be told apart.
constexpr double largestLongitude = 1e12;
/// Rays this far from the vertical, in degrees, count as hitting the horizon.
constexpr double horizonAngle = 89.25;
/// Ground nearer to the eye than this share of the centre's distance is drawn as if it were this near.
constexpr double nearestRelativeDistance = 1e-6;

bool isFinite(CGPoint point) {
    return std::isfinite(point.x) && std::isfinite(point.y);
}

CGPoint pointLeftByInset(CGSize size, UIEdgeInsets inset) {
    return {std::clamp((inset.left + size.width - inset.right) / 2, 0.0, size.width),
            std::clamp((inset.top + size.height - inset.bottom) / 2, 0.0, size.height)};
}

}  // namespace

MapTransform::MapTransform(const CameraState& camera, CGSize size, UIEdgeInsets inset) noexcept
    : centerCoordinate_(camera.center),
      centerGround_(groundForCoordinate(camera.center)),
      centerPoint_(pointLeftByInset({std::max(size.width, 1.0), std::max(size.height, 1.0)}, inset)),
      bearing_(camera.bearing),
      worldSize_(512 * std::exp2(camera.zoom)),
      eyeDistance_(1.5 * std::max(size.height, 1.0)),
      sinPitch_(std::sin(camera.pitch * radiansPerDegree)),
      cosPitch_(std::cos(camera.pitch * radiansPerDegree)),
      sinBearing_(std::sin(camera.bearing * radiansPerDegree)),
      cosBearing_(std::cos(camera.bearing * radiansPerDegree)),
      horizon_(-std::numeric_limits<double>::infinity()) {
    if (camera.pitch > 0) {
        horizon_ = centerPoint_.y - eyeDistance_ * std::tan((horizonAngle - camera.pitch) * radiansPerDegree);
    }
}

CGPoint MapTransform::pointForCoordinate(CLLocationCoordinate2D coordinate) const noexcept {
    if (!std::isfinite(coordinate.latitude) || !std::isfinite(coordinate.longitude)) {
        return {};
    }
    return pointForGround(groundForCoordinate(coordinate));
}

CLLocationCoordinate2D MapTransform::coordinateForPoint(CGPoint point) const noexcept {
    if (!isFinite(point)) {
        return centerCoordinate_;
    }
    return coordinateForGround(groundForPoint(point));
}

CGVector MapTransform::turned(CGPoint ground) const noexcept {
    const double east = (ground.x - centerGround_.x) * worldSize_;
    const double south = (ground.y - centerGround_.y) * worldSize_;
    return {east * cosBearing_ + south * sinBearing_, south * cosBearing_ - east * sinBearing_};
}

double MapTransform::relativeDistance(CGPoint ground) const noexcept {
    return 1 - turned(ground).dy * sinPitch_ / eyeDistance_;
}

CGPoint MapTransform::pointForGround(CGPoint ground) const noexcept {
    const CGVector offset = turned(ground);
    const double distance = std::max(1 - offset.dy * sinPitch_ / eyeDistance_, nearestRelativeDistance);
    return {centerPoint_.x + offset.dx / distance, centerPoint_.y + offset.dy * cosPitch_ / distance};
}

CGPoint MapTransform::groundForPoint(CGPoint point) const noexcept {
    const double right = point.x - centerPoint_.x;
    const double down = std::max(point.y, horizon_) - centerPoint_.y;
    const double along = down / (cosPitch_ + down * sinPitch_ / eyeDistance_);
    const double distance = 1 - along * sinPitch_ / eyeDistance_;
    return groundShifted(centerGround_, {right * distance, along});
}

CGPoint MapTransform::groundShifted(CGPoint ground, CGVector byPoints) const noexcept {
    const double east = byPoints.dx * cosBearing_ - byPoints.dy * sinBearing_;
    const double south = byPoints.dx * sinBearing_ + byPoints.dy * cosBearing_;
    return {ground.x + east / worldSize_, ground.y + south / worldSize_};
}

CGPoint MapTransform::groundForCoordinate(CLLocationCoordinate2D coordinate) noexcept {
    const double latitude = std::clamp(coordinate.latitude, -largestLatitude, largestLatitude);
    const double north = std::log(std::tan(std::numbers::pi / 4 + latitude * radiansPerDegree / 2));
    const double longitude = std::clamp(coordinate.longitude, -largestLongitude, largestLongitude);
    return {longitude / 360 + 0.5, 0.5 - north / (2 * std::numbers::pi)};
}

CLLocationCoordinate2D MapTransform::coordinateForGround(CGPoint ground) noexcept {
    const double north = (0.5 - ground.y) * 2 * std::numbers::pi;
    return {2 * std::atan(std::exp(north)) / radiansPerDegree - 90, (ground.x - 0.5) * 360};
}

}  // namespace pelta
