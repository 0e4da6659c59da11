#include <cmath>
#include <functional>
#include <tuple>

#include "MapFixture.h"

namespace pelta {
namespace {

/// Writes down what reaches the application, shapes by name and the map as "map" or "long".
class TapLog final : public PgmMapDelegate {
 public:
    void didTapMapView(PgmMapView&, CLLocationCoordinate2D latLng) override { note("map", latLng); }
    void didLongTapMapView(PgmMapView&, CLLocationCoordinate2D latLng) override { note("long", latLng); }
    void note(const std::string& event, CLLocationCoordinate2D latLng = {}) {
        events += (events.empty() ? "" : " ") + event;
        place = latLng;
        if (const auto work = std::exchange(next, nullptr)) {
            work();
        }
    }
    [[nodiscard]] std::string take() { return std::exchange(events, {}); }

    std::string events;
    CLLocationCoordinate2D place;
    std::function<void()> next;  ///< Runs once, from inside the next event.
};

/// A loaded map at zoom 10 whose middle, (400, 300), shows (37.5, 127).
class TapTest : public MapFixture {
 protected:
    static constexpr CGPoint middle{400, 300};

    TapTest() {
        map_->setDelegate(log_);
        map_->moveCamera(PgmCameraUpdate::cameraUpdateTargetToZoomTo({37.5, 127}, 10));
    }

    [[nodiscard]] CLLocationCoordinate2D at(double x, double y) const {
        return *map_->projection()->latlng({x, y});
    }

    /// Puts a shape on the map that writes down its name when it is asked.
    template <class Shape>
    std::shared_ptr<Shape> touchable(std::shared_ptr<Shape> shape, const std::string& name, bool accepts) {
        shape->setTouchEvent([this, name, accepts](PgmShape&) {
            log_->note(name);
            return accepts;
        });
        shape->setMapView(map_);
        return shape;
    }

    std::shared_ptr<PgmCircle> circle(const std::string& name, bool accepts = true) {
        return touchable(PgmCircle::create(at(400, 300), 2000), name, accepts);
    }

    /// A tap with the time in which it could become a double tap.
    std::string tap(CGPoint point = middle) {
        port.runUntilIdle();
        port.tap(*window, point);
        port.advance(1);
        return log_->take();
    }

    void finger(int identifier, UITouchPhase phase, CGPoint point, double pause) {
        port.touch(*window, identifier, phase, point);
        port.advance(pause);
    }

