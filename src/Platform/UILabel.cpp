#include <cmath>

#include <pelta/Platform/UIControls.h>
#include <pelta/Platform/UIWindow.h>

namespace pelta {

namespace {

/// Whole pixels, so that a fitted text is not cut and its view's edges stay sharp.
CGFloat roundedUp(CGFloat length, double scale) noexcept {
    return std::ceil(length * scale) / scale;
}

}  // namespace

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
