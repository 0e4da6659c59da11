#include "View/LayerStacking.h"

#include <algorithm>
#include <span>
#include <tuple>

namespace pelta {

namespace {

using Position = MLNStyle::Layers::const_iterator;

/// Puts a layer directly below a position.
/// @return the position of what is now the lowest of the layers that were put there.
Position putBelow(MLNStyle& style, Position position, const std::shared_ptr<MLNVectorStyleLayer>& layer) {
    const auto& layers = style.layers();
    if (position != layers.end() && *position == layer) {
        return position;
    }
    if (position != layers.begin() && *std::prev(position) == layer) {
        return std::prev(position);
    }
    style.removeLayer(*layer);
    if (position == layers.end()) {
        style.addLayer(layer);
    } else {
        style.insertLayerBelow(layer, **position);
    }
    const bool isAccepted = layer->style() == &style;
    return isAccepted ? std::prev(position) : position;
}

/// Stacks from the highest layer downwards: new shapes are mostly the highest, so that all others are found
/// in place.
void stackBelow(MLNStyle& style, Position position, std::span<const PgmShape* const> sortedShapes) {
    for (auto shape = sortedShapes.rbegin(); shape != sortedShapes.rend(); ++shape) {
        const auto& layers = (*shape)->styleLayers();
        for (auto layer = layers.rbegin(); layer != layers.rend(); ++layer) {
            position = putBelow(style, position, *layer);
        }
    }
}

}  // namespace

bool isStackedBelow(const PgmShape& one, const PgmShape& other) noexcept {
    return std::tuple(one.globalZIndex(), one.zIndex(), one.shapeIndex()) <
           std::tuple(other.globalZIndex(), other.zIndex(), other.shapeIndex());
}

void sortShapes(std::vector<const PgmShape*>& shapes) {
    std::sort(shapes.begin(), shapes.end(),
              [](const PgmShape* a, const PgmShape* b) { return isStackedBelow(*a, *b); });
}

void removeLayers(MLNStyle& style, const PgmShape& shape) {
    for (const auto& layer : shape.styleLayers()) {
        style.removeLayer(*layer);
    }
}

void withdrawLayers(const PgmShape& shape, const MLNStyle* kept) {
    for (const auto& layer : shape.styleLayers()) {
        if (auto* holder = layer->style(); holder != nullptr && holder != kept) {
            holder->removeLayer(*layer);
        }
    }
}

void stackLayers(MLNStyle& style, const std::vector<const PgmShape*>& sortedShapes,
                 const std::optional<std::string>& firstSymbolLayer) {
    const auto symbolLayer = firstSymbolLayer ? style.layerWithIdentifier(*firstSymbolLayer) : nullptr;
    std::size_t belowLabels = 0;
    if (symbolLayer) {
        const auto aboveLabels =
            std::find_if(sortedShapes.begin(), sortedShapes.end(),
                         [](const PgmShape* shape) { return shape->globalZIndex() >= 0; });
        belowLabels = static_cast<std::size_t>(aboveLabels - sortedShapes.begin());
    }
    const std::span shapes(sortedShapes);
    stackBelow(style, style.layers().end(), shapes.subspan(belowLabels));
    if (belowLabels > 0) {
        const auto& layers = style.layers();
        stackBelow(style, std::find(layers.begin(), layers.end(), symbolLayer), shapes.first(belowLabels));
    }
}

}  // namespace pelta
