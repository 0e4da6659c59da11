#pragma once

#include <memory>
#include <vector>

#include <pelta/Annotations/PgmAreaShape.h>

namespace pelta {

/// An area within one ring of coordinates, with or without holes.
class PgmPolygon : public PgmAreaShape {
 public:
    /// Corners in degrees; the last is joined to the first.
    using Ring = std::vector<CLLocationCoordinate2D>;

    /// @param coords     corners in degrees; the ring closes itself. Fewer than two are a programming error
    ///                   that stops the process.
    /// @param fillColor  colour of the area.
    [[nodiscard]] static std::shared_ptr<PgmPolygon> create(std::vector<CLLocationCoordinate2D> coords,
                                                            UIColor fillColor = UIColor::white());
    PgmPolygon() = delete;
    /// For `make`; use the factory.
    explicit PgmPolygon(std::vector<CLLocationCoordinate2D> coords, UIColor fillColor = UIColor::white())
        : PgmAreaShape(fillColor), coords_(std::move(coords)) {}
    void completeConstruction(std::string_view className) override;

    /// The corners as given, degrees. Without three that are not on one line there is no inside to be drawn
    /// or found by taps; the outline, where it has a width, is then a line like any other.
    [[nodiscard]] const std::vector<CLLocationCoordinate2D>& coords() const noexcept { return coords_; }
    void setCoords(std::vector<CLLocationCoordinate2D> coords);
    /// The holes as given; none at first.
    [[nodiscard]] const std::vector<Ring>& holes() const noexcept { return holes_; }
    /// Leaves areas out of the polygon. Their edges are outlined as its own is, and a tap in a hole belongs
    /// to the polygon only where what is drawn of it is within reach.
    ///
    ///     park->setHoles({lake, {{37.51, 127.02}, {37.51, 127.03}, {37.52, 127.03}}});
    ///
    /// @param holes  rings in any direction. Those of fewer than three different points are left out. A
    ///               coordinate that is not finite has the whole polygon not drawn, as one of `coords` has.
    ///               What lies within an odd number of rings, the outer one counted, is inside: a ring within
    ///               a hole is an island. Where rings cross, or a hole lies outside of the polygon, GL JS
    ///               fills parts otherwise than that rule says; taps go by the rule on every port.
    void setHoles(std::vector<Ring> holes);

    void updateFeature() override;

 private:
    std::vector<CLLocationCoordinate2D> coords_;
    std::vector<Ring> holes_;
};

}  // namespace pelta
