#include "View/PgmPrivateMapDelegate.h"

#include <cstdint>
#include <sstream>
#include <string>

#include <pelta/Annotations/PgmLocationAnnotationView.h>
#include <pelta/Annotations/PgmLocationIcon.h>
#include <pelta/Platform/Log.h>
#include <pelta/View/PgmMapView.h>

#include "View/ShapeRegistry.h"

namespace pelta {

namespace {

constexpr std::uint64_t gestureReasons = 0x1FC;

/// Log lines of camera events are many a second, so their text is made only when somebody reads it.
void logRegionEvent(std::string_view event, MLNCameraChangeReason reason, PgmCameraUpdateReason mapped,
                    int line = __builtin_LINE()) {
    if (!isLoggerEnabled()) {
        return;
    }
    dPrint(std::string(event) + " reason " + std::to_string(static_cast<std::uint64_t>(reason)) +
               " getChangeReason(reason) " + std::to_string(static_cast<int>(mapped)),
           __builtin_FILE(), line);
}

std::string description(const std::optional<CLLocation>& location) {
    if (!location) {
        return "nil";
    }
    std::ostringstream text;
    text.precision(10);
    text << "latitude " << location->coordinate.latitude << ", longitude " << location->coordinate.longitude
         << ", accuracy " << location->horizontalAccuracy << " m";
    return text.str();
}

}  // namespace

PgmCameraUpdateReason cameraUpdateReason(MLNCameraChangeReason reason) noexcept {
    const auto bits = static_cast<std::uint64_t>(reason);
    if ((bits & gestureReasons) != 0) {
        return PgmCameraUpdateReason::gesture;
    }
    const bool isResetNorth = (bits & static_cast<std::uint64_t>(MLNCameraChangeReason::resetNorth)) != 0;
    return isResetNorth ? PgmCameraUpdateReason::control : PgmCameraUpdateReason::developer;
}

void PrivateMapDelegate::didFinishLoadingStyle(MLNMapView& /*mapView*/, MLNStyle& style) {
    dPrint("didFinishLoading " + style.description());
    const auto view = pgmMapView_.lock();
    if (!view) {
        return;
    }
    view->shapes_->styleDidLoad(style);
    if (const auto delegate = view->delegate()) {
        delegate->mapViewDidFinishLoadingStyle(*view);
    }
}

void PrivateMapDelegate::mapViewDidFailLoadingMap(MLNMapView& /*mapView*/, std::string_view message) {
    printError(message);
    const auto view = pgmMapView_.lock();
    if (const auto delegate = view ? view->delegate() : nullptr) {
        delegate->didFailLoadingStyle(*view, message);
    }
}

void PrivateMapDelegate::regionWillChange(MLNMapView& /*mapView*/, MLNCameraChangeReason reason,
                                          bool animated) {
    const auto mapped = cameraUpdateReason(reason);
    logRegionEvent("regionWillChangeWith", reason, mapped);
    const auto view = pgmMapView_.lock();
    if (const auto delegate = view ? view->delegate() : nullptr) {
        delegate->regionWillChangeAnimated(*view, animated, mapped);
    }
}

void PrivateMapDelegate::regionIsChanging(MLNMapView& /*mapView*/, MLNCameraChangeReason reason) {
    const auto mapped = cameraUpdateReason(reason);
    logRegionEvent("regionIsChangingWith", reason, mapped);
    const auto view = pgmMapView_.lock();
    if (!view) {
        return;
    }
    if (const auto delegate = view->delegate()) {
        delegate->regionIsChangingWithReason(*view, mapped);
    }
    if (const auto delegate = view->clusterDelegate()) {
        delegate->regionIsChangingWithReason(*view, mapped);
    }
}

void PrivateMapDelegate::regionDidChange(MLNMapView& /*mapView*/, MLNCameraChangeReason reason,
                                         bool animated) {
    const auto mapped = cameraUpdateReason(reason);
    logRegionEvent("regionDidChangeWith", reason, mapped);
    const auto view = pgmMapView_.lock();
    if (const auto delegate = view ? view->delegate() : nullptr) {
        delegate->regionDidChangeAnimated(*view, animated, mapped);
    }
}

void PrivateMapDelegate::mapViewDidChangeVisibleArea(MLNMapView& /*mapView*/) {
    const auto view = pgmMapView_.lock();
    if (!view) {
        return;
    }
    if (const auto delegate = view->delegate()) {
        delegate->mapViewDidChangeVisibleArea(*view);
    }
    if (const auto delegate = view->clusterDelegate()) {
        delegate->mapViewDidChangeVisibleArea(*view);
    }
}

void PrivateMapDelegate::mapViewWillStartRenderingFrame(MLNMapView& /*mapView*/) {
    if (const auto view = pgmMapView_.lock()) {
        view->shapes_->doPendingWork();
    }
}

void PrivateMapDelegate::mapViewDidBecomeIdle(MLNMapView& /*mapView*/) {
    const auto view = pgmMapView_.lock();
    if (const auto delegate = view ? view->delegate() : nullptr) {
        delegate->mapViewDidBecomeIdle(*view);
    }
}

void PrivateMapDelegate::didUpdateUserLocation(MLNMapView& /*mapView*/, const MLNUserLocation& userLocation) {
    // A copy, because the delegate may end what reports the location.
    const auto location = userLocation.location();
    dPrint("userLocation?.location = " + description(location));
    const auto view = pgmMapView_.lock();
    if (const auto delegate = view ? view->delegate() : nullptr) {
        delegate->didUpdateUserLocation(*view, location);
    }
}

void PrivateMapDelegate::didFailToLocateUser(MLNMapView& /*mapView*/, CLLocationFailure reason) {
    const auto view = pgmMapView_.lock();
    if (const auto delegate = view ? view->delegate() : nullptr) {
        delegate->didFailToLocateUser(*view, reason);
    }
}

void PrivateMapDelegate::didChangeUserTrackingMode(MLNMapView& /*mapView*/, MLNUserTrackingMode mode,
                                                   bool /*animated*/) {
    dPrint("mode " + std::to_string(static_cast<unsigned>(mode)));
    if (const auto view = pgmMapView_.lock()) {
        view->tellTrackingMode();
    }
}

std::shared_ptr<MLNAnnotationView> PrivateMapDelegate::viewForAnnotation(MLNMapView& /*mapView*/,
                                                                         const MLNAnnotation& annotation) {
    const auto view = pgmMapView_.lock();
    const bool isUser = dynamic_cast<const MLNUserLocation*>(&annotation) != nullptr;
    return view && isUser ? view->locationAnnotaionView() : nullptr;
}

void PrivateMapDelegate::didSelectAnnotation(MLNMapView& mapView, const MLNAnnotation& annotation) {
    const auto view = pgmMapView_.lock();
    if (dynamic_cast<const MLNUserLocation*>(&annotation) != nullptr) {
        dPrint("Tapped my location.");
        if (const auto tapped = view ? view->locationIcon()->touchEvent() : nullptr) {
            tapped();
        }
    }
    mapView.deselectAnnotation(annotation, true);
}

bool PrivateMapDelegate::annotationCanShowCallout(MLNMapView& /*mapView*/,
                                                  const MLNAnnotation& /*annotation*/) {
    return false;
}

}  // namespace pelta
