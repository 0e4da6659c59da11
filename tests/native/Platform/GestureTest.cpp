#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include <pelta/Platform/Make.h>
#include <pelta/Platform/UIWindow.h>
#include <pelta/headless/HeadlessPort.h>

namespace pelta {
namespace {

using ::testing::ElementsAre;
using ::testing::ElementsAreArray;

/// One step of a finger: what it does, where, and how long the clock runs afterwards.
struct Step {
    UITouchPhase phase;
    CGPoint location;
    double pause;
    int identifier = 0;
};

Step down(double pause, CGPoint at = {50, 50}, int identifier = 0) {
    return {UITouchPhase::began, at, pause, identifier};
}
Step move(double pause, CGPoint to) {
    return {UITouchPhase::moved, to, pause};
}
Step up(double pause, CGPoint at = {50, 50}, int identifier = 0) {
    return {UITouchPhase::ended, at, pause, identifier};
}
Step cancel(double pause) {
    return {UITouchPhase::cancelled, {50, 50}, pause};
}

/// A view with a single tap that waits for the double tap, and with a long press. They are added in one order
/// or in the other, which must make no difference.
class GestureTest : public ::testing::TestWithParam<bool> {
 protected:
    GestureTest() {
        single_ = tap("single");
        twice_ = tap("double");
        twice_->setNumberOfTapsRequired(2);
        press_ = std::make_shared<UILongPressGestureRecognizer>([this](UIGestureRecognizer& recognizer) {
            constexpr const char* names[] = {"possible", "began", "changed", "ended", "cancelled"};
            events_.push_back(std::string("press ") + names[static_cast<unsigned>(recognizer.state())]);
        });
        single_->requireGestureRecognizerToFail(twice_);
        single_->requireGestureRecognizerToFail(press_);
        std::vector<std::shared_ptr<UIGestureRecognizer>> order{single_, twice_, press_};
        if (GetParam()) {
            std::reverse(order.begin(), order.end());
        }
        for (const auto& recognizer : order) {
            view_->addGestureRecognizer(recognizer);
        }
        window_->addSubview(view_);
    }

    std::shared_ptr<UITapGestureRecognizer> tap(const std::string& name) {
        return std::make_shared<UITapGestureRecognizer>(
            [this, name](UIGestureRecognizer&) { events_.push_back(name); });
    }

    void perform(const std::vector<Step>& steps) {
        for (const Step& step : steps) {
            port_.touch(*window_, step.identifier, step.phase, step.location);
            port_.advance(step.pause);
        }
    }

