#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <pelta/Platform/CoreLocation.h>

namespace pelta::viewer {

/// Where the map shall look.
struct CameraRequest {
    CLLocationCoordinate2D target;
    double zoom = 0;
    double tilt = 0;     ///< Degrees, 0 to 60.
    double bearing = 0;  ///< Degrees, -360 to 360.
};

/// What the page's own address asks for.
struct PageAddress {
    std::optional<std::string> data;      ///< `data=URL`: a GeoJSON document instead of the cities of Korea.
    std::optional<CameraRequest> camera;  ///< `camera=LAT,LNG,ZOOM[,TILT[,BEARING]]`.
    std::optional<std::string> style;     ///< `style=URL`: a style document instead of the base style.
    bool isFit = false;                   ///< `fit`: show all of the data.
    bool isClustered = false;             ///< `cluster`: points as clusters.
    bool isSnapshot = false;              ///< `snapshot`: map and overlays only.
    std::vector<std::string> problems;    ///< One message for each value that cannot be used.
};

/// Reads the part of the page's address from the "?" on; the "?" itself may be missing. Of a repeated name
/// the last one counts; other names are ignored; values that cannot be used are named and left out.
[[nodiscard]] PageAddress parsePageAddress(std::string_view query);

/// The part of the page's address from the "?" on under which another page shows what this one does: what
/// else the query names stays as it is, in its order.
[[nodiscard]] std::string sharedQuery(std::string_view query, const CameraRequest& camera, bool isClustered);

}  // namespace pelta::viewer
