#pragma once

#include <memory>
#include <optional>
#include <string>

#include <pelta/Geometry/PgmCameraPosition.h>

namespace pelta {

/// What a map view starts with. Read once, when the view is made; later changes have no effect on it.
///
/// No value is checked here: the map brings what is out of range into its own limits.
class PgmMapOptions {
 public:
    /// @param camera  first camera; null leaves the map where it starts, at zoom 1 over (0, 0).
    [[nodiscard]] static std::shared_ptr<PgmMapOptions> create(
        std::shared_ptr<PgmCameraPosition> camera = nullptr);
    /// Every value at once.
    [[nodiscard]] static std::shared_ptr<PgmMapOptions> create(
        std::shared_ptr<PgmCameraPosition> camera, bool isScaleBarVisible, bool isCompassVisible,
        bool isZoomControlVisible, bool isLocationButtonVisible, bool isLogoVisible, double minimumZoomLevel,
        double maximumZoomLevel, double minimumTilt, double maximumTilt, bool isZoomGesturesEnabled,
        bool isScrollGesturesEnabled, bool isRotateGesturesEnabled, bool isTiltGesturesEnabled);

    /// First camera; null leaves the map where it starts.
    [[nodiscard]] const std::shared_ptr<PgmCameraPosition>& camera() const noexcept { return camera_; }
    void setCamera(std::shared_ptr<PgmCameraPosition> camera) noexcept { camera_ = std::move(camera); }

    /// @name Style
    /// What the map is drawn by from the start, instead of the default style, which is then never fetched. An
    /// address and a document's text exclude each other: setting one forgets the other. What cannot be loaded
    /// leaves the map empty, as `PgmMapDelegate::didFailLoadingStyle` tells.
    /// @{
    /// Address of a style document, absent at first; see `PgmMapView::setStyleURL`.
    [[nodiscard]] const std::optional<std::string>& styleURL() const noexcept { return styleURL_; }
    void setStyleURL(std::string address);
    /// A style document itself, absent at first; see `PgmMapView::setStyleJSON`.
    [[nodiscard]] const std::optional<std::string>& styleJSON() const noexcept { return styleJSON_; }
    void setStyleJSON(std::string document);
    /// @}

    /// @name Ornaments
    /// @{
    /// True at first.
    [[nodiscard]] bool isScaleBarVisible() const noexcept { return isScaleBarVisible_; }
    void setIsScaleBarVisible(bool visible) noexcept { isScaleBarVisible_ = visible; }
    /// True at first.
    [[nodiscard]] bool isCompassVisible() const noexcept { return isCompassVisible_; }
    void setIsCompassVisible(bool visible) noexcept { isCompassVisible_ = visible; }
    /// False at first.
    [[nodiscard]] bool isZoomControlVisible() const noexcept { return isZoomControlVisible_; }
    void setIsZoomControlVisible(bool visible) noexcept { isZoomControlVisible_ = visible; }
    /// False at first.
    [[nodiscard]] bool isLocationButtonVisible() const noexcept { return isLocationButtonVisible_; }
    void setIsLocationButtonVisible(bool visible) noexcept { isLocationButtonVisible_ = visible; }
    /// True at first. The map view does not take it over: its own `isLogoVisible` decides.
    [[nodiscard]] bool isLogoVisible() const noexcept { return isLogoVisible_; }
    void setIsLogoVisible(bool visible) noexcept { isLogoVisible_ = visible; }
    /// @}

    /// @name Limits
    /// @{
    /// 1 at first.
    [[nodiscard]] double minimumZoomLevel() const noexcept { return minimumZoomLevel_; }
    void setMinimumZoomLevel(double zoomLevel) noexcept { minimumZoomLevel_ = zoomLevel; }
    /// 20 at first.
    [[nodiscard]] double maximumZoomLevel() const noexcept { return maximumZoomLevel_; }
    void setMaximumZoomLevel(double zoomLevel) noexcept { maximumZoomLevel_ = zoomLevel; }
    /// Degrees, 0 at first.
    [[nodiscard]] double minimumTilt() const noexcept { return minimumTilt_; }
    void setMinimumTilt(double tilt) noexcept { minimumTilt_ = tilt; }
    /// Degrees, 60 at first.
    [[nodiscard]] double maximumTilt() const noexcept { return maximumTilt_; }
    void setMaximumTilt(double tilt) noexcept { maximumTilt_ = tilt; }
    /// @}

    /// @name Gestures
    /// All true at first.
    /// @{
    /// Two fingers and double taps zoom.
    [[nodiscard]] bool isZoomGesturesEnabled() const noexcept { return isZoomGesturesEnabled_; }
    void setIsZoomGesturesEnabled(bool enabled) noexcept { isZoomGesturesEnabled_ = enabled; }
    /// A finger moves the map.
    [[nodiscard]] bool isScrollGesturesEnabled() const noexcept { return isScrollGesturesEnabled_; }
    void setIsScrollGesturesEnabled(bool enabled) noexcept { isScrollGesturesEnabled_ = enabled; }
    /// Two fingers turn the map.
    [[nodiscard]] bool isRotateGesturesEnabled() const noexcept { return isRotateGesturesEnabled_; }
    void setIsRotateGesturesEnabled(bool enabled) noexcept { isRotateGesturesEnabled_ = enabled; }
    /// Two fingers side by side tilt the map.
    [[nodiscard]] bool isTiltGesturesEnabled() const noexcept { return isTiltGesturesEnabled_; }
    void setIsTiltGesturesEnabled(bool enabled) noexcept { isTiltGesturesEnabled_ = enabled; }
    /// @}

 private:
    std::shared_ptr<PgmCameraPosition> camera_;
    std::optional<std::string> styleURL_;
    std::optional<std::string> styleJSON_;
    bool isScaleBarVisible_ = true;
    bool isCompassVisible_ = true;
    bool isZoomControlVisible_ = false;
    bool isLocationButtonVisible_ = false;
    bool isLogoVisible_ = true;
    double minimumZoomLevel_ = 1;
    double maximumZoomLevel_ = 20;
    double minimumTilt_ = 0;
    double maximumTilt_ = 60;
    bool isZoomGesturesEnabled_ = true;
    bool isScrollGesturesEnabled_ = true;
    bool isRotateGesturesEnabled_ = true;
    bool isTiltGesturesEnabled_ = true;
};

}  // namespace pelta
