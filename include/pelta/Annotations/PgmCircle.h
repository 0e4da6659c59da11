#pragma once

#include <memory>
#include <optional>
#include <vector>

#include <pelta/Annotations/PgmAreaShape.h>

namespace pelta {

/// The area within a distance of a coordinate, measured on a sphere with a radius of 6378137 metres and drawn
/// as a ring of 360 corners.
class PgmCircle : public PgmAreaShape {
 public:
    /// @param center     degrees.
    /// @param radius     metres.
    /// @param fillColor  colour of the area.
    [[nodiscard]] static std::shared_ptr<PgmCircle> create(CLLocationCoordinate2D center,
                                                           double radius = 1000.0,
                                                           UIColor fillColor = UIColor::white());
    PgmCircle() = delete;
    /// For `make`; use the factory.
    explicit PgmCircle(CLLocationCoordinate2D center, double radius = 1000.0,
                       UIColor fillColor = UIColor::white()) noexcept
        : PgmAreaShape(fillColor), center_(center), radius_(radius) {}
    void completeConstruction(std::string_view className) override;

    /// Degrees. Without one nothing is drawn, nor when it is not finite.
    [[nodiscard]] const std::optional<CLLocationCoordinate2D>& center() const noexcept { return center_; }
    void setCenter(std::optional<CLLocationCoordinate2D> center);
    void setCenter(CLLocationCoordinate2D center) { setCenter(std::optional(center)); }
    /// Metres, 1000 at first. A negative radius is the same circle with its corners in another order; 0, and
    /// one that is not finite, draws nothing.
    [[nodiscard]] double radius() const noexcept { return radius_; }
    void setRadius(double radius);

    void updateFeature() override;

    /// The ring's corners: one for each whole bearing from 0 to 359 degrees, not closed. Latitudes end at
    /// ±85 degrees, longitudes are not wrapped.
    [[nodiscard]] static std::vector<CLLocationCoordinate2D> coords(CLLocationCoordinate2D withCenter,
                                                                    double radius);

 private:
    std::optional<CLLocationCoordinate2D> center_;
    double radius_;
};

}  // namespace pelta
