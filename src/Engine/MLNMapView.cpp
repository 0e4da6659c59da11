#include <cmath>
#include <utility>

#include <pelta/Engine/MLNMapView.h>
#include <pelta/Platform/Make.h>

#include "Engine/MapViewCore.h"

namespace pelta {
namespace {

constexpr double animationDuration = 0.3;  // seconds
constexpr auto programmatic = MLNCameraChangeReason::programmatic;

/// The view that a camera describes; what is not finite in it stays as it is, and so does the zoom at whose
/// altitude the camera is.
CameraState stateOf(const MLNMapCamera& camera, const CameraController& controller) {
    auto state = controller.completed(
        {camera.centerCoordinate, controller.state().zoom, camera.pitch, camera.heading});
    const auto size = controller.viewSize();
    const double latitude = state.center.latitude;
    const bool isElsewhere =
        camera.altitude != MLNAltitudeForZoomLevel(state.zoom, state.pitch, latitude, size);
    if (std::isfinite(camera.altitude) && isElsewhere) {
        state.zoom = MLNZoomLevelForAltitude(camera.altitude, state.pitch, latitude, size);
    }
    return state;
}

}  // namespace

std::shared_ptr<MLNMapView> MLNMapView::initWithFrameStyleURL(CGRect frame,
                                                              std::optional<std::string> styleURL) {
    auto view = make<MLNMapView>(frame);
    if (styleURL && isStyleAddress(*styleURL)) {
        view->core()->loadStyle(*styleURL);
    }
    return view;
}

MLNMapView::MLNMapView(CGRect frame) : UIView(frame) {}

void MLNMapView::completeConstruction(std::string_view className) {
    UIView::completeConstruction(className);
    setClipsToBounds(true);
    core_ = std::make_shared<Core>(std::static_pointer_cast<MLNMapView>(shared_from_this()));
    core_->open();
}

MLNMapView::~MLNMapView() {
    if (core_) {
        core_->close();
    }
}

std::shared_ptr<MLNMapView::Core> MLNMapView::core() const {
    return core_;
}

std::shared_ptr<MLNMapViewDelegate> MLNMapView::delegate() const {
    return core_->events().delegate();
}

void MLNMapView::setDelegate(const std::shared_ptr<MLNMapViewDelegate>& delegate) {
    core_->events().setDelegate(delegate);
}

MLNStyle* MLNMapView::style() const noexcept {
    return core_->style();
}

void MLNMapView::setStyleURL(const std::string& address) {
    core_->loadStyle(address);
}

void MLNMapView::setStyleJSON(std::string document) {
    core_->loadStyleText(std::move(document));
}

void MLNMapView::triggerRepaint() {
    core_->requestFrame();
}

// Camera

CameraState MLNMapView::cameraState() const {
    core_->layout();
    return core_->camera().state();
}

void MLNMapView::setCameraState(const CameraState& camera, double duration,
                                const std::optional<CAMediaTimingFunction>& timingFunction,
                                Completion completion) {
    const auto core = this->core();
    core->layout();
    core->camera().easeTo(camera, duration, timingFunction.value_or(CAMediaTimingFunction::linear()),
                          programmatic, std::move(completion));
}

void MLNMapView::flyToCameraState(const CameraState& camera, double duration, Completion completion) {
    const auto core = this->core();
    core->layout();
    core->camera().flyTo(camera, duration, programmatic, std::move(completion));
}

MLNMapCamera MLNMapView::camera() const {
    const auto state = cameraState();
    return MLNMapCamera::cameraShowing(state, core_->camera().viewSize());
}

void MLNMapView::setCamera(const MLNMapCamera& camera, bool animated) {
    setCamera(camera, animated ? animationDuration : 0, CAMediaTimingFunction::easeInEaseOut(), {});
}

void MLNMapView::setCamera(const MLNMapCamera& camera, double duration,
                           const std::optional<CAMediaTimingFunction>& timingFunction,
                           Completion completion) {
    const auto self = shared_from_this();
    core_->layout();
    setCameraState(stateOf(camera, core_->camera()), duration, timingFunction, std::move(completion));
}

void MLNMapView::flyToCamera(const MLNMapCamera& camera, double duration, Completion completion) {
    const auto self = shared_from_this();
    core_->layout();
    flyToCameraState(stateOf(camera, core_->camera()), duration, std::move(completion));
}

CLLocationCoordinate2D MLNMapView::centerCoordinate() const {
    return core_->camera().state().center;
}

void MLNMapView::setLatitude(double latitude) {
    auto wanted = core_->camera().state();
    wanted.center.latitude = latitude;
    core()->camera().jumpTo(wanted, programmatic);
}

void MLNMapView::setLongitude(double longitude) {
    auto wanted = core_->camera().state();
    wanted.center.longitude = longitude;
    core()->camera().jumpTo(wanted, programmatic);
}

double MLNMapView::zoomLevel() const {
    return core_->camera().state().zoom;
}

void MLNMapView::setZoomLevel(double zoomLevel) {
    setZoomLevel(zoomLevel, false);
}

void MLNMapView::setZoomLevel(double zoomLevel, bool animated) {
    auto wanted = core_->camera().state();
    wanted.zoom = zoomLevel;
    core()->camera().easeTo(wanted, animated ? animationDuration : 0, CAMediaTimingFunction::easeInEaseOut(),
                            programmatic);
}

void MLNMapView::zoomBy(double levels) {
    const auto core = this->core();
    auto& camera = core->camera();
    auto wanted = camera.constrain(camera.destination());
    wanted.zoom += std::isfinite(levels) ? levels : 0;
    if (camera.constrain(wanted) != camera.destination()) {
        camera.easeTo(wanted, animationDuration, CAMediaTimingFunction::easeInEaseOut(), programmatic);
    }
}

double MLNMapView::direction() const {
    return core_->camera().state().bearing;
}

void MLNMapView::resetNorth() {
    auto wanted = core_->camera().state();
    if (std::exchange(wanted.bearing, 0) != 0) {
        core()->camera().easeTo(wanted, animationDuration, CAMediaTimingFunction::easeInEaseOut(),
                                MLNCameraChangeReason::resetNorth);
    }
}

// Limits

void MLNMapView::setMinimumZoomLevel(double zoomLevel) {
    core()->camera().changeLimits([=](CameraLimits& limits) { limits.setMinimumZoom(zoomLevel); });
}

void MLNMapView::setMaximumZoomLevel(double zoomLevel) {
    core()->camera().changeLimits([=](CameraLimits& limits) { limits.setMaximumZoom(zoomLevel); });
}

void MLNMapView::setMinimumPitch(double pitch) {
    core()->camera().changeLimits([=](CameraLimits& limits) { limits.setMinimumPitch(pitch); });
}

void MLNMapView::setMaximumPitch(double pitch) {
    core()->camera().changeLimits([=](CameraLimits& limits) { limits.setMaximumPitch(pitch); });
}

double MLNMapView::minimumZoomLevel() const {
    return core_->camera().limits().minimumZoom();
}

double MLNMapView::maximumZoomLevel() const {
    return core_->camera().limits().maximumZoom();
}

double MLNMapView::minimumPitch() const {
    return core_->camera().limits().minimumPitch();
}

double MLNMapView::maximumPitch() const {
    return core_->camera().limits().maximumPitch();
}

MLNCoordinateBounds MLNMapView::maximumScreenBounds() const {
    return core_->camera().limits().screenBounds();
}

void MLNMapView::setMaximumScreenBounds(const MLNCoordinateBounds& bounds) {
    const auto core = this->core();
    core->layout();
    core->camera().changeLimits([&](CameraLimits& limits) { limits.setScreenBounds(bounds); });
}

UIEdgeInsets MLNMapView::contentInset() const {
    return core_->contentInset().value();
}

UIEdgeInsets MLNMapView::effectiveContentInset() const {
    return insetLeavingArea(contentInset(), bounds().size);
}

void MLNMapView::setContentInset(UIEdgeInsets inset) {
    setContentInset(inset, false, {});
}

void MLNMapView::setContentInset(UIEdgeInsets inset, bool animated, Completion completionHandler) {
    core()->setContentInset(inset, animated, std::move(completionHandler));
}

// Gestures

void MLNMapView::setZoomEnabled(bool enabled) {
    core_->changeGestures([=](GestureSettings& settings) { settings.isZoomEnabled = enabled; });
}

void MLNMapView::setScrollEnabled(bool enabled) {
    core_->changeGestures([=](GestureSettings& settings) { settings.isScrollEnabled = enabled; });
}

void MLNMapView::setRotateEnabled(bool enabled) {
    core_->changeGestures([=](GestureSettings& settings) { settings.isRotateEnabled = enabled; });
}

void MLNMapView::setPitchEnabled(bool enabled) {
    core_->changeGestures([=](GestureSettings& settings) { settings.isPitchEnabled = enabled; });
}

void MLNMapView::setDecelerationRate(CGFloat rate) {
    if (rate >= 0 && rate < 1) {
        core_->changeGestures([=](GestureSettings& settings) { settings.decelerationRate = rate; });
    }
}

const GestureSettings& MLNMapView::gestures() const {
    return core_->gestures();
}

// As a view

void MLNMapView::layoutSubviews() {
    UIView::layoutSubviews();
    if (core_) {
        core_->updateSurface();
    }
}

ViewContent MLNMapView::content() const {
    return SurfaceContent{this};
}

}  // namespace pelta
