#include "Engine/CameraController.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include <pelta/Platform/Dispatch.h>
#include <pelta/Platform/PlatformPort.h>

namespace pelta {

void CameraController::open(MapRenderer& renderer) {
    renderer_ = &renderer;
    limitsDidChange();
    renderer.setCamera(state_);
}

void CameraController::close() {
    renderer_ = nullptr;
    ++latestCommand_;
    if (transition_ && transition_->completion) {
        MainQueue::async(std::move(transition_->completion));
    }
    transition_.reset();
}

CameraState CameraController::completed(CameraState wanted) const noexcept {
    if (!std::isfinite(wanted.center.latitude) || !std::isfinite(wanted.center.longitude)) {
        wanted.center = state_.center;
    }
    for (const auto component : {&CameraState::zoom, &CameraState::pitch, &CameraState::bearing}) {
        if (!std::isfinite(wanted.*component)) {
            wanted.*component = state_.*component;
        }
    }
    return wanted;
}

CameraState CameraController::constrain(const CameraState& wanted) const noexcept {
    return limits_.constrain(completed(wanted), viewSize_);
}

void CameraController::setViewSize(CGSize size) {
    viewSize_ = size;
    needsLimitCheck_ = true;
    requestFrame_();
}

void CameraController::limitsDidChange() {
    if (renderer_ == nullptr) {
        return;
    }
    renderer_->setLimits(std::min(limits_.minimumZoom(), limits_.maximumZoom()), limits_.maximumZoom(),
                         std::min(limits_.minimumPitch(), limits_.maximumPitch()), limits_.maximumPitch());
    keepWithinLimits();
}

void CameraController::keepWithinLimits() {
    if (renderer_ == nullptr || constrain(state_) == state_) {
        return;
    }
    if (transition_) {
        apply(state_);
        return;
    }
    reportWillChange(Reason::programmatic, false);
    apply(state_);
    reportIsChanging(Reason::programmatic);
    reportDidChange(Reason::programmatic, false);
}

void CameraController::jumpTo(const CameraState& wanted, Reason reason, const Completion& completion) {
    const auto command = ++latestCommand_;
    endTransition();
    if (command == latestCommand_ && renderer_ != nullptr && constrain(wanted) != state_) {
        reportWillChange(reason, false);
        if (command == latestCommand_) {
            apply(wanted);
        }
        reportIsChanging(reason);
        reportDidChange(reason, false);
    }
    if (completion) {
        completion();
    }
}

void CameraController::apply(const CameraState& wanted) {
    const auto present = std::exchange(state_, constrain(wanted));
    if (transition_ && state_ != present) {
        transition_->isReported = false;
    }
    if (renderer_ != nullptr) {
        renderer_->setCamera(state_);
        requestFrame_();
    }
}

void CameraController::easeTo(const CameraState& wanted, double duration, const CAMediaTimingFunction& timing,
                              Reason reason, Completion completion) {
    if (!(duration > 0) || !std::isfinite(duration)) {
        jumpTo(wanted, reason, completion);
        return;
    }
    const auto target = constrain(wanted);
    begin({makeEasePath(state_, target), target, timing, 0, duration, reason, std::move(completion)});
}

void CameraController::flyTo(const CameraState& wanted, double duration, Reason reason,
                             Completion completion) {
    const auto target = constrain(wanted);
    auto flight = makeFlight(state_, target, viewSize_);
    const double seconds = duration < 0 ? flight.duration : duration;
    if (!(seconds > 0) || !std::isfinite(seconds)) {
        jumpTo(wanted, reason, completion);
        return;
    }
    begin({std::move(flight.path), target, CAMediaTimingFunction::standard(), 0, seconds, reason,
           std::move(completion)});
}

void CameraController::begin(Transition transition) {
    const auto command = ++latestCommand_;
    endTransition();
    if (command != latestCommand_ || renderer_ == nullptr) {
        if (transition.completion) {
            transition.completion();
        }
        return;
    }
    const auto reason = transition.reason;
    transition_ = std::move(transition);
    transition_->startTime = PlatformPort::current().now();
    requestFrame_();
    reportWillChange(reason, true);
}

void CameraController::endTransition() {
    if (!transition_) {
        return;
    }
    const auto ended = std::move(*transition_);
    transition_.reset();
    if (!ended.isReported) {
        reportIsChanging(ended.reason);
    }
    reportDidChange(ended.reason, true);
    if (ended.completion) {
        ended.completion();
    }
}

void CameraController::advanceTo(double now) {
    if (std::exchange(needsLimitCheck_, false)) {
        keepWithinLimits();
    }
    if (!transition_) {
        return;
    }
    const double time = (now - transition_->startTime) / transition_->duration;
    const bool isOver = time >= 1;
    apply(isOver ? transition_->target
                 : transition_->path(transition_->timing.progressAt(std::max(time, 0.0))));
    transition_->isReported = true;
    const auto command = latestCommand_;
    reportIsChanging(transition_->reason);
    if (isOver && command == latestCommand_) {
        endTransition();
    }
}

void CameraController::gestureWillBegin(Reason reason, bool animated) {
    ++latestCommand_;
    endTransition();
    hasGestureReported_ = false;
    reportWillChange(reason, animated);
}

void CameraController::gestureDidMove(Reason reason) {
    if (renderer_ != nullptr) {
        ++latestCommand_;
        endTransition();
    }
    if (renderer_ != nullptr) {
        state_ = renderer_->camera();
        hasGestureReported_ = true;
        reportIsChanging(reason);
    }
}

void CameraController::gestureDidEnd(Reason reason, bool animated) {
    if (!hasGestureReported_) {
        gestureDidMove(reason);
    }
    reportDidChange(reason, animated);
}

void CameraController::reportWillChange(Reason reason, bool animated) const {
    events_.tell([&](auto& delegate, auto& view) { delegate.regionWillChange(view, reason, animated); });
}

void CameraController::reportIsChanging(Reason reason) const {
    events_.tell([&](auto& delegate, auto& view) { delegate.regionIsChanging(view, reason); });
}

void CameraController::reportDidChange(Reason reason, bool animated) const {
    events_.tell([&](auto& delegate, auto& view) { delegate.regionDidChange(view, reason, animated); });
}

}  // namespace pelta
