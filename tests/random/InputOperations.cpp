/// What comes from outside: fingers, locations, and time.

#include "Kinds.h"

namespace pelta::random {

namespace {

void tap(World& world, const Operation& operation) {
    if (world.window) {
        world.port.tap(*world.window, operation.point(0));
    }
}

void touch(World& world, std::uint32_t finger, UITouchPhase phase, CGPoint place) {
    if (world.window) {
        world.port.touch(*world.window, static_cast<int>(finger), phase, place);
    }
}

void drag(World& world, const Operation& operation) {
    CGPoint place = operation.point(1);
    touch(world, operation.arguments[0], UITouchPhase::began, place);
    for (int i = 0; world.window && i < 6; ++i) {
        constexpr double frame = 1.0 / 60;
        world.port.advance(frame);
        place = {place.x + 12, place.y + operation.number(2) / 10};
        touch(world, operation.arguments[0], UITouchPhase::moved, place);
    }
    touch(world, operation.arguments[0], UITouchPhase::ended, place);
}

void reportLocation(World& world, const Operation& operation) {
    world.port.reportLocation(
        {.coordinate = operation.coordinate(0), .horizontalAccuracy = operation.number(1)});
}

void changeScale(World& world, const Operation& operation) {
    // A thousand pixels a point is no screen's, and only asks for gigabytes.
    constexpr double most = 4;
    const double scale = operation.number(0);
    world.port.setScreenScale(scale > most ? most : scale);
}

}  // namespace

std::vector<OperationKind> inputOperations() {
    using W = World&;
    using O = const Operation&;
    return {
        {"a tap at {place}", 45, tap, InCallbacks::never},
        {"{finger} {phase} at {place}", 50,
         [](W world, O o) {
             touch(world, o.arguments[0], static_cast<UITouchPhase>(o.arguments[1]), o.point(2));
         }},
        {"{finger} drags from {place} by {number}", 12, drag, InCallbacks::never},
        {"the location is {coordinate} within {number} m", 15, reportLocation},
        {"the heading is {number}, {number}", 5,
         [](W world, O o) {
             world.port.reportHeading({o.number(0), o.number(1)});
         }},
        {"the location is not known: {text}", 3,
         [](W world, O o) { world.port.reportLocationFailure(CLLocationFailure::denied, o.text(0)); }},
        {"{seconds} pass", 70, [](W world, O o) { world.port.advance(o.duration(0)); }},
        {"a frame is drawn", 25, [](W world, O) { world.port.runFrame(); }},
        {"everything settles", 45, [](W world, O) { world.settle(); }, InCallbacks::never},
        {"the screen takes the scale {number}", 4, changeScale},
    };
}

}  // namespace pelta::random
