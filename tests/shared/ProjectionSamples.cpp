#include "ProjectionSamples.h"

#include <random>

#include "MapTransform.h"

namespace pelta::shared {

namespace {

/// Numbers spread evenly; the library's own distributions differ between platforms.
class Spread {
 public:
    explicit Spread(std::uint32_t seed) : generator_(seed) {}
    double between(double low, double high) {
        return low + (high - low) * static_cast<double>(generator_()) / 4294967296.0;
    }

 private:
    std::mt19937 generator_;
};

ProjectionSample sample(Spread& spread, bool hasInset) {
    ProjectionSample sample;
    sample.size = {400, 300};
    if (hasInset) {
        sample.inset = {spread.between(0, 120), spread.between(0, 160), spread.between(0, 120),
                        spread.between(0, 160)};
    }
    sample.camera.center = {spread.between(-70, 70), spread.between(-170, 170)};
    sample.camera.zoom = spread.between(2, 21);
    sample.camera.pitch = spread.between(0, 60);
    sample.camera.bearing = spread.between(0, 360);
    const MapTransform transform(sample.camera, sample.size, sample.inset);
    const CGPoint wanted{spread.between(0, sample.size.width), spread.between(0, sample.size.height)};
    sample.coordinate = transform.coordinateForPoint(wanted);
    sample.point = transform.pointForCoordinate(sample.coordinate);
    return sample;
}

}  // namespace

std::vector<ProjectionSample> projectionSamples(std::size_t count, std::uint32_t seed) {
    Spread spread(seed);
    std::vector<ProjectionSample> samples;
    samples.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        samples.push_back(sample(spread, i % 2 == 1));
    }
    return samples;
}

}  // namespace pelta::shared
