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

/// Takes those layers of a shape out of a style that are in it.
void removeLayers(MLNStyle& style, const PgmShape& shape);

/// Takes those layers of a shape that are in another style than `kept`, which may be null, out of that one.
void withdrawLayers(const PgmShape& shape, const MLNStyle* kept);

/// Brings the layers of sorted shapes into their order: on top of the style, those with a negative
/// `globalZIndex` directly below the layer `firstSymbolLayer` where the style has one. Layers that are in
/// place already are not touched, nor are those that another style holds.
void stackLayers(MLNStyle& style, const std::vector<const PgmShape*>& sortedShapes,
                 const std::optional<std::string>& firstSymbolLayer);

}  // namespace pelta
