#include "Engine/StyleDocumentReader.h"

#include <algorithm>
#include <cstddef>
#include <nlohmann/json.hpp>
#include <unordered_map>
#include <unordered_set>

#include "Engine/StyleLayerFields.h"

namespace pelta {
namespace {

constexpr std::size_t deepestNesting = 128;
constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

/// Walks the text for the parser and lets the reader see how far it has come.
class PositionedByte {
 public:
    using iterator_category = std::input_iterator_tag;
    using value_type = char;
    using difference_type = std::ptrdiff_t;
    using pointer = const char*;
    using reference = const char&;

    PositionedByte(const char* byte, const char*& furthest) : byte_(byte), furthest_(&furthest) {}
    reference operator*() const { return *byte_; }
    PositionedByte& operator++() {
        ++byte_;
        *furthest_ = byte_;
        return *this;
    }
    PositionedByte operator++(int) {
        auto before = *this;
        ++*this;
        return before;
    }
    friend bool operator!=(const PositionedByte& a, const PositionedByte& b) { return a.byte_ != b.byte_; }

 private:
    const char* byte_;
    const char** furthest_;
};

/// Takes the parser's events and keeps what the map view needs of a style document. Every event answers
/// whether to go on.
class StyleDocumentEvents : public nlohmann::json_sax<nlohmann::json> {
 public:
    explicit StyleDocumentEvents(StyleDocument& document) : document_(document) {}

    [[nodiscard]] const std::string& problem() const noexcept { return problem_; }

    bool null() override { return takeValue({}); }
    bool boolean(bool /*value*/) override { return takeValue({}); }
    bool number_integer(number_integer_t value) override { return takeNumber(static_cast<double>(value)); }
    bool number_unsigned(number_unsigned_t value) override { return takeNumber(static_cast<double>(value)); }
    bool number_float(number_float_t value, const string_t& /*text*/) override { return takeNumber(value); }
    bool string(string_t& value) override { return takeValue({JsonValue::Kind::text, value, 0}); }
    bool binary(binary_t& /*value*/) override { return takeValue({}); }
    bool key(string_t& name) override;
    bool start_object(std::size_t /*size*/) override { return beginContainer(true); }
    bool start_array(std::size_t /*size*/) override { return beginContainer(false); }
    bool end_object() override { return endContainer(); }
    bool end_array() override { return endContainer(); }
    bool parse_error(std::size_t /*position*/, const std::string& lastToken,
                     const nlohmann::detail::exception& /*error*/) override;

    /// Checks what only the whole document shows.
    void finish();

 private:
    bool fail(std::string problem) {
        problem_ = std::move(problem);
        return false;
    }
    bool failInLayer(const std::string& problem) {
        return fail("layers[" + std::to_string(document_.layers.size()) + "]: " + problem);
    }
    bool takeNumber(double number) { return takeValue({JsonValue::Kind::number, {}, number}); }
    bool takeValue(const JsonValue& value);
    bool takeTopValue(const JsonValue& value);
    bool beginContainer(bool isObject);
    bool beginTopContainer(bool isObject);
    bool endContainer();
    bool endLayer();
    [[nodiscard]] bool isIn(std::string_view topKey, std::size_t depth) const {
        return depth_ == depth && topKey_ == topKey;
    }

