#include <pelta/Platform/UIControls.h>

namespace pelta {

namespace {

constexpr CGFloat touchSlack = 20;  // Points around the button that still count as inside.

std::size_t indexOf(UIControlState state) noexcept {
    return static_cast<std::size_t>(state);
}

}  // namespace

void UIButton::setImage(std::optional<UIImage> image, UIControlState state) {
    images_.at(indexOf(state)) = std::move(image);
    didChangeAppearance();
}

const std::optional<UIImage>& UIButton::imageForState(UIControlState state) const {
    const auto& image = images_.at(indexOf(state));
    return image ? image : images_.at(indexOf(UIControlState::normal));
}

void UIButton::sendTouchUpInside() {
    if (isEnabled_ && action_) {
        const auto self = shared_from_this();
        const auto action = action_;  // The action may replace itself or release the button.
        action();
    }
}

void UIButton::setIsEnabled(bool enabled) {
    if (enabled == isEnabled_) {
        return;
    }
    isEnabled_ = enabled;
    isHighlighted_ = false;
    trackedTouch_.reset();
    didChangeAppearance();
}

UIControlState UIButton::state() const noexcept {
    if (!isEnabled_) {
        return UIControlState::disabled;
    }
    return isHighlighted_ ? UIControlState::highlighted : UIControlState::normal;
}

void UIButton::setIsHighlighted(bool highlighted) {
    if (highlighted != isHighlighted_) {
        isHighlighted_ = highlighted;
        didChangeAppearance();
    }
}

void UIButton::touchDidChange(const UITouch& touch) {
    if (touch.phase == UITouchPhase::began && isEnabled_ && !trackedTouch_) {
        trackedTouch_ = touch.identifier;
    }
    if (trackedTouch_ != touch.identifier) {
        return;
    }
    const CGPoint origin = convertPointToWindow({});
    const CGRect area = CGRect{origin, bounds().size}.insetBy(-touchSlack, -touchSlack);
    const bool isInside = window() != nullptr && area.contains(touch.location);
    switch (touch.phase) {
        case UITouchPhase::began:
        case UITouchPhase::moved:
            setIsHighlighted(isInside);
            break;
        case UITouchPhase::ended:
        case UITouchPhase::cancelled:
            trackedTouch_.reset();
            setIsHighlighted(false);
            if (isInside && touch.phase == UITouchPhase::ended) {
                sendTouchUpInside();
            }
            break;
    }
}

UIPointerStyle UIButton::pointerStyle(CGPoint /*point*/) const {
    return isEnabled_ ? UIPointerStyle::hand : UIPointerStyle::automatic;
}

ViewContent UIButton::content() const {
    const auto& image = imageForState(state());
    if (!image) {
        return {};
    }
    return PictureContent{*image, UIViewContentMode::center};
}

}  // namespace pelta
