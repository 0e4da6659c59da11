#pragma once

#include <span>
#include <string_view>

#include <pelta/View/PgmMapView.h>

namespace pelta::viewer {

/// One setting of a map view as a number: flags are 0 or 1.
struct MapSwitch {
    std::string_view name;  ///< That of the property.
    double (*value)(const PgmMapView& map);
    void (*set)(PgmMapView& map, double value);
};

/// All that can be switched from outside.
[[nodiscard]] std::span<const MapSwitch> mapSwitches();

/// Sets the setting with a name.
/// @return false, and nothing is set, when there is none or the value is not finite.
bool setMapSwitch(PgmMapView& map, std::string_view name, double value);

}  // namespace pelta::viewer
