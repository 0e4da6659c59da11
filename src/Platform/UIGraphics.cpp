#include <algorithm>
#include <cmath>

#include <pelta/Platform/PlatformPort.h>
#include <pelta/Platform/UIGraphics.h>

namespace pelta {

namespace {

constexpr double maximumSide = 16384;  // Pixels.

/// Whole pixels that hold a length; a rounding error of the multiplication does not cost a pixel.
double wholePixels(CGFloat length, double scale) noexcept {
    return std::ceil(length * scale - 1e-6);
}

}  // namespace

CGSize sizeOfText(std::string_view text, const UIFont& font) {
    return PlatformPort::current().measureText(text, font);
}

std::optional<UIImage> UIGraphicsImageRenderer::image(
    const std::function<void(GraphicsContext&)>& draw) const {
    const PlatformPort& port = PlatformPort::current();
    const double scale = port.screenScale();
    const double width = wholePixels(size_.width, scale);
    const double height = wholePixels(size_.height, scale);
    // Written so that NaN is refused too.
    const bool isPossible =
        size_.width > 0 && size_.height > 0 && width <= maximumSide && height <= maximumSide;
    if (!isPossible) {
        return std::nullopt;
    }
    const auto context = port.makeGraphicsContext(std::max(1, static_cast<int>(width)),
                                                  std::max(1, static_cast<int>(height)), scale);
    draw(*context);
    return context->makeImage();
}

}  // namespace pelta
