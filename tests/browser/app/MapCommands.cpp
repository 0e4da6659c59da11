#include <emscripten/bind.h>
#include <string>

#include "Stage.h"

// What the tests can ask of the maps of the page.

using emscripten::val;

namespace pelta::browser {

namespace {

PgmMapView& view(int map) {
    return *Stage::shared().map(map).view;
}

MLNMapView& engine(int map) {
    return *view(map).mapView();
}

EngineRecorder& recorder(int map) {
    return *Stage::shared().map(map).recorder;
}

int openMap(double x, double y, double width, double height, const std::string& style) {
    return Stage::shared().openMap({{x, y}, {width, height}}, style);
}

void setStyle(int map, const std::string& style) {
    if (Stage::isDocument(style)) {
        view(map).setStyleJSON(style);
    } else {
        view(map).setStyleURL(style);
    }
}

void look(int map, double latitude, double longitude, double zoom, double tilt, double bearing) {
    view(map).setCameraPosition(
        PgmCameraPosition::cameraPosition({latitude, longitude}, zoom, tilt, bearing));
}

/// As `look`, over half a second.
void ease(int map, double latitude, double longitude, double zoom, double tilt, double bearing) {
    const MLNMapCamera camera = MLNMapCamera::cameraLookingAtCenterCoordinate(
        {latitude, longitude}, MLNAltitudeForZoomLevel(zoom, tilt, latitude, view(map).bounds().size), tilt,
        bearing);
    engine(map).setCamera(camera, 0.5, std::nullopt, {});
}

val camera(int map) {
    const MLNMapCamera camera = engine(map).camera();
    val result = val::object();
    result.set("latitude", camera.centerCoordinate.latitude);
    result.set("longitude", camera.centerCoordinate.longitude);
    result.set("zoom", engine(map).zoomLevel());
    result.set("tilt", camera.pitch);
    result.set("bearing", camera.heading);
    return result;
}

val point(int map, double latitude, double longitude) {
    const CGPoint place = engine(map).convertCoordinate({latitude, longitude}, nullptr);
    val result = val::object();
    result.set("x", place.x);
    result.set("y", place.y);
    return result;
}

val coordinate(int map, double x, double y) {
    const CLLocationCoordinate2D place = engine(map).convertPoint({x, y}, nullptr);
    val result = val::object();
    result.set("latitude", place.latitude);
    result.set("longitude", place.longitude);
    return result;
}

val state(int map) {
    const EngineRecorder& seen = recorder(map);
    val result = val::object();
    result.set("idle", seen.idleCount());
    result.set("frames", seen.frameCount());
    result.set("styles", seen.loadedStyles());
    result.set("failure", seen.failure());
    result.set("location", seen.location());
    return result;
}

std::string takeEvents(int map) {
    return recorder(map).takeEvents();
}

/// Releases the map from inside the next report of a movement.
void closeAtNextMove(int map) {
    recorder(map).setAtNextMove([map] { Stage::shared().closeMap(map); });
}

void setFrame(int map, double x, double y, double width, double height) {
    view(map).setFrame({{x, y}, {width, height}});
}

void setInset(int map, double top, double left, double bottom, double right) {
    view(map).setContentInset({top, left, bottom, right});
}

void setGestures(int map, bool zoom, bool scroll, bool rotate, bool tilt) {
    view(map).setIsZoomGesturesEnabled(zoom);
    view(map).setIsScrollGesturesEnabled(scroll);
    view(map).setIsRotateGesturesEnabled(rotate);
    view(map).setIsTiltGesturesEnabled(tilt);
}

void setLimits(int map, double minimumZoom, double maximumZoom, double maximumTilt) {
    view(map).setMinimumZoomLevel(minimumZoom);
    view(map).setMaximumZoomLevel(maximumZoom);
    view(map).setMaximumTilt(maximumTilt);
}

void setDecelerationRate(int map, double rate) {
    view(map).setDecelerationRate(rate);
}

}  // namespace

}  // namespace pelta::browser

EMSCRIPTEN_BINDINGS(map_commands) {
    using namespace pelta::browser;
    emscripten::function("openMap", &openMap);
    emscripten::function("closeMap",
                         emscripten::optional_override([](int map) { Stage::shared().closeMap(map); }));
    emscripten::function("setStyle", &setStyle);
    emscripten::function("look", &look);
    emscripten::function("ease", &ease);
    emscripten::function("camera", &camera);
    emscripten::function("point", &point);
    emscripten::function("coordinate", &coordinate);
    emscripten::function("state", &state);
    emscripten::function("takeEvents", &takeEvents);
    emscripten::function("closeAtNextMove", &closeAtNextMove);
    emscripten::function("setFrame", &setFrame);
    emscripten::function("setInset", &setInset);
    emscripten::function("setGestures", &setGestures);
    emscripten::function("setLimits", &setLimits);
    emscripten::function("setDecelerationRate", &setDecelerationRate);
}
