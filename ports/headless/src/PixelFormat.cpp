#include "PixelFormat.h"

#include <algorithm>

namespace pelta::headless {

std::uint32_t premultiplied(std::span<const std::uint8_t, 4> rgba) noexcept {
    const std::uint32_t alpha = rgba[3];
    const auto scaled = [alpha](std::uint32_t value) { return (value * alpha + 127) / 255; };
    return alpha << 24U | scaled(rgba[0]) << 16U | scaled(rgba[1]) << 8U | scaled(rgba[2]);
}

void appendStraight(std::uint32_t pixel, std::vector<std::uint8_t>& rgba) {
    const std::uint32_t alpha = pixel >> 24U;
    const auto straight = [pixel, alpha](unsigned shift) {
        const std::uint32_t value = (pixel >> shift) & 0xFFU;
        return static_cast<std::uint8_t>(alpha == 0 ? 0 : std::min(255U, (value * 255 + alpha / 2) / alpha));
    };
    rgba.push_back(straight(16));
    rgba.push_back(straight(8));
    rgba.push_back(straight(0));
    rgba.push_back(static_cast<std::uint8_t>(alpha));
}

}  // namespace pelta::headless
