#pragma once

#include <memory>

#include <pelta/Geometry/PgmLatLngBounds.h>

#include "data/LoadReport.h"
#include "map/Overlays.h"

namespace pelta::viewer {

/// Shapes that belong together.
struct Scene {
    Shapes shapes;
    ShapeCounts counts;
};

/// What the page opens with: the 40 largest cities of Korea as markers with their names and as circles sized
/// by population, the line from Seoul to Busan, and two areas.
[[nodiscard]] Scene koreaScene(PinPictures& pins);

/// What the view on the scene has to show.
[[nodiscard]] std::shared_ptr<PgmLatLngBounds> koreaBounds();

}  // namespace pelta::viewer
