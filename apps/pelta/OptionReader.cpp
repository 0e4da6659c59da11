#include "OptionReader.h"

#include <charconv>
#include <cmath>

namespace pelta::command {

std::string_view OptionReader::take() {
    const std::string_view word = rest_.front();
    rest_ = rest_.subspan(1);
    return word;
}

std::optional<std::string_view> OptionReader::next() {
    while (!rest_.empty()) {
        const std::string_view word = take();
        if (word == "--") {
            others_.insert(others_.end(), rest_.begin(), rest_.end());
            rest_ = {};
        } else if (word.size() < 2 || word.front() != '-') {
            others_.push_back(word);
        } else {
            const auto equals = word.find('=');
            attached_.reset();
            if (equals != std::string_view::npos) {
                attached_ = word.substr(equals + 1);
            }
            return word.substr(0, equals);
        }
    }
    return std::nullopt;
}

std::optional<std::string_view> OptionReader::value() {
    if (attached_) {
        return attached_;
    }
    return rest_.empty() ? std::nullopt : std::optional(take());
}

namespace {

template <class Number>
std::optional<Number> readAll(std::string_view text) {
    Number number{};
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && stop == end ? std::optional(number) : std::nullopt;
}

}  // namespace

std::optional<double> readNumber(std::string_view text) {
    const auto number = readAll<double>(text);
    return number && std::isfinite(*number) ? number : std::nullopt;
}

std::optional<long long> readWholeNumber(std::string_view text) {
    return readAll<long long>(text);
}

}  // namespace pelta::command
