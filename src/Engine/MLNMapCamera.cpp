#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

#include <pelta/Engine/MLNMapCamera.h>

namespace pelta {
namespace {

constexpr double earthCircumference = 2 * std::numbers::pi * 6378137;  // metres
constexpr double tileSize = 512;                                       // points of the world at zoom 0
constexpr double halfFieldOfView = 15 * std::numbers::pi / 180;
/// Keeps cosines of latitudes and pitches at and beyond 90° invertible.
constexpr double smallestFactor = 1e-12;
/// Points. From views so low altitudes would come that a double holds with a few bits or not at all, and no
/// zoom level could be read back from them.
constexpr double lowestView = 1e-9;
/// Zoom levels beyond this make no difference to anyone and would overflow.
constexpr double largestZoom = 900;

double finiteOrZero(double value) noexcept {
    return std::isfinite(value) ? value : 0;
}

double cosineOfDegrees(double degrees) noexcept {
    return std::max(std::cos(finiteOrZero(degrees) * std::numbers::pi / 180), smallestFactor);
}

double sineOfDegrees(double degrees) noexcept {
    return std::max(std::sin(finiteOrZero(degrees) * std::numbers::pi / 180), smallestFactor);
}

/// Metres of altitude at zoom 0.
double altitudeAtZoomZero(double pitch, double latitude, CGSize size) noexcept {
    const double height = finiteOrZero(size.height) >= lowestView ? size.height : 1;
    return cosineOfDegrees(latitude) * earthCircumference / tileSize * height / 2 /
           std::tan(halfFieldOfView) * sineOfDegrees(90 - finiteOrZero(pitch));
}

}  // namespace

double MLNAltitudeForZoomLevel(double zoomLevel, double pitch, double latitude, CGSize size) noexcept {
    const double zoom = std::clamp(finiteOrZero(zoomLevel), -largestZoom, largestZoom);
    const double altitude = altitudeAtZoomZero(pitch, latitude, size) * std::exp2(-zoom);
    return std::min(altitude, std::numeric_limits<double>::max());
}

double MLNZoomLevelForAltitude(double altitude, double pitch, double latitude, CGSize size) noexcept {
    const double height = std::max(finiteOrZero(altitude), std::numeric_limits<double>::min());
    const double highest =
        std::min(altitudeAtZoomZero(pitch, latitude, size), std::numeric_limits<double>::max());
    return std::log2(highest) - std::log2(height);
}

double MLNMetersPerPoint(double latitude, double zoomLevel) noexcept {
    const double zoom = std::clamp(finiteOrZero(zoomLevel), -largestZoom, largestZoom);
    return cosineOfDegrees(latitude) * earthCircumference / tileSize * std::exp2(-zoom);
}

}  // namespace pelta
