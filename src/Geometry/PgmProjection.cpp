#include <pelta/Geometry/PgmProjection.h>
#include <pelta/View/PgmMapView.h>

namespace pelta {

namespace {

std::shared_ptr<MLNMapView> engineOf(const std::weak_ptr<const PgmMapView>& view) {
    const auto mapView = view.lock();
    return mapView ? mapView->mapView() : nullptr;
}

}  // namespace

std::optional<CLLocationCoordinate2D> PgmProjection::latlng(CGPoint point) const {
    const auto engine = engineOf(mapView_);
    return engine ? std::optional(engine->convertPoint(point, engine.get())) : std::nullopt;
}

CGPoint PgmProjection::point(CLLocationCoordinate2D coord) const {
    const auto engine = engineOf(mapView_);
    return engine ? engine->convertCoordinate(coord, engine.get()) : CGPoint{};
}

std::shared_ptr<PgmLatLngBounds> PgmProjection::latlngBounds(CGRect viewBounds) const {
    const auto engine = engineOf(mapView_);
    if (!engine) {
        return nullptr;
    }
    const auto bounds = engine->convertRect(viewBounds, engine.get());
    return PgmLatLngBounds::create(bounds.sw, bounds.ne);
}

CGRect PgmProjection::viewBounds(const PgmLatLngBounds& bounds) const {
    const auto engine = engineOf(mapView_);
    return engine ? engine->convertCoordinateBounds({bounds.southWest(), bounds.northEast()}, engine.get())
                  : CGRect{};
}

double PgmProjection::metersPerPixel() const {
    const auto engine = engineOf(mapView_);
    return engine ? engine->metersPerPointAtLatitude(engine->centerCoordinate().latitude) : 0;
}

}  // namespace pelta
