#include "Engine/CameraLimits.h"

#include <algorithm>
#include <cmath>

#include "Engine/Mercator.h"

namespace pelta {
namespace {

constexpr double highestZoom = 24;
constexpr double highestPitch = 85;
constexpr MLNCoordinateBounds wholeWorld{{-90, -180}, {90, 180}};

void assignWithin(double& field, double value, double highest) noexcept {
    if (std::isfinite(value)) {
        field = std::clamp(value, 0.0, highest);
    }
}

/// Where the minimum lies above the maximum, the maximum wins.
double withinLimits(double value, double minimum, double maximum) noexcept {
    return std::min(std::max(value, minimum), maximum);
}

double finiteOrZero(double value) noexcept {
    return std::isfinite(value) ? value : 0;
}

/// The centre of a window of the given extent that stays between two edges, or their middle when it cannot.
double keepWindowInside(double center, double extent, double low, double high) noexcept {
    return extent >= high - low ? (low + high) / 2 : std::clamp(center, low + extent / 2, high - extent / 2);
}

/// The zoom at which the world's part `span` (of 1) is as long as the view.
double zoomToFill(double viewLength, double span) noexcept {
    return viewLength > 0 ? std::log2(viewLength / (mercator::worldSize(0) * std::max(span, 1e-12))) : 0;
}

}  // namespace

void CameraLimits::setMinimumZoom(double zoom) noexcept {
    assignWithin(minimumZoom_, zoom, highestZoom);
}

void CameraLimits::setMaximumZoom(double zoom) noexcept {
    assignWithin(maximumZoom_, zoom, highestZoom);
}

void CameraLimits::setMinimumPitch(double pitch) noexcept {
    assignWithin(minimumPitch_, pitch, highestPitch);
}

void CameraLimits::setMaximumPitch(double pitch) noexcept {
    assignWithin(maximumPitch_, pitch, highestPitch);
}

void CameraLimits::setScreenBounds(const MLNCoordinateBounds& bounds) noexcept {
    const double sum = bounds.sw.latitude + bounds.sw.longitude + bounds.ne.latitude + bounds.ne.longitude;
    if (!std::isfinite(sum)) {
        return;
    }
    const auto [south, north] = std::minmax(bounds.sw.latitude, bounds.ne.latitude);
    const bool isWholeWorld = south <= -mercator::maximumLatitude && north >= mercator::maximumLatitude &&
                              std::abs(bounds.ne.longitude - bounds.sw.longitude) >= 360;
    screenBounds_ = isWholeWorld ? std::nullopt : std::optional(bounds);
}

MLNCoordinateBounds CameraLimits::screenBounds() const noexcept {
    return screenBounds_.value_or(wholeWorld);
}

double CameraLimits::constrainZoom(double zoom) const noexcept {
    return withinLimits(finiteOrZero(zoom), minimumZoom_, maximumZoom_);
}

CameraState CameraLimits::constrain(CameraState wanted, CGSize viewSize) const noexcept {
    wanted.zoom = constrainZoom(wanted.zoom);
    wanted.pitch = withinLimits(finiteOrZero(wanted.pitch), minimumPitch_, maximumPitch_);
    wanted.bearing = mercator::normalizeBearing(finiteOrZero(wanted.bearing));
    wanted.center.latitude = std::clamp(finiteOrZero(wanted.center.latitude), -mercator::maximumLatitude,
                                        mercator::maximumLatitude);
    wanted.center.longitude = finiteOrZero(wanted.center.longitude);
    if (screenBounds_) {
        keepWithinScreenBounds(wanted, viewSize);
    }
    wanted.center.longitude = mercator::wrapLongitude(wanted.center.longitude);
    return wanted;
}

void CameraLimits::keepWithinScreenBounds(CameraState& camera, CGSize viewSize) const noexcept {
    const auto southWest = mercator::fromCoordinate(screenBounds_->sw);
    const auto northEast = mercator::fromCoordinate(screenBounds_->ne);
    const auto [west, east] = std::minmax({southWest.x, northEast.x});
    const auto [top, bottom] = std::minmax({southWest.y, northEast.y});
    const double filling =
        std::max(zoomToFill(viewSize.width, east - west), zoomToFill(viewSize.height, bottom - top));
    camera.zoom = std::min(std::max(camera.zoom, filling), maximumZoom_);

    const double world = mercator::worldSize(camera.zoom);
    const auto wanted = mercator::fromCoordinate(camera.center);
    const double nearestCopy = wanted.x + std::round((west + east) / 2 - wanted.x);
    const double x = keepWindowInside(nearestCopy, viewSize.width / world, west, east);
    const double y = keepWindowInside(wanted.y, viewSize.height / world, top, bottom);
    if (x != wanted.x || y != wanted.y) {
        camera.center = mercator::toCoordinate({x, y});
    }
}

}  // namespace pelta
