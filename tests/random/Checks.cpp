#include "Checks.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <set>
#include <unistd.h>

#include "MapChecks.h"
#include "World.h"

namespace pelta::random {

void check(bool holds, std::string_view rule, const std::string& found) {
    if (holds) {
        return;
    }
    std::fflush(stdout);
    std::fprintf(stderr, "Broken rule: %.*s\n%s\n", static_cast<int>(rule.size()), rule.data(),
                 found.c_str());
    std::fflush(stderr);
    _exit(brokenRule);
}

namespace {

/// A shape's layers are in the style of its map and nowhere else.
void checkLayersOf(const PgmShape& shape) {
    const auto map = shape.mapView();
    const auto* style = map ? map->mapView()->style() : nullptr;
    for (const auto& layer : shape.styleLayers()) {
        check(layer->style() == nullptr || layer->style() == style, "strays",
              layer->identifier() + " is drawn on a map that its shape is not on");
    }
}

void checkManager(const World::ManagerSlot& slot) {
    if (!slot.manager) {
        return;
    }
    std::set<const PgmClusterItem*> seen;
    for (const auto& cluster : slot.manager->clusters()) {
        const auto position = cluster->position();
        check(std::isfinite(position.latitude) && std::isfinite(position.longitude), "clusters",
              "a cluster lies at no finite position");
        check(cluster->count() == cluster->items().size() && cluster->count() > 0, "clusters",
              "a cluster does not count its items");
        for (const auto& item : cluster->items()) {
            check(seen.insert(item.get()).second, "clusters", "an item is in two clusters");
        }
    }
}

}  // namespace

void checkWorld(World& world) {
    for (const auto& shape : world.livingShapes()) {
        checkLayersOf(*shape);
    }
    for (std::uint32_t i = 0; i < mapCount; ++i) {
        if (world.maps[i].view) {
            checkMap(world, *world.maps[i].view, "map " + std::to_string(i));
        }
    }
    for (const auto& slot : world.managers) {
        checkManager(slot);
    }
}

}  // namespace pelta::random
