#include "Engine/UserLocationAnnotation.h"

#include <utility>

#include <pelta/Engine/MLNMapView.h>

#include "Engine/Mercator.h"

namespace pelta {
void UserLocationAnnotation::open() {
    const auto mapView = events_.view();
    const auto tap =
        std::make_shared<UITapGestureRecognizer>([weak = std::weak_ptr(mapView)](UIGestureRecognizer&) {
            const auto tapped = weak.lock();
            if (tapped && tapped->userLocation() != nullptr) {
                tapped->selectAnnotation(*tapped->userLocation(), true);
            }
        });
    // While the view lives, so does what stands behind it.
    tap->setShouldBegin([this, weak = std::weak_ptr(mapView)](const UIGestureRecognizer& recognizer) {
        const auto tapped = weak.lock();
        return tapped && isOnView(recognizer);
    });
    // A double tap zooms and selects nothing.
    for (const auto& other : mapView->gestureRecognizers()) {
        if (dynamic_cast<const UITapGestureRecognizer*>(other.get()) != nullptr) {
            tap->requireGestureRecognizerToFail(other);
        }
    }
    mapView->addGestureRecognizer(tap);
}

bool UserLocationAnnotation::isOnView(const UIGestureRecognizer& tap) const {
    return view_ && view_->superview() && !view_->isHidden() &&
           view_->bounds().contains(tap.locationInView(view_.get()));
}

void UserLocationAnnotation::showsLocationDidChange() {
    if (!tracking_.showsLocation()) {
        isSelected_ = false;
        if (const auto view = std::exchange(view_, nullptr)) {
            view->removeFromSuperview();
        }
        return;
    }
    std::shared_ptr<MLNAnnotationView> offered;
    events_.tell([&](auto& delegate, auto& mapView) {
        offered = delegate.viewForAnnotation(mapView, tracking_.annotation());
    });
    const auto mapView = events_.view();
    if (mapView && tracking_.showsLocation()) {
        view_ = std::dynamic_pointer_cast<MLNUserLocationAnnotationView>(offered);
        if (view_) {
            view_->setMapView(mapView);
            view_->setIsUserInteractionEnabled(false);
        }
        shownCamera_.reset();
    }
}

void UserLocationAnnotation::showCamera(const CameraState& camera, const MapRenderer& renderer) {
    const auto view = view_;
    const auto* location = tracking_.location();
    const auto mapView = events_.view();
    if (!view || location == nullptr || !mapView) {
        return;
    }
    mapView->insertSubview(view, 0);
    auto coordinate = location->location()->coordinate;
    coordinate.longitude = mercator::nearestLongitude(coordinate.longitude, camera.center.longitude);
    const CGPoint place = renderer.pointForCoordinate(coordinate);
    view->setCenter(place);
    if (std::exchange(needsUpdate_, false) || shownCamera_ != camera) {
        shownCamera_ = camera;
        view->update();
        view->setCenter(place);  // The update may have resized it.
    }
}

const MLNAnnotation* UserLocationAnnotation::selected() const noexcept {
    return isSelected_ ? tracking_.location() : nullptr;
}

void UserLocationAnnotation::select(bool animated) {
    const auto view = view_;
    if (!view || isSelected_) {
        return;
    }
    isSelected_ = true;
    view->setSelected(true, animated);
    events_.tell([&](auto& delegate, auto& mapView) {
        if (const auto* location = tracking_.location()) {
            delegate.didSelectAnnotation(mapView, *location);
        }
    });
}

void UserLocationAnnotation::deselect(bool animated) {
    if (std::exchange(isSelected_, false)) {
        if (const auto view = view_) {
            view->setSelected(false, animated);
        }
    }
}

}  // namespace pelta
