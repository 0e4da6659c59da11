#include <algorithm>
#include <array>

#include <pelta/Engine/MLNMapView.h>

#include "Engine/CameraFitting.h"
#include "Engine/MapViewCore.h"
#include "Engine/Mercator.h"

namespace pelta {
namespace {

/// A point of `from` in the coordinates of `to`; null stands for `to` and `from` respectively.
CGPoint convert(CGPoint point, const UIView* from, const UIView* to) {
    if (from == nullptr || to == nullptr || from == to) {
        return point;
    }
    const auto inWindow = from->convertPointToWindow(point);
    const auto origin = to->convertPointToWindow({});
    return {inWindow.x - origin.x, inWindow.y - origin.y};
}

std::array<CGPoint, 4> cornersOf(const CGRect& rect) {
    return {{{rect.minX(), rect.minY()},
             {rect.maxX(), rect.minY()},
             {rect.minX(), rect.maxY()},
             {rect.maxX(), rect.maxY()}}};
}

}  // namespace

CLLocationCoordinate2D MLNMapView::convertPoint(CGPoint point, const UIView* toCoordinateFromView) const {
    const auto& renderer = core_->renderer();
    auto coordinate = renderer.coordinateForPoint(convert(point, toCoordinateFromView, this));
    coordinate.longitude = mercator::wrapLongitude(coordinate.longitude);
    return coordinate;
}

CGPoint MLNMapView::convertCoordinate(CLLocationCoordinate2D coordinate, const UIView* toPointToView) const {
    const auto& renderer = core_->renderer();
    coordinate.longitude = mercator::nearestLongitude(coordinate.longitude, centerCoordinate().longitude);
    return convert(renderer.pointForCoordinate(coordinate), this, toPointToView);
}

MLNCoordinateBounds MLNMapView::convertRect(CGRect rect, const UIView* toCoordinateBoundsFromView) const {
    const auto& renderer = core_->renderer();
    const auto coordinateAt = [&](CGPoint corner) {
        return renderer.coordinateForPoint(convert(corner, toCoordinateBoundsFromView, this));
    };
    const auto corners = cornersOf(rect);
    const auto first = coordinateAt(corners[0]);
    MLNCoordinateBounds bounds{first, first};
    for (const auto& corner : corners) {
        const auto coordinate = coordinateAt(corner);
        bounds.sw = {std::min(bounds.sw.latitude, coordinate.latitude),
                     std::min(bounds.sw.longitude, coordinate.longitude)};
        bounds.ne = {std::max(bounds.ne.latitude, coordinate.latitude),
                     std::max(bounds.ne.longitude, coordinate.longitude)};
    }
    return bounds;
}

CGRect MLNMapView::convertCoordinateBounds(const MLNCoordinateBounds& bounds,
                                           const UIView* toRectToView) const {
    const auto& renderer = core_->renderer();
    const double middle = (bounds.sw.longitude + bounds.ne.longitude) / 2;
    const double turns = mercator::nearestLongitude(middle, centerCoordinate().longitude) - middle;
    const auto pointAt = [&](double latitude, double longitude) {
        return convert(renderer.pointForCoordinate({latitude, longitude + turns}), this, toRectToView);
    };
    CGPoint low = pointAt(bounds.sw.latitude, bounds.sw.longitude);
    CGPoint high = low;
    for (const auto& point :
         {pointAt(bounds.sw.latitude, bounds.ne.longitude), pointAt(bounds.ne.latitude, bounds.sw.longitude),
          pointAt(bounds.ne.latitude, bounds.ne.longitude)}) {
        low = {std::min(low.x, point.x), std::min(low.y, point.y)};
        high = {std::max(high.x, point.x), std::max(high.y, point.y)};
    }
    return {low, {high.x - low.x, high.y - low.y}};
}

MLNCoordinateBounds MLNMapView::visibleCoordinateBounds() const {
    core_->layout();
    return convertRect(bounds(), nullptr);
}

double MLNMapView::metersPerPointAtLatitude(double latitude) const {
    return MLNMetersPerPoint(latitude, zoomLevel());
}

CameraState MLNMapView::cameraStateThatFitsCoordinateBounds(const MLNCoordinateBounds& bounds,
                                                            UIEdgeInsets edgePadding) const {
    core_->layout();
    const auto& controller = core_->camera();
    return cameraFitting(bounds, {controller.viewSize(), effectiveContentInset(), edgePadding},
                         controller.state(), controller.limits());
}

MLNMapCamera MLNMapView::cameraThatFitsCoordinateBounds(const MLNCoordinateBounds& bounds,
                                                        UIEdgeInsets edgePadding) const {
    const auto fitted = cameraStateThatFitsCoordinateBounds(bounds, edgePadding);
    return MLNMapCamera::cameraShowing(fitted, core_->camera().viewSize());
}

std::vector<std::shared_ptr<const MLNFeature>> MLNMapView::visibleFeaturesInRect(
    CGRect rect, std::span<const std::string> inStyleLayersWithIdentifiers) const {
    return core_->renderer().featuresInRect(rect, inStyleLayersWithIdentifiers);
}

}  // namespace pelta
