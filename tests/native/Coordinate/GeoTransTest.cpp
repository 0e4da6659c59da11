#include <cmath>
#include <gtest/gtest.h>
#include <limits>
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

/// Calls a test with every source and destination.
template <class Test>
void forEverySystemPair(Test test) {
    for (int source = 0; source < 5; ++source) {
        for (int destination = 0; destination < 5; ++destination) {
            SCOPED_TRACE("from " + std::to_string(source) + " to " + std::to_string(destination));
            test(source, destination);
        }
    }
}

/// Holds the conversion of one and of many points against the literal one by `isRight(actual, expected)`.
template <class Rule>
void compare(int source, int destination, const std::vector<GeoPoint>& points, Rule isRight) {
    std::vector<GeoPoint> many(points.size());
    GeoTrans().convert(source, destination, points, many);
    for (std::size_t i = 0; i < points.size(); ++i) {
        const auto expected = literal::GeoTrans::convert(static_cast<std::size_t>(source),
                                                         static_cast<std::size_t>(destination), points[i]);
        const auto one = GeoTrans().convert(source, destination, points[i]);
        ASSERT_TRUE(isRight(one.x, expected.x) && isRight(one.y, expected.y) && one.z == 0)
            << text(points[i]) << " became " << text(one) << " instead of " << text(expected);
        ASSERT_TRUE(agree(one.x, many[i].x, 1e-6) && agree(one.y, many[i].y, 1e-6)) << text(points[i]);
    }
}

TEST(GeoTrans, agreesWithTheLiteralFormulasOverKorea) {
    forEverySystemPair([](int source, int destination) {
        // Metres, or degrees for geographic results.
        const double tolerance = destination == GeoTrans::GEO ? 1e-11 : 1e-6;
        compare(source, destination, placesOverKorea(1003, source),
                [=](double actual, double expected) { return agree(actual, expected, tolerance); });
    });
}

// Where terms of 1e300 cancel, only the kind of the outcome is comparable.
TEST(GeoTrans, treatsPointsBeyondAllMeasureAsTheFormulasDo) {
    forEverySystemPair([](int source, int destination) {
        std::vector<GeoPoint> points = placesOverKorea(3, source);
        for (const double odd : {nan, infinity, -infinity, 1e300, 0.0}) {
            points.push_back({odd, points[0].y, 0});
            points.push_back({points[0].x, odd, 0});
            points.push_back({odd, odd, 0});
        }
        compare(source, destination, points, [](double actual, double expected) {
            return std::isfinite(actual) == std::isfinite(expected);
        });
    });
}

TEST(GeoTrans, putsTheOriginOfEachUnshiftedGridOnItsFalseOrigin) {
    const pelta::PgmGrs80 grs80(pelta::CLLocationCoordinate2D{38, 127});
    EXPECT_NEAR(grs80.x, 200'000, 1e-6);
    EXPECT_NEAR(grs80.y, 500'000, 1e-6);
    const pelta::PgmUtmk utmk(pelta::CLLocationCoordinate2D{38, 127.5});
    EXPECT_NEAR(utmk.x, 1'000'000, 1e-6);
    EXPECT_NEAR(utmk.y, 2'000'000, 1e-6);
}

TEST(GeoTrans, stopsOnASystemThatIsNone) {
    EXPECT_DEATH((void)GeoTrans().convert(5, 0, {}), "there is no coordinate system 5");
    std::vector<GeoPoint> points(2);
    std::vector<GeoPoint> results(1);
    EXPECT_DEATH(GeoTrans().convert(0, 1, points, results), "2 points cannot be converted into 1 results");
}

}  // namespace
