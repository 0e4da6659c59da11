#include <pelta/View/PgmMapDelegate.h>

namespace pelta {

void PgmMapDelegate::mapViewDidFinishLoadingStyle(PgmMapView& /*mapView*/) {}

void PgmMapDelegate::didFailLoadingStyle(PgmMapView& /*mapView*/, std::string_view /*message*/) {}

void PgmMapDelegate::regionWillChangeAnimated(PgmMapView& /*mapView*/, bool /*animated*/,
                                              PgmCameraUpdateReason /*reason*/) {}

void PgmMapDelegate::regionIsChangingWithReason(PgmMapView& /*mapView*/, PgmCameraUpdateReason /*reason*/) {}

void PgmMapDelegate::mapViewDidChangeVisibleArea(PgmMapView& /*mapView*/) {}

void PgmMapDelegate::regionDidChangeAnimated(PgmMapView& /*mapView*/, bool /*animated*/,
                                             PgmCameraUpdateReason /*reason*/) {}

void PgmMapDelegate::mapViewDidBecomeIdle(PgmMapView& /*mapView*/) {}

void PgmMapDelegate::didTapMapView(PgmMapView& /*mapView*/, CLLocationCoordinate2D /*latLng*/) {}

void PgmMapDelegate::didLongTapMapView(PgmMapView& /*mapView*/, CLLocationCoordinate2D /*latLng*/) {}

void PgmMapDelegate::didUpdateUserLocation(PgmMapView& /*mapView*/,
                                           const std::optional<CLLocation>& /*location*/) {}

void PgmMapDelegate::didFailToLocateUser(PgmMapView& /*mapView*/, CLLocationFailure /*reason*/) {}

void PgmMapDelegate::didChangeUserTrackingMode(PgmMapView& /*mapView*/, PgmUserTrackingMode /*mode*/) {}

}  // namespace pelta
