#include "EngineRecorder.h"

#include <utility>

namespace pelta::browser {

namespace {

std::string eventText(std::string_view kind, MLNCameraChangeReason reason, bool animated) {
    return std::string(kind) + "(" + (animated ? "a" : "") +
           std::to_string(static_cast<std::uint64_t>(reason)) + ")";
}

}  // namespace

void EngineRecorder::note(const std::string& event) {
    if (event != last_) {
        events_ += (events_.empty() ? "" : " ") + event;
        last_ = event;
    }
}

std::string EngineRecorder::takeEvents() {
    last_.clear();
    return std::exchange(events_, {});
}

void EngineRecorder::didFinishLoadingStyle(MLNMapView& mapView, MLNStyle& style) {
    ++loadedStyles_;
    inner_->didFinishLoadingStyle(mapView, style);
}

void EngineRecorder::mapViewDidFailLoadingMap(MLNMapView& mapView, std::string_view message) {
    failure_ = message;
    inner_->mapViewDidFailLoadingMap(mapView, message);
}

void EngineRecorder::regionWillChange(MLNMapView& mapView, MLNCameraChangeReason reason, bool animated) {
    note(eventText("will", reason, animated));
    inner_->regionWillChange(mapView, reason, animated);
}

void EngineRecorder::regionIsChanging(MLNMapView& mapView, MLNCameraChangeReason reason) {
    note(eventText("changing", reason, false));
    inner_->regionIsChanging(mapView, reason);
    if (const auto work = std::exchange(atNextMove_, nullptr)) {
        work();
    }
}

void EngineRecorder::regionDidChange(MLNMapView& mapView, MLNCameraChangeReason reason, bool animated) {
    note(eventText("did", reason, animated));
    inner_->regionDidChange(mapView, reason, animated);
}

void EngineRecorder::mapViewDidChangeVisibleArea(MLNMapView& mapView) {
    inner_->mapViewDidChangeVisibleArea(mapView);
}

void EngineRecorder::mapViewWillStartRenderingFrame(MLNMapView& mapView) {
    ++frameCount_;
    inner_->mapViewWillStartRenderingFrame(mapView);
}

void EngineRecorder::mapViewDidBecomeIdle(MLNMapView& mapView) {
    ++idleCount_;
    inner_->mapViewDidBecomeIdle(mapView);
}

void EngineRecorder::didUpdateUserLocation(MLNMapView& mapView, const MLNUserLocation& userLocation) {
    if (const auto coordinate = userLocation.coordinate()) {
        location_ = std::to_string(coordinate->latitude) + " " + std::to_string(coordinate->longitude);
    }
    inner_->didUpdateUserLocation(mapView, userLocation);
}

void EngineRecorder::didFailToLocateUser(MLNMapView& mapView, CLLocationFailure reason) {
    inner_->didFailToLocateUser(mapView, reason);
}

void EngineRecorder::didChangeUserTrackingMode(MLNMapView& mapView, MLNUserTrackingMode mode, bool animated) {
    inner_->didChangeUserTrackingMode(mapView, mode, animated);
}

std::shared_ptr<MLNAnnotationView> EngineRecorder::viewForAnnotation(MLNMapView& mapView,
                                                                     const MLNAnnotation& annotation) {
    return inner_->viewForAnnotation(mapView, annotation);
}

void EngineRecorder::didSelectAnnotation(MLNMapView& mapView, const MLNAnnotation& annotation) {
    inner_->didSelectAnnotation(mapView, annotation);
}

}  // namespace pelta::browser
