#pragma once

#include <pelta/Coordinate/GeoTrans.h>
#include <pelta/Platform/CoreLocation.h>

namespace pelta {

/// A point of a Korean plane grid, metres. Any numbers are stored and converted as they are, NaN included;
/// see `GeoTrans` for what the conversion does. A value type; any thread.
///
/// @tparam System  the grid's system of `GeoTrans`.
template <int System>
struct PgmGridPoint {
    double x = 0;  ///< Easting.
    double y = 0;  ///< Northing.

    /// A point given in the grid.
    PgmGridPoint(double easting, double northing) noexcept : x(easting), y(northing) {}

    /// The grid point of a WGS84 coordinate.
    explicit PgmGridPoint(CLLocationCoordinate2D latLng) {
        const GeoPoint point =
            GeoTrans().convert(GeoTrans::GEO, System, {latLng.longitude, latLng.latitude, 0});
        x = point.x;
        y = point.y;
    }

    /// The WGS84 coordinate of the grid point.
    [[nodiscard]] CLLocationCoordinate2D toLatLng() const {
        const GeoPoint point = GeoTrans().convert(System, GeoTrans::GEO, {x, y, 0});
        return {point.y, point.x};
    }

    friend bool operator==(const PgmGridPoint&, const PgmGridPoint&) = default;
};

/// KATEC: Bessel ellipsoid, central meridian 128°.
using PgmKatec = PgmGridPoint<GeoTrans::KATEC>;
/// TM: Bessel ellipsoid, central meridian 127° and 10.405″.
using PgmTm = PgmGridPoint<GeoTrans::TM>;
/// GRS80 TM: central meridian 127°.
using PgmGrs80 = PgmGridPoint<GeoTrans::GRS80>;
/// UTM-K: central meridian 127.5°.
using PgmUtmk = PgmGridPoint<GeoTrans::UTMK>;

}  // namespace pelta
