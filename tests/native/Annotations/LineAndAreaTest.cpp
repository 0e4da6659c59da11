#include <cmath>

#include "View/MapFixture.h"

namespace pelta {
namespace {

using Coordinates = std::vector<CLLocationCoordinate2D>;

class LineAndAreaTest : public MapFixture {
 protected:
    std::shared_ptr<PgmMapView> map = makeLoadedMap();
};

const Coordinates corners{{1, 2}, {3, 4}, {5, 6}};

TEST_F(LineAndAreaTest, FewerThanTwoCoordinatesStopTheProcess) {
    const Coordinates one{{1, 1}};
    EXPECT_DEATH((void)PgmPolyline::create(one), "coords count must be 2 or more");
    EXPECT_DEATH((void)PgmPolygon::create(one), "coords count must be 2 or more");
    EXPECT_EQ(PgmPolygon::create({{1, 1}, {2, 2}})->coords().size(), 2U);
}

/// The coordinates of both members of an area's feature, which must be the same.
Coordinates ringOf(const PgmAreaShape& shape) {
    const auto collection = std::dynamic_pointer_cast<MLNShapeCollectionFeature>(shape.feature());
    EXPECT_EQ(collection->shapes().size(), 2U);
    const auto area = std::dynamic_pointer_cast<MLNPolygonFeature>(collection->shapes()[0]);
    const auto outline = std::dynamic_pointer_cast<MLNPolylineFeature>(collection->shapes()[1]);
    EXPECT_EQ(*area->attribute("identifier"), MLNAttributeValue(shape.identifier()));
    EXPECT_EQ(*outline->attribute("identifier"), MLNAttributeValue(shape.identifier() + "_line"));
    EXPECT_EQ(area->coordinates(), outline->coordinates());
    return area->coordinates();
}

TEST_F(LineAndAreaTest, AreasAreFilledAndOutlinedByTheSameFeature) {
    const UIColor fill{0, 1, 0, 0.5};
    const std::pair<std::shared_ptr<PgmAreaShape>, UIColor> cases[] = {
        {PgmPolygon::create(corners), UIColor::white()}, {PgmCircle::create({37, 127}, 50, fill), fill}};
    for (const auto& [area, color] : cases) {
        SCOPED_TRACE(area->identifier());
        EXPECT_EQ(area->globalZIndex(), -1000);
        area->setMapView(map);
        EXPECT_THAT(area->styleLayers(), testing::ElementsAre(area->fillLayer(), area->lineLayer()));
        EXPECT_EQ(area->lineLayer()->predicate(), area->fillLayer()->predicate());
        EXPECT_EQ(area->fillLayer()->fillColor()->constant(), color);
        EXPECT_EQ(area->lineLayer()->lineWidth()->constant(), 0);
        area->setFillColor(UIColor::black());
        area->setStrokeWidth(3);
        area->setStrokeColor(fill);
        EXPECT_EQ(area->fillLayer()->fillColor()->constant(), UIColor::black());
        EXPECT_EQ(area->lineLayer()->lineWidth()->constant(), 3);
        EXPECT_EQ(area->lineLayer()->lineColor()->constant(), fill);
    }
    EXPECT_EQ(ringOf(*cases[0].first), corners);
    port.runFrame();
    EXPECT_EQ(featuresOf(map).size(), 4U);
}

TEST_F(LineAndAreaTest, HolesAreRingsOfTheArea) {
    const double nan = std::nan("");
    const Coordinates triangle{{2, 3}, {2, 4}, {3, 4}};
    const Coordinates closed{{2, 3}, {2, 4}, {3, 4}, {2, 3}};
    const Coordinates flat{{2, 3}, {2, 3.5}, {2, 4}};
    const Coordinates twoPlaces{{2, 3}, {2, 4}, {2, 3}, {2, 4}, {2, 3}};
    struct Case {
        std::string name;
        std::vector<Coordinates> given;
        std::vector<Coordinates> kept;
        std::optional<MLNShapeKind> drawn = MLNShapeKind::polygon;
    };
    const Case cases[] = {
        {"none", {}, {}},
        {"open, closed, flat", {triangle, closed, flat}, {triangle, closed, flat}},
        {"too few places", {{}, {{2, 3}}, twoPlaces, triangle}, {triangle}},
        {"not finite", {{{2, 3}, {nan, 4}, {3, 4}, {3, 3}}, triangle}, {triangle}, std::nullopt},
    };
    const auto polygon = PgmPolygon::create({{0, 0}, {0, 9}, {9, 9}, {9, 0}});
    const auto area = [&] {
        const auto collection = std::dynamic_pointer_cast<MLNShapeCollectionFeature>(polygon->feature());
        return std::dynamic_pointer_cast<MLNPolygonFeature>(collection->shapes()[0]);
    };
    for (const Case& c : cases) {
        polygon->setHoles(c.given);
        EXPECT_EQ(polygon->holes().size(), c.given.size()) << c.name;
        EXPECT_EQ(area()->drawnKind(), c.drawn) << c.name;
        if (c.drawn) {
            EXPECT_EQ(area()->holes(), c.kept) << c.name;
        }
    }
    polygon->setHoles({triangle});
    polygon->setCoords({{0, 0}, {0, 9}, {9, 9}});
    EXPECT_EQ(area()->holes(), std::vector<Coordinates>{triangle}) << "another ring keeps the holes";
}

/// Metres between two coordinates on the sphere, by the haversine formula.
double distance(CLLocationCoordinate2D a, CLLocationCoordinate2D b) {
    constexpr double radians = M_PI / 180;
    const double north = std::sin((b.latitude - a.latitude) * radians / 2);
    const double east = std::sin((b.longitude - a.longitude) * radians / 2);
    const double narrowing = std::cos(a.latitude * radians) * std::cos(b.latitude * radians);
    return 2 * 6378137 * std::asin(std::hypot(north, std::sqrt(narrowing) * east));
}

TEST_F(LineAndAreaTest, CircleIsARingAtItsRadius) {
    const CLLocationCoordinate2D centers[] = {{37.5, 127}, {0, 0}, {-60, 179.9}};
    for (const auto& center : centers) {
        for (const double radius : {1.0, 1000.0, 500000.0}) {
            SCOPED_TRACE(radius);
            const auto ring = ringOf(*PgmCircle::create(center, radius));
            ASSERT_EQ(ring.size(), 361U);
            EXPECT_EQ(ring.front(), ring.back());
            for (const auto& corner : ring) {
                EXPECT_NEAR(distance(center, corner), radius, radius * 1e-6 + 1e-3);
            }
            EXPECT_GT(ring[0].latitude, center.latitude) << "starts in the north";
            EXPECT_NEAR(ring[0].longitude, center.longitude, 1e-9);
            EXPECT_GT(ring[90].longitude, center.longitude) << "and goes on in the east";
        }
    }
    EXPECT_EQ(PgmCircle::coords({10, 20}, 5).size(), 360U);
}

TEST_F(LineAndAreaTest, CirclesOfEveryKindStayDrawable) {
    for (const auto& corner : ringOf(*PgmCircle::create({1, 2}, 0))) {
        EXPECT_NEAR(corner.latitude, 1, 1e-9);
        EXPECT_NEAR(corner.longitude, 2, 1e-9);
    }
    for (const double latitude : {84.9, 90.0, -90.0}) {
        for (const auto& corner : ringOf(*PgmCircle::create({latitude, 0}, 2e6))) {
            EXPECT_LE(std::abs(corner.latitude), 85);
            EXPECT_TRUE(std::isfinite(corner.longitude));
        }
    }
    EXPECT_EQ(ringOf(*PgmCircle::create({80, 0}, 9e5))[0].latitude, 85) << "its north is at 88 degrees";
    const auto circle = PgmCircle::create({1, 2});
    circle->setMapView(map);
    circle->setCenter(std::nullopt);
    EXPECT_EQ(circle->feature(), nullptr);
    port.runFrame();
    EXPECT_TRUE(featuresOf(map).empty());
    circle->setCenter({3, 4});
    circle->setRadius(NAN);
    EXPECT_EQ(circle->feature(), nullptr);
    circle->setRadius(10);
    EXPECT_NEAR(ringOf(*circle)[0].latitude, 3, 1e-3);
}

TEST_F(LineAndAreaTest, AWidthThatIsNotFiniteKeepsWhatWasDrawn) {
    const auto line = PgmPolyline::create(corners);
    const auto area = PgmPolygon::create(corners);
    line->setWidth(NAN);
    area->setStrokeWidth(INFINITY);
    line->setMapView(map);
    area->setMapView(map);
    EXPECT_EQ(line->lineLayer()->lineWidth()->constant(), 2.5) << "never drawn: as a new line";
    EXPECT_EQ(area->lineLayer()->lineWidth()->constant(), 0) << "never drawn: no outline";
    line->setWidth(7);
    line->setWidth(-INFINITY);
    EXPECT_EQ(line->lineLayer()->lineWidth()->constant(), 7);
    EXPECT_EQ(line->width(), -INFINITY);
}

TEST_F(LineAndAreaTest, WhatThereIsToDrawOfThem) {
    using Kind = MLNShapeKind;
    const std::optional<Kind> nothing;
    struct Case {
        const char* name;
        Coordinates coordinates;
        std::optional<Kind> asLine, asArea;
    };
    const Case cases[] = {
        {"no coordinate", {}, nothing, nothing},
        {"one", {{1, 2}}, nothing, nothing},
        {"one place, many times", Coordinates(361, {1, 2}), nothing, nothing},
        {"0 and -0", {{0.0, 0.0}, {-0.0, -0.0}}, nothing, nothing},
        {"two places", {{1, 2}, {1, 2}, {1, 3}}, Kind::polyline, Kind::polyline},
        {"once around the world", {{1, -180}, {1, 180}}, Kind::polyline, Kind::polyline},
        {"along a meridian", {{1, 2}, {5, 2}, {3, 2}, {-4, 2}}, Kind::polyline, Kind::polyline},
        {"along the limit of circles",
         {{85, 0}, {85, 9}, {85, 200}, {85, 0}},
         Kind::polyline,
         Kind::polyline},
        {"beyond the map's edge", {{87, 0}, {89, 5}, {86, 9}}, Kind::polyline, Kind::polyline},
        {"there and back", {{1, 2}, {3, 9}, {8, 4}, {3, 9}}, Kind::polyline, Kind::polyline},
        {"not a number", {{1, 2}, {NAN, 3}, {5, 6}}, nothing, nothing},
        {"infinite", {{1, 2}, {1, INFINITY}, {5, 6}}, nothing, nothing},
        {"triangle", {{1, 2}, {3, 9}, {8, 4}}, Kind::polyline, Kind::polygon},
        {"triangle with a way out and back",
         {{1, 2}, {3, 9}, {8, 4}, {9, 9}, {8, 4}},
         Kind::polyline,
         Kind::polygon},
        {"corners after many on one line",
         {{1, 2}, {2, 2}, {3, 2}, {4, 2}, {5, 2}, {4, 3}},
         Kind::polyline,
         Kind::polygon},
        {"two halves that cancel out", {{0, 0}, {4, 4}, {4, 0}, {0, 4}}, Kind::polyline, Kind::polygon},
        {"a step of a metre",
         {{37, 127}, {37.00001, 127}, {37.00001, 127.00001}},
         Kind::polyline,
         Kind::polygon},
        {"half the world", {{-80, -170}, {80, -170}, {80, 10}, {-80, 10}}, Kind::polyline, Kind::polygon},
        {"larger than any world", {{0, -1e300}, {10, 1e300}, {10, -1e300}}, Kind::polyline, Kind::polygon},
    };
    for (const auto& [name, coordinates, asLine, asArea] : cases) {
        SCOPED_TRACE(name);
        EXPECT_EQ(MLNPolylineFeature::polylineWithCoordinates(coordinates)->drawnKind(), asLine);
        EXPECT_EQ(MLNPolygonFeature::polygonWithCoordinates(coordinates)->drawnKind(), asArea);
    }
}

}  // namespace
}  // namespace pelta
