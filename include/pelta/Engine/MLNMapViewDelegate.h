#pragma once

#include <memory>
#include <string_view>

#include <pelta/Engine/MLNTypes.h>
#include <pelta/Platform/CoreLocation.h>

namespace pelta {

class MLNAnnotation;
class MLNAnnotationView;
class MLNMapView;
class MLNStyle;
class MLNUserLocation;

/// Receives the events of one engine map view, on the main thread. Every method may be left alone. A callback
/// may do anything, also release the view.
class MLNMapViewDelegate {
 public:
    virtual ~MLNMapViewDelegate() = default;

    /// A style document has loaded and `style` is the view's style. Called again for each later document.
    virtual void didFinishLoadingStyle(MLNMapView& mapView, MLNStyle& style);
    /// The style document could not be fetched or read; `message` names the address, the place and the fix.
    virtual void mapViewDidFailLoadingMap(MLNMapView& mapView, std::string_view message);

    /// A camera change begins. For a change without animation this, `regionIsChanging` and `regionDidChange`
    /// come before the call that caused it returns.
    virtual void regionWillChange(MLNMapView& mapView, MLNCameraChangeReason reason, bool animated);
    /// The camera has moved; at least once in every change, the last time with its final camera.
    virtual void regionIsChanging(MLNMapView& mapView, MLNCameraChangeReason reason);
    /// A camera change has ended.
    virtual void regionDidChange(MLNMapView& mapView, MLNCameraChangeReason reason, bool animated);

    /// Another part of the world is visible though the camera has not moved: the size of the view or the
    /// content inset has changed. Told at the beginning of the frame that shows it, once however much has
    /// changed; while an inset changes over time, for each frame. What is done to the style now is part of
    /// the frame.
    virtual void mapViewDidChangeVisibleArea(MLNMapView& mapView);
    /// A frame is about to be drawn: the last moment at which changes of the style are part of it. At most
    /// once a frame, after its camera events and main-queue tasks.
    virtual void mapViewWillStartRenderingFrame(MLNMapView& mapView);
    /// Nothing is left to load, move or draw. Reported once for each time that the map comes to rest.
    virtual void mapViewDidBecomeIdle(MLNMapView& mapView);

    /// The user's position has been measured anew.
    virtual void didUpdateUserLocation(MLNMapView& mapView, const MLNUserLocation& userLocation);
    /// The user's position cannot be had. Not told again for the same reason until a position has come or the
    /// position has been hidden and is shown anew.
    virtual void didFailToLocateUser(MLNMapView& mapView, CLLocationFailure reason);
    /// How the camera follows the user has changed, also when a gesture or a camera move ended the following.
    virtual void didChangeUserTrackingMode(MLNMapView& mapView, MLNUserTrackingMode mode, bool animated);

    /// What shows an annotation. Asked once each time that the user's position comes to be shown, which an
    /// `MLNUserLocationAnnotationView` shows; with none, or another kind of view, nothing is shown.
    [[nodiscard]] virtual std::shared_ptr<MLNAnnotationView> viewForAnnotation(
        MLNMapView& mapView, const MLNAnnotation& annotation);
    /// An annotation has been selected, by a tap on its view or by a command.
    virtual void didSelectAnnotation(MLNMapView& mapView, const MLNAnnotation& annotation);
    /// Whether a selected annotation may show a callout. The engine has no callouts and does not ask.
    [[nodiscard]] virtual bool annotationCanShowCallout(MLNMapView& mapView, const MLNAnnotation& annotation);
};

}  // namespace pelta
