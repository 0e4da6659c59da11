#include <cmath>

#include <pelta/Platform/UILayout.h>
#include <pelta/Platform/UIView.h>

namespace pelta {

namespace {

bool isWithin(const std::shared_ptr<UIView>& view, const std::shared_ptr<UIView>& ancestor) {
    for (auto parent = view->superview(); parent; parent = parent->superview()) {
        if (parent == ancestor) {
            return true;
        }
    }
    return false;
}

}  // namespace

NSLayoutConstraint::NSLayoutConstraint(NSLayoutAnchor first, std::vector<NSLayoutAnchor> second,
                                       CGFloat constant)
    : first_(std::move(first)),
      second_(std::move(second)),
      constant_(std::isfinite(constant) ? constant : 0) {}

std::shared_ptr<NSLayoutConstraint> NSLayoutConstraint::equal(NSLayoutAnchor first, NSLayoutAnchor second,
                                                              CGFloat constant) {
    return std::make_shared<NSLayoutConstraint>(std::move(first), std::vector{std::move(second)}, constant);
}

std::shared_ptr<NSLayoutConstraint> NSLayoutConstraint::equalToConstant(NSLayoutAnchor first,
                                                                        CGFloat constant) {
    return std::make_shared<NSLayoutConstraint>(std::move(first), std::vector<NSLayoutAnchor>{}, constant);
}

void NSLayoutConstraint::activate(const std::vector<std::shared_ptr<NSLayoutConstraint>>& constraints) {
    for (const auto& constraint : constraints) {
        constraint->setIsActive(true);
    }
}

void NSLayoutConstraint::deactivate(const std::vector<std::shared_ptr<NSLayoutConstraint>>& constraints) {
    for (const auto& constraint : constraints) {
        constraint->setIsActive(false);
    }
}

void NSLayoutConstraint::setConstant(CGFloat constant) {
    if (!std::isfinite(constant) || constant == constant_) {
        return;
    }
    constant_ = constant;
    if (const auto view = placedView_.lock()) {
        view->constraintsDidChange();
    }
}

void NSLayoutConstraint::setIsActive(bool active) {
    if (active == isActive_) {
        return;
    }
    const auto self = shared_from_this();  // The view may hold the last reference.
    isActive_ = active;
    if (active) {
        placedView_ = viewToPlace();
        if (const auto view = placedView_.lock()) {
            view->constraintDidActivate(self);
        }
    } else if (const auto view = placedView_.lock()) {
        placedView_.reset();
        view->constraintDidDeactivate(*this);
    }
}

std::shared_ptr<UIView> NSLayoutConstraint::viewToPlace() const {
    auto first = first_.view();
    auto second = second_.empty() ? nullptr : second_.front().view();
    const bool placesSecond = second && first && (first_.isSafeArea() || isWithin(second, first));
    return placesSecond ? second : first;
}

}  // namespace pelta
