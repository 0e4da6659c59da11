#include <gmock/gmock.h>
#include <set>
#include <string>

#include <pelta/Annotations/PgmCircle.h>
#include <pelta/Annotations/PgmMarker.h>
#include <pelta/Annotations/PgmPolygon.h>
#include <pelta/Annotations/PgmPolyline.h>
#include <pelta/headless/HeadlessPort.h>

#include "data/GeoJsonReader.h"
#include "data/LoadReport.h"
#include "map/KoreaScene.h"
#include "map/Overlays.h"

namespace pelta::viewer {
namespace {

using ::testing::ElementsAre;

constexpr UIColor orange{1, 0x66 / 255.0, 0, 1};

struct ViewerOverlays : ::testing::Test {
    HeadlessPort port;
    PinPictures pins;

    std::string collection(const std::string& properties, const std::string& geometries) const {
        return R"({"type":"Feature","properties":)" + properties +
               R"(,"geometry":{"type":"GeometryCollection","geometries":[)" + geometries + "]}}";
    }
};

const char* const geometries =
    R"({"type":"Point","coordinates":[127,37]},{"type":"LineString","coordinates":[[126,36],[128,38]]},)"
    R"({"type":"Polygon","coordinates":[[[126,36],[127,36],[127,37],[126,36]]]})";

TEST_F(ViewerOverlays, ShapesHaveTheStyleOfTheirFeature) {
    const MapData data = readGeoJson(
        collection(
            R"({"title":"대전","marker-color":"#f60","stroke":"#f60","stroke-width":4,"stroke-opacity":0.5,)"
            R"("fill":"#f60","fill-opacity":0.25,"zIndex":9,"visibleMinZoom":5,"visibleMaxZoom":7})",
            geometries),
        "a");
    const Shapes shapes = shapesOf(data, pins);
    ASSERT_EQ(shapes.size(), 3U);
    for (const auto& shape : shapes) {
        EXPECT_EQ(shape->zIndex(), 9);
        EXPECT_EQ(shape->visibleMinZoom(), 5);
        EXPECT_EQ(shape->visibleMaxZoom(), 7);
    }
    const auto& marker = dynamic_cast<const PgmMarker&>(*shapes[0]);
    EXPECT_EQ(marker.title(), "대전");
    EXPECT_EQ(marker.position(), (CLLocationCoordinate2D{37, 127}));
    EXPECT_EQ(marker.iconImage(), pins.pin(orange));
    const auto& line = dynamic_cast<const PgmPolyline&>(*shapes[1]);
    EXPECT_EQ(line.color(), orange.withAlpha(0.5));
    EXPECT_EQ(line.width(), 4);
    EXPECT_THAT(line.coords(), ElementsAre(CLLocationCoordinate2D{36, 126}, CLLocationCoordinate2D{38, 128}));
    const auto& area = dynamic_cast<const PgmPolygon&>(*shapes[2]);
    EXPECT_EQ(area.fillColor(), orange.withAlpha(0.25));
    EXPECT_EQ(area.strokeColor(), orange.withAlpha(0.5));
    EXPECT_EQ(area.strokeWidth(), 4);

    const Shapes plain = shapesOf(readGeoJson(collection("null", geometries), "a"), pins);
    EXPECT_EQ(dynamic_cast<const PgmMarker&>(*plain[0]).iconImage(), PgmImage::markerImageRed());
    EXPECT_EQ(plain[0]->visibleMaxZoom(), PgmMarker::create()->visibleMaxZoom());

    const MapData round = readGeoJson(collection(R"({"radius":2500})", geometries), "a");
    EXPECT_EQ(dynamic_cast<const PgmCircle&>(*shapesOf(round, pins)[0]).radius(), 2500);
    EXPECT_EQ(inWords(countsOf(round)), "1 line, 1 area, 1 circle");
    EXPECT_EQ(inWords(countsOf(MapData{})), "nothing to draw");
}

TEST_F(ViewerOverlays, PinsHaveTheVeryColourAndTheShapeOfTheLibrarysOwn) {
    const UIImage original = PgmImage::markerImageRed()->image();
    const auto middle = static_cast<std::size_t>(original.pixelWidth() / 2);
    const auto row = [&](double share) {
        return static_cast<std::size_t>(share * original.pixelHeight()) *
               static_cast<std::size_t>(original.pixelWidth());
    };
    for (const UIColor color : {orange, UIColor::black(), UIColor::white(), UIColor{0, 0, 1, 1}}) {
        const UIImage pin = pins.pin(color)->image();
        const auto pixel = [&](std::size_t index) {
            const auto bytes = pin.pixels().subspan(index * 4, 4);
            return UIColor{bytes[0] / 255.0, bytes[1] / 255.0, bytes[2] / 255.0, bytes[3] / 255.0};
        };
        EXPECT_EQ(pixel(row(0.55) + middle), color);
        EXPECT_NE(pixel(row(0.35) + middle), color) << "the dot stands out from its body";
        ASSERT_EQ(pin.size(), original.size());
        for (std::size_t i = 3; i < pin.pixels().size(); i += 4) {
            ASSERT_EQ(pin.pixels()[i], original.pixels()[i]);
        }
    }
    EXPECT_EQ(pins.pin(orange), pins.pin(orange));
    EXPECT_NE(pins.pin(orange)->reuseIdentifier(), pins.pin(UIColor::black())->reuseIdentifier());
}

TEST_F(ViewerOverlays, BoundsHoldWhatIsDrawnAndLeaveRoomAroundAPoint) {
    const auto boundsOfText = [](const std::string& text) { return boundsOf(readGeoJson(text, "a")); };
    EXPECT_EQ(boundsOfText("{}"), nullptr);

    const auto lines = boundsOfText(R"({"type":"LineString","coordinates":[[170,-40],[-170,60],[0,0]]})");
    EXPECT_EQ(lines->southWest(), (CLLocationCoordinate2D{-40, -170}));
    EXPECT_EQ(lines->northEast(), (CLLocationCoordinate2D{60, 170}));

    const auto point = boundsOfText(R"({"type":"Point","coordinates":[127,37]})");
    EXPECT_TRUE(point->contains({37.009, 127.009}));
    EXPECT_FALSE(point->contains({37.02, 127}));

    const auto circle = boundsOfText(
        R"({"type":"Feature","properties":{"radius":111319.49},"geometry":{"type":"Point","coordinates":[10,60]}})");
    EXPECT_NEAR(circle->northEast().latitude, 61, 1e-6);
    EXPECT_NEAR(circle->northEast().longitude, 12, 1e-6);

    const auto pole = boundsOfText(R"({"type":"Point","coordinates":[180,90]})");
    EXPECT_LT(pole->southWest().latitude, pole->northEast().latitude);
    EXPECT_LE(pole->northEast().latitude, 85.06);
    EXPECT_LE(pole->northEast().longitude, 180);
}

TEST_F(ViewerOverlays, OpeningSceneShowsFortyNamedCitiesAndTheLineThroughFour) {
    const Scene scene = koreaScene(pins);
    std::set<std::string> names;
    std::vector<CLLocationCoordinate2D> line;
    for (const auto& shape : scene.shapes) {
        if (const auto* marker = dynamic_cast<const PgmMarker*>(shape.get())) {
            names.insert(marker->title());
            EXPECT_TRUE(koreaBounds()->contains(marker->position())) << marker->title();
        } else if (const auto* route = dynamic_cast<const PgmPolyline*>(shape.get())) {
            line = route->coords();
            EXPECT_FALSE(route->pattern().empty());
        }
    }
    EXPECT_EQ(names.size(), 40U);
    EXPECT_EQ(inWords(scene.counts), "40 markers, 1 line, 2 areas, 40 circles");
    ASSERT_EQ(line.size(), 4U);
    EXPECT_NEAR(line[0].latitude, 37.57, 0.05);
    EXPECT_NEAR(line[3].longitude, 129.08, 0.05);
}

}  // namespace
}  // namespace pelta::viewer
