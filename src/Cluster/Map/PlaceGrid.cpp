#include "Cluster/Map/PlaceGrid.h"

#include <cmath>
#include <limits>

namespace pelta::detail {

namespace {

constexpr std::size_t mostCellsOnASide = 512;

/// The lowest and the highest of values that are finite.
class Range {
 public:
    void add(double value) noexcept {
        if (std::isfinite(value)) {
            low_ = std::min(low_, value);
            high_ = std::max(high_, value);
        }
    }
    [[nodiscard]] double low() const noexcept { return low_; }
    [[nodiscard]] double extent() const noexcept { return high_ - low_; }

 private:
    double low_ = std::numeric_limits<double>::infinity();
    double high_ = -std::numeric_limits<double>::infinity();
};

}  // namespace

PlaceGrid::PlaceGrid(const std::vector<CLLocationCoordinate2D>& positions)
    : side_(std::clamp<std::size_t>(
          static_cast<std::size_t>(std::sqrt(static_cast<double>(positions.size()))), 1, mostCellsOnASide)) {
    std::vector<Place> places(positions.size());
    Range latitudes;
    Range longitudes;
    for (std::uint32_t number = 0; number < positions.size(); ++number) {
        places[number] = {VisibleArea::standard(positions[number]), number};
        latitudes.add(places[number].position.latitude);
        longitudes.add(places[number].position.longitude);
    }
    const auto axis = [this](const Range& range) {
        return Axis{range.low(), static_cast<double>(side_) / range.extent()};
    };
    rows_ = axis(latitudes);
    columns_ = axis(longitudes);
    layOut(places);
}

void PlaceGrid::layOut(const std::vector<Place>& places) {
    starts_.resize(side_ * side_ + 1);
    for (const Place& place : places) {
        ++starts_[cell(place.position) + 1];
    }
    for (std::size_t i = 1; i < starts_.size(); ++i) {
        starts_[i] += starts_[i - 1];
    }
    places_.resize(places.size());
    auto ends = starts_;
    for (const Place& place : places) {
        places_[ends[cell(place.position)]++] = place;
    }
}

/// What lies beyond the ends, or nowhere, goes to the cells at the ends.
std::size_t PlaceGrid::Axis::cell(double degrees, std::size_t side) const noexcept {
    const double place = (degrees - start) * cellsPerDegree;
    if (!(place > 0)) {
        return 0;
    }
    return place < static_cast<double>(side) ? static_cast<std::size_t>(place) : side - 1;
}

}  // namespace pelta::detail
