#include <functional>

#include "View/MapFixture.h"

namespace pelta {
namespace {

constexpr CLLocationCoordinate2D seoul{37.5665, 126.9780};

class CameraUpdateTest : public MapFixture {
 protected:
    void expectCamera(const PgmCameraPosition& expected, double tolerance = 1e-9) const {
        const auto camera = map->cameraPosition();
        EXPECT_NEAR(camera->target().latitude, expected.target().latitude, tolerance);
        EXPECT_NEAR(camera->target().longitude, expected.target().longitude, tolerance);
        EXPECT_NEAR(camera->zoom(), expected.zoom(), tolerance);
        EXPECT_NEAR(camera->tilt(), expected.tilt(), tolerance);
        EXPECT_NEAR(camera->bearing(), expected.bearing(), tolerance);
    }

    std::shared_ptr<PgmMapView> map = makeMap();
};

TEST_F(CameraUpdateTest, UpdatesChangeWhatTheySayAndNothingElse) {
    struct Case {
        const char* name;
        PgmCameraUpdate::Ptr update;
        std::shared_ptr<PgmCameraPosition> expected;
    };
    const auto start = PgmCameraPosition::create(seoul, 10, 20, 30);
    const auto params = PgmCameraUpdateParams::cameraUpdateParams();
    params->zoomBy(2);
    params->zoomTo(5);
    params->tiltTo(50);
    params->tiltBy(3);
    params->bearingTo(100);
    params->bearingBy(-40);
    params->targetBy({10, 10});
    params->targetTo({1, 2});
    const auto at = [](CLLocationCoordinate2D target, double zoom, double tilt, double bearing) {
        return PgmCameraPosition::create(target, zoom, tilt, bearing);
    };
    const Case cases[] = {
        {"zoom in", PgmCameraUpdate::cameraUpdateZoomIn(), at(seoul, 11, 20, 30)},
        {"zoom out", PgmCameraUpdate::cameraUpdateZoomOut(), at(seoul, 9, 20, 30)},
        {"zoom by", PgmCameraUpdate::cameraUpdateZoomBy(2.5), at(seoul, 12.5, 20, 30)},
        {"zoom to", PgmCameraUpdate::cameraUpdateZoomTo(3), at(seoul, 3, 20, 30)},
        {"tilt to", PgmCameraUpdate::cameraUpdateTiltTo(60), at(seoul, 10, 60, 30)},
        {"bearing to", PgmCameraUpdate::cameraUpdateBearingTo(-90), at(seoul, 10, 20, 270)},
        {"target to", PgmCameraUpdate::cameraUpdateTargetTo({35, 129}), at({35, 129}, 10, 20, 30)},
        {"target and zoom", PgmCameraUpdate::cameraUpdateTargetToZoomTo({35, 129}, 8),
         at({35, 129}, 8, 20, 30)},
        {"position", PgmCameraUpdate::cameraUpdateWithPosition(*at({35, 129}, 8, 1, 2)),
         at({35, 129}, 8, 1, 2)},
        {"params, last of each pair", PgmCameraUpdate::cameraUpdateWithParams(params),
         at({1, 2}, 5, 23, 350)},
        {"nothing", PgmCameraUpdate::cameraUpdateWithParams(nullptr), start},
        {"limits", PgmCameraUpdate::cameraUpdateZoomBy(100), at(seoul, 22, 20, 30)},
    };
    for (const auto& testCase : cases) {
        SCOPED_TRACE(testCase.name);
        EXPECT_EQ(testCase.update->animation(), PgmCameraUpdateAnimation::none);
        EXPECT_EQ(testCase.update->animationDuration(), 0.3);
        map->setCameraPosition(start);
        map->setCameraPosition(nullptr);
        map->moveCamera(testCase.update);
        map->moveCamera(nullptr);
        expectCamera(*testCase.expected);
    }
}

TEST_F(CameraUpdateTest, ScrollingMovesTheContent) {
    map->setCameraPosition(PgmCameraPosition::create({0, 0}, 4, 0, 0));
    const auto expected = *map->projection()->latlng({300, 320});
    const auto params = PgmCameraUpdateParams::create();
    params->targetBy({100, -20});
    map->moveCamera(PgmCameraUpdate::cameraUpdateWithParams(params));
    EXPECT_LT(expected.longitude, 0) << "what lay to the left comes to the middle";
    expectCamera(*PgmCameraPosition::create(expected, 4, 0, 0));
}

TEST_F(CameraUpdateTest, FittingShowsTheBoundsWithinThePadding) {
    const auto bounds = PgmLatLngBounds::create({36, 126}, {38, 128});
    struct Case {
        PgmCameraUpdate::Ptr update;
        UIEdgeInsets padding;
    };
    const Case cases[] = {
        {PgmCameraUpdate::cameraUpdateFitBounds(bounds), {}},
        {PgmCameraUpdate::cameraUpdateFitBounds(bounds, 20), {20, 20, 20, 20}},
        {PgmCameraUpdate::cameraUpdateFitBounds(bounds, {10, 20, 100, 40}), {10, 20, 100, 40}},
    };
    for (const auto& testCase : cases) {
        SCOPED_TRACE(testCase.padding.bottom);
        map->moveCamera(testCase.update);
        const auto rect = map->projection()->viewBounds(*bounds);
        const auto& padding = testCase.padding;
        // The height is what fills this view first.
        EXPECT_NEAR(rect.minY(), padding.top, 1e-6);
        EXPECT_NEAR(rect.maxY(), windowSize.height - padding.bottom, 1e-6);
        EXPECT_NEAR(rect.midX(), padding.left + (windowSize.width - padding.left - padding.right) / 2, 1e-6);
    }
    EXPECT_EQ(cases[1].update->updateParams()->bounds(), bounds);
    EXPECT_EQ(cases[1].update->updateParams()->paddingInsets(), (UIEdgeInsets{20, 20, 20, 20}));

    const auto fitting = cases[0].update->getCameraPosition(*map);
    EXPECT_EQ(fitting->bounds(), bounds);
    const auto update = PgmCameraUpdate::cameraUpdateWithPosition(*fitting);
    EXPECT_EQ(update->updateParams()->bounds(), nullptr) << "only the view of a position is taken over";
}

TEST_F(CameraUpdateTest, OnlyAMoveWithoutCompletionEndsTracking) {
    const auto update = PgmCameraUpdate::cameraUpdateZoomTo(8);
    map->setUserTrackingMode(PgmUserTrackingMode::follow);
    map->moveCamera(update, nullptr);
    EXPECT_EQ(engineOf(map).userTrackingMode(), MLNUserTrackingMode::follow);
    map->moveCamera(update);
    EXPECT_EQ(engineOf(map).userTrackingMode(), MLNUserTrackingMode::none);
    EXPECT_TRUE(engineOf(map).showsUserLocation());
    EXPECT_EQ(map->userTrackingMode(), PgmUserTrackingMode::follow) << "the view keeps what was set";
}

TEST_F(CameraUpdateTest, TenTiltedTurnsKeepTheZoom) {
    map->setCameraPosition(PgmCameraPosition::create(seoul, 11.25, 60, 0));
    for (int turn = 1; turn <= 10; ++turn) {
        map->moveCamera(PgmCameraUpdate::cameraUpdateBearingTo(turn * 30));
    }
    expectCamera(*PgmCameraPosition::create(seoul, 11.25, 60, 300));
}

}  // namespace
}  // namespace pelta
