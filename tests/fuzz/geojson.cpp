/// The viewer's reader of map data: what it has read, written as GeoJSON, is read to the same shapes without
/// a problem.

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <nlohmann/json.hpp>
#include <tuple>

#include "Require.h"
#include "data/GeoJsonReader.h"

namespace {

using namespace pelta;
using namespace pelta::viewer;
using nlohmann::json;
using pelta::fuzz::require;

std::string hex(UIColor color) {
    const auto byte = [](double part) { return static_cast<unsigned>(std::lround(part * 255)); };
    char text[8];
    std::snprintf(text, sizeof text, "#%02x%02x%02x", byte(color.red), byte(color.green), byte(color.blue));
    return text;
}

json properties(const ShapeStyle& style) {
    json result{{"title", style.title},
                {"stroke", hex(style.stroke)},
                {"stroke-width", style.strokeWidth},
                {"stroke-opacity", style.strokeOpacity},
                {"fill", hex(style.fill)},
                {"fill-opacity", style.fillOpacity},
                {"zIndex", style.zIndex}};
    if (style.markerColor) {
        result["marker-color"] = hex(*style.markerColor);
    }
    const auto add = [&](const char* name, const std::optional<double>& value) {
        if (value) {
            result[name] = *value;
        }
    };
    add("radius", style.radius);
    add("visibleMinZoom", style.visibleMinZoom);
    add("visibleMaxZoom", style.visibleMaxZoom);
    return result;
}

json geometry(const MapData& data, const DataShape& shape) {
    json positions = json::array();
    for (const CLLocationCoordinate2D coordinate : data.coordinatesOf(shape)) {
        positions.push_back({coordinate.longitude, coordinate.latitude});
    }
    if (shape.kind == ShapeKind::line) {
        return {{"type", "LineString"}, {"coordinates", positions}};
    }
    if (shape.kind == ShapeKind::area) {
        return {{"type", "Polygon"}, {"coordinates", json::array({positions})}};
    }
    return {{"type", "Point"}, {"coordinates", positions[0]}};
}

std::string written(const MapData& data) {
    json features = json::array();
    for (const DataShape& shape : data.shapes) {
        features.push_back({{"type", "Feature"},
                            {"geometry", geometry(data, shape)},
                            {"properties", properties(data.styles[shape.style])}});
    }
    return json{{"type", "FeatureCollection"}, {"features", features}}.dump();
}

void requireSound(const MapData& data) {
    for (const ShapeStyle& style : data.styles) {
        for (const double opacity : {style.strokeOpacity, style.fillOpacity}) {
            require(opacity >= 0 && opacity <= 1, "opacities are from 0 to 1");
        }
        require(style.strokeWidth >= 0 && std::isfinite(style.radius.value_or(0)), "lengths are finite");
    }
    for (const DataShape& shape : data.shapes) {
        require(shape.style < data.styles.size(), "a shape has a style");
        require(shape.firstCoordinate + shape.coordinateCount <= data.coordinates.size(),
                "a shape has its coordinates");
        const std::size_t least = shape.kind == ShapeKind::area ? 3 : shape.kind == ShapeKind::line ? 2 : 1;
        require(shape.coordinateCount >= least, "a shape has enough coordinates");
    }
    for (const CLLocationCoordinate2D coordinate : data.coordinates) {
        require(std::abs(coordinate.latitude) <= 90 && std::abs(coordinate.longitude) <= 180,
                "coordinates are on the Earth");
    }
}

void requireMessages(const std::vector<std::string>& messages, std::size_t count) {
    require(messages.size() == std::min(count, MapData::listedMessages),
            "messages are listed up to their limit");
    for (const std::string& message : messages) {
        fuzz::requireTidy(message);
        require(message.starts_with("data.geojson"), "a message starts with the document's name", message);
    }
}

auto lookOf(const ShapeStyle& style) {
    return std::tie(style.title, style.markerColor, style.radius, style.stroke, style.strokeWidth,
                    style.strokeOpacity, style.fill, style.fillOpacity, style.zIndex, style.visibleMinZoom,
                    style.visibleMaxZoom);
}

void requireReadAgain(const MapData& data) {
    const std::string text = written(data);
    const MapData again = readGeoJson(text, "data.geojson");
    require(again.problemCount == 0 && again.leftOutCount == 0, "what was read has no problems when written",
            again.problems.empty() ? text : again.problems[0]);
    require(again.shapes.size() == data.shapes.size(), "all shapes are read again", text);
    for (std::size_t i = 0; i < data.shapes.size(); ++i) {
        const DataShape& one = data.shapes[i];
        const DataShape& other = again.shapes[i];
        const auto coordinates = data.coordinatesOf(one);
        const auto others = again.coordinatesOf(other);
        require(one.kind == other.kind &&
                    std::equal(coordinates.begin(), coordinates.end(), others.begin(), others.end()),
                "a shape keeps its coordinates", text);
        require(lookOf(data.styles[one.style]) == lookOf(again.styles[other.style]), "a shape keeps its look",
                text);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const MapData data = readGeoJson({reinterpret_cast<const char*>(bytes), size}, "data.geojson");
    requireSound(data);
    requireMessages(data.problems, data.problemCount);
    requireMessages(data.leftOuts, data.leftOutCount);
    require(data.featureCount <= data.shapes.size(), "a feature that is drawn has a shape");
    requireReadAgain(data);
    return 0;
}