    HeadlessPort port_;
    std::shared_ptr<UIWindow> window_ = port_.makeWindow({400, 400});
    std::shared_ptr<UIView> view_ = make<UIView>(CGRect{{0, 0}, {400, 400}});
    std::shared_ptr<UITapGestureRecognizer> single_;
    std::shared_ptr<UITapGestureRecognizer> twice_;
    std::shared_ptr<UILongPressGestureRecognizer> press_;
    std::vector<std::string> events_;
};

TEST_P(GestureTest, TellsTapsDoubleTapsAndPressesApart) {
    const CGPoint far{200, 200};
    struct Case {
        const char* name;
        std::vector<Step> steps;
        std::vector<std::string> events;
    };
    const Case cases[] = {
        {"tap", {down(0.05), up(1)}, {"single"}},
        {"tap with a trembling finger", {down(0.05), move(0.05, {56, 56}), up(1)}, {"single"}},
        {"double tap", {down(0.05), up(0.1), down(0.05), up(1)}, {"double"}},
        {"two slow taps", {down(0.05), up(0.4), down(0.05), up(1)}, {"single", "single"}},
        {"two taps far apart", {down(0.05), up(0.1), down(0.05, far), up(1, far)}, {"single", "single"}},
        {"three taps", {down(0.05), up(0.1), down(0.05), up(0.1), down(0.05), up(1)}, {"double", "single"}},
        {"drag", {down(0.05), move(0.05, {70, 50}), up(1, {70, 50})}, {}},
        {"drag and back", {down(0.05), move(0.05, {70, 50}), move(0.05, {50, 50}), up(1)}, {}},
        {"too long for a tap, too short for a press", {down(0.4), up(1)}, {}},
        {"press", {down(0.6), up(1)}, {"press began", "press ended"}},
        {"press and drag",
         {down(0.6), move(0.1, far), up(1, far)},
         {"press began", "press changed", "press ended"}},
        {"press that moves too early", {down(0.3), move(1, {62, 50}), up(1, {62, 50})}, {}},
        {"tap, then press", {down(0.05), up(0.1), down(1), up(1)}, {"single", "press began", "press ended"}},
        {"cancelled tap", {down(0.05), cancel(1)}, {}},
        {"cancelled press", {down(0.6), cancel(1)}, {"press began", "press cancelled"}},
        {"two fingers", {down(0.05), down(0.1, far, 1), up(0.05), up(1, far, 1)}, {}},
        {"second finger on a press",
         {down(0.6), down(0.1, far, 1), up(0.1), up(1, far, 1)},
         {"press began", "press cancelled"}},
    };
    for (const Case& c : cases) {
        for (int round = 1; round <= 2; ++round) {  // The first must leave nothing behind.
            events_.clear();
            perform(c.steps);
            EXPECT_THAT(events_, ElementsAreArray(c.events)) << c.name << ", round " << round;
            for (const UIGestureRecognizer* recognizer : {static_cast<UIGestureRecognizer*>(single_.get()),
                                                          static_cast<UIGestureRecognizer*>(twice_.get()),
                                                          static_cast<UIGestureRecognizer*>(press_.get())}) {
                EXPECT_EQ(recognizer->state(), UIGestureRecognizerState::possible) << c.name;
            }
        }
    }
}

TEST_P(GestureTest, ASingleTapIsReportedWhenTheSecondFailsToCome) {
    perform({down(0.05), up(0.28)});
    EXPECT_THAT(events_, ElementsAre());
    port_.advance(0.05);
    EXPECT_THAT(events_, ElementsAre("single"));
    EXPECT_EQ(single_->locationInView(nullptr), (CGPoint{50, 50}));
    view_->setFrame({{10, 20}, {100, 100}});
    EXPECT_EQ(single_->locationInView(view_.get()), (CGPoint{40, 30}));
}

TEST_P(GestureTest, RecognizersThatCannotSucceedAreNotWaitedFor) {
    struct Case {
        const char* name;
        std::function<void()> withdraw;
    };
    const Case cases[] = {
        {"disabled", [this] { twice_->setIsEnabled(false); }},
        {"taken from its view", [this] { view_->removeGestureRecognizer(twice_); }},
        {"released",
         [this] {
             view_->removeGestureRecognizer(twice_);
             twice_.reset();
         }},
    };
    for (const Case& c : cases) {
        events_.clear();
        perform({down(0.05), up(0.05)});
        EXPECT_THAT(events_, ElementsAre()) << c.name;
        c.withdraw();
        EXPECT_THAT(events_, ElementsAre("single")) << c.name;
        events_.clear();
        perform({down(0.05), up(0)});
        EXPECT_THAT(events_, ElementsAre("single")) << c.name;
        port_.advance(1);
        if (twice_) {
            twice_->setIsEnabled(true);
            view_->addGestureRecognizer(twice_);
        }
    }
}

TEST_P(GestureTest, SwitchingOffCancelsAPressUnderWay) {
    perform({down(0.6)});
    press_->setIsEnabled(false);
    perform({move(0.1, {60, 60}), up(1)});
    EXPECT_THAT(events_, ElementsAre("press began", "press cancelled"));
    press_->setIsEnabled(true);
    perform({down(0.6), up(1)});
    EXPECT_THAT(events_, ElementsAre("press began", "press cancelled", "press began", "press ended"));
}

TEST_P(GestureTest, RequirementsInARingAreRefused) {
    twice_->requireGestureRecognizerToFail(single_);
    single_->requireGestureRecognizerToFail(single_);
    perform({down(0.05), up(1)});
    EXPECT_THAT(events_, ElementsAre("single"));
}

TEST_P(GestureTest, ThePressDurationCanBeChosen) {
    press_->setMinimumPressDuration(-1);
    EXPECT_EQ(press_->minimumPressDuration(), 0);
    press_->setMinimumPressDuration(0.1);
    twice_->setNumberOfTapsRequired(0);
    EXPECT_EQ(twice_->numberOfTapsRequired(), 1);
    perform({down(0.09)});
    EXPECT_THAT(events_, ElementsAre());
    perform({move(0.02, {51, 50})});
    EXPECT_THAT(events_, ElementsAre("press began"));
}

INSTANTIATE_TEST_SUITE_P(OrderOfAdding, GestureTest, ::testing::Values(false, true));

}  // namespace
}  // namespace pelta
