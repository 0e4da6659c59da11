#pragma once

#include <string_view>

namespace pelta::command {

/// A line of text that starts with two numbers. Blanks, tabs or a comma stand between the words.
struct CoordinateLine {
    double x = 0;
    double y = 0;
    std::string_view rest;     ///< All behind the first two words and the character that ends them.
    std::string_view problem;  ///< Why the numbers could not be read; empty when they could.

    /// @param line  without its line break. Blanks before the first number are passed over.
    [[nodiscard]] static CoordinateLine read(std::string_view line);
};

/// True for a line that holds no data: an empty one, one of blanks, one whose first sign is #.
[[nodiscard]] bool isComment(std::string_view line);

}  // namespace pelta::command
