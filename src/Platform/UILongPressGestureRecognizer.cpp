#include <algorithm>
#include <cmath>

#include <pelta/Platform/PlatformPort.h>
#include <pelta/Platform/UIGestureRecognizer.h>

namespace pelta {

namespace {

constexpr double pressSlack = 10;  // Points a finger may move before the press is recognised.
constexpr double lateGrace = 0.1;  // Seconds in which what came after a late touch is heard, too.

}  // namespace

void UILongPressGestureRecognizer::setMinimumPressDuration(double seconds) noexcept {
    duration_ = std::isfinite(seconds) && seconds > 0 ? seconds : 0;
}

void UILongPressGestureRecognizer::touchDidChange(const UITouch& touch) {
    const bool hasBegun = state() != UIGestureRecognizerState::possible;
    switch (touch.phase) {
        case UITouchPhase::began:
            fingerDidPress(touch);
            break;
        case UITouchPhase::moved:
            if (hasBegun) {
                transitionTo(UIGestureRecognizerState::changed);
            } else if (std::hypot(touch.location.x - start_.x, touch.location.y - start_.y) > pressSlack) {
                transitionTo(UIGestureRecognizerState::failed);
            }
            break;
        case UITouchPhase::ended:
            transitionTo(hasBegun ? UIGestureRecognizerState::ended : UIGestureRecognizerState::failed);
            break;
        case UITouchPhase::cancelled:
            transitionTo(UIGestureRecognizerState::cancelled);
            break;
    }
}

void UILongPressGestureRecognizer::fingerDidPress(const UITouch& touch) {
    if (touchesDown() > 1) {
        transitionTo(UIGestureRecognizerState::cancelled);  // A second finger makes it another gesture.
        return;
    }
    start_ = touch.location;
    const double elapsed = std::max(PlatformPort::current().now() - touch.timestamp, 0.0);
    // A touch is told late when the thread was busy; whether it has moved meanwhile is told after it.
    const double least = elapsed > 0 ? std::min(duration_, lateGrace) : 0;
    afterDelay(std::max(duration_ - elapsed, least),
               [this] { transitionTo(UIGestureRecognizerState::began); });
}

}  // namespace pelta
