#pragma once

#include <memory>
#include <string>
#include <vector>

#include <pelta/Platform/CoreGraphics.h>

namespace pelta {

class UIView;

/// The part of a view's rectangle that a constraint speaks of.
enum class NSLayoutAttribute : unsigned { left, right, top, bottom, width, height, centerX, centerY };

/// One edge, centre line or extent of a view, or of the safe area of a view (its bounds less its
/// `safeAreaInsets`). Refers to its view weakly.
class NSLayoutAnchor {
 public:
    /// For `UIView` and `UILayoutGuide`.
    NSLayoutAnchor(std::weak_ptr<UIView> view, NSLayoutAttribute attribute, bool isSafeArea)
        : view_(std::move(view)), attribute_(attribute), isSafeArea_(isSafeArea) {}

    /// The view whose edge or extent this is; null once it is gone.
    [[nodiscard]] std::shared_ptr<UIView> view() const { return view_.lock(); }
    /// Which edge, centre or extent.
    [[nodiscard]] NSLayoutAttribute attribute() const noexcept { return attribute_; }
    /// True: of the view's safe area in place of the whole view.
    [[nodiscard]] bool isSafeArea() const noexcept { return isSafeArea_; }

 private:
    std::weak_ptr<UIView> view_;
    NSLayoutAttribute attribute_;
    bool isSafeArea_;
};

/// States that one anchor equals another plus a constant in points, or a constant alone.
///
/// Only active constraints count. Layout places a view whose `translatesAutoresizingMaskIntoConstraints` is
/// off within its superview: two conditions an axis settle it; of conditions that contradict each other the
/// earlier activated one holds, and an axis with too few keeps the frame's value. Main thread only.
class NSLayoutConstraint : public std::enable_shared_from_this<NSLayoutConstraint> {
 public:
    /// `first` = `second` + `constant`. The view of `first` is the one that is placed; where `first` speaks
    /// of a safe area or of a superview of the other view, it is the view of `second`.
    [[nodiscard]] static std::shared_ptr<NSLayoutConstraint> equal(NSLayoutAnchor first,
                                                                   NSLayoutAnchor second,
                                                                   CGFloat constant = 0);
    /// `first` = `constant`, for widths and heights.
    [[nodiscard]] static std::shared_ptr<NSLayoutConstraint> equalToConstant(NSLayoutAnchor first,
                                                                             CGFloat constant);

    /// Switches constraints on, in the given order, and asks for layout.
    static void activate(const std::vector<std::shared_ptr<NSLayoutConstraint>>& constraints);
    /// Switches constraints off and asks for layout.
    static void deactivate(const std::vector<std::shared_ptr<NSLayoutConstraint>>& constraints);

    /// Free name for finding a constraint again; empty at first.
    [[nodiscard]] const std::string& identifier() const noexcept { return identifier_; }
    void setIdentifier(std::string identifier) { identifier_ = std::move(identifier); }

    /// Points added to what the constraint asks for.
    [[nodiscard]] CGFloat constant() const noexcept { return constant_; }
    /// Changes the constant and asks for layout. Non-finite values are ignored.
    void setConstant(CGFloat constant);

    /// True while the layout obeys the constraint.
    [[nodiscard]] bool isActive() const noexcept { return isActive_; }
    void setIsActive(bool active);

    /// The anchor that the constraint places.
    [[nodiscard]] const NSLayoutAnchor& firstAnchor() const noexcept { return first_; }
    /// Null for a constraint against a constant alone.
    [[nodiscard]] const NSLayoutAnchor* secondAnchor() const noexcept {
        return second_.empty() ? nullptr : &second_.front();
    }

    /// For `NSLayoutAnchor`.
    NSLayoutConstraint(NSLayoutAnchor first, std::vector<NSLayoutAnchor> second, CGFloat constant);

 private:
    [[nodiscard]] std::shared_ptr<UIView> viewToPlace() const;

    NSLayoutAnchor first_;
    std::vector<NSLayoutAnchor> second_;
    CGFloat constant_;
    std::string identifier_;
    std::weak_ptr<UIView> placedView_;  ///< Known while active.
    bool isActive_ = false;
};

/// The area of a view that no bar or notch of the device covers, as something to place other views against.
class UILayoutGuide {
 public:
    /// For `UIView`.
    explicit UILayoutGuide(std::weak_ptr<UIView> owner) : owner_(std::move(owner)) {}

    /// An edge, centre or extent of the guide.
    [[nodiscard]] NSLayoutAnchor anchor(NSLayoutAttribute attribute) const {
        return {owner_, attribute, true};
    }

 private:
    std::weak_ptr<UIView> owner_;
};

}  // namespace pelta
