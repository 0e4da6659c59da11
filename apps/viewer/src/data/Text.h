#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// @file
/// Text that comes from outside, made fit for messages, and numbers read from it.

namespace pelta::viewer {

/// The text in double quotes, shortened to about 40 bytes at a character's edge, control characters as
/// spaces, so that foreign text cannot disturb a message.
[[nodiscard]] std::string inQuotes(std::string_view text);

/// A number in as few digits as tell it apart at 6 figures.
[[nodiscard]] std::string numberText(double value);

/// True for text in UTF-8, without overlong forms and surrogates.
[[nodiscard]] bool isUtf8(std::string_view text);

/// Appends a character in UTF-8. A surrogate becomes three bytes that are not UTF-8.
///
/// @param code  at most 0x10FFFF.
void appendUtf8(std::string& text, std::uint32_t code);

/// The value of a hexadecimal digit in either case.
[[nodiscard]] std::optional<std::uint32_t> hexDigit(char letter);

/// The text with each "%" and two hexadecimal digits replaced by the byte that they name.
[[nodiscard]] std::string percentDecoded(std::string_view text);

/// Reads a finite decimal number that fills the whole text, such as "-12.5" or "1e3".
[[nodiscard]] std::optional<double> parseNumber(std::string_view text);

}  // namespace pelta::viewer
