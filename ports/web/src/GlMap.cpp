#include "GlMap.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <emscripten.h>

#include <pelta/Platform/Log.h>

#include "JsonWriter.h"

using emscripten::val;

// clang-format off
// A call that the engine refuses must not take the frame's other calls with it. The calls go to the style itself,
// where they can leave out the check that takes as long as the style is large, for each layer anew.
EM_JS(void, peltaRunCalls, (emscripten::EM_VAL handle, const char* text), {
    const map = Emval.toValue(handle);
    JSON.parse(UTF8ToString(text)).forEach(([source, method, ...values]) => {
        try {
            (source === null ? map.style : map.getSource(source))[method](...values);
        } catch (error) {
            console.error(error);
        }
    });
    map._update(true);
});

// The engine judges a document only on taking it over, when the present style has gone. So it is handed to a style
// that has just what the judging needs, which comes first, and nothing to change.
EM_JS(emscripten::EM_VAL, peltaFaults, (emscripten::EM_VAL engine, emscripten::EM_VAL handle), {
    const style = Emval.toValue(handle);
    const faults = [];
    const judge = {
        _checkLoaded() {},
        serialize: () => style,
        _getOperationsToPerform: () => ({ operations: [], unimplemented: [] }),
        fire: ({ error }) => faults.push(error.message),
    };
    try {
        Emval.toValue(engine).Style.prototype.setState.call(judge, style);
    } catch (error) {
        faults.push(String(error));
    }
    return Emval.toHandle(faults);
});

EM_JS(void, peltaProject, (emscripten::EM_VAL handle, double longitude, double latitude, double* result), {
    const point = Emval.toValue(handle).project([longitude, latitude]);
    HEAPF64.set([point.x, point.y], result >> 3);
});

EM_JS(void, peltaUnproject, (emscripten::EM_VAL handle, double x, double y, double* result), {
    const place = Emval.toValue(handle).unproject([x, y]);
    HEAPF64.set([place.lng, place.lat], result >> 3);
});

// The hits as numbers in turn: index of the layer among those asked, identifier of the feature.
EM_JS(emscripten::EM_VAL, peltaQuery, (emscripten::EM_VAL handle, const double* corners, const char* names), {
    const [left, top, right, bottom] = HEAPF64.subarray(corners >> 3, (corners >> 3) + 4);
    const layers = JSON.parse(UTF8ToString(names));
    const places = new Map(layers.map((name, place) => [name, place]));
    const hits = Emval.toValue(handle).queryRenderedFeatures([[left, top], [right, bottom]], { layers });
    return Emval.toHandle(hits.flatMap(({ id, layer }) => typeof id === 'number' ? [places.get(layer.id), id] : []));
});
// clang-format on

namespace pelta {

namespace {

double wrap(double value, double low, double range) {
    const double offset = std::fmod(value - low, range);
    return low + (offset < 0 ? offset + range : offset);
}

/// A style document without anything in it.
val emptyStyle() {
    return val::global("JSON").call<val>("parse", std::string(R"({"version":8,"sources":{},"layers":[]})"));
}

val position(CLLocationCoordinate2D coordinate) {
    val pair = val::array();
    pair.call<void>("push", coordinate.longitude, coordinate.latitude);
    return pair;
}

val module() {
    val engine = val::module_property("maplibregl");
    if (engine.isUndefined()) {
        fatalError("The page must hand MapLibre GL JS to the application as its module's `maplibregl`.");
    }
    return engine;
}

}  // namespace

GlMap::GlMap(const val& element, double screenScale, const val& constrain) : map_(val::undefined()) {
    val options = val::object();
    options.set("container", element);
    options.set("style", emptyStyle());
    options.set("transformConstrain", constrain);
    options.set("pixelRatio", screenScale);
    // The widest limits; narrower ones are the map view's, through `transformConstrain`.
    options.set("minZoom", 0);
    options.set("maxZoom", 24);
    options.set("maxPitch", 85);
    options.set("attributionControl", false);
    options.set("trackResize", false);
    options.set("bearingSnap", 0);
    map_ = module()["Map"].new_(options);
}

void GlMap::on(const char* event, const val& listener) const {
    map_.call<void>("on", std::string(event), listener);
}

bool GlMap::isMoving() const {
    return map_.call<bool>("isMoving");
}

void GlMap::jumpTo(const CameraState& camera, UIEdgeInsets inset) const {
    val padding = val::object();
    padding.set("top", inset.top);
    padding.set("left", inset.left);
    padding.set("bottom", inset.bottom);
    padding.set("right", inset.right);
    val options = val::object();
    options.set("center", position(camera.center));
    options.set("zoom", camera.zoom);
    options.set("pitch", camera.pitch);
    options.set("bearing", camera.bearing);
    options.set("padding", padding);
    map_.call<void>("jumpTo", options);
}

CameraState GlMap::camera() const {
    const val center = map_.call<val>("getCenter");
    return {{center["lat"].as<double>(), wrap(center["lng"].as<double>(), -180, 360)},
            map_.call<double>("getZoom"),
            map_.call<double>("getPitch"),
            wrap(map_.call<double>("getBearing"), 0, 360)};
}

CGPoint GlMap::project(CLLocationCoordinate2D coordinate) const {
    std::array<double, 2> point{};
    peltaProject(map_.as_handle(), coordinate.longitude, coordinate.latitude, point.data());
    return {point[0], point[1]};
}

CLLocationCoordinate2D GlMap::unproject(CGPoint point) const {
    std::array<double, 2> place{};
    peltaUnproject(map_.as_handle(), point.x, point.y, place.data());
    return {place[1], place[0]};
}

void GlMap::setStyle(const val& document) const {
    val options = val::object();
    options.set("diff", false);
    options.set("validate", false);
    map_.call<void>("setStyle", document, options);
}

void GlMap::run(const std::string& calls) const {
    peltaRunCalls(map_.as_handle(), calls.c_str());
}

std::vector<EngineHit> GlMap::query(CGRect rect, const std::vector<std::string>& layers) const {
    JsonWriter names;
    names.beginArray();
    for (const std::string& layer : layers) {
        names.value(layer);
    }
    names.endArray();
    const std::array<double, 4> corners{
        std::min(rect.minX(), rect.maxX()), std::min(rect.minY(), rect.maxY()),
        std::max(rect.minX(), rect.maxX()), std::max(rect.minY(), rect.maxY())};
    const val found = val::take_ownership(peltaQuery(map_.as_handle(), corners.data(), names.text().c_str()));
    const auto numbers = emscripten::convertJSArrayToNumberVector<std::uint32_t>(found);
    std::vector<EngineHit> hits;
    for (std::size_t i = 0; i + 1 < numbers.size(); i += 2) {
        hits.push_back({numbers[i], numbers[i + 1]});
    }
    return hits;
}

std::optional<std::string> GlMap::faultOf(const val& document) {
    const val faults = val::take_ownership(peltaFaults(module().as_handle(), document.as_handle()));
    const val first = faults[0];
    return first.isUndefined() ? std::nullopt : std::optional(first.as<std::string>());
}

}  // namespace pelta
