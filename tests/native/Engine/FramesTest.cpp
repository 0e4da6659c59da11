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

TEST_F(FramesTest, ADoubleTapZoomsAboutItsPlaceInWhicheverCopyOfTheWorldItIsFound) {
    const auto window = port.makeWindow(viewFrame.size);
    window->addSubview(view);
    for (const double longitude : {180.3, -179.7}) {
        view->setCamera(cameraAt(*view, {0, 179.8}, 8), false);
        record().pointed = {0, longitude};
        port.tap(*window, {300, 150});
        port.tap(*window, {300, 150});
        port.advance(1);
        expectView(*view, {0, -179.95}, 9);
    }
}

}  // namespace
}  // namespace pelta
