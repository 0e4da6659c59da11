#include "PropertyJson.h"

#include <algorithm>

#include "CssText.h"
#include "MapFonts.h"

namespace pelta {

namespace {

/// Stands for "never breaks": the browser's engine would break at every word with 0.
constexpr double unlimitedTextWidth = 1e5;

}  // namespace

void writeValue(JsonWriter& json, std::string_view name, double value) {
    const std::string_view opacity = "-opacity";
    const bool isOpacity =
        name.size() > opacity.size() && name.substr(name.size() - opacity.size()) == opacity;
    if (isOpacity) {
        json.value(std::clamp(value, 0.0, 1.0));
    } else {
        json.value(name == "text-max-width" && value == 0 ? unlimitedTextWidth : value);
    }
}

void writeValue(JsonWriter& json, std::string_view, bool value) {
    json.value(value);
}

void writeValue(JsonWriter& json, std::string_view name, const std::string& value) {
    if (name == "icon-image" && value.empty()) {
        json.null();  // An empty name would be looked for, and missed.
    } else {
        json.value(value);
    }
}

void writeValue(JsonWriter& json, std::string_view, const UIColor& value) {
    json.value(cssColor(value));
}

void writeValue(JsonWriter& json, std::string_view, const CGVector& value) {
    json.beginArray();
    json.value(value.dx);
    json.value(value.dy);
    json.endArray();
}

void writeValue(JsonWriter& json, std::string_view, const std::vector<std::string>& fontNames) {
    json.beginArray();
    for (const std::string& family : localFontStack(fontNames)) {
        json.value(family);
    }
    json.endArray();
}

void writeValue(JsonWriter& json, std::string_view, const std::vector<double>& numbers) {
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

std::string literalExpression(std::string_view name, const std::string& value) {
    // The engine replaces names in braces in plain texts, and reads plain lists as expressions within others.
    const bool isName = name == "text-field" || name == "icon-image";
    return value.front() == '[' || (isName && value != "null") ? R"(["literal",)" + value + "]" : value;
}

}  // namespace pelta
