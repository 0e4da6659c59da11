/// Shapes that come, go from map to map and leave, and what they call back.

#include "Kinds.h"

namespace pelta::random {

namespace {

/// @tparam Class  the class to make for one of the library's: itself, or an application's subclass.
template <template <class> class Class>
std::shared_ptr<PgmShape> makeShape(const Operation& operation) {
    const CLLocationCoordinate2D place = operation.coordinate(2);
    const Path& path = operation.path(3).size() < 2 ? paths().front().value : operation.path(3);
    switch (static_cast<ShapeKind>(operation.arguments[1] % shapeKindCount)) {
        case ShapeKind::marker:
            return make<Class<PgmMarker>>(place);
        case ShapeKind::infoWindow: {
            const auto window = make<Class<PgmInfoWindow>>();
            window->setPosition(place);
            return window;
        }
        case ShapeKind::polyline:
            return make<Class<PgmPolyline>>(path);
        case ShapeKind::polygon:
            return make<Class<PgmPolygon>>(path);
        case ShapeKind::circle:
            return make<Class<PgmCircle>>(place);
        case ShapeKind::base:
            break;
    }
    return make<Class<PgmShape>>();
}

void become(World& world, const Operation& operation) {
    auto& slot = world.shapes[operation.arguments[0]];
    slot = operation.arguments[1] < shapeKindCount ? makeShape<std::type_identity_t>(operation)
                                                   : makeShape<ApplicationShape>(operation);
    world.trackShape(slot);
}

void goToMap(World& world, const Operation& operation) {
    if (const auto shape = world.shape<PgmShape>(operation.arguments[0])) {
        shape->setMapView(world.map(operation.arguments[1]));
    }
}

void goBackAndForth(World& world, const Operation& operation) {
    const auto shape = world.shape<PgmShape>(operation.arguments[0]);
    if (const auto here = shape ? shape->mapView() : nullptr) {
        shape->setMapView(world.map(operation.arguments[1]));
        shape->setMapView(here);
    }
}

void takeIdentifier(PgmShape& shape, const Operation& operation) {
    // Nothing else on the map may have it, so the number of the shape is part of it.
    shape.setIdentifier(operation.text(1) + std::to_string(shape.shapeIndex()));
}

void whenTapped(World& world, const Operation& operation) {
    if (const auto shape = world.shape<PgmShape>(operation.arguments[0])) {
        shape->setTouchEvent([isDone = operation.flag(1), action = world.action(operation)](PgmShape&) {
            action();
            return isDone;
        });
    }
}

template <Action ShapeHooks::*hook>
void whenAsked(World& world, const Operation& operation) {
    if (const auto shape = world.shape<ShapeHooks>(operation.arguments[0])) {
        (*shape).*hook = world.action(operation);
    }
}

void openOn(World& world, const Operation& operation) {
    if (const auto infoWindow = world.shape<PgmInfoWindow>(operation.arguments[0])) {
        infoWindow->setMarker(world.shape<PgmMarker>(operation.arguments[1]));
    }
}

void takePosition(PgmShape& shape, const std::optional<CLLocationCoordinate2D>& position) {
    if (auto* marker = dynamic_cast<PgmMarker*>(&shape); marker != nullptr && position) {
        marker->setPosition(*position);
    } else if (auto* circle = dynamic_cast<PgmCircle*>(&shape)) {
        circle->setCenter(position);
    } else if (auto* infoWindow = dynamic_cast<PgmInfoWindow*>(&shape)) {
        infoWindow->setPosition(position);
    }
}

void takePath(PgmShape& shape, const Operation& operation) {
    if (auto* polyline = dynamic_cast<PgmPolyline*>(&shape)) {
        polyline->setCoords(operation.path(1));
    } else if (auto* polygon = dynamic_cast<PgmPolygon*>(&shape)) {
        polygon->setCoords(operation.path(1));
    }
}

void takeSource(World& world, const Operation& operation, std::shared_ptr<PgmImageDataSource> source) {
    if (const auto infoWindow = world.shape<PgmInfoWindow>(operation.arguments[0])) {
        world.track("the source of " + infoWindow->identifier(), source);
        infoWindow->setImageDataSource(source);
        world.sources[operation.arguments[0]] = std::move(source);
    }
}

}  // namespace

std::vector<OperationKind> shapeOperations() {
    using S = PgmShape&;
    using W = World&;
    using O = const Operation&;
    return {
        {"{shape} becomes {kind} at {coordinate}, or along {path}", 60, become},
        {"{shape} goes to {map or none}", 120, goToMap, InCallbacks::often},
        {"{shape} goes to {map or none} and back", 30, goBackAndForth, InCallbacks::often},
        {"{shape} is let go of", 10, [](W world, O o) { world.shapes[o.arguments[0]] = nullptr; },
         InCallbacks::often},
        onShape<PgmShape>("{shape} takes an identifier made of {text}", 5, takeIdentifier),
        sets("{shape} takes the z-index {order}", 12, &PgmShape::setZIndex),
        sets("{shape} takes the global z-index {order}", 12, &PgmShape::setGlobalZIndex),
        {"{shape} answers {flag} to taps, after: {operation}", 25, whenTapped},
        {"asked for its feature, {shape} does: {operation}", 25, whenAsked<&ShapeHooks::onFeature>},
        {"asked for its picture, {shape} does: {operation}", 25, whenAsked<&ShapeHooks::onShapeImage>},
        {"{shape}, an info window, opens on {shape}", 30, openOn},
        onShape<PgmShape>("{shape} moves to {coordinate}", 20,
                          [](S shape, O o) { takePosition(shape, o.coordinate(1)); }),
        onShape<PgmShape>("{shape} loses its position", 4,
                          [](S shape, O) { takePosition(shape, std::nullopt); }),
        onShape<PgmShape>("{shape} takes {path}", 15, takePath),
        {"{shape}, an info window, shows {text}", 20,
         [](W world, O o) { takeSource(world, o, std::make_shared<TextSource>(o.text(1))); }},
        {"{shape}, an info window, shows a view of {size}", 10,
         [](W world, O o) { takeSource(world, o, std::make_shared<ViewSource>(o.size(1))); }},
        {"{shape}, an info window, shows {text} after: {operation}", 12,
         [](W world, O o) {
             takeSource(world, o, std::make_shared<TextSource>(o.text(1), world.action(o)));
         }},
    };
}

}  // namespace pelta::random
