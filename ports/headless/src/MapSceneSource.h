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
    /// All corners of the feature as fractions of the Mercator square.
    [[nodiscard]] std::span<const CGPoint> ground(std::uint32_t index) const;
    /// The same in the feature's parts: an area's closed rings, the outer one first, or the one line or
    /// point.
    [[nodiscard]] std::vector<MapLine> rings(std::uint32_t index) const;
    /// The box around them.
    [[nodiscard]] const MapBox& box(std::uint32_t index) const { return boxes()[index]; }
    /// The boxes of all features.
    [[nodiscard]] const std::vector<MapBox>& boxes() const;

 private:
    void addFeature(const MLNShape& shape);
    void addLine(const std::vector<CLLocationCoordinate2D>& line);
    void addRing(const std::vector<CLLocationCoordinate2D>& ring);
    void projectIfNeeded() const;
    [[nodiscard]] std::span<const CGPoint> corners(std::uint32_t ring, std::uint32_t endRing) const;
    [[nodiscard]] std::uint32_t firstRing(std::uint32_t feature) const noexcept {
        return feature == 0 ? 0 : featureEnds_[feature - 1];
    }

    std::shared_ptr<const MLNShape> shape_;
    std::vector<const MLNShape*> features_;
    std::vector<std::uint32_t> featureEnds_;  ///< Where each feature's rings end.
    std::vector<std::uint32_t> ringEnds_;     ///< Where each ring's coordinates end.
    std::vector<CLLocationCoordinate2D> coordinates_;

    mutable std::vector<CGPoint> ground_;  ///< Empty until the first query.
    mutable std::vector<MapBox> boxes_;
};

}  // namespace pelta
