#include <algorithm>
#include <cmath>
#include <cstdio>
#include <gtest/gtest.h>
#include <memory>
#include <numbers>
#include <proj.h>
#include <sstream>
#include <string>

#include <pelta/Coordinate/GeoTrans.h>

// PROJ, told the same ellipsoids and shift, as an independent truth.

namespace {

using pelta::GeoPoint;
using pelta::GeoTrans;

constexpr double metresPerDegree = 111'320;

struct Grid {
    const char* name;
    int system;
    double worstNear;   ///< Metres, within 3 degrees of the central meridian, both ways.
    double worstThere;  ///< Metres, over all of Korea.
    double worstBack;
};

const Grid grids[] = {
    {"KATEC", GeoTrans::KATEC, 0.005, 0.005, 0.008},
    {"TM", GeoTrans::TM, 0.005, 0.005, 0.015},
    {"GRS80", GeoTrans::GRS80, 0.001, 0.002, 0.015},
    {"UTMK", GeoTrans::UTMK, 0.001, 0.001, 0.007},
};

constexpr const char* shiftToBessel =
    " +step +proj=cart +a=6378137 +b=6356752.3142"
    " +step +inv +proj=helmert +x=-146.43 +y=507.89 +z=681.46"
    " +step +inv +proj=cart +a=6377397.155 +b=6356078.963342249";

/// The grid's projection with exactly the numbers of the table.
std::string projection(int system) {
    const auto i = static_cast<std::size_t>(system);
    std::ostringstream text;
    text.precision(17);
    text << " +step +proj=tmerc +lat_0=" << GeoTrans::m_arLatCenter[i] * 180 / std::numbers::pi
         << " +lon_0=" << GeoTrans::m_arLonCenter[i] * 180 / std::numbers::pi
         << " +k=" << GeoTrans::m_arScaleFactor[i] << " +x_0=" << GeoTrans::m_arFalseEasting[i]
         << " +y_0=" << GeoTrans::m_arFalseNorthing[i] << " +a=" << GeoTrans::m_arMajor[i]
         << " +b=" << GeoTrans::m_arMinor[i];
    return text.str();
}

class Transformation {
 public:
    explicit Transformation(const Grid& grid) : context_(proj_context_create()) {
        const bool isShifted = grid.system == GeoTrans::KATEC || grid.system == GeoTrans::TM;
        const std::string text =
            std::string("+proj=pipeline +step +proj=unitconvert +xy_in=deg +xy_out=rad") +
            (isShifted ? shiftToBessel : "") + projection(grid.system);
        transformation_.reset(proj_create(context_.get(), text.c_str()));
    }

    [[nodiscard]] bool isMade() const { return transformation_ != nullptr; }
    [[nodiscard]] GeoPoint operator()(PJ_DIRECTION direction, const GeoPoint& point) const {
        const PJ_COORD result =
            proj_trans(transformation_.get(), direction, proj_coord(point.x, point.y, 0, 0));
        return {result.xy.x, result.xy.y, 0};
    }

 private:
    struct Release {
        void operator()(PJ_CONTEXT* context) const { proj_context_destroy(context); }
        void operator()(PJ* transformation) const { proj_destroy(transformation); }
    };
    std::unique_ptr<PJ_CONTEXT, Release> context_;
    std::unique_ptr<PJ, Release> transformation_;
};

/// Largest distance between the two, metres, from west to east of a stretch of Korea.
struct Worst {
    double there = 0;
    double back = 0;
};

Worst worstBetween(const Grid& grid, const Transformation& proj, double west, double east) {
    Worst worst;
    for (double latitude = 33; latitude <= 39; latitude += 0.125) {
        for (double longitude = west; longitude <= east; longitude += 0.125) {
            const auto ours = GeoTrans().convert(GeoTrans::GEO, grid.system, {longitude, latitude, 0});
            const auto theirs = proj(PJ_FWD, {longitude, latitude, 0});
            worst.there = std::max(worst.there, std::hypot(ours.x - theirs.x, ours.y - theirs.y));
            const auto oursBack = GeoTrans().convert(grid.system, GeoTrans::GEO, theirs);
            const auto theirsBack = proj(PJ_INV, theirs);
            worst.back = std::max(worst.back, metresPerDegree * std::hypot(oursBack.x - theirsBack.x,
                                                                           oursBack.y - theirsBack.y));
        }
    }
    return worst;
}

// PROJ's series go further than the grids' own, which end at the sixth power of the distance from the central
// meridian: the two part by its seventh.
TEST(GeoTransAgainstProj, agreesBothWaysOverKorea) {
    constexpr double nearDegrees = 3;
    for (const auto& grid : grids) {
        const Transformation proj(grid);
        ASSERT_TRUE(proj.isMade()) << grid.name;
        const double meridian =
            GeoTrans::m_arLonCenter[static_cast<std::size_t>(grid.system)] * 180 / std::numbers::pi;
        const Worst near =
            worstBetween(grid, proj, std::max(124.0, meridian - nearDegrees), meridian + nearDegrees);
        EXPECT_LE(near.there, grid.worstNear) << grid.name;
        EXPECT_LE(near.back, grid.worstNear) << grid.name;
        const Worst all = worstBetween(grid, proj, 124, 132);
        EXPECT_LE(all.there, grid.worstThere) << grid.name;
        EXPECT_LE(all.back, grid.worstBack) << grid.name;
        std::printf(
            "%-5s against PROJ: within 3 degrees %.3f mm there, %.3f mm back; all Korea %.3f mm, %.3f mm\n",
            grid.name, near.there * 1000, near.back * 1000, all.there * 1000, all.back * 1000);
    }
}

}  // namespace
