#include "LayerJson.h"

#include <algorithm>
#include <string>
#include <vector>

#include <pelta/Engine/MLNFillStyleLayer.h>
#include <pelta/Engine/MLNLineStyleLayer.h>
#include <pelta/Engine/MLNSymbolStyleLayer.h>

#include "CssText.h"
#include "MapFonts.h"

namespace pelta {

namespace {

/// Stands for "never breaks": the browser's engine would break at every word with 0.
constexpr double unlimitedTextWidth = 1e5;

using Alignment = std::optional<MLNExpression<std::string>>;

/// Calls `visit(index, group, name, value)` for a symbol layer's properties.
///
/// GL JS takes the place of an icon in queries by the alignment of the text. So where there is no text, its
/// alignment follows the icon's, rotation too, which the model leaves to the engine.
template <class Visitor>
void visitSymbolProperties(const MLNSymbolStyleLayer& layer, Visitor&& visit) {
    const auto& text = layer.text();
    const bool hasText = text && !(text->isConstant() && text->constant().empty());
    const Alignment automatic = MLNExpression<std::string>("auto");
    const Alignment turn = hasText ? automatic : layer.iconRotationAlignment();
    const Alignment tilt = !hasText                     ? layer.iconPitchAlignment()
                           : layer.textPitchAlignment() ? layer.textPitchAlignment()
                                                        : automatic;
    layer.visitProperties(
        [&](unsigned index, MLNPropertyGroup group, std::string_view name, const auto& value) {
            if (name != "text-pitch-alignment") {
                visit(index, group, name, value);
            }
            if (name == "text-field" || name == "icon-rotation-alignment") {
                visit(index, group, "text-rotation-alignment", turn);
            }
            if (name == "text-field" || name == "icon-pitch-alignment" || name == "text-pitch-alignment") {
                visit(index, group, "text-pitch-alignment", tilt);
            }
        });
}

/// Calls `visit(index, group, name, value)` for the properties of a layer, see `visitProperties`.
template <class Visitor>
void visitLayerProperties(const MLNStyleLayer& layer, Visitor&& visit) {
    switch (layer.kind()) {
        case MLNStyleLayerKind::fill:
            static_cast<const MLNFillStyleLayer&>(layer).visitProperties(visit);
            break;
        case MLNStyleLayerKind::line:
            static_cast<const MLNLineStyleLayer&>(layer).visitProperties(visit);
            break;
        case MLNStyleLayerKind::symbol:
            visitSymbolProperties(static_cast<const MLNSymbolStyleLayer&>(layer), visit);
            break;
        case MLNStyleLayerKind::background:
        case MLNStyleLayerKind::other:
            break;
    }
}

void writeConstant(JsonWriter& json, std::string_view name, double value) {
    const std::string_view opacity = "-opacity";
    const bool isOpacity =
        name.size() > opacity.size() && name.substr(name.size() - opacity.size()) == opacity;
    if (isOpacity) {
        json.value(std::clamp(value, 0.0, 1.0));
    } else {
        json.value(name == "text-max-width" && value == 0 ? unlimitedTextWidth : value);
    }
}

void writeConstant(JsonWriter& json, std::string_view, bool value) {
    json.value(value);
}

void writeConstant(JsonWriter& json, std::string_view name, const std::string& value) {
    if (name == "icon-image" && value.empty()) {
        json.null();  // An empty name would be looked for, and missed.
    } else if (name == "text-field" || name == "icon-image") {
        // As an expression, because the engine replaces names in braces in plain texts.
        json.beginArray();
        json.value("literal");
        json.value(value);
        json.endArray();
    } else {
        json.value(value);
    }
}

void writeConstant(JsonWriter& json, std::string_view, const UIColor& value) {
    json.value(cssColor(value));
}

void writeConstant(JsonWriter& json, std::string_view, const CGVector& value) {
    json.beginArray();
    json.value(value.dx);
    json.value(value.dy);
    json.endArray();
}

void writeConstant(JsonWriter& json, std::string_view, const std::vector<std::string>& fontNames) {
    json.beginArray();
    for (const std::string& family : localFontStack(fontNames)) {
        json.value(family);
    }
    json.endArray();
}

void writeConstant(JsonWriter& json, std::string_view, const std::vector<double>& numbers) {
    if (numbers.empty()) {
        json.null();  // No dashes.
        return;
    }
    json.beginArray();
    for (const double number : numbers) {
        json.value(number);
    }
    json.endArray();
}

/// The property's value; null where it has the document format's default.
template <class T>
[[nodiscard]] std::string propertyJson(std::string_view name, const std::optional<MLNExpression<T>>& value) {
    JsonWriter json;
    if (!value) {
        json.null();
    } else if (value->isConstant()) {
        writeConstant(json, name, value->constant());
    } else {
        json.beginArray();
        json.value("get");
        json.value(value->attribute());
        json.endArray();
    }
    return json.take();
}

void writeFilter(JsonWriter& json, const MLNPredicate& predicate) {
    json.beginArray();
    json.value("==");
    json.beginArray();
    json.value("get");
    json.value(predicate.attribute);
    json.endArray();
    json.value(predicate.value);
    json.endArray();
}

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

void writeUnchecked(JsonWriter& json) {
    json.raw(R"({"validate":false})");
}

void writeLayer(JsonWriter& json, const MLNStyleLayer& layer) {
    json.beginObject();
    json.member("id", layer.identifier());
    json.member("type", typeName(layer.kind()));
    json.member("minzoom", static_cast<double>(layer.minimumZoomLevel()));
    json.member("maxzoom", static_cast<double>(layer.maximumZoomLevel()));
    if (const auto* drawn = dynamic_cast<const MLNVectorStyleLayer*>(&layer)) {
        json.member("source", drawn->sourceIdentifier());
        if (!drawn->predicate().attribute.empty()) {
            json.key("filter");
            writeFilter(json, drawn->predicate());
        }
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
    if ((changes & MLNStyleLayer::predicateChange) != 0 && (selects || !layer.isFromDocument())) {
        beginCall(json, "setFilter", layer);
        if (selects) {
            writeFilter(json, drawn->predicate());
        } else {
            json.null();
        }
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
