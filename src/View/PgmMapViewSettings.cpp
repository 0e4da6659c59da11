#include <pelta/Annotations/PgmLocationAnnotationView.h>
#include <pelta/Platform/Log.h>
#include <pelta/View/PgmMapView.h>

namespace pelta {

namespace {

MLNUserTrackingMode engineMode(PgmUserTrackingMode mode) {
    switch (mode) {
        case PgmUserTrackingMode::none:
            return MLNUserTrackingMode::none;
        case PgmUserTrackingMode::follow:
            return MLNUserTrackingMode::follow;
        case PgmUserTrackingMode::followWithHeading:
            return MLNUserTrackingMode::followWithHeading;
        case PgmUserTrackingMode::off:
            break;
    }
    fatalError("unexpected user tracking mode " + std::to_string(static_cast<unsigned>(mode)));
}

/// How the engine shows and follows the user's location at present.
PgmUserTrackingMode presentMode(const MLNMapView& engine) {
    if (!engine.showsUserLocation()) {
        return PgmUserTrackingMode::off;
    }
    switch (engine.userTrackingMode()) {
        case MLNUserTrackingMode::none:
            return PgmUserTrackingMode::none;
        case MLNUserTrackingMode::followWithHeading:
            return PgmUserTrackingMode::followWithHeading;
        case MLNUserTrackingMode::follow:
        case MLNUserTrackingMode::followWithCourse:
            break;
    }
    return PgmUserTrackingMode::follow;
}

/// Hands a value to the engine, if there is one, which is kept for the call: the events it reports may make
/// the application release the view.
template <class Value>
void forward(std::shared_ptr<MLNMapView> engine, void (MLNMapView::*setter)(Value), Value value) {
    if (engine) {
        (engine.get()->*setter)(value);
    }
}

}  // namespace

void PgmMapView::setStyleURL(const std::string& address) {
    if (engine_) {
        engine_->setStyleURL(address);
    } else {
        firstStyle_ = [address](MLNMapView& engine) { engine.setStyleURL(address); };
    }
}

void PgmMapView::setStyleJSON(std::string document) {
    if (engine_) {
        engine_->setStyleJSON(std::move(document));
    } else {
        firstStyle_ = [document = std::move(document)](MLNMapView& engine) { engine.setStyleJSON(document); };
    }
}

void PgmMapView::setLatitude(double degrees) {
    settings_.latitude = degrees;
    forward(engine_, &MLNMapView::setLatitude, degrees);
}

void PgmMapView::setLongitude(double degrees) {
    settings_.longitude = degrees;
    forward(engine_, &MLNMapView::setLongitude, degrees);
}

void PgmMapView::setZoomLevel(double zoomLevel) {
    settings_.zoomLevel = zoomLevel;
    forward(engine_, &MLNMapView::setZoomLevel, zoomLevel);
}

void PgmMapView::setMinimumZoomLevel(double zoomLevel) {
    settings_.minimumZoomLevel = zoomLevel;
    forward(engine_, &MLNMapView::setMinimumZoomLevel, zoomLevel);
}

void PgmMapView::setMaximumZoomLevel(double zoomLevel) {
    settings_.maximumZoomLevel = zoomLevel;
    forward(engine_, &MLNMapView::setMaximumZoomLevel, zoomLevel);
}

void PgmMapView::setMinimumTilt(double degrees) {
    settings_.minimumTilt = degrees;
    forward(engine_, &MLNMapView::setMinimumPitch, degrees);
}

void PgmMapView::setMaximumTilt(double degrees) {
    settings_.maximumTilt = degrees;
    forward(engine_, &MLNMapView::setMaximumPitch, degrees);
}

void PgmMapView::setContentInset(UIEdgeInsets inset) {
    settings_.contentInset = inset;
    const auto self = keepAlive();
    forward(engine_, &MLNMapView::setContentInset, inset);
    refreshOrnamentConstraints();
}

void PgmMapView::setIsScaleBarVisible(bool visible) {
    settings_.isScaleBarVisible = visible;
    forward(engine_, &MLNMapView::setShowsScale, visible);
}

void PgmMapView::setIsCompassVisible(bool visible) {
    settings_.isCompassVisible = visible;
    forward(engine_, &MLNMapView::setShowsCompassView, visible);
}

void PgmMapView::setIsLogoVisible(bool visible) {
    settings_.isLogoVisible = visible;
    forward(engine_, &MLNMapView::setShowsLogoView, visible);
}

void PgmMapView::setIsLogoClickEnabled(bool enabled) {
    settings_.isLogoClickEnabled = enabled;
    if (engine_) {
        engine_->logoView()->setIsUserInteractionEnabled(enabled);
    }
}

void PgmMapView::setIsZoomGesturesEnabled(bool enabled) {
    settings_.isZoomGesturesEnabled = enabled;
    forward(engine_, &MLNMapView::setZoomEnabled, enabled);
}

void PgmMapView::setIsScrollGesturesEnabled(bool enabled) {
    settings_.isScrollGesturesEnabled = enabled;
    forward(engine_, &MLNMapView::setScrollEnabled, enabled);
}

void PgmMapView::setIsRotateGesturesEnabled(bool enabled) {
    settings_.isRotateGesturesEnabled = enabled;
    forward(engine_, &MLNMapView::setRotateEnabled, enabled);
}

void PgmMapView::setIsTiltGesturesEnabled(bool enabled) {
    settings_.isTiltGesturesEnabled = enabled;
    forward(engine_, &MLNMapView::setPitchEnabled, enabled);
}

void PgmMapView::setDecelerationRate(CGFloat rate) {
    settings_.decelerationRate = rate;
    forward(engine_, &MLNMapView::setDecelerationRate, rate);
}

void PgmMapView::setUserTrackingMode(PgmUserTrackingMode mode) {
    // The camera's events may make the application release the view.
    const auto self = keepAlive();
    settings_.userTrackingMode = mode;
    if (mode == PgmUserTrackingMode::off) {
        forward(engine_, &MLNMapView::setShowsUserLocation, false);
        tellTrackingMode();
        return;
    }
    const auto tracking = engineMode(mode);
    if (const auto engine = engine_) {
        engine->setShowsUserLocation(true);
        engine->setShowsHeading(true);
        engine->setUserTrackingMode(tracking);
        locationAnnotaionView_->setupView(*locationIcon_);
        tellTrackingMode();
    }
}

void PgmMapView::tellTrackingMode() {
    const auto mode = engine_ ? presentMode(*engine_) : PgmUserTrackingMode::off;
    const bool isNew = std::exchange(toldTrackingMode_, mode) != mode;
    if (const auto told = isNew ? delegate() : nullptr) {
        told->didChangeUserTrackingMode(*this, mode);
    }
}

void PgmMapView::applyMapOptions(const PgmMapOptions& options) {
    // Events of the first steps may make the application release the view before the last ones.
    const auto self = keepAlive();
    setCameraPosition(options.camera());
    setIsScaleBarVisible(options.isScaleBarVisible());
    setIsCompassVisible(options.isCompassVisible());
    setIsZoomControlVisible(options.isZoomControlVisible());
    setIsLocationButtonVisible(options.isLocationButtonVisible());
    setMinimumZoomLevel(options.minimumZoomLevel());
    setMaximumZoomLevel(options.maximumZoomLevel());
    setMinimumTilt(options.minimumTilt());
    setMaximumTilt(options.maximumTilt());
    setIsZoomGesturesEnabled(options.isZoomGesturesEnabled());
    setIsScrollGesturesEnabled(options.isScrollGesturesEnabled());
    setIsRotateGesturesEnabled(options.isRotateGesturesEnabled());
    setIsTiltGesturesEnabled(options.isTiltGesturesEnabled());
    updateOptions();
}

}  // namespace pelta
