#include "MapFonts.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <string_view>

#include "CssText.h"

namespace pelta {

namespace {

bool isUpper(char character) {
    return std::isupper(static_cast<unsigned char>(character)) != 0;
}

bool isLower(char character) {
    return std::islower(static_cast<unsigned char>(character)) != 0;
}

/// "NotoSansRegular" as "Noto Sans Regular".
std::string withBlanks(std::string_view name) {
    std::string spaced;
    for (std::size_t i = 0; i < name.size(); ++i) {
        if (i > 0 && isUpper(name[i]) && isLower(name[i - 1])) {
            spaced += ' ';
        }
        spaced += name[i];
    }
    return spaced;
}

/// The name without a weight at its end.
std::string familyOf(const std::string& spaced) {
    constexpr std::array<std::string_view, 6> weights{" Regular", " Normal", " Bold",
                                                      " Medium",  " Light",  " Black"};
    for (const std::string_view weight : weights) {
        if (spaced.size() > weight.size() && spaced.substr(spaced.size() - weight.size()) == weight) {
            return spaced.substr(0, spaced.size() - weight.size());
        }
    }
    return spaced;
}

void addOnce(std::vector<std::string>& stack, std::string family) {
    // The engine joins the stack with commas.
    std::erase(family, ',');
    if (!family.empty() && std::find(stack.begin(), stack.end(), family) == stack.end()) {
        stack.push_back(std::move(family));
    }
}

}  // namespace

std::vector<std::string> localFontStack(const std::vector<std::string>& fontNames) {
    std::vector<std::string> stack;
    for (const std::string& name : fontNames) {
        const std::string spaced = withBlanks(name);
        addOnce(stack, spaced);
        addOnce(stack, familyOf(spaced));
    }
    std::string_view rest = localFontFamilies;
    while (!rest.empty()) {
        const std::size_t comma = std::min(rest.find(','), rest.size());
        addOnce(stack, std::string(rest.substr(0, comma)));
        rest.remove_prefix(std::min(comma + 1, rest.size()));
    }
    return stack;
}

}  // namespace pelta
