#include "MapFixture.h"

namespace pelta {
namespace {

class OrnamentControlsTest : public MapFixture {
 protected:
    static UIButton& button(const std::shared_ptr<UIView>& control, std::size_t index) {
        return dynamic_cast<UIButton&>(*control->subviews().at(index));
    }

    static CGPoint middleOf(UIView& view) {
        return view.convertPointToWindow({view.bounds().midX(), view.bounds().midY()});
    }
};

TEST_F(OrnamentControlsTest, OrnamentsStandInTheirCornersOfSafeAreaAndInset) {
    const auto map = makeLoadedMap();
    const auto ornament = make<UIView>(CGRect{});
    ornament->setTranslatesAutoresizingMaskIntoConstraints(false);
    map->addSubview(ornament);
    std::vector<std::shared_ptr<NSLayoutConstraint>> constraints;
    map->setSafeAreaInsets({20, 4, 30, 6});
    map->setContentInset({100, 10, 50, 12});
    const std::pair<PgmPosition, CGPoint> cases[] = {
        {PgmPosition::topLeft, {4 + 10 + 8, 20 + 100 + 9}},
        {PgmPosition::topRight, {800 - 6 - 12 - 8 - 40, 20 + 100 + 9}},
        {PgmPosition::bottomLeft, {4 + 10 + 8, 600 - 30 - 50 - 9 - 20}},
        {PgmPosition::bottomRight, {800 - 6 - 12 - 8 - 40, 600 - 30 - 50 - 9 - 20}},
        {PgmPosition::centerRight, {800 - 6 - 12 - 8 - 40, (20 + 570) / 2 - 50 - 9 - 10}},
    };
    for (const auto& [position, origin] : cases) {
        map->updateConstraintsForOrnament(ornament, constraints, position, {40, 20}, {8, 9});
        map->layoutIfNeeded();
        EXPECT_EQ(ornament->frame(), (CGRect{origin, {40, 20}})) << static_cast<unsigned>(position);
        EXPECT_EQ(ornament->constraints(), constraints);
        EXPECT_EQ(constraints.size(), 4U);
    }
    map->updateConstraintsForOrnament(ornament, constraints, PgmPosition::topLeft, {}, {8, 9});
    EXPECT_EQ(constraints.size(), 2U);
    EXPECT_DEATH(
        map->updateConstraintsForOrnament(ornament, constraints, static_cast<PgmPosition>(5), {}, {}),
        "unexpected ornament position 5");
}

TEST_F(OrnamentControlsTest, AnInsetThatLeavesNoAreaMovesNothingUntilThereIsRoom) {
    const auto map = makeLoadedMap();
    const auto expectFrames = [&](double zoomMiddle, double locationBottom, double logoBottom) {
        EXPECT_TRUE(port.runUntilIdle());
        EXPECT_EQ(map->zoomView()->frame().midY(), zoomMiddle);
        EXPECT_EQ(map->locationView()->frame().maxY(), locationBottom);
        EXPECT_EQ(engineOf(map).logoView()->frame().maxY(), logoBottom);
    };
    expectFrames(300, 592, 592);
    map->setContentInset({50, 0, 550, 0});
    expectFrames(300, 592, 592);
    map->setFrame({{}, {800, 700}});
    expectFrames(350 - 550, 692 - 550, 692 - 550);
    map->setFrame({{}, {800, 600}});
    expectFrames(300, 592, 592);
}

TEST_F(OrnamentControlsTest, TheZoomButtonsAskForOneLevelMoreOrLess) {
    const auto map = makeLoadedMap();
    map->setIsZoomControlVisible(true);
    UIButton& plus = button(map->zoomView(), 0);
    UIButton& minus = button(map->zoomView(), 2);
    for (const auto& [from, maximum, pressed, to] : {std::tuple{19.5, 22., &plus, 20.5},
                                                     {19.5, 20., &plus, 20.},
                                                     {19.5, 20., &minus, 18.5},
                                                     {0.25, 20., &minus, 0.}}) {
        map->setMaximumZoomLevel(maximum);
        map->setZoomLevel(from);
        port.tap(*window, middleOf(*pressed));
        EXPECT_NEAR(engineOf(map).zoomLevel(), from, 1e-9) << "animated";
        port.advance(1);
        EXPECT_NEAR(engineOf(map).zoomLevel(), to, 1e-9);
    }
    map->setZoomLevel(10.3);
    port.tap(*window, middleOf(plus));
    port.tap(*window, middleOf(plus));
    port.advance(1);
    EXPECT_NEAR(engineOf(map).zoomLevel(), 12.3, 1e-9) << "quick presses add up";

    const auto journey =
        PgmCameraUpdate::cameraUpdateWithPosition(*PgmCameraPosition::cameraPosition({10, 20}, 15, 40, 70));
    journey->setAnimation(PgmCameraUpdateAnimation::linear);
    journey->setAnimationDuration(5);
    map->moveCamera(journey);
    port.advance(1);
    port.tap(*window, middleOf(minus));
    port.advance(1);
    expectCamera(*map, {10, 20}, 14, 40, 70);  // Where it was going to, a level further out.

    EXPECT_EQ(plus.accessibilityLabel() + ", " + minus.accessibilityLabel(), "Zoom in, Zoom out");
}

TEST_F(OrnamentControlsTest, TheLocationButtonFollowsOnceMore) {
    const auto map = makeLoadedMap();
    map->setIsLocationButtonVisible(true);
    const CGPoint place = middleOf(button(map->locationView(), 0));
    port.tap(*window, place);
    EXPECT_FALSE(port.isLocationObserved()) << "off stays off";
    map->setUserTrackingMode(PgmUserTrackingMode::follow);
    engineOf(map).setUserTrackingMode(MLNUserTrackingMode::none);
    engineOf(map).setShowsUserLocation(false);
    port.tap(*window, place);
    EXPECT_TRUE(port.isLocationObserved());
    EXPECT_EQ(engineOf(map).userTrackingMode(), MLNUserTrackingMode::follow);

    port.reportLocation({.coordinate = {37, 127}});
    port.advance(1);
    map->setCameraPosition(PgmCameraPosition::cameraPosition({0, 0}, 9, 20, 30));
    EXPECT_EQ(engineOf(map).userTrackingMode(), MLNUserTrackingMode::follow);
    port.tap(*window, place);
    port.advance(1);
    expectCamera(*map, {37, 127}, 9, 20, 30);
}

TEST_F(OrnamentControlsTest, TheLocationButtonAsksTheApplicationFirst) {
    auto map = makeLoadedMap();
    map->setIsLocationButtonVisible(true);
    const CGPoint place = middleOf(button(map->locationView(), 0));
    struct Case {
        std::string name;
        PgmMapView::LocationButtonEvent event;
        bool isLeftToTheMap;
    };
    const Case cases[] = {
        {"none", nullptr, true},
        {"declines", [](PgmMapView&) { return false; }, true},
        {"accepts", [](PgmMapView&) { return true; }, false},
        {"does it itself", [](PgmMapView& asked) { return asked.locactionAction(), true; }, true},
        {"leaves", [](PgmMapView& asked) { return asked.setLocationButtonEvent(nullptr), true; }, false},
        {"has left", map->locationButtonEvent(), true},
        {"releases the map", [&](PgmMapView&) { return map->removeFromSuperview(), map.reset(), true; },
         false},
    };
    map->setUserTrackingMode(PgmUserTrackingMode::follow);
    const auto engine = map->mapView();
    for (const Case& c : cases) {
        engine->setUserTrackingMode(MLNUserTrackingMode::none);
        map->setLocationButtonEvent(c.event);
        port.tap(*window, place);
        EXPECT_EQ(engine->userTrackingMode() == MLNUserTrackingMode::follow, c.isLeftToTheMap) << c.name;
    }
    EXPECT_EQ(map, nullptr);
}

TEST_F(OrnamentControlsTest, TheLocationButtonShowsPicturesOfTheApplication) {
    const auto map = makeMap();
    const UIButton& shown = button(map->locationView(), 0);
    const auto expect = [&](const UIImage& normal, const UIImage& pressed) {
        const auto pixels = [&](UIControlState state) { return shown.imageForState(state)->pixels(); };
        EXPECT_THAT(pixels(UIControlState::normal), testing::ElementsAreArray(normal.pixels()));
        EXPECT_THAT(pixels(UIControlState::highlighted), testing::ElementsAreArray(pressed.pixels()));
    };
    const auto normal = *shown.imageForState(UIControlState::normal);
    const auto pressed = *shown.imageForState(UIControlState::highlighted);
    const auto own = *UIImage::fromPixels(1, 1, 1, {1, 2, 3, 4});
    const auto frame = shown.frame();
    map->setLocationButtonImage(own);
    expect(own, own);
    EXPECT_EQ(shown.frame(), frame);
    map->setLocationButtonImage(own, pressed);
    expect(own, pressed);
    map->setLocationButtonImage(std::nullopt);
    expect(normal, pressed);
}

}  // namespace
}  // namespace pelta
