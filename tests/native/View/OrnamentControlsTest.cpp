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
