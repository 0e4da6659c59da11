#pragma once

#include <cstdint>
#include <string_view>

namespace pelta::viewer {

/// A value that is neither an object nor an array, as it stands in a document. Texts are only valid while it
/// is read.
struct ScalarValue {
    enum class Kind : std::uint8_t { null, boolean, number, text };
    Kind kind = Kind::null;
    double number = 0;      ///< Not finite for NaN, Infinity, and numbers that no double holds.
    std::string_view text;  ///< A text, or a number as it is written.
};

}  // namespace pelta::viewer
