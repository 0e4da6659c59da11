#include "PngDecoder.h"

#include <limits>
#include <memory>
#include <vector>

#ifndef __clang_analyzer__  // Which is to look at our code only.
#define STB_IMAGE_IMPLEMENTATION
#define STB_IMAGE_STATIC
#endif
#define STBI_ONLY_PNG
#define STBI_NO_STDIO
#define STBI_NO_LINEAR
#define STBI_MAX_DIMENSIONS 16384
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wunused-function"
#include <stb/stb_image.h>
#pragma clang diagnostic pop

namespace pelta {

std::optional<UIImage> decodePng(std::span<const std::uint8_t> bytes, double scale) {
    if (bytes.size() > static_cast<std::size_t>(std::numeric_limits<int>::max())) {
        return std::nullopt;
    }
    constexpr int channels = 4;
    int width = 0;
    int height = 0;
    const std::unique_ptr<stbi_uc, decltype(&stbi_image_free)> pixels(
        stbi_load_from_memory(bytes.data(), static_cast<int>(bytes.size()), &width, &height, nullptr,
                              channels),
        &stbi_image_free);
    if (!pixels) {
        return std::nullopt;
    }
    const auto size = static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * channels;
    return UIImage::fromPixels(width, height, scale,
                               std::vector<std::uint8_t>(pixels.get(), pixels.get() + size));
}

}  // namespace pelta
