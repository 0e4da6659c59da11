#include "Engine/CameraController.h"

#include <algorithm>
#include <cmath>

#include <pelta/Platform/Dispatch.h>
#include <pelta/Platform/PlatformPort.h>

namespace pelta {
namespace {

/// Differences below this (degrees, zoom levels) come from converting between altitude and zoom.
constexpr double sameWithin = 1e-10;

bool isSame(const CameraState& a, const CameraState& b) {
    return std::abs(a.center.latitude - b.center.latitude) < sameWithin &&
           std::abs(a.center.longitude - b.center.longitude) < sameWithin &&
           std::abs(a.zoom - b.zoom) < sameWithin && std::abs(a.pitch - b.pitch) < sameWithin &&
           std::abs(std::remainder(a.bearing - b.bearing, 360.0)) < sameWithin;
}

}  // namespace

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

CameraState CameraController::constrain(const CameraState& wanted) const noexcept {
    return limits_.constrain(wanted, viewSize_);
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
    if (transition_) {
        apply(state_);  // The transition goes on within the limits and reports at the next frame.
    } else {
        moveAtOnce(state_, Reason::programmatic);
    }
}

void CameraController::jumpTo(const CameraState& wanted, Reason reason, const Completion& completion) {
    const auto command = ++latestCommand_;
    endTransition();
    if (command == latestCommand_) {
        moveAtOnce(wanted, reason);
    }
    if (completion) {
        completion();
    }
}

void CameraController::moveAtOnce(const CameraState& wanted, Reason reason) {
    const auto target = constrain(wanted);
    if (renderer_ == nullptr || isSame(target, state_)) {
        return;
    }
    const auto command = ++latestCommand_;
    reportWillChange(reason, false);
    if (command == latestCommand_) {
        apply(target);
    }
    reportIsChanging(reason);
    reportDidChange(reason, false);
}

void CameraController::apply(const CameraState& wanted) {
    state_ = constrain(wanted);
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
    if (!ended.hasReported) {
        reportIsChanging(ended.reason);
    }
    reportDidChange(ended.reason, true);
    if (ended.completion) {
        ended.completion();
    }
}

void CameraController::advanceTo(double now) {
    if (std::exchange(needsLimitCheck_, false) && !transition_) {
        moveAtOnce(state_, Reason::programmatic);
    }
    if (!transition_) {
        return;
    }
    const double time = (now - transition_->startTime) / transition_->duration;
    const bool isOver = time >= 1;
    apply(isOver ? transition_->target
                 : transition_->path(transition_->timing.progressAt(std::max(time, 0.0))));
    transition_->hasReported = true;
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
