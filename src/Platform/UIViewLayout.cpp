#include <algorithm>
#include <cmath>

#include <pelta/Platform/UIView.h>

#include "Platform/Appearance.h"
#include "Platform/LayoutSolver.h"

namespace pelta {

namespace {

/// Layouts may call for further layouts; trees that never come to rest are left after this many rounds.
constexpr int maximumRounds = 8;

CGFloat insetOrZero(CGFloat value) noexcept {
    return std::isfinite(value) ? std::max(value, 0.0) : 0;
}

UIEdgeInsets usable(UIEdgeInsets insets) noexcept {
    return {insetOrZero(insets.top), insetOrZero(insets.left), insetOrZero(insets.bottom),
            insetOrZero(insets.right)};
}

UIEdgeInsets larger(UIEdgeInsets one, UIEdgeInsets other) noexcept {
    return {std::max(one.top, other.top), std::max(one.left, other.left), std::max(one.bottom, other.bottom),
            std::max(one.right, other.right)};
}

/// What of a superview's margins reaches into a subview.
UIEdgeInsets inheritedInsets(const UIView& superview, CGRect frame) noexcept {
    const UIEdgeInsets insets = superview.safeAreaInsets();
    const CGSize size = superview.bounds().size;
    return {insets.top - frame.minY(), insets.left - frame.minX(),
            insets.bottom - (size.height - frame.maxY()), insets.right - (size.width - frame.maxX())};
}

}  // namespace

// --- Safe area
// ----------------------------------------------------------------------------------------------

UILayoutGuide UIView::safeAreaLayoutGuide() const {
    return UILayoutGuide(std::const_pointer_cast<UIView>(shared_from_this()));
}

void UIView::setSafeAreaInsets(UIEdgeInsets insets) {
    ownSafeAreaInsets_ = usable(insets);
    updateSafeArea();
}

void UIView::updateSafeArea() {
    UIEdgeInsets insets = ownSafeAreaInsets_;
    const auto parent = superview();
    if (parent && parent->safeAreaInsets_ != UIEdgeInsets{}) {
        insets = larger(insets, inheritedInsets(*parent, frame_));
    }
    if (insets == safeAreaInsets_) {
        return;
    }
    safeAreaInsets_ = insets;
    const auto self = weak_from_this().lock();  // The callback may release the view.
    setNeedsLayout();
    safeAreaInsetsDidChange();
    for (const auto& subview : std::vector(subviews_)) {
        subview->updateSafeArea();
    }
}

// --- Constraints
// --------------------------------------------------------------------------------------------

NSLayoutAnchor UIView::anchor(NSLayoutAttribute attribute) const {
    return {std::const_pointer_cast<UIView>(shared_from_this()), attribute, false};
}

void UIView::setTranslatesAutoresizingMaskIntoConstraints(bool translates) {
    if (translates != usesAutoresizingMask_) {
        usesAutoresizingMask_ = translates;
        constraintsDidChange();
    }
}

void UIView::constraintDidActivate(std::shared_ptr<NSLayoutConstraint> constraint) {
    constraints_.push_back(std::move(constraint));
    constraintsDidChange();
}

void UIView::constraintDidDeactivate(const NSLayoutConstraint& constraint) {
    std::erase_if(constraints_, [&constraint](const auto& active) { return active.get() == &constraint; });
    constraintsDidChange();
}

void UIView::constraintsDidChange() {
    const auto parent = superview();
    if (parent && !usesAutoresizingMask_ && (!constraints_.empty() || parent->placesSubviews_)) {
        parent->placesSubviews_ = true;
        parent->setNeedsLayout();
    }
}

// --- Layout
// -------------------------------------------------------------------------------------------------

void UIView::setNeedsLayout() {
    needsLayout_ = true;
    for (auto parent = superview(); parent && !parent->descendantNeedsLayout_; parent = parent->superview()) {
        parent->descendantNeedsLayout_ = true;
    }
    detail::appearanceDidChange();
}

void UIView::layoutIfNeeded() {
    auto root = shared_from_this();
    while (auto parent = root->superview()) {
        root = std::move(parent);
    }
    for (int round = 0; round < maximumRounds && (root->needsLayout_ || root->descendantNeedsLayout_);
         ++round) {
        root->layoutTree();
    }
}

void UIView::layoutTree() {
    if (needsLayout_) {
        needsLayout_ = false;
        layoutSubviews();
    }
    if (descendantNeedsLayout_) {
        descendantNeedsLayout_ = false;
        for (const auto& subview : std::vector(subviews_)) {
            subview->layoutTree();
        }
    }
}

void UIView::layoutSubviews() {
    if (placesSubviews_) {
        placeSubviewsByConstraints();
    }
}

void UIView::placeSubviewsByConstraints() {
    // A view may be placed against a sibling that is itself placed later: repeat until nothing moves.
    const auto subviews = subviews_;
    bool hasMoved = true;
    for (int round = 0; round < maximumRounds && hasMoved; ++round) {
        hasMoved = false;
        for (const auto& subview : subviews) {
            if (!subview->usesAutoresizingMask_ && !subview->constraints_.empty()) {
                hasMoved = subview->applyFrame(detail::frameByConstraints(*this, *subview)) || hasMoved;
            }
        }
    }
}

}  // namespace pelta
