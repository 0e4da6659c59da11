#pragma once

#include <array>
#include <span>

namespace pelta {

/// A point of any of the five systems. Geographic: x is the longitude and y the latitude in degrees. Grid: x
/// is the easting and y the northing in metres. z is used inside the conversion only.
struct GeoPoint {
    double x = 0;  ///< Longitude or easting.
    double y = 0;  ///< Latitude or northing.
    double z = 0;  ///< Of the conversion's own.
    friend bool operator==(const GeoPoint&, const GeoPoint&) = default;
};

/// Converts points between WGS84 longitude and latitude and the Korean plane grids KATEC, TM, GRS80 TM and
/// UTM-K.
///
/// All four grids are Transverse Mercator projections (series of J. P. Snyder, "Map projections: a working
/// manual", USGS 1395, 1987). KATEC and TM lie on the Bessel 1841 ellipsoid, reached by a three-parameter
/// geocentric shift; back from geocentric coordinates leads R. Toms, "An improved algorithm for geocentric to
/// geodetic coordinate conversion", 1996. Nothing is checked: points outside of Korea, and numbers that are
/// not finite, go through the formulas as they are. A system that is none of the five is a programming error
/// that stops the process.
///
/// The object is empty and costs nothing to make: its tables are constants of the class. Any thread.
class GeoTrans {
 public:
    /// @name Systems
    /// @{
    static constexpr int GEO = 0;    ///< WGS84 longitude and latitude, degrees.
    static constexpr int KATEC = 1;  ///< Bessel, central meridian 128°.
    static constexpr int TM = 2;     ///< Bessel, central meridian 127° and 10.405″.
    static constexpr int GRS80 = 3;  ///< Central meridian 127°, without datum shift.
    static constexpr int UTMK = 4;   ///< Central meridian 127.5°, without datum shift.
    /// @}

    /// One number for each system.
    using Table = std::array<double, 5>;

    /// @name Parameters, one entry for each system
    /// @{
    /// Semi-major axes, metres.
    static constexpr Table m_arMajor{6378137.0, 6377397.155, 6377397.155, 6378137.0, 6378137.0};
    /// Semi-minor axes, metres. Those of GRS80 and UTMK differ on purpose.
    static constexpr Table m_arMinor{6356752.3142, 6356078.963342249, 6356078.963342249, 6356752.3142,
                                     6356752.314140356};
    /// Scale on the central meridian.
    static constexpr Table m_arScaleFactor{1.0, 0.9999, 1.0, 1.0, 0.9996};
    /// Central meridians, radians.
    static constexpr Table m_arLonCenter{0, 2.23402144255274, 2.21661859489671, 2.2165681500328,
                                         2.22529479629277};
    /// Latitudes of origin, radians.
    static constexpr Table m_arLatCenter{0, 0.663225115757845, 0.663225115757845, 0.663225115757845,
                                         0.663225115757845};
    /// Northings of the origin, metres.
    static constexpr Table m_arFalseNorthing{0, 600000.0, 500000.0, 500000.0, 2000000.0};
    /// Eastings of the origin, metres.
    static constexpr Table m_arFalseEasting{0, 400000.0, 200000.0, 200000.0, 1000000.0};
    /// Eccentricities squared.
    [[nodiscard]] static const Table& m_Es();
    /// Second eccentricities squared.
    [[nodiscard]] static const Table& m_Esp();
    /// 1 for a sphere, which none of the systems is on.
    static constexpr Table m_Ind{0, 0, 0, 0, 0};
    /// Distances along the meridian from the equator to the latitude of origin, metres.
    [[nodiscard]] static const Table& src_m();
    /// The same numbers: any system may be converted from and to.
    [[nodiscard]] static const Table& dst_m();
    /// Shift of geocentric coordinates from Bessel to WGS84, metres.
    static constexpr std::array<double, 3> datum_params{-146.43, 507.89, 681.46};
    /// @}

    static constexpr double EPSLN = 1e-10;  ///< Radians at which the latitude of a grid point is settled.
    static constexpr double HALF_PI = 1.5707963267948966;   ///< π / 2.
    static constexpr double COS_67P5 = 0.3826834323650898;  ///< Cosine of 67.5 degrees.
    static constexpr double AD_C = 1.0026;  ///< Toms' region constant for points near the ground.

    /// A point of one system in another. Between two grids the way leads through WGS84.
    ///
    /// @param srctype,dsttype  systems, 0 to 4.
    /// @param in_pt            degrees for `GEO`, metres for grids; z is not used.
    /// @return degrees or metres, z 0.
    [[nodiscard]] GeoPoint convert(int srctype, int dsttype, GeoPoint in_pt) const;

    /// Converts many points; agrees with the conversion of one within 1e-6 m and 1e-11 degrees over Korea,
    /// and anywhere else as far as the formulas themselves are steady there. Uses the processor's AVX2 where
    /// it has it.
    ///
    /// @param points   what to convert.
    /// @param results  as many points, may be the same ones. A result span of another length is a programming
    ///                 error that stops the process.
    void convert(int srctype, int dsttype, std::span<const GeoPoint> points,
                 std::span<GeoPoint> results) const;

    /// @name Steps
    /// Parts of a conversion, on angles in radians.
    /// @{
    /// WGS84 longitude and latitude to a grid; shifts `in_pt` itself to the grid's datum first.
    void geo2tm(int dsttype, GeoPoint& in_pt, GeoPoint& out_pt) const;
    /// A grid point to WGS84 longitude and latitude.
    void tm2geo(int srctype, const GeoPoint& in_pt, GeoPoint& out_pt) const;
    /// Longitude, latitude and height (metres) to geocentric coordinates on a system's ellipsoid. Latitudes
    /// up to 0.1 % beyond a pole count as the pole.
    /// @return true, and the point as it was, for a latitude further beyond.
    bool geodetic_to_geocentric(int type, GeoPoint& p) const;
    /// Geocentric coordinates to longitude, latitude and height. The centre of the earth stays as it is.
    void geocentric_to_geodetic(int type, GeoPoint& p) const;
    /// Geocentric coordinates from Bessel to WGS84.
    void geocentric_to_wgs84(GeoPoint& p) const;
    /// Geocentric coordinates from WGS84 to Bessel.
    void geocentric_from_wgs84(GeoPoint& p) const;
    /// @}
};

}  // namespace pelta
