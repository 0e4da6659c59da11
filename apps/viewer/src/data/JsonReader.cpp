#include "data/JsonReader.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

#include "data/Text.h"

namespace pelta::viewer {

namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view blanks = " \t\r\n";
constexpr std::string_view digits = "0123456789";

bool isInWord(char letter) {
    return (letter >= '0' && letter <= '9') || (letter >= 'a' && letter <= 'z') ||
           (letter >= 'A' && letter <= 'Z') || letter == '-' || letter == '+' || letter == '.';
}

bool takeOneOf(std::string_view& text, std::string_view signs) {
    const bool isThere = !text.empty() && signs.find(text.front()) != std::string_view::npos;
    text.remove_prefix(isThere ? 1 : 0);
    return isThere;
}

bool takeDigits(std::string_view& text) {
    const auto count = std::min(text.find_first_not_of(digits), text.size());
    text.remove_prefix(count);
    return count > 0;
}

bool isNumber(std::string_view text) {
    takeOneOf(text, "-");
    if (!takeOneOf(text, "0") && !takeDigits(text)) {
        return false;
    }
    if (takeOneOf(text, ".") && !takeDigits(text)) {
        return false;
    }
    if (takeOneOf(text, "eE")) {
        takeOneOf(text, "+-");
        if (!takeDigits(text)) {
            return false;
        }
    }
    return text.empty();
}

/// The letter behind a backslash as what it stands for, or 0.
char unescaped(char letter) {
    constexpr std::string_view letters = "\"\\/bfnrt";
    constexpr std::string_view meanings = "\"\\/\b\f\n\r\t";
    const auto place = letters.find(letter);
    return place == std::string_view::npos ? '\0' : meanings[place];
}

bool isSurrogate(std::uint32_t unit, std::uint32_t first) {
    return unit >= first && unit < first + 0x400;
}

}  // namespace

std::optional<JsonFault> JsonReader::read() {
    at_ = text_.starts_with(byteOrderMark) ? byteOrderMark.size() : 0;
    while (readValue() && readBehindValue()) {
    }
    return fault_;
}

/// Reads up to the end of a scalar, or of the opening bracket of what is empty.
bool JsonReader::readValue() {
    for (;;) {
        skipBlanks();
        const char bracket = isAtEnd() ? '\0' : text_[at_];
        if (bracket != '{' && bracket != '[') {
            return readScalar();
        }
        ++at_;
        open_ += bracket;
        if (!(bracket == '{' ? handler_.startObject() : handler_.startArray())) {
            return false;
        }
        skipBlanks();
        if (isAt(closing())) {
            return true;
        }
        if (bracket == '{' && !readKey()) {
            return false;
        }
    }
}

/// Closes what ends behind a value and goes on to the next one.
/// @return false at the end of the text, too.
bool JsonReader::readBehindValue() {
    for (;;) {
        skipBlanks();
        if (open_.empty()) {
            return !isAtEnd() && unexpected();
        }
        if (take(',')) {
            return open_.back() == '[' || readKey();
        }
        if (!take(closing())) {
            return unexpected();
        }
        const bool isObject = open_.back() == '{';
        open_.pop_back();
        if (!(isObject ? handler_.endObject() : handler_.endArray())) {
            return false;
        }
    }
}

bool JsonReader::readKey() {
    skipBlanks();
    std::string_view name;
    if (!isAt('"')) {
        return unexpected();
    }
    if (!readText(name) || !handler_.key(name)) {
        return false;
    }
    skipBlanks();
    return take(':') || unexpected();
}

bool JsonReader::readScalar() {
    ScalarValue value;
    if (isAt('"')) {
        value.kind = ScalarValue::Kind::text;
        return readText(value.text) && handler_.scalar(value);
    }
    const std::size_t start = at_;
    while (!isAtEnd() && isInWord(text_[at_])) {
        ++at_;
    }
    const std::string_view word = text_.substr(start, at_ - start);
    if (word.empty()) {
        return unexpected();
    }
    if (word == "true" || word == "false") {
        value.kind = ScalarValue::Kind::boolean;
    } else if (word != "null" && !readNumber(word, value)) {
        const bool isMeantAsNumber = digits.find(word.back()) != std::string_view::npos;
        return fail(start, isMeantAsNumber ? "invalid number" : "invalid literal");
    }
    return handler_.scalar(value);
}

