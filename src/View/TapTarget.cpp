#include "View/TapTarget.h"

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

#include "View/LayerStacking.h"

namespace pelta {

namespace {

constexpr CGFloat reach = 22;  // Points; half the side of the square around a finger.

/// The layers of all shapes that want taps.
std::vector<std::string> touchableLayers(const ShapeRegistry::Shapes& shapes) {
    std::vector<std::string> identifiers;
    identifiers.reserve(shapes.size());
    for (const auto& [index, shape] : shapes) {
        if (shape->touchEvent() && shape->isVisible()) {
            for (const auto& layer : shape->styleLayers()) {
                identifiers.push_back(layer->identifier());
            }
        }
    }
    return identifiers;
}

/// The shape that a feature belongs to; null when it is no shape's.
std::shared_ptr<PgmShape> shapeOf(const MLNFeature& feature, const ShapeRegistry::Shapes& shapes) {
    const auto* value = feature.attribute("shapeIndex");
    const auto* index = value != nullptr ? std::get_if<std::uint64_t>(value) : nullptr;
    const auto found = index != nullptr ? shapes.find(*index) : shapes.end();
    return found != shapes.end() ? found->second : nullptr;
}

}  // namespace

std::shared_ptr<PgmShape> tapTarget(const ShapeRegistry::Shapes& shapes, const MLNMapView& engine,
                                    CGPoint point) {
    const auto layers = touchableLayers(shapes);
    if (layers.empty()) {
        return nullptr;  // No names would ask for all layers.
    }
    const CGRect box{{point.x - reach, point.y - reach}, {2 * reach, 2 * reach}};
    std::shared_ptr<PgmShape> topmost;
    for (const auto& feature : engine.visibleFeaturesInRect(box, layers)) {
        auto shape = shapeOf(*feature, shapes);
        if (shape && shape->touchEvent() && (!topmost || isStackedBelow(*topmost, *shape))) {
            topmost = std::move(shape);
        }
    }
    return topmost;
}

}  // namespace pelta
