#include <array>
#include <emscripten/bind.h>
#include <string>

#include "BenchMap.h"

using namespace pelta;
using emscripten::val;

namespace {

const std::array<std::shared_ptr<PgmImage>, 5>& icons() {
    static const std::array<std::shared_ptr<PgmImage>, 5> images{
        PgmImage::markerImageBlue(), PgmImage::markerImageGray(), PgmImage::markerImageGreen(),
        PgmImage::markerImageRed(), PgmImage::markerImageYellow()};
    return images;
}

/// @param positions  latitude and longitude in turn.
void addMarkers(const val& positions) {
    std::size_t number = 0;
    for (const CLLocationCoordinate2D position : coordinatesFrom(positions)) {
        auto marker = PgmMarker::markerWithPositionIconImage(position, icons()[number % icons().size()]);
        marker->setTitle("P " + std::to_string(number));
        BenchMap::shared().show(std::move(marker));
        ++number;
    }
}

void moveMarker(std::size_t number, double latitude, double longitude) {
    static_cast<PgmMarker&>(*BenchMap::shared().shapes().at(number)).setPosition({latitude, longitude});
}

}  // namespace

EMSCRIPTEN_BINDINGS(markerCommands) {
    emscripten::function("addMarkers", &addMarkers);
    emscripten::function("moveMarker", &moveMarker);
}
