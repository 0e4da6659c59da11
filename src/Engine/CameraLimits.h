#pragma once

#include <optional>

#include <pelta/Engine/MLNTypes.h>

namespace pelta {

/// Where the camera may be.
class CameraLimits {
 public:
    /// Zoom limits are clamped to 0…24 and pitch limits to 0…85, degrees; non-finite values are ignored.
    void setMinimumZoom(double zoom) noexcept;
    void setMaximumZoom(double zoom) noexcept;
    void setMinimumPitch(double pitch) noexcept;
    void setMaximumPitch(double pitch) noexcept;
    [[nodiscard]] double minimumZoom() const noexcept { return minimumZoom_; }
    [[nodiscard]] double maximumZoom() const noexcept { return maximumZoom_; }
    [[nodiscard]] double minimumPitch() const noexcept { return minimumPitch_; }
    [[nodiscard]] double maximumPitch() const noexcept { return maximumPitch_; }

    /// The area that the view may show. Corners may come in any order; non-finite ones are ignored, and the
    /// whole world lifts the limit.
    void setScreenBounds(const MLNCoordinateBounds& bounds) noexcept;
    [[nodiscard]] MLNCoordinateBounds screenBounds() const noexcept;

    /// The nearest camera within the limits: zoom and pitch in range (where the limits cross the maximum
    /// wins), latitude within the Mercator square, longitude wrapped, bearing normalised; with screen bounds
    /// the zoom fills the view with them and the centre keeps the unturned view inside. A camera within the
    /// limits is answered as it is, to the last digit.
    ///
    /// @param wanted  finite.
    [[nodiscard]] CameraState constrain(CameraState wanted, CGSize viewSize) const noexcept;
    /// The zoom alone, brought within the zoom limits; not a NaN.
    [[nodiscard]] double constrainZoom(double zoom) const noexcept;

    friend bool operator==(const CameraLimits&, const CameraLimits&) = default;

 private:
    void keepWithinScreenBounds(CameraState& camera, CGSize viewSize) const noexcept;

    double minimumZoom_ = 0;
    double maximumZoom_ = 22;
    double minimumPitch_ = 0;
    double maximumPitch_ = 60;
    std::optional<MLNCoordinateBounds> screenBounds_;
};

}  // namespace pelta
