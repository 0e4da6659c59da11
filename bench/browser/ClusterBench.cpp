#include <algorithm>
#include <emscripten.h>
#include <emscripten/bind.h>
#include <emscripten/val.h>
#include <memory>
#include <vector>

#include <pelta/Pelta.h>
#include <pelta/Platform/Frames.h>

// The page that the benchmark of clustering measures: a cluster manager over a large set of places, driven
// from the page's script.

namespace {

using namespace pelta;
using emscripten::val;

class Place final : public PgmClusterItem {
 public:
    explicit Place(CLLocationCoordinate2D where) : position_(where) {}
    CLLocationCoordinate2D position() const override { return position_; }

 private:
    CLLocationCoordinate2D position_;
};

/// Notes when a frame begins; added before the map is.
class FrameClock final : public FrameParticipant {
 public:
    void advanceTo(double) override { start_ = emscripten_get_now(); }
    void renderFrame() override {}
    [[nodiscard]] double start() const { return start_; }

 private:
    double start_ = 0;
};

struct Page {
    std::shared_ptr<FrameClock> clock = std::make_shared<FrameClock>();
    std::shared_ptr<PgmMapView> map;
    std::shared_ptr<PgmClusterManager> manager;
};

Page& page() {
    static Page instance;
    return instance;
}

bool isReady() {
    return page().map && page().map->didFinishLoadingMap();
}

/// @param coordinates  latitude and longitude in turn.
void addPlaces(const val& coordinates) {
    page().manager = PgmClusterManager::create(page().map);
    const auto numbers = emscripten::convertJSArrayToNumberVector<double>(coordinates);
    std::vector<std::shared_ptr<PgmClusterItem>> items;
    for (std::size_t i = 0; i + 1 < numbers.size(); i += 2) {
        items.push_back(std::make_shared<Place>(CLLocationCoordinate2D{numbers[i], numbers[i + 1]}));
    }
    page().manager->addItems(items);
}

/// @return milliseconds that the call takes, the clustering that it causes included.
double look(double latitude, double longitude, double zoom) {
    const double start = emscripten_get_now();
    page().map->setCameraPosition(PgmCameraPosition::cameraPosition({latitude, longitude}, zoom));
    return emscripten_get_now() - start;
}

/// Milliseconds on the page's clock at which the newest frame began.
double frameStart() {
    return page().clock->start();
}

val state() {
    val result = val::object();
    result.set("clusters", static_cast<double>(page().manager->clusters().size()));
    result.set("markers", static_cast<double>(page().map->shapesMap().size()));
    return result;
}

/// @return median milliseconds for the icon of a count not seen before, the first one left out.
double iconMedian() {
    constexpr int count = 100;
    const auto generator = PgmDefaultClusterIconGenerator::create();
    std::vector<double> times;
    for (int i = 0; i <= count; ++i) {
        const double start = emscripten_get_now();
        (void)generator->iconForCount(2 + i * 7);
        times.push_back(emscripten_get_now() - start);
    }
    std::sort(times.begin() + 1, times.end());
    return times[1 + count / 2];
}

}  // namespace

EMSCRIPTEN_BINDINGS(clusterBench) {
    emscripten::function("isReady", &isReady);
    emscripten::function("addPlaces", &addPlaces);
    emscripten::function("look", &look);
    emscripten::function("frameStart", &frameStart);
    emscripten::function("state", &state);
    emscripten::function("iconMedian", &iconMedian);
}

int main() {
    return runApplication([](UIWindow& window) {
        FrameLoop::add(page().clock);
        page().map = PgmMapView::create(
            window.bounds(), PgmMapOptions::create(PgmCameraPosition::cameraPosition({48, 10}, 3)));
        window.addSubview(page().map);
    });
}
