#pragma once

#include <functional>

#include <pelta/Engine/MLNTypes.h>
#include <pelta/Platform/UIView.h>

/// @file
/// Zooming by taps.

namespace pelta {

/// Adds to a map view what watches for the taps that zoom: two taps in, a tap of two fingers out, each by one
/// level.
///
/// They are watched for also while zooming is switched off, so that a double tap is never two taps.
///
/// @param zoom  called with the change of zoom and the point of the view that shall stay where it is; must
///              not own the view.
void addTapZoom(UIView& mapView, std::function<void(double change, CGPoint fixed)> zoom);

/// The camera at another zoom, with what is seen at one place staying where it is on the screen.
///
/// @param fixed  on the ground; any turn around the world.
[[nodiscard]] CameraState zoomedAbout(CameraState camera, CLLocationCoordinate2D fixed, double zoom);

}  // namespace pelta
