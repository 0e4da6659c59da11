#pragma once

#include <string>

#include <pelta/View/PgmMapView.h>

namespace pelta::random {

class World;

/// What must be so on a map at rest: its style, source and pictures are what the shapes on it ask for, and
/// its camera is within the limits.
///
/// @param name  what messages call it.
void checkMap(World& world, PgmMapView& map, const std::string& name);

}  // namespace pelta::random
