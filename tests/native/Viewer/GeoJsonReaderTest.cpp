#include <gmock/gmock.h>
#include <string>
#include <vector>

#include "CaseFile.h"
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

/// Kinds and coordinate counts of the shapes, such as "line 2, marker 1"; "-" for none.
std::string shapesOf(const MapData& data) {
    const char* const names[] = {"marker", "circle", "line", "area"};
    std::string result;
    for (const DataShape& shape : data.shapes) {
        result += (result.empty() ? "" : ", ") +
                  (names[static_cast<int>(shape.kind)] + (" " + std::to_string(shape.coordinateCount)));
    }
    return result.empty() ? "-" : result;
}

TEST(GeoJsonReader, ReadsEveryKindOfDocumentAndGeometry) {
    for (const auto& [text, answer] : casesOf("Viewer/good-documents.txt")) {
        const MapData data = readGeoJson(text, "map.geojson");
        EXPECT_EQ(shapesOf(data), answer.at(0)) << text;
        EXPECT_EQ(inWords(countsOf(data)), answer.at(1)) << text;
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
    for (const auto& [bad, reasons] : casesOf("Viewer/bad-features.txt")) {
        const MapData data = readGeoJson(collection({seoulFeature, bad, seoulFeature}), "bad.geojson");
        EXPECT_EQ(data.shapes.size(), 2U) << bad;
        EXPECT_THAT(data.problems,
                    ElementsAre(AllOf(HasSubstr("bad.geojson: feature 1: "), HasSubstr(reasons[0]))))
            << bad;
    }
}

TEST(GeoJsonReader, NamesBadPropertiesAndDrawsWithTheirDefaults) {
    for (const auto& [properties, reasons] : casesOf("Viewer/bad-properties.txt")) {
        const MapData data = readGeoJson(feature(geometry("Point", "[1,2]"), properties), "bad.geojson");
        EXPECT_EQ(shapesOf(data), "marker 1") << properties;
        EXPECT_THAT(data.problems,
                    ElementsAre(AllOf(HasSubstr("bad.geojson: feature 0: "), HasSubstr(reasons[0]))));
    }
}

TEST(GeoJsonReader, NamesDocumentsThatAreNone) {
    const std::string brackets(1'000'000, '[');
    auto cases = casesOf("Viewer/bad-documents.txt");
    cases.push_back({"", {"x: the file is empty", "0"}});
    cases.push_back({brackets, {"x: not GeoJSON: an object is needed", "0"}});
    cases.push_back(
        {R"({"type":"FeatureCollection","features":[)" + std::string(seoulFeature) +
             R"(,{"type":"Feature","geometry":{"type":"Point","coordinates":)" + brackets,
         {"feature 1: not JSON at line 1, column 1000195: it is nested deeper than 128 levels", "1"}});
    for (const auto& [text, answer] : cases) {
        const MapData data = readGeoJson(text, "x");
        EXPECT_EQ(std::to_string(data.shapes.size()), answer.at(1)) << text.substr(0, 100);
        EXPECT_THAT(data.problems, ElementsAre(HasSubstr(answer[0])));
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
