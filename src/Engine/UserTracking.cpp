#include "Engine/UserTracking.h"

#include <cmath>
#include <string>

#include <pelta/Platform/Log.h>
#include <pelta/Platform/PlatformPort.h>

namespace pelta {
namespace {

constexpr double followDuration = 0.3;  // seconds

bool hasBit(MLNCameraChangeReason reason, MLNCameraChangeReason bit) {
    return (static_cast<std::uint64_t>(reason) & static_cast<std::uint64_t>(bit)) != 0;
}

/// Directions are negative while unknown.
bool isKnown(double direction) {
    return std::isfinite(direction) && direction >= 0;
}

}  // namespace

void UserTracking::setShowsLocation(bool shows, const std::shared_ptr<LocationObserver>& self) {
    if (shows == showsLocation_) {
        return;
    }
    showsLocation_ = shows;
    reportedFailure_.reset();
    auto& source = PlatformPort::current().locationSource();
    if (shows) {
        source.addObserver(self);
    } else {
        location_.setLocation(std::nullopt);
        location_.setHeading(std::nullopt);
        source.removeObserver(*this);
    }
}

void UserTracking::setShowsHeading(bool shows) {
    showsHeading_ = shows;
    if (!shows) {
        location_.setHeading(std::nullopt);
    }
}

void UserTracking::setMode(MLNUserTrackingMode mode, bool animated) {
    if (std::exchange(mode_, mode) != mode) {
        events_.tell(
            [&](auto& delegate, auto& view) { delegate.didChangeUserTrackingMode(view, mode, animated); });
    }
    follow();
}

const MLNUserLocation* UserTracking::location() const noexcept {
    return showsLocation_ && location_.location() ? &location_ : nullptr;
}

void UserTracking::gestureWillBegin(MLNCameraChangeReason reason) {
    if (hasBit(reason, MLNCameraChangeReason::gesturePan)) {
        setMode(MLNUserTrackingMode::none, false);
    }
}

void UserTracking::locationDidUpdate(const CLLocation& location) {
    if (!showsLocation_) {
        return;
    }
    location_.setLocation(location);
    reportedFailure_.reset();
    changed_();
    events_.tell([&](auto& delegate, auto& view) { delegate.didUpdateUserLocation(view, location_); });
    follow();
}

void UserTracking::headingDidUpdate(const CLHeading& heading) {
    if (showsLocation_ && showsHeading_) {
        location_.setHeading(heading);
        changed_();
        if (mode_ == MLNUserTrackingMode::followWithHeading) {
            follow();
        }
    }
}

void UserTracking::locationDidFail(CLLocationFailure failure, std::string_view reason) {
    // A device that has none says so again and again.
    if (!showsLocation_ || std::exchange(reportedFailure_, failure) == failure) {
        return;
    }
    dPrint("the user's location is not known: " + std::string(reason));
    events_.tell([failure](auto& delegate, auto& view) { delegate.didFailToLocateUser(view, failure); });
}

double UserTracking::followedBearing(double present) const {
    if (mode_ == MLNUserTrackingMode::followWithHeading && location_.heading()) {
        const auto& heading = *location_.heading();
        const double direction = isKnown(heading.trueHeading) ? heading.trueHeading : heading.magneticHeading;
        return isKnown(direction) ? direction : present;
    }
    if (mode_ == MLNUserTrackingMode::followWithCourse && isKnown(location_.location()->course)) {
        return location_.location()->course;
    }
    return present;
}

void UserTracking::follow() {
    if (mode_ == MLNUserTrackingMode::none || location() == nullptr) {
        return;
    }
    // What a command is just changing besides the centre arrives all the same.
    auto wanted = camera_.destination();
    wanted.center = location_.location()->coordinate;
    wanted.bearing = followedBearing(wanted.bearing);
    if (camera_.constrain(wanted) != camera_.destination()) {
        camera_.easeTo(wanted, followDuration, CAMediaTimingFunction::easeInEaseOut(),
                       MLNCameraChangeReason::programmatic);
    }
}

}  // namespace pelta
