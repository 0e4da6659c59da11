#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "Cluster/Map/VisibleArea.h"

namespace pelta::detail {

/// Numbered places, found by the area in which they lie.
///
/// They stand in one flat array in the order of the cells of a grid over all of them, so that a map over a
/// few streets does not look at the places of the rest of the world.
class PlaceGrid {
 public:
    PlaceGrid() = default;
    /// @param positions  by number.
    explicit PlaceGrid(const std::vector<CLLocationCoordinate2D>& positions);

    /// Calls `visit(number)` for each place in the area, in any order.
    template <class Visit>
    void forEachIn(const VisibleArea& area, Visit&& visit) const {
        for (const VisibleArea::Part& part : area.parts()) {
            forEachIn(part, visit);
        }
    }

 private:
    struct Place {
        CLLocationCoordinate2D position;  // as `VisibleArea::standard` gives it
        std::uint32_t number;
    };
    /// The cells along one of the grid's sides.
    struct Axis {
        double start = 0;
        double cellsPerDegree = 0;

        [[nodiscard]] std::size_t cell(double degrees, std::size_t side) const noexcept;
    };

    [[nodiscard]] std::size_t cell(CLLocationCoordinate2D position) const noexcept {
        return rows_.cell(position.latitude, side_) * side_ + columns_.cell(position.longitude, side_);
    }
    void layOut(const std::vector<Place>& places);

    template <class Visit>
    void forEachIn(const VisibleArea::Part& part, Visit& visit) const {
        const std::size_t west = columns_.cell(part.west, side_);
        const std::size_t east = columns_.cell(part.east, side_);
        const std::size_t north = rows_.cell(part.north, side_);
        for (std::size_t row = rows_.cell(part.south, side_); row <= north && !places_.empty(); ++row) {
            for (std::size_t i = starts_[row * side_ + west]; i < starts_[row * side_ + east + 1]; ++i) {
                if (part.contains(places_[i].position)) {
                    visit(places_[i].number);
                }
            }
        }
    }

    std::size_t side_ = 1;               // cells on each side
    Axis rows_;                          // from the south
    Axis columns_;                       // from the west
    std::vector<Place> places_;          // by cell, row after row
    std::vector<std::uint32_t> starts_;  // of the cells among the places; one more at the end
};

}  // namespace pelta::detail
