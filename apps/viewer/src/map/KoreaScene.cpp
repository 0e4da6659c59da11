#include "map/KoreaScene.h"

#include <KoreanCities.h>
#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <string_view>

#include <pelta/Annotations/PgmCircle.h>
#include <pelta/Annotations/PgmMarker.h>
#include <pelta/Annotations/PgmPolygon.h>
#include <pelta/Annotations/PgmPolyline.h>

namespace pelta::viewer {

namespace {

using ::viewer::koreanCities;
using ::viewer::KoreanCity;

constexpr UIColor accent{0x1F / 255.0, 0x5F / 255.0, 0xD6 / 255.0, 1};
constexpr UIColor capitalColor{0xE5 / 255.0, 0x39 / 255.0, 0x4B / 255.0, 1};
constexpr UIColor townColor{0x3B / 255.0, 0x6F / 255.0, 0xB6 / 255.0, 1};
constexpr UIColor areaColor{0x7A / 255.0, 0x4F / 255.0, 0xC9 / 255.0, 1};
constexpr UIColor islandColor{0xF0 / 255.0, 0x8A / 255.0, 0x24 / 255.0, 1};
constexpr UIColor inkColor{0x1C / 255.0, 0x24 / 255.0, 0x33 / 255.0, 1};

constexpr int million = 1'000'000;

/// Metres of radius for each square root of an inhabitant, so that areas compare as populations do.
constexpr double metresPerRootInhabitant = 9;

constexpr std::array<std::string_view, 4> lineCities{"Seoul", "Daejeon", "Daegu", "Busan"};

const std::vector<CLLocationCoordinate2D> capitalArea{
    {38.27, 127.10}, {38.13, 127.43}, {37.95, 127.60}, {37.65, 127.54}, {37.52, 127.83},
    {37.23, 127.76}, {37.03, 127.62}, {36.93, 127.30}, {36.96, 126.85}, {37.10, 126.70},
    {37.28, 126.58}, {37.48, 126.38}, {37.78, 126.34}, {37.85, 126.68}, {38.02, 126.80},
};

const std::vector<CLLocationCoordinate2D> jejuIsland{
    {33.46, 126.31}, {33.51, 126.44}, {33.53, 126.58}, {33.57, 126.78}, {33.52, 126.93},
    {33.45, 126.97}, {33.35, 126.89}, {33.28, 126.74}, {33.22, 126.56}, {33.22, 126.38},
    {33.18, 126.26}, {33.24, 126.14}, {33.35, 126.14},
};

std::shared_ptr<PgmShape> makeArea(const std::vector<CLLocationCoordinate2D>& corners, UIColor color) {
    auto area = PgmPolygon::create(corners, color.withAlpha(0.12));
    area->setStrokeColor(color.withAlpha(0.75));
    area->setStrokeWidth(1.5);
    return area;
}

std::shared_ptr<PgmShape> makePopulationCircle(const KoreanCity& city) {
    auto circle =
        PgmCircle::create({city.latitude, city.longitude},
                          metresPerRootInhabitant * std::sqrt(city.population), accent.withAlpha(0.16));
    circle->setStrokeColor(accent.withAlpha(0.55));
    circle->setStrokeWidth(1);
    circle->setZIndex(1);
    return circle;
}

std::shared_ptr<PgmShape> makeCityMarker(const KoreanCity& city, PinPictures& pins) {
    auto marker = PgmMarker::markerWithPosition({city.latitude, city.longitude});
    const bool isLarge = city.population >= million;
    marker->setIconImage(pins.pin(isLarge ? capitalColor : townColor));
    marker->setIconScale(isLarge ? 0.75 : 0.5);
    marker->setTitle(std::string(city.hangul));
    marker->setTitleSize(isLarge ? 13 : 11);
    marker->setTitleColor(inkColor);
    // Names that would cover others wait until there is room; a larger city's name has the right of way.
    marker->setIsAllowOverlapTitle(false);
    marker->setZIndex(city.population);
    return marker;
}

std::shared_ptr<PgmShape> makeDashedLine() {
    std::vector<CLLocationCoordinate2D> route;
    for (const std::string_view name : lineCities) {
        for (const KoreanCity& city : koreanCities()) {
            if (city.latin == name) {
                route.push_back({city.latitude, city.longitude});
                break;
            }
        }
    }
    auto line = PgmPolyline::create(std::move(route));
    line->setColor(inkColor.withAlpha(0.85));
    line->setWidth(3);
    line->setPattern({2.5, 1.5});
    line->setJoinType(PgmLineJoin::round);
    line->setZIndex(2);
    return line;
}

}  // namespace

Scene koreaScene(PinPictures& pins) {
    const std::size_t cityCount = koreanCities().size();
    Scene scene{{makeArea(capitalArea, areaColor), makeArea(jejuIsland, islandColor), makeDashedLine()},
                {.markers = cityCount, .lines = 1, .areas = 2, .circles = cityCount}};
    for (const KoreanCity& city : koreanCities()) {
        scene.shapes.push_back(makePopulationCircle(city));
        scene.shapes.push_back(makeCityMarker(city, pins));
    }
    return scene;
}

std::shared_ptr<PgmLatLngBounds> koreaBounds() {
    return PgmLatLngBounds::create({33.15, 126.1}, {38.05, 129.6});
}

}  // namespace pelta::viewer
