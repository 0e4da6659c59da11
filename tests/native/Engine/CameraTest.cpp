#include <cmath>
#include <limits>

#include "EngineFixture.h"

namespace pelta {
namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

class CameraTest : public EngineTest {};

TEST_F(CameraTest, AltitudeAndZoomAreInversesAndFinite) {
    for (const double zoom : {-3.0, 0.0, 7.25, 22.0, 24.0}) {
        for (const double pitch : {0.0, 60.0, 89.9, 90.0, 120.0}) {
            for (const double latitude : {0.0, -45.0, 85.0, 90.0, 100.0}) {
                for (const CGSize size : {CGSize{400, 300}, CGSize{0, 0}, CGSize{1, -5}, CGSize{1, 1e5}}) {
                    const double altitude = MLNAltitudeForZoomLevel(zoom, pitch, latitude, size);
                    EXPECT_NEAR(MLNZoomLevelForAltitude(altitude, pitch, latitude, size), zoom, 1e-9);
                }
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
    expectView(*view, {37, 5}, zoomBefore, 30, 40);
    EXPECT_EQ(view->contentInset(), UIEdgeInsets{});
}

TEST_F(CameraTest, LimitsAreClampedAndTheMaximumWins) {
    const auto view = makeView();
    view->setMinimumZoomLevel(-4);
    view->setMaximumZoomLevel(99);
    view->setMaximumPitch(99);
    EXPECT_EQ(view->minimumZoomLevel(), 0);
    EXPECT_EQ(view->maximumZoomLevel(), 24);
    EXPECT_EQ(view->maximumPitch(), 85);
    view->setMinimumPitch(30);
    view->setMaximumPitch(20);
    view->setMinimumZoomLevel(9);
    view->setMaximumZoomLevel(6);
    EXPECT_EQ(view->minimumPitch(), 30);
    EXPECT_EQ(view->minimumZoomLevel(), 9);
    view->setCamera(cameraAt(*view, {0, 0}, 12, 60), false);
    expectView(*view, {0, 0}, 6, 20);
}

TEST_F(CameraTest, StaysWithinTheScreenBounds) {
    const auto view = makeView();
    const MLNCoordinateBounds area{{-10, 170}, {10, 190}};
    view->setMaximumScreenBounds(area);
    EXPECT_EQ(view->maximumScreenBounds(), area);
    const auto zoomToFill = std::log2(400 / (512 * 20.0 / 360));
    expectView(*view, {0, 180 - 360}, zoomToFill, 0, 0, 1e-6);
    struct Case {
        CLLocationCoordinate2D wanted;
        double west, south, east, north;  // edges of the area that the view touches
    };
    for (const Case& each : {Case{{80, 175}, notANumber, notANumber, notANumber, 10},
                             Case{{5, -160}, notANumber, notANumber, 190, notANumber},
                             Case{{-20, 160}, 170, -10, notANumber, notANumber}}) {
        view->setCamera(cameraAt(*view, each.wanted, 7), false);
        const auto shown = view->visibleCoordinateBounds();
        const double turn = shown.sw.longitude < 0 ? 360 : 0;
        const auto expectEdge = [](double edge, double area, double touched, double inwards) {
            EXPECT_GE((edge - area) * inwards, -1e-6);
            EXPECT_EQ(std::abs(edge - area) < 1e-6, !std::isnan(touched)) << edge << " and " << area;
        };
        expectEdge(shown.sw.longitude + turn, 170, each.west, 1);
        expectEdge(shown.sw.latitude, -10, each.south, 1);
        expectEdge(shown.ne.longitude + turn, 190, each.east, -1);
        expectEdge(shown.ne.latitude, 10, each.north, -1);
    }
    view->setMaximumZoomLevel(2);
    EXPECT_EQ(view->zoomLevel(), 2);
    view->setMaximumScreenBounds({{-90, -180}, {90, 180}});
    view->setCamera(cameraAt(*view, {50, 10}, 1), false);
    expectView(*view, {50, 10}, 1);
}

TEST_F(CameraTest, KeepsTheCameraWhenTheSizeChanges) {
    const auto view = makeView();
    view->setCamera(cameraAt(*view, {37, 127}, 11, 30, 40), false);
    view->setFrame({{0, 0}, {800, 700}});
    expectView(*view, {37, 127}, 11, 30, 40);
    const auto middle = view->convertCoordinate({37, 127}, nullptr);
    EXPECT_NEAR(middle.x, 400, 1e-6);
    EXPECT_NEAR(middle.y, 350, 1e-6);
    view->setMaximumScreenBounds({{36, 126}, {38, 128}});
    view->setCamera(cameraAt(*view, {37, 127}, 1), false);
    view->setFrame({{0, 0}, {3200, 700}});
    EXPECT_TRUE(port.runUntilIdle());
    EXPECT_NEAR(view->zoomLevel(), std::log2(3200 / (512 * 2 / 360.0)), 1e-9);
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
    view->setContentInset({0, 300, 50, 200}, false, count);  // leaves no area
    EXPECT_EQ(view->contentInset(), (UIEdgeInsets{0, 100, 50, 0}));
    view->setContentInset({}, true, count);
    port.advance(0.15);
    const double onTheWay = view->convertCoordinate({37, 127}, nullptr).x;
    EXPECT_TRUE(onTheWay > 205 && onTheWay < 245) << onTheWay;
    EXPECT_EQ(completions, 2);
    EXPECT_TRUE(port.runUntilIdle());
    EXPECT_EQ(completions, 3);
    EXPECT_NEAR(view->convertCoordinate({37, 127}, nullptr).x, 200, 1e-9);
}

TEST_F(CameraTest, ConvertsFromAndToOtherViews) {
    const auto window = port.makeWindow({800, 600});
    const auto view = makeView();
    view->setFrame({{100, 50}, {400, 300}});
    window->addSubview(view);
    EXPECT_EQ(view->convertCoordinate({0, 0}, window.get()), (CGPoint{300, 200}));
    const auto coordinate = view->convertPoint({300, 200}, window.get());
    EXPECT_NEAR(coordinate.latitude, 0, 1e-9);
    EXPECT_NEAR(coordinate.longitude, 0, 1e-9);
    const auto rect = view->convertCoordinateBounds(view->visibleCoordinateBounds(), window.get());
    EXPECT_NEAR(rect.minX(), 100, 1e-6);
    EXPECT_NEAR(rect.maxY(), 350, 1e-6);
}

/// What was fitted must touch the padded area on two opposite sides, and be in its middle on both axes.
TEST_F(CameraTest, FitsBounds) {
    struct Case {
        UIEdgeInsets inset, padding;
        double heading, pitch;
        MLNCoordinateBounds bounds;
    };
    const MLNCoordinateBounds korea{{33, 124}, {39, 132}};
    for (const Case& each :
         {Case{{}, {}, 0, 0, korea}, Case{{}, {20, 60, 40, 100}, 0, 0, korea},
          Case{{0, 100, 0, 0}, {}, 0, 0, korea}, Case{{10, 0, 60, 30}, {5, 6, 7, 8}, 33, 0, korea},
          Case{{}, {20, 20, 20, 20}, 250, 50, korea}, Case{{}, {}, 90, 0, {{39, 132}, {33, 124}}},
          Case{{}, {}, 0, 0, {{-5, 175}, {5, 190}}}}) {
        const auto view = makeView();
        view->setContentInset(each.inset);
        view->setCamera(cameraAt(*view, {10, 20}, 9, each.pitch, each.heading), false);
        view->setCamera(view->cameraThatFitsCoordinateBounds(each.bounds, each.padding), false);
        EXPECT_NEAR(view->camera().heading, each.heading, 1e-9);
        EXPECT_NEAR(view->camera().pitch, each.pitch, 1e-9);
        view->setMaximumPitch(0);  // The size is that of the map seen from above.
        auto shown = each.bounds;
        if (view->centerCoordinate().longitude < 0 && shown.sw.longitude > 0) {
            shown.sw.longitude -= 360;
            shown.ne.longitude -= 360;
        }
        const auto rect = view->convertCoordinateBounds(shown, nullptr);
        const CGRect room{
            {each.inset.left + each.padding.left, each.inset.top + each.padding.top},
            {400 - each.inset.left - each.inset.right - each.padding.left - each.padding.right,
             300 - each.inset.top - each.inset.bottom - each.padding.top - each.padding.bottom}};
        EXPECT_NEAR(rect.midX(), room.midX(), 1e-6);
        EXPECT_NEAR(rect.midY(), room.midY(), 1e-6);
        EXPECT_NEAR(std::max(rect.size.width / room.size.width, rect.size.height / room.size.height), 1,
                    1e-9);
    }
}

TEST_F(CameraTest, FittingAlwaysAnswers) {
    const auto view = makeView();
    view->setMinimumZoomLevel(3);
    view->setMaximumZoomLevel(15);
    view->setCamera(cameraAt(*view, {10, 20}, 9, 30, 40), false);
    const auto zoomOf = [&view](const MLNCoordinateBounds& bounds, UIEdgeInsets padding) {
        const auto camera = view->cameraThatFitsCoordinateBounds(bounds, padding);
        return MLNZoomLevelForAltitude(camera.altitude, camera.pitch, camera.centerCoordinate.latitude,
                                       {400, 300});
    };
    EXPECT_NEAR(zoomOf({{5, 6}, {5, 6}}, {}), 15, 1e-9);
    EXPECT_NEAR(zoomOf({{5, 6}, {5.000001, 6}}, {}), 15, 1e-9);
    EXPECT_NEAR(zoomOf({{-85, -180}, {85, 180}}, {}), 3, 1e-9);
    EXPECT_NEAR(zoomOf({{5, 6}, {7, 8}}, {150, 0, 150, 0}), 3, 1e-9);
    EXPECT_EQ(view->cameraThatFitsCoordinateBounds({{5, notANumber}, {7, 8}}, {}), view->camera());
}

}  // namespace
}  // namespace pelta
