#pragma once

#include <memory>
#include <string_view>

/// @file
/// Positions on the Earth and the source that reports the user's own.

namespace pelta {

/// WGS84 position in degrees. Any finite value can be stored; latitudes make sense from -90 to 90 and
/// longitudes from -180 to 180.
struct CLLocationCoordinate2D {
    double latitude = 0;   ///< Northwards from the equator.
    double longitude = 0;  ///< Eastwards from Greenwich.
    friend bool operator==(const CLLocationCoordinate2D&, const CLLocationCoordinate2D&) = default;
};

/// True when both values are finite, the latitude is within ±90 and the longitude within ±180.
[[nodiscard]] bool CLLocationCoordinate2DIsValid(CLLocationCoordinate2D coordinate) noexcept;

/// One measured position.
struct CLLocation {
    CLLocationCoordinate2D coordinate;  ///< Where it was measured.
    double altitude = 0;                ///< Metres above sea level.
    double horizontalAccuracy = -1;     ///< Radius of uncertainty in metres; negative when unknown.
    double course = -1;    ///< Direction of travel, degrees clockwise from north; negative when unknown.
    double speed = -1;     ///< Metres a second; negative when unknown.
    double timestamp = 0;  ///< Seconds on the port's clock.
    friend bool operator==(const CLLocation&, const CLLocation&) = default;
};

/// Direction in which the device points, degrees clockwise from north.
struct CLHeading {
    double magneticHeading = -1;  ///< Against magnetic north; negative when unknown.
    double trueHeading = -1;      ///< Against true north; negative when unknown.
    friend bool operator==(const CLHeading&, const CLHeading&) = default;
};

/// Why the user's position cannot be had.
enum class CLLocationFailure : unsigned {
    denied = 0,      ///< The user, or the system, has refused permission.
    unavailable = 1  ///< There is no device for it, or it cannot tell at present.
};

/// Receives what a `LocationSource` reports, on the main thread.
class LocationObserver {
 public:
    virtual ~LocationObserver() = default;
    /// A new position. Its coordinate is valid: sources drop other reports with a log line.
    virtual void locationDidUpdate(const CLLocation& location) = 0;
    /// A new heading, finite numbers in any case.
    virtual void headingDidUpdate(const CLHeading& heading) = 0;
    /// The source cannot report, perhaps said again and again. `reason` is for the log.
    virtual void locationDidFail(CLLocationFailure failure, std::string_view reason) = 0;
};

/// The port's one source of the user's position. Main thread only.
class LocationSource {
 public:
    virtual ~LocationSource() = default;
    /// Starts reporting to the observer; adding one twice changes nothing. The first observer switches the
    /// device on. An observer that has been released is skipped and forgotten.
    virtual void addObserver(std::weak_ptr<LocationObserver> observer) = 0;
    /// Stops reporting to the observer; the last one gone switches the device off. Unknown observers are
    /// ignored.
    virtual void removeObserver(const LocationObserver& observer) = 0;
};

}  // namespace pelta
