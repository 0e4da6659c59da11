#include "BenchMap.h"

#include <emscripten/bind.h>
#include <utility>

using namespace pelta;
using emscripten::val;

BenchMap& BenchMap::shared() {
    static const auto map = std::make_shared<BenchMap>();
    return *map;
}

void BenchMap::open(UIWindow& window) {
    view_ = PgmMapView::create(window.bounds(),
                               PgmMapOptions::create(PgmCameraPosition::cameraPosition({36, 128}, 6)),
                               shared_from_this());
    window.addSubview(view_);
}

void BenchMap::show(std::shared_ptr<PgmShape> shape) {
    shape->setMapView(view_);
    shapes_.push_back(std::move(shape));
}

void BenchMap::callWhenIdle(val callback) {
    whenIdle_ = std::move(callback);
}

void BenchMap::mapViewDidBecomeIdle(PgmMapView&) {
    const val callback = std::exchange(whenIdle_, val::null());
    if (!callback.isNull()) {
        callback();
    }
}

std::vector<CLLocationCoordinate2D> coordinatesFrom(const val& numbers) {
    const auto degrees = emscripten::convertJSArrayToNumberVector<double>(numbers);
    std::vector<CLLocationCoordinate2D> coordinates;
    coordinates.reserve(degrees.size() / 2);
    for (std::size_t i = 0; i + 1 < degrees.size(); i += 2) {
        coordinates.push_back({degrees[i], degrees[i + 1]});
    }
    return coordinates;
}

namespace {

void callWhenIdle(val callback) {
    BenchMap::shared().callWhenIdle(std::move(callback));
}

void panBy(double points) {
    auto params = PgmCameraUpdateParams::cameraUpdateParams();
    params->targetBy({points, 0});
    BenchMap::shared().view().moveCamera(PgmCameraUpdate::cameraUpdateWithParams(params));
}

void repaint() {
    BenchMap::shared().view().triggerRepaint();
}

/// The rivals have none.
void hideOrnaments() {
    PgmMapView& view = BenchMap::shared().view();
    view.setIsScaleBarVisible(false);
    view.setIsCompassVisible(false);
    view.setIsLogoVisible(false);
}

}  // namespace

EMSCRIPTEN_BINDINGS(benchMap) {
    emscripten::function("callWhenIdle", &callWhenIdle);
    emscripten::function("panBy", &panBy);
    emscripten::function("repaint", &repaint);
    emscripten::function("hideOrnaments", &hideOrnaments);
}

int main() {
    return runApplication([](UIWindow& window) { BenchMap::shared().open(window); });
}
