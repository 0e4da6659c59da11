#pragma once

#include <optional>
#include <span>
#include <vector>

#include <pelta/Engine/MLNShape.h>

namespace pelta {

/// What a line through coordinates is drawn as, see `MLNShape::drawnKind`.
[[nodiscard]] std::optional<MLNShapeKind> drawnKindOfLine(std::span<const CLLocationCoordinate2D> line);

/// What an area within a ring but for its holes, each closed or not, is drawn as, see `MLNShape::drawnKind`.
[[nodiscard]] std::optional<MLNShapeKind> drawnKindOfArea(
    std::span<const CLLocationCoordinate2D> ring, std::span<const std::vector<CLLocationCoordinate2D>> holes);

/// Whether three places of a ring can be told apart.
[[nodiscard]] bool hasThreePlaces(std::span<const CLLocationCoordinate2D> ring);

}  // namespace pelta
