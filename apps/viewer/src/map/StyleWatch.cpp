#include "map/StyleWatch.h"

#include <utility>

namespace pelta::viewer {

std::shared_ptr<StyleWatch> StyleWatch::start(MLNMapView& map, Loaded loaded, Failed failed) {
    auto watch = std::make_shared<StyleWatch>(map.delegate(), std::move(loaded), std::move(failed));
    map.setDelegate(watch);
    return watch;
}

StyleWatch::StyleWatch(std::shared_ptr<MLNMapViewDelegate> next, Loaded loaded, Failed failed)
    : next_(next ? std::move(next) : std::make_shared<MLNMapViewDelegate>()),
      loaded_(std::move(loaded)),
      failed_(std::move(failed)) {}

void StyleWatch::didFinishLoadingStyle(MLNMapView& map, MLNStyle& style) {
    next_->didFinishLoadingStyle(map, style);
    loaded_();
}

void StyleWatch::mapViewDidFailLoadingMap(MLNMapView& map, std::string_view message) {
    next_->mapViewDidFailLoadingMap(map, message);
    failed_(message);
}

void StyleWatch::regionWillChange(MLNMapView& map, MLNCameraChangeReason reason, bool animated) {
    next_->regionWillChange(map, reason, animated);
}

void StyleWatch::regionIsChanging(MLNMapView& map, MLNCameraChangeReason reason) {
    next_->regionIsChanging(map, reason);
}

void StyleWatch::regionDidChange(MLNMapView& map, MLNCameraChangeReason reason, bool animated) {
    next_->regionDidChange(map, reason, animated);
}

void StyleWatch::mapViewDidChangeVisibleArea(MLNMapView& map) {
    next_->mapViewDidChangeVisibleArea(map);
}

void StyleWatch::mapViewWillStartRenderingFrame(MLNMapView& map) {
    next_->mapViewWillStartRenderingFrame(map);
}

void StyleWatch::mapViewDidBecomeIdle(MLNMapView& map) {
    next_->mapViewDidBecomeIdle(map);
}

void StyleWatch::didUpdateUserLocation(MLNMapView& map, const MLNUserLocation& location) {
    next_->didUpdateUserLocation(map, location);
}

void StyleWatch::didFailToLocateUser(MLNMapView& map, CLLocationFailure reason) {
    next_->didFailToLocateUser(map, reason);
}

void StyleWatch::didChangeUserTrackingMode(MLNMapView& map, MLNUserTrackingMode mode, bool animated) {
    next_->didChangeUserTrackingMode(map, mode, animated);
}

std::shared_ptr<MLNAnnotationView> StyleWatch::viewForAnnotation(MLNMapView& map,
                                                                 const MLNAnnotation& annotation) {
    return next_->viewForAnnotation(map, annotation);
}

void StyleWatch::didSelectAnnotation(MLNMapView& map, const MLNAnnotation& annotation) {
    next_->didSelectAnnotation(map, annotation);
}

bool StyleWatch::annotationCanShowCallout(MLNMapView& map, const MLNAnnotation& annotation) {
    return next_->annotationCanShowCallout(map, annotation);
}

}  // namespace pelta::viewer
