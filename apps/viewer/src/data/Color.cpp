#include "data/Color.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

#include "data/Text.h"

namespace pelta::viewer {

namespace {

constexpr std::array<std::pair<std::string_view, std::uint32_t>, 17> namedColors{{
    {"aqua", 0x00FFFF},
    {"black", 0x000000},
    {"blue", 0x0000FF},
    {"fuchsia", 0xFF00FF},
    {"gray", 0x808080},
    {"green", 0x008000},
    {"lime", 0x00FF00},
    {"maroon", 0x800000},
    {"navy", 0x000080},
    {"olive", 0x808000},
    {"orange", 0xFFA500},
    {"purple", 0x800080},
    {"red", 0xFF0000},
    {"silver", 0xC0C0C0},
    {"teal", 0x008080},
    {"white", 0xFFFFFF},
    {"yellow", 0xFFFF00},
}};

char lowerCase(char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

std::optional<std::uint32_t> hexColor(std::string_view digits) {
    if (digits.size() != 3 && digits.size() != 6) {
        return std::nullopt;
    }
    std::uint32_t value = 0;
    for (const char letter : digits) {
        const auto digit = hexDigit(letter);
        if (!digit) {
            return std::nullopt;
        }
        // A digit of the short form stands for two equal ones.
        value = digits.size() == 3 ? value << 8 | *digit * 0x11 : value << 4 | *digit;
    }
    return value;
}

std::optional<std::uint32_t> namedColor(std::string_view text) {
    const auto found = std::find_if(namedColors.begin(), namedColors.end(), [text](const auto& named) {
        return std::equal(text.begin(), text.end(), named.first.begin(), named.first.end(),
                          [](char a, char b) { return lowerCase(a) == b; });
    });
    return found == namedColors.end() ? std::nullopt : std::optional(found->second);
}

}  // namespace

std::optional<UIColor> parseColor(std::string_view text) {
    const bool isMarked = !text.empty() && text.front() == '#';
    auto value = hexColor(isMarked ? text.substr(1) : text);
    if (!value && !isMarked) {
        value = namedColor(text);
    }
    if (!value) {
        return std::nullopt;
    }
    const auto component = [value](int shift) { return (*value >> shift & 0xFF) / 255.0; };
    return UIColor{component(16), component(8), component(0), 1};
}

}  // namespace pelta::viewer
