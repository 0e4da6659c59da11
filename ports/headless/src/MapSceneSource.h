#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <pelta/Engine/MLNExpression.h>
#include <pelta/Engine/MLNShape.h>

#include "MapGeometry.h"

namespace pelta {

/// The features of a source, as they were when it was last given a shape.
///
/// Geometry is copied into flat arrays at once; what only queries need (ground positions, boxes, look-up by
/// attribute) is made at the first query. Collections within a collection
/// and features with non-finite coordinates are not drawn.
class MapSceneSource {
 public:
    /// Replaces the contents by a shape; null for none.
    void setShape(std::shared_ptr<const MLNShape> shape);

    /// The features that a predicate selects, in drawing order. Valid until the next call.
    [[nodiscard]] std::span<const std::uint32_t> featuresMatching(const MLNPredicate& predicate) const;

    [[nodiscard]] const MLNShape& feature(std::uint32_t index) const noexcept { return *features_[index]; }
    /// The feature, which keeps the whole shape alive.
    [[nodiscard]] std::shared_ptr<const MLNFeature> sharedFeature(std::uint32_t index) const noexcept {
        return {shape_, features_[index]};
    }
    /// The feature's corners as fractions of the Mercator square; an area's ring is closed.
    [[nodiscard]] std::span<const CGPoint> ground(std::uint32_t index) const;
    /// The box around them.
    [[nodiscard]] const MapBox& box(std::uint32_t index) const;

 private:
    struct AttributeEntry {
        std::size_t hash;
        std::uint32_t feature;
    };
    /// Features by the hash of an attribute's text, ascending, equal ones in drawing order.
    struct AttributeIndex {
        std::string attribute;
        std::vector<AttributeEntry> entries;
    };

    void addFeature(const MLNShape& shape);
    void addRing(const std::vector<CLLocationCoordinate2D>& ring);
    void projectIfNeeded() const;
    [[nodiscard]] const AttributeIndex& indexFor(std::string_view attribute) const;

    std::shared_ptr<const MLNShape> shape_;
    std::vector<const MLNShape*> features_;
    std::vector<std::uint32_t> coordinateEnds_;  ///< Where each feature's coordinates end.
    std::vector<CLLocationCoordinate2D> coordinates_;

    mutable std::vector<CGPoint> ground_;  ///< Empty until the first query.
    mutable std::vector<MapBox> boxes_;
    mutable std::vector<AttributeIndex> indices_;
    mutable std::vector<std::uint32_t> matches_;
};

}  // namespace pelta
