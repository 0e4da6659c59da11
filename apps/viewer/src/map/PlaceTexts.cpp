#include "map/PlaceTexts.h"

#include <cstdio>

#include <pelta/Coordinate/PgmGridPoint.h>

namespace pelta::viewer {

namespace {

/// Two numbers of any size, such as a point at the other end of the world has in a grid.
std::string pairText(const char* format, double first, double second) {
    char text[96];
    std::snprintf(text, sizeof text, format, first, second);
    return text;
}

template <class Grid>
PlaceText gridText(std::string_view system, CLLocationCoordinate2D place) {
    const Grid point(place);
    return {system, pairText("%.2f, %.2f", point.x, point.y)};
}

}  // namespace

std::array<PlaceText, 5> placeTexts(CLLocationCoordinate2D place) {
    return {PlaceText{"WGS84", pairText("%.6f, %.6f", place.latitude, place.longitude)},
            gridText<PgmKatec>("KATEC", place), gridText<PgmTm>("TM", place),
            gridText<PgmGrs80>("GRS80 TM", place), gridText<PgmUtmk>("UTM-K", place)};
}

}  // namespace pelta::viewer
