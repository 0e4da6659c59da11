#include "Platform/LayoutSolver.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace pelta::detail {

namespace {

/// The conditions on one axis, at most two: more cannot add anything.
struct AxisConditions {
    std::optional<CGFloat> start;
    std::optional<CGFloat> center;
    std::optional<CGFloat> end;
    std::optional<CGFloat> extent;
    int count = 0;

    void add(std::optional<CGFloat>& condition, CGFloat value) noexcept {
        if (count < 2 && !condition && std::isfinite(value)) {
            condition = value;
            ++count;
        }
    }
};

struct Span {
    CGFloat start;
    CGFloat extent;
};

Span solve(const AxisConditions& axis, Span present) noexcept {
    CGFloat extent = present.extent;
    if (axis.extent) {
        extent = *axis.extent;
    } else if (axis.start && axis.end) {
        extent = *axis.end - *axis.start;
    } else if (axis.start && axis.center) {
        extent = 2 * (*axis.center - *axis.start);
    } else if (axis.center && axis.end) {
        extent = 2 * (*axis.end - *axis.center);
    }
    extent = std::max(extent, 0.0);
    if (axis.start) {
        return {*axis.start, extent};
    }
    if (axis.end) {
        return {*axis.end - extent, extent};
    }
    if (axis.center) {
        return {*axis.center - extent / 2, extent};
    }
    return {present.start, extent};
}

/// The rectangle that an anchor speaks of, in the coordinates of the superview.
CGRect rectOf(const NSLayoutAnchor& anchor, const UIView& view, const UIView& superview) {
    CGRect rect = view.bounds();
    if (&view != &superview) {
        const CGPoint origin = view.convertPointToWindow({});
        const CGPoint base = superview.convertPointToWindow({});
        rect.origin = {origin.x - base.x, origin.y - base.y};
    }
    if (anchor.isSafeArea()) {
        const UIEdgeInsets insets = view.safeAreaInsets();
        rect.origin.x += insets.left;
        rect.origin.y += insets.top;
        rect.size.width -= insets.left + insets.right;
        rect.size.height -= insets.top + insets.bottom;
    }
    return rect;
}

CGFloat valueOf(NSLayoutAttribute attribute, CGRect rect) noexcept {
    switch (attribute) {
        case NSLayoutAttribute::left:
            return rect.minX();
        case NSLayoutAttribute::right:
            return rect.maxX();
        case NSLayoutAttribute::top:
            return rect.minY();
        case NSLayoutAttribute::bottom:
            return rect.maxY();
        case NSLayoutAttribute::width:
            return rect.size.width;
        case NSLayoutAttribute::height:
            return rect.size.height;
        case NSLayoutAttribute::centerX:
            return rect.midX();
        case NSLayoutAttribute::centerY:
            return rect.midY();
    }
    return 0;
}

struct Conditions {
    AxisConditions horizontal;
    AxisConditions vertical;

    void add(NSLayoutAttribute attribute, CGFloat value) noexcept {
        switch (attribute) {
            case NSLayoutAttribute::left:
                return horizontal.add(horizontal.start, value);
            case NSLayoutAttribute::right:
                return horizontal.add(horizontal.end, value);
            case NSLayoutAttribute::width:
                return horizontal.add(horizontal.extent, value);
            case NSLayoutAttribute::centerX:
                return horizontal.add(horizontal.center, value);
            case NSLayoutAttribute::top:
                return vertical.add(vertical.start, value);
            case NSLayoutAttribute::bottom:
                return vertical.add(vertical.end, value);
            case NSLayoutAttribute::height:
                return vertical.add(vertical.extent, value);
            case NSLayoutAttribute::centerY:
                return vertical.add(vertical.center, value);
        }
    }
};

/// Adds what a constraint says about the view. One that refers to a released view says nothing.
void addCondition(Conditions& conditions, const NSLayoutConstraint& constraint, const UIView& view,
                  const UIView& superview) {
    const NSLayoutAnchor& first = constraint.firstAnchor();
    const NSLayoutAnchor* second = constraint.secondAnchor();
    if (second == nullptr) {
        conditions.add(first.attribute(), constraint.constant());
        return;
    }
    const bool placesFirst = first.view().get() == &view && !first.isSafeArea();
    const NSLayoutAnchor& own = placesFirst ? first : *second;
    const NSLayoutAnchor& other = placesFirst ? *second : first;
    const auto otherView = other.view();
    if (otherView) {
        const CGFloat value = valueOf(other.attribute(), rectOf(other, *otherView, superview));
        conditions.add(own.attribute(),
                       placesFirst ? value + constraint.constant() : value - constraint.constant());
    }
}

}  // namespace

CGRect frameByConstraints(const UIView& superview, const UIView& view) {
    Conditions conditions;
    for (const auto& constraint : view.constraints()) {
        addCondition(conditions, *constraint, view, superview);
    }
    const CGRect frame = view.frame();
    const Span x = solve(conditions.horizontal, {frame.minX(), frame.size.width});
    const Span y = solve(conditions.vertical, {frame.minY(), frame.size.height});
    return {{x.start, y.start}, {x.extent, y.extent}};
}

}  // namespace pelta::detail
