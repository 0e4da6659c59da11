#include <pelta/Engine/MLNMapView.h>

#include "Engine/MapViewCore.h"

// The map view's ornaments and the user's location on it.

namespace pelta {

void MLNMapView::setShowsScale(bool shows) {
    scaleBar()->setIsHidden(!shows);
    core_->requestFrame();
}

bool MLNMapView::showsScale() const {
    return !scaleBar()->isHidden();
}

void MLNMapView::setShowsCompassView(bool shows) {
    core_->ornaments().setShowsCompass(shows);
}

bool MLNMapView::showsCompassView() const {
    return core_->ornaments().showsCompass();
}

void MLNMapView::setShowsLogoView(bool shows) {
    logoView()->setIsHidden(!shows);
}

bool MLNMapView::showsLogoView() const {
    return !logoView()->isHidden();
}

void MLNMapView::setShowsAttributionButton(bool shows) {
    core_->showsAttributionButton = shows;
}

bool MLNMapView::showsAttributionButton() const {
    return core_->showsAttributionButton;
}

const std::shared_ptr<UIImageView>& MLNMapView::logoView() const {
    return core_->ornaments().logo();
}

const std::shared_ptr<UIImageView>& MLNMapView::compassView() const {
    return core_->ornaments().compass();
}

const std::shared_ptr<UIView>& MLNMapView::scaleBar() const {
    return core_->ornaments().scaleBar();
}

// User location

void MLNMapView::setShowsUserLocation(bool shows) {
    core()->setShowsUserLocation(shows);
}

bool MLNMapView::showsUserLocation() const {
    return core_->tracking().showsLocation();
}

void MLNMapView::setShowsHeading(bool shows) {
    core_->tracking().setShowsHeading(shows);
}

bool MLNMapView::showsHeading() const {
    return core_->tracking().showsHeading();
}

const MLNUserLocation* MLNMapView::userLocation() const {
    return core_->tracking().location();
}

void MLNMapView::setUserTrackingMode(MLNUserTrackingMode mode) {
    core()->tracking().setMode(mode, true);
}

MLNUserTrackingMode MLNMapView::userTrackingMode() const {
    return core_->tracking().mode();
}

void MLNMapView::selectAnnotation(const MLNAnnotation& annotation, bool animated) {
    const auto core = this->core();
    if (&annotation == core->tracking().location()) {
        core->annotation().select(animated);
    }
}

void MLNMapView::deselectAnnotation(const MLNAnnotation& annotation, bool animated) {
    const auto core = this->core();
    if (&annotation == core->annotation().selected()) {
        core->annotation().deselect(animated);
    }
}

const MLNAnnotation* MLNMapView::selectedAnnotation() const {
    return core_->annotation().selected();
}

}  // namespace pelta
