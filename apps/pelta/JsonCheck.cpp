#include "JsonCheck.h"

#include <algorithm>
#include <new>
#include <string_view>

namespace pelta::command {

namespace {

namespace od = simdjson::ondemand;

constexpr int depthLimit = 128;
constexpr std::string_view digits = "0123456789";

/// Takes digits off the text.
/// @return true when there was one at least.
bool takeDigits(std::string_view& text) {
    const auto count = std::min(text.find_first_not_of(digits), text.size());
    text.remove_prefix(count);
    return count > 0;
}

bool take(std::string_view& text, std::string_view signs) {
    const bool isThere = !text.empty() && signs.find(text.front()) != std::string_view::npos;
    text.remove_prefix(isThere ? 1 : 0);
    return isThere;
}

/// By the grammar alone: numbers too large for any number of ours are still numbers.
bool isNumber(std::string_view text) {
    take(text, "-");
    if (!take(text, "0") && !takeDigits(text)) {
        return false;
    }
    if (take(text, ".") && !takeDigits(text)) {
        return false;
    }
    if (take(text, "eE")) {
        take(text, "+-");
        if (!takeDigits(text)) {
            return false;
        }
    }
    return text.empty();
}

template <class Json>
std::string faultInArray(Json& json, int depth) {
    for (auto element : json.get_array()) {
        od::value part;
        if (const auto error = element.get(part)) {
            return described(error);
        }
        if (auto fault = faultIn(part, depth + 1); !fault.empty()) {
            return fault;
        }
    }
    return {};
}

template <class Json>
std::string faultInObject(Json& json, int depth) {
    for (auto member : json.get_object()) {
        std::string_view key;
        od::value part;
        if (const auto error = member.unescaped_key().get(key)) {
            return described(error);
        }
        if (const auto error = member.value().get(part)) {
            return described(error);
        }
        if (auto fault = faultIn(part, depth + 1); !fault.empty()) {
            return fault;
        }
    }
    return {};
}

template <class Json>
std::string faultInScalar(Json& json, od::json_type type) {
    if (type == od::json_type::string) {
        return json.get_string().error() == simdjson::SUCCESS ? "" : "one of its texts is not valid";
    }
    std::string_view word;
    if (const auto error = simdjson::simdjson_result<std::string_view>(json.raw_json_token()).get(word)) {
        return described(error);
    }
    word = word.substr(0, word.find_last_not_of(" \t\r\n") + 1);
    if (type == od::json_type::number) {
        return isNumber(word) ? "" : "one of its numbers is not valid";
    }
    const bool isWord = word == "true" || word == "false" || word == "null";
    return isWord ? "" : "one of its words is not valid";
}

template <class Json>
std::string faultInJson(Json& json, int depth) {
    if (depth > depthLimit) {
        return "it is nested deeper than " + std::to_string(depthLimit) + " levels";
    }
    od::json_type type{};
    if (const auto error = json.type().get(type)) {
        return described(error);
    }
    return type == od::json_type::array    ? faultInArray(json, depth)
           : type == od::json_type::object ? faultInObject(json, depth)
                                           : faultInScalar(json, type);
}

}  // namespace

std::string faultIn(od::value value, int depth) {
    return faultInJson(value, depth);
}

std::string faultIn(od::document& document) {
    return faultInJson(document, 0);
}

std::string described(simdjson::error_code error) {
    if (error == simdjson::MEMALLOC) {
        throw std::bad_alloc();
    }
    if (error == simdjson::CAPACITY) {
        return "it is larger than 4 GiB";
    }
    return std::string("it is not valid JSON: ") + simdjson::error_message(error);
}

}  // namespace pelta::command
