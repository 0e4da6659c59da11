#pragma once

#include <string>

#include <pelta/Platform/CoreGraphics.h>
#include <pelta/Platform/UIColor.h>
#include <pelta/Platform/UIGraphics.h>

namespace pelta {

/// A number as CSS and JSON write it: at most 12 significant digits; 0 for what is not finite.
[[nodiscard]] std::string cssNumber(double value);
/// A length in points, which are CSS pixels.
[[nodiscard]] std::string cssLength(double points);
/// "rgba(…)" with components clamped to what a screen shows.
[[nodiscard]] std::string cssColor(const UIColor& color);
/// Value of the `font` property.
[[nodiscard]] std::string cssFont(const UIFont& font);
/// "matrix(…)".
[[nodiscard]] std::string cssTransform(const CATransform3D& transform);
[[nodiscard]] std::string cssTransform(const CGAffineTransform& transform);

/// The families that interface and map draw text with, best first, separated by commas. Any script: what they
/// lack comes from the browser's own fallback.
inline constexpr const char* localFontFamilies =
    "Noto Sans,Noto Sans KR,Noto Sans CJK KR,Apple SD Gothic Neo,Malgun Gothic";

}  // namespace pelta
