#include <algorithm>
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

void UITapGestureRecognizer::reset() {
    tapsSeen_ = 0;
    fingers_.clear();
}

bool UITapGestureRecognizer::continuesGesture(const UITouch& touch) const {
    return isNear(touch.location, start(), betweenTapsSlack) && touch.timestamp - liftTime_ <= maximumPause;
}

void UITapGestureRecognizer::touchDidChange(const UITouch& touch) {
    switch (touch.phase) {
        case UITouchPhase::began:
            fingerDidPress(touch);
            break;
        case UITouchPhase::moved:
            if (!hasStayed(touch)) {
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

void UITapGestureRecognizer::fingerDidPress(const UITouch& touch) {
    if (touchesDown() == 1) {
        fingers_.clear();
        startTime_ = touch.timestamp;
        cancelTimers();
        atTime(startTime_ + maximumTapTime + 0.001,
               [this] { transitionTo(UIGestureRecognizerState::failed); });
    }
    fingers_.push_back({touch.identifier, touch.location});
    if (fingers_.size() > static_cast<std::size_t>(fingersRequired_)) {
        transitionTo(UIGestureRecognizerState::failed);
    }
}

void UITapGestureRecognizer::fingerDidLift(const UITouch& touch) {
    const bool isTap = hasStayed(touch) && touch.timestamp - startTime_ <= maximumTapTime &&
                       fingers_.size() == static_cast<std::size_t>(fingersRequired_);
    if (!isTap) {
        transitionTo(UIGestureRecognizerState::failed);
        return;
    }
    if (touchesDown() > 0) {
        return;
    }
    liftTime_ = touch.timestamp;
    cancelTimers();
    if (fingersRequired_ > 1) {
        location_ = start();
    }
    if (++tapsSeen_ >= tapsRequired_) {
        transitionTo(UIGestureRecognizerState::ended);
    } else {
        atTime(liftTime_ + maximumPause + 0.001, [this] { transitionTo(UIGestureRecognizerState::failed); });
    }
}

bool UITapGestureRecognizer::hasStayed(const UITouch& touch) const {
    const auto finger = std::find_if(fingers_.begin(), fingers_.end(), [&touch](const Finger& each) {
        return each.identifier == touch.identifier;
    });
    return finger != fingers_.end() && isNear(touch.location, finger->start, tapSlack);
}

/// The middle of where the fingers of the present tap, or the last one, have pressed.
CGPoint UITapGestureRecognizer::start() const {
    CGPoint sum;
    for (const Finger& finger : fingers_) {
        sum.x += finger.start.x;
        sum.y += finger.start.y;
    }
    const auto count = static_cast<double>(std::max<std::size_t>(fingers_.size(), 1));
    return {sum.x / count, sum.y / count};
}

}  // namespace pelta
