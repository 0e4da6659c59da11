/// Shapes that come, go from map to map and leave, and what they call back.

#include <array>

#include "Arguments.h"

namespace pelta::random {

namespace {

const std::vector<CLLocationCoordinate2D>& pathFor(const Operation& operation, std::size_t place) {
    const auto& path = paths()[operation.arguments[place]].value;
    constexpr std::size_t leastPoints = 2;
    return path.size() < leastPoints ? paths().front().value : path;
}

template <class Marker, class InfoWindow, class Polyline, class Polygon, class Circle, class Base>
std::shared_ptr<PgmShape> makeShape(ShapeKind kind, const Operation& operation) {
    const CLLocationCoordinate2D place = coordinateAt(operation, 2);
    switch (kind) {
        case ShapeKind::marker:
            return make<Marker>(place);
        case ShapeKind::infoWindow: {
            const auto window = make<InfoWindow>();
            window->setPosition(place);
            return window;
        }
        case ShapeKind::polyline:
            return make<Polyline>(pathFor(operation, 3));
        case ShapeKind::polygon:
            return make<Polygon>(pathFor(operation, 3));
        case ShapeKind::circle:
            return make<Circle>(place);
        case ShapeKind::base:
            break;
    }
    return make<Base>();
}

void become(World& world, const Operation& operation) {
    const std::uint32_t kind = operation.arguments[1];
    const auto ofClass = static_cast<ShapeKind>(kind % shapeKindCount);
    auto& slot = world.shapes[operation.arguments[0]];
    slot = kind < shapeKindCount
               ? makeShape<PgmMarker, PgmInfoWindow, PgmPolyline, PgmPolygon, PgmCircle, PgmShape>(ofClass,
                                                                                                   operation)
               : makeShape<ApplicationShape<PgmMarker>, ApplicationShape<PgmInfoWindow>,
                           ApplicationShape<PgmPolyline>, ApplicationShape<PgmPolygon>,
                           ApplicationShape<PgmCircle>, ApplicationShape<PgmShape>>(ofClass, operation);
    world.trackShape(slot);
}

void goToMap(World& world, const Operation& operation) {
    if (const auto shape = shapeAt(world, operation, 0)) {
        shape->setMapView(mapAt(world, operation, 1));
    }
}

void goBackAndForth(World& world, const Operation& operation) {
    const auto shape = shapeAt(world, operation, 0);
    const auto here = shape ? shape->mapView() : nullptr;
    if (here) {
        shape->setMapView(mapAt(world, operation, 1));
        shape->setMapView(here);
    }
}

void letGo(World& world, const Operation& operation) {
    world.shapes[operation.arguments[0]] = nullptr;
}

void takeIdentifier(PgmShape& shape, const Operation& operation) {
    // Nothing else on the map may have it, so the number of the shape is part of it.
    shape.setIdentifier(textAt(operation, 1) + std::to_string(shape.shapeIndex()));
}

void whenTapped(World& world, const Operation& operation) {
    if (const auto shape = shapeAt(world, operation, 0)) {
        shape->setTouchEvent([isDone = flagAt(operation, 1), action = world.action(operation)](PgmShape&) {
            action();
            return isDone;
        });
    }
}

void whenAskedForFeature(World& world, const Operation& operation) {
    if (const auto shape = shapeAt<ShapeHooks>(world, operation, 0)) {
        shape->onFeature = world.action(operation);
    }
}

void whenAskedForPicture(World& world, const Operation& operation) {
    if (const auto shape = shapeAt<ShapeHooks>(world, operation, 0)) {
        shape->onShapeImage = world.action(operation);
    }
}

void openOn(World& world, const Operation& operation) {
    if (const auto infoWindow = shapeAt<PgmInfoWindow>(world, operation, 0)) {
        infoWindow->setMarker(shapeAt<PgmMarker>(world, operation, 1));
    }
}

void takePosition(World& world, const Operation& operation) {
    const CLLocationCoordinate2D position = coordinateAt(operation, 1);
    if (const auto marker = shapeAt<PgmMarker>(world, operation, 0)) {
        marker->setPosition(position);
    } else if (const auto circle = shapeAt<PgmCircle>(world, operation, 0)) {
        circle->setCenter(std::optional(position));
    } else if (const auto infoWindow = shapeAt<PgmInfoWindow>(world, operation, 0)) {
        infoWindow->setPosition(std::optional(position));
    }
}

void losePosition(World& world, const Operation& operation) {
    if (const auto circle = shapeAt<PgmCircle>(world, operation, 0)) {
        circle->setCenter(std::nullopt);
    } else if (const auto infoWindow = shapeAt<PgmInfoWindow>(world, operation, 0)) {
        infoWindow->setPosition(std::nullopt);
    }
}

void takePath(World& world, const Operation& operation) {
    const auto& path = paths()[operation.arguments[1]].value;
    if (const auto polyline = shapeAt<PgmPolyline>(world, operation, 0)) {
        polyline->setCoords(path);
    } else if (const auto polygon = shapeAt<PgmPolygon>(world, operation, 0)) {
        polygon->setCoords(path);
    }
}

void takeSource(World& world, const Operation& operation, std::shared_ptr<PgmImageDataSource> source) {
    if (const auto infoWindow = shapeAt<PgmInfoWindow>(world, operation, 0)) {
        world.track("the source of " + infoWindow->identifier(), source);
        infoWindow->setImageDataSource(source);
        world.sources[operation.arguments[0]] = std::move(source);
    }
}

void takeText(World& world, const Operation& operation) {
    takeSource(world, operation, std::make_shared<TextSource>(textAt(operation, 1)));
}

void takeView(World& world, const Operation& operation) {
    takeSource(world, operation, std::make_shared<ViewSource>(sizeAt(operation, 1)));
}

void takeCallingText(World& world, const Operation& operation) {
    takeSource(world, operation, std::make_shared<TextSource>(textAt(operation, 1), world.action(operation)));
}

void takeOrder(PgmShape& shape, const Operation& operation) {
    shape.setZIndex(orders()[operation.arguments[1]].value);
}

void takeGlobalOrder(PgmShape& shape, const Operation& operation) {
    shape.setGlobalZIndex(orders()[operation.arguments[1]].value);
}

constexpr std::array kinds{
    OperationKind{"{shape} becomes {kind} at {coordinate}, or along {path}", 60, become},
    OperationKind{"{shape} goes to {map or none}", 120, goToMap, InCallbacks::often},
    OperationKind{"{shape} goes to {map or none} and back", 30, goBackAndForth, InCallbacks::often},
    OperationKind{"{shape} is let go of", 10, letGo, InCallbacks::often},
    OperationKind{"{shape} takes an identifier made of {text}", 5, onShape<PgmShape, takeIdentifier>},
    OperationKind{"{shape} takes the z-index {order}", 12, onShape<PgmShape, takeOrder>},
    OperationKind{"{shape} takes the global z-index {order}", 12, onShape<PgmShape, takeGlobalOrder>},
    OperationKind{"{shape} answers {flag} to taps, after: {operation}", 25, whenTapped},
    OperationKind{"asked for its feature, {shape} does: {operation}", 25, whenAskedForFeature},
    OperationKind{"asked for its picture, {shape} does: {operation}", 25, whenAskedForPicture},
    OperationKind{"{shape}, an info window, opens on {shape}", 30, openOn},
    OperationKind{"{shape} moves to {coordinate}", 20, takePosition},
    OperationKind{"{shape} loses its position", 4, losePosition},
    OperationKind{"{shape} takes {path}", 15, takePath},
    OperationKind{"{shape}, an info window, shows {text}", 20, takeText},
    OperationKind{"{shape}, an info window, shows a view of {size}", 10, takeView},
    OperationKind{"{shape}, an info window, shows {text} after: {operation}", 12, takeCallingText},
};

}  // namespace

std::span<const OperationKind> shapeOperations() {
    return kinds;
}

}  // namespace pelta::random
