#include <algorithm>
#include <utility>

#include <pelta/Platform/Dispatch.h>
#include <pelta/Platform/PlatformPort.h>
#include <pelta/Platform/UIGestureRecognizer.h>
#include <pelta/Platform/UIView.h>

namespace pelta {

namespace {

/// Touches kept for the next gesture; more than a person makes while one gesture is being decided.
constexpr std::size_t maximumKeptTouches = 64;

bool isOver(UITouchPhase phase) noexcept {
    return phase == UITouchPhase::ended || phase == UITouchPhase::cancelled;
}

}  // namespace

UIGestureRecognizer::~UIGestureRecognizer() {
    // Whoever waits for this recogniser need not any longer: their references to it have expired.
    tellDependents();
}

void UIGestureRecognizer::setIsEnabled(bool enabled) {
    if (enabled != isEnabled_) {
        isEnabled_ = enabled;
        abandon();
    }
}

void UIGestureRecognizer::attachToView(std::weak_ptr<UIView> view) {
    const auto self = weak_from_this().lock();
    abandon();
    view_ = std::move(view);
}

void UIGestureRecognizer::requireGestureRecognizerToFail(const std::shared_ptr<UIGestureRecognizer>& other) {
    if (!other || other.get() == this || waitsFor(*other) || other->waitsFor(*this)) {
        return;
    }
    requiredFailures_.push_back(other);
    other->dependents_.push_back(weak_from_this());
}

bool UIGestureRecognizer::waitsFor(const UIGestureRecognizer& other) const {
    return std::any_of(requiredFailures_.begin(), requiredFailures_.end(), [&other](const auto& weak) {
        const auto required = weak.lock();
        return required && (required.get() == &other || required->waitsFor(other));
    });
}

CGPoint UIGestureRecognizer::locationInView(const UIView* view) const {
    const CGPoint origin = view == nullptr ? CGPoint{} : view->convertPointToWindow({});
    return {location_.x - origin.x, location_.y - origin.y};
}

// --- Touches
// ------------------------------------------------------------------------------------------------

bool UIGestureRecognizer::handleTouch(const UITouch& touch) {
    if (!isEnabled_) {
        return false;
    }
    const auto self = shared_from_this();  // Actions may release the recogniser.
    const unsigned reportsBefore = reports_;
    const bool beginsAnew = touch.phase == UITouchPhase::began && touchesDown_ == 0;
    if (beginsAnew && hasGesture_ && state_ == State::possible && pendingState_ == State::possible &&
        !continuesGesture(touch)) {
        fail();
        settle();
    }
    const bool isDecided = pendingState_ != State::possible || (state_ != State::possible && !isUnderWay());
    if (isDecided && touchesDown_ == 0) {
        keepForNextGesture(touch);
        return false;
    }
    trackTouch(touch);
    return reports_ != reportsBefore || isUnderWay();
}

void UIGestureRecognizer::keepForNextGesture(const UITouch& touch) {
    if (touch.phase == UITouchPhase::moved && !nextTouches_.empty() &&
        nextTouches_.back().phase == UITouchPhase::moved &&
        nextTouches_.back().identifier == touch.identifier) {
        nextTouches_.back() = touch;
    } else if (nextTouches_.size() < maximumKeptTouches) {
        nextTouches_.push_back(touch);
    }
}

void UIGestureRecognizer::trackTouch(const UITouch& touch) {
    if (touch.phase == UITouchPhase::began) {
        ++touchesDown_;
        hasGesture_ = true;
    } else if (touchesDown_ == 0) {
        return;  // Began before this recogniser listened.
    } else if (isOver(touch.phase)) {
        --touchesDown_;
    }
    if (pendingState_ == State::possible && (state_ == State::possible || isUnderWay())) {
        location_ = touch.location;
        touchDidChange(touch);
    }
    if (pendingState_ == State::began && touchesDown_ == 0) {
        fail();  // The gesture is over before it was allowed to begin.
    }
    settle();
}

void UIGestureRecognizer::atTime(double time, std::function<void()> work) {
    const auto waiting = [weak = weak_from_this(), generation = generation_] {
        const auto self = weak.lock();
        return self && self->generation_ == generation ? self : nullptr;
    };
    MainQueue::asyncAfter(time - PlatformPort::current().now(), [waiting, time, work = std::move(work)] {
        if (!waiting()) {
            return;
        }
        PlatformPort::current().afterTouchesMadeBy(time, [waiting, work] {
            if (const auto self = waiting()) {
                work();
                self->settle();
            }
        });
    });
}

// --- States
// -------------------------------------------------------------------------------------------------

bool UIGestureRecognizer::isUnderWay() const noexcept {
    return state_ == State::began || state_ == State::changed;
}

/// True while the outcome of a gesture is open, which keeps required recognisers in their final state.
bool UIGestureRecognizer::isActive() const noexcept {
    return pendingState_ != State::possible || touchesDown_ > 0;
}

void UIGestureRecognizer::transitionTo(State state) {
    if (pendingState_ != State::possible || (state_ != State::possible && !isUnderWay())) {
        return;
    }
    switch (state) {
        case State::possible:
            break;
        case State::failed:
            fail();
            break;
        case State::began:
            if (state_ == State::possible) {
                recognize(state);
            }
            break;
        case State::ended:
            if (state_ == State::possible) {
                recognize(state);
            } else {
                report(state);
            }
            break;
        case State::changed:
        case State::cancelled:
            if (isUnderWay()) {
                report(state);
            } else {
                fail();
            }
            break;
    }
}

/// Reports a success now, later, or never, as the required recognisers have it.
void UIGestureRecognizer::recognize(State state) {
    if (shouldBegin_ && !shouldBegin_(*this)) {
        fail();
        return;
    }
    bool mustWait = false;
    for (const auto& weak : requiredFailures_) {
        const auto required = weak.lock();
        if (!required || !required->isEnabled_ || !required->hasGesture_) {
            continue;
        }
        if (required->state_ == State::possible) {
            mustWait = true;
        } else if (required->state_ != State::failed) {
            nextTouches_.clear();  // They were the other gesture's.
            fail();
            return;
        }
    }
    if (mustWait) {
        pendingState_ = state;
    } else {
        report(state);
    }
}

void UIGestureRecognizer::report(State state) {
    const bool isDecision = state_ == State::possible;
    state_ = state;
    pendingState_ = State::possible;
    ++reports_;
    const bool wasReporting = std::exchange(isReporting_, true);
    if (isDecision) {
        tellDependents();
    }
    if (action_) {
        const auto action = action_;
        action(*this);
    }
    isReporting_ = wasReporting;
}

void UIGestureRecognizer::fail() {
    state_ = State::failed;
    pendingState_ = State::possible;
    tellDependents();
}

/// Ends a gesture under way from outside.
void UIGestureRecognizer::abandon() {
    const auto self = weak_from_this().lock();
    touchesDown_ = 0;
    nextTouches_.clear();
    if (isUnderWay()) {
        report(State::cancelled);
    } else if (hasGesture_ && state_ == State::possible) {
        fail();
    }
    settle();
}

void UIGestureRecognizer::settle() {
    const bool isFinal = state_ != State::possible && !isUnderWay();
    if (!isFinal || touchesDown_ > 0 || isReporting_) {
        return;
    }
    for (const auto& weak : dependents_) {
        const auto dependent = weak.lock();
        if (dependent && dependent->isActive()) {
            return;
        }
    }
    returnToPossible();
}

void UIGestureRecognizer::returnToPossible() {
    state_ = State::possible;
    hasGesture_ = false;
    cancelTimers();
    reset();
    for (const auto& weak : std::vector(requiredFailures_)) {
        if (const auto required = weak.lock()) {
            required->settle();
        }
    }
    for (const UITouch& touch : std::exchange(nextTouches_, {})) {
        handleTouch(touch);
    }
}

void UIGestureRecognizer::tellDependents() {
    for (const auto& weak : std::vector(dependents_)) {
        if (const auto dependent = weak.lock()) {
            dependent->requiredRecognizerDidSettle();
        }
    }
}

void UIGestureRecognizer::requiredRecognizerDidSettle() {
    if (pendingState_ != State::possible) {
        recognize(std::exchange(pendingState_, State::possible));
        settle();
    }
}

}  // namespace pelta
