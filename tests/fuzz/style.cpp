/// The reader of style documents: what it accepts is sound, and what it refuses it explains.

#include <cstddef>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <set>

#include "Engine/StyleDocumentReader.h"
#include "Require.h"

namespace {

using namespace pelta;
using nlohmann::json;
using pelta::fuzz::require;

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

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(bytes), size);
    const auto result = readStyleDocument(text, "style.json");
    require(result.document.has_value() == result.message.empty(), "a style is read or refused",
            result.message);
    if (result.document) {
        require(json::accept(result.document->text), "a style is JSON", text);
        requireSound(*result.document);
    } else {
        require(result.message.starts_with("style document style.json: "), "a refusal names the document",
                result.message);
    }
    return 0;
}
