#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <vector>

#include <pelta/Platform/Dispatch.h>
#include <pelta/Platform/Make.h>
#include <pelta/Platform/UIControls.h>
#include <pelta/Platform/UIWindow.h>
#include <pelta/headless/HeadlessPort.h>

#include "HeadlessPlatform.h"

namespace pelta {
namespace {

using ::testing::ElementsAre;
using enum UITouchPhase;

struct TouchedView : UIView {
    using UIView::UIView;
    void touchDidChange(const UITouch& touch) override { phases.push_back(touch.phase); }
    ViewContent content() const override {
        return isSurface ? ViewContent(SurfaceContent{this}) : ViewContent{};
    }
    bool isSurface = false;
    std::vector<UITouchPhase> phases;
};

class TouchTest : public ::testing::Test {
 protected:
    template <class View = TouchedView>
    std::shared_ptr<View> addView(CGRect frame, const std::shared_ptr<UIView>& superview) {
        auto view = make<View>(frame);
        superview->addSubview(view);
        return view;
    }

    bool touch(UITouchPhase phase, CGPoint location, int identifier = 0) {
        return window_->deliverTouch({identifier, phase, location, port_.now()});
    }

    HeadlessPort port_;
    std::shared_ptr<UIWindow> window_ = port_.makeWindow({200, 200});
};

TEST_F(TouchTest, ATouchStaysWithTheViewWhereItBegan) {
    const auto surface = addView({{0, 0}, {200, 200}}, window_);
    surface->isSurface = true;
    const auto panel = addView({{0, 0}, {50, 50}}, surface);
    EXPECT_TRUE(touch(began, {10, 10}));
    EXPECT_FALSE(touch(began, {100, 100}, 1));  // The surface leaves it to the engine.
    EXPECT_TRUE(touch(moved, {100, 100}));
    EXPECT_FALSE(touch(ended, {10, 10}, 1));
    EXPECT_TRUE(touch(ended, {300, 300}));
    EXPECT_FALSE(touch(moved, {10, 10}));         // Over.
    EXPECT_FALSE(touch(began, {300, 10}));        // Outside.
    EXPECT_FALSE(touch(cancelled, {10, 10}, 7));  // Unknown.
    EXPECT_THAT(panel->phases, ElementsAre(began, moved, ended));
    EXPECT_THAT(surface->phases, ElementsAre(began, ended));
}

TEST_F(TouchTest, AnIdentifierUsedAgainEndsTheForgottenTouch) {
    const auto view = addView({{0, 0}, {50, 50}}, window_);
    touch(began, {10, 10});
    touch(began, {20, 20});
    EXPECT_THAT(view->phases, ElementsAre(began, cancelled, began));
}

TEST_F(TouchTest, ViewsMayGoAwayDuringATouch) {
    std::weak_ptr<UIView> released;
    auto view = addView<UIView>({{0, 0}, {50, 50}}, window_);
    released = view;
    int reports = 0;
    view->addGestureRecognizer(std::make_shared<UITapGestureRecognizer>([&](UIGestureRecognizer& recognizer) {
        ++reports;
        recognizer.view()->removeFromSuperview();
        view.reset();
    }));
    port_.tap(*window_, {10, 10});
    EXPECT_EQ(reports, 1);
    EXPECT_TRUE(released.expired());

    released = addView({{0, 0}, {50, 50}}, window_);
    touch(began, {10, 10});
    released.lock()->removeFromSuperview();
    EXPECT_TRUE(released.expired());
    EXPECT_TRUE(touch(ended, {10, 10}));  // The engine has not seen it begin either.
}

TEST_F(TouchTest, AButtonActsWhenATouchIsLiftedInside) {
    const auto panel = addView({{0, 0}, {200, 200}}, window_);
    const auto button = addView<UIButton>({{50, 50}, {20, 20}}, panel);
    int actions = 0;
    int tapsOnPanel = 0;
    panel->addGestureRecognizer(
        std::make_shared<UITapGestureRecognizer>([&](UIGestureRecognizer&) { ++tapsOnPanel; }));
    button->setTouchUpInside([&actions] { ++actions; });

    struct Case {
        CGPoint moved;
        UITouchPhase end;
        int actions;
    };
    constexpr CGPoint withinTheSlack{31, 60};
    constexpr CGPoint outside{29, 60};
    for (const Case& c :
         {Case{withinTheSlack, ended, 1}, Case{outside, ended, 0}, Case{{60, 60}, cancelled, 0}}) {
        actions = 0;
        touch(began, {55, 55});
        touch(began, {56, 56}, 1);  // A second finger changes nothing.
        touch(moved, c.moved);
        touch(ended, {56, 56}, 1);
        touch(c.end, c.moved);
        EXPECT_EQ(button->state(), UIControlState::normal);
        EXPECT_EQ(actions, c.actions) << c.moved.x;
    }
    actions = 0;
    button->setIsEnabled(false);
    port_.tap(*window_, {60, 60});
    button->sendTouchUpInside();
    EXPECT_EQ(actions, 0);
    EXPECT_EQ(tapsOnPanel, 0);
}

/// A port whose thread is busy: touches wait, and timers come before them.
class BusyPlatform final : public headless::HeadlessPlatform {
 public:
    BusyPlatform() : HeadlessPlatform(1), replaced_(&PlatformPort::current()) { PlatformPort::install(this); }
    ~BusyPlatform() override { PlatformPort::install(replaced_); }
    void afterTouchesMadeBy(double, std::function<void()> work) override {
        decisions_.push_back(std::move(work));
    }

