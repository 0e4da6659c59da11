#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>

#include <pelta/Platform/Frames.h>
#include <pelta/Platform/Make.h>
#include <pelta/Platform/UIControls.h>
#include <pelta/Platform/UIWindow.h>
#include <pelta/headless/HeadlessPort.h>

namespace pelta {
namespace {

using ::testing::ElementsAre;

class ViewTest : public ::testing::Test {
 protected:
    static std::shared_ptr<UIView> viewAt(CGRect frame) { return make<UIView>(frame); }

    HeadlessPort port_;
    std::shared_ptr<UIWindow> window_ = port_.makeWindow({200, 100});
};

TEST_F(ViewTest, ASubviewHasOnePlaceInOneTree) {
    const auto outer = viewAt({{10, 20}, {100, 50}});
    const auto inner = viewAt({{1, 2}, {10, 10}});
    const auto front = viewAt({{0, 0}, {10, 10}});
    window_->addSubview(outer);
    window_->addSubview(inner);
    outer->addSubview(inner);  // Leaves the window.
    outer->addSubview(front);
    outer->addSubview(inner);    // Comes to the front.
    inner->addSubview(window_);  // Would make a ring.
    inner->addSubview(inner);
    EXPECT_THAT(window_->subviews(), ElementsAre(outer));
    EXPECT_THAT(outer->subviews(), ElementsAre(front, inner));
    EXPECT_THAT(inner->subviews(), ElementsAre());
    EXPECT_EQ(inner->window(), window_.get());
    EXPECT_EQ(inner->convertPointToWindow({3, 4}), (CGPoint{14, 26}));
    outer->removeFromSuperview();
    EXPECT_EQ(inner->window(), nullptr);
    EXPECT_EQ(outer->superview(), nullptr);
}

TEST_F(ViewTest, EveryVisibleChangeGrowsTheRevisionAndAsksForAFrame) {
    const auto view = viewAt({{0, 0}, {10, 10}});
    const auto label = make<UILabel>(CGRect{});
    const auto layer = view->layer();
    const auto bigger = [&layer] {
        auto properties = layer->properties();
        properties.cornerRadius = 4;
        layer->update(properties);
    };
    const std::function<void()> changes[] = {
        [&] { window_->addSubview(view); },
        [&] {
            view->setFrame({{1, 1}, {20, 20}});
        },
        [&] {
            view->setCenter({50, 50});
        },
        [&] { view->setIsHidden(true); },
        [&] { view->setAlpha(7); },
        [&] { view->setAlpha(0.5); },
        [&] { view->setBackgroundColor(UIColor::white()); },
        [&] { view->setCornerRadius(3); },
        [&] { view->setTransform(CGAffineTransform::rotation(1)); },
        [&] { view->setAccessibilityLabel("map"); },
        [&] { label->setText("text"); },
        [&] {
            label->setAttributes({UIFont::boldSystemFont(9), UIColor::white(), NSTextAlignment::right});
        },
        bigger,
        [&] { layer->addSublayer(CALayer::create()); },
        [&] { layer->addAnimation({}, "pulse"); },
        [&] { layer->removeAnimationForKey("pulse"); },
        [&] { view->removeFromSuperview(); },
    };
    for (std::size_t index = 0; index < std::size(changes); ++index) {
        port_.runUntilIdle();
        const unsigned long before = UIView::treeRevision();
        changes[index]();
        const bool isNoChange = index == 4;  // Opacity is clamped to what it was.
        EXPECT_EQ(UIView::treeRevision() != before, !isNoChange) << index;
        EXPECT_EQ(FrameLoop::isRequested(), !isNoChange) << index;
        const unsigned long after = UIView::treeRevision();
        if (index != 13 && index != 14) {  // Adding again is a change.
            changes[index]();
            EXPECT_EQ(UIView::treeRevision(), after) << index << " again";
        }
    }
}

TEST_F(ViewTest, ValuesThatMakeNoSenseAreIgnored) {
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    const auto view = viewAt({{1, 2}, {3, 4}});
    const CGRect frame = view->frame();
    view->setFrame({{nan, 0}, {1, 1}});
    view->setCenter({0, nan});
    view->setAlpha(nan);
    view->setCornerRadius(nan);
    view->setTransform({nan, 0, 0, 1, 0, 0});
    EXPECT_EQ(view->frame(), frame);
    EXPECT_EQ(view->alpha(), 1);
    EXPECT_EQ(view->cornerRadius(), 0);
    EXPECT_EQ(view->transform(), CGAffineTransform{});
    EXPECT_EQ(viewAt({{nan, 0}, {1, 1}})->frame(), CGRect{});
}

TEST_F(ViewTest, HitTestingFindsTheFrontmostViewThatTakesTouches) {
    const auto back = viewAt({{10, 10}, {100, 80}});
    const auto child = viewAt({{10, 10}, {200, 20}});  // Reaches out of its superview.
    const auto front = viewAt({{50, 10}, {100, 80}});
    window_->addSubview(back);
    back->addSubview(child);
    window_->addSubview(front);
    const auto hit = [this](double x, double y) { return window_->hitTest({x, y}); };
    EXPECT_EQ(hit(5, 5), window_);
    EXPECT_EQ(hit(15, 15), back);
    EXPECT_EQ(hit(20, 20), child);
    EXPECT_EQ(hit(60, 25), front);
    EXPECT_EQ(hit(200, 50), nullptr);  // The right edge is outside.
    front->setIsUserInteractionEnabled(false);
    EXPECT_EQ(hit(60, 25), child);
    EXPECT_EQ(hit(120, 25), window_);
    child->setAlpha(0);
    EXPECT_EQ(hit(60, 25), back);
    back->setIsHidden(true);
    EXPECT_EQ(hit(60, 25), window_);
}

struct SafeAreaCounter : UIView {
    using UIView::UIView;
    void safeAreaInsetsDidChange() override { ++changes; }
    int changes = 0;
};

TEST_F(ViewTest, TheSafeAreaReachesIntoSubviewsAsFarAsItCoversThem) {
    const auto view = make<SafeAreaCounter>(CGRect{{0, 10}, {200, 60}});
    window_->addSubview(view);
    window_->setSafeAreaInsets({30, 5, 35, -1});
    EXPECT_EQ(view->safeAreaInsets(), (UIEdgeInsets{20, 5, 5, 0}));
    EXPECT_EQ(view->changes, 1);
    window_->setSafeAreaInsets({30, 5, 35, 0});
    EXPECT_EQ(view->changes, 1);
    view->setFrame({{0, 40}, {200, 20}});
    EXPECT_EQ(view->safeAreaInsets(), (UIEdgeInsets{0, 5, 0, 0}));
    view->setSafeAreaInsets({7, 1, 0, 0});
    EXPECT_EQ(view->safeAreaInsets(), (UIEdgeInsets{7, 5, 0, 0}));
    view->removeFromSuperview();
    EXPECT_EQ(view->safeAreaInsets(), (UIEdgeInsets{7, 1, 0, 0}));
}

TEST_F(ViewTest, LayersKeepOnePlaceInATree) {
    const auto parent = CALayer::create();
    const auto child = CALayer::create();
    const auto other = CALayer::create();
    parent->addSublayer(child);
    other->addSublayer(child);
    child->addSublayer(other);  // Would make a ring.
    EXPECT_THAT(parent->sublayers(), ElementsAre());
    EXPECT_THAT(other->sublayers(), ElementsAre(child));
    EXPECT_EQ(child->superlayer(), other);
    child->removeFromSuperlayer();
    EXPECT_EQ(child->superlayer(), nullptr);
}

}  // namespace
}  // namespace pelta
