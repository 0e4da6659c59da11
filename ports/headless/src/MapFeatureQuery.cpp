#include "MapFeatureQuery.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <unordered_set>

namespace pelta {

namespace {

/// Symbols further away, as a multiple of the centre's distance, are too small to be drawn.
constexpr double furthestSymbol = 5;
/// Copies of the world beyond those in sight whose symbols may reach into the view.
constexpr double symbolCopies = 1;

/// Name set of a query; the empty one holds every name.
class LayerFilter {
 public:
    explicit LayerFilter(std::span<const std::string> identifiers)
        : names_(identifiers.begin(), identifiers.end()) {}
    [[nodiscard]] bool admits(const MapSceneLayer& layer) const {
        return names_.empty() || names_.count(layer.model->identifier()) > 0;
    }

 private:
    std::unordered_set<std::string_view> names_;
};

MapQuad quadOf(CGRect rect) {
    return {CGPoint{rect.minX(), rect.minY()}, CGPoint{rect.maxX(), rect.minY()},
            CGPoint{rect.maxX(), rect.maxY()}, CGPoint{rect.minX(), rect.maxY()}};
}

MapQueryArea areaOf(CGRect rect, const MapTransform& transform) {
    MapQueryArea area;
    area.screen = quadOf(rect);
    std::transform(area.screen.begin(), area.screen.end(), area.ground.begin(),
                   [&transform](CGPoint corner) { return transform.groundForPoint(corner); });
    return area;
}

}  // namespace

MapFeatureQuery::MapFeatureQuery(const MapScene& scene, MapText& text, const MapTransform& transform,
                                 double zoom, CGRect rect)
    : scene_(scene),
      text_(text),
      transform_(transform),
      zoom_(zoom),
      area_(areaOf(rect, transform)),
      groundBox_(MapBox::around(area_.ground)) {}

MapFeatureQuery::Features MapFeatureQuery::run(std::span<const std::string> layerIdentifiers) {
    const LayerFilter filter(layerIdentifiers);
    Features found;
    const auto& order = scene_.order();
    for (std::size_t i = order.size(); i-- > 0;) {
        const MapSceneLayer& layer = scene_.layer(order[i]);
        if (layer.isDrawnAt(zoom_) && filter.admits(layer)) {
            addHits(layer, found);
        }
    }
    return found;
}

void MapFeatureQuery::addHits(const MapSceneLayer& layer, Features& found) {
    const MapSceneSource* source = scene_.source(layer.model->sourceIdentifier());
    if (source == nullptr) {
        return;
    }
    const auto features = source->featuresMatching(layer.predicate);
    for (std::size_t i = features.size(); i-- > 0;) {
        const std::uint32_t feature = features[i];
        const bool isFound =
            !source->ground(feature).empty() &&
            std::visit([&](const auto& properties) { return isHit(properties, *source, feature); },
                       layer.properties);
        if (isFound) {
            found.push_back(source->sharedFeature(feature));
        }
    }
}

template <class Test>
bool MapFeatureQuery::isTrueInSomeCopy(const MapBox& box, double margin, Test test) const {
    const auto first = static_cast<std::int64_t>(std::ceil(groundBox_.minX - margin - box.maxX));
    const auto last = static_cast<std::int64_t>(std::floor(groundBox_.maxX + margin - box.minX));
    for (std::int64_t copy = first; copy <= last; ++copy) {
        if (test(static_cast<double>(copy))) {
            return true;
        }
    }
    return false;
}

MapQuad MapFeatureQuery::groundSeenFrom(double copy) const {
    MapQuad quad = area_.ground;
    for (CGPoint& corner : quad) {
        corner.x -= copy;
    }
    return quad;
}

bool MapFeatureQuery::isHit(const MapFillProperties& /*layer*/, const MapSceneSource& source,
                            std::uint32_t feature) {
    const MapBox& box = source.box(feature);
    return source.feature(feature).kind() == MLNShapeKind::polygon &&
           isTrueInSomeCopy(box, 0, [&](double copy) {
               return box.shiftedBy(copy).isNear(groundBox_, 0) &&
                      doesAreaTouchQuad(source.ground(feature), groundSeenFrom(copy));
           });
}

bool MapFeatureQuery::isHit(const MapLineProperties& layer, const MapSceneSource& source,
                            std::uint32_t feature) {
    const MLNShape& shape = source.feature(feature);
    const double halfWidth = resolve(layer.width, shape, 1.0) / 2 / transform_.worldSize();
    if (shape.kind() == MLNShapeKind::point || !(halfWidth > 0)) {
        return false;
    }
    const MapBox& box = source.box(feature);
    return isTrueInSomeCopy(box, halfWidth, [&](double copy) {
        return box.shiftedBy(copy).isNear(groundBox_, halfWidth) &&
               isLineNearQuad(source.ground(feature), groundSeenFrom(copy), halfWidth);
    });
}

bool MapFeatureQuery::isHit(const MapSymbolProperties& layer, const MapSceneSource& source,
                            std::uint32_t feature) {
    const MLNShape& shape = source.feature(feature);
    return shape.kind() == MLNShapeKind::point &&
           isTrueInSomeCopy(source.box(feature), symbolCopies, [&](double copy) {
               const CGPoint ground = source.ground(feature).front();
               return isSymbolAt(layer, shape, {ground.x + copy, ground.y});
           });
}

bool MapFeatureQuery::isSymbolAt(const MapSymbolProperties& layer, const MLNShape& feature, CGPoint ground) {
    const double distance = transform_.relativeDistance(ground);
    if (!(distance > 0) || distance > furthestSymbol) {
        return false;
    }
    const auto icon = iconBox(layer, feature, scene_);
    if (icon && doesSymbolTouch(*icon, ground, area_, transform_)) {
        return true;
    }
    const auto text = symbolText(layer, feature);
    if (!text || !isTextInReach(*text, ground)) {
        return false;
    }
    const auto box = text->box(text_);
    return box && doesSymbolTouch(*box, ground, area_, transform_);
}

bool MapFeatureQuery::isTextInReach(const MapSymbolText& text, CGPoint ground) const {
    const double reach =
        text.reach() * symbolMagnification(transform_.relativeDistance(ground), text.isOnGround);
    if (text.isOnGround) {
        return groundBox_.isNear({ground.x, ground.y, ground.x, ground.y}, reach / transform_.worldSize());
    }
    const CGPoint point = transform_.pointForGround(ground);
    return MapBox::around(area_.screen).isNear({point.x, point.y, point.x, point.y}, reach);
}

}  // namespace pelta
