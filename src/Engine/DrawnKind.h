#pragma once

#include <optional>
#include <span>

#include <pelta/Engine/MLNShape.h>

namespace pelta {

/// What a line through coordinates is drawn as, see `MLNShape::drawnKind`.
[[nodiscard]] std::optional<MLNShapeKind> drawnKindOfLine(std::span<const CLLocationCoordinate2D> line);

/// What an area within a ring, closed or not, is drawn as, see `MLNShape::drawnKind`.
[[nodiscard]] std::optional<MLNShapeKind> drawnKindOfArea(std::span<const CLLocationCoordinate2D> ring);

}  // namespace pelta
