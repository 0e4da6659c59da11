#include "LayerJson.h"

#include <string>

#include "PropertyJson.h"

namespace pelta {

namespace {

/// Whether the features of a layer's source are to be filtered by what they are: the engine's areas would
/// fill lines too. A document's own layers keep the filters that the document gives them.
bool drawsAreasAlone(const MLNStyleLayer& layer) {
    return layer.kind() == MLNStyleLayerKind::fill && !layer.isFromDocument();
}

void writePredicate(JsonWriter& json, const MLNPredicate& predicate) {
    json.beginArray();
    json.value("==");
    json.beginArray();
    json.value("get");
    json.value(predicate.attribute);
    json.endArray();
    json.value(predicate.value);
    json.endArray();
}

/// Which features of its source a layer draws; null for all.
void writeFilter(JsonWriter& json, const MLNVectorStyleLayer& layer) {
    const bool selects = !layer.predicate().attribute.empty();
    if (!selects && !drawsAreasAlone(layer)) {
        json.null();
        return;
    }
    json.beginArray();
    json.value("all");
    if (drawsAreasAlone(layer)) {
        json.raw(R"(["==",["geometry-type"],"Polygon"])");
    }
    if (selects) {
        writePredicate(json, layer.predicate());
    }
    json.endArray();
}

void writeGroup(JsonWriter& json, const MLNStyleLayer& layer, MLNPropertyGroup wanted) {
    json.beginObject();
    if (wanted == MLNPropertyGroup::layout && !layer.isVisible()) {
        json.member("visibility", "none");
    }
    visitLayerProperties(layer,
                         [&](unsigned, MLNPropertyGroup group, std::string_view name, const auto& value) {
                             if (group != wanted) {
                                 return;
                             }
                             if (const std::string text = propertyJson(name, value); text != "null") {
                                 json.key(name);
                                 json.raw(text);
                             }
                         });
    json.endObject();
}

/// Begins the array of a call on the map.
void beginCall(JsonWriter& json, std::string_view method, const MLNStyleLayer& layer) {
    json.beginArray();
    json.null();
    json.value(method);
    json.value(layer.identifier());
}

}  // namespace

std::string_view typeName(MLNStyleLayerKind kind) {
    switch (kind) {
        case MLNStyleLayerKind::fill:
            return "fill";
        case MLNStyleLayerKind::line:
            return "line";
        case MLNStyleLayerKind::symbol:
            return "symbol";
        case MLNStyleLayerKind::background:
        case MLNStyleLayerKind::other:
            break;
    }
    return "background";
}

void writeUnchecked(JsonWriter& json) {
    json.raw(R"({"validate":false})");
}

void writeLayer(JsonWriter& json, const MLNStyleLayer& layer, std::string_view source) {
    json.beginObject();
    json.member("id", layer.identifier());
    json.member("type", typeName(layer.kind()));
    json.member("minzoom", static_cast<double>(layer.minimumZoomLevel()));
    json.member("maxzoom", static_cast<double>(layer.maximumZoomLevel()));
    if (const auto* drawn = dynamic_cast<const MLNVectorStyleLayer*>(&layer)) {
        json.member("source", source);
        json.key("filter");
        writeFilter(json, *drawn);
    }
    json.key("layout");
    writeGroup(json, layer, MLNPropertyGroup::layout);
    json.key("paint");
    writeGroup(json, layer, MLNPropertyGroup::paint);
    json.endObject();
}

void writeLayerChanges(JsonWriter& json, const MLNStyleLayer& layer, std::uint32_t changes) {
    if ((changes & MLNStyleLayer::visibilityChange) != 0) {
        beginCall(json, "setLayoutProperty", layer);
        json.value("visibility");
        json.value(layer.isVisible() ? "visible" : "none");
        writeUnchecked(json);
        json.endArray();
    }
    if ((changes & MLNStyleLayer::zoomRangeChange) != 0) {
        beginCall(json, "setLayerZoomRange", layer);
        json.value(static_cast<double>(layer.minimumZoomLevel()));
        json.value(static_cast<double>(layer.maximumZoomLevel()));
        json.endArray();
    }
    const auto* drawn = dynamic_cast<const MLNVectorStyleLayer*>(&layer);
    const bool selects = drawn != nullptr && !drawn->predicate().attribute.empty();
    // A document's own layer keeps the filter that the document gives it until it is given another.
    if (drawn != nullptr && (changes & MLNStyleLayer::predicateChange) != 0 &&
        (selects || !layer.isFromDocument())) {
        beginCall(json, "setFilter", layer);
        writeFilter(json, *drawn);
        writeUnchecked(json);
        json.endArray();
    }
    visitLayerProperties(
        layer, [&](unsigned index, MLNPropertyGroup group, std::string_view name, const auto& value) {
            if (value && (changes & (1U << index)) != 0) {
                beginCall(json, group == MLNPropertyGroup::layout ? "setLayoutProperty" : "setPaintProperty",
                          layer);
                json.value(name);
                json.raw(propertyJson(name, value));
                writeUnchecked(json);
                json.endArray();
            }
        });
}

}  // namespace pelta
