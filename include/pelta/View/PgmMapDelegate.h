#pragma once

#include <optional>

#include <pelta/Geometry/PgmCameraUpdate.h>
#include <pelta/Platform/CoreLocation.h>

namespace pelta {

class PgmMapView;

/// What an application hears from a map view, on the main thread. Every method may be left alone. A method
/// may do anything, also release the view. Map views hold their delegate weakly.
class PgmMapDelegate {
 public:
    virtual ~PgmMapDelegate() = default;

    /// A camera change begins.
    virtual void regionWillChangeAnimated(PgmMapView& mapView, bool animated, PgmCameraUpdateReason reason);
    /// The camera has moved; at least once in every change, the last time with its final camera.
    virtual void regionIsChangingWithReason(PgmMapView& mapView, PgmCameraUpdateReason reason);
    /// A camera change has ended.
    virtual void regionDidChangeAnimated(PgmMapView& mapView, bool animated, PgmCameraUpdateReason reason);
    /// Nothing is left to load, move or draw.
    virtual void mapViewDidBecomeIdle(PgmMapView& mapView);
    /// The user's location has been measured anew; absent when it is no longer known.
    virtual void didUpdateUserLocation(PgmMapView& mapView, const std::optional<CLLocation>& location);
};

}  // namespace pelta
