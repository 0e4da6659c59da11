#include <pelta/Engine/MLNAnnotation.h>
#include <pelta/Engine/MLNAnnotationView.h>
#include <pelta/Engine/MLNMapView.h>

namespace pelta {

std::optional<CLLocationCoordinate2D> MLNUserLocation::coordinate() const {
    return location_ ? std::optional(location_->coordinate) : std::nullopt;
}

MLNAnnotationView::MLNAnnotationView(std::string reuseIdentifier)
    : UIView(CGRect{}), reuseIdentifier_(std::move(reuseIdentifier)) {}

void MLNAnnotationView::setSelected(bool selected, bool /*animated*/) {
    isSelected_ = selected;
}

const MLNUserLocation* MLNUserLocationAnnotationView::userLocation() const {
    const auto map = mapView();
    return map ? map->userLocation() : nullptr;
}

}  // namespace pelta
