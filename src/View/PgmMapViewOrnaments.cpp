#include <pelta/Platform/Log.h>
#include <pelta/View/PgmMapView.h>

#include "View/OrnamentControls.h"

// The controls that the library puts over the map, and what they do.

namespace pelta {

void PgmMapView::controllerInit() {
    const auto acting = [weak = std::weak_ptr(sharedThis())](void (PgmMapView::*action)()) {
        return [weak, action] {
            if (const auto view = weak.lock()) {
                (view.get()->*action)();
            }
        };
    };
    controls_->zoom.view = makeZoomControl(acting(&PgmMapView::plusAction), acting(&PgmMapView::minusAction));
    controls_->zoom.view->setIsHidden(!isZoomControlVisible());
    addSubview(controls_->zoom.view);
    controls_->locationButton->setTouchUpInside(acting(&PgmMapView::locationButtonAction));
    controls_->location.view = makeLocationControl(controls_->locationButton);
    controls_->location.position = PgmPosition::bottomRight;
    controls_->location.margins = {8, 8};
    controls_->location.view->setIsHidden(!isLocationButtonVisible());
    addSubview(controls_->location.view);
    refreshOrnamentConstraints();
}

void PgmMapView::refreshOrnamentConstraints() {
    controls_->inset = engine_ ? engine_->effectiveContentInset() : UIEdgeInsets{};
    for (OrnamentControl* control : {&controls_->zoom, &controls_->location}) {
        if (control->view) {
            updateConstraintsForOrnament(control->view, control->constraints, control->position,
                                         control->view->bounds().size, control->margins);
        }
    }
}

void PgmMapView::updateConstraintsForOrnament(const std::shared_ptr<UIView>& ornament,
                                              std::vector<std::shared_ptr<NSLayoutConstraint>>& constraints,
                                              PgmPosition position, CGSize size, CGPoint margins) {
    if (ornament && engine_) {
        placeOrnament(*this, *ornament, constraints, {position, size, margins},
                      engine_->effectiveContentInset());
    }
}

void PgmMapView::layoutSubviews() {
    UIView::layoutSubviews();
    // The engine's view has its new size now, which may have changed what of the inset has effect.
    if (engine_ && engine_->effectiveContentInset() != controls_->inset) {
        refreshOrnamentConstraints();
    }
}

void PgmMapView::safeAreaInsetsDidChange() {
    UIView::safeAreaInsetsDidChange();
    refreshOrnamentConstraints();
}

// --- Actions

void PgmMapView::plusAction() {
    if (const auto engine = engine_) {
        engine->zoomBy(1);
    }
}

void PgmMapView::minusAction() {
    if (const auto engine = engine_) {
        engine->zoomBy(-1);
    }
}

void PgmMapView::locactionAction() {
    setUserTrackingMode(userTrackingMode());
}

void PgmMapView::locationButtonAction() {
    const auto event = locationButtonEvent_;  // It may replace itself.
    if (!event || !event(*this)) {
        locactionAction();
    }
}

void PgmMapView::handleLogoSingleTap(const UIGestureRecognizer& /*recognizer*/) {
    if (isLogoClickEnabled()) {
        dPrint("logo single tap");
    }
}

// --- Settings

void PgmMapView::setIsZoomControlVisible(bool visible) {
    settings_.isZoomControlVisible = visible;
    if (controls_->zoom.view) {
        controls_->zoom.view->setIsHidden(!visible);
    }
}

void PgmMapView::setIsLocationButtonVisible(bool visible) {
    settings_.isLocationButtonVisible = visible;
    if (controls_->location.view) {
        controls_->location.view->setIsHidden(!visible);
    }
}

const std::shared_ptr<UIView>& PgmMapView::zoomView() const noexcept {
    return controls_->zoom.view;
}

PgmPosition PgmMapView::zoomViewPosition() const noexcept {
    return controls_->zoom.position;
}

void PgmMapView::setZoomViewPosition(PgmPosition position) {
    controls_->zoom.position = position;
    refreshOrnamentConstraints();
}

CGPoint PgmMapView::zoomViewMargins() const noexcept {
    return controls_->zoom.margins;
}

void PgmMapView::setZoomViewMargins(CGPoint margins) {
    controls_->zoom.margins = margins;
    refreshOrnamentConstraints();
}

const std::shared_ptr<UIView>& PgmMapView::locationView() const noexcept {
    return controls_->location.view;
}

PgmPosition PgmMapView::locationViewPosition() const noexcept {
    return controls_->location.position;
}

void PgmMapView::setLocationViewPosition(PgmPosition position) {
    controls_->location.position = position;
    refreshOrnamentConstraints();
}

CGPoint PgmMapView::locationViewMargins() const noexcept {
    return controls_->location.margins;
}

void PgmMapView::setLocationViewMargins(CGPoint margins) {
    controls_->location.margins = margins;
    refreshOrnamentConstraints();
}

void PgmMapView::setLocationButtonImage(std::optional<UIImage> image, std::optional<UIImage> pressed) {
    showLocationPictures(*controls_->locationButton, std::move(image), std::move(pressed));
}

}  // namespace pelta
