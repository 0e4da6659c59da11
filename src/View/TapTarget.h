#pragma once

#include <memory>

#include <pelta/Engine/MLNMapView.h>

#include "View/ShapeRegistry.h"

namespace pelta {

/// The shape that a tap at a point of the engine's view is offered to: of those with a touch handler that are
/// drawn within 22 points of it, the one on top. Null when there is none.
[[nodiscard]] std::shared_ptr<PgmShape> tapTarget(const ShapeRegistry::Shapes& shapes,
                                                  const MLNMapView& engine, CGPoint point);

}  // namespace pelta
