#include "Engine/ContentInset.h"

#include <cmath>

#include <pelta/Platform/CALayer.h>
#include <pelta/Platform/Dispatch.h>
#include <pelta/Platform/PlatformPort.h>

namespace pelta {
namespace {

constexpr double duration = 0.3;  // seconds

bool leavesArea(const UIEdgeInsets& inset, CGSize size) {
    return std::isfinite(inset.top + inset.left + inset.bottom + inset.right) &&
           (size.width <= 0 || inset.left + inset.right < size.width) &&
           (size.height <= 0 || inset.top + inset.bottom < size.height);
}

UIEdgeInsets between(const UIEdgeInsets& a, const UIEdgeInsets& b, double progress) {
    return {std::lerp(a.top, b.top, progress), std::lerp(a.left, b.left, progress),
            std::lerp(a.bottom, b.bottom, progress), std::lerp(a.right, b.right, progress)};
}

}  // namespace

void ContentInset::close() {
    renderer_ = nullptr;
    if (transition_ && transition_->completion) {
        MainQueue::async(std::move(transition_->completion));
    }
    transition_.reset();
}

void ContentInset::set(const UIEdgeInsets& inset, CGSize viewSize, bool animated, Completion completion) {
    endTransition();
    if (renderer_ != nullptr && leavesArea(inset, viewSize)) {
        value_ = inset;
        if (animated && shown_ != inset) {
            transition_ = Transition{shown_, PlatformPort::current().now(), std::move(completion)};
            requestFrame_();
            return;
        }
        show(inset);
    }
    if (completion) {
        completion();
    }
}

void ContentInset::show(const UIEdgeInsets& inset) {
    if (shown_ != inset) {
        shown_ = inset;
        renderer_->setContentInset(inset);
        requestFrame_();
    }
}

void ContentInset::advanceTo(double now) {
    if (!transition_) {
        return;
    }
    const double time = (now - transition_->startTime) / duration;
    show(between(transition_->start, value_, CAMediaTimingFunction::easeInEaseOut().progressAt(time)));
    if (time >= 1) {
        endTransition();
    } else {
        requestFrame_();
    }
}

void ContentInset::endTransition() {
    if (transition_) {
        const auto completion = std::move(transition_->completion);
        transition_.reset();
        if (completion) {
            completion();
        }
    }
}

}  // namespace pelta
