#include <benchmark/benchmark.h>
#include <cstdint>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include <pelta/Pelta.h>
#include <pelta/headless/HeadlessPort.h>

#include "FlatScene.h"

// Time of the overlay work on the headless port beside a hand-written flat scene that does the same
// bookkeeping.

namespace {

using namespace pelta;

constexpr auto emptyStyle = R"({"version":8,"name":"bench","sources":{"places":{
    "type":"geojson","data":{"type":"FeatureCollection","features":[]}}},"layers":[
    {"id":"ground","type":"background"},{"id":"labels","type":"symbol","source":"places"}]})";

struct Point {
    double latitude;
    double longitude;
};

std::vector<Point> pointsOverKorea(std::size_t count) {
    std::mt19937_64 random(20261121);
    std::uniform_real_distribution<double> latitude(33, 39);
    std::uniform_real_distribution<double> longitude(124, 132);
    std::vector<Point> points(count);
    for (Point& point : points) {
        point = {latitude(random), longitude(random)};
    }
    return points;
}

/// A loaded map without overlays.
class Scene {
 public:
    Scene() {
        window_ = port_.makeWindow({800, 600});
        port_.serveDocument(std::string(defaultStyleURL()), emptyStyle);
        map_ = PgmMapView::create(window_->bounds());
        window_->addSubview(map_);
        port_.runUntilIdle();
    }

    void addMarkers(const std::vector<Point>& points) {
        markers_.reserve(points.size());
        for (const Point& point : points) {
            auto marker = PgmMarker::markerWithPosition({point.latitude, point.longitude});
            marker->setTitle("P " + std::to_string(markers_.size()));
            marker->setMapView(map_);
            markers_.push_back(std::move(marker));
        }
    }

    /// A map whose markers all want taps, drawn, looking at the middle of them.
    void makeTouchable() {
        for (const auto& marker : markers_) {
            marker->setTouchEvent([this](PgmShape&) { return ++taps_ > 0; });
        }
        map_->moveCamera(PgmCameraUpdate::cameraUpdateTargetToZoomTo({36, 128}, 10));
        port_.runUntilIdle();
    }

    /// A tap in the middle, with the wait that rules out a double tap.
    /// @return taps that markers have been offered so far.
    std::size_t tap() {
        port_.tap(*window_, {400, 300});
        port_.advance(0.4);
        return taps_;
    }

    HeadlessPort& port() { return port_; }
    PgmMapView& map() { return *map_; }
    std::vector<std::shared_ptr<PgmMarker>>& markers() { return markers_; }

 private:
    HeadlessPort port_;
    std::shared_ptr<UIWindow> window_;
    std::shared_ptr<PgmMapView> map_;
    std::vector<std::shared_ptr<PgmMarker>> markers_;
    std::size_t taps_ = 0;
};

bench::FlatScene flatScene(const std::vector<Point>& points) {
    bench::FlatScene scene;
    for (std::size_t index = 0; index < points.size(); ++index) {
        bench::FlatScene::Marker marker;
        marker.identifier = "Marker_" + std::to_string(index);
        marker.title = "P " + std::to_string(index);
        marker.icon = "I:1";
        marker.latitude = points[index].latitude;
        marker.longitude = points[index].longitude;
        marker.index = index;
        scene.add(std::move(marker));
    }
    return scene;
}

void addAndFirstFrame(benchmark::State& state) {
    const auto points = pointsOverKorea(static_cast<std::size_t>(state.range(0)));
    while (state.KeepRunning()) {
        state.PauseTiming();
        auto scene = std::make_unique<Scene>();
        state.ResumeTiming();
        scene->addMarkers(points);
        scene->port().runFrame();
        state.PauseTiming();
        scene.reset();
        state.ResumeTiming();
    }
}

void addAndFirstFrameFlat(benchmark::State& state) {
    const auto points = pointsOverKorea(static_cast<std::size_t>(state.range(0)));
    while (state.KeepRunning()) {
        bench::FlatScene scene = flatScene(points);
        scene.reorder();
        scene.rebuildFrame();
        benchmark::DoNotOptimize(scene.drawnCount());
    }
}

void onePropertyAndFrame(benchmark::State& state) {
    Scene scene;
    scene.addMarkers(pointsOverKorea(static_cast<std::size_t>(state.range(0))));
    scene.port().runUntilIdle();
    double scale = 1;
    while (state.KeepRunning()) {
        scale = scale > 2 ? 1 : scale + 0.01;
        scene.markers()[scene.markers().size() / 2]->setIconScale(scale);
        scene.port().runFrame();
    }
}

