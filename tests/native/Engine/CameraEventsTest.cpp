#include <cmath>

#include "EngineFixture.h"

namespace pelta {
namespace {

const std::string jump = "will 1, is 1, did 1";
const std::string animation = "will 1 animated, is 1, did 1 animated";

class CameraEventsTest : public EngineTest {
 protected:
    CameraEventsTest() {
        view->setCamera(cameraAt(*view, {0, 0}, 10), false);
        static_cast<void>(log->take());
    }

    MLNMapView::Completion count() {
        return [this] { ++completions; };
    }
    void ease(CLLocationCoordinate2D center, double duration = 1) {
        view->setCamera(cameraAt(*view, center, 10), duration, std::nullopt, count());
    }
    void jumpTo(CLLocationCoordinate2D center) {
        view->setCamera(cameraAt(*view, center, 10), 0, std::nullopt, count());
    }

    std::shared_ptr<MLNMapView> view = makeView();
    int completions = 0;
};

TEST_F(CameraEventsTest, UnanimatedChangesReportBeforeTheCallReturns) {
    jumpTo({1, 1});
    EXPECT_EQ(log->take(), jump);
    EXPECT_EQ(completions, 1);
    jumpTo({1, 1});
    EXPECT_EQ(log->take(), "");
    EXPECT_EQ(completions, 2);
    for (const double duration : {-1.0, std::nan(""), HUGE_VAL}) {
        ease({duration < 0 ? 2.0 : 3.0, duration > 0 ? 1.0 : 0.0}, duration);
        EXPECT_EQ(log->take(), jump) << duration;
    }
    view->flyToCamera(cameraAt(*view, {5, 5}, 10), 0, count());
    EXPECT_EQ(log->take(), jump);
    EXPECT_EQ(completions, 6);
}

TEST_F(CameraEventsTest, AnAnimationFollowsItsCurve) {
    struct Case {
        std::optional<CAMediaTimingFunction> timing;
        double quarter;  // progress after a quarter of the time
    };
    for (const auto& each : {Case{std::nullopt, 0.25}, Case{CAMediaTimingFunction::easeIn(), 0.0935},
                             Case{CAMediaTimingFunction::easeOut(), 0.3781}}) {
        jumpTo({0, 0});
        view->setCamera(cameraAt(*view, {0, 8}, 10, 40, 300), 2, each.timing, count());
        completions = 0;
        port.advance(0.5);
        EXPECT_NEAR(view->centerCoordinate().longitude, 8 * each.quarter, 0.15);
        EXPECT_NEAR(view->camera().pitch, 40 * each.quarter, 0.8);
        EXPECT_NEAR(view->direction(), 360 - 60 * each.quarter, 1.2);
        EXPECT_EQ(completions, 0);
        port.advance(1.6);
        expectView(*view, {0, 8}, 10, 40, 300);
        EXPECT_EQ(completions, 1);
        view->setCamera(cameraAt(*view, {0, 0}, 10), false);
    }
}

TEST_F(CameraEventsTest, AnEaseMovesEverythingAboutOneFixedPoint) {
    view->setCamera(cameraAt(*view, {20, 30}, 14), 1, std::nullopt, {});
    port.advance(0.25);
    const auto fixed = view->convertPoint({330, 40}, nullptr);
    // The middle of both ends' pictures are known: extrapolate where the screen point keeps its coordinate.
    std::vector<CGPoint> points;
    for (int step = 0; step < 2; ++step) {
        points.push_back(view->convertCoordinate(fixed, nullptr));
        port.advance(0.25);
    }
    points.push_back(view->convertCoordinate(fixed, nullptr));
    const double first = std::hypot(points[1].x - points[0].x, points[1].y - points[0].y);
    const double second = std::hypot(points[2].x - points[1].x, points[2].y - points[1].y);
    EXPECT_NEAR(second / first, 2,
                0.15);  // One zoom level a quarter: twice as far each time, along one line.
    const double cross = (points[1].x - points[0].x) * (points[2].y - points[1].y) -
                         (points[1].y - points[0].y) * (points[2].x - points[1].x);
    EXPECT_NEAR(cross / (first * second), 0, 1e-6);
}

TEST_F(CameraEventsTest, AFlightRisesAndArrives) {
    view->flyToCamera(cameraAt(*view, {40, 170}, 12, 30, 350), -1, count());
    double lowest = 10;
    int steps = 0;
    while (completions == 0 && ++steps < 10000) {
        port.advance(1.0 / 60);
        lowest = std::min(lowest, view->zoomLevel());
    }
    EXPECT_LT(lowest, 4);
    EXPECT_GT(steps, 120);
    EXPECT_LT(steps, 1800);
    expectView(*view, {40, 170}, 12, 30, 350);
    view->flyToCamera(cameraAt(*view, {40, -170}, 12), 1, count());
    port.advance(0.5);
    EXPECT_GT(std::abs(view->centerCoordinate().longitude), 169);
    port.advance(0.6);
    expectView(*view, {40, -170}, 12);
    view->flyToCamera(cameraAt(*view, {40, -170}, 3), 1, count());
    port.advance(0.3);
    EXPECT_NEAR(view->centerCoordinate().longitude, -170, 1e-6);
    port.advance(0.8);
    EXPECT_EQ(completions, 3);
    EXPECT_NEAR(view->zoomLevel(), 3, 1e-9);
}

TEST_F(CameraEventsTest, WhateverInterruptsAnAnimationCompletionsRunOnce) {
    struct Case {
        const char* name;
        std::function<void()> interrupt;
        std::string events;
    };
    const std::vector<Case> cases{{"jump",
                                   [this] {
                                       jumpTo({0, 2});
                                   },
                                   animation + ", " + jump},
                                  {"ease",
                                   [this] {
                                       ease({0, 2}, 0.1);
                                   },
                                   animation + ", " + animation},
                                  {"flight",
                                   [this] {
                                       view->flyToCamera(cameraAt(*view, {0, 2}, 10), 0.1, count());
                                   },
                                   animation + ", " + animation},
                                  {"zoom",
                                   [this] {
                                       view->setZoomLevel(9);
                                       count()();
                                   },
                                   animation + ", " + jump},
                                  {"limit",
                                   [this] {
                                       view->setMaximumZoomLevel(9);
                                       count()();
                                   },
                                   animation},
                                  {"nothing new", [this] { jumpTo(view->centerCoordinate()); }, animation}};
    for (const auto& each : cases) {
        for (const double wait : {0.0, 0.5}) {
            SCOPED_TRACE(std::string(each.name) + " after " + std::to_string(wait));
            view->setMaximumZoomLevel(22);
            jumpTo({0, 0});
            static_cast<void>(log->take());
            completions = 0;
            ease({4, 4}, 1);
            port.advance(wait);
            each.interrupt();
            EXPECT_TRUE(port.runUntilIdle());
            EXPECT_EQ(log->take(), each.events);
            EXPECT_EQ(completions, 2);
        }
    }
}

TEST_F(CameraEventsTest, CommandsWithinCallbacksWinOverTheOnesTheyInterrupt) {
    struct Case {
        std::string event;
        bool outerAnimated, innerAnimated;
        std::string events;
        CLLocationCoordinate2D end;
    };
    const CLLocationCoordinate2D outer{1, 1};
    const CLLocationCoordinate2D inner{2, 2};
    const std::vector<Case> cases{
        {"will 1", false, false, "will 1, " + jump + ", is 1, did 1", inner},
        {"is 1", false, false, "will 1, is 1, " + jump + ", did 1", inner},
        {"did 1", false, false, jump + ", " + jump, inner},
        {"will 1", false, true, "will 1, will 1 animated, is 1, did 1, is 1, did 1 animated", inner},
        {"will 1 animated", true, false, animation + ", " + jump, inner},
        {"is 1", true, false, animation + ", " + jump, inner},
        {"is 1", true, true, animation + ", " + animation, inner},
        {"did 1 animated", true, false, animation + ", " + jump, inner}};
    for (const auto& each : cases) {
        SCOPED_TRACE(each.event + (each.outerAnimated ? " animated" : "") +
                     (each.innerAnimated ? " ->" : ""));
        log->listener = nullptr;
        jumpTo({0, 0});
        static_cast<void>(log->take());
        completions = 0;
        log->listener = [&](MLNMapView&, const std::string& event) {
            if (event == each.event) {
                log->listener = nullptr;
                each.innerAnimated ? ease(inner, 0.2) : jumpTo(inner);
            }
        };
        each.outerAnimated ? ease(outer, 0.2) : jumpTo(outer);
        EXPECT_TRUE(port.runUntilIdle());
        EXPECT_EQ(log->take(), each.events);
        EXPECT_EQ(completions, 2);
        expectView(*view, each.end, 10);
    }
}

TEST_F(CameraEventsTest, TheViewOrItsDelegateMayGoInAnyCallback) {
    for (const std::string event :
         {"will 1", "is 1", "did 1", "will 1 animated", "did 1 animated", "completion"}) {
        for (const bool releasesView : {true, false}) {
            SCOPED_TRACE(event);
            completions = 0;
            log = std::make_shared<EventLog>();
            view = makeView();
            const auto leave = [this, releasesView](const std::string&) {
                releasesView ? view.reset() : log.reset();
            };
            log->listener = [&](MLNMapView&, const std::string& each) {
                if (each == event) {
                    leave(each);
                }
            };
            auto& map = *view;
            const bool animated = event.find("animated") != std::string::npos;
            map.setCamera(cameraAt(map, {3, 3}, 10), animated ? 0.1 : 0, std::nullopt, [&] {
                ++completions;
                if (event == "completion") {
                    leave(event);
                }
            });
            EXPECT_TRUE(port.runUntilIdle());
            EXPECT_EQ(completions, 1);
            EXPECT_EQ(releasesView ? view == nullptr : log == nullptr, true);
        }
    }
}

TEST_F(CameraEventsTest, ResettingNorthHasAReasonOfItsOwn) {
    view->resetNorth();
    EXPECT_EQ(log->take(), "");
    view->setCamera(cameraAt(*view, {0, 0}, 10, 30, 200), false);
    static_cast<void>(log->take());
    view->resetNorth();
    EXPECT_TRUE(port.runUntilIdle());
    EXPECT_EQ(log->take(), "will 2 animated, is 2, did 2 animated");
    expectView(*view, {0, 0}, 10, 30, 0);
}

}  // namespace
}  // namespace pelta
