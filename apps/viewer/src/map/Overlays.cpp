#include "map/Overlays.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include <pelta/Annotations/PgmCircle.h>
#include <pelta/Annotations/PgmMarker.h>
#include <pelta/Annotations/PgmPolygon.h>
#include <pelta/Annotations/PgmPolyline.h>

namespace pelta::viewer {

namespace {

constexpr double metresPerDegree = 111319.49;
constexpr double leastSpan = 0.02;  ///< Degrees.

std::vector<CLLocationCoordinate2D> listed(std::span<const CLLocationCoordinate2D> coordinates) {
    return {coordinates.begin(), coordinates.end()};
}

std::shared_ptr<PgmShape> makeMarker(CLLocationCoordinate2D position, const ShapeStyle& style,
                                     PinPictures& pins) {
    auto marker = PgmMarker::markerWithPosition(position);
    marker->setTitle(style.title);
    if (style.markerColor) {
        marker->setIconImage(pins.pin(*style.markerColor));
    }
    return marker;
}

std::shared_ptr<PgmShape> makeLine(std::span<const CLLocationCoordinate2D> coordinates,
                                   const ShapeStyle& style) {
    auto line = PgmPolyline::create(listed(coordinates));
    line->setColor(style.stroke.withAlpha(style.strokeOpacity));
    line->setWidth(style.strokeWidth);
    line->setCapType(PgmLineCap::round);
    line->setJoinType(PgmLineJoin::round);
    return line;
}

template <class Area>
std::shared_ptr<PgmShape> styled(std::shared_ptr<Area> area, const ShapeStyle& style) {
    area->setFillColor(style.fill.withAlpha(style.fillOpacity));
    area->setStrokeColor(style.stroke.withAlpha(style.strokeOpacity));
    area->setStrokeWidth(style.strokeWidth);
    return area;
}

std::shared_ptr<PgmShape> makeShape(const MapData& data, const DataShape& shape, PinPictures& pins) {
    const ShapeStyle& style = data.styles[shape.style];
    const auto coordinates = data.coordinatesOf(shape);
    switch (shape.kind) {
        case ShapeKind::circle:
            return styled(PgmCircle::create(coordinates.front(), style.radius.value_or(0)), style);
        case ShapeKind::line:
            return makeLine(coordinates, style);
        case ShapeKind::area:
            return styled(PgmPolygon::create(listed(coordinates)), style);
        case ShapeKind::marker:
            break;
    }
    return makeMarker(coordinates.front(), style, pins);
}

/// Widens an interval to a least span, about its middle and within limits.
void widen(double& low, double& high, double limit) {
    const double missing = std::max(0.0, leastSpan - (high - low)) / 2;
    low = std::max(low - missing, -limit);
    high = std::min(high + missing, limit);
}

}  // namespace

Shapes shapesOf(const MapData& data, PinPictures& pins) {
    Shapes shapes;
    shapes.reserve(data.shapes.size());
    for (const DataShape& description : data.shapes) {
        auto shape = makeShape(data, description, pins);
        const ShapeStyle& style = data.styles[description.style];
        shape->setZIndex(style.zIndex);
        shape->setVisibleMinZoom(style.visibleMinZoom.value_or(shape->visibleMinZoom()));
        shape->setVisibleMaxZoom(style.visibleMaxZoom.value_or(shape->visibleMaxZoom()));
        shapes.push_back(std::move(shape));
    }
    return shapes;
}

std::shared_ptr<PgmLatLngBounds> boundsOf(const MapData& data) {
    if (data.shapes.empty()) {
        return nullptr;
    }
    double south = 90;
    double west = 180;
    double north = -90;
    double east = -180;
    for (const DataShape& shape : data.shapes) {
        const double radius = shape.kind == ShapeKind::circle
                                  ? data.styles[shape.style].radius.value_or(0) / metresPerDegree
                                  : 0;
        for (const CLLocationCoordinate2D& coordinate : data.coordinatesOf(shape)) {
            const double narrowing = std::max(std::cos(coordinate.latitude * std::numbers::pi / 180), 0.01);
            south = std::min(south, coordinate.latitude - radius);
            north = std::max(north, coordinate.latitude + radius);
            west = std::min(west, coordinate.longitude - radius / narrowing);
            east = std::max(east, coordinate.longitude + radius / narrowing);
        }
    }
    // The world square of the map ends at these latitudes.
    constexpr double mapLatitude = 85.05;
    south = std::clamp(south, -mapLatitude, mapLatitude);
    north = std::clamp(north, -mapLatitude, mapLatitude);
    west = std::max(west, -180.0);
    east = std::min(east, 180.0);
    widen(south, north, mapLatitude);
    widen(west, east, 180);
    return PgmLatLngBounds::create({south, west}, {north, east});
}

}  // namespace pelta::viewer
