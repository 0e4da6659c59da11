#include <cmath>

#include <pelta/Engine/MLNFillStyleLayer.h>

#include "EngineFixture.h"
#include "RecordingRenderer.h"

namespace pelta {
namespace {

using testing::ElementsAre;

class FramesTest : public EngineTest {
 protected:
    FramesTest() {
        log->notesFrames = true;
        view = makeView("style.json");
        port.advance(0.1);
        record().host->rendererDidLoadStyle();
        port.advance(0.1);
        static_cast<void>(log->take());
        record().calls.clear();
    }
    RendererRecord& record() { return engine.record; }

    RecordingEnginePort engine;
    std::shared_ptr<MLNMapView> view;
};

TEST_F(FramesTest, WorkIsDoneOnceAFrameAfterTheEvents) {
    for (const std::string name : {"a", "b"}) {
        view->style()->addLayer(std::make_shared<MLNFillStyleLayer>(name, name));
        view->triggerRepaint();
    }
    view->setCamera(cameraAt(*view, {1, 1}, 3), 0.01, std::nullopt, {});
    log->listener = [](MLNMapView& map, const std::string& event) {
        if (event == "frame" && map.style()->layers().size() == 2) {
            map.style()->addLayer(std::make_shared<MLNFillStyleLayer>("c", std::string("c")));
        }
    };
    port.advance(0.5);
    EXPECT_EQ(log->take(), "will 1 animated, is 1, did 1 animated, frame, idle");
    EXPECT_THAT(record().calls, ElementsAre("commit", "draw"));
    EXPECT_EQ(record().changes.changedLayers.size(), 3U);
}

TEST_F(FramesTest, IdleIsReportedOnceForEachRest) {
    port.runFrame();
    EXPECT_EQ(log->take(), "frame");
    record().isSettled = false;
    view->triggerRepaint();
    port.advance(0.5);
    EXPECT_EQ(log->take(), "frame");
    record().isSettled = true;
    record().host->rendererDidSettle();
    record().host->rendererDidSettle();
    EXPECT_EQ(log->take(), "idle");
    view->setStyleURL("style.json");
    port.advance(0.1);
    EXPECT_THAT(log->take(), testing::Not(testing::HasSubstr("idle")));
    record().host->rendererDidLoadStyle();
    port.advance(0.1);
    EXPECT_EQ(log->take(), "style test, frame, idle");
    log->listener = [](MLNMapView& map, const std::string& event) {
        if (event == "frame") {
            map.triggerRepaint();
        }
    };
    view->triggerRepaint();
    port.advance(0.1);
    EXPECT_THAT(log->take(), testing::Not(testing::HasSubstr("idle")));
    log->listener = nullptr;
    port.advance(0.1);
    EXPECT_EQ(log->take(), "frame, idle");
}

TEST_F(FramesTest, AGestureReportsAndRendersWithinItsMove) {
    using Reason = MLNCameraChangeReason;
    const auto reason = Reason::gesturePan | Reason::gestureRotate;
    int completions = 0;
    view->setCamera(cameraAt(*view, {1, 1}, 3), 10, std::nullopt, [&completions] { ++completions; });
    view->style()->addLayer(std::make_shared<MLNFillStyleLayer>("a", std::string("a")));
    record().isSettled = false;
    record().host->gestureWillBegin(reason, false);
    EXPECT_EQ(log->take(), "will 1 animated, is 1, did 1 animated, will 20");
    EXPECT_EQ(completions, 1);
    record().camera = {{5, 6}, 7, 8, 9};
    record().host->gestureDidMove(reason);
    EXPECT_EQ(log->take(), "is 20, frame");
    EXPECT_THAT(record().calls, ElementsAre("commit", "draw"));
    EXPECT_EQ(view->zoomLevel(), 7);
    EXPECT_EQ(view->direction(), 9);
    record().host->gestureDidEnd(reason, false);
    EXPECT_EQ(log->take(), "did 20");
    record().host->gestureWillBegin(Reason::gestureTilt, true);
    record().host->gestureDidEnd(Reason::gestureTilt, true);
    EXPECT_EQ(log->take(), "will 256 animated, is 256, did 256 animated");
    view->setMaximumZoomLevel(5);
    EXPECT_EQ(record().host->constrain({{89, 200}, 9, 80, -10}),
              (CameraState{{85.05112878, -160}, 5, 60, 350}));
}

TEST_F(FramesTest, TheRendererOutlivesTheCallInWhichTheViewGoes) {
    for (const std::string event : {"is 4", "frame", "did 4"}) {
        auto gone = makeView();
        log->listener = [&](MLNMapView&, const std::string& each) {
            if (each == event) {
                gone.reset();
            }
        };
        auto& host = *record().host;
        host.gestureWillBegin(MLNCameraChangeReason::gesturePan, false);
        host.gestureDidMove(MLNCameraChangeReason::gesturePan);
        if (gone) {
            host.gestureDidEnd(MLNCameraChangeReason::gesturePan, false);
        }
        EXPECT_EQ(record().renderers, 2) << event;
        port.advance(0.1);
        EXPECT_EQ(record().renderers, 1) << event;
    }
}

TEST_F(FramesTest, GestureFlagsReachTheRenderer) {
    view->setZoomEnabled(false);
    view->setScrollEnabled(false);
    view->setRotateEnabled(false);
    view->setPitchEnabled(false);
    view->setDecelerationRate(0.99);
    for (const double odd : {1.0, -0.1, std::nan("")}) {
        view->setDecelerationRate(odd);
    }
    EXPECT_EQ(record().gestures, (GestureSettings{false, false, false, false, 0.99}));
    EXPECT_EQ(view->gestures(), record().gestures);
}

class TrackingTest : public EngineTest {
 protected:
    void report(double latitude, double longitude, double course = -1) {
        CLLocation location;
        location.coordinate = {latitude, longitude};
        location.course = course;
        port.reportLocation(location);
        EXPECT_TRUE(port.runUntilIdle());
    }
};

TEST_F(TrackingTest, FollowsTheUser) {
    const auto view = makeView();
    view->setCamera(cameraAt(*view, {0, 0}, 10, 20, 30), false);
    view->setUserTrackingMode(MLNUserTrackingMode::follow);
    EXPECT_FALSE(port.isLocationObserved());
    view->setShowsUserLocation(true);
    view->setShowsHeading(true);
    EXPECT_TRUE(port.isLocationObserved());
    EXPECT_EQ(view->userLocation(), nullptr);
    static_cast<void>(log->take());
    report(37, 127);
    EXPECT_EQ(log->take(), "location, will 1 animated, is 1, did 1 animated");
    expectView(*view, {37, 127}, 10, 20, 30);
    EXPECT_EQ(view->userLocation()->coordinate(), (CLLocationCoordinate2D{37, 127}));
    report(37, 127);
    EXPECT_EQ(log->take(), "location");

    struct Case {
        CLHeading heading;
        double course, headingFollowed, courseFollowed;
    };
    for (const Case& each :
         {Case{{80, 90}, 45, 90, 45}, Case{{80, -1}, -1, 80, 45}, Case{{-1, -1}, -1, 80, 80}}) {
        view->setUserTrackingMode(MLNUserTrackingMode::followWithHeading);
        port.reportHeading(each.heading);
        EXPECT_TRUE(port.runUntilIdle());
        EXPECT_NEAR(view->direction(), each.headingFollowed, 1e-9);
        view->setUserTrackingMode(MLNUserTrackingMode::followWithCourse);
        report(37, 127, each.course);
        EXPECT_NEAR(view->direction(), each.courseFollowed, 1e-9);
    }
    view->setShowsUserLocation(false);
    EXPECT_FALSE(port.isLocationObserved());
    EXPECT_EQ(view->userLocation(), nullptr);
    EXPECT_EQ(view->userTrackingMode(), MLNUserTrackingMode::followWithCourse);
}

TEST_F(TrackingTest, OnlyAPanEndsTheFollowing) {
    RecordingEnginePort engine;
    auto view = makeView();
    view->setShowsUserLocation(true);
    view->setUserTrackingMode(MLNUserTrackingMode::follow);
    report(37, 127);
    view->setZoomLevel(4);
    engine.record.host->gestureWillBegin(MLNCameraChangeReason::gesturePinch, false);
    EXPECT_EQ(view->userTrackingMode(), MLNUserTrackingMode::follow);
    static_cast<void>(log->take());
    engine.record.host->gestureWillBegin(MLNCameraChangeReason::gesturePan, false);
    EXPECT_EQ(log->take(), "mode 0, will 4");
    report(38, 128);
    EXPECT_NEAR(view->centerCoordinate().latitude, 37, 1e-9);
    view.reset();
    EXPECT_FALSE(port.isLocationObserved());
}

class OrnamentsTest : public EngineTest {};

TEST_F(OrnamentsTest, KeepToTheirCornersOfTheSafeArea) {
    const auto view = makeView();
    for (const auto& ornament : {view->logoView(), view->compassView()}) {
        for (const auto& constraint : ornament->constraints()) {
            if (constraint->identifier() == "width") {
                constraint->setConstant(40);
            } else if (constraint->identifier() == "height") {
                constraint->setConstant(20);
            }
        }
    }
    view->setSafeAreaInsets({1, 2, 3, 4});
    view->setContentInset({10, 20, 30, 40});
    view->layoutIfNeeded();
    EXPECT_EQ(view->logoView()->frame(), (CGRect{{30, 300 - 3 - 30 - 8 - 20}, {40, 20}}));
    EXPECT_EQ(view->compassView()->frame(), (CGRect{{400 - 4 - 40 - 8 - 40, 19}, {40, 20}}));
    EXPECT_EQ(view->scaleBar()->frame().origin, (CGPoint{30, 19}));
    view->setShowsLogoView(false);
    EXPECT_TRUE(view->logoView()->isHidden());
}

TEST_F(OrnamentsTest, TheCompassShowsTheBearingAndResetsIt) {
    const auto window = port.makeWindow(viewFrame.size);
    const auto view = makeView();
    window->addSubview(view);
    for (const auto& constraint : view->compassView()->constraints()) {
        if (!constraint->identifier().empty()) {
            constraint->setConstant(40);
        }
    }
    EXPECT_TRUE(port.runUntilIdle());
    EXPECT_TRUE(view->compassView()->isHidden());
    view->setCamera(cameraAt(*view, {0, 0}, 5, 0, 90), false);
    EXPECT_TRUE(port.runUntilIdle());
    EXPECT_FALSE(view->compassView()->isHidden());
    EXPECT_NEAR(view->compassView()->transform().b, -1, 1e-12);
    view->setShowsCompassView(false);
    EXPECT_TRUE(view->compassView()->isHidden());
    view->setShowsCompassView(true);
    static_cast<void>(log->take());
    port.tap(*window, {400 - 8 - 20, 28});
    EXPECT_TRUE(port.runUntilIdle());
    EXPECT_EQ(log->take(), "will 2 animated, is 2, did 2 animated");
    EXPECT_EQ(view->direction(), 0);
    EXPECT_TRUE(view->compassView()->isHidden());
}

TEST_F(OrnamentsTest, TheScaleBarShowsARoundLength) {
    const auto view = makeView();
    EXPECT_FALSE(view->showsScale());
    view->setShowsScale(true);
    struct Case {
        double latitude, zoom;
        std::string label;
        int segments;
    };
    for (const Case& each : {Case{0, 0, "5000 km", 5}, Case{0, 10, "5 km", 5}, Case{60, 10, "2 km", 2},
                             Case{37, 14.2, "200 m", 2}, Case{0, 22, "1 m", 2}}) {
        view->setCamera(cameraAt(*view, {each.latitude, 0}, each.zoom), false);
        EXPECT_TRUE(port.runUntilIdle());
        const auto& parts = view->scaleBar()->subviews();
        EXPECT_EQ(dynamic_cast<const UILabel&>(*parts.back()).text(), each.label);
        double length = 0;
        int segments = 0;
        for (std::size_t i = 1; i + 1 < parts.size(); ++i) {
            segments += parts[i]->isHidden() ? 0 : 1;
            length += parts[i]->isHidden() ? 0 : parts[i]->frame().size.width;
        }
        EXPECT_EQ(segments, each.segments);
        const double unit = each.label.find("km") != std::string::npos ? 1000 : 1;
        EXPECT_NEAR(length * view->metersPerPointAtLatitude(each.latitude), std::stod(each.label) * unit,
                    1e-3);
        EXPECT_LE(length, 100);
    }
    const auto revision = UIView::treeRevision();
    port.runFrame();
    EXPECT_EQ(UIView::treeRevision(), revision);
}

}  // namespace
}  // namespace pelta
