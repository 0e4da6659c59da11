#pragma once

#include <array>
#include <string>
#include <string_view>

#include <pelta/Platform/CoreLocation.h>

namespace pelta::viewer {

/// Where a place lies in one coordinate system.
struct PlaceText {
    std::string_view system;
    std::string numbers;  ///< Degrees (latitude, longitude) with 6 decimals, or metres (east, north) with 2.
};

/// A place in WGS84 and in each of the Korean plane grids.
[[nodiscard]] std::array<PlaceText, 5> placeTexts(CLLocationCoordinate2D place);

}  // namespace pelta::viewer