void onePositionAndFrame(benchmark::State& state) {
    Scene scene;
    scene.addMarkers(pointsOverKorea(static_cast<std::size_t>(state.range(0))));
    scene.port().runUntilIdle();
    double latitude = 36;
    while (state.KeepRunning()) {
        latitude = latitude > 38 ? 36 : latitude + 0.01;
        scene.markers()[scene.markers().size() / 2]->setPosition({latitude, 127});
        scene.port().runFrame();
    }
}

void onePropertyAndFrameFlat(benchmark::State& state) {
    const auto count = static_cast<std::size_t>(state.range(0));
    bench::FlatScene scene = flatScene(pointsOverKorea(count));
    scene.rebuildFrame();
    while (state.KeepRunning()) {
        scene.markers()[count / 2].iconScale += 0.01;
        scene.updateFrame(count / 2);
    }
}

void reorderReversed(benchmark::State& state) {
    Scene scene;
    scene.addMarkers(pointsOverKorea(static_cast<std::size_t>(state.range(0))));
    scene.port().runUntilIdle();
    std::int64_t sign = 1;
    while (state.KeepRunning()) {
        state.PauseTiming();
        sign = -sign;
        for (std::size_t index = 0; index < scene.markers().size(); ++index) {
            scene.markers()[index]->setZIndex(sign * static_cast<std::int64_t>(index));
        }
        state.ResumeTiming();
        scene.map().reorderShapes();
        state.PauseTiming();
        scene.port().runFrame();
        state.ResumeTiming();
    }
}

void reorderReversedFlat(benchmark::State& state) {
    bench::FlatScene scene = flatScene(pointsOverKorea(static_cast<std::size_t>(state.range(0))));
    std::int64_t sign = 1;
    while (state.KeepRunning()) {
        state.PauseTiming();
        sign = -sign;
        for (auto& marker : scene.markers()) {
            marker.zIndex = sign * static_cast<std::int64_t>(marker.index);
        }
        state.ResumeTiming();
        scene.reorder();
    }
}

void tapOnMarkers(benchmark::State& state) {
    Scene scene;
    scene.addMarkers(pointsOverKorea(static_cast<std::size_t>(state.range(0))));
    scene.makeTouchable();
    while (state.KeepRunning()) {
        benchmark::DoNotOptimize(scene.tap());
    }
}

/// The first tap after something has moved.
void tapAfterAMove(benchmark::State& state) {
    Scene scene;
    scene.addMarkers(pointsOverKorea(static_cast<std::size_t>(state.range(0))));
    scene.makeTouchable();
    double latitude = 36;
    while (state.KeepRunning()) {
        state.PauseTiming();
        latitude = latitude > 38 ? 36 : latitude + 0.01;
        scene.markers().front()->setPosition({latitude, 127});
        scene.port().runUntilIdle();
        state.ResumeTiming();
        benchmark::DoNotOptimize(scene.tap());
    }
}

void tapOnMarkersFlat(benchmark::State& state) {
    bench::FlatScene scene = flatScene(pointsOverKorea(static_cast<std::size_t>(state.range(0))));
    scene.reorder();
    scene.rebuildFrame();
    while (state.KeepRunning()) {
        benchmark::DoNotOptimize(scene.topmostAt(448557.5, 205880.4));
    }
}

BENCHMARK(addAndFirstFrame)->Arg(10'000)->Arg(50'000)->Unit(benchmark::kMillisecond);
BENCHMARK(addAndFirstFrameFlat)->Arg(10'000)->Arg(50'000)->Unit(benchmark::kMillisecond);
BENCHMARK(onePropertyAndFrame)->Arg(10'000)->Unit(benchmark::kMillisecond);
BENCHMARK(onePositionAndFrame)->Arg(10'000)->Unit(benchmark::kMillisecond);
BENCHMARK(onePropertyAndFrameFlat)->Arg(10'000)->Unit(benchmark::kMillisecond);
BENCHMARK(reorderReversed)->Arg(10'000)->Unit(benchmark::kMillisecond);
BENCHMARK(reorderReversedFlat)->Arg(10'000)->Unit(benchmark::kMillisecond);
BENCHMARK(tapOnMarkers)->Arg(10'000)->Unit(benchmark::kMillisecond);
BENCHMARK(tapAfterAMove)->Arg(10'000)->Unit(benchmark::kMillisecond);
BENCHMARK(tapOnMarkersFlat)->Arg(10'000)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
