#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <pelta/Engine/MLNFillStyleLayer.h>
#include <pelta/Engine/MLNLineStyleLayer.h>
#include <pelta/Engine/MLNSymbolStyleLayer.h>

#include "JsonWriter.h"

namespace pelta {

/// Writes a property's value as data: as a feature's attribute holds it. "null" for what an empty value
/// leaves to the format's default.
void writeValue(JsonWriter& json, std::string_view name, double value);
void writeValue(JsonWriter& json, std::string_view name, bool value);
void writeValue(JsonWriter& json, std::string_view name, const std::string& value);
void writeValue(JsonWriter& json, std::string_view name, const UIColor& value);
void writeValue(JsonWriter& json, std::string_view name, const CGVector& value);
void writeValue(JsonWriter& json, std::string_view name, const std::vector<std::string>& fontNames);
void writeValue(JsonWriter& json, std::string_view name, const std::vector<double>& numbers);

/// A value that was written as data, as an expression for it.
[[nodiscard]] std::string literalExpression(std::string_view name, const std::string& value);

/// A property as a style document holds it; "null" where it has the format's default.
template <class T>
[[nodiscard]] std::string propertyJson(std::string_view name, const std::optional<MLNExpression<T>>& value) {
    JsonWriter json;
    if (!value) {
        json.null();
    } else if (value->isConstant()) {
        writeValue(json, name, value->constant());
        return literalExpression(name, json.take());
    } else {
        json.beginArray();
        json.value("get");
        json.value(value->attribute());
        json.endArray();
    }
    return json.take();
}

/// Calls `visit(number, group, name, value)` for a symbol layer's properties.
///
/// GL JS takes the place of an icon in queries by the alignment of the text. So where there is no text, its
/// alignment follows the icon's, rotation too, which the model leaves to the engine. "viewport" is what the
/// engine takes for texts at points; written out, it lets symbols with and without text have the same value.
template <class Visitor>
void visitSymbolProperties(const MLNSymbolStyleLayer& layer, Visitor&& visit) {
    const auto& text = layer.text();
    const bool hasText = text && !(text->isConstant() && text->constant().empty());
    const bool isDocument = layer.isFromDocument();
    const std::optional automatic = MLNExpression<std::string>(isDocument ? "auto" : "viewport");
    const auto orAutomatic = [&](const std::optional<MLNExpression<std::string>>& alignment) {
        return alignment || (isDocument && !hasText) ? alignment : automatic;
    };
    const auto turn = hasText ? automatic : orAutomatic(layer.iconRotationAlignment());
    const auto tilt = orAutomatic(hasText ? layer.textPitchAlignment() : layer.iconPitchAlignment());
    layer.visitProperties(
        [&](unsigned number, MLNPropertyGroup group, std::string_view name, const auto& value) {
            if (name != "text-pitch-alignment") {
                visit(number, group, name, value);
            }
            if (name == "text-field" || name == "icon-rotation-alignment") {
                visit(number, group, "text-rotation-alignment", turn);
            }
            if (name == "text-field" || name == "icon-pitch-alignment" || name == "text-pitch-alignment") {
                visit(number, group, "text-pitch-alignment", tilt);
            }
        });
}

/// Calls `visit(number, group, name, value)` for the properties of a layer, see `visitProperties`; for one
/// that follows from several, once for each of them.
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

}  // namespace pelta
