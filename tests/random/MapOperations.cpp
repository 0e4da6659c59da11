/// Maps that come and go, their styles, sizes and settings.

#include "Kinds.h"

namespace pelta::random {

namespace {

CGRect frameOf(const Operation& operation) {
    constexpr double rowHeight = 200;
    return {{0, rowHeight * operation.arguments[0]}, operation.size(1)};
}

void appear(World& world, const Operation& operation) {
    const std::uint32_t slot = operation.arguments[0];
    World::MapSlot& map = world.maps[slot];
    if (map.view || !world.window) {
        return;
    }
    map.listener = std::make_shared<MapListener>();
    auto options = PgmMapOptions::create(PgmCameraPosition::cameraPosition(operation.coordinate(2), 10));
    map.view = PgmMapView::create(frameOf(operation), options, map.listener);
    world.window->addSubview(map.view);
    const std::string name = "map " + std::to_string(slot);
    world.track(name, map.view);
    world.track("the engine of " + name, map.view->mapView());
    world.track("the listener of " + name, map.listener);
}

void release(World& world, const Operation& operation) {
    const World::MapSlot released = std::exchange(world.maps[operation.arguments[0]], {});
    if (released.view) {
        released.view->removeFromSuperview();
    }
}

void enterWindow(World& world, const Operation& operation) {
    const auto map = world.map(operation.arguments[0]);
    if (map && world.window && !map->superview()) {
        world.window->addSubview(map);
    }
}

void takeInset(PgmMapView& map, const Operation& operation) {
    map.setContentInset({operation.number(1), 0, operation.number(2), operation.number(3)});
}

void showControls(PgmMapView& map, const Operation& operation) {
    for (const auto show : {&PgmMapView::setIsZoomControlVisible, &PgmMapView::setIsLocationButtonVisible,
                            &PgmMapView::setIsScaleBarVisible, &PgmMapView::setIsLogoVisible}) {
        (map.*show)(operation.flag(1));
    }
}

void takeControlPlace(PgmMapView& map, const Operation& operation) {
    map.setZoomViewPosition(*PgmPositionFromRaw(operation.arguments[1] % 5));
    map.setZoomViewMargins({operation.number(2), operation.number(3)});
}

void allowGestures(PgmMapView& map, const Operation& operation) {
    map.setIsZoomGesturesEnabled(operation.flag(1));
    map.setIsScrollGesturesEnabled(operation.flag(2));
    map.setDecelerationRate(operation.number(3));
}

void takeLocationIcon(PgmMapView& map, const Operation& operation) {
    map.locationIcon()->setScale(operation.number(1));
    map.locationIcon()->setCircleRadius(operation.number(2));
    map.locationIcon()->setCircleColor(operation.colour(3));
}

void whenLocationTapped(World& world, const Operation& operation) {
    if (const auto map = world.map(operation.arguments[0])) {
        map->locationIcon()->setTouchEvent(world.action(operation));
    }
}

void whenTold(World& world, const Operation& operation) {
    if (const auto& listener = world.maps[operation.arguments[0]].listener) {
        listener->actions[operation.arguments[1]] = world.action(operation);
    }
}

}  // namespace

std::vector<OperationKind> mapOperations() {
    using M = PgmMapView&;
    using O = const Operation&;
    return {
        {"{map} appears, {size}, at {coordinate}", 40, appear},
        {"{map} is released", 10, release, InCallbacks::often},
        onMap("{map} leaves the window", 4, [](M map, O) { map.removeFromSuperview(); }),
        {"{map} enters the window", 4, enterWindow},
        onMap("{map} takes the size {size}", 15, [](M map, O o) { map.setFrame(frameOf(o)); }),
        onMap(
            "{map} loads {style}", 35, [](M map, O o) { map.mapView()->setStyleURL(o.style(1).address); },
            InCallbacks::often),
        onMap("{map} takes the text of {style}", 15,
              [](M map, O o) { map.mapView()->setStyleJSON(o.style(1).text); }),
        onMap("{map} takes the inset {number}, {number}, {number}", 12, takeInset),
        onMap("{map} shows the location: {mode}", 15,
              [](M map, O o) { map.setUserTrackingMode(*PgmUserTrackingModeFromRaw(o.arguments[1])); }),
        onMap("{map} shows its controls: {flag}", 8, showControls),
        onMap("{map} places its zoom control by {variant}, {number}, {number}", 5, takeControlPlace),
        onMap("{map} allows zooming: {flag}, scrolling: {flag}, slowing down by {number}", 6, allowGestures),
        onMap("{map} shows the location at scale {number} in a circle of {number}, {colour}", 6,
              takeLocationIcon),
        {"on a tap of the location, {map} does: {operation}", 5, whenLocationTapped},
        {"the delegate of {map}, told of {event}, does: {operation}", 35, whenTold},
        onMap("{map} is photographed", 6, [](M map, O) { static_cast<void>(map.snapshot()); }),
    };
}

}  // namespace pelta::random
