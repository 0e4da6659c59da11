#include <pelta/View/PgmMapOptions.h>

namespace pelta {

std::shared_ptr<PgmMapOptions> PgmMapOptions::create(std::shared_ptr<PgmCameraPosition> camera) {
    auto options = std::make_shared<PgmMapOptions>();
    options->camera_ = std::move(camera);
    return options;
}

std::shared_ptr<PgmMapOptions> PgmMapOptions::create(
    std::shared_ptr<PgmCameraPosition> camera, bool isScaleBarVisible, bool isCompassVisible,
    bool isZoomControlVisible, bool isLocationButtonVisible, bool isLogoVisible, double minimumZoomLevel,
    double maximumZoomLevel, double minimumTilt, double maximumTilt, bool isZoomGesturesEnabled,
    bool isScrollGesturesEnabled, bool isRotateGesturesEnabled, bool isTiltGesturesEnabled) {
    auto options = create(std::move(camera));
    options->isScaleBarVisible_ = isScaleBarVisible;
    options->isCompassVisible_ = isCompassVisible;
    options->isZoomControlVisible_ = isZoomControlVisible;
    options->isLocationButtonVisible_ = isLocationButtonVisible;
    options->isLogoVisible_ = isLogoVisible;
    options->minimumZoomLevel_ = minimumZoomLevel;
    options->maximumZoomLevel_ = maximumZoomLevel;
    options->minimumTilt_ = minimumTilt;
    options->maximumTilt_ = maximumTilt;
    options->isZoomGesturesEnabled_ = isZoomGesturesEnabled;
    options->isScrollGesturesEnabled_ = isScrollGesturesEnabled;
    options->isRotateGesturesEnabled_ = isRotateGesturesEnabled;
    options->isTiltGesturesEnabled_ = isTiltGesturesEnabled;
    return options;
}

void PgmMapOptions::setStyleURL(std::string address) {
    styleURL_ = std::move(address);
    styleJSON_.reset();
}

void PgmMapOptions::setStyleJSON(std::string document) {
    styleJSON_ = std::move(document);
    styleURL_.reset();
}

}  // namespace pelta
