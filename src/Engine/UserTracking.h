#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <utility>

#include <pelta/Engine/MLNAnnotation.h>
#include <pelta/Platform/CoreLocation.h>

#include "Engine/CameraController.h"

namespace pelta {

/// The user's location and the camera's following of it. Without a location shown the mode is only kept.
class UserTracking final : public LocationObserver {
 public:
    /// @param changed  called when the location or the heading has changed, before the camera follows.
    UserTracking(CameraController& camera, const MapViewEvents& events, std::function<void()> changed)
        : camera_(camera), events_(events), changed_(std::move(changed)) {}

    /// Listens to the port's location source, or stops and forgets the location.
    /// @param self  this object, held by whoever keeps it alive.
    void setShowsLocation(bool shows, const std::shared_ptr<LocationObserver>& self);
    [[nodiscard]] bool showsLocation() const noexcept { return showsLocation_; }
    void setShowsHeading(bool shows);
    [[nodiscard]] bool showsHeading() const noexcept { return showsHeading_; }

    /// Also leads the camera back to the location when the mode is the present one.
    void setMode(MLNUserTrackingMode mode, bool animated);
    [[nodiscard]] MLNUserTrackingMode mode() const noexcept { return mode_; }
    /// Null while not shown or not yet known.
    [[nodiscard]] const MLNUserLocation* location() const noexcept;
    /// The same, also while nothing is known or shown.
    [[nodiscard]] const MLNUserLocation& annotation() const noexcept { return location_; }
    /// A pan ends the following.
    void gestureWillBegin(MLNCameraChangeReason reason);

    void locationDidUpdate(const CLLocation& location) override;
    void headingDidUpdate(const CLHeading& heading) override;
    void locationDidFail(CLLocationFailure failure, std::string_view reason) override;

 private:
    void follow();
    [[nodiscard]] double followedBearing(double present) const;

    CameraController& camera_;
    const MapViewEvents& events_;
    std::function<void()> changed_;
    MLNUserLocation location_;
    MLNUserTrackingMode mode_ = MLNUserTrackingMode::none;
    bool showsLocation_ = false;
    bool showsHeading_ = false;
    std::optional<CLLocationFailure> reportedFailure_;  // since the last location
};

}  // namespace pelta
