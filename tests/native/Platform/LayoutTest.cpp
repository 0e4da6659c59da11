#include <gtest/gtest.h>

#include <pelta/Platform/Frames.h>
#include <pelta/Platform/Make.h>
#include <pelta/Platform/UIWindow.h>
#include <pelta/headless/HeadlessPort.h>

namespace pelta {
namespace {

using Attribute = NSLayoutAttribute;
using Constraint = NSLayoutConstraint;

class LayoutTest : public ::testing::Test {
 protected:
    /// A view in the map that its constraints place.
    std::shared_ptr<UIView> constrainedView(CGRect frame = {}) {
        auto view = make<UIView>(frame);
        view->setTranslatesAutoresizingMaskIntoConstraints(false);
        map_->addSubview(view);
        return view;
    }

    CGRect laidOut(const std::shared_ptr<UIView>& view) {
        window_->layoutIfNeeded();
        return view->frame();
    }

    HeadlessPort port_;
    std::shared_ptr<UIWindow> window_ = port_.makeWindow({400, 300});
    std::shared_ptr<UIView> map_ = [this] {
        auto map = make<UIView>(window_->bounds());
        window_->addSubview(map);
        window_->setSafeAreaInsets({20, 10, 30, 40});  // Leaves (10, 20) to (360, 270).
        return map;
    }();
};

/// How a control of 50 × 20 points is held at a corner or edge, 8 and 4 points in.
std::vector<std::shared_ptr<Constraint>> placement(int position, const std::shared_ptr<UIView>& control,
                                                   const UILayoutGuide& safe) {
    const auto own = [&control](Attribute a) { return control->anchor(a); };
    const auto top = Constraint::equal(own(Attribute::top), safe.anchor(Attribute::top), 4);
    const auto left = Constraint::equal(own(Attribute::left), safe.anchor(Attribute::left), 8);
    // Written from the safe area's side: it is still the control that moves.
    const auto bottom = Constraint::equal(safe.anchor(Attribute::bottom), own(Attribute::bottom), 4);
    const auto right = Constraint::equal(safe.anchor(Attribute::right), own(Attribute::right), 8);
    const auto middle = Constraint::equal(safe.anchor(Attribute::centerY), own(Attribute::centerY), 4);
    const std::vector<std::shared_ptr<Constraint>> pairs[] = {
        {top, left}, {top, right}, {bottom, left}, {bottom, right}, {middle, right}};
    auto constraints = pairs[position];
    constraints.push_back(Constraint::equalToConstant(own(Attribute::width), 50));
    constraints.push_back(Constraint::equalToConstant(own(Attribute::height), 20));
    return constraints;
}

TEST_F(LayoutTest, ControlsKeepTheirCornerOfTheSafeArea) {
    const CGPoint expected[] = {{18, 24}, {302, 24}, {18, 246}, {302, 246}, {302, 131}};
    const auto control = constrainedView();
    for (int position = 0; position < 5; ++position) {
        const auto constraints = placement(position, control, map_->safeAreaLayoutGuide());
        Constraint::activate(constraints);
        EXPECT_EQ(laidOut(control), (CGRect{expected[position], {50, 20}})) << position;
        EXPECT_EQ(control->constraints().size(), 4U);
        Constraint::deactivate(constraints);
        EXPECT_TRUE(control->constraints().empty());
    }
}

TEST_F(LayoutTest, TwoConditionsSettleAnAxis) {
    using enum NSLayoutAttribute;
    struct Case {
        const char* name;
        std::vector<std::pair<Attribute, double>> toMap;  ///< Own anchor = the map's + constant.
        std::vector<std::pair<Attribute, double>> fixed;  ///< Own extent = constant.
        double x;
        double width;
    };
    const Case cases[] = {
        {"edges", {{left, 30}, {right, -50}}, {}, 30, 320},
        {"left and centre", {{left, 150}, {centerX, 0}}, {}, 150, 100},
        {"centre and right", {{centerX, 10}, {right, -100}}, {}, 120, 180},
        {"centre and width", {{centerX, 0}}, {{width, 60}}, 170, 60},
        {"as wide as the map", {{width, -100}, {right, 0}}, {}, 100, 300},
        {"right alone keeps the width", {{right, 0}}, {}, 393, 7},
        {"width alone keeps the place", {}, {{width, 9}}, 5, 9},
        {"the first two hold", {{left, 1}, {right, -1}, {centerX, 50}}, {{width, 3}}, 1, 398},
        {"a repeated condition does not count", {{left, 1}, {left, 99}, {right, 0}}, {}, 1, 399},
        {"edges that cross leave no width", {{left, 300}, {right, -200}}, {}, 300, 0},
    };
    for (const Case& c : cases) {
        const auto view = constrainedView({{5, 6}, {7, 8}});
        for (const auto& [attribute, constant] : c.toMap) {
            Constraint::equal(view->anchor(attribute), map_->anchor(attribute), constant)->setIsActive(true);
        }
        for (const auto& [attribute, constant] : c.fixed) {
            Constraint::equalToConstant(view->anchor(attribute), constant)->setIsActive(true);
        }
        EXPECT_EQ(laidOut(view), (CGRect{{c.x, 6}, {c.width, 8}})) << c.name;
        view->removeFromSuperview();
    }
}

TEST_F(LayoutTest, FollowsWhatItIsPlacedAgainst) {
    const auto first = constrainedView({{}, {10, 10}});
    const auto second = constrainedView({{}, {20, 10}});
    // `first` stands to the right of `second`, which is laid out after it.
    const auto gap = Constraint::equal(first->anchor(Attribute::left), second->anchor(Attribute::right), 5);
    const auto edge = Constraint::equal(second->anchor(Attribute::left), map_->anchor(Attribute::left), 1);
    Constraint::activate({gap, edge});
    EXPECT_EQ(laidOut(first).origin.x, 26);
    gap->setConstant(7);
    EXPECT_TRUE(FrameLoop::isRequested());
    EXPECT_EQ(laidOut(first).origin.x, 28);
    second->setFrame({{0, 0}, {50, 10}});
    EXPECT_EQ(laidOut(first).origin.x, 58);

    const auto corner = Constraint::equal(second->anchor(Attribute::bottom), map_->anchor(Attribute::bottom));
    corner->setIsActive(true);
    map_->setFrame({{0, 0}, {400, 200}});
    EXPECT_EQ(laidOut(second).origin.y, 190);
    first->setTranslatesAutoresizingMaskIntoConstraints(true);
    first->setFrame({{3, 3}, {3, 3}});
    EXPECT_EQ(laidOut(first).origin, (CGPoint{3, 3}));
}

TEST_F(LayoutTest, ConstraintsAgainstReleasedOrDistantViewsAreHarmless) {
    const auto view = constrainedView({{5, 6}, {7, 8}});
    auto released = make<UIView>(CGRect{{50, 50}, {1, 1}});
    Constraint::equal(view->anchor(Attribute::left), released->anchor(Attribute::left))->setIsActive(true);
    const auto distant = Constraint::equal(view->anchor(Attribute::top), window_->anchor(Attribute::top), 11);
    distant->setIsActive(true);
    released.reset();
    map_->setFrame({{0, 4}, {400, 200}});
    EXPECT_EQ(laidOut(view).origin, (CGPoint{5, 7}));
}

struct Restless : UIView {
    using UIView::UIView;
    void layoutSubviews() override {
        UIView::layoutSubviews();
        ++layouts;
        setFrame({{}, {frame().size.width + 1, 1}});  // Never content.
    }
    int layouts = 0;
};

TEST_F(LayoutTest, ALayoutThatNeverSettlesEnds) {
    const auto view = make<Restless>(CGRect{});
    map_->addSubview(view);
    window_->layoutIfNeeded();
    EXPECT_GT(view->layouts, 1);
    EXPECT_LT(view->layouts, 100);
}

}  // namespace
}  // namespace pelta