    /// The thread gets its breath back: timers, touches, then what waits for both.
    void recoverAt(double time, UIWindow& window, const std::vector<UITouch>& touches) {
        setNow(time);
        MainQueue::runDue(time);
        for (const UITouch& touch : touches) {
            window.deliverTouch(touch);
        }
        MainQueue::runDue(time);
        for (const auto& decide : std::exchange(decisions_, {})) {
            decide();
        }
    }

 private:
    PlatformPort* replaced_;
    std::vector<std::function<void()>> decisions_;
};

TEST_F(TouchTest, OnABusyThreadGesturesAreJudgedByWhenTouchesWereMade) {
    BusyPlatform platform;
    std::string events;
    const auto surface = addView({{0, 0}, {200, 200}}, window_);
    const auto note = [&events](const char* gesture) {
        return [&events, gesture](UIGestureRecognizer& recognizer) {
            events += gesture + std::to_string(static_cast<unsigned>(recognizer.state())) + " ";
        };
    };
    surface->addGestureRecognizer(std::make_shared<UITapGestureRecognizer>(note("tap")));
    surface->addGestureRecognizer(std::make_shared<UILongPressGestureRecognizer>(note("long")));
    constexpr CGPoint place{50, 50};
    constexpr CGPoint near{55, 55};
    constexpr CGPoint away{90, 50};
    struct Case {
        const char* name;
        std::vector<UITouch> waiting;  ///< Behind a press at second 0, when the thread is free after 0.6.
        std::string events;
    };
    const Case cases[] = {
        {"held still", {}, "long1 "},
        {"trembling", {{0, moved, near, 0.3}}, "long1 "},
        {"drag", {{0, moved, away, 0.2}}, ""},
        {"drag with its end", {{0, moved, away, 0.2}, {0, ended, away, 0.55}}, ""},
        {"tap", {{0, ended, near, 0.1}}, "tap3 "},
        {"too long for a tap, too short for a press", {{0, ended, place, 0.4}}, ""},
        {"long press with its end", {{0, ended, near, 0.55}}, "long1 long3 "},
        {"second finger", {{1, began, away, 0.1}}, ""},
    };
    double start = 0;
    for (const Case& c : cases) {
        for (const bool isPressLate : {false, true}) {
            start += 10;
            std::vector<UITouch> waiting{{0, began, place, start}};
            for (UITouch touch : c.waiting) {
                touch.timestamp += start;
                waiting.push_back(touch);
            }
            platform.setNow(start);
            if (!isPressLate) {
                window_->deliverTouch(waiting.front());
                waiting.erase(waiting.begin());
            }
            platform.recoverAt(start + 0.6, *window_, waiting);
            EXPECT_EQ(std::exchange(events, {}), c.events) << c.name << (isPressLate ? ", told late" : "");
            for (const int finger : {0, 1}) {
                window_->deliverTouch({finger, cancelled, place, start + 1});
            }
            platform.recoverAt(start + 2, *window_, {});
            events.clear();
        }
    }
}

}  // namespace
}  // namespace pelta
