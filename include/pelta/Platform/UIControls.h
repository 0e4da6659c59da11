#pragma once

#include <array>
#include <functional>
#include <optional>
#include <string>

#include <pelta/Platform/UIView.h>

namespace pelta {

/// Shows a picture.
class UIImageView : public UIView {
 public:
    using UIView::UIView;

    /// The picture shown; absent shows nothing.
    [[nodiscard]] const std::optional<UIImage>& image() const noexcept { return image_; }
    /// Shows another picture, or none; the frame stays.
    void setImage(std::optional<UIImage> image);
    /// How the picture fills the view.
    [[nodiscard]] UIViewContentMode contentMode() const noexcept { return contentMode_; }
    void setContentMode(UIViewContentMode mode);

    [[nodiscard]] ViewContent content() const override;

 private:
    std::optional<UIImage> image_;
    UIViewContentMode contentMode_ = UIViewContentMode::scaleToFill;
};

/// Shows one line of text.
class UILabel : public UIView {
 public:
    using UIView::UIView;

    /// UTF-8 text shown.
    [[nodiscard]] const std::string& text() const noexcept { return text_; }
    void setText(std::string text);
    /// How the text looks.
    [[nodiscard]] const NSTextAttributes& attributes() const noexcept { return attributes_; }
    void setAttributes(NSTextAttributes attributes);
    /// Resizes the frame to the text, keeping its origin.
    void sizeToFit();

    [[nodiscard]] ViewContent content() const override;

 private:
    std::string text_;
    NSTextAttributes attributes_;
};

/// State of a control that decides on its picture.
enum class UIControlState : unsigned { normal = 0, highlighted = 1, disabled = 2 };

/// A button with a picture for each state. It is highlighted while a touch that began on it is inside;
/// lifting the touch inside (with 20 points of slack) runs the action. A state without a picture of its own
/// shows the normal one.
class UIButton : public UIView {
 public:
    using UIView::UIView;

    /// The picture for a state; absent takes it away.
    void setImage(std::optional<UIImage> image, UIControlState state);
    /// The picture set for a state; absent when there is none.
    [[nodiscard]] const std::optional<UIImage>& imageForState(UIControlState state) const;
    /// Sets what a touch lifted inside does; it must not own the button.
    void setTouchUpInside(std::function<void()> action) { action_ = std::move(action); }
    /// Runs the action as a touch would, for keyboards and screen readers; nothing while disabled.
    void sendTouchUpInside();

    /// Off: the button takes no touches and shows its disabled look.
    [[nodiscard]] bool isEnabled() const noexcept { return isEnabled_; }
    void setIsEnabled(bool enabled);
    /// The state that decides what is shown.
    [[nodiscard]] UIControlState state() const noexcept;

    void touchDidChange(const UITouch& touch) override;
    /// A hand while enabled.
    [[nodiscard]] UIPointerStyle pointerStyle(CGPoint point) const override;
    [[nodiscard]] bool keepsTouchesFromSuperviews() const override { return true; }
    [[nodiscard]] ViewContent content() const override;

 private:
    void setIsHighlighted(bool highlighted);

    std::array<std::optional<UIImage>, 3> images_;
    std::function<void()> action_;
    std::optional<int> trackedTouch_;
    bool isEnabled_ = true;
    bool isHighlighted_ = false;
};

}  // namespace pelta
