#pragma once

#include <optional>
#include <string>

#include "MapGeometry.h"
#include "MapScene.h"
#include "MapText.h"
#include "MapTransform.h"

namespace pelta {

/// What a part of a symbol covers: a rectangle beside the symbol's position, which is (0, 0), in points.
struct MapSymbolBox {
    CGRect rect;
    double rotation = 0;           ///< Degrees clockwise about the position.
    bool isOnGround = false;       ///< Lies on the ground instead of standing on the screen.
    bool isTurnedWithMap = false;  ///< Keeps its direction on the map instead of that on the screen.
};

/// A rectangle of the screen with the ground that is seen in it.
struct MapQueryArea {
    MapQuad screen;
    MapQuad ground;
};

/// The box of a feature's icon; nothing when the layer draws none for it.
[[nodiscard]] std::optional<MapSymbolBox> iconBox(const MapSymbolProperties& layer, const MLNShape& feature,
                                                  const MapScene& scene);

/// The text of a feature and its placement.
struct MapSymbolText {
    std::string text;
    double size = 0;          ///< Points an em.
    double maximumWidth = 0;  ///< Ems.
    std::string anchor;
    CGVector offset;  ///< Ems.
    bool isOnGround = false;

    /// No part of the text is further than this from the position, in points.
    [[nodiscard]] double reach() const noexcept;
    /// The text's box; nothing when it has no extent.
    [[nodiscard]] std::optional<MapSymbolBox> box(MapText& measure) const;
};

/// The text of a feature; nothing when the layer draws none for it.
[[nodiscard]] std::optional<MapSymbolText> symbolText(const MapSymbolProperties& layer,
                                                      const MLNShape& feature);

/// Symbols are never drawn larger than this many times their size.
inline constexpr double largestSymbolMagnification = 4;

/// Factor to the size of a symbol at a relative distance above 0: symbols on the screen shrink with half of
/// the perspective, symbols on the ground grow against it by as much.
[[nodiscard]] double symbolMagnification(double relativeDistance, bool isOnGround) noexcept;

/// True when the box of a symbol at a ground position in front of the eye covers a point of an area.
[[nodiscard]] bool doesSymbolTouch(const MapSymbolBox& box, CGPoint ground, const MapQueryArea& area,
                                   const MapTransform& transform);

}  // namespace pelta
