/// The reader of style documents: what it accepts is a style that it accepts again, and what it refuses it
/// explains.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
#include <nlohmann/json.hpp>
#include <set>
#include <tuple>

#include "Engine/StyleDocumentReader.h"
#include "Require.h"

namespace {

using namespace pelta;
using nlohmann::json;
using pelta::fuzz::require;

std::string typeOf(const DocumentLayer& layer) {
    using Kind = MLNStyleLayerKind;
    static const std::map<Kind, std::string> names{{Kind::background, "background"},
                                                   {Kind::fill, "fill"},
                                                   {Kind::line, "line"},
                                                   {Kind::symbol, "symbol"},
                                                   {Kind::other, "circle"}};
    return names.at(layer.kind);
}

/// The document as the reader understood it.
std::string written(const StyleDocument& document) {
    json style{
        {"version", 8}, {"name", document.name}, {"sources", json::object()}, {"layers", json::array()}};
    for (const std::string& identifier : document.sourceIdentifiers) {
        style["sources"][identifier] = {{"type", "geojson"}};
    }
    for (const DocumentLayer& layer : document.layers) {
        json entry{{"id", layer.identifier},
                   {"type", typeOf(layer)},
                   {"minzoom", layer.minimumZoomLevel},
                   {"maxzoom", layer.maximumZoomLevel},
                   {"layout", {{"visibility", layer.isVisible ? "visible" : "none"}}}};
        if (!layer.sourceIdentifier.empty()) {
            entry["source"] = layer.sourceIdentifier;
        }
        style["layers"].push_back(std::move(entry));
    }
    return style.dump(-1, ' ', false, json::error_handler_t::replace);
}

void requireSound(const StyleDocument& document) {
    std::set<std::string> identifiers;
    const std::set<std::string> sources(document.sourceIdentifiers.begin(), document.sourceIdentifiers.end());
    for (const DocumentLayer& layer : document.layers) {
        require(identifiers.insert(layer.identifier).second, "identifiers of layers differ",
                layer.identifier);
        require(layer.sourceIdentifier.empty() || sources.count(layer.sourceIdentifier) == 1,
                "a layer's source exists", layer.identifier);
        require(layer.minimumZoomLevel >= 0 && layer.minimumZoomLevel <= 24 && layer.maximumZoomLevel >= 0 &&
                    layer.maximumZoomLevel <= 24,
                "zooms of layers are from 0 to 24", layer.identifier);
    }
}

bool isSame(const DocumentLayer& one, const DocumentLayer& other) {
    const auto parts = [](const DocumentLayer& layer) {
        return std::tie(layer.identifier, layer.kind, layer.sourceIdentifier, layer.minimumZoomLevel,
                        layer.maximumZoomLevel, layer.isVisible);
    };
    return parts(one) == parts(other);
}

void requireReadAgain(const StyleDocument& document) {
    const std::string text = written(document);
    const auto again = readStyleDocument(text, document.address);
    require(again.document.has_value(), "a style that was read is read again", again.message + "\n" + text);
    require(again.document->name == document.name, "its name is kept", text);
    const auto& layers = again.document->layers;
    require(std::equal(layers.begin(), layers.end(), document.layers.begin(), document.layers.end(), isSame),
            "its layers are kept", text);
    auto sources = document.sourceIdentifiers;
    std::sort(sources.begin(), sources.end());
    sources.erase(std::unique(sources.begin(), sources.end()), sources.end());
    require(again.document->sourceIdentifiers == sources, "its sources are kept", text);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(bytes), size);
    const auto result = readStyleDocument(text, "style.json");
    require(result.document.has_value() == result.message.empty(), "a style is read or refused",
            result.message);
    if (result.document) {
        require(json::accept(result.document->text), "a style is JSON", text);
        requireSound(*result.document);
        requireReadAgain(*result.document);
    } else {
        require(result.message.starts_with("style document style.json: "), "a refusal names the document",
                result.message);
    }
    return 0;
}
