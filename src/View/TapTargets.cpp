#include "View/TapTargets.h"

#include <algorithm>
#include <cstdint>
#include <variant>

#include "View/LayerStacking.h"

namespace pelta {

namespace {

constexpr CGFloat reach = 22;          // Points; half the side of the square around a finger.
constexpr CGFloat pointerReach = 1;    // Points; as far as a mouse's pointer is from what it points at.
constexpr CGFloat nearestStep = 0.25;  // Points; distances that differ by less count as equal.

bool wantsTaps(const PgmShape& shape) {
    return shape.touchEvent() && shape.isVisible();
}

void appendLayers(std::vector<std::string>& identifiers, const PgmShape& shape) {
    for (const auto& layer : shape.styleLayers()) {
        identifiers.push_back(layer->identifier());
    }
}

}  // namespace

TapTargets::Hits TapTargets::hitsWithin(CGFloat distance, std::span<const std::string> layers) const {
    const CGRect box{{point_.x - distance, point_.y - distance}, {2 * distance, 2 * distance}};
    Hits hits;
    for (const auto& feature : engine_.visibleFeaturesInRect(box, layers)) {
        const auto* value = feature->attribute("shapeIndex");
        const auto* index = value != nullptr ? std::get_if<std::uint64_t>(value) : nullptr;
        const auto found = index != nullptr ? shapes_.find(*index) : shapes_.end();
        if (found != shapes_.end() && wantsTaps(*found->second)) {
            hits.push_back({found->second, feature->kind()});
        }
    }
    return hits;
}

TapTargets::Hits TapTargets::hitsInReach() const {
    std::vector<std::string> layers;
    layers.reserve(shapes_.size());
    for (const auto& [index, shape] : shapes_) {
        if (wantsTaps(*shape)) {
            appendLayers(layers, *shape);
        }
    }
    // No names would ask for all layers.
    return layers.empty() ? Hits{} : hitsWithin(reach, layers);
}

std::shared_ptr<PgmShape> TapTargets::topmostOf(const Hits& hits) {
    const auto highest = std::max_element(hits.begin(), hits.end(), [](const Hit& one, const Hit& other) {
        return isStackedBelow(*one.shape, *other.shape);
    });
    return highest != hits.end() ? highest->shape : nullptr;
}

TapTargets::Hits TapTargets::withoutAreas(Hits hits) {
    std::erase_if(hits, [](const Hit& hit) { return hit.kind == MLNShapeKind::polygon; });
    return hits;
}

std::shared_ptr<PgmShape> TapTargets::topmost() const {
    return topmostOf(hitsInReach());
}

std::shared_ptr<PgmShape> TapTargets::nearest() const {
    const Hits all = hitsInReach();
    const Hits hits = nearestOf(withoutAreas(all));
    return topmostOf(hits.empty() ? all : hits);
}

TapTargets::Hits TapTargets::nearestOf(Hits hits) const {
    if (hits.size() <= 1) {
        return hits;
    }
    const auto hitsAmongThese = [&](CGFloat distance) {
        std::vector<std::string> layers;
        for (const Hit& hit : hits) {
            appendLayers(layers, *hit.shape);
        }
        return withoutAreas(hitsWithin(distance, layers));
    };
    const Hits there = hitsAmongThese(0);
    Hits symbols = there;
    std::erase_if(symbols, [](const Hit& hit) { return hit.kind != MLNShapeKind::point; });
    if (!there.empty()) {
        return symbols.empty() ? there : symbols;
    }
    CGFloat tooNear = 0;
    for (CGFloat farEnough = reach; hits.size() > 1 && farEnough - tooNear > nearestStep;) {
        const CGFloat middle = (tooNear + farEnough) / 2;
        Hits nearer = hitsAmongThese(middle);
        (nearer.empty() ? tooNear : farEnough) = middle;
        if (!nearer.empty()) {
            hits = std::move(nearer);
        }
    }
    return hits;
}

bool TapTargets::isDrawnThere() const {
    const bool isAnyMeant = std::any_of(shapes_.begin(), shapes_.end(),
                                        [](const auto& entry) { return wantsTaps(*entry.second); });
    return isAnyMeant && !hitsWithin(pointerReach, {}).empty();
}

}  // namespace pelta
