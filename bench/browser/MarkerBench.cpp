#include <array>
#include <emscripten/bind.h>
#include <emscripten/val.h>
#include <memory>
#include <string>
#include <vector>

#include <pelta/Pelta.h>

// The page that the browser benchmark measures: markers on a map, driven from the page's script.

namespace {

using namespace pelta;
using emscripten::val;

class IdleListener final : public PgmMapDelegate {
 public:
    void mapViewDidBecomeIdle(PgmMapView&) override {
        if (!callback_.isNull()) {
            const val callback = callback_;
            callback_ = val::null();
            callback();
        }
    }

    void callOnce(val callback) { callback_ = std::move(callback); }

 private:
    val callback_ = val::null();
};

struct Page {
    std::shared_ptr<PgmMapView> map;
    std::shared_ptr<IdleListener> listener = std::make_shared<IdleListener>();
    std::vector<std::shared_ptr<PgmMarker>> markers;
};

Page& page() {
    static Page instance;
    return instance;
}

const std::array<std::shared_ptr<PgmImage>, 5>& icons() {
    static const std::array<std::shared_ptr<PgmImage>, 5> images{
        PgmImage::markerImageBlue(), PgmImage::markerImageGray(), PgmImage::markerImageGreen(),
        PgmImage::markerImageRed(), PgmImage::markerImageYellow()};
    return images;
}

/// @param coordinates  latitude and longitude in turn.
void addMarkers(const val& coordinates, val whenIdle) {
    page().listener->callOnce(std::move(whenIdle));
    const auto numbers = emscripten::convertJSArrayToNumberVector<double>(coordinates);
    for (std::size_t index = 0; index + 1 < numbers.size(); index += 2) {
        const std::size_t number = page().markers.size();
        auto marker = PgmMarker::markerWithPositionIconImage({numbers[index], numbers[index + 1]},
                                                             icons()[number % icons().size()]);
        marker->setTitle("P " + std::to_string(number));
        marker->setMapView(page().map);
        page().markers.push_back(std::move(marker));
    }
}

void callWhenIdle(val callback) {
    page().listener->callOnce(std::move(callback));
}

void panBy(double points) {
    auto params = PgmCameraUpdateParams::cameraUpdateParams();
    params->targetBy({points, 0});
    page().map->moveCamera(PgmCameraUpdate::cameraUpdateWithParams(params));
}

}  // namespace

EMSCRIPTEN_BINDINGS(markerBench) {
    emscripten::function("addMarkers", &addMarkers);
    emscripten::function("callWhenIdle", &callWhenIdle);
    emscripten::function("panBy", &panBy);
}

int main() {
    return runApplication([](UIWindow& window) {
        auto options = PgmMapOptions::create(PgmCameraPosition::cameraPosition({36, 128}, 6));
        page().map = PgmMapView::create(window.bounds(), options, page().listener);
        window.addSubview(page().map);
    });
}
