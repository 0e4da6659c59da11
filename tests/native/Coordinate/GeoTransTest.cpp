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

GeoPoint literally(int source, int destination, const GeoPoint& point) {
    return literal::GeoTrans::convert(static_cast<std::size_t>(source), static_cast<std::size_t>(destination),
                                      point);
}

std::vector<GeoPoint> placesOverKorea(std::size_t count, int system) {
    std::mt19937_64 random(5);
    std::uniform_real_distribution<double> latitude(33, 39);
    std::uniform_real_distribution<double> longitude(124, 132);
    std::vector<GeoPoint> places(count);
    for (auto& place : places) {
        place = literally(GeoTrans::GEO, system, {longitude(random), latitude(random), 0});
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

/// Holds the conversion of one and of many points against the literal one by `isRight(point, actual,
/// expected)`.
template <class Rule>
void compare(int source, int destination, const std::vector<GeoPoint>& points, Rule isRight) {
    std::vector<GeoPoint> many(points.size());
    GeoTrans().convert(source, destination, points, many);
    for (std::size_t i = 0; i < points.size(); ++i) {
        const auto expected = literally(source, destination, points[i]);
        for (const auto& actual : {GeoTrans().convert(source, destination, points[i]), many[i]}) {
            ASSERT_TRUE(isRight(points[i], actual, expected) && actual.z == 0)
                << text(points[i]) << " became " << text(actual) << " instead of " << text(expected);
        }
    }
}

/// Metres, or degrees for geographic results, within which well-conditioned results agree.
double toleranceFor(int destination) {
    return destination == GeoTrans::GEO ? 1e-11 : 1e-6;
}

TEST(GeoTrans, agreesWithTheLiteralFormulasOverKorea) {
    forEverySystemPair([](int source, int destination) {
        const double tolerance = toleranceFor(destination);
        compare(source, destination, placesOverKorea(1003, source),
                [=](const GeoPoint&, const GeoPoint& actual, const GeoPoint& expected) {
                    return agree(actual.x, expected.x, tolerance) && agree(actual.y, expected.y, tolerance);
                });
    });
}

// Far out the series' terms grow beyond measure and cancel: there as much is allowed as the literal result
// itself moves when a coordinate does in its thirteenth figure, and anything where that is a hundredth of it.
TEST(GeoTrans, agreesWithTheLiteralFormulasFarFromKorea) {
    std::mt19937_64 random(11);
    std::uniform_real_distribution<double> metres(-4e7, 4e7);
    std::uniform_real_distribution<double> degrees(-400, 400);
    forEverySystemPair([&](int source, int destination) {
        auto& coordinate = source == GeoTrans::GEO ? degrees : metres;
        std::vector<GeoPoint> points(2001);
        for (auto& point : points) {
            point = {coordinate(random), coordinate(random), 0};
        }
        points[0] = {400'000, 13'000'000, 0};
        compare(source, destination, points,
                [=](const GeoPoint& point, const GeoPoint& actual, const GeoPoint& expected) {
                    constexpr double nudge = 1 + 3e-13;
                    const auto east = literally(source, destination, {point.x * nudge, point.y, 0});
                    const auto north = literally(source, destination, {point.x, point.y * nudge, 0});
                    const auto isNear = [&](double GeoPoint::*axis) {
                        const double exact = expected.*axis;
                        const double noise = std::abs(east.*axis - exact) + std::abs(north.*axis - exact);
                        return noise > std::abs(exact) / 100 + 1 ||
                               agree(actual.*axis, exact,
                                     toleranceFor(destination) + 1e-11 * std::abs(exact) + noise);
                    };
                    return isNear(&GeoPoint::x) && isNear(&GeoPoint::y);
                });
    });
    const auto beyondThePole = GeoTrans().convert(GeoTrans::KATEC, GeoTrans::GEO, {400'000, 13'000'000, 0});
    EXPECT_NEAR(beyondThePole.x, 127.9708, 5e-5);
    EXPECT_NEAR(beyondThePole.y, 86.5259, 5e-5);
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
        compare(source, destination, points,
                [](const GeoPoint&, const GeoPoint& actual, const GeoPoint& expected) {
                    return std::isfinite(actual.x) == std::isfinite(expected.x) &&
                           std::isfinite(actual.y) == std::isfinite(expected.y);
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
