#pragma once

#include <span>
#include <string_view>

namespace pelta::detail {

/// One built-in picture at one screen scale, as it is stored in the library.
struct EmbeddedPicture {
    std::string_view name;               ///< Resource name, without scale or extension.
    int scale;                           ///< Pixels a point: 1, 2 or 3.
    std::span<const unsigned char> png;  ///< The PNG file; lives as long as the program.
};

/// All built-in pictures, sorted by name, then scale.
std::span<const EmbeddedPicture> embeddedPictures() noexcept;

}  // namespace pelta::detail
