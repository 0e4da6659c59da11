#include "StyleCompiler.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

#include "FeatureJson.h"
#include "LayerJson.h"

namespace pelta {

namespace {

/// Marks the elements of a longest ascending run of `ranks`, which need not be adjacent.
std::vector<bool> longestAscendingRun(const std::vector<std::size_t>& ranks) {
    std::vector<std::size_t> ends;  // Index of the smallest last element of a run of each length.
    std::vector<std::size_t> previous(ranks.size(), ranks.size());
    for (std::size_t i = 0; i < ranks.size(); ++i) {
        const auto longer =
            std::lower_bound(ends.begin(), ends.end(), ranks[i],
                             [&](std::size_t end, std::size_t rank) { return ranks[end] < rank; });
        if (longer != ends.begin()) {
            previous[i] = *(longer - 1);
        }
        if (longer == ends.end()) {
            ends.push_back(i);
        } else {
            *longer = i;
        }
    }
    std::vector<bool> isInRun(ranks.size(), false);
    for (std::size_t i = ends.empty() ? ranks.size() : ends.back(); i < ranks.size(); i = previous[i]) {
        isInRun[i] = true;
    }
    return isInRun;
}

/// The layers that can stay where they are while the others are moved around them.
std::unordered_set<std::string> stayingLayers(const std::vector<std::string>& former,
                                              const MLNStyle::Layers& wanted) {
    std::unordered_map<std::string_view, std::size_t> formerRank;
    for (std::size_t i = 0; i < former.size(); ++i) {
        formerRank.emplace(former[i], i);
    }
    std::vector<std::size_t> ranks;
    std::vector<const std::string*> names;
    for (const auto& layer : wanted) {
        if (const auto found = formerRank.find(layer->identifier()); found != formerRank.end()) {
            ranks.push_back(found->second);
            names.push_back(&layer->identifier());
        }
    }
    const std::vector<bool> stays = longestAscendingRun(ranks);
    std::unordered_set<std::string> staying;
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (stays[i]) {
            staying.insert(*names[i]);
        }
    }
    return staying;
}

void writeNameOrNull(JsonWriter& json, const std::string& name) {
    if (name.empty()) {
        json.null();
    } else {
        json.value(name);
    }
}

}  // namespace

void StyleCompiler::reset(const StyleDocument& document) {
    order_.clear();
    layers_.clear();
    sources_.clear();
    for (const DocumentLayer& layer : document.layers) {
        order_.push_back(layer.identifier);
        layers_.insert(layer.identifier);
    }
}

std::string StyleCompiler::compile(const MLNStyle& style, const MLNStyleChanges& changes) {
    calls_ = {};
    newLayers_.clear();
    calls_.beginArray();
    removeLayers(changes);
    removeSources(style, changes);
    compileSources(changes);
    if (changes.isLayerOrderChanged || !changes.removedLayers.empty()) {
        compileOrder(style);
    }
    compileProperties(changes);
    calls_.endArray();
    return calls_.take();
}

void StyleCompiler::beginCall(std::optional<std::string_view> source, std::string_view method) {
    calls_.beginArray();
    if (source) {
        calls_.value(*source);
    } else {
        calls_.null();
    }
    calls_.value(method);
}

void StyleCompiler::removeLayers(const MLNStyleChanges& changes) {
    for (const std::string& identifier : changes.removedLayers) {
        if (layers_.erase(identifier) != 0) {
            beginCall({}, "removeLayer");
            calls_.value(identifier);
            calls_.endArray();
        }
    }
    if (!changes.removedLayers.empty()) {
        std::erase_if(order_, [&](const std::string& identifier) { return !hasLayer(identifier); });
    }
}

void StyleCompiler::removeSources(const MLNStyle& style, const MLNStyleChanges& changes) {
    for (const std::string& identifier : changes.removedSources) {
        const bool isBack = style.sourceWithIdentifier(identifier) != nullptr;
        if (!isBack && sources_.erase(identifier) != 0) {
            beginCall({}, "removeSource");
            calls_.value(identifier);
            calls_.endArray();
        }
    }
}

void StyleCompiler::compileSources(const MLNStyleChanges& changes) {
    // Far enough for every zoom that a map has; beyond it positions would be rounded to coarser steps.
    constexpr int deepestTiles = 22;
    // Points by which a line may be straightened; the engine's own 0.375 shows as corners in circles.
    constexpr double simplification = 0.05;
    for (const auto& source : changes.changedSources) {
        const std::string& identifier = source->identifier();
        const bool isNew = sources_.count(identifier) == 0;
        CompiledSource& compiled = sources_[identifier];
        compiled.shape = source->shape();
        compiled.features = featuresOf(compiled.shape.get());
        if (isNew) {
            beginCall({}, "addSource");
            calls_.value(identifier);
            calls_.beginObject();
            calls_.member("type", "geojson");
            calls_.member("maxzoom", deepestTiles);
            calls_.member("tolerance", simplification);
            calls_.key("data");
            writeFeatures(calls_, compiled.features);
            calls_.endObject();
            writeUnchecked(calls_);
        } else {
            beginCall(identifier, "setData");
            writeFeatures(calls_, compiled.features);
        }
        calls_.endArray();
    }
}

void StyleCompiler::compileOrder(const MLNStyle& style) {
    const auto staying = stayingLayers(order_, style.layers());
    order_.clear();
    std::string above;  // The layer that the next one comes directly below; none at the top.
    for (auto layer = style.layers().rbegin(); layer != style.layers().rend(); ++layer) {
        const std::string& identifier = (*layer)->identifier();
        if (layers_.insert(identifier).second) {
            newLayers_.insert(identifier);
            beginCall({}, "addLayer");
            writeLayer(calls_, **layer);
            writeNameOrNull(calls_, above);
            writeUnchecked(calls_);
            calls_.endArray();
        } else if (staying.count(identifier) == 0) {
            beginCall({}, "moveLayer");
            calls_.value(identifier);
            writeNameOrNull(calls_, above);
            calls_.endArray();
        }
        above = identifier;
        order_.push_back(identifier);
    }
    std::reverse(order_.begin(), order_.end());
}

void StyleCompiler::compileProperties(const MLNStyleChanges& changes) {
    for (const auto& layer : changes.changedLayers) {
        if (hasLayer(layer->identifier()) && newLayers_.count(layer->identifier()) == 0) {
            writeLayerChanges(calls_, *layer, layer->changes());
        }
    }
}

std::shared_ptr<const MLNFeature> StyleCompiler::feature(const std::string& source, std::size_t index) const {
    const auto found = sources_.find(source);
    if (found == sources_.end() || index >= found->second.features.size()) {
        return nullptr;
    }
    return {found->second.shape, found->second.features[index]};
}

}  // namespace pelta
