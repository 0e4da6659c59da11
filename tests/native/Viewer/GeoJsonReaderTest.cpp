#include <gmock/gmock.h>
#include <string>
#include <vector>

#include "data/GeoJsonReader.h"
#include "data/LoadReport.h"

namespace pelta::viewer {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

constexpr const char* seoulFeature =
    R"({"type":"Feature","properties":{},"geometry":{"type":"Point","coordinates":[126.978,37.5665]}})";

std::string collection(const std::vector<std::string>& features) {
    std::string text = R"({"type":"FeatureCollection","features":[)";
    for (std::size_t i = 0; i < features.size(); ++i) {
        text += (i > 0 ? "," : "") + features[i];
    }
    return text + "]}";
}

std::string feature(const std::string& geometry, const std::string& properties = "{}") {
    return R"({"type":"Feature","properties":)" + properties + R"(,"geometry":)" + geometry + "}";
}

std::string geometry(const std::string& type, const std::string& coordinates) {
    return R"({"type":")" + type + R"(","coordinates":)" + coordinates + "}";
}

/// Kinds and coordinate counts of the shapes, such as "line 2".
std::vector<std::string> shapesOf(const MapData& data) {
    const char* const names[] = {"marker", "circle", "line", "area"};
    std::vector<std::string> result;
    for (const DataShape& shape : data.shapes) {
        result.push_back(names[static_cast<int>(shape.kind)] + (" " + std::to_string(shape.coordinateCount)));
    }
    return result;
}

TEST(GeoJsonReader, ReadsEveryKindOfDocumentAndGeometry) {
    const std::string ring = "[[0,0],[1,0],[1,1],[0,0]]";
    const struct {
        std::string text;
        std::vector<std::string> shapes;
    } cases[] = {
        {collection({}), {}},
        {"\xEF\xBB\xBF" + collection({seoulFeature, seoulFeature}), {"marker 1", "marker 1"}},
        {seoulFeature, {"marker 1"}},
        {geometry("Point", "[1,2,300]"), {"marker 1"}},
        {geometry("MultiPoint", "[[1,2],[3,4]]"), {"marker 1", "marker 1"}},
        {geometry("LineString", "[[1,2],[3,4],[5,6]]"), {"line 3"}},
        {geometry("MultiLineString", "[[[1,2],[3,4],[5,6]],[[1,2],[3,4]]]"), {"line 3", "line 2"}},
        {geometry("Polygon", "[" + ring + "]"), {"area 4"}},
        {geometry("MultiPolygon", "[[" + ring + "," + ring + "],[" + ring + "]]"), {"area 4", "area 4"}},
        {R"({"coordinates":[[1,2],[3,4]],"type":"LineString"})", {"line 2"}},
        {R"({"type":"GeometryCollection","geometries":[)" + geometry("Point", "[1,2]") +
             R"(,{"type":"GeometryCollection","geometries":[)" + geometry("LineString", "[[1,2],[3,4]]") +
             "]}]}",
         {"marker 1", "line 2"}},
        {feature(geometry("MultiPoint", "[[1,2],[3,4]]"), R"({"radius":500})"), {"circle 1", "circle 1"}},
        {R"({"features":[)" + std::string(seoulFeature) + R"(],"type":"FeatureCollection","bbox":[1,2,3,4]})",
         {"marker 1"}},
    };
    for (const auto& test : cases) {
        const MapData data = readGeoJson(test.text, "map.geojson");
        EXPECT_EQ(shapesOf(data), test.shapes) << test.text;
        EXPECT_THAT(data.problems, IsEmpty()) << test.text;
    }
}

TEST(GeoJsonReader, CountsFeaturesThatAreNowhere) {
    const struct {
        std::string text;
        const char* words;
    } cases[] = {
        {collection({feature("null")}), "nothing to draw, 1 feature without geometry"},
        {feature("null"), "nothing to draw, 1 feature without geometry"},
        {collection({feature("null"), seoulFeature, feature("null", R"({"stroke":"none"})")}),
         "1 marker, 2 features without geometry"},
        {feature(R"(null,"geometry":{"type":"Point","coordinates":[1,2]})"), "1 marker"},
        {feature(R"({"type":"Point","coordinates":[1,2]},"geometry":null)"),
         "nothing to draw, 1 feature without geometry"},
    };
    for (const auto& [text, words] : cases) {
        const MapData data = readGeoJson(text, "a");
        EXPECT_EQ(inWords(countsOf(data)), words) << text;
        EXPECT_THAT(data.problems, IsEmpty()) << text;
    }
}

TEST(GeoJsonReader, KeepsCoordinatesInOrderAndNamesHoles) {
    const MapData data = readGeoJson(
        collection({seoulFeature, feature(geometry("Polygon", "[[[0,0],[9,0],[9,8]],[[1,1],[2,1],[2,2]]]"))}),
        "a");
    ASSERT_EQ(data.shapes.size(), 2U);
    EXPECT_EQ(data.coordinatesOf(data.shapes[0])[0], (CLLocationCoordinate2D{37.5665, 126.978}));
    EXPECT_EQ(data.coordinatesOf(data.shapes[1])[2], (CLLocationCoordinate2D{8, 9}));
    EXPECT_EQ(data.featureCount, 2U);
    EXPECT_THAT(data.leftOuts,
                ElementsAre("a: feature 1: 1 hole is left out: areas are drawn by their outer ring"));
}

TEST(GeoJsonReader, AppliesPropertiesBeforeOrAfterTheGeometry) {
    const std::string members[] = {
        R"("geometry":{"coordinates":[1,2],"type":"Point"})",
        R"("properties":{"title":"서울 \u003cb\u003e\ud83d\uDE00\/\u00e9","marker-color":"#12aBf0","stroke":"abc","stroke-width":0.5,)"
        R"("stroke-opacity":0.25,"fill":"Orange","fill-opacity":1,"radius":2e3,"zIndex":-7,"visibleMinZoom":3.5,)"
        R"("visibleMaxZoom":12,"other":[{"title":"no"}],"name":null})"};
    for (const bool isPropertyFirst : {false, true}) {
        const MapData data = readGeoJson(
            R"({"type":"Feature",)" + members[isPropertyFirst] + "," + members[!isPropertyFirst] + "}", "a");
        ASSERT_EQ(data.styles.size(), 1U);
        EXPECT_THAT(data.problems, IsEmpty());
        const ShapeStyle& style = data.styles[0];
        EXPECT_EQ(style.title, "서울 <b>😀/é");
        EXPECT_EQ(style.markerColor, (UIColor{0x12 / 255.0, 0xAB / 255.0, 0xF0 / 255.0, 1}));
        EXPECT_EQ(style.stroke, (UIColor{0xAA / 255.0, 0xBB / 255.0, 0xCC / 255.0, 1}));
        EXPECT_EQ(style.fill, (UIColor{1, 0xA5 / 255.0, 0, 1}));
        EXPECT_EQ(style.strokeWidth, 0.5);
        EXPECT_EQ(style.strokeOpacity, 0.25);
        EXPECT_EQ(style.fillOpacity, 1);
        EXPECT_EQ(style.radius, 2000);
        EXPECT_EQ(style.zIndex, -7);
        EXPECT_EQ(style.visibleMinZoom, 3.5);
        EXPECT_EQ(style.visibleMaxZoom, 12);
    }
}

TEST(GeoJsonReader, NamesBadFeaturesAndKeepsTheGoodOnesAroundThem) {
    const struct {
        std::string feature;
        const char* reason;
    } cases[] = {
        {R"({"type":"Feature","properties":{}})", "no geometry"},
        {R"({"type":"Feature","geometry":"Point"})", "geometry is not an object"},
        {R"({"geometry":{"type":"Point","coordinates":[1,2]}})", "no \"type\""},
        {geometry("Point", "[1,2]"), "\"Point\"; \"Feature\" is needed"},
        {"17", "a plain value, not a feature"},
        {"[[1,2]]", "an array, not a feature"},
        {feature(R"({"coordinates":[1,2]})"), "no \"type\""},
        {feature(R"({"type":"Point"})"), "no \"coordinates\""},
        {feature(R"({"type":"GeometryCollection"})"), "no \"geometries\""},
        {feature(R"({"type":"GeometryCollection","geometries":[1]})"), "not an object"},
        {feature(R"({"type":"Circle","coordinates":[1,2]})"), "unknown geometry type \"Circle\""},
        {feature(geometry("Point", R"({"lng":1})")), "no \"coordinates\""},
        {feature(geometry("Point", R"("1,2")")), "coordinates are not an array"},
        {feature(geometry("Point", R"(["1","2"])")), "a coordinate is not a number"},
        {feature(geometry("Point", "[NaN,2]")), "a coordinate is not a number"},
        {feature(geometry("LineString", "[[1,2],[-Infinity,1e999]]")), "a coordinate is not a number"},
        {feature(geometry("Point", "[]")), "no positions"},
        {feature(geometry("Point", "[1]")), "position 0 has one number"},
        {feature(geometry("Point", "[37,127]")), "latitude 127 is outside -90 to 90"},
        {feature(geometry("LineString", "[[1,2],[181,2]]")),
         "position 1: longitude 181 is outside -180 to 180"},
        {feature(geometry("Point", "[[1,2]]")), "not nested as those of a Point"},
        {feature(geometry("Polygon", "[[0,0],[1,0],[1,1]]")), "not nested as those of a Polygon"},
        {feature(geometry("LineString", "[[1,2],[[3,4]]]")), "nested unevenly"},
        {feature(geometry("LineString", "[[1,2],[3,[4]]]")), "among the numbers"},
        {feature(geometry("LineString", "[[1,2],[]]")), "not nested"},
        {feature(geometry("LineString", "[[1,2]]")), "a line has 1 position; at least 2 are needed"},
        {feature(geometry("MultiLineString", "[[[1,2],[3,4]],[]]")), "a line has 0 positions"},
        {feature(geometry("Polygon", "[[[1,2]]]")), "a ring has 1 position; at least 3 are needed"},
        {feature(geometry("MultiPolygon", "[]")), "no positions"},
        {feature(geometry("Point", std::string(300, '[') + std::string(300, ']'))), "deeper than 128 levels"},
        {R"({"type":"Feature","properties":5,"geometry":{"type":"Point","coordinates":[1,2]}})",
         "properties are not an object"},
        {feature("null", "5"), "properties are not an object"},
        {feature(geometry("Point", "[1,2]"), "{\"title\":\"Se\xC3(oul\"}"), "one of its texts is not UTF-8"},
        {feature(geometry("Point", "[1,2]"), "{\"a\xED\xA0\x80\":[]}"), "one of its texts is not UTF-8"},
        {feature(geometry("Point", "[1,2]"), R"({"other":{"a":["\uD800\u0041"]}})"),
         "one of its texts is not UTF-8"},
        {feature(geometry("Po\xFFint", "[1,2]")), "one of its texts is not UTF-8"},
    };
    for (const auto& test : cases) {
        const MapData data =
            readGeoJson(collection({seoulFeature, test.feature, seoulFeature}), "bad.geojson");
        EXPECT_EQ(data.shapes.size(), 2U) << test.feature;
        EXPECT_THAT(data.problems,
                    ElementsAre(AllOf(HasSubstr("bad.geojson: feature 1: "), HasSubstr(test.reason))))
            << test.feature;
    }
}

TEST(GeoJsonReader, NamesBadPropertiesAndDrawsWithTheirDefaults) {
    const struct {
        const char* properties;
        const char* reason;
    } cases[] = {
        {R"({"marker-color":"blurple"})", "marker-color: unknown colour \"blurple\"; write it as"},
        {R"({"stroke":"#12345"})", "stroke: unknown colour \"#12345\""},
        {R"({"fill":"#red"})", "fill: unknown colour \"#red\""},
        {R"({"fill":""})", "fill: unknown colour \"\""},
        {R"({"fill":7})", "fill is not a text"},
        {R"({"title":7})", "title is not a text"},
        {R"({"title":["a"]})", "title is an object or an array"},
        {R"({"stroke-width":"2"})", "stroke-width is not a number"},
        {R"({"stroke-width":NaN})", "stroke-width NaN is not a number from 0 to 1000; its default is used"},
        {R"({"radius":1e999})", "radius 1e999 is not a number from 0 to 2.00375e+07"},
        {R"({"zIndex":-Infinity})", "zIndex -Infinity is not a whole number"},
        {R"({"title":NaN})", "title is not a text"},
        {R"({"stroke-width":-1})", "stroke-width -1 is not a number from 0 to 1000"},
        {R"({"fill-opacity":1.5})", "fill-opacity 1.5 is not a number from 0 to 1"},
        {R"({"radius":-5})", "radius -5 is not"},
        {R"({"radius":true})", "radius is not a number"},
        {R"({"zIndex":1.5})", "zIndex 1.5 is not a whole number"},
        {R"({"visibleMinZoom":99})", "visibleMinZoom 99 is not a number from 0 to 24"},
    };
    for (const auto& test : cases) {
        const MapData data =
            readGeoJson(collection({feature(geometry("Point", "[1,2]"), test.properties)}), "bad.geojson");
        EXPECT_THAT(shapesOf(data), ElementsAre("marker 1")) << test.properties;
        EXPECT_THAT(data.problems,
                    ElementsAre(AllOf(HasSubstr("bad.geojson: feature 0: "), HasSubstr(test.reason))));
    }
}

TEST(GeoJsonReader, NamesDocumentsThatAreNone) {
    const std::string brackets(1'000'000, '[');
    const std::string whole = collection({seoulFeature, seoulFeature});
    const struct {
        std::string text;
        const char* message;
        std::size_t shapes;
    } cases[] = {
        {"", "x: the file is empty", 0},
        {" \n\t", "x: the file is empty", 0},
        {"hello", "x: not JSON at line 1, column 1: invalid literal", 0},
        {"{\n \"type\": }", "x: not JSON at line 2, column 10: unexpected '}'", 0},
        {"{\"a\":\"\t\"}", "x: not JSON at line 1, column 7: invalid string: a control character", 0},
        {R"({"a":"\u12"})", "x: not JSON at line 1, column 7: invalid string: an escape", 0},
        {R"({"a":-})", "x: not JSON at line 1, column 6: invalid literal", 0},
        {R"({"a":[01]})", "x: not JSON at line 1, column 7: invalid number", 0},
        {R"({"a":[1,,2]})", "x: not JSON at line 1, column 9: unexpected ','", 0},
        {R"({"a":{},})", "x: not JSON at line 1, column 9: unexpected '}'", 0},
        {R"({"a":{"b":[}})", "x: not JSON at line 1, column 12: unexpected '}'", 0},
        {R"({"a" 1})", "x: not JSON at line 1, column 6: unexpected '1'", 0},
        {R"({1:2})", "x: not JSON at line 1, column 2: unexpected '1'", 0},
        {"{\"a\":\xEF}", "x: not JSON at line 1, column 6: unexpected byte 239", 0},
        {R"({"a":[NaN,Infinity,1e999)" + std::string(300, '9') + ",}", "line 1, column 326: unexpected '}'",
         0},
        {"{\"b\":\"\xFF\"," + whole.substr(1),
         "x: a text outside of its features is not UTF-8 at line 1, column 6", 2},
        {"[1,2]", "x: not GeoJSON: an object is needed, an array was found", 0},
        {"12", "x: not GeoJSON: an object is needed, a plain value was found", 0},
        {"{}", "x: not GeoJSON: the document has no \"type\"", 0},
        {R"({"type":"Topology\u001b[31m"})", "x: not GeoJSON: unknown type \"Topology [31m\"", 0},
        {R"({"type":"FeatureCollection"})", "x: not GeoJSON: \"features\" is missing", 0},
        {R"({"type":"FeatureCollection","features":{}})", "x: not GeoJSON: \"features\" is missing", 0},
        {R"({"features":[)" + std::string(seoulFeature) + "]}", "type is not \"FeatureCollection\"", 1},
        {geometry("Point", "[200,0]"), "x: feature 0: position 0: longitude 200 is outside", 0},
        {brackets, "x: not GeoJSON: an object is needed", 0},
        {R"({"type":"FeatureCollection","features":[)" + std::string(seoulFeature) +
             R"(,{"type":"Feature","geometry":{"type":"Point","coordinates":)" + brackets,
         "feature 1: not JSON at line 1, column 1000195: it is nested deeper than 128 levels", 1},
        {whole.substr(0, whole.size() - 20),
         "x: feature 1: not JSON at line 1, column 212: unexpected end of input", 1},
        {whole.substr(0, whole.size() - 1), "unexpected end of input", 2},
        {whole + "}", "unexpected '}'", 2},
    };
    for (const auto& test : cases) {
        const MapData data = readGeoJson(test.text, "x");
        EXPECT_EQ(data.shapes.size(), test.shapes) << test.text.substr(0, 100);
        EXPECT_THAT(data.problems, ElementsAre(HasSubstr(test.message)));
    }
}

TEST(GeoJsonReader, ReadsEveryCutOfADocumentAndListsMessagesInMeasure) {
    const std::string text =
        collection({seoulFeature, feature(geometry("Polygon", "[[[0,0],[1,0],[1,1]]]")), "3"});
    for (std::size_t length = 0; length < text.size(); ++length) {
        EXPECT_GE(readGeoJson(text.substr(0, length), "x").problemCount, 1U);
    }
    const MapData data = readGeoJson(collection(std::vector<std::string>(5000, "null")), "x");
    EXPECT_EQ(data.problemCount, 5000U);
    EXPECT_EQ(data.problems.size(), MapData::listedMessages);
}

}  // namespace
}  // namespace pelta::viewer
