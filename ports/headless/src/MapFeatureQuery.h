#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "MapCandidates.h"
#include "MapScene.h"
#include "MapSymbolBox.h"
#include "MapText.h"
#include "MapTransform.h"

namespace pelta {

/// Finds the features that a scene draws inside a rectangle of the screen. Lives for one query.
///
/// Features that lie too far away go first, by their boxes alone; then the layers that draw what is left are
/// picked out by the hash of their predicates; only what both leave is looked at closely. Lines and areas are
/// compared on the ground, where the rectangle is a quad and they need no projecting; symbols where they lie,
/// on the screen or on the ground. A feature in sight through several copies of the world counts once a
/// layer.
class MapFeatureQuery {
 public:
    using Features = std::vector<std::shared_ptr<const MLNFeature>>;

    /// @param zoom  of the camera, for the layers' zoom ranges.
    /// @param rect  points, with sides of 0 or more; what of it is above the horizon holds nothing.
    MapFeatureQuery(const MapScene& scene, MapText& text, const MapTransform& transform, double zoom,
                    CGRect rect);

    /// The features of the named layers, of all layers when none is named, topmost first.
    [[nodiscard]] Features run(std::span<const std::string> layerIdentifiers);

 private:
    /// A feature near the rectangle and a layer that may draw it.
    struct Match {
        std::uint32_t layer;  ///< Its slot.
        std::uint32_t feature;
    };

    [[nodiscard]] std::vector<MapCandidates> candidates() const;
    /// Topmost first.
    [[nodiscard]] std::vector<Match> matches() const;
    /// The ground from which something with a reach, in points, may be drawn inside the rectangle.
    [[nodiscard]] MapBox groundWithin(double reach) const;
    [[nodiscard]] double reachOf(const MapLayerKey& key) const noexcept {
        return key.reach.points + key.reach.images * scene_.largestImage();
    }
    [[nodiscard]] bool isDrawnInside(const Match& match);

    /// @name True when the layer draws a feature inside the rectangle, in some copy of the world.
    /// @{
    [[nodiscard]] bool isHit(const MapFillProperties& layer, const MapSceneSource& source,
                             std::uint32_t feature);
    [[nodiscard]] bool isHit(const MapLineProperties& layer, const MapSceneSource& source,
                             std::uint32_t feature);
    [[nodiscard]] bool isHit(const MapSymbolProperties& layer, const MapSceneSource& source,
                             std::uint32_t feature);
    /// @}

    /// Asks `test(copy)` for each copy of the world in which a box, or what is drawn up to `margin` worlds
    /// beside it, may be in sight, `copy` worlds east of where it is, until one answers true. What lies
    /// further than a world beside the Mercator square is not drawn.
    template <class Test>
    [[nodiscard]] bool isTrueInSomeCopy(const MapBox& box, double margin, Test test) const;
    /// The ground in sight, as it lies in the copy of the world `copy` worlds further east.
    [[nodiscard]] MapQuad groundSeenFrom(double copy) const;
    [[nodiscard]] bool isSymbolAt(const MapSymbolProperties& layer, const MLNShape& feature, CGPoint ground);
    [[nodiscard]] bool isTextInReach(const MapSymbolText& text, CGPoint ground) const;

    const MapScene& scene_;
    MapText& text_;
    const MapTransform& transform_;
    double zoom_;
    CGRect rect_;
    MapQueryArea area_;
    MapBox groundBox_;
};

}  // namespace pelta
