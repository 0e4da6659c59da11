#include <cmath>

#include <pelta/Platform/UIGestureRecognizer.h>

namespace pelta {

namespace {

constexpr double pressSlack = 10;  // Points a finger may move before the press is recognised.

}  // namespace

void UILongPressGestureRecognizer::setMinimumPressDuration(double seconds) noexcept {
    duration_ = std::isfinite(seconds) && seconds > 0 ? seconds : 0;
}

void UILongPressGestureRecognizer::touchDidChange(const UITouch& touch) {
    switch (touch.phase) {
        case UITouchPhase::began:
            fingerDidPress(touch);
            break;
        case UITouchPhase::moved:
            if (state() != UIGestureRecognizerState::possible) {
                transitionTo(UIGestureRecognizerState::changed);
            } else if (!hasStayed(touch)) {
                transitionTo(UIGestureRecognizerState::failed);
            }
            break;
        case UITouchPhase::ended:
            fingerDidLift(touch);
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
    startTime_ = touch.timestamp;
    atTime(startTime_ + duration_, [this] { transitionTo(UIGestureRecognizerState::began); });
}

void UILongPressGestureRecognizer::fingerDidLift(const UITouch& touch) {
    if (hasStayed(touch) && touch.timestamp - startTime_ >= duration_) {
        transitionTo(UIGestureRecognizerState::began);  // Told before the time that it has outlasted.
    }
    const bool hasBegun = state() != UIGestureRecognizerState::possible;
    transitionTo(hasBegun ? UIGestureRecognizerState::ended : UIGestureRecognizerState::failed);
}

bool UILongPressGestureRecognizer::hasStayed(const UITouch& touch) const {
    return std::hypot(touch.location.x - start_.x, touch.location.y - start_.y) <= pressSlack;
}

}  // namespace pelta
