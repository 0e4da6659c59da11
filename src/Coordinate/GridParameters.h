#pragma once

#include <pelta/Coordinate/GeoTrans.h>

namespace pelta::detail {

/// Coefficients of the distance along the meridian as a series in the latitude (Snyder, equation 3-21).
struct MeridianSeries {
    double e0 = 1;
    double e1 = 0;
    double e2 = 0;
    double e3 = 0;
};

/// Everything that a conversion reads of one system.
struct GridParameters {
    double major = 0;
    double minor = 0;
    double eccentricitySquared = 0;
    double secondEccentricitySquared = 0;
    double scale = 1;
    double centralMeridian = 0;
    double falseEasting = 0;
    double falseNorthing = 0;
    double originDistance = 0;  ///< Along the meridian from the equator, metres.
    MeridianSeries meridian;
    bool needsDatumShift = false;
};

/// The parameters of a system; another index than 0 to 4 stops the process.
[[nodiscard]] const GridParameters& gridParameters(int system);

/// Geocentric shift from Bessel to WGS84, metres.
inline constexpr auto datumShift = GeoTrans::datum_params;

}  // namespace pelta::detail
