#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "data/MapData.h"
#include "data/ScalarValue.h"

namespace pelta::viewer {

/// Applies one member of a feature's "properties" to a style: `title`, `marker-color`, `stroke`,
/// `stroke-width`, `stroke-opacity`, `fill`, `fill-opacity`, `radius`, `zIndex`, `visibleMinZoom` and
/// `visibleMaxZoom`. Other names and nulls change nothing.
///
/// @return what is wrong with the value; the style then stays as it was.
[[nodiscard]] std::optional<std::string> applyProperty(std::string_view name, const ScalarValue& value,
                                                       ShapeStyle& style);

/// True when the name is one that `applyProperty` reads.
[[nodiscard]] bool isStyleProperty(std::string_view name);

}  // namespace pelta::viewer
