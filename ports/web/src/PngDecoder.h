#pragma once

#include <cstdint>
#include <optional>
#include <span>

#include <pelta/Platform/UIImage.h>

namespace pelta {

/// Decodes a PNG file; nothing when it is not one, is damaged, or is larger than a picture may be.
[[nodiscard]] std::optional<UIImage> decodePng(std::span<const std::uint8_t> bytes, double scale);

}  // namespace pelta
