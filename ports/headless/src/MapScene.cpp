#include "MapScene.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace pelta {

void MapScene::commit(const MLNStyle& style, const MLNStyleChanges& changes) {
    updateSources(changes);
    updateImages(style, changes);
    if (const std::size_t count = style.layers().size(); count > layers_.capacity()) {
        layers_.reserve(std::max(count, 2 * layers_.capacity()));
        keys_.reserve(layers_.capacity());
        slots_.reserve(count);
    }
    for (const auto& model : changes.changedLayers) {
        updateLayer(model);
    }
    if (changes.isLayerOrderChanged) {
        updateOrder(style);
    }
}

void MapScene::updateLayer(const std::shared_ptr<MLNStyleLayer>& model) {
    auto properties = drawnProperties(*model);
    if (!properties) {
        return;
    }
    const auto [known, isNew] = slots_.try_emplace(model.get(), 0);
    if (isNew) {
        if (freeSlots_.empty()) {
            freeSlots_.push_back(static_cast<std::uint32_t>(layers_.size()));
            layers_.emplace_back();
            keys_.emplace_back();
        }
        known->second = freeSlots_.back();
        freeSlots_.pop_back();
    }
    MapSceneLayer& layer = layers_[known->second];
    layer.model = std::static_pointer_cast<const MLNVectorStyleLayer>(model);
    layer.predicate = layer.model->predicate();
    layer.properties = std::move(*properties);
    keys_[known->second] = {layer.predicate.attribute.empty() ? 0 : hashOfValue(layer.predicate.value),
                            selectionOf(*layer.model),
                            model->minimumZoomLevel(),
                            model->maximumZoomLevel(),
                            model->isVisible(),
                            reachOf(layer.properties)};
}

std::uint32_t MapScene::selectionOf(const MLNVectorStyleLayer& model) {
    const auto known =
        std::find_if(selections_.begin(), selections_.end(), [&model](const MapSelection& selection) {
            return selection.attribute == model.predicate().attribute &&
                   selection.source == model.sourceIdentifier();
        });
    if (known != selections_.end()) {
        return static_cast<std::uint32_t>(known - selections_.begin());
    }
    selections_.push_back({model.sourceIdentifier(), model.predicate().attribute});
    return static_cast<std::uint32_t>(selections_.size() - 1);
}

void MapScene::updateOrder(const MLNStyle& style) {
    std::vector<bool> isInUse(layers_.size());
    order_.clear();
    order_.reserve(style.layers().size());
    for (const auto& model : style.layers()) {
        if (const auto known = slots_.find(model.get()); known != slots_.end()) {
            order_.push_back(known->second);
            isInUse[known->second] = true;
        }
    }
    if (order_.size() == slots_.size()) {
        return;
    }
    for (auto entry = slots_.begin(); entry != slots_.end();) {
        if (isInUse[entry->second]) {
            ++entry;
            continue;
        }
        layers_[entry->second] = {};
        freeSlots_.push_back(entry->second);
        entry = slots_.erase(entry);
    }
}

void MapScene::updateSources(const MLNStyleChanges& changes) {
    for (const std::string& identifier : changes.removedSources) {
        sources_.erase(identifier);
    }
    for (const auto& source : changes.changedSources) {
        sources_[source->identifier()].setShape(source->shape());
    }
}

void MapScene::updateImages(const MLNStyle& style, const MLNStyleChanges& changes) {
    for (const std::string& name : changes.removedImages) {
        imageSizes_.erase(name);
    }
    for (const std::string& name : changes.changedImages) {
        if (const UIImage* image = style.imageForName(name)) {
            const CGSize size = image->size();
            imageSizes_[name] = size;
            largestImage_ = std::max(largestImage_, size.width + size.height);
        }
    }
}

const MapSceneSource* MapScene::source(std::string_view identifier) const noexcept {
    const auto known = sources_.find(identifier);
    return known != sources_.end() ? &known->second : nullptr;
}

std::optional<CGSize> MapScene::imageSize(std::string_view name) const {
    const auto known = imageSizes_.find(name);
    return known != imageSizes_.end() ? std::optional(known->second) : std::nullopt;
}

}  // namespace pelta
