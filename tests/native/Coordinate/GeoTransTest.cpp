#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <numbers>
#include <random>
#include <string>
#include <vector>

#include <pelta/Coordinate/GeoTrans.h>
#include <pelta/Coordinate/PgmGridPoint.h>

#include "Coordinate/LiteralGeoTrans.h"

namespace {

using pelta::GeoPoint;
using pelta::GeoTrans;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double nan = std::numeric_limits<double>::quiet_NaN();

/// How far two results of one system may differ: metres, or degrees for geographic ones.
double tolerance(int system) {
    return system == GeoTrans::GEO ? 1e-11 : 1e-6;
}

std::vector<GeoPoint> placesOverKorea(std::size_t count, int system) {
    std::mt19937_64 random(5);
    std::uniform_real_distribution<double> latitude(33, 39);
    std::uniform_real_distribution<double> longitude(124, 132);
    std::vector<GeoPoint> places(count);
    for (auto& place : places) {
        place = literal::GeoTrans::convert(0, static_cast<std::size_t>(system),
                                           {longitude(random), latitude(random), 0});
    }
    return places;
}

/// Equal, both not a number, or (finite) within a distance.
bool agree(double a, double b, double distance) {
    return (std::isnan(a) && std::isnan(b)) || a == b || std::abs(a - b) <= distance;
}

std::string text(const GeoPoint& point) {
    return std::to_string(point.x) + " " + std::to_string(point.y);
}

struct Systems {
    int source;
    int destination;
};

class EverySystemPair : public testing::TestWithParam<Systems> {
 public:
    static std::vector<Systems> all() {
        std::vector<Systems> pairs;
        for (int source = 0; source < 5; ++source) {
            for (int destination = 0; destination < 5; ++destination) {
                pairs.push_back({source, destination});
            }
        }
        return pairs;
    }

