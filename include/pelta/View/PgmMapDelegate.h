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
    /// Another part of the world is visible though the camera has not moved: the view's size or its content
    /// inset has changed. Told before the frame that shows it, once however much has changed; while an inset
    /// changes over time, for each frame.
    virtual void mapViewDidChangeVisibleArea(PgmMapView& mapView);
    /// Nothing is left to load, move or draw.
    virtual void mapViewDidBecomeIdle(PgmMapView& mapView);
    /// The map was tapped at a place, in degrees, where no shape has dealt with the tap. A double tap is no
    /// tap.
    virtual void didTapMapView(PgmMapView& mapView, CLLocationCoordinate2D latLng);
    /// A finger has rested on the map for half a second, at a place in degrees; reported once, while it still
    /// rests.
    virtual void didLongTapMapView(PgmMapView& mapView, CLLocationCoordinate2D latLng);
    /// The user's location has been measured anew; absent when it is no longer known.
    virtual void didUpdateUserLocation(PgmMapView& mapView, const std::optional<CLLocation>& location);
};

}  // namespace pelta
