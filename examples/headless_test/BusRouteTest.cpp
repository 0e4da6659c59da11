#include <cstdio>

#include <pelta/headless/HeadlessPort.h>

#include "BusRoute.h"

using namespace pelta;

namespace {

constexpr UIColor red{0.8, 0.1, 0.1, 1};
int failures = 0;

void check(bool isTrue, const char* what) {
    std::printf("%s: %s\n", isTrue ? "ok" : "FAILED", what);
    failures += isTrue ? 0 : 1;
}

const std::vector<BusStop> stops{
    {"서울역", {37.5547, 126.9707}}, {"시청", {37.5657, 126.9769}}, {"동대문", {37.5714, 127.0098}}};

bool isInside(CGPoint point, CGRect view) {
    return point.x > view.minX() && point.x < view.maxX() && point.y > view.minY() && point.y < view.maxY();
}

class CameraListener : public PgmMapDelegate {
 public:
    void regionDidChangeAnimated(PgmMapView&, bool animated, PgmCameraUpdateReason) override {
        animatedChanges += animated ? 1 : 0;
    }
    int animatedChanges = 0;
};

/// A map of an empty style, at rest.
std::shared_ptr<PgmMapView> makeMap(HeadlessPort& port, UIWindow& window) {
    port.serveDocument(std::string(defaultStyleURL()), R"({"version": 8, "sources": {}, "layers": []})");
    auto map = PgmMapView::create(window.bounds());
    window.addSubview(map);
    port.runUntilIdle();
    return map;
}

void theWholeRouteComesIntoView() {
    HeadlessPort port;
    const auto window = port.makeWindow({400, 300});
    const auto map = makeMap(port, *window);
    const auto listener = std::make_shared<CameraListener>();
    map->setDelegate(listener);
    BusRoute route(map, stops, red);

    route.show();
    port.advance(0.25);
    check(listener->animatedChanges == 0, "the camera is still moving after a quarter of a second");
    port.runUntilIdle();
    check(listener->animatedChanges == 1, "the camera has arrived, once");
    for (const auto& stop : stops) {
        check(isInside(map->projection()->point(stop.position), map->bounds()), stop.name.c_str());
    }
    const auto tap = map->projection()->point(stops[2].position);
    check(route.stopNearestTo({tap.x + 5, tap.y - 20}).name == "동대문", "a tap beside a stop finds it");
}

void theRouteLeavesTheMapWithItsOwner() {
    HeadlessPort port;
    const auto window = port.makeWindow({400, 300});
    const auto map = makeMap(port, *window);
    {
        const BusRoute route(map, stops, red);
        port.runUntilIdle();
        check(map->shapesMap().size() == stops.size() + 1,
              "a line and a marker for each stop are on the map");
    }
    port.runUntilIdle();
    check(map->shapesMap().empty(), "nothing of the route is left");
}

}  // namespace

int main() {
    theWholeRouteComesIntoView();
    theRouteLeavesTheMapWithItsOwner();
    return failures == 0 ? 0 : 1;
}
