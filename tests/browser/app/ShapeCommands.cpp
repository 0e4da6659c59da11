#include <algorithm>
#include <cstdint>
#include <emscripten/bind.h>
#include <string>
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
UIColor color(const val& list, UIColor missing) {
    if (list.isUndefined()) {
        return missing;
    }
    const auto parts = emscripten::convertJSArrayToNumberVector<double>(list);
    return {parts[0] / 255, parts[1] / 255, parts[2] / 255, parts.size() > 3 ? parts[3] : 1};
}

void applyStacking(PgmShape& shape, const val& options) {
    shape.setZIndex(static_cast<std::int64_t>(number(options, "zIndex", 0)));
    shape.setGlobalZIndex(static_cast<std::int64_t>(
        number(options, "globalZIndex", static_cast<double>(shape.globalZIndex()))));
    shape.setVisibleMinZoom(number(options, "minZoom", shape.visibleMinZoom()));
    shape.setVisibleMaxZoom(number(options, "maxZoom", shape.visibleMaxZoom()));
}

int show(const std::shared_ptr<PgmShape>& shape, const val& options) {
    applyStacking(*shape, options);
    shape->setMapView(Stage::shared().map(static_cast<int>(number(options, "map", 0))).view);
    return Stage::shared().addShape(shape);
}

/// A picture of one colour with a spot of another, 3 points wide, around the anchor.
std::shared_ptr<PgmImage> spotPicture(const val& options, CGPoint anchor) {
    const int scale = static_cast<int>(number(options, "pictureScale", UIScreen::scale()));
    const int width = static_cast<int>(number(options, "width", 24)) * scale;
    const int height = static_cast<int>(number(options, "height", 24)) * scale;
    const UIColor base = color(options["color"], UIColor{0, 0, 1, 1});
    const UIColor spot = color(options["spot"], UIColor{1, 0, 0, 1});
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
    const auto marker = PgmMarker::markerWithPosition(coordinate(options["at"]));
    const CGPoint anchor = options["anchor"].isUndefined() ? CGPoint{0.5, 1}
                                                           : CGPoint{options["anchor"][0].as<double>(),
                                                                     options["anchor"][1].as<double>()};
    marker->setAnchor(anchor);
    marker->setAngle(number(options, "angle", 0));
    marker->setIconScale(number(options, "iconScale", 1));
    marker->setAlpha(number(options, "alpha", 1));
    if (!options["width"].isUndefined()) {
        marker->setIconImage(spotPicture(options, anchor));
    }
    if (!options["title"].isUndefined()) {
        marker->setTitle(options["title"].as<std::string>());
        marker->setTitleColor(color(options["titleColor"], UIColor::black()));
        marker->setTitleHaloColor(color(options["titleHaloColor"], UIColor::white()));
        marker->setTitleSize(number(options, "titleSize", 12));
    }
    return show(marker, options);
}

int addPolyline(const val& options) {
    const auto line = PgmPolyline::create(coordinates(options["through"]));
    line->setWidth(number(options, "width", 2.5));
    line->setColor(color(options["color"], UIColor::black()));
    if (!options["pattern"].isUndefined()) {
        line->setPattern(emscripten::convertJSArrayToNumberVector<double>(options["pattern"]));
    }
    return show(line, options);
}

void applyArea(PgmAreaShape& area, const val& options) {
    area.setFillColor(color(options["fill"], UIColor::white()));
    area.setStrokeColor(color(options["stroke"], UIColor::black()));
    area.setStrokeWidth(number(options, "strokeWidth", 0));
}

int addPolygon(const val& options) {
    const auto polygon = PgmPolygon::create(coordinates(options["ring"]), UIColor::white());
    if (const val holes = options["holes"]; !holes.isUndefined()) {
        polygon->setHoles(rings(holes));
    }
    applyArea(*polygon, options);
    return show(polygon, options);
}

int addCircle(const val& options) {
    const auto circle = PgmCircle::create(coordinate(options["at"]), number(options, "radius", 1000));
    applyArea(*circle, options);
    return show(circle, options);
}

/// Calls `set(value)` for an option that is given.
template <class Set>
void given(const val& options, const char* name, Set&& set) {
    if (const val value = options[name]; !value.isUndefined()) {
        set(value);
    }
}

/// Changes what the options name and leaves the rest.
void change(int number, const val& options) {
    PgmShape& shape = Stage::shared().shape(number);
    given(options, "zIndex", [&](const val& v) { shape.setZIndex(v.as<int>()); });
    given(options, "holes", [&](const val& v) { static_cast<PgmPolygon&>(shape).setHoles(rings(v)); });
    given(options, "visible", [&](const val& v) { shape.setIsVisible(v.as<bool>()); });
    given(options, "minZoom", [&](const val& v) { shape.setVisibleMinZoom(v.as<double>()); });
    given(options, "maxZoom", [&](const val& v) { shape.setVisibleMaxZoom(v.as<double>()); });
    if (auto* marker = dynamic_cast<PgmMarker*>(&shape)) {
        given(options, "at", [&](const val& v) { marker->setPosition(coordinate(v)); });
        given(options, "alpha", [&](const val& v) { marker->setAlpha(v.as<double>()); });
        given(options, "angle", [&](const val& v) { marker->setAngle(v.as<double>()); });
        given(options, "iconScale", [&](const val& v) { marker->setIconScale(v.as<double>()); });
        given(options, "title", [&](const val& v) { marker->setTitle(v.as<std::string>()); });
        given(options, "color", [&](const val& v) { marker->setTitleColor(color(v, {})); });
    } else if (auto* line = dynamic_cast<PgmPolyline*>(&shape)) {
        given(options, "width", [&](const val& v) { line->setWidth(v.as<double>()); });
        given(options, "color", [&](const val& v) { line->setColor(color(v, {})); });
    } else if (auto* area = dynamic_cast<PgmAreaShape*>(&shape)) {
        given(options, "width", [&](const val& v) { area->setStrokeWidth(v.as<double>()); });
        given(options, "color", [&](const val& v) { area->setFillColor(color(v, {})); });
    }
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

void setZIndex(int shape, double zIndex) {
    Stage::shared().shape(shape).setZIndex(static_cast<std::int64_t>(zIndex));
}

void setVisible(int shape, bool visible) {
    Stage::shared().shape(shape).setIsVisible(visible);
}

void removeShape(int shape) {
    Stage::shared().shape(shape).setMapView(nullptr);
}

}  // namespace

}  // namespace pelta::browser

EMSCRIPTEN_BINDINGS(shape_commands) {
    using namespace pelta::browser;
    emscripten::function("addMarker", &addMarker);
    emscripten::function("addPolyline", &addPolyline);
    emscripten::function("addPolygon", &addPolygon);
    emscripten::function("addCircle", &addCircle);
    emscripten::function("change", &change);
    emscripten::function("shapesIn", &shapesIn);
    emscripten::function("setDrawsLayersLiterally", &pelta::setDrawsLayersLiterally);
    emscripten::function("setZIndex", &setZIndex);
    emscripten::function("setVisible", &setVisible);
    emscripten::function("removeShape", &removeShape);
}
