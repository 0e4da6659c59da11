#include "CoordinateLine.h"

#include <algorithm>
#include <charconv>

namespace pelta::command {

namespace {

constexpr std::string_view blanks = " \t";
constexpr std::string_view separators = " \t,";

void skipBlanks(std::string_view& text) {
    text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
}

/// Takes the first word off the text.
std::string_view takeWord(std::string_view& text) {
    const std::string_view word = text.substr(0, text.find_first_of(separators));
    text.remove_prefix(word.size());
    return word;
}

/// Never looks at the locale. A leading plus sign, which people write, is allowed.
bool readNumber(std::string_view word, double& number) {
    if (word.size() > 1 && word[0] == '+' && word[1] != '-') {
        word.remove_prefix(1);
    }
    const char* end = word.data() + word.size();
    const auto [stop, error] = std::from_chars(word.data(), end, number);
    return error == std::errc() && stop == end;
}

}  // namespace

CoordinateLine CoordinateLine::read(std::string_view line) {
    CoordinateLine result;
    skipBlanks(line);
    const std::string_view first = takeWord(line);
    skipBlanks(line);
    if (line.starts_with(',')) {
        line.remove_prefix(1);
        skipBlanks(line);
    }
    const std::string_view second = takeWord(line);
    line.remove_prefix(line.empty() ? 0 : 1);
    result.rest = line;
    if (!readNumber(first, result.x)) {
        result.problem = "the line does not start with a number";
    } else if (second.empty()) {
        result.problem = "there is no second number";
    } else if (!readNumber(second, result.y)) {
        result.problem = "the second word is not a number";
    }
    return result;
}

bool isComment(std::string_view line) {
    skipBlanks(line);
    return line.empty() || line.front() == '#';
}

}  // namespace pelta::command
