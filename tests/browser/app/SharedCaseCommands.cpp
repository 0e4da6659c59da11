#include <emscripten/bind.h>
#include <memory>
#include <string>

#include "Stage.h"
#include "shared/ProjectionSamples.h"
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

/// The largest distance, in points, between where the samples are drawn and where they are expected, of those
/// samples whose view has the size of the map; the map takes on each sample's camera.
double largestProjectionError(int map, int count, double seed) {
    MLNMapView& engine = *Stage::shared().map(map).view->mapView();
    double largest = 0;
    for (const auto& sample :
         shared::projectionSamples(static_cast<std::size_t>(count), static_cast<std::uint32_t>(seed))) {
        engine.setFrame({{}, sample.size});
        engine.setContentInset(sample.inset);
        engine.setCamera(MLNMapCamera::cameraLookingAtCenterCoordinate(
                             sample.camera.center,
                             MLNAltitudeForZoomLevel(sample.camera.zoom, sample.camera.pitch,
                                                     sample.camera.center.latitude, sample.size),
                             sample.camera.pitch, sample.camera.bearing),
                         false);
        const CGPoint drawn = engine.convertCoordinate(sample.coordinate, nullptr);
        largest = std::max(largest, std::hypot(drawn.x - sample.point.x, drawn.y - sample.point.y));
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
