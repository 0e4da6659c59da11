#include <array>
#include <tuple>

#include "View/MapFixture.h"

namespace pelta {
namespace {

constexpr CLLocationCoordinate2D seoul{37.5665, 126.9780};

class MapViewTest : public MapFixture {};

TEST_F(MapViewTest, OptionsAreAppliedExceptForTheLogo) {
    const auto options =
        PgmMapOptions::create(PgmCameraPosition::cameraPosition(seoul, 12, 30, 90), false, false, true, true,
                              true, 3, 18, 10, 50, false, false, false, false);
    const auto map = makeMap(options);
    const auto& engine = engineOf(map);

    EXPECT_TRUE(map->isZoomControlVisible() && map->isLocationButtonVisible());
    EXPECT_FALSE(map->isLogoVisible()) << "the view's own flag decides";
    EXPECT_EQ((std::array{engine.minimumZoomLevel(), engine.maximumZoomLevel(), engine.minimumPitch(),
                          engine.maximumPitch()}),
              (std::array{3., 18., 10., 50.}));
    EXPECT_EQ(engine.gestures(), (GestureSettings{false, false, false, false}));
    EXPECT_FALSE(engine.showsScale() || engine.showsCompassView());

    expectCamera(*map, seoul, 12, 30, 90);

    options->setMaximumZoomLevel(5);
    options->setIsCompassVisible(true);
    EXPECT_EQ(engine.maximumZoomLevel(), 18);
    EXPECT_FALSE(engine.showsCompassView());
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

/// A map that does everything it can before it has its engine view.
class EarlyMap final : public PgmMapView {
 public:
    explicit EarlyMap(CGRect frame) : PgmMapView(frame) {
        applyMapOptions(*PgmMapOptions::create(PgmCameraPosition::cameraPosition(seoul, 12), false, false,
                                               true, true, true, 3, 18, 10, 50, false, false, false, false));
        setContentInset({10, 20, 30, 40});
        setDecelerationRate(0.5);
        setLatitude(1);
        setLongitude(2);
        setZoomLevel(7);
        setUserTrackingMode(PgmUserTrackingMode::follow);
        setIsLogoVisible(true);
        setIsLogoClickEnabled(false);
        setCameraPosition(PgmCameraPosition::cameraPosition(seoul, 12));
        moveCamera(PgmCameraUpdate::cameraUpdateZoomIn());
        moveCamera(PgmCameraUpdate::cameraUpdateZoomIn(), [this] { ++completions; });
        flyToCamera(PgmCameraPosition::cameraPosition(seoul, 12), 1, [this] { ++completions; });
        setConstraintBounds(PgmLatLngBounds::create({0, 0}, {1, 1}));
        plusAction();
        minusAction();
        locactionAction();
        updateOptions();
        refreshOrnamentConstraints();
        triggerRepaint();
        std::vector<std::shared_ptr<NSLayoutConstraint>> constraints;
        updateConstraintsForOrnament(make<UIView>(CGRect{}), constraints, PgmPosition::topLeft, {}, {});
        early = projection();
    }
    std::shared_ptr<PgmProjection> early;
    int completions = 0;
};

TEST_F(MapViewTest, WritesBeforeTheEngineViewExistsOnlyStore) {
    const auto map = make<EarlyMap>(window->bounds());
    const auto untouched = makeMap();
    const auto& engine = engineOf(map);
    const auto& other = engineOf(untouched);
    EXPECT_EQ(map->contentInset(), (UIEdgeInsets{10, 20, 30, 40}));
    EXPECT_EQ((std::array{map->latitude(), map->longitude(), map->zoomLevel(), map->minimumZoomLevel()}),
              (std::array{1., 2., 7., 3.}));
    EXPECT_EQ(map->userTrackingMode(), PgmUserTrackingMode::follow);
    EXPECT_TRUE(map->isLogoVisible() && map->isZoomControlVisible() && map->isLocationButtonVisible());
    EXPECT_FALSE(map->zoomView()->isHidden() || map->locationView()->isHidden());
    EXPECT_FALSE(map->isScaleBarVisible() || map->isCompassVisible() || map->isLogoClickEnabled());
    EXPECT_EQ(engine.contentInset(), UIEdgeInsets{});
    EXPECT_EQ(engine.gestures(), other.gestures());
    EXPECT_EQ((std::array{engine.minimumZoomLevel(), engine.maximumZoomLevel(), engine.minimumPitch(),
                          engine.maximumPitch(), engine.zoomLevel(), engine.centerCoordinate().latitude}),
              (std::array{0., 22., 0., 60., 0., 0.}));
    EXPECT_FALSE(engine.showsUserLocation());
    EXPECT_EQ(engine.showsCompassView(), other.showsCompassView());
    EXPECT_EQ(map->completions, 0);
    EXPECT_EQ(map->early->latlng({1, 1}), std::nullopt);
    EXPECT_NE(map->projection()->latlng({1, 1}), std::nullopt);
}

TEST_F(MapViewTest, UserTrackingModesShowAndFollowTheLocation) {
    using Mode = PgmUserTrackingMode;
    using EngineMode = MLNUserTrackingMode;
    const std::tuple<Mode, bool, EngineMode> cases[] = {
        {Mode::none, true, EngineMode::none},
        {Mode::follow, true, EngineMode::follow},
        {Mode::followWithHeading, true, EngineMode::followWithHeading},
        {Mode::off, false, EngineMode::followWithHeading},
    };
    const auto map = makeMap();
    for (const auto& [mode, isShown, engineMode] : cases) {
        SCOPED_TRACE(static_cast<unsigned>(mode));
        map->setUserTrackingMode(mode);
        map->moveCamera(nullptr);
        EXPECT_EQ(map->userTrackingMode(), mode);
        EXPECT_EQ(engineOf(map).showsUserLocation(), isShown);
        EXPECT_EQ(port.isLocationObserved(), isShown);
        EXPECT_EQ(engineOf(map).userTrackingMode(), engineMode);
    }
    EXPECT_TRUE(engineOf(map).showsHeading());
    EXPECT_DEATH(map->setUserTrackingMode(static_cast<PgmUserTrackingMode>(4)), "user tracking mode 4");
}

}  // namespace
}  // namespace pelta
