#include "Engine/ContentInset.h"

#include <cmath>

#include <pelta/Platform/CALayer.h>
#include <pelta/Platform/Dispatch.h>
#include <pelta/Platform/PlatformPort.h>

namespace pelta {
namespace {

constexpr double duration = 0.3;  // seconds

UIEdgeInsets between(const UIEdgeInsets& a, const UIEdgeInsets& b, double progress) {
    return {std::lerp(a.top, b.top, progress), std::lerp(a.left, b.left, progress),
            std::lerp(a.bottom, b.bottom, progress), std::lerp(a.right, b.right, progress)};
}

}  // namespace

UIEdgeInsets insetLeavingArea(const UIEdgeInsets& inset, CGSize viewSize) noexcept {
    const bool leavesArea =
        inset.left + inset.right < viewSize.width && inset.top + inset.bottom < viewSize.height;
    return leavesArea ? inset : UIEdgeInsets{};
}

void ContentInset::open(MapRenderer& renderer, CGSize viewSize) {
    renderer_ = &renderer;
    viewSize_ = viewSize;
}

void ContentInset::close() {
    renderer_ = nullptr;
    if (transition_ && transition_->completion) {
        MainQueue::async(std::move(transition_->completion));
    }
    transition_.reset();
}

void ContentInset::set(const UIEdgeInsets& inset, bool animated, Completion completion) {
    endTransition();
    if (renderer_ != nullptr && std::isfinite(inset.top + inset.left + inset.bottom + inset.right)) {
        value_ = inset;
        if (animated && shown_ != effective()) {
            transition_ = Transition{shown_, PlatformPort::current().now(), std::move(completion)};
            requestFrame_();
            return;
        }
        show(effective());
    }
    if (completion) {
        completion();
    }
}

void ContentInset::setViewSize(CGSize viewSize) {
    viewSize_ = viewSize;
    if (transition_) {
        // What lies between two insets that leave an area does so too.
        transition_->start = insetLeavingArea(transition_->start, viewSize);
        show(insetLeavingArea(shown_, viewSize));
    } else {
        show(effective());
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
    show(between(transition_->start, effective(), CAMediaTimingFunction::easeInEaseOut().progressAt(time)));
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
