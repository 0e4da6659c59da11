#include <pelta/Engine/MLNAnnotation.h>

namespace pelta {

std::optional<CLLocationCoordinate2D> MLNUserLocation::coordinate() const {
    return location_ ? std::optional(location_->coordinate) : std::nullopt;
}

}  // namespace pelta