    std::shared_ptr<PgmMapView> map_ = makeLoadedMap();
    std::shared_ptr<TapLog> log_ = std::make_shared<TapLog>();
};

TEST_F(TapTest, TheTopmostShapeThatWantsTapsIsAskedAndThenTheMap) {
    using Shapes = std::vector<std::shared_ptr<PgmShape>>;
    struct Case {
        std::string name;
        std::function<void(Shapes&)> change;  ///< Of a lower and an upper circle.
        std::string events;
    };
    const Case cases[] = {
        {"the upper of two", [](Shapes&) {}, "upper"},
        {"an older one raised", [](Shapes& s) { s[0]->setZIndex(1); }, "lower"},
        {"the upper is hidden", [](Shapes& s) { s[1]->setIsVisible(false); }, "lower"},
        {"the upper wants no taps", [](Shapes& s) { s[1]->setTouchEvent(nullptr); }, "lower"},
        {"the upper is outside of its zooms", [](Shapes& s) { s[1]->setVisibleMinZoom(10.1); }, "lower"},
        {"the upper declines", [this](Shapes& s) { s.push_back(circle("none", false)); }, "none map"},
        {"none is there", [](Shapes& s) { s[0]->setMapView(nullptr), s[1]->setMapView(nullptr); }, "map"},
    };
    for (const Case& c : cases) {
        Shapes shapes{circle("lower"), circle("upper")};
        c.change(shapes);
        EXPECT_EQ(tap(), c.events) << c.name;
        for (const auto& shape : shapes) {
            shape->setMapView(nullptr);
        }
    }
    touchable(PgmPolyline::create({at(300, 300), at(500, 300)}), "line", true);
    EXPECT_EQ(tap({400, 321.9}), "line") << "a thin line within 22 points";
    EXPECT_EQ(tap({400, 325}), "map");
    touchable(PgmMarker::markerWithPosition(at(400, 310)), "marker", true);
    circle("area");
    EXPECT_EQ(tap(), "marker") << "over a younger area";
    tap({500, 200});
    EXPECT_NEAR(log_->place.latitude, at(500, 200).latitude, 1e-12);
    EXPECT_NEAR(log_->place.longitude, at(500, 200).longitude, 1e-12);
}

TEST_F(TapTest, WhereItIsPreferredTheNearestShapeIsAskedAndThenTheMap) {
    struct Placed {
        std::string name;
        std::shared_ptr<PgmShape> shape;
        std::optional<int> globalZIndex = {};
    };
    // A picture of 20 × 20 points about a place; lines are 2.5 points wide.
    const auto pin = [this](double x, double y) {
        const auto picture = UIImage::fromPixels(20, 20, 1, std::vector<std::uint8_t>(1600));
        const auto made = PgmMarker::markerWithPositionIconImage(at(x, y), PgmImage::imageWith(*picture));
        made->setAnchor({0.5, 0.5});
        return made;
    };
    const auto line = [this](double y) { return PgmPolyline::create({at(200, y), at(600, y)}); };
    const auto area = [this](double left) {
        return PgmPolygon::create({at(left, 200), at(600, 200), at(600, 400), at(left, 400)});
    };
    const auto titled = [&](double x, double y) {
        const auto made = pin(x, y);
        made->setTitle("title");
        return made;
    };
    struct Case {
        std::string name;
        std::vector<Placed> shapes;  ///< Oldest first.
        std::string nearest;
        std::string topmost;
    };
    const Case cases[] = {
        {"the lower holds the point", {{"held", pin(402, 300)}, {"near", pin(415, 300)}}, "held", "near"},
        {"both hold it", {{"lower", pin(400, 300)}, {"upper", pin(405, 300)}}, "upper", "upper"},
        {"its title holds it", {{"titled", titled(400, 283)}, {"near", pin(415, 300)}}, "titled", "near"},
        {"neither holds it", {{"near", pin(412, 300)}, {"far", pin(386, 300)}}, "near", "far"},
        {"as near", {{"lower", pin(412, 300)}, {"upper", pin(388, 300)}}, "upper", "upper"},
        {"raised", {{"raised", pin(412, 300), 2000}, {"upper", pin(388, 300)}}, "raised", "raised"},
        {"held before a line", {{"pin", pin(400, 300)}, {"line", line(300), 3000}}, "pin", "line"},
        {"line nearer", {{"pin", pin(415, 300)}, {"line", line(302)}}, "line", "pin"},
        {"line on the point", {{"pin", pin(410.5, 300)}, {"line", line(300)}}, "line", "pin"},
        {"line further", {{"pin", pin(412, 300)}, {"line", line(304)}}, "pin", "pin"},
        {"areas last", {{"pin", pin(425, 300)}, {"area", area(300), 3000}}, "pin", "area"},
        {"line before area", {{"line", line(318)}, {"area", area(300)}}, "line", "area"},
        {"areas alone", {{"lower", area(390)}, {"upper", area(410)}}, "upper", "upper"},
        {"none within reach", {{"pin", pin(440, 300)}}, "map", "map"},
    };
    const auto outlined = area(401);
    outlined->setStrokeWidth(4);
    for (const Case& c : cases) {
        for (const Placed& placed : c.shapes) {
            placed.shape->setGlobalZIndex(placed.globalZIndex.value_or(placed.shape->globalZIndex()));
            touchable(placed.shape, placed.name, true);
        }
        map_->setIsNearestShapePreferred(true);
        EXPECT_EQ(tap(), c.nearest) << c.name;
        map_->setIsNearestShapePreferred(false);
        EXPECT_EQ(tap(), c.topmost) << c.name;
        for (const Placed& placed : c.shapes) {
            placed.shape->setMapView(nullptr);
        }
    }
    map_->setIsNearestShapePreferred(true);
    touchable(outlined, "outlined", true);
    touchable(pin(380, 300), "declines", false);
    EXPECT_EQ(tap(), "declines map") << "before an outline that is nearer, and it alone";
}

TEST_F(TapTest, ThePointerIsAHandOverWhatTakesTaps) {
    const auto isHand = [this](double x, double y) {
        port.runUntilIdle();
        return window->pointerStyleAt({x, y}) == UIPointerStyle::hand;
    };
    const auto area = circle("area");
    const double edge = map_->projection()->point(PgmCircle::coords(at(400, 300), 2000)[90]).x;
    EXPECT_TRUE(isHand(400, 300) && isHand(edge - 3, 300));
    EXPECT_FALSE(isHand(edge + 3, 300)) << "where a tap would still find it";
    PgmMarker::markerWithPosition(at(400, 310))->setMapView(map_);
    EXPECT_TRUE(isHand(400, 300)) << "through what takes none";
    area->setIsVisible(false);
    EXPECT_FALSE(isHand(400, 300));
    area->setIsVisible(true);
    area->setTouchEvent(nullptr);
    EXPECT_FALSE(isHand(400, 300));
    map_->setIsZoomControlVisible(true);
    const auto control = map_->zoomView()->frame();
    EXPECT_TRUE(isHand(control.midX(), control.minY() + 5)) << "a button";
    EXPECT_FALSE(isHand(-5, 300)) << "outside of the window";
}

TEST_F(TapTest, WhatHasChangedSinceTheLastFrameCounts) {
    const auto removed = circle("removed");
    const auto hidden = circle("hidden");
    const auto silenced = circle("silenced");
    port.runUntilIdle();
    removed->setMapView(nullptr);
    hidden->setIsVisible(false);
    silenced->setTouchEvent(nullptr);
    port.tap(*window, middle);
    port.advance(0.35);
    EXPECT_EQ(log_->take(), "map");
}

/// One step of a finger: what it does, how long the clock runs afterwards, where, and which finger.
struct Step {
    UITouchPhase phase;
    double pause;
    CGPoint at{500, 200};
    int finger = 0;
};

TEST_F(TapTest, DoubleTapsZoomAndPressesAndDragsAreNoTaps) {
    using enum UITouchPhase;
    constexpr CGPoint point{500, 200};
    constexpr CGPoint left{450, 200};
    constexpr CGPoint right{550, 200};
    struct Case {
        std::string name;
        std::vector<Step> steps;
        std::string events;
        double zoom;
        double maximumZoom = 20;
        bool isZooming = true;
    };
    const std::string twoTaps = "map map";
    const auto twoFingers = [&](double pause) {
        return std::vector<Step>{
            {began, 0.02, left}, {began, pause, right, 1}, {ended, 0.02, left}, {ended, 1, right, 1}};
    };
    const std::vector<Step> twice{{began, 0.05}, {ended, 0.1}, {began, 0.05}, {ended, 1}};
    const Case cases[] = {
        {"tap", {{began, 0.05}, {ended, 1}}, "map", 10},
        {"trembling tap", {{began, 0.05}, {moved, 0.05, {506, 206}}, {ended, 1}}, "map", 10},
        {"two slow taps", {{began, 0.05}, {ended, 0.5}, {began, 0.05}, {ended, 1}}, twoTaps, 10},
        {"two far apart", {{began, 0.05}, {ended, 0.1}, {began, 0.05, left}, {ended, 1, left}}, twoTaps, 10},
        {"double tap", twice, "", 11},
        {"double tap near the limit", twice, "", 10.25, 10.25},
        {"double tap without zooming", twice, "", 10, 20, false},
        {"long press", {{began, 0.6}}, "long", 10},
        {"its end", {{ended, 1}}, "", 10},
        {"too long for a tap, too short for a press", {{began, 0.4}, {ended, 1}}, "", 10},
        {"cancelled tap", {{began, 0.05}, {cancelled, 1}}, "", 10},
        {"drag", {{began, 0.1}, {moved, 1, {520, 200}}, {ended, 1, {520, 200}}}, "", 10},
        {"tap of two fingers", twoFingers(0.1), "", 9},
        {"press of two fingers", twoFingers(0.4), "", 10},
    };
    for (const double tilt : {0.0, 50.0}) {
        for (const Case& c : cases) {
            map_->setMaximumZoomLevel(c.maximumZoom);
            map_->setIsZoomGesturesEnabled(c.isZooming);
            map_->setCameraPosition(PgmCameraPosition::cameraPosition({37.5, 127}, 10, tilt, 30));
            const auto place = at(point.x, point.y);
            for (const Step& step : c.steps) {
                finger(step.finger, step.phase, step.at, step.pause);
            }
            EXPECT_EQ(log_->take(), c.events) << c.name;
            EXPECT_NEAR(engineOf(map_).zoomLevel(), c.zoom, 1e-9) << c.name;
            EXPECT_NEAR(map_->projection()->point(place).x, point.x, 1e-6) << c.name;
            EXPECT_NEAR(map_->projection()->point(place).y, point.y, 1e-6) << c.name;
        }
    }
}

TEST_F(TapTest, PlacesBeyondTheAntimeridianHaveLongitudesOfTheGlobe) {
    for (const auto& [center, x, longitude] :
         {std::tuple{179.9, 600., -179.9}, std::tuple{-179.9, 200., 179.9}}) {
        map_->setCameraPosition(
            PgmCameraPosition::cameraPosition({0, center}, std::log2(200 * 360 / (0.2 * 512))));
        touchable(PgmMarker::markerWithPosition({0, longitude}), "marker", false);
        EXPECT_EQ(tap({x, 300}), "marker map");
        EXPECT_NEAR(log_->place.longitude, longitude, 1e-9);
        finger(0, UITouchPhase::began, {x, 300}, 0.6);
        finger(0, UITouchPhase::ended, {x, 300}, 1);
        EXPECT_EQ(log_->take(), "long");
        EXPECT_NEAR(log_->place.longitude, longitude, 1e-9);
    }
}

TEST_F(TapTest, AHandlerMayRemoveItsShapeOrReleaseTheView) {
    const auto shape = circle("shape", false);
    log_->next = [&] {
        shape->setMapView(nullptr);
        shape->setTouchEvent(nullptr);
    };
    EXPECT_EQ(tap(), "shape map");
    EXPECT_EQ(tap(), "map");
    for (const bool hasShape : {true, false}) {
        for (const double seconds : {0.05, 0.6}) {
            map_ = makeLoadedMap();
            map_->setDelegate(log_);
            if (hasShape) {
                circle("shape", false);
            }
            port.runUntilIdle();
            const std::weak_ptr<PgmMapView> released = map_;
            log_->next = [&] {
                map_->removeFromSuperview();
                map_.reset();
            };
            finger(0, UITouchPhase::began, middle, seconds);
            finger(0, UITouchPhase::ended, middle, 1);
            EXPECT_TRUE(released.expired());
            EXPECT_NE(log_->take(), "");
        }
    }
}

TEST_F(TapTest, TheLogoTakesTapsOfItsOwn) {
    const auto frame = engineOf(map_).logoView()->frame();
    const CGPoint logo{frame.midX(), frame.midY()};
    const auto logged = [&] { return logOf([&] { tap(logo); }); };
    EXPECT_THAT(logged(), ::testing::HasSubstr("] logo single tap\n"));
    EXPECT_EQ(tap(logo), "");
    map_->setIsLogoClickEnabled(false);
    EXPECT_EQ(logged(), "");
    EXPECT_EQ(tap(logo), "map");
}

}  // namespace
}  // namespace pelta
