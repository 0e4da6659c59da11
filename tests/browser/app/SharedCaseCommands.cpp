#include <algorithm>
#include <cmath>
#include <emscripten/bind.h>
#include <memory>
#include <random>
#include <string>

#include "MapTransform.h"
#include "Stage.h"
#include "shared/SharedCases.h"

// The table of behaviour that all ports share, run step by step.

using emscripten::val;

namespace pelta::browser {

namespace {

std::unique_ptr<shared::SharedScene>& scene() {
    static std::unique_ptr<shared::SharedScene> current;
    return current;
}

val sharedCases() {
    val list = val::array();
    for (const shared::SharedCase& entry : shared::sharedCases()) {
        val description = val::object();
        description.set("name", std::string(entry.name));
        description.set("steps", static_cast<int>(entry.steps.size()));
        list.call<void>("push", description);
    }
    return list;
}

/// Makes the scene anew; the case before is gone.
void beginCase() {
    scene().reset();
    scene() = std::make_unique<shared::SharedScene>(Stage::shared().window());
}

/// Ends the case and answers its failures, one a line.
std::string endCase() {
    std::string failures;
    for (const std::string& failure : scene()->failures()) {
        failures += failure + "\n";
    }
    scene().reset();
    return failures;
}

/// The largest distance, in points, between where random coordinates are drawn and where the common
/// arithmetic has them, with random cameras that the map takes on, at zoom 2 to 20, tilt 0 to 60, any
/// bearing, and any inset.
double largestProjectionError(int map, int count, unsigned seed) {
    MLNMapView& engine = *Stage::shared().map(map).view->mapView();
    const CGSize size = engine.bounds().size;
    std::mt19937 random(seed);
    const auto between = [&random](double low, double high) {
        return low + (high - low) * static_cast<double>(random()) / 4294967296.0;
    };
    double largest = 0;
    for (int i = 0; i < count; ++i) {
        const UIEdgeInsets inset{between(0, 120), between(0, 160), between(0, 120), between(0, 160)};
        const CameraState camera{
            {between(-70, 70), between(-170, 170)}, between(2, 20), between(0, 60), between(0, 360)};
        const MapTransform transform(camera, size, inset);
        const auto coordinate =
            transform.coordinateForPoint({between(0, size.width), between(0, size.height)});
        const CGPoint wanted = transform.pointForCoordinate(coordinate);
        const double altitude =
            MLNAltitudeForZoomLevel(camera.zoom, camera.pitch, camera.center.latitude, size);
        engine.setContentInset(inset);
        engine.setCamera(MLNMapCamera::cameraLookingAtCenterCoordinate(camera.center, altitude, camera.pitch,
                                                                       camera.bearing),
                         false);
        const CGPoint drawn = engine.convertCoordinate(coordinate, nullptr);
        largest = std::max(largest, std::hypot(drawn.x - wanted.x, drawn.y - wanted.y));
    }
    return largest;
}

}  // namespace

}  // namespace pelta::browser

EMSCRIPTEN_BINDINGS(shared_case_commands) {
    using namespace pelta::browser;
    emscripten::function("sharedCases", &sharedCases);
    emscripten::function("beginCase", &beginCase);
    command("runStep", [](std::size_t entry, std::size_t step) {
        pelta::shared::sharedCases()[entry].steps[step](*scene());
    });
    command("caseIdleCount", [] { return scene()->events().idleCount(); });
    emscripten::function("endCase", &endCase);
    emscripten::function("largestProjectionError", &largestProjectionError);
}
