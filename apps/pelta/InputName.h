#pragma once

#include <string>
#include <string_view>

namespace pelta::command {

/// What messages call an input.
///
/// @param path  "-" for standard input.
[[nodiscard]] inline std::string inputName(std::string_view path) {
    return std::string(path == "-" ? "standard input" : path);
}

}  // namespace pelta::command
