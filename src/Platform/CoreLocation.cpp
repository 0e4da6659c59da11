#include <cmath>

#include <pelta/Platform/CoreLocation.h>

namespace pelta {

bool CLLocationCoordinate2DIsValid(CLLocationCoordinate2D coordinate) noexcept {
    // Comparisons with NaN are false, so non-finite values are refused as well.
    return std::abs(coordinate.latitude) <= 90 && std::abs(coordinate.longitude) <= 180;
}

}  // namespace pelta
