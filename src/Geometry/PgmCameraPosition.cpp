#include <pelta/Geometry/PgmCameraPosition.h>
#include <pelta/View/PgmMapView.h>

namespace pelta {

std::shared_ptr<PgmCameraPosition> PgmCameraPosition::create(CLLocationCoordinate2D target, double zoom,
                                                             double tilt, double bearing) {
    return std::make_shared<PgmCameraPosition>(target, zoom, tilt, bearing);
}

std::shared_ptr<PgmCameraPosition> PgmCameraPosition::cameraPosition(CLLocationCoordinate2D target,
                                                                     double zoom, double tilt,
                                                                     double bearing) {
    return create(target, zoom, tilt, bearing);
}

std::shared_ptr<PgmCameraPosition> PgmCameraPosition::cameraPosition(CLLocationCoordinate2D target,
                                                                     double zoom) {
    return create(target, zoom, 0, 0);
}

MLNMapCamera PgmCameraPosition::getMLNMapCamera(CGSize size, const PgmMapView& mapView) const {
    const auto& engine = mapView.mapView();
    if (!engine) {
        return {};
    }
    if (bounds_) {
        return engine->cameraThatFitsCoordinateBounds({bounds_->southWest(), bounds_->northEast()},
                                                      paddingInsets_.value_or(UIEdgeInsets{}));
    }
    return MLNMapCamera::cameraShowing({target_, zoom_, tilt_, bearing_}, size);
}

}  // namespace pelta
