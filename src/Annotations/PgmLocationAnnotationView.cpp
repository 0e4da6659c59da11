#include <algorithm>
#include <cmath>
#include <numbers>

#include <pelta/Annotations/PgmLocationAnnotationView.h>
#include <pelta/Annotations/PgmLocationIcon.h>
#include <pelta/Engine/MLNMapView.h>
#include <pelta/Platform/Log.h>
#include <pelta/Platform/Make.h>
#include <pelta/Platform/UIWindow.h>

#include "View/ViewSettings.h"

namespace pelta {

namespace {

constexpr const char* pulseKey = "animateTransformAndOpacity";
constexpr double pulseDuration = 3.0;     // seconds
constexpr CGFloat sideWithoutImage = 40;  // points
constexpr double smallestTurn = 0.01;     // radians
constexpr double radiansPerDegree = std::numbers::pi / 180;

/// Grows and fades away, over and over.
CAAnimationGroup pulse() {
    CAAnimationGroup group;
    group.duration = pulseDuration;
    group.repeatsForever = true;
    group.isRemovedOnCompletion = false;
    group.animations = {{"transform.scale.xy", {0, 0.35, 1.0}, {0, 0.2, 1.0}},
                        {"opacity", {0.4, 0.4, 0}, {0, 0.2, 1.0}}};
    return group;
}

double usable(double value) {
    return std::isfinite(value) ? std::max(value, 0.0) : 0;
}

}  // namespace

std::shared_ptr<PgmLocationAnnotationView> PgmLocationAnnotationView::create(std::string reuseIdentifier) {
    return make<PgmLocationAnnotationView>(std::move(reuseIdentifier));
}

std::shared_ptr<PgmLocationAnnotationView> PgmLocationAnnotationView::createWithFrame(CGRect frame) {
    return make<PgmLocationAnnotationView>(frame);
}

std::shared_ptr<PgmLocationAnnotationView> PgmLocationAnnotationView::createWithCoder(
    const PgmViewSettings& settings) {
    auto view = make<PgmLocationAnnotationView>(settings.frame);
    applyViewSettings(*view, settings);
    return view;
}

void PgmLocationAnnotationView::completeConstruction(std::string_view className) {
    MLNUserLocationAnnotationView::completeConstruction(className);
    setAccessibilityLabel("Your location");
    dotImageView_ = make<UIImageView>(CGRect{});
    addSubview(dotImageView_);
}

void PgmLocationAnnotationView::setupView(const PgmLocationIcon& icon) {
    const auto image = imageOf(icon);
    const CGFloat scale = usable(icon.scale());
    const CGSize size =
        image ? CGSize{image->image().size().width * scale, image->image().size().height * scale}
              : CGSize{sideWithoutImage, sideWithoutImage};
    setFrame({frame().origin, size});
    setupHaloLayer(icon.circleColor().value_or(UIColor::clear()), icon.circleRadius());
    dotImageView_->setTransform({});
    dotImageView_->setImage(image ? std::optional(image->image()) : std::nullopt);
    dotImageView_->setContentMode(UIViewContentMode::scaleAspectFit);
    dotImageView_->setFrame({{}, size});
    dotImageView_->setCenter({bounds().midX(), bounds().midY()});
    update();
}

std::shared_ptr<PgmImage> PgmLocationAnnotationView::imageOf(const PgmLocationIcon& icon) const {
    const auto engine = mapView();
    switch (engine ? engine->userTrackingMode() : MLNUserTrackingMode::none) {
        case MLNUserTrackingMode::followWithHeading:
        case MLNUserTrackingMode::followWithCourse:
            return icon.imageTrackingCompass();
        case MLNUserTrackingMode::follow:
            return icon.imageTracking();
        case MLNUserTrackingMode::none:
            break;
    }
    return icon.image();
}

void PgmLocationAnnotationView::setupHaloLayer(UIColor color, double size) {
    if (haloLayer_) {
        haloLayer_->removeAnimationForKey(pulseKey);
        haloLayer_->removeFromSuperlayer();
    }
    haloLayer_ = circleLayerWithSize(size);
    auto properties = haloLayer_->properties();
    properties.backgroundColor = color;
    properties.allowsGroupOpacity = false;
    properties.zPosition = -0.1;
    haloLayer_->update(properties);
    haloLayer_->addAnimation(pulse(), pulseKey);
    layer()->addSublayer(haloLayer_);
}

std::shared_ptr<CALayer> PgmLocationAnnotationView::circleLayerWithSize(double size) const {
    const CGFloat diameter = std::round(usable(size));
    CALayer::Properties properties;
    properties.bounds = {{}, {diameter, diameter}};
    properties.position = {bounds().midX(), bounds().midY()};
    properties.cornerRadius = diameter / 2;
    properties.shouldRasterize = true;
    properties.rasterizationScale = UIScreen::scale();
    properties.drawsAsynchronously = true;
    auto circle = CALayer::create();
    circle->update(properties);
    return circle;
}

void PgmLocationAnnotationView::update() {
    MLNUserLocationAnnotationView::update();
    updateHeading();
    updatePitch();
}

void PgmLocationAnnotationView::updateHeading() {
    const auto engine = mapView();
    const auto* user = userLocation();
    if (!engine || user == nullptr || !user->heading()) {
        return;
    }
    const auto& reported = *user->heading();
    const double heading = reported.trueHeading >= 0 ? reported.trueHeading : reported.magneticHeading;
    if (!(heading >= 0)) {
        return;
    }
    const double turn = (engine->direction() - heading) * radiansPerDegree;
    // So small a turn leaves the dot as it is: compasses tremble.
    if (std::abs(turn) > smallestTurn) {
        CATransaction::withoutActions(
            [&] { dotImageView_->setTransform(CGAffineTransform::rotation(-turn)); });
    }
}

void PgmLocationAnnotationView::updatePitch() {
    const auto engine = mapView();
    const double pitch = engine ? engine->camera().pitch : 0;
    if (pitch == oldPitch_) {
        return;
    }
    CATransaction::withoutActions([&] {
        auto properties = layer()->properties();
        properties.sublayerTransform = CATransform3D{}.rotatedBy(pitch * radiansPerDegree, 1, 0, 0);
        layer()->update(properties);
        updateFaux3DEffect();
    });
    oldPitch_ = pitch;
}

void PgmLocationAnnotationView::updateFaux3DEffect() {
    const auto engine = std::dynamic_pointer_cast<MLNMapView>(superview());
    if (!engine || !haloLayer_) {
        return;
    }
    const double pitch = engine->camera().pitch * radiansPerDegree;
    auto properties = haloLayer_->properties();
    properties.shadowOffset = {0, pitch * 10};
    properties.shadowRadius = std::max(pitch * 5, 3.0);
    properties.zPosition = pitch * 2;
    haloLayer_->update(properties);
}

void PgmLocationAnnotationView::setSelected(bool selected, bool animated) {
    MLNUserLocationAnnotationView::setSelected(selected, animated);
    dPrint("location annotation view is selected", "Annotations/PgmLocationAnnotationView", 196);
}

}  // namespace pelta
