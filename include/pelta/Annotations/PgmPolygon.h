#pragma once

#include <memory>
#include <vector>

#include <pelta/Annotations/PgmAreaShape.h>

namespace pelta {

/// An area within one ring of coordinates.
class PgmPolygon : public PgmAreaShape {
 public:
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

    void updateFeature() override;

 private:
    std::vector<CLLocationCoordinate2D> coords_;
};

}  // namespace pelta
