#include <algorithm>
#include <cmath>
#include <numbers>

#include <pelta/Geometry/MapProjection.h>

namespace pelta {

CGPoint MapProjection::project(CLLocationCoordinate2D coordinate, double worldSize) noexcept {
    constexpr double limit = 85.05112878;
    constexpr double argumentAtLimit = 1.5276092782718023;
    constexpr double degreesPerRadian = 57.29577951308232;

    // NaN fails the comparison and so counts as the northern edge.
    const double argument =
        coordinate.latitude < limit
            ? std::max(coordinate.latitude, -limit) * std::numbers::pi / 360 + std::numbers::pi / 4
            : argumentAtLimit;
    return {(coordinate.longitude + 180) * worldSize / 360,
            worldSize / 360 * (180 - degreesPerRadian * std::log(std::tan(argument)))};
}

}  // namespace pelta