bool JsonReader::readNumber(std::string_view word, ScalarValue& value) {
    const bool isInfinite = word == "Infinity" || word == "-Infinity";
    if (!isInfinite && word != "NaN" && !isNumber(word)) {
        return false;
    }
    decoded_ = word;
    value = {ScalarValue::Kind::number, std::strtod(decoded_.c_str(), nullptr), word};
    return true;
}

/// Reads a text from its opening quote on.
bool JsonReader::readText(std::string_view& text) {
    const std::size_t start = at_++;
    std::size_t plain = at_;  // start of what is not decoded yet
    decoded_.clear();
    while (!isAtEnd() && !isAt('"')) {
        if (static_cast<unsigned char>(text_[at_]) < 0x20) {
            return fail(at_, "invalid string: a control character stands in it");
        }
        if (!isAt('\\')) {
            ++at_;
            continue;
        }
        decoded_.append(text_, plain, at_ - plain);
        if (!readEscape()) {
            return false;
        }
        plain = at_;
    }
    if (isAtEnd()) {
        return unexpected();
    }
    text = text_.substr(plain, at_ - plain);
    if (plain > start + 1) {
        text = decoded_.append(text);
    }
    ++at_;
    if (!isUtf8(text)) {
        handler_.textIsNotUtf8(start);
        text = {};
    }
    return true;
}

/// Decodes an escape from its backslash on. Half a surrogate pair becomes what is not UTF-8.
bool JsonReader::readEscape() {
    const char meaning = at_ + 1 < text_.size() ? unescaped(text_[at_ + 1]) : '\0';
    if (meaning != '\0') {
        decoded_ += meaning;
        at_ += 2;
        return true;
    }
    const auto unit = codeUnitAt(at_);
    if (!unit) {
        return fail(at_, "invalid string: an escape in it is unknown");
    }
    constexpr std::size_t length = 6;
    at_ += length;
    constexpr std::uint32_t firstHigh = 0xD800;
    constexpr std::uint32_t firstLow = 0xDC00;
    const auto low = isSurrogate(*unit, firstHigh) ? codeUnitAt(at_) : std::nullopt;
    if (low && isSurrogate(*low, firstLow)) {
        at_ += length;
        appendUtf8(decoded_, 0x10000 + ((*unit - firstHigh) << 10U) + (*low - firstLow));
    } else {
        appendUtf8(decoded_, *unit);
    }
    return true;
}

/// What "\\u" and four hexadecimal digits stand for.
std::optional<std::uint32_t> JsonReader::codeUnitAt(std::size_t position) const {
    const std::string_view escape = text_.substr(position, 6);
    if (escape.size() < 6 || !escape.starts_with("\\u")) {
        return std::nullopt;
    }
    std::uint32_t unit = 0;
    for (const char letter : escape.substr(2)) {
        const auto digit = hexDigit(letter);
        if (!digit) {
            return std::nullopt;
        }
        unit = unit * 16 + *digit;
    }
    return unit;
}

bool JsonReader::take(char sign) {
    const bool isThere = isAt(sign);
    at_ += isThere ? 1 : 0;
    return isThere;
}

void JsonReader::skipBlanks() {
    at_ = std::min(text_.find_first_not_of(blanks, at_), text_.size());
}

bool JsonReader::fail(std::size_t position, std::string reason) {
    fault_ = JsonFault{position, std::move(reason)};
    return false;
}

bool JsonReader::unexpected() {
    if (isAtEnd()) {
        return fail(at_, "unexpected end of input");
    }
    const auto code = static_cast<unsigned char>(text_[at_]);
    return fail(at_, code > 0x20 && code < 0x7F ? "unexpected '" + std::string(1, text_[at_]) + "'"
                                                : "unexpected byte " + std::to_string(code));
}

}  // namespace pelta::viewer
