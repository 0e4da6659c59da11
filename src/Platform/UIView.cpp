#include <algorithm>
#include <cmath>

#include <pelta/Platform/UIView.h>
#include <pelta/Platform/UIWindow.h>

#include "Platform/Appearance.h"

namespace pelta {

namespace {

bool isFinite(CGRect rect) noexcept {
    return std::isfinite(rect.origin.x) && std::isfinite(rect.origin.y) && std::isfinite(rect.size.width) &&
           std::isfinite(rect.size.height);
}

bool isFinite(const CGAffineTransform& t) noexcept {
    return std::isfinite(t.a) && std::isfinite(t.b) && std::isfinite(t.c) && std::isfinite(t.d) &&
           std::isfinite(t.tx) && std::isfinite(t.ty);
}

}  // namespace

UIView::UIView(CGRect frame) : frame_(isFinite(frame) ? frame : CGRect{}) {}

UIView::~UIView() = default;

void UIView::completeConstruction(std::string_view) {}

void UIView::didChangeAppearance() {
    detail::appearanceDidChange();
}

unsigned long UIView::treeRevision() noexcept {
    return detail::appearanceRevision();
}

// --- Appearance
// ---------------------------------------------------------------------------------------------

void UIView::setFrame(CGRect frame) {
    if (!isFinite(frame) || !applyFrame(frame)) {
        return;
    }
    const auto parent = superview();
    if (parent && parent->placesSubviews_) {
        parent->setNeedsLayout();  // Siblings may be placed against this view.
    }
}

bool UIView::applyFrame(CGRect frame) {
    if (frame == frame_) {
        return false;
    }
    const bool isResized = frame.size != frame_.size;
    frame_ = frame;
    didChangeAppearance();
    if (isResized) {
        setNeedsLayout();
    }
    updateSafeArea();
    return true;
}

void UIView::setCenter(CGPoint center) {
    setFrame({{center.x - frame_.size.width / 2, center.y - frame_.size.height / 2}, frame_.size});
}

void UIView::setIsHidden(bool hidden) {
    if (hidden != isHidden_) {
        isHidden_ = hidden;
        didChangeAppearance();
    }
}

void UIView::setAlpha(CGFloat alpha) {
    const CGFloat clamped = std::clamp(alpha, 0.0, 1.0);
    if (!std::isnan(alpha) && clamped != alpha_) {
        alpha_ = clamped;
        didChangeAppearance();
    }
}

void UIView::setBackgroundColor(UIColor color) {
    if (color != backgroundColor_) {
        backgroundColor_ = color;
        didChangeAppearance();
    }
}

void UIView::setCornerRadius(CGFloat radius) {
    if (std::isfinite(radius) && radius != cornerRadius_) {
        cornerRadius_ = radius;
        didChangeAppearance();
    }
}

void UIView::setTransform(CGAffineTransform transform) {
    if (isFinite(transform) && transform != transform_) {
        transform_ = transform;
        didChangeAppearance();
    }
}

void UIView::setClipsToBounds(bool clips) {
    if (clips != clipsToBounds_) {
        clipsToBounds_ = clips;
        didChangeAppearance();
    }
}

void UIView::setIsUserInteractionEnabled(bool enabled) {
    if (enabled != isUserInteractionEnabled_) {
        isUserInteractionEnabled_ = enabled;
        didChangeAppearance();  // A port may have to let pointer events through.
    }
}

void UIView::setAccessibilityLabel(std::string label) {
    if (label != accessibilityLabel_) {
        accessibilityLabel_ = std::move(label);
        didChangeAppearance();
    }
}

const std::shared_ptr<CALayer>& UIView::layer() {
    if (!layer_) {
        layer_ = CALayer::create();
    }
    return layer_;
}

void UIView::draw(GraphicsContext&, CGRect) {}

void UIView::setNeedsDisplay() {
    didChangeAppearance();
}

// --- Tree
// ---------------------------------------------------------------------------------------------------

UIWindow* UIView::window() {
    UIView* root = this;
    for (auto parent = superview(); parent; parent = parent->superview()) {
        root = parent.get();
    }
    return dynamic_cast<UIWindow*>(root);
}

void UIView::addSubview(const std::shared_ptr<UIView>& view) {
    const bool isInFront = !subviews_.empty() && subviews_.back() == view;
    if (view && !isInFront) {
        adopt(view, subviews_.size());
    }
}

void UIView::insertSubview(const std::shared_ptr<UIView>& view, std::size_t index) {
    if (view && view->superview().get() != this) {
        adopt(view, index);
    }
}

void UIView::adopt(const std::shared_ptr<UIView>& view, std::size_t index) {
    for (auto ancestor = shared_from_this(); ancestor; ancestor = ancestor->superview()) {
        if (ancestor == view) {
            return;
        }
    }
    view->removeFromSuperview();
    const auto place = std::min(index, subviews_.size());
    subviews_.insert(subviews_.begin() + static_cast<std::ptrdiff_t>(place), view);
    view->superview_ = weak_from_this();
    view->constraintsDidChange();
    view->setNeedsLayout();
    view->updateSafeArea();
}

void UIView::removeFromSuperview() {
    const auto parent = superview();
    if (!parent) {
        return;
    }
    const auto self = shared_from_this();
    superview_.reset();
    std::erase(parent->subviews_, self);
    didChangeAppearance();
    updateSafeArea();
}

// --- Touches
// ------------------------------------------------------------------------------------------------

void UIView::addGestureRecognizer(const std::shared_ptr<UIGestureRecognizer>& recognizer) {
    if (!recognizer) {
        return;
    }
    if (const auto former = recognizer->view()) {
        former->removeGestureRecognizer(recognizer);
    }
    gestureRecognizers_.push_back(recognizer);
    recognizer->attachToView(weak_from_this());
}

void UIView::removeGestureRecognizer(const std::shared_ptr<UIGestureRecognizer>& recognizer) {
    // The argument may be an element of the list. NOLINTNEXTLINE(performance-unnecessary-copy-initialization)
    const auto held = recognizer;
    if (std::erase(gestureRecognizers_, held) > 0) {
        held->attachToView({});
    }
}

std::shared_ptr<UIView> UIView::hitTest(CGPoint point) {
    if (isHidden_ || alpha_ <= 0 || !isUserInteractionEnabled_ || !bounds().contains(point)) {
        return nullptr;
    }
    for (std::size_t index = subviews_.size(); index-- > 0;) {
        const CGPoint origin = subviews_[index]->frame_.origin;
        if (auto hit = subviews_[index]->hitTest({point.x - origin.x, point.y - origin.y})) {
            return hit;
        }
    }
    return shared_from_this();
}

CGPoint UIView::convertPointToWindow(CGPoint point) const {
    const UIView* view = this;
    for (auto parent = superview(); parent; parent = parent->superview()) {
        point.x += view->frame_.origin.x;
        point.y += view->frame_.origin.y;
        view = parent.get();
    }
    return point;
}

UIPointerStyle UIView::pointerStyle(CGPoint /*point*/) const {
    return UIPointerStyle::automatic;
}

void UIView::touchDidChange(const UITouch&) {}

}  // namespace pelta
