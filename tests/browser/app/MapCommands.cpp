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

/// As `look`, over half a second.
void ease(int map, double latitude, double longitude, double zoom, double tilt, double bearing) {
    const MLNMapCamera camera = MLNMapCamera::cameraLookingAtCenterCoordinate(
        {latitude, longitude}, MLNAltitudeForZoomLevel(zoom, tilt, latitude, view(map).bounds().size), tilt,
        bearing);
    engine(map).setCamera(camera, 0.5, std::nullopt, {});
}

/// An object of names and values.
template <class... Values>
val object(const std::pair<const char*, Values>&... members) {
    val result = val::object();
    (result.set(members.first, members.second), ...);
    return result;
}

val camera(int map) {
    const MLNMapCamera camera = engine(map).camera();
    return object(std::pair("latitude", camera.centerCoordinate.latitude),
                  std::pair("longitude", camera.centerCoordinate.longitude),
                  std::pair("zoom", engine(map).zoomLevel()), std::pair("tilt", camera.pitch),
                  std::pair("bearing", camera.heading));
}

val point(int map, double latitude, double longitude) {
    const CGPoint place = engine(map).convertCoordinate({latitude, longitude}, nullptr);
    return object(std::pair("x", place.x), std::pair("y", place.y));
}

val coordinate(int map, double x, double y) {
    const CLLocationCoordinate2D place = engine(map).convertPoint({x, y}, nullptr);
    return object(std::pair("latitude", place.latitude), std::pair("longitude", place.longitude));
}

val state(int map) {
    const EngineRecorder& seen = recorder(map);
    return object(std::pair("idle", seen.idleCount()), std::pair("frames", seen.frameCount()),
                  std::pair("styles", seen.loadedStyles()), std::pair("failure", seen.failure()),
                  std::pair("location", seen.location()));
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

}  // namespace

}  // namespace pelta::browser

EMSCRIPTEN_BINDINGS(map_commands) {
    using namespace pelta::browser;
    using pelta::CGRect;
    command("openMap", [](double x, double y, double width, double height, std::string style) {
        return Stage::shared().openMap({{x, y}, {width, height}}, style);
    });
    command("closeMap", [](int map) { Stage::shared().closeMap(map); });
    command("setStyle", [](int map, std::string style) { setStyle(view(map), style); });
    command("look", [](int map, double latitude, double longitude, double zoom, double tilt, double bearing) {
        view(map).setCameraPosition(
            pelta::PgmCameraPosition::cameraPosition({latitude, longitude}, zoom, tilt, bearing));
    });
    command("ease", ease);
    command("camera", camera);
    command("point", point);
    command("coordinate", coordinate);
    command("state", state);
    command("takeEvents", [](int map) { return recorder(map).takeEvents(); });
    // Releases the map from inside the next report of a movement.
    command("closeAtNextMove",
            [](int map) { recorder(map).setAtNextMove([map] { Stage::shared().closeMap(map); }); });
    command("setFrame", [](int map, double x, double y, double width, double height) {
        view(map).setFrame({{x, y}, {width, height}});
    });
    command("setInset", [](int map, double top, double left, double bottom, double right) {
        view(map).setContentInset({top, left, bottom, right});
    });
    command("setGestures", setGestures);
    command("setLimits", setLimits);
    command("setDecelerationRate", [](int map, double rate) { view(map).setDecelerationRate(rate); });
}
