#include "data/GeoJsonReader.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <utility>

#include "data/GeoJsonEvents.h"

namespace pelta::viewer {

namespace {

constexpr std::string_view blanks = " \t\r\n";

bool isInToken(char letter) {
    return (letter >= '0' && letter <= '9') || (letter >= 'a' && letter <= 'z') ||
           (letter >= 'A' && letter <= 'Z') || letter == '-' || letter == '+' || letter == '.';
}

/// True for what programs write for numbers that are none, and for numbers that no double holds.
bool isNonFiniteNumber(std::string_view token) {
    if (token == "NaN" || token == "Infinity" || token == "-Infinity") {
        return true;
    }
    const bool isNumber = token.front() == '-' || (token.front() >= '0' && token.front() <= '9');
    const bool canOverflow = token.size() > 300 || token.find_first_of("eE") != std::string_view::npos;
    return isNumber && canOverflow && std::isinf(std::strtod(std::string(token).c_str(), nullptr));
}

/// The text with every number that is not finite replaced by null: JSON has no such numbers, and a parser
/// would stop at the first one although only its feature is at fault.
///
/// @param storage  holds the result when it differs from the text.
std::string_view withoutNonFiniteNumbers(std::string_view text, std::string& storage) {
    std::size_t copied = 0;
    for (std::size_t i = 0; i < text.size();) {
        if (text[i] == '"') {
            for (++i; i < text.size() && text[i] != '"'; ++i) {
                i += text[i] == '\\' ? 1 : 0;
            }
            ++i;
        } else if (isInToken(text[i])) {
            const std::size_t start = i;
            while (i < text.size() && isInToken(text[i])) {
                ++i;
            }
            if (isNonFiniteNumber(text.substr(start, i - start))) {
                storage.append(text, copied, start - copied).append("null");
                copied = i;
            }
        } else {
            ++i;
        }
    }
    return copied == 0 ? text : std::string_view(storage.append(text, copied));
}

/// The parser's reason without its own labels: what stands after " - ", up to what it read last.
std::string plainReason(std::string_view reason) {
    const auto start = reason.find(" - ");
    if (start == std::string_view::npos) {
        return "it cannot be read";
    }
    reason.remove_prefix(start + 3);
    return std::string(reason.substr(0, reason.find(';')));
}

std::string placeOf(std::string_view text, std::size_t position) {
    const std::string_view before = text.substr(0, std::min(position, text.size()));
    const auto lines = std::count(before.begin(), before.end(), '\n');
    const auto lineStart = before.rfind('\n');
    const std::size_t column = before.size() - (lineStart == std::string_view::npos ? 0 : lineStart + 1);
    return "line " + std::to_string(lines + 1) + ", column " + std::to_string(column);
}

}  // namespace

MapData readGeoJson(std::string_view text, std::string name) {
    MapData data;
    data.name = std::move(name);
    if (text.find_first_not_of(blanks) == std::string_view::npos) {
        data.addProblem(std::nullopt, "the file is empty");
        return data;
    }
    std::string storage;
    text = withoutNonFiniteNumbers(text, storage);
    GeoJsonEvents events(data);
    nlohmann::json::sax_parse(text.begin(), text.end(), &events);
    if (const auto& fault = events.syntaxFault()) {
        data.addProblem(fault->feature,
                        "not JSON at " + placeOf(text, fault->position) + ": " + plainReason(fault->reason) +
                            (data.featureCount > 0 ? "; the features before it are kept" : ""));
    }
    return data;
}

}  // namespace pelta::viewer
