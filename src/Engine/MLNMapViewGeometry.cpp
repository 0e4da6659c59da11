#include <algorithm>
#include <array>

#include <pelta/Engine/MLNMapView.h>

#include "Engine/CameraFitting.h"
#include "Engine/MapViewCore.h"

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
    return renderer.coordinateForPoint(convert(point, toCoordinateFromView, this));
}

CGPoint MLNMapView::convertCoordinate(CLLocationCoordinate2D coordinate, const UIView* toPointToView) const {
    return convert(core_->renderer().pointForCoordinate(coordinate), this, toPointToView);
}

MLNCoordinateBounds MLNMapView::convertRect(CGRect rect, const UIView* toCoordinateBoundsFromView) const {
    const auto corners = cornersOf(rect);
    const auto first = convertPoint(corners[0], toCoordinateBoundsFromView);
    MLNCoordinateBounds bounds{first, first};
    for (const auto& corner : corners) {
        const auto coordinate = convertPoint(corner, toCoordinateBoundsFromView);
        bounds.sw = {std::min(bounds.sw.latitude, coordinate.latitude),
                     std::min(bounds.sw.longitude, coordinate.longitude)};
        bounds.ne = {std::max(bounds.ne.latitude, coordinate.latitude),
                     std::max(bounds.ne.longitude, coordinate.longitude)};
    }
    return bounds;
}

CGRect MLNMapView::convertCoordinateBounds(const MLNCoordinateBounds& bounds,
                                           const UIView* toRectToView) const {
    CGPoint low = convertCoordinate(bounds.sw, toRectToView);
    CGPoint high = low;
    const std::array<CLLocationCoordinate2D, 3> otherCorners{
        {bounds.ne, {bounds.sw.latitude, bounds.ne.longitude}, {bounds.ne.latitude, bounds.sw.longitude}}};
    for (const auto& corner : otherCorners) {
        const auto point = convertCoordinate(corner, toRectToView);
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
    return cameraFitting(bounds, {controller.viewSize(), contentInset(), edgePadding}, controller.state(),
                         controller.limits());
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
