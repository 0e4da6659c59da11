/// What shapes look like.

#include <array>

#include "Arguments.h"

namespace pelta::random {

namespace {

/// A property of a type of shape takes a number: `takesNumber<PgmMarker, &PgmMarker::setIconScale>`.
template <class Shape, auto setter>
void setNumber(Shape& shape, const Operation& operation) {
    (shape.*setter)(numberAt(operation, 1));
}
template <class Shape, auto setter>
constexpr auto takesNumber = onShape<Shape, setNumber<Shape, setter>>;

template <class Shape, auto setter>
void setColour(Shape& shape, const Operation& operation) {
    (shape.*setter)(colourAt(operation, 1));
}
template <class Shape, auto setter>
constexpr auto takesColour = onShape<Shape, setColour<Shape, setter>>;

template <class Shape, auto setter>
void setFlag(Shape& shape, const Operation& operation) {
    (shape.*setter)(flagAt(operation, 1));
}
template <class Shape, auto setter>
constexpr auto takesFlag = onShape<Shape, setFlag<Shape, setter>>;

void takeTitle(PgmMarker& marker, const Operation& operation) {
    marker.setTitle(textAt(operation, 1));
}

void takeAnchor(PgmMarker& marker, const Operation& operation) {
    marker.setAnchor({numberAt(operation, 1), numberAt(operation, 2)});
}

void takeIcon(World& world, const Operation& operation) {
    if (const auto marker = shapeAt<PgmMarker>(world, operation, 0)) {
        marker->setIconImage(
            world.images.empty() ? nullptr : world.images[operation.arguments[1] % world.images.size()]);
    }
}

void takeIconOfWindow(World& world, const Operation& operation) {
    const auto marker = shapeAt<PgmMarker>(world, operation, 0);
    const auto infoWindow = shapeAt<PgmInfoWindow>(world, operation, 1);
    if (marker && infoWindow) {
        marker->setIconImage(infoWindow->iconImage());
    }
}

void takePattern(PgmPolyline& polyline, const Operation& operation) {
    polyline.setPattern({numberAt(operation, 1), numberAt(operation, 2)});
}

void takeEnds(PgmPolyline& polyline, const Operation& operation) {
    constexpr std::uint32_t styles = 3;
    polyline.setCapType(*PgmLineCapFromRaw(operation.arguments[1] % styles));
    polyline.setJoinType(*PgmLineJoinFromRaw(operation.arguments[1] / 2));
}

void takeOffset(PgmInfoWindow& infoWindow, const Operation& operation) {
    infoWindow.setOffset({numberAt(operation, 1), numberAt(operation, 2)});
}

void redraw(PgmInfoWindow& infoWindow, const Operation& /*operation*/) {
    infoWindow.invalidate();
}

constexpr std::array kinds{
    OperationKind{"{shape} is seen from zoom {number}", 5,
                  takesNumber<PgmShape, &PgmShape::setVisibleMinZoom>},
    OperationKind{"{shape} is seen to zoom {number}", 5, takesNumber<PgmShape, &PgmShape::setVisibleMaxZoom>},
    OperationKind{"{shape} is seen: {flag}", 8, takesFlag<PgmShape, &PgmShape::setIsVisible>},
    OperationKind{"{shape} takes the title {text}", 12, onShape<PgmMarker, takeTitle>},
    OperationKind{"{shape} takes the icon scale {number}", 6,
                  takesNumber<PgmMarker, &PgmMarker::setIconScale>},
    OperationKind{"{shape} takes the angle {number}", 5, takesNumber<PgmMarker, &PgmMarker::setAngle>},
    OperationKind{"{shape} takes the opacity {number}", 4, takesNumber<PgmMarker, &PgmMarker::setAlpha>},
    OperationKind{"{shape} takes the title size {number}", 6,
                  takesNumber<PgmMarker, &PgmMarker::setTitleSize>},
    OperationKind{"{shape} takes the title width {number}", 6,
                  takesNumber<PgmMarker, &PgmMarker::setTitleMaxWidth>},
    OperationKind{"{shape} takes the title margin {number}", 6,
                  takesNumber<PgmMarker, &PgmMarker::setTitleMargin>},
    OperationKind{"{shape} takes the anchor {number}, {number}", 5, onShape<PgmMarker, takeAnchor>},
    OperationKind{"{shape} takes the icon {picture}", 8, takeIcon},
    OperationKind{"{shape}, a marker, takes the picture of {shape}, an info window", 8, takeIconOfWindow},
    OperationKind{"{shape} has a flat icon: {flag}", 3, takesFlag<PgmMarker, &PgmMarker::setIsIconFlat>},
    OperationKind{"{shape} has a flat title: {flag}", 3, takesFlag<PgmMarker, &PgmMarker::setIsTitleFlat>},
    OperationKind{"{shape} overlaps markers: {flag}", 3,
                  takesFlag<PgmMarker, &PgmMarker::setIsAllowOverlapMarkers>},
    OperationKind{"{shape} has a title in {colour}", 3, takesColour<PgmMarker, &PgmMarker::setTitleColor>},
    OperationKind{"{shape} takes the width {number}", 6, takesNumber<PgmPolyline, &PgmPolyline::setWidth>},
    OperationKind{"{shape} takes the colour {colour}", 3, takesColour<PgmPolyline, &PgmPolyline::setColor>},
    OperationKind{"{shape} takes the dashes {number}, {number}", 5, onShape<PgmPolyline, takePattern>},
    OperationKind{"{shape} takes ends of {variant}", 3, onShape<PgmPolyline, takeEnds>},
    OperationKind{"{shape} takes the outline {number}", 5,
                  takesNumber<PgmAreaShape, &PgmAreaShape::setStrokeWidth>},
    OperationKind{"{shape} is filled with {colour}", 3,
                  takesColour<PgmAreaShape, &PgmAreaShape::setFillColor>},
    OperationKind{"{shape} takes the radius {number}", 8, takesNumber<PgmCircle, &PgmCircle::setRadius>},
    OperationKind{"{shape}, an info window, is shifted by {number}, {number}", 5,
                  onShape<PgmInfoWindow, takeOffset>},
    OperationKind{"{shape}, an info window, takes the opacity {number}", 3,
                  takesNumber<PgmInfoWindow, &PgmInfoWindow::setAlpha>},
    OperationKind{"{shape}, an info window, is drawn anew", 15, onShape<PgmInfoWindow, redraw>},
};

}  // namespace

std::span<const OperationKind> lookOperations() {
    return kinds;
}

}  // namespace pelta::random
