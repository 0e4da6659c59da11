#include <algorithm>
#include <cstdint>
#include <emscripten/bind.h>
#include <string>
#include <type_traits>
#include <vector>

#include <pelta/web/CheckingMode.h>

#include "Stage.h"

// The shapes that the tests put on the maps, described by plain objects.

using emscripten::val;

namespace pelta::browser {

namespace {

double number(const val& object, const char* name, double missing) {
    const val value = object[name];
    return value.isUndefined() ? missing : value.as<double>();
}

CLLocationCoordinate2D coordinate(const val& pair) {
    return {pair[0].as<double>(), pair[1].as<double>()};
}

std::vector<CLLocationCoordinate2D> coordinates(const val& list) {
    std::vector<CLLocationCoordinate2D> result;
    for (const val& pair : emscripten::vecFromJSArray<val>(list)) {
        result.push_back(coordinate(pair));
    }
    return result;
}

std::vector<PgmPolygon::Ring> rings(const val& list) {
    std::vector<PgmPolygon::Ring> result;
    for (const val& ring : emscripten::vecFromJSArray<val>(list)) {
        result.push_back(coordinates(ring));
    }
    return result;
}

/// [red, green, blue, alpha], 0 to 255 but for alpha, 0 to 1.
UIColor color(const val& list) {
    const auto parts = emscripten::convertJSArrayToNumberVector<double>(list);
    return {parts[0] / 255, parts[1] / 255, parts[2] / 255, parts.size() > 3 ? parts[3] : 1};
}

/// Calls a setter of a shape with an option that is given.
template <class Shape, class Value>
void given(const val& options, const char* name, Shape& shape, void (Shape::*set)(Value)) {
    const val value = options[name];
    if (value.isUndefined()) {
        return;
    }
    if constexpr (std::is_same_v<std::decay_t<Value>, UIColor>) {
        (shape.*set)(color(value));
    } else if constexpr (std::is_same_v<Value, std::int64_t>) {
        (shape.*set)(static_cast<std::int64_t>(value.as<double>()));
    } else {
        (shape.*set)(value.as<std::decay_t<Value>>());
    }
}

/// Changes what the options name and leaves the rest.
void setOptions(PgmShape& shape, const val& options) {
    given(options, "zIndex", shape, &PgmShape::setZIndex);
    given(options, "globalZIndex", shape, &PgmShape::setGlobalZIndex);
    given(options, "minZoom", shape, &PgmShape::setVisibleMinZoom);
    given(options, "maxZoom", shape, &PgmShape::setVisibleMaxZoom);
    given(options, "visible", shape, &PgmShape::setIsVisible);
    if (auto* marker = dynamic_cast<PgmMarker*>(&shape)) {
        if (const val at = options["at"]; !at.isUndefined()) {
            marker->setPosition(coordinate(at));
        }
        given(options, "alpha", *marker, &PgmMarker::setAlpha);
        given(options, "angle", *marker, &PgmMarker::setAngle);
        given(options, "iconScale", *marker, &PgmMarker::setIconScale);
        given(options, "titleColor", *marker, &PgmMarker::setTitleColor);
        given(options, "titleHaloColor", *marker, &PgmMarker::setTitleHaloColor);
        given(options, "titleSize", *marker, &PgmMarker::setTitleSize);
        given(options, "title", *marker, &PgmMarker::setTitle);
    } else if (auto* line = dynamic_cast<PgmPolyline*>(&shape)) {
        given(options, "width", *line, &PgmPolyline::setWidth);
        given(options, "color", *line, &PgmPolyline::setColor);
    } else if (auto* area = dynamic_cast<PgmAreaShape*>(&shape)) {
        given(options, "fill", *area, &PgmAreaShape::setFillColor);
        given(options, "stroke", *area, &PgmAreaShape::setStrokeColor);
        given(options, "strokeWidth", *area, &PgmAreaShape::setStrokeWidth);
        if (const val holes = options["holes"]; !holes.isUndefined()) {
            dynamic_cast<PgmPolygon&>(*area).setHoles(rings(holes));
        }
    }
}

int show(const std::shared_ptr<PgmShape>& shape, const val& options) {
    setOptions(*shape, options);
    shape->setMapView(Stage::shared().map(static_cast<int>(number(options, "map", 0))).view);
    return Stage::shared().addShape(shape);
}

/// A picture of one colour with a spot of another, 3 points wide, around the anchor.
std::shared_ptr<PgmImage> spotPicture(const val& options, CGPoint anchor) {
    const int scale = static_cast<int>(number(options, "pictureScale", UIScreen::scale()));
    const int width = static_cast<int>(number(options, "width", 24)) * scale;
    const int height = static_cast<int>(number(options, "height", 24)) * scale;
    const UIColor base = options["color"].isUndefined() ? UIColor{0, 0, 1, 1} : color(options["color"]);
    const UIColor spot = options["spot"].isUndefined() ? UIColor{1, 0, 0, 1} : color(options["spot"]);
    std::vector<std::uint8_t> pixels;
    const auto byte = [](double part) { return static_cast<std::uint8_t>(part * 255); };
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const bool isSpot = std::abs(x + 0.5 - anchor.x * width) <= 1.5 * scale &&
                                std::abs(y + 0.5 - anchor.y * height) <= 1.5 * scale;
            const UIColor& paint = isSpot ? spot : base;
            pixels.insert(pixels.end(), {byte(paint.red), byte(paint.green), byte(paint.blue), 255});
        }
    }
    return PgmImage::imageWith(*UIImage::fromPixels(width, height, scale, std::move(pixels)));
}

