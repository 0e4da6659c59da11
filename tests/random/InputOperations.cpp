/// What comes from outside: fingers, locations, and time.

#include <array>

#include "Arguments.h"

namespace pelta::random {

namespace {

void tap(World& world, const Operation& operation) {
    if (world.window) {
        world.port.tap(*world.window, placeAt(operation, 0));
    }
}

void touch(World& world, const Operation& operation) {
    if (world.window) {
        world.port.touch(*world.window, static_cast<int>(operation.arguments[0]),
                         static_cast<UITouchPhase>(operation.arguments[1]), placeAt(operation, 2));
    }
}

void drag(World& world, const Operation& operation) {
    if (!world.window) {
        return;
    }
    const int finger = static_cast<int>(operation.arguments[0]);
    CGPoint place = placeAt(operation, 1);
    world.port.touch(*world.window, finger, UITouchPhase::began, place);
    constexpr int steps = 6;
    for (int i = 0; i < steps; ++i) {
        constexpr double frame = 1.0 / 60;
        world.port.advance(frame);
        place = {place.x + 12, place.y + numberAt(operation, 2) / 10};
        world.port.touch(*world.window, finger, UITouchPhase::moved, place);
    }
    world.port.touch(*world.window, finger, UITouchPhase::ended, place);
}

void reportLocation(World& world, const Operation& operation) {
    CLLocation location;
    location.coordinate = coordinateAt(operation, 0);
    location.horizontalAccuracy = numberAt(operation, 1);
    world.port.reportLocation(location);
}

void reportHeading(World& world, const Operation& operation) {
    world.port.reportHeading({numberAt(operation, 0), numberAt(operation, 1)});
}

void reportFailure(World& world, const Operation& operation) {
    world.port.reportLocationFailure(CLLocationFailure::denied, textAt(operation, 0));
}

void pass(World& world, const Operation& operation) {
    world.port.advance(seconds()[operation.arguments[0]].value);
}

void drawFrame(World& world, const Operation& /*operation*/) {
    world.port.runFrame();
}

void settle(World& world, const Operation& /*operation*/) {
    world.settle();
}

void changeScale(World& world, const Operation& operation) {
    // A thousand pixels a point is no screen's, and only asks for gigabytes.
    constexpr double most = 4;
    const double scale = numberAt(operation, 0);
    world.port.setScreenScale(scale > most ? most : scale);
}

constexpr std::array kinds{
    OperationKind{"a tap at {place}", 45, tap, InCallbacks::never},
    OperationKind{"{finger} {phase} at {place}", 50, touch},
    OperationKind{"{finger} drags from {place} by {number}", 12, drag, InCallbacks::never},
    OperationKind{"the location is {coordinate} within {number} m", 15, reportLocation},
    OperationKind{"the heading is {number}, {number}", 5, reportHeading},
    OperationKind{"the location is not known: {text}", 3, reportFailure},
    OperationKind{"{seconds} pass", 70, pass},
    OperationKind{"a frame is drawn", 25, drawFrame},
    OperationKind{"everything settles", 45, settle, InCallbacks::never},
    OperationKind{"the screen takes the scale {number}", 4, changeScale},
};

}  // namespace

std::span<const OperationKind> inputOperations() {
    return kinds;
}

}  // namespace pelta::random
