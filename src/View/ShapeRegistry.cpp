#include "View/ShapeRegistry.h"

#include <algorithm>

#include <pelta/Annotations/PgmInfoWindow.h>
#include <pelta/Platform/Dispatch.h>

#include "View/LayerStacking.h"

namespace pelta {

namespace {

/// The lowest layer that draws labels of the base map.
std::optional<std::string> firstSymbolLayerOf(const MLNStyle& style) {
    const auto& layers = style.layers();
    const auto symbol = std::find_if(layers.begin(), layers.end(), [](const auto& layer) {
        return layer->kind() == MLNStyleLayerKind::symbol;
    });
    return symbol == layers.end() ? std::nullopt : std::optional((*symbol)->identifier());
}

void appendFlattened(std::vector<std::shared_ptr<MLNShape>>& list, std::shared_ptr<MLNShape> feature) {
    if (!feature) {
        return;
    }
    if (feature->kind() != MLNShapeKind::collection) {
        list.push_back(std::move(feature));
        return;
    }
    const auto& members = static_cast<const MLNShapeCollectionFeature&>(*feature).shapes();
    list.insert(list.end(), members.begin(), members.end());
}

}  // namespace

ShapeRegistry::ShapeRegistry() = default;
ShapeRegistry::~ShapeRegistry() = default;

MLNStyle* ShapeRegistry::style() const {
    return engine_ ? engine_->style() : nullptr;
}

void ShapeRegistry::triggerRepaint() {
    if (engine_) {
        engine_->triggerRepaint();
    }
}

void ShapeRegistry::requestEverything() {
    pendingWork_ = {true, true, true};
    triggerRepaint();
}

void ShapeRegistry::add(const std::shared_ptr<PgmShape>& shape) {
    shapesToRemove_.erase(shape->shapeIndex());
    shapes_.insert_or_assign(shape->shapeIndex(), shape);
    MainQueue::sync([this, &shape] { draw(*shape); });
}

void ShapeRegistry::remove(const std::shared_ptr<PgmShape>& shape) {
    shapesToRemove_.insert_or_assign(shape->shapeIndex(), shape);
    shapes_.erase(shape->shapeIndex());
    pendingWork_.reorderShapes = true;
    triggerRepaint();
}

void ShapeRegistry::draw(PgmShape& shape) {
    if (style() == nullptr) {
        return;
    }
    shape.updateLayerProperty();
    if (auto* window = dynamic_cast<PgmInfoWindow*>(&shape); window != nullptr && window->isAttached()) {
        window->iconImageCheck();
    }
    requestEverything();
}

void ShapeRegistry::updateSource(std::string_view identifier) {
    auto* present = style();
    const auto source = present ? present->sourceWithIdentifier(identifier) : nullptr;
    if (!source) {
        return;
    }
    std::vector<std::shared_ptr<MLNShape>> features;
    features.reserve(shapes_.size());
    for (const auto& [index, shape] : shapes_) {
        if (shape->isAttached()) {
            appendFlattened(features, shape->feature());
        }
    }
    source->setShape(MLNShapeCollectionFeature::shapeCollectionWithShapes(std::move(features)));
}

void ShapeRegistry::reorder() {
    auto* present = style();
    if (present == nullptr) {
        return;
    }
    for (const auto& [index, shape] : shapesToRemove_) {
        removeLayers(*shape);
    }
    // Released last: a shape's destruction may run the application's code.
    const auto removed = std::exchange(shapesToRemove_, {});

    std::vector<const PgmShape*> sorted;
    sorted.reserve(shapes_.size());
    for (const auto& [index, shape] : shapes_) {
        sorted.push_back(shape.get());
    }
    sortShapes(sorted);
    stackLayers(*present, sorted, firstSymbolLayer_);
}

void ShapeRegistry::checkImages() {
    auto* present = style();
    if (present == nullptr) {
        return;
    }
    // Neighbours mostly show the same image, so a look at the pointer spares most look-ups by name.
    std::shared_ptr<PgmImage> lastChecked;
    for (const auto& [index, shape] : shapes_) {
        auto image = shape->shapeImage();
        if (!image || image == lastChecked) {
            continue;
        }
        if (present->imageForName(image->reuseIdentifier()) == nullptr) {
            present->setImage(image->image(), image->reuseIdentifier());
        }
        lastChecked = std::move(image);
    }
}

void ShapeRegistry::styleDidLoad(MLNStyle& style) {
    style.addSource(std::make_shared<MLNShapeSource>(std::string(sourceIdentifier)));
    hasLoadedStyle_ = true;
    firstSymbolLayer_ = firstSymbolLayerOf(style);

    std::vector<std::shared_ptr<PgmShape>> waiting;
    for (const auto& [index, shape] : shapes_) {
        waiting.push_back(shape);
    }
    for (const auto& shape : waiting) {
        shape->updateLayerProperty();
        if (const auto window = std::dynamic_pointer_cast<PgmInfoWindow>(shape)) {
            MainQueue::async([weak = std::weak_ptr(window)] {
                const auto living = weak.lock();
                if (living && living->isAttached()) {
                    living->iconImageCheck();
                }
            });
        }
        requestEverything();
    }
}

void ShapeRegistry::doPendingWork() {
    if (std::exchange(pendingWork_.reorderShapes, false)) {
        reorder();
    }
    if (std::exchange(pendingWork_.updateShapes, false)) {
        updateSource(sourceIdentifier);
    }
    if (std::exchange(pendingWork_.checkShapeImage, false)) {
        checkImages();
    }
}

}  // namespace pelta
