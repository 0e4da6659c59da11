#pragma once

#include <cstdint>
#include <optional>
#include <span>

#include <pelta/Platform/UIImage.h>

namespace pelta::headless {

/// Decodes a PNG file of at most 16384 pixels a side and 64 million pixels in all.
/// @return nothing for anything else.
[[nodiscard]] std::optional<UIImage> decodePng(std::span<const std::uint8_t> bytes, double scale);

}  // namespace pelta::headless
