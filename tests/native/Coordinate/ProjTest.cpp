#include <algorithm>
#include <cmath>
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
    double worstThere;  ///< Metres, over all of Korea.
    double worstBack;
};

// PROJ's series go further than the grids' own, which end at the sixth power of the distance from the central
// meridian: the two part by its seventh.
const Grid grids[] = {
    {"KATEC", GeoTrans::KATEC, 0.005, 0.008},
    {"TM", GeoTrans::TM, 0.005, 0.015},
    {"GRS80", GeoTrans::GRS80, 0.002, 0.015},
    {"UTMK", GeoTrans::UTMK, 0.001, 0.007},
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

TEST(GeoTransAgainstProj, agreesBothWaysOverKorea) {
    for (const auto& grid : grids) {
        const Transformation proj(grid);
        ASSERT_TRUE(proj.isMade()) << grid.name;
        double worstThere = 0;  // Metres.
        double worstBack = 0;
        for (double latitude = 33; latitude <= 39; latitude += 0.125) {
            for (double longitude = 124; longitude <= 132; longitude += 0.125) {
                const auto ours = GeoTrans().convert(GeoTrans::GEO, grid.system, {longitude, latitude, 0});
                const auto theirs = proj(PJ_FWD, {longitude, latitude, 0});
                worstThere = std::max(worstThere, std::hypot(ours.x - theirs.x, ours.y - theirs.y));
                const auto back = GeoTrans().convert(grid.system, GeoTrans::GEO, theirs);
                const auto theirsBack = proj(PJ_INV, theirs);
                worstBack = std::max(
                    worstBack, metresPerDegree * std::hypot(back.x - theirsBack.x, back.y - theirsBack.y));
            }
        }
        EXPECT_LE(worstThere, grid.worstThere) << grid.name;
        EXPECT_LE(worstBack, grid.worstBack) << grid.name;
    }
}

}  // namespace
