#include "FeatureJson.h"

namespace pelta {

namespace {

using Coordinates = std::vector<CLLocationCoordinate2D>;

void writePosition(JsonWriter& json, CLLocationCoordinate2D coordinate) {
    json.beginArray();
    json.degrees(coordinate.longitude);
    json.degrees(coordinate.latitude);
    json.endArray();
}

void writePositions(JsonWriter& json, const Coordinates& coordinates, bool closesRing) {
    json.beginArray();
    for (const CLLocationCoordinate2D coordinate : coordinates) {
        writePosition(json, coordinate);
    }
    if (closesRing && coordinates.front() != coordinates.back()) {
        writePosition(json, coordinates.front());
    }
    json.endArray();
}

void writeRings(JsonWriter& json, const MLNPolygonFeature& area) {
    json.beginArray();
    writePositions(json, area.coordinates(), true);
    for (const Coordinates& hole : area.holes()) {
        writePositions(json, hole, true);
    }
    json.endArray();
}

void writeValue(JsonWriter& json, const MLNAttributeValue& value) {
    if (const auto* numbers = std::get_if<std::vector<double>>(&value)) {
        json.beginArray();
        for (const double number : *numbers) {
            json.value(number);
        }
        json.endArray();
        return;
    }
    std::visit(
        [&json](const auto& content) {
            if constexpr (!std::is_same_v<std::decay_t<decltype(content)>, std::vector<double>>) {
                json.value(content);
            }
        },
        value);
}

void writeFeature(JsonWriter& json, const MLNShape& shape, std::size_t identifier) {
    json.beginObject();
    json.member("type", "Feature");
    json.member("id", identifier);
    json.key("properties");
    json.beginObject();
    for (const auto& [name, value] : shape.attributes().entries()) {
        json.key(name);
        writeValue(json, value);
    }
    json.endObject();
    json.key("geometry");
    writeGeometry(json, shape);
    json.endObject();
}

}  // namespace

void writeGeometry(JsonWriter& json, const MLNShape& shape) {
    const bool isArea = shape.drawnKind() == MLNShapeKind::polygon;
    json.beginObject();
    if (shape.kind() == MLNShapeKind::point) {
        json.member("type", "Point");
        json.key("coordinates");
        writePosition(json, static_cast<const MLNPointFeature&>(shape).coordinate());
    } else if (shape.kind() == MLNShapeKind::polyline) {
        json.member("type", "LineString");
        json.key("coordinates");
        writePositions(json, static_cast<const MLNPolylineFeature&>(shape).coordinates(), false);
    } else {
        json.member("type", isArea ? "Polygon" : "LineString");
        json.key("coordinates");
        const auto& area = static_cast<const MLNPolygonFeature&>(shape);
        if (isArea) {
            writeRings(json, area);
        } else {
            writePositions(json, area.coordinates(), true);
        }
    }
    json.endObject();
}

std::vector<const MLNShape*> featuresOf(const MLNShape* shape) {
    if (shape == nullptr) {
        return {};
    }
    if (shape->kind() != MLNShapeKind::collection) {
        return {shape};
    }
    std::vector<const MLNShape*> features;
    for (const auto& member : static_cast<const MLNShapeCollectionFeature&>(*shape).shapes()) {
        if (member && member->kind() != MLNShapeKind::collection) {
            features.push_back(member.get());
        }
    }
    return features;
}

void writeFeatures(JsonWriter& json, const std::vector<const MLNShape*>& features) {
    json.beginObject();
    json.member("type", "FeatureCollection");
    json.key("features");
    json.beginArray();
    for (std::size_t i = 0; i < features.size(); ++i) {
        if (features[i]->drawnKind()) {
            writeFeature(json, *features[i], i);
        }
    }
    json.endArray();
    json.endObject();
}

}  // namespace pelta
