#include <algorithm>
#include <array>
#include <cmath>

#include <pelta/Annotations/PgmCircle.h>

namespace pelta {

namespace {

constexpr double earthRadius = 6378137.0;  // metres
constexpr double radiansPerDegree = 0.017453292519943295;
constexpr double latitudeLimit = 85;

struct Direction {
    double sine;
    double cosine;
};

Direction directionOf(double angle) {
    return {std::sin(angle), std::cos(angle)};
}

std::array<Direction, 360> wholeBearings() {
    std::array<Direction, 360> bearings{};
    for (std::size_t degrees = 0; degrees < bearings.size(); ++degrees) {
        bearings[degrees] = directionOf(static_cast<double>(degrees) * radiansPerDegree);
    }
    return bearings;
}

}  // namespace

std::shared_ptr<PgmCircle> PgmCircle::create(CLLocationCoordinate2D center, double radius,
                                             UIColor fillColor) {
    return make<PgmCircle>(center, radius, fillColor);
}

void PgmCircle::completeConstruction(std::string_view className) {
    PgmAreaShape::completeConstruction(className);
    updateFeature();
}

void PgmCircle::setCenter(std::optional<CLLocationCoordinate2D> center) {
    center_ = center;
    updateFeature();
}

void PgmCircle::setRadius(double radius) {
    radius_ = radius;
    updateFeature();
}

void PgmCircle::updateFeature() {
    if (!center_ || !std::isfinite(center_->latitude) || !std::isfinite(center_->longitude) ||
        !std::isfinite(radius_)) {
        clearRing();
        return;
    }
    auto ring = coords(*center_, radius_);
    ring.push_back(ring.front());
    setRing(ring);
}

std::vector<CLLocationCoordinate2D> PgmCircle::coords(CLLocationCoordinate2D withCenter, double radius) {
    static const auto bearings = wholeBearings();
    const double longitude = withCenter.longitude * radiansPerDegree;
    const Direction latitude = directionOf(withCenter.latitude * radiansPerDegree);
    const Direction distance = directionOf(radius / earthRadius);

    std::vector<CLLocationCoordinate2D> ring;
    ring.reserve(bearings.size() + 1);
    for (const auto& bearing : bearings) {
        const double sine =
            latitude.sine * distance.cosine + latitude.cosine * distance.sine * bearing.cosine;
        // Rounding may carry the sine of a circle through a pole just beyond 1.
        const double cornerLatitude = std::asin(std::clamp(sine, -1.0, 1.0));
        const double cornerLongitude = longitude + std::atan2(bearing.sine * distance.sine * latitude.cosine,
                                                              distance.cosine - latitude.sine * sine);
        ring.push_back({std::clamp(cornerLatitude / radiansPerDegree, -latitudeLimit, latitudeLimit),
                        cornerLongitude / radiansPerDegree});
    }
    return ring;
}

}  // namespace pelta
