#include <emscripten/bind.h>
#include <memory>
#include <vector>

#include "Stage.h"

// A cluster manager on a map of the page, and what it shows.

using emscripten::val;

namespace pelta::browser {

namespace {

class Place final : public PgmClusterItem {
 public:
    explicit Place(CLLocationCoordinate2D where) : position_(where) {}
    CLLocationCoordinate2D position() const override { return position_; }

 private:
    CLLocationCoordinate2D position_;
};

std::shared_ptr<PgmClusterManager>& manager() {
    static std::shared_ptr<PgmClusterManager> instance;
    return instance;
}

/// @param places  [latitude, longitude] each.
void showClusters(int map, const val& places) {
    manager() = PgmClusterManager::create(Stage::shared().map(map).view);
    std::vector<std::shared_ptr<PgmClusterItem>> items;
    for (const val& pair : emscripten::vecFromJSArray<val>(places)) {
        items.push_back(
            std::make_shared<Place>(CLLocationCoordinate2D{pair[0].as<double>(), pair[1].as<double>()}));
    }
    manager()->addItems(items);
}

/// The number of items of each cluster, in the order of the grouping.
val clusterCounts() {
    val counts = val::array();
    for (const auto& cluster : manager()->clusters()) {
        counts.call<void>("push", static_cast<double>(cluster->count()));
    }
    return counts;
}

}  // namespace

}  // namespace pelta::browser

EMSCRIPTEN_BINDINGS(cluster_commands) {
    using namespace pelta::browser;
    emscripten::function("showClusters", &showClusters);
    command("releaseClusters", [] { manager() = nullptr; });
    emscripten::function("clusterCounts", &clusterCounts);
}
