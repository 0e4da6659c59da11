#pragma once

#include <optional>
#include <string_view>

#include <pelta/Platform/UIColor.h>

namespace pelta::viewer {

/// Reads a colour as map data writes it: "#rgb" or "#rrggbb", also without the "#", or one of the basic CSS
/// names such as "red". Letter case does not matter; the result is opaque.
///
/// @return nothing for any other text.
[[nodiscard]] std::optional<UIColor> parseColor(std::string_view text);

}  // namespace pelta::viewer
