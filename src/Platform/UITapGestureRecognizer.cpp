#include <cmath>

#include <pelta/Platform/UIGestureRecognizer.h>

namespace pelta {

namespace {

constexpr double maximumTapTime = 0.3;   // Seconds a finger may rest.
constexpr double maximumPause = 0.3;     // Seconds between two taps.
constexpr double tapSlack = 10;          // Points a finger may move.
constexpr double betweenTapsSlack = 45;  // Points between two taps.

bool isNear(CGPoint one, CGPoint other, double distance) noexcept {
    return std::hypot(one.x - other.x, one.y - other.y) <= distance;
}

}  // namespace

bool UITapGestureRecognizer::continuesGesture(const UITouch& touch) const {
    return isNear(touch.location, start_, betweenTapsSlack) && touch.timestamp - liftTime_ <= maximumPause;
}

void UITapGestureRecognizer::touchDidChange(const UITouch& touch) {
    switch (touch.phase) {
        case UITouchPhase::began:
            if (touchesDown() > 1) {
                transitionTo(UIGestureRecognizerState::failed);
                break;
            }
            start_ = touch.location;
            startTime_ = touch.timestamp;
            cancelDelays();
            afterDelay(maximumTapTime + 0.001, [this] { transitionTo(UIGestureRecognizerState::failed); });
            break;
        case UITouchPhase::moved:
            if (!isNear(touch.location, start_, tapSlack)) {
                transitionTo(UIGestureRecognizerState::failed);
            }
            break;
        case UITouchPhase::ended:
            fingerDidLift(touch);
            break;
        case UITouchPhase::cancelled:
            transitionTo(UIGestureRecognizerState::failed);
            break;
    }
}

void UITapGestureRecognizer::fingerDidLift(const UITouch& touch) {
    const bool isTap =
        isNear(touch.location, start_, tapSlack) && touch.timestamp - startTime_ <= maximumTapTime;
    if (!isTap) {
        transitionTo(UIGestureRecognizerState::failed);
        return;
    }
    liftTime_ = touch.timestamp;
    cancelDelays();
    if (++tapsSeen_ >= tapsRequired_) {
        transitionTo(UIGestureRecognizerState::ended);
    } else {
        afterDelay(maximumPause + 0.001, [this] { transitionTo(UIGestureRecognizerState::failed); });
    }
}

}  // namespace pelta
