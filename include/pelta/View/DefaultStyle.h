#pragma once

#include <string_view>

namespace pelta {

/// Address of the style document that a map view starts with: the CMake setting `PELTA_DEFAULT_STYLE_URL`.
[[nodiscard]] std::string_view defaultStyleURL() noexcept;

}  // namespace pelta
