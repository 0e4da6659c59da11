#include <array>
#include <emscripten/bind.h>

#include "BenchMap.h"

using namespace pelta;
using emscripten::val;

namespace {

constexpr double lineWidth = 2;
constexpr double strokeWidth = 1;

/// Colours of shapes in turn: blue, orange, green, red, violet.
constexpr std::array<UIColor, 5> colors{
    {{0.2, 0.4, 0.8, 1}, {1, 0.6, 0.2, 1}, {0.2, 0.6, 0.2, 1}, {0.8, 0.2, 0.2, 1}, {0.6, 0.4, 0.8, 1}}};

/// Calls for each list of a given number of coordinates, with its number.
template <class Add>
void forEachList(const val& numbers, std::size_t length, Add&& add) {
    const auto coordinates = coordinatesFrom(numbers);
    for (std::size_t start = 0; start + length <= coordinates.size(); start += length) {
        const auto first = coordinates.begin() + static_cast<std::ptrdiff_t>(start);
        add(std::vector(first, first + static_cast<std::ptrdiff_t>(length)), start / length);
    }
}

/// @param coordinates   latitude and longitude in turn, line after line.
/// @param pointsOfEach  coordinates of a line.
void addPolylines(const val& coordinates, std::size_t pointsOfEach) {
    forEachList(coordinates, pointsOfEach,
                [](std::vector<CLLocationCoordinate2D> points, std::size_t number) {
                    auto line = PgmPolyline::create(std::move(points));
                    line->setWidth(lineWidth);
                    line->setColor(colors[number % colors.size()]);
                    BenchMap::shared().show(std::move(line));
                });
}

/// @param coordinates    latitude and longitude in turn, ring after ring.
/// @param cornersOfEach  coordinates of a ring.
void addPolygons(const val& coordinates, std::size_t cornersOfEach) {
    forEachList(coordinates, cornersOfEach,
                [](std::vector<CLLocationCoordinate2D> corners, std::size_t number) {
                    auto area = PgmPolygon::create(std::move(corners), colors[number % colors.size()]);
                    area->setStrokeWidth(strokeWidth);
                    BenchMap::shared().show(std::move(area));
                });
}

}  // namespace

EMSCRIPTEN_BINDINGS(lineCommands) {
    emscripten::function("addPolylines", &addPolylines);
    emscripten::function("addPolygons", &addPolygons);
}
