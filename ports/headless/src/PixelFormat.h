#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace pelta::headless {

/// Pixels as Cairo holds them: alpha, red, green, blue from the highest byte down, colours multiplied by
/// alpha.
[[nodiscard]] std::uint32_t premultiplied(std::span<const std::uint8_t, 4> rgba) noexcept;

/// The straight-alpha RGBA bytes of one such pixel.
void appendStraight(std::uint32_t pixel, std::vector<std::uint8_t>& rgba);

}  // namespace pelta::headless