 protected:
    /// Holds the conversion of one and of many points against the literal one.
    static void compare(const std::vector<GeoPoint>& points, double distance) {
        const auto [source, destination] = GetParam();
        std::vector<GeoPoint> many(points.size());
        GeoTrans().convert(source, destination, points, many);
        for (std::size_t i = 0; i < points.size(); ++i) {
            const auto expected = literal::GeoTrans::convert(
                static_cast<std::size_t>(source), static_cast<std::size_t>(destination), points[i]);
            for (const auto& actual : {GeoTrans().convert(source, destination, points[i]), many[i]}) {
                ASSERT_TRUE(agree(actual.x, expected.x, distance) && agree(actual.y, expected.y, distance))
                    << text(points[i]) << " became " << text(actual) << " instead of " << text(expected);
                ASSERT_EQ(actual.z, 0);
            }
        }
    }
};

TEST_P(EverySystemPair, agreesWithTheLiteralFormulasOverKorea) {
    compare(placesOverKorea(1003, GetParam().source), tolerance(GetParam().destination));
}

TEST_P(EverySystemPair, treatsPointsBeyondAllMeasureAsTheFormulasDo) {
    std::vector<GeoPoint> points = placesOverKorea(3, GetParam().source);
    for (const double odd : {nan, infinity, -infinity, 1e300, 0.0}) {
        points.push_back({odd, points[0].y, 0});
        points.push_back({points[0].x, odd, 0});
        points.push_back({odd, odd, 0});
    }
    if (GetParam().source == GeoTrans::GEO && GetParam().destination == GeoTrans::GEO) {
        compare(points, 1e285);
        return;
    }
    // Where terms of 1e300 cancel, only the kind of the outcome is comparable.
    std::vector<GeoPoint> many(points.size());
    GeoTrans().convert(GetParam().source, GetParam().destination, points, many);
    for (std::size_t i = 0; i < points.size(); ++i) {
        const auto expected =
            literal::GeoTrans::convert(static_cast<std::size_t>(GetParam().source),
                                       static_cast<std::size_t>(GetParam().destination), points[i]);
        const auto one = GeoTrans().convert(GetParam().source, GetParam().destination, points[i]);
        EXPECT_EQ(std::isfinite(one.x), std::isfinite(expected.x)) << text(points[i]);
        EXPECT_EQ(std::isfinite(one.y), std::isfinite(expected.y)) << text(points[i]);
        EXPECT_TRUE(agree(one.x, many[i].x, 1e-6) && agree(one.y, many[i].y, 1e-6)) << text(points[i]);
    }
}

INSTANTIATE_TEST_SUITE_P(Systems, EverySystemPair, testing::ValuesIn(EverySystemPair::all()),
                         [](const auto& info) {
                             return "from" + std::to_string(info.param.source) + "To" +
                                    std::to_string(info.param.destination);
                         });

TEST(GeoTrans, putsTheOriginOfEachUnshiftedGridOnItsFalseOrigin) {
    const pelta::PgmGrs80 grs80(pelta::CLLocationCoordinate2D{38, 127});
    EXPECT_NEAR(grs80.x, 200'000, 1e-6);
    EXPECT_NEAR(grs80.y, 500'000, 1e-6);
    const pelta::PgmUtmk utmk(pelta::CLLocationCoordinate2D{38, 127.5});
    EXPECT_NEAR(utmk.x, 1'000'000, 1e-6);
    EXPECT_NEAR(utmk.y, 2'000'000, 1e-6);
}

TEST(GeoTrans, shiftsTheDatumOfTheBesselGrids) {
    // The origin on Bessel lies about 400 m from the same angles on WGS84.
    const auto origin = pelta::PgmKatec(400'000, 600'000).toLatLng();
    EXPECT_NEAR(origin.latitude, 38, 0.01);
    EXPECT_NEAR(origin.longitude, 128, 0.01);
    EXPECT_GT(std::abs(origin.latitude - 38) + std::abs(origin.longitude - 128), 1e-3);
}

// The grids' series end at the sixth power, so their error grows with the distance from the central meridian.
// A grid point of the Bessel grids has no height, so the way back starts a little off the way there.
TEST(GeoTrans, comesBackWithinMillimetres) {
    constexpr double millimetreInDegrees = 1e-3 / 111'320;
    constexpr double nearDegrees = 3;
    constexpr double worstMillimetres = 20;
    for (int grid = GeoTrans::KATEC; grid <= GeoTrans::UTMK; ++grid) {
        const double meridian =
            GeoTrans::m_arLonCenter[static_cast<std::size_t>(grid)] * 180 / std::numbers::pi;
        for (const auto& place : placesOverKorea(500, GeoTrans::GEO)) {
            const auto there = GeoTrans().convert(GeoTrans::GEO, grid, place);
            const auto back = GeoTrans().convert(grid, GeoTrans::GEO, there);
            const double nearMillimetres = grid == GeoTrans::KATEC || grid == GeoTrans::TM ? 5 : 1;
            const bool isNear = std::abs(place.x - meridian) <= nearDegrees;
            const double allowed = (isNear ? nearMillimetres : worstMillimetres) * millimetreInDegrees;
            ASSERT_NEAR(back.x, place.x, allowed) << "grid " << grid << " at " << text(place);
            ASSERT_NEAR(back.y, place.y, allowed) << "grid " << grid << " at " << text(place);
        }
    }
}

TEST(GeoTrans, leavesTheCentreOfTheEarthAlone) {
    GeoPoint centre;
    GeoTrans().geocentric_to_geodetic(GeoTrans::KATEC, centre);
    EXPECT_EQ(centre, GeoPoint{});
}

TEST(GeoTrans, stopsOnASystemThatIsNone) {
    EXPECT_DEATH((void)GeoTrans().convert(5, 0, {}), "there is no coordinate system 5");
    std::vector<GeoPoint> points(2);
    std::vector<GeoPoint> results(1);
    EXPECT_DEATH(GeoTrans().convert(0, 1, points, results), "2 points cannot be converted into 1 results");
}

}  // namespace