int addMarker(const val& options) {
    const auto marker = PgmMarker::create();
    const val given = options["anchor"];
    const CGPoint anchor =
        given.isUndefined() ? CGPoint{0.5, 1} : CGPoint{given[0].as<double>(), given[1].as<double>()};
    marker->setAnchor(anchor);
    if (!options["width"].isUndefined()) {
        marker->setIconImage(spotPicture(options, anchor));
    }
    return show(marker, options);
}

int addPolyline(const val& options) {
    const auto line = PgmPolyline::create(coordinates(options["through"]));
    if (!options["pattern"].isUndefined()) {
        line->setPattern(emscripten::convertJSArrayToNumberVector<double>(options["pattern"]));
    }
    return show(line, options);
}

int addPolygon(const val& options) {
    return show(PgmPolygon::create(coordinates(options["ring"])), options);
}

int addCircle(const val& options) {
    return show(PgmCircle::create(coordinate(options["at"]), number(options, "radius", 1000)), options);
}

/// The numbers of the shapes found in a rectangle of a map, topmost first, each once.
val shapesIn(int map, double left, double top, double right, double bottom) {
    std::vector<int> numbers;
    const auto& engine = *Stage::shared().map(map).view->mapView();
    for (const auto& feature :
         engine.visibleFeaturesInRect({{left, top}, {right - left, bottom - top}}, {})) {
        const auto* index = feature->attribute("shapeIndex");
        const int number = Stage::shared().numberOfShape(index ? std::get<std::uint64_t>(*index) : 0);
        if (std::find(numbers.begin(), numbers.end(), number) == numbers.end()) {
            numbers.push_back(number);
        }
    }
    return val::array(numbers);
}

}  // namespace

}  // namespace pelta::browser

EMSCRIPTEN_BINDINGS(shape_commands) {
    using namespace pelta::browser;
    emscripten::function("addMarker", &addMarker);
    emscripten::function("addPolyline", &addPolyline);
    emscripten::function("addPolygon", &addPolygon);
    emscripten::function("addCircle", &addCircle);
    command("change", [](int shape, val options) { setOptions(Stage::shared().shape(shape), options); });
    emscripten::function("shapesIn", &shapesIn);
    emscripten::function("setDrawsLayersLiterally", &pelta::setDrawsLayersLiterally);
    command("setZIndex", [](int shape, int zIndex) { Stage::shared().shape(shape).setZIndex(zIndex); });
    command("setVisible",
            [](int shape, bool visible) { Stage::shared().shape(shape).setIsVisible(visible); });
    command("removeShape", [](int shape) { Stage::shared().shape(shape).setMapView(nullptr); });
}
