#include "data/StyleProperties.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "data/Color.h"
#include "data/Text.h"

namespace pelta::viewer {

namespace {

struct ColorProperty {
    std::string_view name;
    void (*apply)(ShapeStyle&, UIColor);
};

constexpr std::array<ColorProperty, 3> colorProperties{{
    {"marker-color", [](ShapeStyle& style, UIColor color) { style.markerColor = color; }},
    {"stroke", [](ShapeStyle& style, UIColor color) { style.stroke = color; }},
    {"fill", [](ShapeStyle& style, UIColor color) { style.fill = color; }},
}};

struct NumberProperty {
    std::string_view name;
    double minimum;
    double maximum;
    bool isWhole;
    void (*apply)(ShapeStyle&, double);
};

/// Half of the Earth's circumference: a larger circle would overlap itself.
constexpr double largestRadius = 20037508;
/// Whole numbers up to here are exact in a document's number format.
constexpr double largestOrder = 9007199254740991;

constexpr std::array<NumberProperty, 7> numberProperties{{
    {"radius", 0, largestRadius, false, [](ShapeStyle& style, double value) { style.radius = value; }},
    {"stroke-width", 0, 1000, false, [](ShapeStyle& style, double value) { style.strokeWidth = value; }},
    {"stroke-opacity", 0, 1, false, [](ShapeStyle& style, double value) { style.strokeOpacity = value; }},
    {"fill-opacity", 0, 1, false, [](ShapeStyle& style, double value) { style.fillOpacity = value; }},
    {"zIndex", -largestOrder, largestOrder, true,
     [](ShapeStyle& style, double value) { style.zIndex = static_cast<std::int64_t>(value); }},
    {"visibleMinZoom", 0, 24, false, [](ShapeStyle& style, double value) { style.visibleMinZoom = value; }},
    {"visibleMaxZoom", 0, 24, false, [](ShapeStyle& style, double value) { style.visibleMaxZoom = value; }},
}};

/// As much of a number beyond all measure stands in a message.
constexpr std::size_t longestNumber = 40;

constexpr std::string_view titleProperty = "title";

template <class Table>
auto find(const Table& table, std::string_view name) -> decltype(table.data()) {
    const auto found = std::find_if(table.begin(), table.end(),
                                    [name](const auto& property) { return property.name == name; });
    return found == table.end() ? nullptr : &*found;
}

std::optional<std::string> applyColor(const ColorProperty& property, const ScalarValue& value,
                                      ShapeStyle& style) {
    if (value.kind != ScalarValue::Kind::text) {
        return std::string(property.name) + " is not a text such as \"#3366cc\"";
    }
    const auto color = parseColor(value.text);
    if (!color) {
        return std::string(property.name) + ": unknown colour " + inQuotes(value.text) +
               "; write it as \"#rgb\" or \"#rrggbb\"";
    }
    property.apply(style, *color);
    return std::nullopt;
}

std::optional<std::string> applyNumber(const NumberProperty& property, const ScalarValue& value,
                                       ShapeStyle& style) {
    if (value.kind != ScalarValue::Kind::number) {
        return std::string(property.name) + " is not a number";
    }
    const double number = value.number;
    const bool isAllowed = number >= property.minimum && number <= property.maximum;
    if (!isAllowed || (property.isWhole && std::floor(number) != number)) {
        const std::string written =
            std::isfinite(number) ? numberText(number) : std::string(value.text.substr(0, longestNumber));
        return std::string(property.name) + " " + written + " is not a " +
               (property.isWhole ? "whole number" : "number") + " from " + numberText(property.minimum) +
               " to " + numberText(property.maximum);
    }
    property.apply(style, number);
    return std::nullopt;
}

}  // namespace

std::optional<std::string> applyProperty(std::string_view name, const ScalarValue& value, ShapeStyle& style) {
    if (value.kind == ScalarValue::Kind::null) {
        return std::nullopt;
    }
    if (const auto* property = find(colorProperties, name)) {
        return applyColor(*property, value, style);
    }
    if (const auto* property = find(numberProperties, name)) {
        return applyNumber(*property, value, style);
    }
    if (name == titleProperty) {
        if (value.kind != ScalarValue::Kind::text) {
            return std::string("title is not a text");
        }
        style.title = value.text;
    }
    return std::nullopt;
}

bool isStyleProperty(std::string_view name) {
    return name == titleProperty || find(colorProperties, name) != nullptr ||
           find(numberProperties, name) != nullptr;
}

}  // namespace pelta::viewer
