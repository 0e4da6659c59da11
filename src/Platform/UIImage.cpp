#include <algorithm>
#include <cmath>

#include <pelta/Platform/PlatformPort.h>
#include <pelta/Platform/UIImage.h>

namespace pelta {

namespace {

constexpr int maximumSide = 16384;  // Pixels.

bool isScale(double scale) noexcept {
    return std::isfinite(scale) && scale > 0;
}

/// A cap in whole pixels, expressed in points, that leaves at least `kept` of the side's pixels.
CGFloat capWithin(CGFloat inset, double scale, int pixels, int kept) noexcept {
    const double cap = std::isfinite(inset) ? std::round(inset * scale) : 0;
    return std::clamp(cap, 0.0, static_cast<double>(pixels - kept)) / scale;
}

}  // namespace

std::optional<UIImage> UIImage::fromPixels(int width, int height, double scale,
                                           std::vector<std::uint8_t> rgba) {
    if (width < 1 || width > maximumSide || height < 1 || height > maximumSide || !isScale(scale) ||
        rgba.size() != static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 4) {
        return std::nullopt;
    }
    UIImage image;
    image.width_ = width;
    image.height_ = height;
    image.scale_ = scale;
    image.pixels_ = std::make_shared<const std::vector<std::uint8_t>>(std::move(rgba));
    return image;
}

std::optional<UIImage> UIImage::fromEncoded(std::span<const std::uint8_t> bytes, double scale) {
    if (bytes.empty() || !isScale(scale)) {
        return std::nullopt;
    }
    return PlatformPort::current().decodeImage(bytes, scale);
}

CGSize UIImage::size() const noexcept {
    return {width_ / scale_, height_ / scale_};
}

UIImage UIImage::resizableImage(UIEdgeInsets capInsets, UIImageResizingMode mode) const {
    UIEdgeInsets caps;
    caps.left = capWithin(capInsets.left, scale_, width_, 1);
    caps.top = capWithin(capInsets.top, scale_, height_, 1);
    const int leftPixels = static_cast<int>(std::lround(caps.left * scale_));
    const int topPixels = static_cast<int>(std::lround(caps.top * scale_));
    caps.right = capWithin(capInsets.right, scale_, width_, leftPixels + 1);
    caps.bottom = capWithin(capInsets.bottom, scale_, height_, topPixels + 1);
    UIImage image = *this;
    image.capInsets_ = caps;
    image.resizingMode_ = mode;
    return image;
}

}  // namespace pelta
