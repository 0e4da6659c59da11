#include <pelta/View/PgmMapView.h>

#include "View/ShapeRegistry.h"
#include "View/TapTargets.h"

// Taps and long presses on the map.

namespace pelta {

namespace {

/// Asks the shape's handler, which may take the shape from the map or replace itself.
/// @return true when the tap has been dealt with.
bool offerTap(const std::shared_ptr<PgmShape>& shape) {
    const auto handler = shape->touchEvent();
    return handler && handler(*shape);
}

}  // namespace

void PgmMapView::recognizersInit() {
    const auto handling = [weak = std::weak_ptr(sharedThis())](auto handler) {
        return [weak, handler](UIGestureRecognizer& recognizer) {
            if (const auto view = weak.lock()) {
                (view.get()->*handler)(recognizer);
            }
        };
    };
    const auto tap = std::make_shared<UITapGestureRecognizer>(handling(&PgmMapView::handleSingleTap));
    for (const auto& recognizer : engine_->gestureRecognizers()) {
        if (std::dynamic_pointer_cast<UITapGestureRecognizer>(recognizer)) {
            tap->requireGestureRecognizerToFail(recognizer);
        }
    }
    engine_->addGestureRecognizer(tap);
    engine_->addGestureRecognizer(
        std::make_shared<UILongPressGestureRecognizer>(handling(&PgmMapView::handleLongTapGesture)));
    const auto& logo = engine_->logoView();
    logo->addGestureRecognizer(
        std::make_shared<UITapGestureRecognizer>(handling(&PgmMapView::handleLogoSingleTap)));
    logo->setIsUserInteractionEnabled(true);
}

void PgmMapView::handleSingleTap(const UIGestureRecognizer& recognizer) {
    if (recognizer.state() != UIGestureRecognizerState::ended || !engine_) {
        return;
    }
    const auto self = keepAlive();  // Whoever is told may release the view.
    const CGPoint point = recognizer.locationInView(engine_.get());
    const TapTargets targets(shapes_->shapes(), *engine_, point);
    const auto target = isNearestShapePreferred() ? targets.nearest() : targets.topmost();
    if (target && offerTap(target)) {
        return;
    }
    if (const auto told = delegate()) {
        told->didTapMapView(*this, projection()->latlng(point).value_or(CLLocationCoordinate2D{}));
    }
}

UIPointerStyle PgmMapView::pointerStyle(CGPoint point) const {
    const bool isOverTarget = engine_ && TapTargets(shapes_->shapes(), *engine_, point).isDrawnThere();
    return isOverTarget ? UIPointerStyle::hand : UIPointerStyle::automatic;
}

void PgmMapView::handleLongTapGesture(const UIGestureRecognizer& recognizer) {
    if (recognizer.state() != UIGestureRecognizerState::began || !engine_) {
        return;
    }
    const auto self = keepAlive();
    const CGPoint point = recognizer.locationInView(engine_.get());
    if (const auto told = delegate()) {
        told->didLongTapMapView(*this, projection()->latlng(point).value_or(CLLocationCoordinate2D{}));
    }
}

}  // namespace pelta
