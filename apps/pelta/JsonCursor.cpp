#include "JsonCursor.h"

#include <algorithm>
#include <array>

namespace pelta::command {

namespace {

constexpr std::string_view blanks = " \t\r\n";
constexpr std::string_view wordEnds = " \t\r\n,:[]{}\"";

constexpr std::array<bool, 256> tableOf(std::string_view signs) {
    std::array<bool, 256> table{};
    for (const char sign : signs) {
        table[static_cast<unsigned char>(sign)] = true;
    }
    return table;
}

/// The signs that tell how deep a place lies.
constexpr std::array<bool, 256> isStructure = tableOf("[]{}\"");

}  // namespace

bool JsonCursor::isAtEnd() {
    at_ = std::min(text_.find_first_not_of(blanks, at_), text_.size());
    return at_ == text_.size();
}

bool JsonCursor::take(char sign) {
    if (isAtEnd() || text_[at_] != sign) {
        return false;
    }
    ++at_;
    return true;
}

std::string_view JsonCursor::takeValue() {
    if (isAtEnd()) {
        return {};
    }
    const std::size_t start = at_;
    const char first = text_[at_];
    if (first == '{' || first == '[') {
        return passBrackets() ? text_.substr(start, at_ - start) : std::string_view();
    }
    if (first == '"') {
        return passText() ? text_.substr(start, at_ - start) : std::string_view();
    }
    at_ = std::min(text_.find_first_of(wordEnds, at_), text_.size());
    return text_.substr(start, at_ - start);
}

bool JsonCursor::passText() {
    std::size_t at = at_ + 1;
    while (at < text_.size() && text_[at] != '"') {
        at += text_[at] == '\\' ? 2 : 1;
    }
    at_ = std::min(at + 1, text_.size());
    return at < text_.size();
}

bool JsonCursor::passBrackets() {
    awaited_.clear();
    do {
        passToStructure();
        if (at_ == text_.size()) {
            return false;
        }
        const char sign = text_[at_];
        if (sign == '"') {
            if (!passText()) {
                return false;
            }
            continue;
        }
        if (sign == '{' || sign == '[') {
            awaited_.push_back(sign == '{' ? '}' : ']');
        } else if (awaited_.back() == sign) {
            awaited_.pop_back();
        } else {
            return false;
        }
        ++at_;
    } while (!awaited_.empty());
    return true;
}

void JsonCursor::passToStructure() {
    std::size_t at = at_;
    while (at < text_.size() && !isStructure[static_cast<unsigned char>(text_[at])]) {
        ++at;
    }
    at_ = at;
}

}  // namespace pelta::command
