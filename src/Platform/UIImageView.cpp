#include <pelta/Platform/UIControls.h>

namespace pelta {

namespace {

/// True when both show the same thing, so that nothing has to be drawn anew.
bool areSame(const std::optional<UIImage>& one, const std::optional<UIImage>& other) noexcept {
    if (!one || !other) {
        return !one && !other;
    }
    return one->isIdenticalTo(*other) && one->capInsets() == other->capInsets() &&
           one->resizingMode() == other->resizingMode();
}

}  // namespace

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

}  // namespace pelta
