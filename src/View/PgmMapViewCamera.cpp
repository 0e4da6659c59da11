#include <pelta/View/PgmMapView.h>

namespace pelta {

namespace {

std::optional<CAMediaTimingFunction> timingFunctionOf(PgmCameraUpdateAnimation animation) {
    switch (animation) {
        case PgmCameraUpdateAnimation::linear:
            return CAMediaTimingFunction::linear();
        case PgmCameraUpdateAnimation::easeIn:
            return CAMediaTimingFunction::easeIn();
        case PgmCameraUpdateAnimation::easeOut:
            return CAMediaTimingFunction::easeOut();
        case PgmCameraUpdateAnimation::none:
        case PgmCameraUpdateAnimation::fly:
            break;
    }
    return std::nullopt;
}

/// What the engine is to show for a position.
CameraState stateOf(const PgmCameraPosition& position, const MLNMapView& engine) {
    if (const auto& bounds = position.bounds()) {
        return engine.cameraStateThatFitsCoordinateBounds({bounds->southWest(), bounds->northEast()},
                                                          position.paddingInsets().value_or(UIEdgeInsets{}));
    }
    return {position.target(), position.zoom(), position.tilt(), position.bearing()};
}

}  // namespace

std::shared_ptr<PgmCameraPosition> PgmMapView::cameraPosition() const {
    if (!engine_) {
        return nullptr;
    }
    const auto camera = engine_->cameraState();
    return PgmCameraPosition::create(camera.center, camera.zoom, camera.pitch, camera.bearing);
}

void PgmMapView::setCameraPosition(const std::shared_ptr<PgmCameraPosition>& position) {
    const auto engine = engine_;
    if (position && engine) {
        engine->setCameraState(stateOf(*position, *engine), 0, std::nullopt, {});
    }
}

void PgmMapView::moveCamera(const std::shared_ptr<PgmCameraUpdate>& update) {
    const auto kept = update;
    const auto self = keepAlive();
    if (kept && engine_ && engine_->showsUserLocation()) {
        engine_->setUserTrackingMode(MLNUserTrackingMode::none);
    }
    moveCamera(kept, nullptr);
}

void PgmMapView::moveCamera(const std::shared_ptr<PgmCameraUpdate>& update, Completion completion) {
    if (!update || !engine_) {
        return;
    }
    // Both camera events and the layout may make the application release the view.
    const auto self = keepAlive();
    layoutIfNeeded();
    const auto animation = update->animation();
    const auto position = update->getCameraPosition(*this);
    if (animation == PgmCameraUpdateAnimation::fly) {
        flyToCamera(position, update->animationDuration(), std::move(completion));
        return;
    }
    const auto engine = engine_;
    if (!position || !engine) {
        return;
    }
    const double duration = animation == PgmCameraUpdateAnimation::none ? 0 : update->animationDuration();
    engine->setCameraState(stateOf(*position, *engine), duration, timingFunctionOf(animation),
                           std::move(completion));
}

void PgmMapView::flyToCamera(const std::shared_ptr<PgmCameraPosition>& position, double duration,
                             Completion completion) {
    const auto engine = engine_;
    if (position && engine) {
        engine->flyToCameraState(stateOf(*position, *engine), duration, std::move(completion));
    }
}

std::shared_ptr<PgmProjection> PgmMapView::projection() const {
    return std::make_shared<PgmProjection>(
        std::static_pointer_cast<const PgmMapView>(weak_from_this().lock()));
}

std::shared_ptr<PgmLatLngBounds> PgmMapView::contentBounds() const {
    if (!engine_) {
        return nullptr;
    }
    const auto bounds = engine_->visibleCoordinateBounds();
    return PgmLatLngBounds::create(bounds.sw, bounds.ne);
}

std::shared_ptr<PgmLatLngBounds> PgmMapView::constraintBounds() const {
    if (!engine_) {
        return nullptr;
    }
    const auto bounds = engine_->maximumScreenBounds();
    return PgmLatLngBounds::create(bounds.sw, bounds.ne);
}

void PgmMapView::setConstraintBounds(const std::shared_ptr<PgmLatLngBounds>& bounds) {
    const auto engine = engine_;
    if (bounds && engine) {
        engine->setMaximumScreenBounds({bounds->southWest(), bounds->northEast()});
    }
}

void PgmMapView::updateOptions() {
    const auto engine = engine_;
    if (engine) {
        engine->setCameraState(engine->cameraState(), 0, std::nullopt, {});
    }
}

}  // namespace pelta
