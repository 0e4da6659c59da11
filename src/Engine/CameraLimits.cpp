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

/// Where the centre of a window may be that stays between two edges: in their middle alone when it cannot.
struct Span {
    double low;
    double high;

    Span(double extent, double from, double to) noexcept {
        const double free = std::max((to - from - extent) / 2, 0.0);
        low = (from + to) / 2 - free;
        high = (from + to) / 2 + free;
    }
};

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
    return withinLimits(zoom, minimumZoom_, maximumZoom_);
}

CameraState CameraLimits::constrain(CameraState wanted, CGSize viewSize) const noexcept {
    wanted.zoom = constrainZoom(wanted.zoom);
    wanted.pitch = withinLimits(wanted.pitch, minimumPitch_, maximumPitch_);
    wanted.bearing = mercator::normalizeBearing(wanted.bearing);
    wanted.center.latitude =
        std::clamp(wanted.center.latitude, -mercator::maximumLatitude, mercator::maximumLatitude);
    if (screenBounds_) {
        keepWithinScreenBounds(wanted, viewSize);
    }
    wanted.center.longitude = mercator::wrapLongitude(wanted.center.longitude);
    return wanted;
}

void CameraLimits::keepWithinScreenBounds(CameraState& camera, CGSize viewSize) const noexcept {
    const auto a = mercator::fromCoordinate(screenBounds_->sw);
    const auto b = mercator::fromCoordinate(screenBounds_->ne);
    const auto [west, east] = std::minmax({a.x, b.x});
    const auto [top, bottom] = std::minmax({a.y, b.y});
    const double filling =
        std::max(zoomToFill(viewSize.width, east - west), zoomToFill(viewSize.height, bottom - top));
    camera.zoom = std::min(std::max(camera.zoom, filling), maximumZoom_);

    const double world = mercator::worldSize(camera.zoom);
    const Span across(viewSize.width / world, west, east);
    const Span down(viewSize.height / world, top, bottom);
    // Compared as coordinates: a centre that was brought to an edge is found to be there.
    const auto southWest = mercator::toCoordinate({across.low, down.high});
    const auto northEast = mercator::toCoordinate({across.high, down.low});
    auto& center = camera.center;
    const double turns =
        std::round(((southWest.longitude + northEast.longitude) / 2 - center.longitude) / 360);
    const double nearestCopy = center.longitude + 360 * turns;
    const double longitude = withinLimits(nearestCopy, southWest.longitude, northEast.longitude);
    if (longitude != nearestCopy) {
        center.longitude = longitude;
    }
    center.latitude = withinLimits(center.latitude, southWest.latitude, northEast.latitude);
}

}  // namespace pelta
