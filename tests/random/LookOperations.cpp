/// What shapes look like.

#include "Kinds.h"

namespace pelta::random {

namespace {

void takeIcon(World& world, const Operation& operation) {
    if (const auto marker = world.shape<PgmMarker>(operation.arguments[0])) {
        marker->setIconImage(
            world.images.empty() ? nullptr : world.images[operation.arguments[1] % world.images.size()]);
    }
}

void takeIconOfWindow(World& world, const Operation& operation) {
    const auto marker = world.shape<PgmMarker>(operation.arguments[0]);
    const auto infoWindow = world.shape<PgmInfoWindow>(operation.arguments[1]);
    if (marker && infoWindow) {
        marker->setIconImage(infoWindow->iconImage());
    }
}

void takeAnchor(PgmMarker& marker, const Operation& operation) {
    marker.setAnchor({operation.number(1), operation.number(2)});
}

void takePattern(PgmPolyline& polyline, const Operation& operation) {
    polyline.setPattern({operation.number(1), operation.number(2)});
}

void takeEnds(PgmPolyline& polyline, const Operation& operation) {
    polyline.setCapType(*PgmLineCapFromRaw(operation.arguments[1] % 3));
    polyline.setJoinType(*PgmLineJoinFromRaw(operation.arguments[1] / 2));
}

void takeOffset(PgmInfoWindow& infoWindow, const Operation& operation) {
    infoWindow.setOffset({operation.number(1), operation.number(2)});
}

void redraw(PgmInfoWindow& infoWindow, const Operation& /*operation*/) {
    infoWindow.invalidate();
}

}  // namespace

std::vector<OperationKind> lookOperations() {
    return {
        sets("{shape} is seen from zoom {number}", 5, &PgmShape::setVisibleMinZoom),
        sets("{shape} is seen to zoom {number}", 5, &PgmShape::setVisibleMaxZoom),
        sets("{shape} is seen: {flag}", 8, &PgmShape::setIsVisible),
        sets("{shape} takes the title {text}", 12, &PgmMarker::setTitle),
        sets("{shape} takes the icon scale {number}", 6, &PgmMarker::setIconScale),
        sets("{shape} takes the angle {number}", 5, &PgmMarker::setAngle),
        sets("{shape} takes the opacity {number}", 4, &PgmMarker::setAlpha),
        sets("{shape} takes the title size {number}", 6, &PgmMarker::setTitleSize),
        sets("{shape} takes the title width {number}", 6, &PgmMarker::setTitleMaxWidth),
        sets("{shape} takes the title margin {number}", 6, &PgmMarker::setTitleMargin),
        onShape<PgmMarker>("{shape} takes the anchor {number}, {number}", 5, takeAnchor),
        {"{shape} takes the icon {picture}", 8, takeIcon},
        {"{shape}, a marker, takes the picture of {shape}, an info window", 8, takeIconOfWindow},
        sets("{shape} has a flat icon: {flag}", 3, &PgmMarker::setIsIconFlat),
        sets("{shape} has a flat title: {flag}", 3, &PgmMarker::setIsTitleFlat),
        sets("{shape} overlaps markers: {flag}", 3, &PgmMarker::setIsAllowOverlapMarkers),
        sets("{shape} has a title in {colour}", 3, &PgmMarker::setTitleColor),
        sets("{shape} takes the width {number}", 6, &PgmPolyline::setWidth),
        sets("{shape} takes the colour {colour}", 3, &PgmPolyline::setColor),
        onShape<PgmPolyline>("{shape} takes the dashes {number}, {number}", 5, takePattern),
        onShape<PgmPolyline>("{shape} takes ends of {variant}", 3, takeEnds),
        sets("{shape} takes the outline {number}", 5, &PgmAreaShape::setStrokeWidth),
        sets("{shape} is filled with {colour}", 3, &PgmAreaShape::setFillColor),
        sets("{shape} takes the radius {number}", 8, &PgmCircle::setRadius),
        onShape<PgmInfoWindow>("{shape}, an info window, is shifted by {number}, {number}", 5, takeOffset),
        sets("{shape}, an info window, takes the opacity {number}", 3, &PgmInfoWindow::setAlpha),
        onShape<PgmInfoWindow>("{shape}, an info window, is drawn anew", 15, redraw),
    };
}

}  // namespace pelta::random
