#include <pelta/Annotations/PgmLocationAnnotationView.h>
#include <pelta/Annotations/PgmLocationIcon.h>
#include <pelta/View/PgmMapView.h>

namespace pelta {

std::shared_ptr<PgmLocationIcon> PgmLocationIcon::create() {
    return std::make_shared<PgmLocationIcon>();
}

PgmLocationIcon::PgmLocationIcon()
    : image_(PgmImage::locationIconNomal()),
      imageTracking_(PgmImage::locationIconTracking()),
      imageTrackingCompass_(PgmImage::locationIconTrackingCompass()) {}

void PgmLocationIcon::setImage(std::shared_ptr<PgmImage> image) {
    image_ = std::move(image);
    updateView();
}

void PgmLocationIcon::setImageTracking(std::shared_ptr<PgmImage> image) {
    imageTracking_ = std::move(image);
    updateView();
}

void PgmLocationIcon::setImageTrackingCompass(std::shared_ptr<PgmImage> image) {
    imageTrackingCompass_ = std::move(image);
    updateView();
}

void PgmLocationIcon::setScale(CGFloat scale) {
    scale_ = scale;
    updateView();
}

void PgmLocationIcon::setCircleRadius(double points) {
    circleRadius_ = points;
    updateView();
}

void PgmLocationIcon::setCircleColor(std::optional<UIColor> color) {
    circleColor_ = color;
    updateView();
}

void PgmLocationIcon::updateView() {
    const auto map = mapview();
    if (const auto view = map ? map->locationAnnotaionView() : nullptr) {
        view->setupView(*map->locationIcon());
    }
}

bool PgmLocationIcon::isVisible() const {
    const auto map = mapview();
    const auto engine = map ? map->mapView() : nullptr;
    return engine && engine->showsUserLocation();
}

std::optional<CLLocationCoordinate2D> PgmLocationIcon::position() const {
    const auto map = mapview();
    const auto* user = map && map->mapView() ? map->mapView()->userLocation() : nullptr;
    return user ? user->coordinate() : std::nullopt;
}

CGFloat PgmLocationIcon::bearing() const {
    const auto map = mapview();
    const auto* user = map && map->mapView() ? map->mapView()->userLocation() : nullptr;
    return user && user->heading() ? user->heading()->magneticHeading : 0;
}

}  // namespace pelta
