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

std::vector<std::shared_ptr<PgmShape>> ShapeRegistry::shapesNow() const {
    std::vector<std::shared_ptr<PgmShape>> present;
    present.reserve(shapes_.size());
    for (const auto& [index, shape] : shapes_) {
        present.push_back(shape);
    }
    return present;
}

void ShapeRegistry::add(const std::shared_ptr<PgmShape>& shape) {
    shapesToRemove_.erase(shape->shapeIndex());
    shapes_.insert_or_assign(shape->shapeIndex(), shape);
    withdrawLayers(*shape, style());
    draw(*shape);
}

void ShapeRegistry::remove(const std::shared_ptr<PgmShape>& shape) {
    shapesToRemove_.insert_or_assign(shape->shapeIndex(), shape);
    shapes_.erase(shape->shapeIndex());
    pendingWork_.reorderShapes = true;
    triggerRepaint();
    if (dynamic_cast<const PgmInfoWindow*>(shape.get()) != nullptr) {
        retirePicture(shape->shapeImage());
    }
    pendingWork_.checkShapeImage = pendingWork_.checkShapeImage || !retiredPictures_.isEmpty();
}

void ShapeRegistry::draw(PgmShape& shape) {
    if (style() == nullptr) {
        return;
    }
    const auto held = shape.weak_from_this().lock();
    shape.updateLayerProperty();
    if (auto* window = dynamic_cast<PgmInfoWindow*>(&shape); window != nullptr && window->isAttached()) {
        window->iconImageCheck();
    }
    requestEverything();
}

std::shared_ptr<MLNShapeSource> ShapeRegistry::source(std::string_view identifier) const {
    const auto* present = style();
    return present ? present->sourceWithIdentifier(identifier) : nullptr;
}

void ShapeRegistry::updateSource(std::string_view identifier) {
    if (!source(identifier)) {
        return;
    }
    std::vector<std::shared_ptr<MLNShape>> features;
    features.reserve(shapes_.size());
    for (const auto& shape : shapesNow()) {
        if (shape->isAttached()) {
            appendFlattened(features, shape->feature());
        }
    }
    if (const auto updated = source(identifier)) {
        updated->setShape(MLNShapeCollectionFeature::shapeCollectionWithShapes(std::move(features)));
    }
}

void ShapeRegistry::reorder() {
    // Released last: a shape's destruction may run the application's code.
    const auto removed = std::exchange(shapesToRemove_, {});
    auto* present = style();
    if (present == nullptr) {
        return;
    }
    for (const auto& [index, shape] : removed) {
        removeLayers(*present, *shape);
    }

    std::vector<const PgmShape*> sorted;
    sorted.reserve(shapes_.size());
    for (const auto& [index, shape] : shapes_) {
        sorted.push_back(shape.get());
    }
    sortShapes(sorted);
    stackLayers(*present, sorted, firstSymbolLayer_);
}

ShapeRegistry::Pictures ShapeRegistry::neededPictures() const {
    Pictures needed;
    if (style() == nullptr) {
        return needed;
    }
    for (const auto& shape : shapesNow()) {
        auto image = shape->shapeImage();
        // Neighbours mostly show the same image, so a look at the pointer spares most look-ups by name.
        if (image && (needed.empty() || image != needed.back())) {
            needed.push_back(std::move(image));
        }
    }
    return needed;
}

void ShapeRegistry::putIntoStyle(const Pictures& pictures) const {
    auto* present = style();
    if (present == nullptr) {
        return;
    }
    for (const auto& picture : pictures) {
        if (present->imageForName(picture->reuseIdentifier()) == nullptr) {
            present->setImage(picture->image(), picture->reuseIdentifier());
        }
    }
}

void ShapeRegistry::checkImages() {
    putIntoStyle(neededPictures());
}

void ShapeRegistry::retirePicture(std::shared_ptr<PgmImage> picture) {
    const auto* present = style();
    if (picture && present != nullptr) {
        retiredPictures_.add(std::move(picture), *present);
    }
}

void ShapeRegistry::styleDidLoad(MLNStyle& style) {
    style.addSource(std::make_shared<MLNShapeSource>(std::string(sourceIdentifier)));
    hasLoadedStyle_ = true;
    firstSymbolLayer_ = firstSymbolLayerOf(style);
    retiredPictures_.clear();
    for (const auto& shape : shapesNow()) {
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
        const auto needed = neededPictures();
        putIntoStyle(needed);
        removeRetiredPictures(needed);
    }
}

void ShapeRegistry::removeRetiredPictures(const Pictures& needed) {
    auto* present = style();
    if (present != nullptr && retiredPictures_.update(needed, *present)) {
        pendingWork_.checkShapeImage = true;
        triggerRepaint();
    }
}

}  // namespace pelta