    StyleDocument& document_;
    StyleLayerFields layer_;
    std::unordered_set<std::string> layerIdentifiers_;
    std::string problem_;
    std::string topKey_;
    std::string layerKey_;
    std::string layoutKey_;
    std::size_t depth_ = 0;
    bool hasVersion_ = false;
    bool hasSources_ = false;
    bool hasLayers_ = false;
};

bool StyleDocumentEvents::key(string_t& name) {
    if (depth_ == 1) {
        topKey_ = name;
    } else if (isIn("sources", 2)) {
        document_.sourceIdentifiers.push_back(name);
    } else if (isIn("layers", 3)) {
        layerKey_ = name;
    } else if (isIn("layers", 4)) {
        layoutKey_ = name;
    }
    return true;
}

bool StyleDocumentEvents::takeValue(const JsonValue& value) {
    if (depth_ == 0) {
        return fail("the document is not an object; a style document begins with {");
    }
    if (depth_ == 1) {
        return takeTopValue(value);
    }
    if (isIn("sources", 2)) {
        return fail("the source \"" + document_.sourceIdentifiers.back() +
                    "\" is not an object; describe each source by an object with a \"type\"");
    }
    if (isIn("layers", 2)) {
        return failInLayer("it is not an object; describe each layer by an object with \"id\" and \"type\"");
    }
    if (isIn("layers", 3)) {
        const auto problem = layer_.take(layerKey_, value);
        return problem.empty() || failInLayer(problem);
    }
    if (isIn("layers", 4) && layerKey_ == "layout" && layoutKey_ == "visibility") {
        layer_.takeVisibility(value);
    }
    return true;
}

bool StyleDocumentEvents::takeTopValue(const JsonValue& value) {
    if (topKey_ == "version") {
        hasVersion_ = value.kind == JsonValue::Kind::number && value.number == 8;
        return hasVersion_ || fail("\"version\" is not 8; only style documents of version 8 can be drawn");
    }
    if (topKey_ == "sources") {
        return fail("\"sources\" is not an object; write an object with one entry for each source, or {}");
    }
    if (topKey_ == "layers") {
        return fail("\"layers\" is not a list; write a list of layers, or []");
    }
    if (topKey_ == "name" && value.kind == JsonValue::Kind::text) {
        document_.name = value.text;
    }
    return true;
}

bool StyleDocumentEvents::beginTopContainer(bool isObject) {
    const bool isSources = topKey_ == "sources";
    const bool isLayers = topKey_ == "layers";
    if (topKey_ == "version" || (isSources && !isObject) || (isLayers && isObject)) {
        return takeTopValue({});
    }
    // Of two entries with the same name the later one counts, as everywhere in JSON.
    if (isSources) {
        document_.sourceIdentifiers.clear();
        hasSources_ = true;
    } else if (isLayers) {
        document_.layers.clear();
        layerIdentifiers_.clear();
        hasLayers_ = true;
    }
    return true;
}

bool StyleDocumentEvents::beginContainer(bool isObject) {
    if (depth_ == deepestNesting) {
        return fail("values are nested deeper than " + std::to_string(deepestNesting) +
                    " levels; flatten the document");
    }
    bool isGood = true;
    if (depth_ == 0) {
        isGood = isObject || takeValue({});
    } else if (depth_ == 1) {
        isGood = beginTopContainer(isObject);
    } else if (isIn("layers", 2)) {
        layer_ = {};
        isGood = isObject || takeValue({});
    } else if (isIn("layers", 3) || (isIn("sources", 2) && !isObject)) {
        isGood = takeValue({});
    }
    ++depth_;
    return isGood;
}

bool StyleDocumentEvents::endContainer() {
    --depth_;
    return isIn("layers", 2) ? endLayer() : true;
}

bool StyleDocumentEvents::endLayer() {
    if (const auto problem = layer_.finish(); !problem.empty()) {
        return failInLayer(problem);
    }
    const auto& layer = layer_.layer();
    if (!layerIdentifiers_.insert(layer.identifier).second) {
        return failInLayer("another layer has the \"id\" \"" + layer.identifier +
                           "\" too; give each layer an identifier of its own");
    }
    document_.layers.push_back(layer);
    return true;
}

bool StyleDocumentEvents::parse_error(std::size_t /*position*/, const std::string& lastToken,
                                      const nlohmann::detail::exception& error) {
    constexpr std::size_t longestToken = 40;
    const bool isNumber = error.id == 406;  // a number that no double can hold
    const std::string token =
        lastToken.size() > longestToken ? lastToken.substr(0, longestToken) + "…" : lastToken;
    return fail(isNumber ? "the number " + token + " is too large; write one within the range of a double"
                         : "the text is not JSON near \"" + token +
                               "\"; correct it there, or check that the "
                               "address leads to a style document");
}

void StyleDocumentEvents::finish() {
    if (!hasVersion_) {
        fail("\"version\" is missing; write \"version\": 8");
    } else if (!hasSources_) {
        fail("\"sources\" is missing; write an object with one entry for each source, or {}");
    } else if (!hasLayers_) {
        fail("\"layers\" is missing; write a list of layers, or []");
    }
    const std::unordered_set<std::string> sources(document_.sourceIdentifiers.begin(),
                                                  document_.sourceIdentifiers.end());
    for (std::size_t i = 0; i < document_.layers.size() && problem_.empty(); ++i) {
        const auto& layer = document_.layers[i];
        if (!layer.sourceIdentifier.empty() && sources.count(layer.sourceIdentifier) == 0) {
            fail("layers[" + std::to_string(i) + "]: its source \"" + layer.sourceIdentifier +
                 "\" is not among the document's \"sources\"; add it or name another");
        }
    }
}

/// Line and column, counted from 1, of the byte before a position.
std::string describePlace(std::string_view text, std::size_t position) {
    const auto before = text.substr(0, position == 0 ? 0 : position - 1);
    const auto line = std::count(before.begin(), before.end(), '\n') + 1;
    const auto lineStart = before.rfind('\n');
    const auto column = before.size() - (lineStart == std::string_view::npos ? 0 : lineStart + 1) + 1;
    return "line " + std::to_string(line) + ", column " + std::to_string(column);
}

bool isBlank(std::string_view text) {
    return text.find_first_not_of(" \t\r\n") == std::string_view::npos;
}

}  // namespace

StyleDocumentResult readStyleDocument(std::string text, std::string address) {
    if (text.starts_with(byteOrderMark)) {
        text.erase(0, byteOrderMark.size());
    }
    const std::string name = address.empty() ? "style text" : "style document " + address;
    if (isBlank(text)) {
        return {std::nullopt, name + ": the text is empty; give a style document in JSON"};
    }
    StyleDocument document;
    StyleDocumentEvents events(document);
    const char* furthest = text.data();
    const char* const end = text.data() + text.size();
    if (!nlohmann::json::sax_parse(PositionedByte(text.data(), furthest), PositionedByte(end, furthest),
                                   &events)) {
        const auto position = static_cast<std::size_t>(furthest - text.data());
        return {std::nullopt, name + ": " + describePlace(text, position) + ": " + events.problem()};
    }
    events.finish();
    if (!events.problem().empty()) {
        return {std::nullopt, name + ": " + events.problem()};
    }
    document.text = std::move(text);
    document.address = std::move(address);
    return {std::move(document), {}};
}

}  // namespace pelta
