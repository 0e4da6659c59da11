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

TEST_F(CameraEventsTest, AnAnimationFollowsItsCurve) {
    using Timing = std::optional<CAMediaTimingFunction>;
    // Progress after a quarter of the time.
    for (const auto& [timing, quarter] : {std::pair(Timing(), 0.25),
                                          {CAMediaTimingFunction::easeIn(), 0.0935},
                                          {CAMediaTimingFunction::easeOut(), 0.3781}}) {
        jumpTo({0, 0});
        view->setCamera(cameraAt(*view, {0, 8}, 10, 40, 300), 2, timing, count());
        completions = 0;
        port.advance(0.5);
        EXPECT_NEAR(view->centerCoordinate().longitude, 8 * quarter, 0.15);
        EXPECT_NEAR(view->camera().pitch, 40 * quarter, 0.8);
        EXPECT_NEAR(view->direction(), 360 - 60 * quarter, 1.2);
        EXPECT_EQ(completions, 0);
        port.advance(1.6);
        expectView(*view, {0, 8}, 10, 40, 300);
        EXPECT_EQ(completions, 1);
        view->setCamera(cameraAt(*view, {0, 0}, 10), false);
    }
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
    EXPECT_EQ(completions, 2);
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

TEST_F(CameraEventsTest, TheLastIsChangingCarriesTheFinalCamera) {
    struct Case {
        const char* name;
        std::string event;  // at which the limit is set; at once when empty
        double atZoom;      // and from which zoom on
        std::function<void()> move;
        double end;
    };
    const auto to12 = [this](double duration) {
        view->setCamera(cameraAt(*view, {1, 1}, 12), duration, std::nullopt, count());
    };
    const auto stay = [this] { view->setCamera(view->camera(), false); };
    const auto half = [&] {
        to12(1);
        port.advance(0.5);
    };
    const auto stop = [&] {
        half();
        view->setMaximumZoomLevel(6);
        stay();
    };
    const auto jumpElsewhere = [&] {
        half();
        view->setCamera(cameraAt(*view, {2, 2}, 5), 0, std::nullopt, count());
    };
    const auto fly = [&] { view->flyToCamera(cameraAt(*view, {1, 1}, 12), 0.2, count()); };
    const auto jump = [&] { to12(0); };
    const auto ease = [&] { to12(0.2); };
    const std::vector<Case> cases{
        {"as a jump begins", "will 1", 0, jump, 6},
        {"as a jump is under way", "is 1", 0, jump, 6},
        {"as a jump has ended", "did 1", 0, jump, 6},
        {"as a transition begins", "will 1 animated", 0, ease, 6},
        {"in its middle", "is 1", 11, ease, 6},
        {"in its last step", "is 1", 12, ease, 6},
        {"as it has ended", "did 1 animated", 0, ease, 6},
        {"in the last step of a flight", "is 1", 12, fly, 6},
        {"between two steps", "", 0, half, 6},
        {"between two steps, then stopped there", "", 0, stop, 6},
        {"as the transition before is stopped", "did 1 animated", 0, jumpElsewhere, 5},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(each.name);
        log->listener = nullptr;
        view->setMaximumZoomLevel(22);
        jumpTo({0, 0});
        static_cast<void>(log->take());
        completions = 0;
        std::optional<MLNMapCamera> last;
        log->listener = [&](MLNMapView& map, const std::string& event) {
            if (event == "is 1") {
                last = map.camera();
            }
            if (event == each.event && map.zoomLevel() >= each.atZoom) {
                map.setMaximumZoomLevel(6);
            }
        };
        each.move();
        view->setMaximumZoomLevel(each.event.empty() ? 6 : view->maximumZoomLevel());
        EXPECT_TRUE(port.runUntilIdle());
        EXPECT_EQ(last, view->camera());
        EXPECT_NEAR(view->zoomLevel(), each.end, 1e-9);
        EXPECT_GE(completions, 1);
    }
}

}  // namespace
}  // namespace pelta
