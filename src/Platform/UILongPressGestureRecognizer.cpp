#include <algorithm>
#include <cmath>

#include <pelta/Platform/PlatformPort.h>
#include <pelta/Platform/UIGestureRecognizer.h>

namespace pelta {

namespace {

constexpr double pressSlack = 10;  // Points a finger may move before the press is recognised.

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
    afterDelay(duration_ - elapsed, [this] { transitionTo(UIGestureRecognizerState::began); });
}

}  // namespace pelta
