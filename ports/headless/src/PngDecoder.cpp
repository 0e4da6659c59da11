#include "PngDecoder.h"

#include <limits>
#include <memory>

#ifndef __clang_analyzer__  // Which is to look at our code only.
#define STB_IMAGE_IMPLEMENTATION
#define STB_IMAGE_STATIC
#endif
#define STBI_ONLY_PNG
#define STBI_NO_STDIO
#define STBI_NO_LINEAR
#define STBI_NO_HDR
#define STBI_MAX_DIMENSIONS 16384
#include <stb/stb_image.h>

namespace pelta::headless {

namespace {

constexpr std::size_t maximumPixels = std::size_t{64} * 1000 * 1000;

struct PixelsDeleter {
    void operator()(stbi_uc* pixels) const noexcept { stbi_image_free(pixels); }
};

}  // namespace

std::optional<UIImage> decodePng(std::span<const std::uint8_t> bytes, double scale) {
    if (bytes.empty() || bytes.size() > std::numeric_limits<int>::max()) {
        return std::nullopt;
    }
    const int length = static_cast<int>(bytes.size());
    int width = 0;
    int height = 0;
    int channels = 0;
    if (stbi_info_from_memory(bytes.data(), length, &width, &height, &channels) == 0 || width <= 0 ||
        height <= 0) {
        return std::nullopt;
    }
    const std::size_t pixelCount = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    if (pixelCount > maximumPixels) {
        return std::nullopt;
    }
    const std::unique_ptr<stbi_uc, PixelsDeleter> pixels(
        stbi_load_from_memory(bytes.data(), length, &width, &height, &channels, STBI_rgb_alpha));
    if (!pixels) {
        return std::nullopt;
    }
    const std::span<const stbi_uc> rgba(pixels.get(), pixelCount * 4);
    return UIImage::fromPixels(width, height, scale, {rgba.begin(), rgba.end()});
}

}  // namespace pelta::headless
