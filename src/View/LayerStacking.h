#pragma once

#include <optional>
#include <string>
#include <vector>

#include <pelta/Annotations/PgmShape.h>
#include <pelta/Engine/MLNStyle.h>

namespace pelta {

/// True when one shape lies below another: by `globalZIndex`, then `zIndex`, then age.
[[nodiscard]] bool isStackedBelow(const PgmShape& one, const PgmShape& other) noexcept;

/// Sorts shapes from the lowest to the highest.
void sortShapes(std::vector<const PgmShape*>& shapes);

/// Takes the layers of a shape out of the style that holds them.
void removeLayers(const PgmShape& shape);

/// Brings the layers of sorted shapes into their order: on top of the style, those with a negative
/// `globalZIndex` directly below the layer `firstSymbolLayer` where the style has one. Layers that are in
/// place already are not touched.
void stackLayers(MLNStyle& style, const std::vector<const PgmShape*>& sortedShapes,
                 const std::optional<std::string>& firstSymbolLayer);

}  // namespace pelta
