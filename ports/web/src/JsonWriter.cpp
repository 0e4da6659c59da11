#include "JsonWriter.h"

#include <array>
#include <cmath>

#include "CssText.h"

namespace pelta {

void JsonWriter::separate() {
    if (needsComma_) {
        text_ += ',';
    }
    needsComma_ = true;
}

void JsonWriter::open(char bracket) {
    separate();
    text_ += bracket;
    needsComma_ = false;
}

void JsonWriter::close(char bracket) {
    text_ += bracket;
    needsComma_ = true;
}

void JsonWriter::key(std::string_view name) {
    separate();
    quote(name);
    text_ += ':';
    needsComma_ = false;
}

void JsonWriter::value(std::string_view text) {
    separate();
    quote(text);
}

void JsonWriter::value(double number) {
    raw(cssNumber(number));
}

void JsonWriter::degrees(double number) {
    constexpr double largest = 1e4;
    constexpr int decimals = 9;
    if (!(std::abs(number) < largest)) {
        value(number);
        return;
    }
    auto rest = std::llround(std::abs(number) * 1e9);
    std::array<char, 24> digits{};  // Of the rounded number, from the end.
    auto first = digits.end();
    for (int place = 0; place <= decimals || rest > 0; ++place, rest /= 10) {
        if (place == decimals && first != digits.end()) {
            *--first = '.';
        }
        if (place >= decimals || rest % 10 != 0 || first != digits.end()) {
            *--first = static_cast<char>('0' + rest % 10);
        }
    }
    if (number < 0) {
        *--first = '-';
    }
    raw({&*first, static_cast<std::size_t>(digits.end() - first)});
}

void JsonWriter::raw(std::string_view json) {
    separate();
    text_ += json;
}

void JsonWriter::quote(std::string_view text) {
    constexpr std::string_view digits = "0123456789abcdef";
    text_ += '"';
    for (const char character : text) {
        const auto code = static_cast<unsigned char>(character);
        if (code < 0x20) {
            text_ += "\\u00";
            text_ += digits[code >> 4U];
            text_ += digits[code & 0xFU];
        } else {
            if (character == '"' || character == '\\') {
                text_ += '\\';
            }
            text_ += character;
        }
    }
    text_ += '"';
}

}  // namespace pelta
