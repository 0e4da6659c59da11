#include "data/Text.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace pelta::viewer {

namespace {

constexpr std::size_t quotedBytes = 40;

bool continuesCharacter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

}  // namespace

std::string inQuotes(std::string_view text) {
    std::size_t length = text.size();
    if (length > quotedBytes) {
        length = quotedBytes;
        while (length > 0 && continuesCharacter(text[length])) {
            --length;
        }
    }
    std::string result = "\"";
    for (const char byte : text.substr(0, length)) {
        const auto code = static_cast<unsigned char>(byte);
        result += code < 0x20 || code == 0x7F ? ' ' : byte;
    }
    return result + (length < text.size() ? "…\"" : "\"");
}

std::string numberText(double value) {
    char digits[32];
    std::snprintf(digits, sizeof digits, "%.6g", value);
    return digits;
}

std::optional<std::uint32_t> hexDigit(char letter) {
    constexpr std::string_view digits = "0123456789abcdef0123456789ABCDEF";
    const auto place = digits.find(letter);
    return place == std::string_view::npos ? std::nullopt
                                           : std::optional(static_cast<std::uint32_t>(place % 16));
}

std::string percentDecoded(std::string_view text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isEscape = text[i] == '%' && i + 2 < text.size();
        const auto high = isEscape ? hexDigit(text[i + 1]) : std::nullopt;
        const auto low = isEscape ? hexDigit(text[i + 2]) : std::nullopt;
        result += high && low ? static_cast<char>(*high * 16 + *low) : text[i];
        i += high && low ? 2 : 0;
    }
    return result;
}

std::optional<double> parseNumber(std::string_view text) {
    if (text.empty() || text.find_first_not_of("+-.0123456789eE") != std::string_view::npos) {
        return std::nullopt;
    }
    const std::string copy(text);
    char* end = nullptr;
    const double value = std::strtod(copy.c_str(), &end);
    if (end != copy.c_str() + copy.size() || !std::isfinite(value)) {
        return std::nullopt;
    }
    return value;
}

}  // namespace pelta::viewer
