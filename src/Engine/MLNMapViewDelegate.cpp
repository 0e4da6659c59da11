#include <pelta/Engine/MLNAnnotationView.h>
#include <pelta/Engine/MLNMapViewDelegate.h>

namespace pelta {

void MLNMapViewDelegate::didFinishLoadingStyle(MLNMapView& /*mapView*/, MLNStyle& /*style*/) {}
void MLNMapViewDelegate::mapViewDidFailLoadingMap(MLNMapView& /*mapView*/, std::string_view /*message*/) {}
void MLNMapViewDelegate::regionWillChange(MLNMapView& /*mapView*/, MLNCameraChangeReason /*reason*/,
                                          bool /*animated*/) {}
void MLNMapViewDelegate::regionIsChanging(MLNMapView& /*mapView*/, MLNCameraChangeReason /*reason*/) {}
void MLNMapViewDelegate::regionDidChange(MLNMapView& /*mapView*/, MLNCameraChangeReason /*reason*/,
                                         bool /*animated*/) {}
void MLNMapViewDelegate::mapViewDidChangeVisibleArea(MLNMapView& /*mapView*/) {}
void MLNMapViewDelegate::mapViewWillStartRenderingFrame(MLNMapView& /*mapView*/) {}
void MLNMapViewDelegate::mapViewDidBecomeIdle(MLNMapView& /*mapView*/) {}
void MLNMapViewDelegate::didUpdateUserLocation(MLNMapView& /*mapView*/,
                                               const MLNUserLocation& /*userLocation*/) {}
void MLNMapViewDelegate::didFailToLocateUser(MLNMapView& /*mapView*/, CLLocationFailure /*reason*/) {}
void MLNMapViewDelegate::didChangeUserTrackingMode(MLNMapView& /*mapView*/, MLNUserTrackingMode /*mode*/,
                                                   bool /*animated*/) {}
std::shared_ptr<MLNAnnotationView> MLNMapViewDelegate::viewForAnnotation(
    MLNMapView& /*mapView*/, const MLNAnnotation& /*annotation*/) {
    return nullptr;
}
void MLNMapViewDelegate::didSelectAnnotation(MLNMapView& /*mapView*/, const MLNAnnotation& /*annotation*/) {}
bool MLNMapViewDelegate::annotationCanShowCallout(MLNMapView& /*mapView*/,
                                                  const MLNAnnotation& /*annotation*/) {
    return false;
}

}  // namespace pelta
