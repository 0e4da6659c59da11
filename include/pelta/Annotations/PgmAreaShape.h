#pragma once

#include <memory>
#include <vector>

#include <pelta/Annotations/DrawnNumber.h>
#include <pelta/Annotations/PgmShape.h>
#include <pelta/Engine/MLNFillStyleLayer.h>
#include <pelta/Engine/MLNLineStyleLayer.h>
#include <pelta/Platform/UIColor.h>

namespace pelta {

/// What polygons and circles have in common: an area within one ring, filled and outlined together with its
/// holes, under the labels of the base map.
class PgmAreaShape : public PgmShape {
 public:
    /// White at first.
    [[nodiscard]] UIColor fillColor() const noexcept { return fillColor_; }
    void setFillColor(UIColor color);
    /// Points, 0 at first, which draws no outline; negative values count as 0. With one that is not finite
    /// the outline stays as wide as it was drawn before.
    [[nodiscard]] double strokeWidth() const noexcept { return strokeWidth_.asSet(); }
    void setStrokeWidth(double width);
    /// Black at first.
    [[nodiscard]] UIColor strokeColor() const noexcept { return strokeColor_; }
    void setStrokeColor(UIColor color);

    /// @name For subclasses and the map view
    /// @{
    /// The layer that draws the area; null until it was first drawn.
    [[nodiscard]] const std::shared_ptr<MLNFillStyleLayer>& fillLayer() const noexcept { return fillLayer_; }
    /// The layer that draws the outline, above the area; null until it was first drawn.
    [[nodiscard]] const std::shared_ptr<MLNLineStyleLayer>& lineLayer() const noexcept { return lineLayer_; }
    /// A collection of the area and, named with the suffix "_line", its ring; null without a ring.
    [[nodiscard]] std::shared_ptr<MLNShape> feature() const override { return feature_; }
    [[nodiscard]] std::int64_t defaultGlobalZIndex() const override { return -1000; }
    void updateLayerProperty() override;
    /// @}

 protected:
    /// An area without a ring.
    explicit PgmAreaShape(UIColor fillColor) noexcept : fillColor_(fillColor) {}

    /// Makes the feature from a ring and those of its holes, closed or not, and has the map take it over at
    /// the next frame.
    void setRing(const std::vector<CLLocationCoordinate2D>& ring,
                 const std::vector<std::vector<CLLocationCoordinate2D>>& holes = {});
    /// Forgets the feature and has the map take that over at the next frame.
    void clearRing();

 private:
    std::shared_ptr<MLNFillStyleLayer> fillLayer_;
    std::shared_ptr<MLNLineStyleLayer> lineLayer_;
    std::shared_ptr<MLNShapeCollectionFeature> feature_;
    UIColor fillColor_;
    DrawnNumber strokeWidth_{0};
    UIColor strokeColor_ = UIColor::black();
};

}  // namespace pelta
