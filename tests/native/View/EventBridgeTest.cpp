#include "View/MapFixture.h"

namespace pelta {
namespace {

class EventBridgeTest : public MapFixture {};

/// Writes down what it hears, with the name of the listener.
struct Recorder : PgmMapDelegate {
    Recorder(std::string name, std::vector<std::string>& heard) : name(std::move(name)), heard(heard) {}

    void regionWillChangeAnimated(PgmMapView& /*mapView*/, bool animated,
                                  PgmCameraUpdateReason reason) override {
        note(animated ? "will, animated" : "will", reason);
    }
    void regionIsChangingWithReason(PgmMapView& /*mapView*/, PgmCameraUpdateReason reason) override {
        note("is", reason);
    }
    void regionDidChangeAnimated(PgmMapView& /*mapView*/, bool animated,
                                 PgmCameraUpdateReason reason) override {
        note(animated ? "did, animated" : "did", reason);
    }
    void mapViewDidBecomeIdle(PgmMapView& /*mapView*/) override { heard.push_back(name + " idle"); }
    void didUpdateUserLocation(PgmMapView& /*mapView*/, const std::optional<CLLocation>& location) override {
        heard.push_back(name + " at " + std::to_string(static_cast<int>(location->coordinate.latitude)));
    }
    void note(const std::string& event, PgmCameraUpdateReason reason) {
        heard.push_back(name + " " + event + " " + std::to_string(static_cast<int>(reason)));
    }

    std::string name;
    std::vector<std::string>& heard;
};

TEST_F(EventBridgeTest, ReasonsAreGestureThenControlThenDeveloper) {
    const std::vector<std::pair<unsigned, int>> cases{
        {0, 0},   {1, 0},   {2, -2},   {3, -2},   {4, -1},     {8, -1},      {16, -1},
        {32, -1}, {64, -1}, {128, -1}, {256, -1}, {1 | 4, -1}, {2 | 16, -1}, {512, 0}};
    const auto map = makeMap();
    std::vector<std::string> heard;
    const auto recorder = std::make_shared<Recorder>("app", heard);
    map->setDelegate(recorder);
    for (const auto& [engineReason, told] : cases) {
        SCOPED_TRACE(engineReason);
        heard.clear();
        const auto reason = static_cast<MLNCameraChangeReason>(engineReason);
        const auto bridge = engineOf(map).delegate();
        bridge->regionWillChange(engineOf(map), reason, true);
        bridge->regionIsChanging(engineOf(map), reason);
        bridge->regionDidChange(engineOf(map), reason, false);
        const auto suffix = " " + std::to_string(told);
        EXPECT_THAT(heard, testing::ElementsAre("app will, animated" + suffix, "app is" + suffix,
                                                "app did" + suffix));
    }
}

TEST_F(EventBridgeTest, ClusterDelegateHearsOnlyMovementAndAfterTheApplication) {
    const auto map = makeLoadedMap();
    std::vector<std::string> heard;
    const auto application = std::make_shared<Recorder>("app", heard);
    const auto clusters = std::make_shared<Recorder>("clusters", heard);
    map->setDelegate(application);
    map->setClusterDelegate(clusters);
    map->setZoomLevel(5);
    EXPECT_THAT(heard, testing::ElementsAre("app will 0", "app is 0", "clusters is 0", "app did 0"));

    heard.clear();
    EXPECT_TRUE(port.runUntilIdle());
    EXPECT_THAT(heard, testing::ElementsAre("app idle"));

    heard.clear();
    map->setUserTrackingMode(PgmUserTrackingMode::none);
    port.reportLocation({.coordinate = {37, 127}});
    EXPECT_THAT(heard, testing::ElementsAre("app at 37"));
}

TEST_F(EventBridgeTest, ListenersAreHeldWeakly) {
    const auto map = makeLoadedMap();
    std::vector<std::string> heard;
    map->setDelegate(std::make_shared<Recorder>("app", heard));
    map->setZoomLevel(5);
    EXPECT_EQ(map->delegate(), nullptr);
    EXPECT_TRUE(heard.empty());
}

/// Releases the only reference to the view at the first event of a kind.
struct Releaser : PgmMapDelegate {
    void regionWillChangeAnimated(PgmMapView& /*mapView*/, bool /*animated*/,
                                  PgmCameraUpdateReason /*reason*/) override {
        release(0);
    }
    void regionIsChangingWithReason(PgmMapView& /*mapView*/, PgmCameraUpdateReason /*reason*/) override {
        release(1);
    }
    void regionDidChangeAnimated(PgmMapView& /*mapView*/, bool /*animated*/,
                                 PgmCameraUpdateReason /*reason*/) override {
        release(2);
    }
    void mapViewDidBecomeIdle(PgmMapView& /*mapView*/) override { release(3); }
    void release(int event) {
        if (event == releasingEvent) {
            map.reset();
        }
    }

    int releasingEvent = 0;
    std::shared_ptr<PgmMapView> map;
};

TEST_F(EventBridgeTest, AnyEventMayReleaseTheView) {
    const std::function<void(PgmMapView&)> changes[] = {
        [](PgmMapView& map) { map.setZoomLevel(9); },
        [](PgmMapView& map) { map.setMinimumZoomLevel(9); },
        [](PgmMapView& map) { map.moveCamera(PgmCameraUpdate::cameraUpdateZoomTo(9)); },
        [](PgmMapView& map) {
            auto options = PgmMapOptions::create(PgmCameraPosition::cameraPosition({1, 2}, 9));
            map.applyMapOptions(*options);
        },
    };
    for (int event = 0; event < 5; ++event) {
        for (const auto& change : changes) {
            SCOPED_TRACE(event);
            const auto releaser = std::make_shared<Releaser>();
            releaser->releasingEvent = event;
            releaser->map = PgmMapView::create(window->bounds(), nullptr, releaser);
            const std::weak_ptr<PgmMapView> view = releaser->map;
            PgmMarker::markerWithPosition({1, 2})->setMapView(releaser->map);
            if (event == 4) {
                releaser->map->moveCamera(PgmCameraUpdate::cameraUpdateZoomTo(9),
                                          [&] { releaser->release(4); });
            } else {
                change(*releaser->map);
            }
            EXPECT_TRUE(port.runUntilIdle());
            EXPECT_TRUE(view.expired());
        }
    }
}

}  // namespace
}  // namespace pelta
