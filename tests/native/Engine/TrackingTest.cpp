#include "EngineFixture.h"
#include "RecordingRenderer.h"

namespace pelta {
namespace {

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
    view->setCamera(cameraAt(*view, {0, 0}, 12, 20, 80), 5, std::nullopt, {});
    report(37, 127.5);
    expectView(*view, {37, 127.5}, 12, 20, 80);
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

}  // namespace
}  // namespace pelta
