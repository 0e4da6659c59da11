#include <cmath>
#include <limits>

#include "Engine/RecordingRenderer.h"
#include "View/MapFixture.h"

namespace pelta {
namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr CLLocationCoordinate2D seoul{37.5665, 126.978};

class UserLocationTest : public MapFixture {
 protected:
    void reportAt(CLLocationCoordinate2D coordinate) {
        port.reportLocation({.coordinate = coordinate});
        EXPECT_TRUE(port.runUntilIdle());
    }
    void reportHeading(double magnetic, double trueHeading = -1) {
        port.reportHeading({.magneticHeading = magnetic, .trueHeading = trueHeading});
        EXPECT_TRUE(port.runUntilIdle());
    }
    void expectPlace(CLLocationCoordinate2D coordinate) const {
        const auto wanted = map->mapView()->convertCoordinate(coordinate, nullptr);
        EXPECT_NEAR(view->center().x, wanted.x, 1e-9);
        EXPECT_NEAR(view->center().y, wanted.y, 1e-9);
    }
    double dotDegrees() const {
        const auto turned = view->dotImageView()->transform();
        return std::atan2(turned.b, turned.a) * 180 / M_PI;
    }

    std::shared_ptr<PgmMapView> map = makeLoadedMap();
    std::shared_ptr<PgmLocationIcon> icon = map->locationIcon();
    std::shared_ptr<PgmLocationAnnotationView> view = map->locationAnnotaionView();
};

TEST_F(UserLocationTest, IconKnowsWhatTheMapKnows) {
    const auto expectUnknown = [](const PgmLocationIcon& unknown) {
        EXPECT_FALSE(unknown.isVisible() || unknown.position());
        EXPECT_EQ(unknown.bearing(), 0);
    };
    expectUnknown(*PgmLocationIcon::create());
    expectUnknown(*icon);
    map->setUserTrackingMode(PgmUserTrackingMode::none);
    EXPECT_TRUE(icon->isVisible());
    reportHeading(45);
    EXPECT_EQ(icon->bearing(), 0) << "no position yet";
    EXPECT_EQ(view->superview(), nullptr);
    reportAt(seoul);
    EXPECT_EQ(icon->position(), seoul);
    EXPECT_EQ(icon->bearing(), 45);
    EXPECT_EQ(view->superview(), map->mapView());
    map->setUserTrackingMode(PgmUserTrackingMode::off);
    expectUnknown(*icon);
    EXPECT_EQ(view->superview(), nullptr);
}

TEST_F(UserLocationTest, TheModeChoosesThePicture) {
    const auto picture = [](int side) {
        const auto bytes = static_cast<std::size_t>(side * side) * 4;
        return PgmImage::imageWith(*UIImage::fromPixels(side, side, 1, std::vector<std::uint8_t>(bytes)));
    };
    icon->setImage(picture(10));
    icon->setImageTracking(picture(20));
    icon->setImageTrackingCompass(picture(30));
    for (const unsigned mode : {1, 2, 3}) {
        map->setUserTrackingMode(*PgmUserTrackingModeFromRaw(mode));
        EXPECT_EQ(view->frame().size, (CGSize{10.0 * mode, 10.0 * mode}));
        EXPECT_EQ(view->dotImageView()->image()->size(), view->frame().size);
    }
    icon->setScale(1.5);
    EXPECT_EQ(view->dotImageView()->frame(), (CGRect{{}, {45, 45}}));
    reportAt(seoul);
    expectPlace(seoul);
    icon->setScale(nan);
    EXPECT_EQ(view->frame().size, CGSize{});
    icon->setImageTrackingCompass(nullptr);
    EXPECT_EQ(view->frame().size, (CGSize{40, 40}));
    EXPECT_FALSE(view->dotImageView()->image());
    EXPECT_EQ(view->haloLayer()->animations().size(), 1U) << "the circle pulses without a dot too";
}

TEST_F(UserLocationTest, TheCirclePulses) {
    map->setUserTrackingMode(PgmUserTrackingMode::none);
    const auto before = view->haloLayer();
    icon->setCircleRadius(60.4);
    icon->setCircleColor(UIColor{0, 0, 1, 1});
    EXPECT_EQ(before->superlayer(), nullptr) << "replaced";
    EXPECT_TRUE(before->animations().empty());
    const auto& halo = *view->haloLayer();
    EXPECT_EQ(view->layer()->sublayers(), std::vector{view->haloLayer()});
    EXPECT_EQ(halo.properties().bounds, (CGRect{{}, {60, 60}})) << "the radius is the width";
    EXPECT_EQ(halo.properties().position, (CGPoint{view->bounds().midX(), view->bounds().midY()}));
    const auto& pulse = halo.animations().at("animateTransformAndOpacity");
    EXPECT_TRUE(pulse.duration == 3 && pulse.repeatsForever && !pulse.isRemovedOnCompletion);
    EXPECT_EQ(pulse.animations,
              (std::vector<CAKeyframeAnimation>{{"transform.scale.xy", {0, 0.35, 1}, {0, 0.2, 1}},
                                                {"opacity", {0.4, 0.4, 0}, {0, 0.2, 1}}}));
    icon->setCircleColor(std::nullopt);
    icon->setCircleRadius(nan);
    EXPECT_EQ(view->haloLayer()->properties().backgroundColor, UIColor::clear());
    EXPECT_EQ(view->haloLayer()->properties().bounds, CGRect{});
}

TEST_F(UserLocationTest, TheDotPointsWhereTheDevicePoints) {
    map->setUserTrackingMode(PgmUserTrackingMode::none);
    reportAt(seoul);
    struct Case {
        const char* name;
        double magnetic, trueHeading, direction, degrees;
    };
    for (const Case& each :
         {Case{"magnetic", 90, -1, 0, 90}, Case{"true before magnetic", 90, 100, 0, 100},
          Case{"against the map's direction", 90, -1, 30, 60}, Case{"unknown", -1, -1, 30, 60},
          Case{"no numbers", nan, nan, 30, 60}, Case{"too small a turn", 30.5, -1, 30, 60},
          Case{"back", 40, -1, 40.6, -0.6}, Case{"the map turns too", 90, -1, 350, 100}}) {
        SCOPED_TRACE(each.name);
        map->setCameraPosition(PgmCameraPosition::cameraPosition(seoul, 12, 0, each.direction));
        reportHeading(each.magnetic, each.trueHeading);
        EXPECT_NEAR(dotDegrees(), each.degrees, 1e-9);
    }
    icon->setScale(2);
    EXPECT_NEAR(dotDegrees(), 100, 1e-9) << "set up anew it points there again";
}

TEST_F(UserLocationTest, TiltsWithTheCamera) {
    map->setUserTrackingMode(PgmUserTrackingMode::none);
    reportAt(seoul);
    const auto tilt = [&](double degrees) {
        map->setCameraPosition(PgmCameraPosition::cameraPosition(seoul, 12, degrees, 0));
        EXPECT_TRUE(port.runUntilIdle());
    };
    tilt(60);
    const double pitch = M_PI / 3;
    EXPECT_EQ(view->layer()->properties().sublayerTransform, CATransform3D{}.rotatedBy(pitch, 1, 0, 0));
    EXPECT_NEAR(view->haloLayer()->properties().shadowRadius, pitch * 5, 1e-9);
    view->layer()->update({});
    tilt(60);
    EXPECT_EQ(view->layer()->properties().sublayerTransform, CATransform3D{})
        << "an equal pitch touches nothing";
    tilt(10);
    EXPECT_EQ(view->haloLayer()->properties().shadowRadius, 3);
    expectPlace(seoul);
}

TEST_F(UserLocationTest, StandsAtItsPlaceInEveryFrame) {
    map->setUserTrackingMode(PgmUserTrackingMode::none);
    map->setCameraPosition(PgmCameraPosition::cameraPosition({37, 127}, 8));
    reportAt(seoul);
    expectPlace(seoul);
    map->flyToCamera(PgmCameraPosition::cameraPosition({36, 128}, 9, 30, 20), 1, {});
    for (int frame = 0; frame < 5; ++frame) {
        port.advance(0.1);
        port.runFrame();
        expectPlace(seoul);
    }
    EXPECT_TRUE(port.runUntilIdle());
    EXPECT_EQ(map->mapView()->subviews().front(), view) << "below the ornaments";

    map->setCameraPosition(PgmCameraPosition::cameraPosition({0, 179.9}, 8));
    reportAt({0, -179.9});
    EXPECT_NEAR(view->center().x, 400 + 0.2 / 360 * 512 * 256, 1e-6) << "across the date line";
    for (const auto& [latitude, longitude] : {std::pair{nan, 0.0}, {91, 0}, {0, 1e9}}) {
        reportAt({latitude, longitude});
        EXPECT_EQ(icon->position(), (CLLocationCoordinate2D{0, -179.9}));
    }
}

TEST_F(UserLocationTest, ATapSelectsItOnceAndLeavesNothingSelected) {
    int taps = 0;
    icon->setTouchEvent([&] { ++taps; });
    map->setUserTrackingMode(PgmUserTrackingMode::follow);
    reportAt(seoul);
    const auto tapAt = [&](double x, double y) {
        port.tap(*window, {x, y});
        port.advance(1);
    };
    const auto log = logOf([&] { tapAt(405, 305); });
    EXPECT_EQ(taps, 1);
    EXPECT_THAT(log, testing::ContainsRegex(
                         "Tapped my location.*AnnotationView:196] location annotation view is selected"));
    EXPECT_EQ(map->mapView()->selectedAnnotation(), nullptr);
    EXPECT_FALSE(view->isSelected());
    tapAt(430, 300);
    EXPECT_EQ(taps, 1) << "beside the dot";
    port.tap(*window, {400, 300});
    tapAt(400, 300);
    EXPECT_EQ(taps, 1) << "a double tap zooms";
    icon->setTouchEvent([&] {
        map->removeFromSuperview();
        map.reset();
    });
    tapAt(400, 300);
    EXPECT_EQ(icon->mapview(), nullptr);
    icon->setScale(3);
    EXPECT_FALSE(icon->isVisible());
}

/// Writes down how the location is followed and why it cannot be had.
struct LocationLog : PgmMapDelegate {
    void didFailToLocateUser(PgmMapView&, CLLocationFailure reason) override {
        note(reason == CLLocationFailure::denied ? "denied" : "unavailable");
    }
    void didChangeUserTrackingMode(PgmMapView&, PgmUserTrackingMode mode) override {
        constexpr const char* names[] = {"off", "none", "follow", "heading"};
        note(names[static_cast<unsigned>(mode)]);
    }
    void note(const std::string& event) {
        events += (events.empty() ? "" : " ") + event;
        if (const auto work = std::exchange(next, nullptr)) {
            work();
        }
    }

