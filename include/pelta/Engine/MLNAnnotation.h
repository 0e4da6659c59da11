#pragma once

#include <optional>
#include <string>

#include <pelta/Platform/CoreLocation.h>
#include <pelta/Platform/UIView.h>

namespace pelta {

/// Something at a position that the engine shows by a view.
class MLNAnnotation {
 public:
    virtual ~MLNAnnotation() = default;
    /// Where it is, degrees; absent while unknown.
    [[nodiscard]] virtual std::optional<CLLocationCoordinate2D> coordinate() const = 0;
};

/// The user's own position.
class MLNUserLocation final : public MLNAnnotation {
 public:
    [[nodiscard]] std::optional<CLLocationCoordinate2D> coordinate() const override;
    /// The last position; absent until the first report.
    [[nodiscard]] const std::optional<CLLocation>& location() const noexcept { return location_; }
    /// The last heading; absent while unknown or not asked for.
    [[nodiscard]] const std::optional<CLHeading>& heading() const noexcept { return heading_; }

    /// For the map view.
    void setLocation(std::optional<CLLocation> location) { location_ = location; }
    /// For the map view: what the device last reported; absent when it is unknown.
    void setHeading(std::optional<CLHeading> heading) { heading_ = heading; }

 private:
    std::optional<CLLocation> location_;
    std::optional<CLHeading> heading_;
};

}  // namespace pelta
