#include <algorithm>
#include <set>
#include <unordered_set>
#include <utility>

#include "RunLayerJson.h"
#include "StyleCompiler.h"

namespace pelta {

/// A layer of the model in which something was found, and what.
struct StyleCompiler::Found {
    const ModelLayer* layer = nullptr;
    std::shared_ptr<const MLNFeature> feature;
};

std::vector<std::string> StyleCompiler::engineLayers(std::span<const std::string> candidates) const {
    std::vector<std::string> names;
    const auto add = [&names](const ModelLayer& layer) {
        if (layer.isLiteral) {
            names.push_back(layer.layer->identifier());
        } else if (layer.run != nullptr) {
            names.push_back(runLayerIdentifier(*layer.run));
        }
    };
    if (candidates.empty()) {
        for (const EngineLayer& layer : planner_.layers()) {
            if (layer.run != nullptr || layer.literal->drawn != nullptr) {
                add(layer.run ? *layer.run->members.front() : *layer.literal);
            }
        }
    }
    for (const std::string& candidate : candidates) {
        if (const auto known = layersByName_.find(candidate); known != layersByName_.end()) {
            add(*known->second);
        }
    }
    std::sort(names.begin(), names.end());
    names.erase(std::unique(names.begin(), names.end()), names.end());
    return names;
}

StyleCompiler::Found StyleCompiler::found(const EngineHit& hit, const std::string& engineLayer) const {
    if (const auto known = layersByName_.find(engineLayer); known != layersByName_.end()) {
        const ModelLayer& layer = *known->second;
        const auto source = layer.drawn ? sources_.find(layer.drawn->sourceIdentifier()) : sources_.end();
        if (source == sources_.end() || hit.feature >= source->second.features.size()) {
            return {};
        }
        return {&layer, {source->second.shapes.contents(), source->second.features[hit.feature]}};
    }
    const std::optional<MLNStyleLayerKind> kind = runLayerKind(engineLayer);
    const RunFeature* feature = features_.find(hit.feature);
    const ModelLayer* layer = feature && kind ? feature->layers[kindIndex(*kind)] : nullptr;
    const MLNShape* shape = layer && layer->place ? layer->place->drawableShape() : nullptr;
    return shape ? Found{layer, {layer->shapes->contents(), shape}} : Found{};
}

std::vector<std::shared_ptr<const MLNFeature>> StyleCompiler::features(
    std::span<const std::string> candidates, std::span<const std::string> engineLayers,
    std::span<const EngineHit> hits) const {
    std::unordered_set<const ModelLayer*> wanted;
    for (const std::string& candidate : candidates) {
        if (const auto known = layersByName_.find(candidate); known != layersByName_.end()) {
            wanted.insert(known->second);
        }
    }
    std::vector<Found> all;
    for (const EngineHit& hit : hits) {
        Found each = hit.layer < engineLayers.size() ? found(hit, engineLayers[hit.layer]) : Found{};
        if (each.layer != nullptr && (candidates.empty() || wanted.count(each.layer) != 0)) {
            all.push_back(std::move(each));
        }
    }
    std::stable_sort(all.begin(), all.end(),
                     [](const Found& a, const Found& b) { return a.layer->rank > b.layer->rank; });
    std::vector<std::shared_ptr<const MLNFeature>> result;
    std::set<std::pair<const ModelLayer*, const MLNFeature*>> seen;
    for (Found& each : all) {
        if (seen.emplace(each.layer, each.feature.get()).second) {
            result.push_back(std::move(each.feature));
        }
    }
    return result;
}

}  // namespace pelta
