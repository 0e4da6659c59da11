#pragma once

#include <memory>
#include <optional>
#include <vector>

#include <pelta/Annotations/DrawnNumber.h>
#include <pelta/Annotations/PgmShape.h>
#include <pelta/Engine/MLNLineStyleLayer.h>
#include <pelta/Platform/UIColor.h>

namespace pelta {

/// End of a line.
enum class PgmLineCap : unsigned { butt = 0, round = 1, square = 2 };
/// The line end of that raw value; nothing for 3 and above.
[[nodiscard]] std::optional<PgmLineCap> PgmLineCapFromRaw(unsigned raw) noexcept;

/// Corner of a line.
enum class PgmLineJoin : unsigned { bevel = 0, round = 1, miter = 2 };
/// The line corner of that raw value; nothing for 3 and above.
[[nodiscard]] std::optional<PgmLineJoin> PgmLineJoinFromRaw(unsigned raw) noexcept;

/// A line through coordinates, under the labels of the base map.
class PgmPolyline : public PgmShape {
 public:
    /// @param coords  degrees, two or more; fewer are a programming error that stops the process.
    [[nodiscard]] static std::shared_ptr<PgmPolyline> create(std::vector<CLLocationCoordinate2D> coords);
    PgmPolyline() = delete;
    /// For `make`; use the factory.
    explicit PgmPolyline(std::vector<CLLocationCoordinate2D> coords) : coords_(std::move(coords)) {}
    void completeConstruction(std::string_view className) override;

    /// The line's coordinates, degrees. Without two different places, as in a list of fewer than 2 that is
    /// set later, nothing is drawn or found by taps.
    [[nodiscard]] const std::vector<CLLocationCoordinate2D>& coords() const noexcept { return coords_; }
    void setCoords(std::vector<CLLocationCoordinate2D> coords);
    /// Points, 2.5 at first; negative values count as 0. With one that is not finite the line stays as wide
    /// as it was drawn before.
    [[nodiscard]] double width() const noexcept { return width_.asSet(); }
    void setWidth(double width);
    /// Black at first.
    [[nodiscard]] UIColor color() const noexcept { return color_; }
    void setColor(UIColor color);
    /// `butt` at first.
    [[nodiscard]] PgmLineCap capType() const noexcept { return capType_; }
    void setCapType(PgmLineCap type);
    /// `miter` at first.
    [[nodiscard]] PgmLineJoin joinType() const noexcept { return joinType_; }
    void setJoinType(PgmLineJoin type);
    /// Lengths of dashes and gaps in turn, in line widths; empty, the first value, draws a solid line. A list
    /// with a negative or non-finite length is not drawn.
    [[nodiscard]] const std::vector<double>& pattern() const noexcept { return pattern_; }
    void setPattern(std::vector<double> pattern);

    /// @name For subclasses and the map view
    /// @{
    /// The layer that draws the line; null until it was first drawn.
    [[nodiscard]] const std::shared_ptr<MLNLineStyleLayer>& lineLayer() const noexcept { return lineLayer_; }
    [[nodiscard]] std::shared_ptr<MLNShape> feature() const override { return feature_; }
    [[nodiscard]] std::int64_t defaultGlobalZIndex() const override { return -1000; }
    void updateLayerProperty() override;
    void updateFeature() override;
    /// @}

 private:
    std::shared_ptr<MLNLineStyleLayer> lineLayer_;
    std::shared_ptr<MLNPolylineFeature> feature_;
    DrawnNumber width_{2.5};
    UIColor color_ = UIColor::black();
    PgmLineCap capType_ = PgmLineCap::butt;
    PgmLineJoin joinType_ = PgmLineJoin::miter;
    std::vector<double> pattern_;
    std::vector<CLLocationCoordinate2D> coords_;
};

}  // namespace pelta
