#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <pelta/Platform/Make.h>
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
    window_->addSubview(outer);
    window_->addSubview(inner);
    outer->addSubview(inner);    // Leaves the window.
    inner->addSubview(window_);  // Would make a ring.
    EXPECT_THAT(window_->subviews(), ElementsAre(outer));
    EXPECT_THAT(inner->subviews(), ElementsAre());
    EXPECT_EQ(inner->convertPointToWindow({3, 4}), (CGPoint{14, 26}));
    outer->removeFromSuperview();
    EXPECT_EQ(inner->window(), nullptr);
}

TEST_F(ViewTest, HitTestingFindsTheFrontmostViewThatTakesTouches) {
    const auto back = viewAt({{10, 10}, {100, 80}});
    const auto child = viewAt({{10, 10}, {200, 20}});  // Reaches out of its superview.
    const auto front = viewAt({{50, 10}, {100, 80}});
    window_->addSubview(back);
    back->addSubview(child);
    window_->addSubview(front);
    const auto hit = [this](double x, double y) { return window_->hitTest({x, y}); };
    EXPECT_EQ(hit(15, 15), back);
    EXPECT_EQ(hit(20, 20), child);
    EXPECT_EQ(hit(60, 25), front);
    EXPECT_EQ(hit(200, 50), nullptr);  // The right edge is outside.
    front->setIsUserInteractionEnabled(false);
    EXPECT_EQ(hit(60, 25), child);
    child->setAlpha(0);
    EXPECT_EQ(hit(60, 25), back);
    back->setIsHidden(true);
    EXPECT_EQ(hit(60, 25), window_);
}

}  // namespace
}  // namespace pelta
