#pragma once

#include <array>
#include <cstddef>
#include <span>

#include <pelta/Geometry/PgmLatLngBounds.h>

namespace pelta::detail {

/// The part of the world that a map shows.
///
/// A map repeats the world eastwards and westwards, so a place is visible where any of its copies is: across
/// the antimeridian, and everywhere on a map that is wider than the world.
class VisibleArea {
 public:
    /// Degrees; longitudes from -180 to below 180, borders included.
    struct Part {
        double south;
        double west;
        double north;
        double east;

        /// @param position  with a longitude from `standard`.
        [[nodiscard]] bool contains(CLLocationCoordinate2D position) const noexcept {
            return south <= position.latitude && position.latitude <= north && west <= position.longitude &&
                   position.longitude <= east;
        }
    };

    /// @param bounds  of the whole view, the eastern one not smaller; longitudes go on beyond ±180°.
    explicit VisibleArea(const PgmLatLngBounds& bounds) noexcept;

    /// The same place with a longitude from -180 to below 180.
    [[nodiscard]] static CLLocationCoordinate2D standard(CLLocationCoordinate2D position) noexcept;

    /// One rectangle, or two beside the antimeridian; they do not overlap.
    [[nodiscard]] std::span<const Part> parts() const noexcept { return std::span(parts_).first(count_); }
    /// False for a position that is not finite.
    [[nodiscard]] bool contains(CLLocationCoordinate2D position) const noexcept;

 private:
    std::array<Part, 2> parts_{};
    std::size_t count_ = 1;
};

}  // namespace pelta::detail
