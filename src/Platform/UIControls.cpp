#include <cmath>

#include <pelta/Platform/UIControls.h>
#include <pelta/Platform/UIWindow.h>

namespace pelta {

namespace {

/// Whole pixels, so that a fitted text is not cut and its view's edges stay sharp.
CGFloat roundedUp(CGFloat length, double scale) noexcept {
    return std::ceil(length * scale) / scale;
}

/// True when both show the same thing, so that nothing has to be drawn anew.
bool areSame(const std::optional<UIImage>& one, const std::optional<UIImage>& other) noexcept {
    if (!one || !other) {
        return !one && !other;
    }
    return one->isIdenticalTo(*other) && one->capInsets() == other->capInsets() &&
           one->resizingMode() == other->resizingMode();
}

}  // namespace

// --- UIImageView
// --------------------------------------------------------------------------------------------

void UIImageView::setImage(std::optional<UIImage> image) {
    if (!areSame(image, image_)) {
        image_ = std::move(image);
        didChangeAppearance();
    }
}

void UIImageView::setContentMode(UIViewContentMode mode) {
    if (mode != contentMode_) {
        contentMode_ = mode;
        didChangeAppearance();
    }
}

ViewContent UIImageView::content() const {
    if (!image_) {
        return {};
    }
    return PictureContent{*image_, contentMode_};
}

// --- UILabel
// ------------------------------------------------------------------------------------------------

void UILabel::setText(std::string text) {
    if (text != text_) {
        text_ = std::move(text);
        didChangeAppearance();
    }
}

void UILabel::setAttributes(NSTextAttributes attributes) {
    if (attributes != attributes_) {
        attributes_ = attributes;
        didChangeAppearance();
    }
}

void UILabel::sizeToFit() {
    const CGSize size = sizeOfText(text_, attributes_.font);
    const double scale = UIScreen::scale();
    setFrame({frame().origin, {roundedUp(size.width, scale), roundedUp(size.height, scale)}});
}

ViewContent UILabel::content() const {
    if (text_.empty()) {
        return {};
    }
    return TextContent{text_, attributes_};
}

}  // namespace pelta
