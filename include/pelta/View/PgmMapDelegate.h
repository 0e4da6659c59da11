#pragma once

#include <optional>
#include <string_view>

#include <pelta/Geometry/PgmCameraUpdate.h>
#include <pelta/Platform/CoreLocation.h>
#include <pelta/View/PgmMapTypes.h>

namespace pelta {

class PgmMapView;

/// What an application hears from a map view, on the main thread. Every method may be left alone. A method
/// may do anything, also release the view. Map views hold their delegate weakly.
class PgmMapDelegate {
 public:
    virtual ~PgmMapDelegate() = default;

    /// A style has loaded and is in place: the first one, and each that was set later. Shapes are drawn over
    /// it from the next frame on. What an application itself has added to the engine's style has gone with
    /// the former one.
    virtual void mapViewDidFinishLoadingStyle(PgmMapView& mapView);
    /// A style cannot be fetched, read or drawn. The one before it stays; without one the map stays empty.
    ///
    /// @param message  names the address, the place in the document and what to do. Standard error, in a
    /// browser
    ///                 the console, has it too, whether or not there is a delegate.
    virtual void didFailLoadingStyle(PgmMapView& mapView, std::string_view message);
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
    /// The user's location is to be shown and cannot be had. Not told again for the same reason until a
    /// location has come or the tracking mode has been `off`; to ask the device once more, set it to `off`
    /// and back.
    virtual void didFailToLocateUser(PgmMapView& mapView, CLLocationFailure reason);
    /// The user's location is shown and followed in another way than before: a mode has been set, or a pan
    /// has ended the following, which makes it `none`. What `PgmMapView::userTrackingMode` answers is the
    /// mode that was set last, also after a pan.
    virtual void didChangeUserTrackingMode(PgmMapView& mapView, PgmUserTrackingMode mode);
};

}  // namespace pelta
