/// Maps that come and go, their styles, sizes and settings.

#include <array>

#include "Arguments.h"

namespace pelta::random {

namespace {

CGRect frameOf(std::uint32_t slot, CGSize size) {
    constexpr double rowHeight = 200;
    return {{0, rowHeight * slot}, size};
}

void appear(World& world, const Operation& operation) {
    const std::uint32_t slot = operation.arguments[0];
    World::MapSlot& map = world.maps[slot];
    if (map.view || !world.window) {
        return;
    }
    map.listener = std::make_shared<MapListener>();
    auto options = PgmMapOptions::create(PgmCameraPosition::cameraPosition(coordinateAt(operation, 2), 10));
    map.view = PgmMapView::create(frameOf(slot, sizeAt(operation, 1)), options, map.listener);
    world.window->addSubview(map.view);
    const std::string name = "map " + std::to_string(slot);
    world.track(name, map.view);
    world.track("the engine of " + name, map.view->mapView());
    world.track("the listener of " + name, map.listener);
}

void release(World& world, const Operation& operation) {
    World::MapSlot& map = world.maps[operation.arguments[0]];
    const World::MapSlot released = std::exchange(map, {});
    if (released.view) {
        released.view->removeFromSuperview();
    }
}

void leaveWindow(PgmMapView& map, const Operation& /*operation*/) {
    map.removeFromSuperview();
}

void enterWindow(World& world, const Operation& operation) {
    const auto map = mapAt(world, operation, 0);
    if (map && world.window && !map->superview()) {
        world.window->addSubview(map);
    }
}

void takeSize(PgmMapView& map, const Operation& operation) {
    map.setFrame(frameOf(operation.arguments[0], sizeAt(operation, 1)));
}

void loadStyle(PgmMapView& map, const Operation& operation) {
    map.mapView()->setStyleURL(styles()[operation.arguments[1]].value.address);
}

void takeStyleText(PgmMapView& map, const Operation& operation) {
    map.mapView()->setStyleJSON(styles()[operation.arguments[1]].value.text);
}

void takeInset(PgmMapView& map, const Operation& operation) {
    map.setContentInset({numberAt(operation, 1), 0, numberAt(operation, 2), numberAt(operation, 3)});
}

void takeMode(PgmMapView& map, const Operation& operation) {
    map.setUserTrackingMode(*PgmUserTrackingModeFromRaw(operation.arguments[1]));
}

void showControls(PgmMapView& map, const Operation& operation) {
    const bool isShown = flagAt(operation, 1);
    map.setIsZoomControlVisible(isShown);
    map.setIsLocationButtonVisible(isShown);
    map.setIsScaleBarVisible(isShown);
    map.setIsLogoVisible(isShown);
}

void takeControlPlace(PgmMapView& map, const Operation& operation) {
    constexpr unsigned positions = 5;
    map.setZoomViewPosition(*PgmPositionFromRaw(operation.arguments[1] % positions));
    map.setZoomViewMargins({numberAt(operation, 2), numberAt(operation, 3)});
}

void allowGestures(PgmMapView& map, const Operation& operation) {
    map.setIsZoomGesturesEnabled(flagAt(operation, 1));
    map.setIsScrollGesturesEnabled(flagAt(operation, 2));
    map.setDecelerationRate(numberAt(operation, 3));
}

void takeLocationIcon(PgmMapView& map, const Operation& operation) {
    map.locationIcon()->setScale(numberAt(operation, 1));
    map.locationIcon()->setCircleRadius(numberAt(operation, 2));
    map.locationIcon()->setCircleColor(colourAt(operation, 3));
}

void whenLocationTapped(World& world, const Operation& operation) {
    if (const auto map = mapAt(world, operation, 0)) {
        map->locationIcon()->setTouchEvent(world.action(operation));
    }
}

void whenTold(World& world, const Operation& operation) {
    if (const auto& listener = world.maps[operation.arguments[0]].listener) {
        listener->actions[operation.arguments[1]] = world.action(operation);
    }
}

void photograph(PgmMapView& map, const Operation& /*operation*/) {
    static_cast<void>(map.snapshot());
}

constexpr std::array kinds{
    OperationKind{"{map} appears, {size}, at {coordinate}", 40, appear},
    OperationKind{"{map} is released", 10, release, InCallbacks::often},
    OperationKind{"{map} leaves the window", 4, onMap<leaveWindow>},
    OperationKind{"{map} enters the window", 4, enterWindow},
    OperationKind{"{map} takes the size {size}", 15, onMap<takeSize>},
    OperationKind{"{map} loads {style}", 35, onMap<loadStyle>, InCallbacks::often},
    OperationKind{"{map} takes the text of {style}", 15, onMap<takeStyleText>},
    OperationKind{"{map} takes the inset {number}, {number}, {number}", 12, onMap<takeInset>},
    OperationKind{"{map} shows the location: {mode}", 15, onMap<takeMode>},
    OperationKind{"{map} shows its controls: {flag}", 8, onMap<showControls>},
    OperationKind{"{map} places its zoom control by {variant}, {number}, {number}", 5,
                  onMap<takeControlPlace>},
    OperationKind{"{map} allows zooming: {flag}, scrolling: {flag}, slowing down by {number}", 6,
                  onMap<allowGestures>},
    OperationKind{"{map} shows the location at scale {number} in a circle of {number}, {colour}", 6,
                  onMap<takeLocationIcon>},
    OperationKind{"on a tap of the location, {map} does: {operation}", 5, whenLocationTapped},
    OperationKind{"the delegate of {map}, told of {event}, does: {operation}", 35, whenTold},
    OperationKind{"{map} is photographed", 6, onMap<photograph>},
};

}  // namespace

std::span<const OperationKind> mapOperations() {
    return kinds;
}

}  // namespace pelta::random
