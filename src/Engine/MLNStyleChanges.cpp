#include <algorithm>

#include <pelta/Engine/MLNStyle.h>

// How a style keeps track of what a port has not drawn yet.
//
// A layer remembers the style in whose last frame it was drawn. So one that is taken out and put back between
// frames, as re-stacking does with every layer, is known for the same and costs nothing at the next frame.
// Sources and images note, when they are first touched, whether the port has them.

namespace pelta {

void MLNStyle::noteChange() {
    if (!hasChanges_) {
        hasChanges_ = true;
        didChange_();
    }
}

void MLNStyle::layerDidChange(MLNStyleLayer& layer) {
    if (layer.listedIn_ != this) {
        listAsChanged(*layerPositions_.find(layer.identifier())->second);
    }
}

void MLNStyle::listAsChanged(const std::shared_ptr<MLNStyleLayer>& layer) {
    if (layer->listedIn_ != this) {
        layer->listedIn_ = this;
        changedLayers_.push_back(layer);
    }
    noteChange();
}

void MLNStyle::sourceDidChange(const MLNShapeSource& source) {
    touchSource(source.identifier());
}

void MLNStyle::touchSource(const std::string& identifier) {
    touchedSources_.try_emplace(identifier, sources_.count(identifier) != 0);
    noteChange();
}

void MLNStyle::touchImage(std::string_view name) {
    if (touchedImages_.find(name) == touchedImages_.end()) {
        touchedImages_.emplace(name, images_.find(name) != images_.end());
        touchedImageOrder_.emplace_back(name);
    }
    noteChange();
}

void MLNStyle::takeRemovedLayers(MLNStyleChanges& changes) {
    for (const auto& layer : removedLayers_) {
        if (layer->style_ == this && layer->drawnIn_ == this) {
            continue;  // It is back.
        }
        layer->drawnIn_ = layer->drawnIn_ == this ? nullptr : layer->drawnIn_;
        changes.removedLayers.push_back(layer->identifier());
    }
    removedLayers_.clear();
    auto& names = changes.removedLayers;
    std::sort(names.begin(), names.end());
    names.erase(std::unique(names.begin(), names.end()), names.end());
}

bool MLNStyle::takeLayerOrder() {
    std::vector<const MLNStyleLayer*> order;
    order.reserve(layers_.size());
    bool isSame = layers_.size() == drawnOrder_.size();
    for (const auto& layer : layers_) {
        isSame = isSame && layer->drawnIn_ == this && drawnOrder_[order.size()] == layer.get();
        order.push_back(layer.get());
    }
    drawnOrder_ = std::move(order);
    return !isSame;
}

void MLNStyle::takeChangedLayers(MLNStyleChanges& changes) {
    for (auto& layer : changedLayers_) {
        if (layer->listedIn_ != this) {
            continue;  // Listed by another style since, or twice here.
        }
        layer->listedIn_ = nullptr;
        if (layer->style_ == this) {
            layer->drawnIn_ = this;
            changes.changedLayers.push_back(std::move(layer));
        }
    }
    changedLayers_.clear();
}

void MLNStyle::takeSourcesAndImages(MLNStyleChanges& changes) {
    for (const auto& [identifier, wasThere] : touchedSources_) {
        if (auto source = sourceWithIdentifier(identifier)) {
            changes.changedSources.push_back(std::move(source));
        } else if (wasThere) {
            changes.removedSources.push_back(identifier);
        }
    }
    for (auto& name : touchedImageOrder_) {
        if (imageForName(name) != nullptr) {
            changes.changedImages.push_back(std::move(name));
        } else if (touchedImages_.find(name)->second) {
            changes.removedImages.push_back(std::move(name));
        }
    }
    touchedSources_.clear();
    touchedImages_.clear();
    touchedImageOrder_.clear();
}

void MLNStyle::takeChanges(const std::function<void(const MLNStyleChanges&)>& visit) {
    MLNStyleChanges changes;
    if (isLayerOrderTouched_) {
        takeRemovedLayers(changes);
        changes.isLayerOrderChanged = takeLayerOrder();
        isLayerOrderTouched_ = false;
    }
    takeChangedLayers(changes);
    takeSourcesAndImages(changes);
    hasChanges_ = false;
    if (!changes.isEmpty()) {
        visit(changes);
    }
    for (const auto& layer : changes.changedLayers) {
        layer->changes_ = 0;
    }
}

}  // namespace pelta
