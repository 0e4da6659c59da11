#include <cmath>

#include <pelta/Geometry/PgmCameraUpdate.h>
#include <pelta/Platform/Log.h>
#include <pelta/View/PgmMapView.h>

namespace pelta {

namespace {

std::shared_ptr<PgmCameraUpdate> makeUpdate(std::shared_ptr<PgmCameraUpdateParams> params) {
    return std::make_shared<PgmCameraUpdate>(std::move(params));
}

/// The centre after the content has been moved by `delta` points: what is drawn that far on the other side
/// of the view's middle.
CLLocationCoordinate2D scrolledCenter(const MLNMapView& engine, CLLocationCoordinate2D center,
                                      CGPoint delta) {
    const CGSize size = engine.bounds().size;
    const auto target =
        engine.convertPoint({size.width * 0.5 - delta.x, size.height * 0.5 - delta.y}, &engine);
    if (std::abs(target.latitude) <= 90) {
        return target;
    }
    dPrint("latitude must be between -90 and 90", "Geometry/PgmCameraUpdate", 226);
    return center;
}

double changed(double present, std::optional<double> value, std::optional<double> delta) {
    return value ? *value : present + delta.value_or(0);
}

}  // namespace

std::optional<PgmCameraUpdateAnimation> PgmCameraUpdateAnimationFromRaw(unsigned raw) noexcept {
    return raw < 5 ? std::optional(static_cast<PgmCameraUpdateAnimation>(raw)) : std::nullopt;
}

std::optional<PgmCameraUpdateReason> PgmCameraUpdateReasonFromRaw(int raw) noexcept {
    return raw >= -3 && raw <= 0 ? std::optional(static_cast<PgmCameraUpdateReason>(raw)) : std::nullopt;
}

PgmCameraUpdate::Ptr PgmCameraUpdate::cameraUpdateWithParams(std::shared_ptr<PgmCameraUpdateParams> params) {
    return makeUpdate(params ? std::move(params) : PgmCameraUpdateParams::create());
}

PgmCameraUpdate::Ptr PgmCameraUpdate::cameraUpdateWithPosition(const PgmCameraPosition& position) {
    auto params = PgmCameraUpdateParams::create();
    params->targetTo(position.target());
    params->zoomTo(position.zoom());
    params->tiltTo(position.tilt());
    params->bearingTo(position.bearing());
    return makeUpdate(std::move(params));
}

PgmCameraUpdate::Ptr PgmCameraUpdate::cameraUpdateTargetTo(CLLocationCoordinate2D target) {
    auto params = PgmCameraUpdateParams::create();
    params->targetTo(target);
    return makeUpdate(std::move(params));
}

PgmCameraUpdate::Ptr PgmCameraUpdate::cameraUpdateTargetToZoomTo(CLLocationCoordinate2D target, double zoom) {
    auto params = PgmCameraUpdateParams::create();
    params->targetTo(target);
    params->zoomTo(zoom);
    return makeUpdate(std::move(params));
}

PgmCameraUpdate::Ptr PgmCameraUpdate::cameraUpdateZoomIn() {
    return cameraUpdateZoomBy(1.0);
}

PgmCameraUpdate::Ptr PgmCameraUpdate::cameraUpdateZoomOut() {
    return cameraUpdateZoomBy(-1.0);
}

PgmCameraUpdate::Ptr PgmCameraUpdate::cameraUpdateZoomBy(double delta) {
    auto params = PgmCameraUpdateParams::create();
    params->zoomBy(delta);
    return makeUpdate(std::move(params));
}

PgmCameraUpdate::Ptr PgmCameraUpdate::cameraUpdateZoomTo(double zoom) {
    auto params = PgmCameraUpdateParams::create();
    params->zoomTo(zoom);
    return makeUpdate(std::move(params));
}

PgmCameraUpdate::Ptr PgmCameraUpdate::cameraUpdateTiltTo(double tilt) {
    auto params = PgmCameraUpdateParams::create();
    params->tiltTo(tilt);
    return makeUpdate(std::move(params));
}

PgmCameraUpdate::Ptr PgmCameraUpdate::cameraUpdateBearingTo(double bearing) {
    auto params = PgmCameraUpdateParams::create();
    params->bearingTo(bearing);
    return makeUpdate(std::move(params));
}

PgmCameraUpdate::Ptr PgmCameraUpdate::cameraUpdateFitBounds(std::shared_ptr<PgmLatLngBounds> bounds) {
    auto params = PgmCameraUpdateParams::create();
    params->bounds_ = std::move(bounds);
    return makeUpdate(std::move(params));
}

PgmCameraUpdate::Ptr PgmCameraUpdate::cameraUpdateFitBounds(std::shared_ptr<PgmLatLngBounds> bounds,
                                                            CGFloat padding) {
    return cameraUpdateFitBounds(std::move(bounds), UIEdgeInsets{padding, padding, padding, padding});
}

PgmCameraUpdate::Ptr PgmCameraUpdate::cameraUpdateFitBounds(std::shared_ptr<PgmLatLngBounds> bounds,
                                                            UIEdgeInsets paddingInsets) {
    auto update = cameraUpdateFitBounds(std::move(bounds));
    update->updateParams_->paddingInsets_ = paddingInsets;
    return update;
}

std::shared_ptr<PgmCameraPosition> PgmCameraUpdate::getCameraPosition(const PgmMapView& mapView) const {
    const auto& engine = mapView.mapView();
    if (!engine) {
        return nullptr;
    }
    const auto& params = *updateParams_;
    const auto camera = engine->cameraState();
    auto target = camera.center;
    if (params.target_) {
        target = *params.target_;
    } else if (params.targetDelta_) {
        target = scrolledCenter(*engine, target, *params.targetDelta_);
    }
    auto position = PgmCameraPosition::create(target, changed(camera.zoom, params.zoom_, params.zoomDelta_),
                                              changed(camera.pitch, params.tilt_, params.tiltDelta_),
                                              changed(camera.bearing, params.bearing_, params.bearingDelta_));
    position->bounds_ = params.bounds_;
    position->paddingInsets_ = params.paddingInsets_;
    return position;
}

}  // namespace pelta
