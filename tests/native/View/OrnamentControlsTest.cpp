#include "MapFixture.h"

namespace pelta {
namespace {

class OrnamentControlsTest : public MapFixture {
 protected:
    static UIButton& button(const std::shared_ptr<UIView>& control, std::size_t index) {
        return dynamic_cast<UIButton&>(*control->subviews().at(index));
    }

    static UIImage pictureOf(const UIButton& button) {
        return std::get<PictureContent>(button.content()).image;
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
    constexpr UIEdgeInsets safe{20, 4, 30, 6};
    constexpr UIEdgeInsets inset{100, 10, 50, 12};
    struct Case {
        PgmPosition position;
        UIEdgeInsets safe, inset;
        CGPoint origin;
    };
    const Case cases[] = {
        {PgmPosition::topLeft, {}, {100, 0, 0, 0}, {8, 109}},
        {PgmPosition::topLeft, safe, inset, {4 + 10 + 8, 20 + 100 + 9}},
        {PgmPosition::topRight, safe, inset, {800 - 6 - 12 - 8 - 40, 20 + 100 + 9}},
        {PgmPosition::bottomLeft, safe, inset, {4 + 10 + 8, 600 - 30 - 50 - 9 - 20}},
        {PgmPosition::bottomRight, safe, inset, {800 - 6 - 12 - 8 - 40, 600 - 30 - 50 - 9 - 20}},
        {PgmPosition::centerRight, safe, inset, {800 - 6 - 12 - 8 - 40, (20 + 570) / 2 - 50 - 9 - 10}},
    };
    for (const Case& c : cases) {
        map->setSafeAreaInsets(c.safe);
        map->setContentInset(c.inset);
        map->updateConstraintsForOrnament(ornament, constraints, c.position, {40, 20}, {8, 9});
        map->layoutIfNeeded();
        EXPECT_EQ(ornament->frame(), (CGRect{c.origin, {40, 20}})) << static_cast<unsigned>(c.position);
        EXPECT_EQ(ornament->constraints(), constraints);
        EXPECT_EQ(constraints.size(), 4U);
    }
    map->updateConstraintsForOrnament(ornament, constraints, PgmPosition::topLeft, {}, {8, 9});
    EXPECT_EQ(constraints.size(), 2U);
    EXPECT_DEATH(
        map->updateConstraintsForOrnament(ornament, constraints, static_cast<PgmPosition>(5), {}, {}),
        "unexpected ornament position 5");
}

TEST_F(OrnamentControlsTest, TheControlsFollowSizeSafeAreaAndInset) {
    const auto map = makeLoadedMap();
    const auto& zoom = map->zoomView();
    const auto& location = map->locationView();
    EXPECT_EQ(zoom->frame().size, (CGSize{40, 81}));
    EXPECT_EQ(zoom->frame().origin, (CGPoint{800 - 8 - 40, 300 - 40.5}));
    EXPECT_EQ(location->frame(), (CGRect{{800 - 8 - 40, 600 - 8 - 40}, {40, 40}}));
    map->setFrame({{0, 0}, {400, 500}});
    map->setSafeAreaInsets({0, 0, 34, 10});
    map->setContentInset({0, 0, 100, 20});
    map->layoutIfNeeded();
    EXPECT_EQ(zoom->frame().origin, (CGPoint{400 - 10 - 20 - 8 - 40, (500 - 34) / 2.0 - 100 - 40.5}));
    EXPECT_EQ(location->frame().origin, (CGPoint{400 - 10 - 20 - 8 - 40, 500 - 34 - 100 - 8 - 40}));
    map->setZoomViewPosition(PgmPosition::topLeft);
    map->setZoomViewMargins({5, 6});
    map->setLocationViewPosition(PgmPosition::bottomLeft);
    map->setLocationViewMargins({7, 8});
    map->layoutIfNeeded();
    EXPECT_EQ(zoom->frame().origin, (CGPoint{5, 6}));
    EXPECT_EQ(location->frame().origin, (CGPoint{7, 500 - 34 - 100 - 8 - 40}));
    EXPECT_EQ(zoom->constraints().size() + location->constraints().size(), 8U);

    EXPECT_TRUE(zoom->isHidden() && location->isHidden());
    for (const bool visible : {true, false}) {
        map->setIsZoomControlVisible(visible);
        map->setIsLocationButtonVisible(visible);
        EXPECT_EQ(std::pair(zoom->isHidden(), location->isHidden()), std::pair(!visible, !visible));
    }
    const auto options = PgmMapOptions::create(nullptr);
    options->setIsZoomControlVisible(true);
    EXPECT_FALSE(makeMap(options)->zoomView()->isHidden());
}

TEST_F(OrnamentControlsTest, TheZoomButtonsAskForOneLevelMoreOrLess) {
    const auto map = makeLoadedMap();
    map->setIsZoomControlVisible(true);
    UIButton& plus = button(map->zoomView(), 0);
    UIButton& minus = button(map->zoomView(), 2);
    struct Case {
        double from, maximum;
        UIButton& pressed;
        double to;
    };
    for (const Case& c : {Case{19.5, 22, plus, 20.5}, Case{19.5, 20, plus, 20}, Case{19.5, 20, minus, 18.5},
                          Case{0.25, 20, minus, 0}}) {
        map->setMaximumZoomLevel(c.maximum);
        map->setZoomLevel(c.from);
        port.tap(*window, middleOf(c.pressed));
        EXPECT_NEAR(engineOf(map).zoomLevel(), c.from, 1e-9) << "animated";
        port.advance(1);
        EXPECT_NEAR(engineOf(map).zoomLevel(), c.to, 1e-9);
    }
    EXPECT_EQ(plus.accessibilityLabel() + ", " + minus.accessibilityLabel(), "Zoom in, Zoom out");
}

TEST_F(OrnamentControlsTest, ButtonsShowAPictureForEachState) {
    const auto map = makeLoadedMap();
    map->setIsZoomControlVisible(true);
    map->setIsLocationButtonVisible(true);
    for (UIButton* pressed :
         {&button(map->zoomView(), 0), &button(map->zoomView(), 2), &button(map->locationView(), 0)}) {
        const auto normal = pictureOf(*pressed);
        EXPECT_EQ(normal.size(), pressed->bounds().size);
        EXPECT_EQ(normal.scale(), 2);
        port.touch(*window, 0, UITouchPhase::began, middleOf(*pressed));
        EXPECT_FALSE(pictureOf(*pressed).isIdenticalTo(normal));
        port.touch(*window, 0, UITouchPhase::cancelled, middleOf(*pressed));
        EXPECT_TRUE(pictureOf(*pressed).isIdenticalTo(normal));
        pressed->setIsEnabled(false);
        EXPECT_EQ(pictureOf(*pressed).isIdenticalTo(normal), pressed == &button(map->locationView(), 0));
    }
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
}

}  // namespace
}  // namespace pelta
