#include <algorithm>
#include <cmath>
#include <memory>

#include "SharedCases.h"

namespace pelta::shared {

namespace {

const std::string jump = "will(developer) changing(developer) did(developer)";
const std::string animation = "will-animated(developer) changing(developer) did-animated(developer)";

PgmCameraUpdate::Ptr updateTo(CLLocationCoordinate2D target, PgmCameraUpdateAnimation kind, double duration) {
    auto update = PgmCameraUpdate::cameraUpdateTargetTo(target);
    update->setAnimation(kind);
    update->setAnimationDuration(duration);
    return update;
}

/// Counts the runs of the completions that it makes.
class Completions {
 public:
    [[nodiscard]] std::function<void()> make() const {
        return [count = count_] { ++*count; };
    }
    [[nodiscard]] int count() const { return *count_; }

 private:
    std::shared_ptr<int> count_ = std::make_shared<int>(0);
};

void jumpsWithinTheCall(SharedScene& scene) {
    Completions completions;
    scene.map()->moveCamera(updateTo({1, 2}, PgmCameraUpdateAnimation::none, 5), completions.make());
    scene.expectEqual(scene.events().take(), jump, "before the call returns");
    scene.expect(completions.count() == 1, "the completion has run");
    scene.map()->moveCamera(updateTo({3, 4}, PgmCameraUpdateAnimation::linear, 0));
    scene.expectEqual(scene.events().take(), jump, "an animation of no duration");
    scene.look({5, 6}, 9);
    scene.expectEqual(scene.events().take(), jump, "a camera that is set");
    scene.map()->setZoomLevel(8);
    scene.expectEqual(scene.events().take(), jump, "a zoom level that is set");
    scene.map()->setMaximumZoomLevel(6);
    scene.expectEqual(scene.events().take(), jump, "a limit that moves the camera");
}

SharedCase animationCase(std::string_view name, PgmCameraUpdateAnimation kind) {
    const auto completions = std::make_shared<Completions>();
    return {name,
            {[=](SharedScene& scene) {
                 scene.map()->moveCamera(updateTo({1, 1}, kind, 0.2), completions->make());
                 scene.expect(completions->count() == 0, "the completion waits for the end");
             },
             [=](SharedScene& scene) {
                 scene.expectEqual(scene.events().take(), animation, "one change");
                 scene.expectCamera({1, 1}, 10, 0, 0, "at its end");
                 scene.expect(completions->count() == 1, "the completion has run once");
             }}};
}

/// The second move ends the first one, which still reports its end.
SharedCase interruptionCase(std::string_view name, PgmCameraUpdateAnimation second,
                            const std::string& secondEvents) {
    const auto completions = std::make_shared<Completions>();
    return {name,
            {[=](SharedScene& scene) {
                 scene.map()->moveCamera(updateTo({1, 1}, PgmCameraUpdateAnimation::linear, 60),
                                         completions->make());
                 scene.map()->moveCamera(updateTo({0, 2}, second, 0.2), completions->make());
                 scene.expect(completions->count() >= 1, "the first completion has run");
             },
             [=](SharedScene& scene) {
                 scene.expectEqual(scene.events().take(), animation + " " + secondEvents, "both changes");
                 scene.expectCamera({0, 2}, 10, 0, 0, "where the second one leads");
                 scene.expect(completions->count() == 2, "each completion has run once");
             }}};
}

SharedCase lastStepCase() {
    const auto last = std::make_shared<CLLocationCoordinate2D>();
    const auto steps = std::make_shared<int>(0);
    return {"events_last_step_has_the_final_camera",
            {[=](SharedScene& scene) {
                 scene.events().setListener([=](PgmMapView& map, std::string_view event) {
                     if (event == "changing(developer)") {
                         *last = map.cameraPosition()->target();
                         ++*steps;
                     }
                 });
                 scene.map()->moveCamera(updateTo({0.5, 0.25}, PgmCameraUpdateAnimation::easeIn, 0.3));
             },
             [=](SharedScene& scene) {
                 scene.expect(*steps > 1, "an animation has several steps");
                 scene.expectNear(*last, {0.5, 0.25}, 1e-9, "the last one");
             }}};
}

SharedCase antimeridianCase() {
    const auto furthest = std::make_shared<double>(180);
    return {"events_shortest_way_over_the_antimeridian",
            {[](SharedScene& scene) {
                 scene.look({0, 179}, 10);
             },
             [=](SharedScene& scene) {
                 scene.events().setListener([=](PgmMapView& map, std::string_view) {
                     *furthest = std::min(*furthest, std::abs(map.cameraPosition()->target().longitude));
                 });
                 scene.map()->moveCamera(updateTo({0, -179}, PgmCameraUpdateAnimation::linear, 0.2));
             },
             [=](SharedScene& scene) {
                 scene.expectCamera({0, -179}, 10, 0, 0, "on the other side");
                 scene.expect(*furthest > 178.999, "never away from the antimeridian");
             }}};
}

SharedCase resetNorthCase() {
    return {"events_reset_north_by_control",
            {[](SharedScene& scene) {
                 scene.look({0, 0}, 10, 30, 100);
                 static_cast<void>(scene.events().take());
                 scene.engine().resetNorth();
             },
             [](SharedScene& scene) {
                 scene.expectEqual(scene.events().take(),
                                   "will-animated(control) changing(control) did-animated(control)", "reset");
                 scene.expectCamera({0, 0}, 10, 30, 0, "north up");
             }}};
}

SharedCase idleCase() {
    const auto before = std::make_shared<int>(0);
    return {"events_idle_once_for_each_rest",
            {[=](SharedScene& scene) {
                 *before = scene.events().idleCount();
                 scene.expect(*before > 0, "idle once the style has loaded");
                 scene.look({1, 1}, 9);
                 scene.look({1, 2}, 8);
                 scene.expect(scene.events().idleCount() == *before, "never within a call");
             },
             [=](SharedScene& scene) {
                 scene.expect(scene.events().idleCount() == *before + 1, "once after two moves");
                 scene.map()->moveCamera(updateTo({1, 1}, PgmCameraUpdateAnimation::fly, 0.2));
             },
             [=](SharedScene& scene) {
                 scene.expect(scene.events().idleCount() == *before + 2, "once after an animation");
             }}};
}

SharedCase commandInEventCase() {
    return {"events_commands_within_events",
            {[](SharedScene& scene) {
                 scene.events().setListener([](PgmMapView& map, std::string_view event) {
                     if (event == "did-animated(developer)") {
                         map.moveCamera(updateTo({2, 2}, PgmCameraUpdateAnimation::none, 0));
                     }
                 });
                 scene.map()->moveCamera(updateTo({1, 1}, PgmCameraUpdateAnimation::easeOut, 0.1));
             },
             [](SharedScene& scene) {
                 scene.expectEqual(scene.events().take(), animation + " " + jump, "one after the other");
                 scene.expectCamera({2, 2}, 10, 0, 0, "where the event led");
             }}};
}

}  // namespace

std::vector<SharedCase> eventCases() {
    using Kind = PgmCameraUpdateAnimation;
    return {{"events_jump_within_the_call", {jumpsWithinTheCall}},
            animationCase("events_linear", Kind::linear),
            animationCase("events_ease_in", Kind::easeIn),
            animationCase("events_ease_out", Kind::easeOut),
            animationCase("events_fly", Kind::fly),
            interruptionCase("events_animation_interrupts", Kind::easeOut, animation),
            interruptionCase("events_flight_interrupts", Kind::fly, animation),
            interruptionCase("events_jump_interrupts", Kind::none, jump),
            lastStepCase(),
            antimeridianCase(),
            resetNorthCase(),
            idleCase(),
            commandInEventCase()};
}

}  // namespace pelta::shared
