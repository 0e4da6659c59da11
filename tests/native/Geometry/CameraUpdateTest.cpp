#include "View/MapFixture.h"

namespace pelta {
namespace {

constexpr CLLocationCoordinate2D seoul{37.5665, 126.9780};

class CameraUpdateTest : public MapFixture {
 protected:
    void expectCamera(const PgmCameraPosition& expected) const {
        const auto camera = map->cameraPosition();
        EXPECT_NEAR(camera->target().latitude, expected.target().latitude, 1e-9);
        EXPECT_NEAR(camera->target().longitude, expected.target().longitude, 1e-9);
        EXPECT_NEAR(camera->zoom(), expected.zoom(), 1e-9);
        EXPECT_NEAR(camera->tilt(), expected.tilt(), 1e-9);
        EXPECT_NEAR(camera->bearing(), expected.bearing(), 1e-9);
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
        {"zoom to", PgmCameraUpdate::cameraUpdateZoomTo(3), at(seoul, 3, 20, 30)},
        {"tilt to", PgmCameraUpdate::cameraUpdateTiltTo(60), at(seoul, 10, 60, 30)},
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
        map->setCameraPosition(start);
        map->setCameraPosition(nullptr);
        map->moveCamera(testCase.update);
        map->moveCamera(nullptr);
        expectCamera(*testCase.expected);
    }
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

}  // namespace
}  // namespace pelta
