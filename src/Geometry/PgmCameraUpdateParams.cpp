#include <pelta/Geometry/PgmCameraUpdate.h>

namespace pelta {

std::shared_ptr<PgmCameraUpdateParams> PgmCameraUpdateParams::create() {
    return std::make_shared<PgmCameraUpdateParams>();
}

std::shared_ptr<PgmCameraUpdateParams> PgmCameraUpdateParams::cameraUpdateParams() {
    return create();
}

void PgmCameraUpdateParams::targetTo(CLLocationCoordinate2D target) noexcept {
    target_ = target;
    targetDelta_.reset();
}

void PgmCameraUpdateParams::targetBy(CGPoint delta) noexcept {
    targetDelta_ = delta;
    target_.reset();
}

void PgmCameraUpdateParams::zoomTo(double zoom) noexcept {
    zoom_ = zoom;
    zoomDelta_.reset();
}

void PgmCameraUpdateParams::zoomBy(double delta) noexcept {
    zoomDelta_ = delta;
    zoom_.reset();
}

void PgmCameraUpdateParams::tiltTo(double tilt) noexcept {
    tilt_ = tilt;
    tiltDelta_.reset();
}

void PgmCameraUpdateParams::tiltBy(double delta) noexcept {
    tiltDelta_ = delta;
    tilt_.reset();
}

void PgmCameraUpdateParams::bearingTo(double bearing) noexcept {
    bearing_ = bearing;
    bearingDelta_.reset();
}

void PgmCameraUpdateParams::bearingBy(double delta) noexcept {
    bearingDelta_ = delta;
    bearing_.reset();
}

}  // namespace pelta
