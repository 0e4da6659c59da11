#include "CoordinateLine.h"

#include <algorithm>
#include <charconv>
#include <system_error>

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
/// @return that the word is no number, or one too large or too small to be held; or nothing.
std::errc readNumber(std::string_view word, double& number) {
    if (word.size() > 1 && word[0] == '+' && word[1] != '-') {
        word.remove_prefix(1);
    }
    const char* end = word.data() + word.size();
    const auto [stop, error] = std::from_chars(word.data(), end, number);
    return stop == end ? error : std::errc::invalid_argument;
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
    const std::errc firstError = readNumber(first, result.x);
    const std::errc secondError = readNumber(second, result.y);
    if (firstError == std::errc::invalid_argument) {
        result.problem = "the line does not start with a number";
    } else if (second.empty()) {
        result.problem = "there is no second number";
    } else if (secondError == std::errc::invalid_argument) {
        result.problem = "the second word is not a number";
    } else if (firstError != std::errc() || secondError != std::errc()) {
        result.problem = firstError != std::errc() ? "the first number is out of range"
                                                   : "the second number is out of range";
    }
    return result;
}

bool isComment(std::string_view line) {
    skipBlanks(line);
    return line.empty() || line.front() == '#';
}

}  // namespace pelta::command
