#include <cmath>
#include <limits>

#include "View/MapFixture.h"

namespace pelta {
namespace {

const double nan = std::numeric_limits<double>::quiet_NaN();

TEST(LatLngBoundsTest, ContainsWhatLiesInsideOrOnAnEdge) {
    const std::vector<std::pair<CLLocationCoordinate2D, bool>> cases{
        {{2, 3}, true},      {{1, 2}, true},    {{3, 4}, true},    {{1, 4}, true},    {{0.999, 3}, false},
        {{3.001, 3}, false}, {{2, 1.9}, false}, {{2, 4.1}, false}, {{nan, 3}, false}, {{2, nan}, false}};
    const auto bounds = PgmLatLngBounds::create({1, 2}, {3, 4});
    for (const auto& [coordinate, isInside] : cases) {
        EXPECT_EQ(bounds->contains(coordinate), isInside)
            << coordinate.latitude << ", " << coordinate.longitude;
    }
    EXPECT_TRUE(bounds->contains(*bounds));
    EXPECT_TRUE(bounds->contains(*PgmLatLngBounds::create({2, 2}, {3, 3})));
    EXPECT_FALSE(bounds->contains(*PgmLatLngBounds::create({2, 2}, {3, 5})));
    EXPECT_FALSE(bounds->contains(*PgmLatLngBounds::create({0, 2}, {3, 3})));
    EXPECT_FALSE(PgmLatLngBounds::create({0, 170}, {10, -170})->contains(CLLocationCoordinate2D{5, 180}));
}

TEST(LatLngBoundsTest, EnclosesCoordinates) {
    const std::vector<CLLocationCoordinate2D> same{{10, 20}, {10, 20}};
    const auto point = PgmLatLngBounds::bounds(same);
    EXPECT_EQ(point->southWest(), same[0]);
    EXPECT_EQ(point->northEast(), same[0]);
    EXPECT_TRUE(point->contains(same[0]));

    const auto bounds = PgmLatLngBounds::bounds(
        std::vector<CLLocationCoordinate2D>{{-80, 170}, {nan, 7}, {60, -175}, {61, -20}});
    EXPECT_EQ(bounds->southWest(), (CLLocationCoordinate2D{-80, -175}));
    EXPECT_EQ(bounds->northEast(), (CLLocationCoordinate2D{61, 170}));

    const std::vector<CLLocationCoordinate2D> one{{1, 1}};
    EXPECT_DEATH((void)PgmLatLngBounds::bounds(one), R"(coords count must be 2 or more.*PgmLatLngBounds:39)");
}

TEST(MapProjectionTest, MapsTheWorldToASquare) {
    // Middle rows by y = (1 - asinh(tan latitude) / pi) / 2.
    const auto row = [](double latitude) {
        return 128 *
               (1 - std::asinh(std::tan(latitude * 3.14159265358979323846 / 180)) / 3.14159265358979323846);
    };
    const std::vector<std::pair<CLLocationCoordinate2D, CGPoint>> cases{
        {{0, 0}, {128, 128}},          {{0, -180}, {0, 128}},        {{37.5, 126}, {217.6, row(37.5)}},
        {{-60, 180}, {256, row(-60)}}, {{85.05112878, 0}, {128, 0}}, {{89, 0}, {128, 0}},
        {{-89, 0}, {128, 256}},        {{nan, 0}, {128, 0}}};
    for (const auto& [coordinate, point] : cases) {
        SCOPED_TRACE(coordinate.latitude);
        const auto projected = MapProjection::project(coordinate, 256);
        EXPECT_NEAR(projected.x, point.x, 1e-9);
        EXPECT_NEAR(projected.y, point.y, 1e-6);
    }
}

class ProjectionTest : public MapFixture {};

TEST_F(ProjectionTest, OutlivesItsMap) {
    auto map = makeMap();
    const auto projection = map->projection();
    const CGRect rect{{100, 200}, {300, 150}};
    const auto bounds = projection->latlngBounds(rect);
    map->removeFromSuperview();
    map.reset();
    EXPECT_EQ(projection->latlng({1, 1}), std::nullopt);
    EXPECT_EQ(projection->point({1, 1}), CGPoint{});
    EXPECT_EQ(projection->latlngBounds(rect), nullptr);
    EXPECT_EQ(projection->viewBounds(*bounds), CGRect{});
    EXPECT_EQ(projection->metersPerPixel(), 0);
}

}  // namespace
}  // namespace pelta
