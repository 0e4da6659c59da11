#pragma once

#include <memory>
#include <vector>

#include <pelta/Annotations/PgmShape.h>
#include <pelta/Geometry/PgmLatLngBounds.h>

#include "data/MapData.h"
#include "map/PinPictures.h"

namespace pelta::viewer {

using Shapes = std::vector<std::shared_ptr<PgmShape>>;

/// The shapes that a document describes, in its order, on no map yet.
[[nodiscard]] Shapes shapesOf(const MapData& data, PinPictures& pins);

/// The smallest rectangle around all that a document draws, at least about 2 km on a side so that a single
/// point can be shown with its surroundings; null when it draws nothing.
[[nodiscard]] std::shared_ptr<PgmLatLngBounds> boundsOf(const MapData& data);

}  // namespace pelta::viewer
