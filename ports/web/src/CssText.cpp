#include "CssText.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

namespace pelta {

std::string cssNumber(double value) {
    if (!std::isfinite(value)) {
        return "0";
    }
    std::array<char, 32> buffer{};
    const int length = std::snprintf(buffer.data(), buffer.size(), "%.12g", value);
    return {buffer.data(), static_cast<std::size_t>(length)};
}

std::string cssLength(double points) {
    return cssNumber(points) + "px";
}

std::string cssColor(const UIColor& color) {
    const auto channel = [](double value) {
        return cssNumber(std::round(std::clamp(value, 0.0, 1.0) * 255));
    };
    return "rgba(" + channel(color.red) + "," + channel(color.green) + "," + channel(color.blue) + "," +
           cssNumber(std::clamp(color.alpha, 0.0, 1.0)) + ")";
}

std::string cssFont(const UIFont& font) {
    return (font.isBold ? "700 " : "400 ") + cssLength(font.pointSize) + " " + localFontFamilies +
           ",sans-serif";
}

std::string cssTransform(const CGAffineTransform& t) {
    return "matrix(" + cssNumber(t.a) + "," + cssNumber(t.b) + "," + cssNumber(t.c) + "," + cssNumber(t.d) +
           "," + cssNumber(t.tx) + "," + cssNumber(t.ty) + ")";
}

std::string cssTransform(const CATransform3D& transform) {
    if (transform == CATransform3D{}) {
        return "none";
    }
    std::string text = "matrix3d(";
    for (std::size_t i = 0; i < transform.m.size(); ++i) {
        text += (i == 0 ? "" : ",") + cssNumber(transform.m[i]);
    }
    return text + ")";
}

}  // namespace pelta
