#include "Engine/Ornaments.h"

#include <cmath>
#include <numbers>

#include <pelta/Engine/MLNMapCamera.h>
#include <pelta/Platform/Make.h>

namespace pelta {
namespace {

constexpr CGFloat margin = 8;  // points

std::shared_ptr<NSLayoutConstraint> extentConstraint(const UIView& view, NSLayoutAttribute extent,
                                                     std::string identifier, CGFloat length) {
    auto constraint = NSLayoutConstraint::equalToConstant(view.anchor(extent), length);
    constraint->setIdentifier(std::move(identifier));
    return constraint;
}

CGFloat UIEdgeInsets::*insetOf(NSLayoutAttribute edge) {
    switch (edge) {
        case NSLayoutAttribute::left:
            return &UIEdgeInsets::left;
        case NSLayoutAttribute::right:
            return &UIEdgeInsets::right;
        case NSLayoutAttribute::bottom:
            return &UIEdgeInsets::bottom;
        default:
            return &UIEdgeInsets::top;
    }
}

}  // namespace

Ornaments::Ornaments(UIView& mapView, std::function<void()> compassWasTapped)
    : logo_(make<UIImageView>(CGRect{})),
      compass_(make<UIImageView>(CGRect{})),
      scaleBar_(make<ScaleBarView>(CGRect{})),
      scaleBarAsView_(scaleBar_) {
    place(mapView, *logo_, NSLayoutAttribute::left, NSLayoutAttribute::bottom, {});
    place(mapView, *compass_, NSLayoutAttribute::right, NSLayoutAttribute::top, {});
    place(mapView, *scaleBar_, NSLayoutAttribute::left, NSLayoutAttribute::top, ScaleBarView::size);
    logo_->setIsUserInteractionEnabled(false);
    scaleBar_->setIsUserInteractionEnabled(false);
    scaleBar_->setIsHidden(true);
    compass_->setAccessibilityLabel("Compass, turns the map to north");
    compass_->addGestureRecognizer(std::make_shared<UITapGestureRecognizer>(
        [tapped = std::move(compassWasTapped)](UIGestureRecognizer& recognizer) {
            if (recognizer.state() == UIGestureRecognizerState::ended) {
                tapped();
            }
        }));
    updateCompassVisibility();
}

void Ornaments::place(UIView& mapView, UIView& ornament, NSLayoutAttribute horizontal,
                      NSLayoutAttribute vertical, CGSize size) {
    ornament.setTranslatesAutoresizingMaskIntoConstraints(false);
    mapView.addSubview(ornament.shared_from_this());
    addMargin(mapView, ornament, horizontal);
    addMargin(mapView, ornament, vertical);
    NSLayoutConstraint::activate(
        {extentConstraint(ornament, NSLayoutAttribute::width, "width", size.width),
         extentConstraint(ornament, NSLayoutAttribute::height, "height", size.height)});
}

void Ornaments::addMargin(UIView& mapView, UIView& ornament, NSLayoutAttribute edge) {
    const bool isFarEdge = edge == NSLayoutAttribute::right || edge == NSLayoutAttribute::bottom;
    const double direction = isFarEdge ? -1 : 1;
    auto constraint = NSLayoutConstraint::equal(
        ornament.anchor(edge), mapView.safeAreaLayoutGuide().anchor(edge), direction * margin);
    NSLayoutConstraint::activate({constraint});
    margins_.push_back({std::move(constraint), insetOf(edge), direction});
}

void Ornaments::setContentInset(const UIEdgeInsets& inset) {
    for (const auto& each : margins_) {
        each.constraint->setConstant(each.direction * (margin + inset.*each.edge));
    }
}

void Ornaments::setShowsCompass(bool shows) {
    showsCompass_ = shows;
    updateCompassVisibility();
}

void Ornaments::updateCompassVisibility() {
    compass_->setIsHidden(!showsCompass_ || bearing_ == 0);
}

void Ornaments::showCamera(const CameraState& camera) {
    if (camera.bearing != bearing_) {
        bearing_ = camera.bearing;
        compass_->setTransform(CGAffineTransform::rotation(-bearing_ * std::numbers::pi / 180));
        updateCompassVisibility();
    }
    if (!scaleBar_->isHidden()) {
        scaleBar_->showMetersPerPoint(MLNMetersPerPoint(camera.center.latitude, camera.zoom));
    }
}

}  // namespace pelta
