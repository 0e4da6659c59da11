#include <algorithm>

#include <pelta/Engine/MLNStyle.h>
#include <pelta/Platform/Log.h>

namespace pelta {

MLNStyle::MLNStyle(std::string name, std::function<void()> didChange)
    : name_(std::move(name)), didChange_(std::move(didChange)) {}

MLNStyle::~MLNStyle() {
    const auto forget = [this](MLNStyleLayer& layer) {
        layer.style_ = layer.style_ == this ? nullptr : layer.style_;
        layer.drawnIn_ = layer.drawnIn_ == this ? nullptr : layer.drawnIn_;
        layer.listedIn_ = layer.listedIn_ == this ? nullptr : layer.listedIn_;
    };
    for (const auto& layer : layers_) {
        forget(*layer);
    }
    for (const auto& layer : removedLayers_) {
        forget(*layer);
    }
    for (const auto& layer : changedLayers_) {
        forget(*layer);
    }
    for (const auto& [identifier, source] : sources_) {
        source->style_ = nullptr;
    }
}

std::string MLNStyle::description() const {
    return "MLNStyle \"" + name_ + "\" with " + std::to_string(layers_.size()) + " layers";
}

std::shared_ptr<MLNStyleLayer> MLNStyle::layerWithIdentifier(std::string_view identifier) const {
    const auto position = layerPositions_.find(identifier);
    return position == layerPositions_.end() ? nullptr : *position->second;
}

void MLNStyle::addLayer(const std::shared_ptr<MLNStyleLayer>& layer) {
    insert(layer, layers_.end());
}

void MLNStyle::insertLayerBelow(const std::shared_ptr<MLNStyleLayer>& layer, const MLNStyleLayer& sibling) {
    if (sibling.style_ != this) {
        dPrint("the layer \"" + sibling.identifier() + "\", below which to insert, is not in the style");
        return;
    }
    insert(layer, layerPositions_.find(sibling.identifier())->second);
}

void MLNStyle::insertLayerAbove(const std::shared_ptr<MLNStyleLayer>& layer, const MLNStyleLayer& sibling) {
    if (sibling.style_ != this) {
        dPrint("the layer \"" + sibling.identifier() + "\", above which to insert, is not in the style");
        return;
    }
    insert(layer, std::next(layerPositions_.find(sibling.identifier())->second));
}

void MLNStyle::insert(const std::shared_ptr<MLNStyleLayer>& layer, Layers::const_iterator position) {
    if (layer == nullptr) {
        return;
    }
    if (layer->style_ != nullptr) {
        dPrint("the layer \"" + layer->identifier() + "\" is in a style already");
        return;
    }
    if (layer->isFromDocument_ && layer->drawnIn_ != this) {
        dPrint("the layer \"" + layer->identifier() + "\" has gone from its style document for good");
        return;
    }
    const auto [entry, isFree] = layerPositions_.try_emplace(layer->identifier_);
    if (!isFree) {
        dPrint("the style has another layer with the identifier \"" + layer->identifier() + "\"");
        return;
    }
    entry->second = layers_.insert(position, layer);
    layer->style_ = this;
    isLayerOrderTouched_ = true;
    markEntered(layer);
}

void MLNStyle::markEntered(const std::shared_ptr<MLNStyleLayer>& layer) {
    if (layer->drawnIn_ != this) {
        layer->drawnIn_ = nullptr;
        layer->changes_ = MLNStyleLayer::everythingChanged;
    }
    if (layer->changes_ != 0) {
        listAsChanged(layer);
    }
    noteChange();
}

void MLNStyle::removeLayer(const MLNStyleLayer& layer) {
    if (layer.style_ != this) {
        return;
    }
    const auto position = layerPositions_.find(layer.identifier());
    auto owner = std::move(*position->second);
    layers_.erase(position->second);
    layerPositions_.erase(position);
    owner->style_ = nullptr;
    isLayerOrderTouched_ = true;
    if (owner->drawnIn_ == this) {
        removedLayers_.push_back(std::move(owner));
    }
    noteChange();
}

void MLNStyle::addDocumentLayer(const std::shared_ptr<MLNStyleLayer>& layer) {
    if (layer == nullptr || layer->style_ != nullptr || layerPositions_.count(layer->identifier()) != 0) {
        return;
    }
    layerPositions_.emplace(layer->identifier_, layers_.insert(layers_.end(), layer));
    layer->style_ = this;
    layer->drawnIn_ = this;
    layer->isFromDocument_ = true;
    layer->changes_ = 0;
    drawnOrder_.push_back(layer.get());
}

void MLNStyle::addSource(const std::shared_ptr<MLNShapeSource>& source) {
    if (source == nullptr) {
        return;
    }
    const auto& identifier = source->identifier();
    if (source->style_ != nullptr || sources_.count(identifier) != 0) {
        dPrint("the source \"" + identifier + "\" is in a style already, or its identifier is taken");
        return;
    }
    touchSource(identifier);
    sources_.emplace(identifier, source);
    source->style_ = this;
}

std::shared_ptr<MLNShapeSource> MLNStyle::sourceWithIdentifier(std::string_view identifier) const {
    const auto source = sources_.find(identifier);
    return source == sources_.end() ? nullptr : source->second;
}

void MLNStyle::removeSource(const MLNShapeSource& source) {
    if (source.style_ != this) {
        return;
    }
    const auto entry = sources_.find(source.identifier());
    touchSource(entry->first);
    entry->second->style_ = nullptr;
    sources_.erase(entry);
}

const UIImage* MLNStyle::imageForName(std::string_view name) const {
    const auto image = images_.find(name);
    return image == images_.end() ? nullptr : &image->second;
}

void MLNStyle::setImage(UIImage image, std::string_view name) {
    touchImage(name);
    images_.insert_or_assign(std::string(name), std::move(image));
}

void MLNStyle::removeImageForName(std::string_view name) {
    if (const auto image = images_.find(name); image != images_.end()) {
        touchImage(name);
        images_.erase(image);
    }
}

}  // namespace pelta
