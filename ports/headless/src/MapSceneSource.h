#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include <pelta/Engine/MLNShape.h>

#include "MapGeometry.h"

namespace pelta {

/// The features of a source, as they were when it was last given a shape.
///
/// Geometry is copied into flat arrays at once; what only queries need (ground positions and boxes) is made
/// at the first query. Features that have nothing to draw (see `MLNShape::drawnKind`) are left out.
class MapSceneSource {
 public:
    /// Replaces the contents by a shape; null for none.
    void setShape(std::shared_ptr<const MLNShape> shape);

    /// Number of features; they are numbered in drawing order.
    [[nodiscard]] std::uint32_t size() const noexcept { return static_cast<std::uint32_t>(features_.size()); }
    [[nodiscard]] const MLNShape& feature(std::uint32_t index) const noexcept { return *features_[index]; }
    /// The feature, which keeps the whole shape alive.
    [[nodiscard]] std::shared_ptr<const MLNFeature> sharedFeature(std::uint32_t index) const noexcept {
        return {shape_, features_[index]};
    }
    /// The feature's corners as fractions of the Mercator square; an area's ring is closed.
    [[nodiscard]] std::span<const CGPoint> ground(std::uint32_t index) const;
    /// The box around them.
    [[nodiscard]] const MapBox& box(std::uint32_t index) const { return boxes()[index]; }
    /// The boxes of all features.
    [[nodiscard]] const std::vector<MapBox>& boxes() const;

 private:
    void addFeature(const MLNShape& shape);
    void addRing(const std::vector<CLLocationCoordinate2D>& ring);
    void projectIfNeeded() const;

    std::shared_ptr<const MLNShape> shape_;
    std::vector<const MLNShape*> features_;
    std::vector<std::uint32_t> coordinateEnds_;  ///< Where each feature's coordinates end.
    std::vector<CLLocationCoordinate2D> coordinates_;

    mutable std::vector<CGPoint> ground_;  ///< Empty until the first query.
    mutable std::vector<MapBox> boxes_;
};

}  // namespace pelta
