#include <cmath>
#include <limits>

#include "EngineFixture.h"

namespace pelta {
namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

class CameraTest : public EngineTest {};

TEST_F(CameraTest, AltitudeAndZoomAreInversesAndFinite) {
    for (const double pitch : {0.0, 60.0, 89.9, 90.0, 120.0}) {
        for (const double latitude : {0.0, -45.0, 85.0, 90.0, 100.0}) {
            for (const CGSize size : {CGSize{400, 300}, CGSize{0, 0}, CGSize{1, -5}, CGSize{1, 1e5}}) {
                const double altitude = MLNAltitudeForZoomLevel(7.25, pitch, latitude, size);
                EXPECT_NEAR(MLNZoomLevelForAltitude(altitude, pitch, latitude, size), 7.25, 1e-9);
            }
        }
    }
    for (const double odd : {notANumber, infinity, -infinity, 0.0, -1.0, 1e300, -1e300, 1e-320}) {
        EXPECT_TRUE(std::isfinite(MLNAltitudeForZoomLevel(odd, odd, odd, {odd, odd}))) << odd;
        EXPECT_TRUE(std::isfinite(MLNZoomLevelForAltitude(odd, odd, odd, {odd, odd}))) << odd;
        EXPECT_TRUE(std::isfinite(MLNMetersPerPoint(odd, odd))) << odd;
    }
}

TEST_F(CameraTest, KeepsWhatIsNotFinite) {
    const auto view = makeView();
    view->setCamera(cameraAt(*view, {37, 127}, 11, 30, 40), false);
    const auto zoomBefore = view->zoomLevel();
    view->setLatitude(notANumber);
    view->setLongitude(infinity);
    view->setZoomLevel(notANumber);
    view->setMinimumZoomLevel(infinity);
    view->setMaximumPitch(notANumber);
    view->setMaximumScreenBounds({{0, notANumber}, {1, 1}});
    view->setContentInset({0, infinity, 0, 0});
    view->setCamera({{notANumber, 5}, notANumber, infinity, notANumber}, false);
    expectView(*view, {37, 127}, zoomBefore, 30, 40);
    EXPECT_EQ(view->contentInset(), UIEdgeInsets{});
}

TEST_F(CameraTest, ContentInsetMovesTheCentreOnTheScreenNotOnTheEarth) {
    const auto view = makeView();
    view->setCamera(cameraAt(*view, {37, 127}, 11), false);
    int completions = 0;
    const auto count = [&completions] { ++completions; };
    view->setContentInset({0, 100, 50, 0}, false, count);
    EXPECT_EQ(completions, 1);
    EXPECT_EQ(view->convertCoordinate({37, 127}, nullptr), (CGPoint{250, 125}));
    expectView(*view, {37, 127}, 11);
    constexpr UIEdgeInsets leavesNoArea{0, 300, 50, 200};
    view->setContentInset(leavesNoArea, true, count);
    EXPECT_EQ(view->contentInset(), leavesNoArea);
    port.advance(0.15);
    const double onTheWay = view->convertCoordinate({37, 127}, nullptr).x;
    EXPECT_TRUE(onTheWay > 205 && onTheWay < 245) << onTheWay;
    EXPECT_EQ(completions, 1);
    view->setFrame({{}, {40, 300}});  // Too narrow for what is shown on the way, too.
    EXPECT_EQ(view->convertCoordinate({37, 127}, nullptr), (CGPoint{20, 150}));
    EXPECT_TRUE(port.runUntilIdle());
    EXPECT_EQ(completions, 2);
    EXPECT_EQ(view->convertCoordinate({37, 127}, nullptr), (CGPoint{20, 150}));
}

}  // namespace
}  // namespace pelta
