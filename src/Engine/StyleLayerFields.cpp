#include "Engine/StyleLayerFields.h"

#include <algorithm>
#include <array>

namespace pelta {
namespace {

struct LayerType {
    std::string_view name;
    MLNStyleLayerKind kind;
};

constexpr std::array<LayerType, 10> layerTypes{{
    {"background", MLNStyleLayerKind::background},
    {"fill", MLNStyleLayerKind::fill},
    {"line", MLNStyleLayerKind::line},
    {"symbol", MLNStyleLayerKind::symbol},
    {"circle", MLNStyleLayerKind::other},
    {"fill-extrusion", MLNStyleLayerKind::other},
    {"heatmap", MLNStyleLayerKind::other},
    {"hillshade", MLNStyleLayerKind::other},
    {"raster", MLNStyleLayerKind::other},
    {"color-relief", MLNStyleLayerKind::other},
}};

std::string knownTypes() {
    std::string names;
    for (const auto& type : layerTypes) {
        names += (names.empty() ? "" : ", ") + std::string(type.name);
    }
    return names;
}

std::string takeText(std::string_view key, std::string& field, const JsonValue& value) {
    if (value.kind != JsonValue::Kind::text || value.text.empty()) {
        return "its \"" + std::string(key) + "\" is not a text; write a text that is not empty";
    }
    field = value.text;
    return {};
}

}  // namespace

std::string StyleLayerFields::takeZoom(std::string_view key, float& field, const JsonValue& value) const {
    if (value.kind != JsonValue::Kind::number || !(value.number >= 0 && value.number <= 24)) {
        return "its \"" + std::string(key) + "\" is not a zoom level; write a number from 0 to 24";
    }
    field = static_cast<float>(value.number);
    return {};
}

std::string StyleLayerFields::take(std::string_view key, const JsonValue& value) {
    if (key == "id") {
        return takeText(key, layer_.identifier, value);
    }
    if (key == "type") {
        return takeText(key, type_, value);
    }
    if (key == "source") {
        return takeText(key, layer_.sourceIdentifier, value);
    }
    if (key == "minzoom") {
        return takeZoom(key, layer_.minimumZoomLevel, value);
    }
    if (key == "maxzoom") {
        return takeZoom(key, layer_.maximumZoomLevel, value);
    }
    return {};
}

void StyleLayerFields::takeVisibility(const JsonValue& value) {
    layer_.isVisible = !(value.kind == JsonValue::Kind::text && value.text == "none");
}

std::string StyleLayerFields::finish() {
    if (layer_.identifier.empty()) {
        return "it has no \"id\"; give each layer an identifier of its own";
    }
    if (type_.empty()) {
        return "it has no \"type\"; write one of " + knownTypes();
    }
    const auto type = std::find_if(layerTypes.begin(), layerTypes.end(),
                                   [this](const LayerType& each) { return each.name == type_; });
    if (type == layerTypes.end()) {
        return "its type \"" + type_ + "\" is unknown; write one of " + knownTypes();
    }
    layer_.kind = type->kind;
    if (layer_.kind != MLNStyleLayerKind::background && layer_.sourceIdentifier.empty()) {
        return "it has no \"source\"; name one of the document's sources";
    }
    return {};
}

}  // namespace pelta
