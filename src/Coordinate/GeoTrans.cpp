#include <cmath>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <numbers>

#include <pelta/Coordinate/GeoTrans.h>

#include "Coordinate/BatchConversion.h"
#include "Coordinate/GridPipeline.h"
#include "Coordinate/ScalarMath.h"

namespace pelta {
namespace {

using Steps = detail::GridSteps<detail::ScalarMath>;
using detail::gridParameters;

constexpr double degree = std::numbers::pi / 180;

/// The conversion step by step, for any point whatever.
GeoPoint convertBySteps(const GeoTrans& trans, int source, int destination, const GeoPoint& point) {
    GeoPoint place;
    if (source == GeoTrans::GEO) {
        place = {point.x * degree, point.y * degree, 0};
    } else {
        trans.tm2geo(source, point, place);
    }
    if (destination == GeoTrans::GEO) {
        return {place.x / degree, place.y / degree, 0};
    }
    GeoPoint result;
    trans.geo2tm(destination, place, result);
    return result;
}

}  // namespace

GeoPoint GeoTrans::convert(int srctype, int dsttype, GeoPoint in_pt) const {
    const detail::GridPipeline<detail::ScalarMath> pipeline(srctype, dsttype);
    bool isOrdinary = false;
    const auto result = pipeline.run(in_pt.x, in_pt.y, isOrdinary);
    return isOrdinary ? GeoPoint{result.x, result.y, 0} : convertBySteps(*this, srctype, dsttype, in_pt);
}

void GeoTrans::convert(int srctype, int dsttype, std::span<const GeoPoint> points,
                       std::span<GeoPoint> results) const {
    if (points.size() != results.size()) {
        std::fprintf(
            stderr, "GeoTrans: %zu points cannot be converted into %zu results; make the spans of one size\n",
            points.size(), results.size());
        std::abort();
    }
    std::size_t done = 0;
    if (detail::hasWideConversion()) {
        done = detail::convertWide(*this, srctype, dsttype, points, results);
    }
    for (; done < points.size(); ++done) {
        results[done] = convert(srctype, dsttype, points[done]);
    }
}

void GeoTrans::geo2tm(int dsttype, GeoPoint& in_pt, GeoPoint& out_pt) const {
    const auto& grid = gridParameters(dsttype);
    if (grid.needsDatumShift) {
        geodetic_to_geocentric(GEO, in_pt);
        geocentric_from_wgs84(in_pt);
        geocentric_to_geodetic(dsttype, in_pt);
    }
    const auto point =
        Steps::project(grid, {in_pt.y, Steps::directionOf(in_pt.y)}, in_pt.x - grid.centralMeridian);
    out_pt.x = point.x;
    out_pt.y = point.y;
}

void GeoTrans::tm2geo(int srctype, const GeoPoint& in_pt, GeoPoint& out_pt) const {
    const auto& grid = gridParameters(srctype);
    const double easting = in_pt.x - grid.falseEasting;
    const double northing = in_pt.y - grid.falseNorthing;
    const auto foot = Steps::footPoint(grid, northing);
    if (std::abs(foot.value) < HALF_PI) {
        const auto place = Steps::unproject(grid, foot, easting);
        out_pt.x = place.x;
        out_pt.y = place.y;
    } else {
        out_pt.x = grid.centralMeridian;
        out_pt.y = HALF_PI * std::sin(northing);
    }
    if (grid.needsDatumShift) {
        geodetic_to_geocentric(srctype, out_pt);
        geocentric_to_wgs84(out_pt);
        geocentric_to_geodetic(GEO, out_pt);
    }
}

bool GeoTrans::geodetic_to_geocentric(int type, GeoPoint& p) const {
    constexpr double slack = 1.001;
    const auto& grid = gridParameters(type);
    double latitude = p.y;
    if (latitude < -HALF_PI && latitude > -slack * HALF_PI) {
        latitude = -HALF_PI;
    } else if (latitude > HALF_PI && latitude < slack * HALF_PI) {
        latitude = HALF_PI;
    } else if (latitude < -HALF_PI || latitude > HALF_PI) {
        return true;
    }
    const double longitude = p.x > std::numbers::pi ? p.x - 2 * std::numbers::pi : p.x;
    const auto point =
        Steps::toGeocentric(grid, Steps::directionOf(longitude), Steps::directionOf(latitude), p.z);
    p = {point.x, point.y, point.z};
    return false;
}

void GeoTrans::geocentric_to_geodetic(int type, GeoPoint& p) const {
    const auto& grid = gridParameters(type);
    const bool isOnAxis = p.x == 0 && p.y == 0;
    if (isOnAxis && p.z == 0) {
        return;
    }
    const auto toms = Steps::latitudeOf(grid, {p.x, p.y, p.z});
    const double normal = grid.major / std::sqrt(1 - grid.eccentricitySquared * toms.sine * toms.sine);
    double height = p.z / toms.sine + normal * (grid.eccentricitySquared - 1);
    if (toms.cosine >= COS_67P5) {
        height = toms.axisDistance / toms.cosine - normal;
    } else if (toms.cosine <= -COS_67P5) {
        height = toms.axisDistance / -toms.cosine - normal;
    }
    if (isOnAxis) {
        p = {0, p.z > 0 ? HALF_PI : -HALF_PI, height};
    } else {
        p = {p.x == 0 ? (p.y > 0 ? HALF_PI : -HALF_PI) : std::atan2(p.y, p.x),
             std::atan(toms.sine / toms.cosine), height};
    }
}

void GeoTrans::geocentric_to_wgs84(GeoPoint& p) const {
    p.x += datum_params[0];
    p.y += datum_params[1];
    p.z += datum_params[2];
}

void GeoTrans::geocentric_from_wgs84(GeoPoint& p) const {
    p.x -= datum_params[0];
    p.y -= datum_params[1];
    p.z -= datum_params[2];
}

}  // namespace pelta
