#include "Cluster/ClusterProjection.h"

#include <cmath>
#include <limits>
#include <numbers>

namespace pelta::detail {

namespace {

constexpr double latitudeLimit = 85.05112878;
constexpr double tangentArgumentAtLimit = 1.5276092782718023;
constexpr double perDegree = 0.002777777777777778;
constexpr double degreesPerRadian = 57.29577951308232;
constexpr double quarterPi = 0.7853981633974483;

}  // namespace

PQTPoint clusterPoint(CLLocationCoordinate2D coordinate) noexcept {
    if (!std::isfinite(coordinate.latitude) || !std::isfinite(coordinate.longitude)) {
        constexpr double nowhere = std::numeric_limits<double>::quiet_NaN();
        return {nowhere, nowhere};
    }
    const double latitude = coordinate.latitude < -latitudeLimit ? -latitudeLimit : coordinate.latitude;
    const double argument =
        latitude < latitudeLimit ? latitude * std::numbers::pi / 360 + quarterPi : tangentArgumentAtLimit;
    return {(coordinate.longitude + 180) * perDegree,
            (std::log(std::tan(argument)) * -degreesPerRadian + 180) * perDegree};
}

}  // namespace pelta::detail
