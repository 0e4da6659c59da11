#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace pelta::command {

/// Goes over a JSON text value by value without reading what is in them: brackets and quotes alone tell where
/// a value ends. So a value that is broken inside can be passed over, and each be read by itself.
class JsonCursor {
 public:
    explicit JsonCursor(std::string_view text) : text_(text) {}

    /// Passes over blanks.
    /// @return true when nothing follows them.
    bool isAtEnd();

    /// Passes over blanks, and over the sign behind them if it is the given one.
    bool take(char sign);

    /// Passes over blanks and over the value behind them: an object, an array, a text in quotes, or
    /// everything up to the next blank or sign of JSON.
    ///
    /// @return the value's text; empty when none stands there, or when it does not end. The cursor then
    ///         stands at the sign, or at the end, that should not be there.
    std::string_view takeValue();

    /// Where the cursor stands, in the text itself.
    [[nodiscard]] const char* place() const noexcept { return text_.data() + at_; }

 private:
    bool passText();
    bool passBrackets();
    void passToStructure();

    std::string_view text_;
    std::size_t at_ = 0;
    std::string awaited_;  // what closes the open brackets, innermost last
};

}  // namespace pelta::command
