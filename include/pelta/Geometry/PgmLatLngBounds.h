#pragma once

#include <memory>
#include <span>

#include <pelta/Platform/CoreLocation.h>

namespace pelta {

/// Coordinate rectangle, degrees: what a camera can fit, and what coordinates can be tested against.
///
/// The corners are kept as given, in whatever order; nothing treats the antimeridian specially, so a
/// rectangle whose south-west longitude is above its north-east longitude contains nothing. Main thread only.
class PgmLatLngBounds {
 public:
    /// A rectangle with exactly these corners.
    [[nodiscard]] static std::shared_ptr<PgmLatLngBounds> create(CLLocationCoordinate2D southWest,
                                                                 CLLocationCoordinate2D northEast);
    /// The same as `create`.
    [[nodiscard]] static std::shared_ptr<PgmLatLngBounds> bounds(CLLocationCoordinate2D southWest,
                                                                 CLLocationCoordinate2D northEast);
    /// The smallest rectangle around coordinates with latitudes within ±90 and longitudes within ±180; NaN
    /// components are passed over.
    ///
    /// @param coords  two or more; fewer are a programming error that stops the process.
    [[nodiscard]] static std::shared_ptr<PgmLatLngBounds> bounds(
        std::span<const CLLocationCoordinate2D> coords);

    PgmLatLngBounds() = delete;
    /// For the factories.
    PgmLatLngBounds(CLLocationCoordinate2D southWest, CLLocationCoordinate2D northEast) noexcept
        : southWest_(southWest), northEast_(northEast) {}

    /// South-western corner as given.
    [[nodiscard]] CLLocationCoordinate2D southWest() const noexcept { return southWest_; }
    void setSouthWest(CLLocationCoordinate2D corner) noexcept { southWest_ = corner; }
    /// North-eastern corner as given.
    [[nodiscard]] CLLocationCoordinate2D northEast() const noexcept { return northEast_; }
    void setNorthEast(CLLocationCoordinate2D corner) noexcept { northEast_ = corner; }

    /// Latitude of the south-western corner, longitude of the north-eastern one.
    [[nodiscard]] CLLocationCoordinate2D southEast() const noexcept {
        return {southWest_.latitude, northEast_.longitude};
    }
    /// The same value as `northEast()`, on purpose. The corner in the north-west has the latitude of
    /// `northEast` and the longitude of `southWest`.
    [[nodiscard]] CLLocationCoordinate2D northWest() const noexcept { return northEast_; }
    /// The mean of the corners' latitudes and longitudes.
    [[nodiscard]] CLLocationCoordinate2D center() const noexcept {
        return {(northEast_.latitude + southWest_.latitude) * 0.5,
                (northEast_.longitude + southWest_.longitude) * 0.5};
    }

    /// True when the coordinate lies inside or on an edge; false for NaN.
    [[nodiscard]] bool contains(CLLocationCoordinate2D coordinate) const noexcept;
    /// True when both corners of the other rectangle lie inside or on an edge.
    [[nodiscard]] bool contains(const PgmLatLngBounds& bounds) const noexcept;

 private:
    CLLocationCoordinate2D southWest_;
    CLLocationCoordinate2D northEast_;
};

}  // namespace pelta
