#include "HeadlessPlatform.h"

#include <algorithm>
#include <cmath>

#include <pelta/Platform/Dispatch.h>

#include "CairoContext.h"
#include "PngDecoder.h"
#include "TextSetter.h"

namespace pelta::headless {

namespace {

constexpr double framesPerSecond = 60;
constexpr int maximumSide = 16384;  // Pixels.

}  // namespace

void HeadlessPlatform::setNow(double now) {
    now_.store(std::max(now, now_.load()));
}

void HeadlessPlatform::setScreenScale(double scale) {
    // The drawing library cannot invert much smaller ones, and no picture is made of much larger ones.
    if (scale >= 0.01 && scale <= 100) {
        screenScale_ = scale;
    }
}

void HeadlessPlatform::requestFrame() {
    // A moment that rounding has put just before a frame's counts as that frame's.
    const double present = std::floor(now() * framesPerSecond + 1e-6);
    frameTime_ = (present + 1) / framesPerSecond;
}

std::optional<UIImage> HeadlessPlatform::decodeImage(std::span<const std::uint8_t> bytes,
                                                     double scale) const {
    return decodePng(bytes, scale);
}

std::unique_ptr<GraphicsContext> HeadlessPlatform::makeGraphicsContext(int pixelWidth, int pixelHeight,
                                                                       double scale) const {
    return std::make_unique<CairoContext>(std::clamp(pixelWidth, 1, maximumSide),
                                          std::clamp(pixelHeight, 1, maximumSide), scale);
}

CGSize HeadlessPlatform::measureText(std::string_view text, const UIFont& font) const {
    return TextSetter::shared().measure(text, font);
}

void HeadlessPlatform::fetchText(const std::string& address, std::function<void(FetchResult)> completion) {
    MainQueue::async([result = documents_.read(address), completion = std::move(completion)]() mutable {
        completion(std::move(result));
    });
}

}  // namespace pelta::headless
