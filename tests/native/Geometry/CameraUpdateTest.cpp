#include <cmath>
#include <limits>
#include <random>

#include "View/MapFixture.h"

namespace pelta {
namespace {

constexpr CLLocationCoordinate2D seoul{37.5665, 126.9780};

class CameraUpdateTest : public MapFixture {
 protected:
    void expectAt(const PgmCameraPosition& expected) const {
        expectCamera(*map, expected.target(), expected.zoom(), expected.tilt(), expected.bearing());
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
        expectAt(*testCase.expected);
    }
}

TEST_F(CameraUpdateTest, EveryZoomReadsBackAsItWasSet) {
    std::mt19937 generator(6);
    const auto between = [&generator](double low, double high) {
        return std::uniform_real_distribution(low, high)(generator);
    };
    const auto options = PgmMapOptions::create(nullptr);
    options->setMinimumZoomLevel(0);
    options->setMaximumZoomLevel(22);
    double zoom = 0;
    std::shared_ptr<PgmCameraPosition> wanted;
    const auto move = [this](const PgmCameraUpdate::Ptr& update, PgmCameraUpdateAnimation animation) {
        update->setAnimation(animation);
        map->moveCamera(update);
    };
    using Animation = PgmCameraUpdateAnimation;
    const std::pair<const char*, std::function<void()>> ways[]{
        {"position", [&] { map->setCameraPosition(wanted); }},
        {"update", [&] { move(PgmCameraUpdate::cameraUpdateWithPosition(*wanted), Animation::none); }},
        {"eased", [&] { move(PgmCameraUpdate::cameraUpdateWithPosition(*wanted), Animation::easeIn); }},
        {"flown", [&] { move(PgmCameraUpdate::cameraUpdateWithPosition(*wanted), Animation::fly); }},
        {"zoom to", [&] { move(PgmCameraUpdate::cameraUpdateZoomTo(zoom), Animation::none); }},
        {"zoom level", [&] { map->setZoomLevel(zoom); }},
        {"flight", [&] { map->flyToCamera(wanted, 0.1, nullptr); }},
        {"options", [&] {
             options->setCamera(wanted);
             map->applyMapOptions(*options);
         }}};
    for (int i = 0; i < 150; ++i) {
        zoom = i < 45 ? i / 2.0 : between(0, 22);
        map->setMinimumZoomLevel(0);
        map->setMaximumZoomLevel(22);
        wanted = PgmCameraPosition::create({between(-85, 85), between(-180, 180)}, zoom, between(0, 60),
                                           between(0, 360));
        map->setFrame({{}, {std::floor(between(1, 2000)), std::floor(between(1, 2000))}});
        for (const auto& [name, go] : ways) {
            map->setCameraPosition(PgmCameraPosition::create({10, 20}, 7.7, between(0, 60), 0));
            go();
            port.advance(0.4);
            EXPECT_EQ(map->cameraPosition()->zoom(), zoom) << name;
        }
        EXPECT_EQ(map->cameraPosition()->tilt(), wanted->tilt());
        map->updateOptions();
        map->setFrame({{}, {between(1, 2000), between(1, 2000)}});
        map->updateOptions();
        map->setMinimumZoomLevel(zoom);
        map->setMaximumZoomLevel(zoom);
        map->moveCamera(PgmCameraUpdate::cameraUpdateZoomBy(1));
        map->moveCamera(PgmCameraUpdate::cameraUpdateTiltTo(between(0, 60)));
        port.runFrame();
        EXPECT_EQ(map->cameraPosition()->zoom(), zoom) << "after changes of options, size and limits";
    }
}

TEST_F(CameraUpdateTest, WhatIsNotFiniteLeavesThatComponentAsItIs) {
    const auto start = PgmCameraPosition::create(seoul, 10, 20, 30);
    const CLLocationCoordinate2D busan{35, 129};
    struct View {
        CLLocationCoordinate2D target;
        double zoom, tilt, bearing;
    };
    for (const double odd : {std::numeric_limits<double>::quiet_NaN(), HUGE_VAL, -HUGE_VAL}) {
        for (const View& each : {View{{odd, 129}, 8, 1, 2}, View{{35, odd}, 8, 1, 2}, View{busan, odd, 1, 2},
                                 View{busan, 8, odd, 2}, View{busan, 8, 1, odd}}) {
            const auto finiteOr = [](double value, double present) {
                return std::isfinite(value) ? value : present;
            };
            const bool hasTarget = std::isfinite(each.target.latitude + each.target.longitude);
            const auto expected =
                PgmCameraPosition::create(hasTarget ? each.target : seoul, finiteOr(each.zoom, 10),
                                          finiteOr(each.tilt, 20), finiteOr(each.bearing, 30));
            const auto position = PgmCameraPosition::create(each.target, each.zoom, each.tilt, each.bearing);
            const auto deltas = PgmCameraUpdateParams::create();
            deltas->targetBy({each.target.latitude - 35, each.target.longitude - 129});
            deltas->zoomBy(each.zoom - 8);
            deltas->tiltBy(each.tilt - 1);
            deltas->bearingBy(each.bearing - 2);
            const auto eased = PgmCameraUpdate::cameraUpdateWithPosition(*position);
            eased->setAnimation(PgmCameraUpdateAnimation::linear);
            const std::pair<std::function<void()>, PgmCameraPosition> ways[] = {
                {[&] { map->setCameraPosition(position); }, *expected},
                {[&] { map->moveCamera(PgmCameraUpdate::cameraUpdateWithPosition(*position)); }, *expected},
                {[&] { map->moveCamera(eased); }, *expected},
                {[&] { map->flyToCamera(position, 0.1, nullptr); }, *expected},
                {[&] { map->applyMapOptions(*PgmMapOptions::create(position)); }, *expected},
                {[&] { map->moveCamera(PgmCameraUpdate::cameraUpdateWithParams(deltas)); }, *start}};
            for (const auto& [go, end] : ways) {
                SCOPED_TRACE(testing::Message()
                             << position->zoom() << ' ' << position->tilt() << ' ' << &end - &ways[0].second);
                map->setCameraPosition(start);
                go();
                port.advance(0.4);
                expectAt(end);
            }
        }
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