    std::string events;
    std::function<void()> next;  ///< Runs once, from inside the next event.
};

TEST_F(UserLocationTest, TheDelegateHearsHowItIsFollowedAndWhyItIsNot) {
    using enum PgmUserTrackingMode;
    using enum CLLocationFailure;
    RecordingEnginePort engine;
    map = makeMap();
    const auto log = std::make_shared<LocationLog>();
    map->setDelegate(log);
    const auto set = [&](PgmUserTrackingMode mode) { return [&, mode] { map->setUserTrackingMode(mode); }; };
    const auto fail = [&](CLLocationFailure why) { return [&, why] { port.reportLocationFailure(why); }; };
    const auto locate = [&] { port.reportLocation({.coordinate = seoul}); };
    const auto pan = [&] {
        engine.record.host->gestureWillBegin(MLNCameraChangeReason::gesturePan, false);
        engine.record.host->gestureDidEnd(MLNCameraChangeReason::gesturePan, false);
    };
    const std::function<void()> press = [&] { map->locactionAction(); };
    struct Case {
        const char* name;
        std::function<void()> work;
        std::string events;
        PgmUserTrackingMode kept;
    };
    for (const Case& each : {Case{"failure while off", fail(denied), "", off},
                             {"set", set(follow), "follow", follow},
                             {"set again", set(follow), "", follow},
                             {"failure", fail(unavailable), "unavailable", follow},
                             {"the same failure", fail(unavailable), "", follow},
                             {"another failure", fail(denied), "denied", follow},
                             {"location", locate, "", follow},
                             {"failure since", fail(denied), "denied", follow},
                             {"pan", pan, "none", follow},
                             {"second pan", pan, "", follow},
                             {"button", press, "follow", follow},
                             {"heading", set(followWithHeading), "heading", followWithHeading},
                             {"hidden", set(off), "off", off},
                             {"pan while hidden", pan, "", off},
                             {"shown", set(none), "none", none},
                             {"failure when shown anew", fail(denied), "denied", none},
                             {"hidden again", set(off), "off", off}}) {
        each.work();
        EXPECT_EQ(std::exchange(log->events, {}), each.events) << each.name;
        EXPECT_EQ(map->userTrackingMode(), each.kept) << each.name;
    }
    log->next = set(off);
    map->setUserTrackingMode(follow);
    EXPECT_EQ(std::exchange(log->events, {}), "follow off") << "set from inside";
    EXPECT_FALSE(port.isLocationObserved());
    for (const bool fails : {false, true}) {
        map = makeMap();
        map->setDelegate(log);
        if (fails) {
            map->setUserTrackingMode(none);
        }
        log->next = [&] {
            map->removeFromSuperview();
            map.reset();
        };
        fails ? port.reportLocationFailure(denied) : map->setUserTrackingMode(follow);
        EXPECT_FALSE(map || port.isLocationObserved());
    }
}

}  // namespace
}  // namespace pelta
