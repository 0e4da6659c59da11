#include "map/MapSwitches.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace pelta::viewer {

namespace {

template <bool (PgmMapView::*get)() const noexcept, void (PgmMapView::*set)(bool)>
constexpr MapSwitch flag(std::string_view name) {
    return {name, [](const PgmMapView& map) { return (map.*get)() ? 1.0 : 0.0; },
            [](PgmMapView& map, double value) { (map.*set)(value != 0); }};
}

template <double (PgmMapView::*get)() const noexcept, void (PgmMapView::*set)(double)>
constexpr MapSwitch number(std::string_view name) {
    return {name, [](const PgmMapView& map) { return (map.*get)(); },
            [](PgmMapView& map, double value) { (map.*set)(value); }};
}

double insetOf(const PgmMapView& map) {
    return map.contentInset().top;
}

void setInset(PgmMapView& map, double points) {
    map.setContentInset({points, points, points, points});
}

double trackingOf(const PgmMapView& map) {
    return static_cast<double>(map.userTrackingMode());
}

void setTracking(PgmMapView& map, double raw) {
    if (const auto mode = PgmUserTrackingModeFromRaw(static_cast<unsigned>(std::clamp(raw, 0.0, 100.0)))) {
        map.setUserTrackingMode(*mode);
    }
}

using View = PgmMapView;

constexpr std::array switches{
    flag<&View::isScaleBarVisible, &View::setIsScaleBarVisible>("isScaleBarVisible"),
    flag<&View::isCompassVisible, &View::setIsCompassVisible>("isCompassVisible"),
    flag<&View::isZoomControlVisible, &View::setIsZoomControlVisible>("isZoomControlVisible"),
    flag<&View::isLocationButtonVisible, &View::setIsLocationButtonVisible>("isLocationButtonVisible"),
    flag<&View::isLogoVisible, &View::setIsLogoVisible>("isLogoVisible"),
    flag<&View::isLogoClickEnabled, &View::setIsLogoClickEnabled>("isLogoClickEnabled"),
    flag<&View::isScrollGesturesEnabled, &View::setIsScrollGesturesEnabled>("isScrollGesturesEnabled"),
    flag<&View::isZoomGesturesEnabled, &View::setIsZoomGesturesEnabled>("isZoomGesturesEnabled"),
    flag<&View::isRotateGesturesEnabled, &View::setIsRotateGesturesEnabled>("isRotateGesturesEnabled"),
    flag<&View::isTiltGesturesEnabled, &View::setIsTiltGesturesEnabled>("isTiltGesturesEnabled"),
    number<&View::minimumZoomLevel, &View::setMinimumZoomLevel>("minimumZoomLevel"),
    number<&View::maximumZoomLevel, &View::setMaximumZoomLevel>("maximumZoomLevel"),
    number<&View::minimumTilt, &View::setMinimumTilt>("minimumTilt"),
    number<&View::maximumTilt, &View::setMaximumTilt>("maximumTilt"),
    number<&View::decelerationRate, &View::setDecelerationRate>("decelerationRate"),
    MapSwitch{"contentInset", insetOf, setInset},
    MapSwitch{"userTrackingMode", trackingOf, setTracking},
};

}  // namespace

std::span<const MapSwitch> mapSwitches() {
    return switches;
}

bool setMapSwitch(PgmMapView& map, std::string_view name, double value) {
    const auto* const found = std::find_if(switches.begin(), switches.end(),
                                           [&](const MapSwitch& known) { return known.name == name; });
    if (found == switches.end() || !std::isfinite(value)) {
        return false;
    }
    found->set(map, value);
    map.updateOptions();
    return true;
}

}  // namespace pelta::viewer
