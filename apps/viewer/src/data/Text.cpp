#include "data/Text.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace pelta::viewer {

namespace {

constexpr std::size_t quotedBytes = 40;

/// Length of the character at the start of a text that is not empty, or 0 where that is none.
std::size_t characterLength(std::string_view text) {
    const auto byteAt = [text](std::size_t i) {
        return i < text.size() ? static_cast<unsigned char>(text[i]) : 0U;
    };
    const unsigned first = byteAt(0);
    const unsigned second = byteAt(1);
    if (first < 0x80) {
        return 1;
    }
    // The second byte rules out overlong forms, surrogates, and what lies beyond the last character.
    const unsigned lowest = first == 0xE0 ? 0xA0 : first == 0xF0 ? 0x90 : 0x80;
    const unsigned highest = first == 0xED ? 0x9F : first == 0xF4 ? 0x8F : 0xBF;
    if (first < 0xC2 || first > 0xF4 || second < lowest || second > highest) {
        return 0;
    }
    const std::size_t length = first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
    for (std::size_t i = 2; i < length; ++i) {
        if ((byteAt(i) & 0xC0) != 0x80) {
            return 0;
        }
    }
    return length;
}

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

bool isUtf8(std::string_view text) {
    while (!text.empty()) {
        const std::size_t length = characterLength(text);
        if (length == 0) {
            return false;
        }
        text.remove_prefix(length);
    }
    return true;
}

void appendUtf8(std::string& text, std::uint32_t code) {
    const auto add = [&text](std::uint32_t byte) { text += static_cast<char>(byte); };
    const auto addRest = [&](std::uint32_t shift) { add(0x80 | (code >> shift & 0x3F)); };
    if (code < 0x80) {
        add(code);
    } else if (code < 0x800) {
        add(0xC0 | code >> 6U);
        addRest(0);
    } else if (code < 0x10000) {
        add(0xE0 | code >> 12U);
        addRest(6);
        addRest(0);
    } else {
        add(0xF0 | code >> 18U);
        addRest(12);
        addRest(6);
        addRest(0);
    }
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
