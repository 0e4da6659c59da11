#include "MapFeatureQuery.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <string_view>
#include <unordered_map>

namespace pelta {

namespace {

/// Symbols further away, as a multiple of the centre's distance, are too small to be drawn.
constexpr double furthestSymbol = 5;
/// Copies of the world beyond those in sight whose symbols and wide lines may reach into the view.
constexpr double neighbouringCopies = 1;
/// What of a feature's ground is drawn in each copy of the world: the Mercator square and its neighbours.
constexpr double westEnd = -1;
constexpr double eastEnd = 2;
/// More copies of the world than any view has room for.
constexpr double mostCopies = 1000;

/// Reach, in points, beyond which the place of a feature rules out nothing.
constexpr double furthestReach = 1e5;

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
      rect_(rect),
      area_(areaOf(rect, transform)),
      groundBox_(MapBox::around(area_.ground)) {}

MapFeatureQuery::Features MapFeatureQuery::run(std::span<const std::string> layerIdentifiers) {
    const auto found = matches();
    // There may be as many names as layers, but only those of the matches count.
    std::unordered_map<std::string_view, bool> isAsked;
    for (const Match& match : found) {
        isAsked.emplace(scene_.layer(match.layer).model->identifier(), layerIdentifiers.empty());
    }
    for (const std::string& name : layerIdentifiers) {
        if (const auto known = isAsked.find(name); known != isAsked.end()) {
            known->second = true;
        }
    }
    Features features;
    for (const Match& match : found) {
        const MapSceneLayer& layer = scene_.layer(match.layer);
        if (isAsked[layer.model->identifier()] && isDrawnInside(match)) {
            features.push_back(scene_.source(layer.model->sourceIdentifier())->sharedFeature(match.feature));
        }
    }
    return features;
}

std::vector<MapCandidates> MapFeatureQuery::candidates() const {
    const auto& selections = scene_.selections();
    std::vector<double> reach(selections.size(), -1);
    for (const std::uint32_t slot : scene_.order()) {
        const MapLayerKey& key = scene_.key(slot);
        if (key.isDrawnAt(zoom_)) {
            reach[key.selection] = std::max(reach[key.selection], reachOf(key));
        }
    }
    std::vector<MapCandidates> result(selections.size());
    for (std::size_t i = 0; i < selections.size(); ++i) {
        const MapSceneSource* source = scene_.source(selections[i].source);
        if (source != nullptr && reach[i] >= 0) {
            result[i] = MapCandidates(*source, selections[i].attribute, groundWithin(reach[i]));
        }
    }
    return result;
}

std::vector<MapFeatureQuery::Match> MapFeatureQuery::matches() const {
    const auto near = candidates();
    const auto& order = scene_.order();
    std::vector<Match> found;
    for (std::size_t i = order.size(); i-- > 0;) {
        const MapLayerKey& key = scene_.key(order[i]);
        if (!key.isDrawnAt(zoom_) || near[key.selection].isEmpty()) {
            continue;
        }
        const auto chosen = near[key.selection].withHash(key.valueHash);
        for (std::size_t j = chosen.size(); j-- > 0;) {
            found.push_back({order[i], chosen[j].feature});
        }
    }
    return found;
}

MapBox MapFeatureQuery::groundWithin(double reach) const {
    constexpr double everywhere = std::numeric_limits<double>::infinity();
    const bool isTilted = std::isfinite(transform_.horizon());
    const double points = reach * (isTilted ? largestSymbolMagnification : 1) + 1;  // One for rounding.
    if (!(points < furthestReach)) {
        return {-everywhere, -everywhere, everywhere, everywhere};
    }
    const MapBox standing = MapBox::around(areaOf(rect_.insetBy(-points, -points), transform_).ground);
    const double lying = points / transform_.worldSize();
    return {
        std::min(standing.minX, groundBox_.minX - lying), std::min(standing.minY, groundBox_.minY - lying),
        std::max(standing.maxX, groundBox_.maxX + lying), std::max(standing.maxY, groundBox_.maxY + lying)};
}

bool MapFeatureQuery::isDrawnInside(const Match& match) {
    const MapSceneLayer& layer = scene_.layer(match.layer);
    const MapSceneSource& source = *scene_.source(layer.model->sourceIdentifier());
    const auto& predicate = layer.predicate;
    if (!predicate.attribute.empty()) {
        const std::string* text = textAttribute(source.feature(match.feature), predicate.attribute);
        if (text == nullptr || *text != predicate.value) {
            return false;
        }
    }
    return isNearInSomeCopy(source.box(match.feature), groundWithin(reachOf(scene_.key(match.layer)))) &&
           std::visit([&](const auto& properties) { return isHit(properties, source, match.feature); },
                      layer.properties);
}

template <class Test>
bool MapFeatureQuery::isTrueInSomeCopy(const MapBox& box, double margin, Test test) const {
    const double reach = std::min(margin, neighbouringCopies);
    const double first = std::ceil(groundBox_.minX - reach - std::min(box.maxX, eastEnd));
    const double last = std::floor(groundBox_.maxX + reach - std::max(box.minX, westEnd));
    const int count = static_cast<int>(std::clamp(last - first, -1.0, mostCopies));
    for (int copy = 0; copy <= count; ++copy) {
        if (test(first + copy)) {
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
    return source.feature(feature).drawnKind() == MLNShapeKind::polygon &&
           isTrueInSomeCopy(box, 0, [&](double copy) {
               return box.shiftedBy(copy).isNear(groundBox_, 0) &&
                      doesAreaTouchQuad(source.rings(feature), groundSeenFrom(copy));
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
        if (!box.shiftedBy(copy).isNear(groundBox_, halfWidth)) {
            return false;
        }
        const auto lines = source.rings(feature);
        const MapQuad quad = groundSeenFrom(copy);
        return std::any_of(lines.begin(), lines.end(),
                           [&](MapLine line) { return isLineNearQuad(line, quad, halfWidth); });
    });
}

bool MapFeatureQuery::isHit(const MapSymbolProperties& layer, const MapSceneSource& source,
                            std::uint32_t feature) {
    const MLNShape& shape = source.feature(feature);
    return shape.kind() == MLNShapeKind::point &&
           isTrueInSomeCopy(source.box(feature), neighbouringCopies, [&](double copy) {
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
