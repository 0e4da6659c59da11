#pragma once

#include <memory>
#include <span>
#include <string>
#include <vector>

#include <pelta/Engine/MLNMapView.h>

#include "View/ShapeRegistry.h"

namespace pelta {

/// The shapes that a tap at a point of the engine's view could be meant for: those with a touch handler that
/// are drawn within 22 points of it. To be used at once.
class TapTargets {
 public:
    TapTargets(const ShapeRegistry::Shapes& shapes, const MLNMapView& engine, CGPoint point) noexcept
        : shapes_(shapes), engine_(engine), point_(point) {}

    /// The one on top; null when there is none.
    [[nodiscard]] std::shared_ptr<PgmShape> topmost() const;
    /// The one that is meant where shapes crowd together: the topmost symbol that holds the point, else the
    /// nearest symbol or line, else the topmost area; null when there is none.
    [[nodiscard]] std::shared_ptr<PgmShape> nearest() const;
    /// Whether one of them is drawn at the point itself.
    [[nodiscard]] bool isDrawnThere() const;

 private:
    /// A shape that was found, and by what of it.
    struct Hit {
        std::shared_ptr<PgmShape> shape;
        MLNShapeKind kind;
    };
    using Hits = std::vector<Hit>;

    /// What is drawn in the square about the point that reaches so far, in points, to each side.
    [[nodiscard]] Hits hitsWithin(CGFloat distance, std::span<const std::string> layers) const;
    [[nodiscard]] Hits hitsInReach() const;
    [[nodiscard]] static std::shared_ptr<PgmShape> topmostOf(const Hits& hits);
    /// Those of symbols and lines.
    [[nodiscard]] static Hits withoutAreas(Hits hits);
    [[nodiscard]] Hits nearestOf(Hits hits) const;

    const ShapeRegistry::Shapes& shapes_;
    const MLNMapView& engine_;
    CGPoint point_;
};

}  // namespace pelta
