#pragma once

#include <memory>
#include <optional>

#include <pelta/Engine/MLNAnnotationView.h>
#include <pelta/Engine/MapRenderer.h>

#include "Engine/MapViewEvents.h"
#include "Engine/UserTracking.h"

namespace pelta {

/// The user's position on the map: the delegate's view for it, kept at its place in every frame, and its
/// selection. Without a view of the delegate's nothing is shown.
class UserLocationAnnotation {
 public:
    UserLocationAnnotation(const UserTracking& tracking, const MapViewEvents& events)
        : tracking_(tracking), events_(events) {}

    /// Listens to taps on the map view.
    void open();
    /// Asks the delegate for the view when the position has come to be shown, and takes the view away when it
    /// no longer is.
    void showsLocationDidChange();
    /// What the view shows besides the camera has changed.
    void setNeedsUpdate() noexcept { needsUpdate_ = true; }
    /// Puts the view where the position is drawn, below the ornaments, and lets it bring itself up to date.
    /// Callbacks may end anything.
    void showCamera(const CameraState& camera, const MapRenderer& renderer);

    [[nodiscard]] const MLNAnnotation* selected() const noexcept;
    void select(bool animated);
    void deselect(bool animated);

 private:
    [[nodiscard]] bool isOnView(const UIGestureRecognizer& tap) const;

    const UserTracking& tracking_;
    const MapViewEvents& events_;
    std::shared_ptr<MLNUserLocationAnnotationView> view_;
    std::optional<CameraState> shownCamera_;
    bool needsUpdate_ = false;
    bool isSelected_ = false;
};

}  // namespace pelta
