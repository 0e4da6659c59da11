#include <functional>

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

    std::shared_ptr<PgmPolyline> line() {
        return touchable(PgmPolyline::create({at(300, 300), at(500, 300)}), "line", true);
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
    struct Case {
        std::string name;
        std::function<std::vector<std::shared_ptr<PgmShape>>()> shapes;
        CGPoint point;
        std::string events;
    };
    const auto withoutHandler = [this] {
        auto shape = PgmCircle::create(at(400, 300), 2000);
        shape->setMapView(map_);
        return shape;
    };
    using Shapes = std::vector<std::shared_ptr<PgmShape>>;
    const Case cases[] = {
        {"nothing there", [] { return Shapes{}; }, middle, "map"},
        {"the upper of two",
         [&] {
             return Shapes{circle("lower"), circle("upper")};
         },
         middle, "upper"},
        {"the upper declines",
         [&] {
             return Shapes{circle("lower"), circle("upper", false)};
         },
         middle, "upper map"},
        {"an older one raised",
         [&] {
             const auto raised = circle("raised");
             raised->setZIndex(1);
             return Shapes{raised, circle("newer")};
         },
         middle, "raised"},
        {"a marker over a younger area",
         [&] {
             return Shapes{touchable(PgmMarker::markerWithPosition(at(400, 310)), "marker", true),
                           circle("area")};
         },
         middle, "marker"},
        {"the upper is hidden",
         [&] {
             const auto hidden = circle("hidden");
             hidden->setIsVisible(false);
             return Shapes{circle("lower"), hidden};
         },
         middle, "lower"},
        {"the upper wants no taps",
         [&] {
             return Shapes{circle("lower"), withoutHandler()};
         },
         middle, "lower"},
        {"none wants taps", [&] { return Shapes{withoutHandler()}; }, middle, "map"},
        {"a thin line within 22 points", [&] { return Shapes{line()}; }, {400, 321.9}, "line"},
        {"a thin line further away", [&] { return Shapes{line()}; }, {400, 325}, "map"},
        {"outside of its zooms",
         [&] {
             const auto far = circle("far");
             far->setVisibleMinZoom(10.1);
             return Shapes{far};
         },
         middle, "map"},
    };
    for (const Case& c : cases) {
        const auto shapes = c.shapes();
        EXPECT_EQ(tap(c.point), c.events) << c.name;
        for (const auto& shape : shapes) {
            shape->setMapView(nullptr);
        }
    }
    tap({500, 200});
    EXPECT_NEAR(log_->place.latitude, at(500, 200).latitude, 1e-12);
    EXPECT_NEAR(log_->place.longitude, at(500, 200).longitude, 1e-12);
}

TEST_F(TapTest, WhatHasChangedSinceTheLastFrameCounts) {
    const auto removed = circle("removed");
    const auto hidden = circle("hidden");
    const auto silenced = circle("silenced");
    port.runUntilIdle();
    removed->setMapView(nullptr);
    hidden->setIsVisible(false);
    silenced->setTouchEvent(nullptr);
    port.touch(*window, 0, UITouchPhase::began, middle);
    port.touch(*window, 0, UITouchPhase::ended, middle);
    port.advance(0.35);
    EXPECT_EQ(log_->take(), "map");
}

TEST_F(TapTest, DoubleTapsZoomAndPressesAndDragsAreNoTaps) {
    const CGPoint point{500, 200};
    const auto tapAt = [&](CGPoint place, double pause) {
        finger(0, UITouchPhase::began, place, 0.05);
        finger(0, UITouchPhase::ended, place, pause);
    };
    struct Case {
        std::string name;
        std::function<void()> gesture;
        std::string events;
        double zoom;
    };
    const Case cases[] = {
        {"tap", [&] { tapAt(point, 1); }, "map", 10},
        {"two slow taps", [&] { tapAt(point, 0.5), tapAt(point, 1); }, "map map", 10},
        {"double tap", [&] { tapAt(point, 0.1), tapAt(point, 1); }, "", 11},
        {"two double taps",
         [&] { tapAt(point, 0.1), tapAt(point, 0.05), tapAt(point, 0.1), tapAt(point, 1); }, "", 12},
        {"long press",
         [&] {
             finger(0, UITouchPhase::began, point, 0.6);
             EXPECT_EQ(log_->events, "long");
             finger(0, UITouchPhase::ended, point, 1);
         },
         "long", 10},
        {"drag",
         [&] {
             finger(0, UITouchPhase::began, point, 0.1);
             finger(0, UITouchPhase::moved, {520, 200}, 1);
             finger(0, UITouchPhase::ended, {520, 200}, 1);
         },
         "", 10},
        {"tap of two fingers",
         [&] {
             finger(0, UITouchPhase::began, {450, 200}, 0.02);
             finger(1, UITouchPhase::began, {550, 200}, 0.1);
             finger(0, UITouchPhase::ended, {450, 200}, 0.02);
             finger(1, UITouchPhase::ended, {550, 200}, 1);
         },
         "", 9},
        {"press of two fingers",
         [&] {
             finger(0, UITouchPhase::began, {450, 200}, 0.02);
             finger(1, UITouchPhase::began, {550, 200}, 0.4);
             finger(0, UITouchPhase::ended, {450, 200}, 0.02);
             finger(1, UITouchPhase::ended, {550, 200}, 1);
         },
         "", 10},
        {"double tap without zooming",
         [&] {
             map_->setIsZoomGesturesEnabled(false);
             tapAt(point, 0.1), tapAt(point, 1);
             map_->setIsZoomGesturesEnabled(true);
         },
         "", 10},
        {"double tap near the limit",
         [&] {
             map_->setMaximumZoomLevel(10.25);
             tapAt(point, 0.1), tapAt(point, 1);
             tapAt(point, 0.1), tapAt(point, 1);
             map_->setMaximumZoomLevel(20);
         },
         "", 10.25},
    };
    for (const double tilt : {0.0, 50.0}) {
        for (const Case& c : cases) {
            map_->setCameraPosition(PgmCameraPosition::cameraPosition({37.5, 127}, 10, tilt, 30));
            port.runUntilIdle();
            const auto place = at(point.x, point.y);
            c.gesture();
            EXPECT_EQ(log_->take(), c.events) << c.name;
            EXPECT_NEAR(engineOf(map_).zoomLevel(), c.zoom, 1e-9) << c.name;
            EXPECT_NEAR(map_->projection()->point(place).x, point.x, 1e-6) << c.name;
            EXPECT_NEAR(map_->projection()->point(place).y, point.y, 1e-6) << c.name;
        }
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

    const std::function<void()> gestures[] = {
        [&] { port.tap(*window, middle); },
        [&] { finger(0, UITouchPhase::began, middle, 0.6); },
    };
    for (const bool hasShape : {true, false}) {
        for (const auto& gesture : gestures) {
            if (!map_) {
                map_ = makeLoadedMap();
                map_->setDelegate(log_);
            }
            if (hasShape) {
                touchable(PgmCircle::create(at(400, 300), 2e6), "shape", false);
            }
            port.runUntilIdle();
            const std::weak_ptr<PgmMapView> released = map_;
            log_->next = [&] {
                map_->removeFromSuperview();
                map_.reset();
            };
            gesture();
            port.advance(1);
            EXPECT_TRUE(released.expired());
            finger(0, UITouchPhase::ended, middle, 1);
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
