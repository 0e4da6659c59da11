#include <array>

#include "View/MapFixture.h"

namespace pelta {
namespace {

constexpr CLLocationCoordinate2D seoul{37.5665, 126.9780};

class MapViewTest : public MapFixture {};

void expectDefaults(const PgmMapView& view) {
    EXPECT_EQ(view.latitude(), 0);
    EXPECT_EQ(view.longitude(), 0);
    EXPECT_EQ(view.zoomLevel(), 15);
    EXPECT_EQ(view.minimumZoomLevel(), 1);
    EXPECT_EQ(view.maximumZoomLevel(), 20);
    EXPECT_EQ(view.minimumTilt(), 0);
    EXPECT_EQ(view.maximumTilt(), 60);
    EXPECT_EQ(view.contentInset(), UIEdgeInsets{});
    EXPECT_EQ(view.userTrackingMode(), PgmUserTrackingMode::off);
    EXPECT_TRUE(view.isScaleBarVisible());
    EXPECT_TRUE(view.isCompassVisible());
    EXPECT_FALSE(view.isZoomControlVisible());
    EXPECT_FALSE(view.isLocationButtonVisible());
    EXPECT_FALSE(view.isLogoVisible());
    EXPECT_TRUE(view.isZoomGesturesEnabled());
    EXPECT_TRUE(view.isScrollGesturesEnabled());
    EXPECT_TRUE(view.isRotateGesturesEnabled());
    EXPECT_TRUE(view.isTiltGesturesEnabled());
    EXPECT_TRUE(view.isLogoClickEnabled());
    EXPECT_EQ(view.decelerationRate(), 0.998);
    EXPECT_EQ(view.logoViewPosition(), PgmPosition::bottomLeft);
    EXPECT_EQ(view.logoViewMargins(), (CGPoint{8, 8}));
    EXPECT_EQ(view.zoomViewPosition(), PgmPosition::centerRight);
    EXPECT_EQ(view.zoomViewMargins(), (CGPoint{8, 0}));
    EXPECT_EQ(view.locationViewPosition(), PgmPosition::bottomRight);
    EXPECT_EQ(view.locationViewMargins(), (CGPoint{8, 8}));
    EXPECT_EQ(view.mapOptions(), nullptr);
    EXPECT_EQ(view.delegate(), nullptr);
    EXPECT_TRUE(view.shapesMap().empty());
    EXPECT_FALSE(view.needReorderShapes() || view.needUpdateShapes() || view.needCheckShapeImage());
    EXPECT_FALSE(view.didFinishLoadingMap());
    EXPECT_EQ(view.first_symobol_id(), std::nullopt);
}

TEST_F(MapViewTest, StartsWithItsOwnDefaultsOfWhichTheEngineHearsNothing) {
    const auto map = makeMap();
    expectDefaults(*map);
    const auto& engine = engineOf(map);
    EXPECT_EQ(engine.zoomLevel(), 0);
    EXPECT_EQ(engine.minimumZoomLevel(), 0);
    EXPECT_EQ(engine.maximumZoomLevel(), 22);
    EXPECT_FALSE(engine.showsScale());
    EXPECT_FALSE(engine.showsUserLocation());
}

TEST_F(MapViewTest, EngineFillsTheViewAndShowsTheLibrarysOwnOrnaments) {
    const auto map = makeMap();
    const auto& engine = engineOf(map);
    map->setFrame({{5, 6}, {320, 240}});
    window->layoutIfNeeded();
    EXPECT_EQ(engine.frame(), (CGRect{{0, 0}, {320, 240}}));
    EXPECT_FALSE(engine.showsAttributionButton());

    const std::pair<std::shared_ptr<UIImageView>, std::string> ornaments[] = {
        {engine.logoView(), "peltamap_pelta_logo"}, {engine.compassView(), "peltamap_compass_normal"}};
    for (const auto& [ornament, name] : ornaments) {
        SCOPED_TRACE(name);
        const auto picture = Bundle::library().imageNamed(name);
        ASSERT_TRUE(picture && ornament->image());
        EXPECT_EQ(ornament->image()->size(), picture->size());
        EXPECT_EQ(ornament->frame().size, picture->size());
    }
}

/// Sets a value on a view with an engine and on one without; both keep it, and the engine answers it.
template <class Value, class Getter, class Arrived>
void expectForwarded(const std::shared_ptr<PgmMapView>& map, void (PgmMapView::*set)(Value), Getter get,
                     Value value, Arrived arrived) {
    const auto unfinished = std::make_shared<PgmMapView>(CGRect{});
    for (auto* view : {map.get(), unfinished.get()}) {
        (view->*set)(value);
        EXPECT_EQ((view->*get)(), value);
    }
    EXPECT_EQ(arrived(*map->mapView()), value);
}

TEST_F(MapViewTest, EverySettingIsKeptAndReachesTheEngine) {
    using View = PgmMapView;
    using Engine = MLNMapView;
    const auto map = makeMap();
    const auto latitude = [](auto& engine) { return engine.centerCoordinate().latitude; };
    const auto longitude = [](auto& engine) { return engine.centerCoordinate().longitude; };
    expectForwarded(map, &View::setLatitude, &View::latitude, 12.0, latitude);
    expectForwarded(map, &View::setLongitude, &View::longitude, 34.0, longitude);
    EXPECT_EQ(engineOf(map).centerCoordinate(), (CLLocationCoordinate2D{12, 34}));
    const auto member = [](auto get) { return [get](const Engine& engine) { return (engine.*get)(); }; };
    const auto zoom = member(&Engine::zoomLevel);
    expectForwarded(map, &View::setZoomLevel, &View::zoomLevel, 7.0, zoom);
    const auto minimumZoom = member(&Engine::minimumZoomLevel);
    expectForwarded(map, &View::setMinimumZoomLevel, &View::minimumZoomLevel, 8.0, minimumZoom);
    EXPECT_EQ(engineOf(map).zoomLevel(), 8);
    EXPECT_EQ(map->zoomLevel(), 7) << "the view keeps what was set";
    const auto maximumZoom = member(&Engine::maximumZoomLevel);
    expectForwarded(map, &View::setMaximumZoomLevel, &View::maximumZoomLevel, 9.0, maximumZoom);
    const auto minimumPitch = member(&Engine::minimumPitch);
    expectForwarded(map, &View::setMinimumTilt, &View::minimumTilt, 5.0, minimumPitch);
    const auto maximumPitch = member(&Engine::maximumPitch);
    expectForwarded(map, &View::setMaximumTilt, &View::maximumTilt, 45.0, maximumPitch);
    const auto inset = member(&Engine::contentInset);
    expectForwarded(map, &View::setContentInset, &View::contentInset, UIEdgeInsets{10, 20, 30, 40}, inset);
    const auto rate = [](auto& engine) { return engine.gestures().decelerationRate; };
    expectForwarded(map, &View::setDecelerationRate, &View::decelerationRate, 0.99, rate);
}

TEST_F(MapViewTest, EveryFlagIsKeptAndReachesTheEngine) {
    using View = PgmMapView;
    const auto map = makeMap();
    for (const bool flag : {false, true}) {
        SCOPED_TRACE(flag);
        expectForwarded(map, &View::setIsScaleBarVisible, &View::isScaleBarVisible, flag,
                        [](auto& engine) { return engine.showsScale(); });
        expectForwarded(map, &View::setIsCompassVisible, &View::isCompassVisible, flag,
                        [](auto& engine) { return engine.showsCompassView(); });
        expectForwarded(map, &View::setIsLogoVisible, &View::isLogoVisible, flag,
                        [](auto& engine) { return engine.showsLogoView(); });
        expectForwarded(map, &View::setIsLogoClickEnabled, &View::isLogoClickEnabled, flag,
                        [](auto& engine) { return engine.logoView()->isUserInteractionEnabled(); });
        expectForwarded(map, &View::setIsZoomGesturesEnabled, &View::isZoomGesturesEnabled, flag,
                        [](auto& engine) { return engine.gestures().isZoomEnabled; });
        expectForwarded(map, &View::setIsScrollGesturesEnabled, &View::isScrollGesturesEnabled, flag,
                        [](auto& engine) { return engine.gestures().isScrollEnabled; });
        expectForwarded(map, &View::setIsRotateGesturesEnabled, &View::isRotateGesturesEnabled, flag,
                        [](auto& engine) { return engine.gestures().isRotateEnabled; });
        expectForwarded(map, &View::setIsTiltGesturesEnabled, &View::isTiltGesturesEnabled, flag,
                        [](auto& engine) { return engine.gestures().isPitchEnabled; });
    }
}

TEST_F(MapViewTest, WithoutAnEngineThereIsNoCameraAndNothingHappens) {
    const auto map = std::make_shared<PgmMapView>(CGRect{{}, windowSize});
    bool isCompleted = false;
    map->setCameraPosition(PgmCameraPosition::cameraPosition(seoul, 10));
    map->moveCamera(PgmCameraUpdate::cameraUpdateZoomTo(3), [&] { isCompleted = true; });
    map->flyToCamera(PgmCameraPosition::cameraPosition(seoul, 10), 1, [&] { isCompleted = true; });
    map->setUserTrackingMode(PgmUserTrackingMode::follow);
    map->addShape(PgmMarker::create());
    map->triggerRepaint();
    EXPECT_FALSE(isCompleted);
    EXPECT_EQ(map->userTrackingMode(), PgmUserTrackingMode::follow);
    EXPECT_EQ(map->shapesMap().size(), 1U);
    EXPECT_EQ(map->cameraPosition(), nullptr);
    EXPECT_EQ(map->contentBounds(), nullptr);
    EXPECT_EQ(map->constraintBounds(), nullptr);
}

TEST_F(MapViewTest, OptionsAreAppliedExceptForTheLogo) {
    const auto options =
        PgmMapOptions::create(PgmCameraPosition::cameraPosition(seoul, 12, 30, 90), false, false, true, true,
                              true, 3, 18, 10, 50, false, false, false, false);
    const auto map = makeMap(options);
    const auto& engine = engineOf(map);

    EXPECT_EQ(map->mapOptions(), options);
    EXPECT_FALSE(map->isScaleBarVisible() || map->isCompassVisible());
    EXPECT_TRUE(map->isZoomControlVisible() && map->isLocationButtonVisible());
    EXPECT_FALSE(map->isLogoVisible()) << "the view's own flag decides";
    EXPECT_EQ((std::array{map->minimumZoomLevel(), map->maximumZoomLevel(), map->minimumTilt(),
                          map->maximumTilt()}),
              (std::array{3., 18., 10., 50.}));
    EXPECT_EQ((std::array{engine.minimumZoomLevel(), engine.maximumZoomLevel(), engine.minimumPitch(),
                          engine.maximumPitch()}),
              (std::array{3., 18., 10., 50.}));
    EXPECT_EQ(engine.gestures(), (GestureSettings{false, false, false, false}));
    EXPECT_FALSE(engine.showsScale() || engine.showsCompassView());

    const auto camera = map->cameraPosition();
    EXPECT_NEAR(camera->target().latitude, seoul.latitude, 1e-9);
    EXPECT_NEAR(camera->target().longitude, seoul.longitude, 1e-9);
    EXPECT_NEAR(camera->zoom(), 12, 1e-9);
    EXPECT_NEAR(camera->tilt(), 30, 1e-9);
    EXPECT_NEAR(camera->bearing(), 90, 1e-9);

    options->setMaximumZoomLevel(5);
    options->setIsCompassVisible(true);
    EXPECT_EQ(engine.maximumZoomLevel(), 18);
    EXPECT_FALSE(map->isCompassVisible());
}

TEST_F(MapViewTest, OptionsCameraComesBeforeTheirLimits) {
    struct ZoomRecorder : PgmMapDelegate {
        std::vector<double> zooms;
        void regionDidChangeAnimated(PgmMapView& map, bool /*animated*/,
                                     PgmCameraUpdateReason /*reason*/) override {
            zooms.push_back(map.mapView()->zoomLevel());
        }
    };
    const auto recorder = std::make_shared<ZoomRecorder>();
    const auto options = PgmMapOptions::create(PgmCameraPosition::cameraPosition(seoul, 21));
    const auto map = PgmMapView::create(window->bounds(), options, recorder);
    ASSERT_GE(recorder->zooms.size(), 2U);
    EXPECT_NEAR(recorder->zooms.front(), 21, 1e-9);
    EXPECT_NEAR(recorder->zooms.back(), 20, 1e-9);
    EXPECT_EQ(map->delegate(), recorder);
}

TEST_F(MapViewTest, UserTrackingModesShowAndFollowTheLocation) {
    struct Case {
        PgmUserTrackingMode mode;
        bool isShown;
        MLNUserTrackingMode engineMode;
    };
    const Case cases[] = {
        {PgmUserTrackingMode::none, true, MLNUserTrackingMode::none},
        {PgmUserTrackingMode::follow, true, MLNUserTrackingMode::follow},
        {PgmUserTrackingMode::followWithHeading, true, MLNUserTrackingMode::followWithHeading},
        {PgmUserTrackingMode::off, false, MLNUserTrackingMode::followWithHeading},
    };
    const auto map = makeMap();
    for (const auto& testCase : cases) {
        SCOPED_TRACE(static_cast<unsigned>(testCase.mode));
        map->setUserTrackingMode(testCase.mode);
        EXPECT_EQ(map->userTrackingMode(), testCase.mode);
        EXPECT_EQ(engineOf(map).showsUserLocation(), testCase.isShown);
        EXPECT_EQ(port.isLocationObserved(), testCase.isShown);
        EXPECT_EQ(engineOf(map).userTrackingMode(), testCase.engineMode);
    }
    EXPECT_TRUE(engineOf(map).showsHeading());
    EXPECT_DEATH(map->setUserTrackingMode(static_cast<PgmUserTrackingMode>(4)), "user tracking mode 4");
}

TEST_F(MapViewTest, BoundsOfContentAndConstraintComeFromTheEngine) {
    const auto map = makeMap();
    map->setCameraPosition(PgmCameraPosition::cameraPosition(seoul, 10));
    const auto content = map->contentBounds();
    EXPECT_TRUE(content->contains(seoul));
    EXPECT_NEAR(content->center().longitude, seoul.longitude, 1e-9);

    const auto area = PgmLatLngBounds::create({33, 124}, {39, 132});
    map->setConstraintBounds(area);
    map->setConstraintBounds(nullptr);
    EXPECT_EQ(map->constraintBounds()->southWest(), area->southWest());
    EXPECT_EQ(map->constraintBounds()->northEast(), area->northEast());
    map->setLatitude(60);
    EXPECT_LT(map->cameraPosition()->target().latitude, 39);
}

}  // namespace
}  // namespace pelta
