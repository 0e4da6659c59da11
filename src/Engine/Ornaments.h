#pragma once

#include <functional>
#include <memory>
#include <vector>

#include <pelta/Engine/MLNTypes.h>
#include <pelta/Platform/UIControls.h>

#include "Engine/ScaleBarView.h"

namespace pelta {

/// Logo, compass and scale bar of a map view: subviews that keep to their corners of the safe area, moved
/// inwards by the content inset.
class Ornaments {
 public:
    /// Adds the ornaments to a map view.
    /// @param compassWasTapped  must not own the map view.
    Ornaments(UIView& mapView, std::function<void()> compassWasTapped);

    [[nodiscard]] const std::shared_ptr<UIImageView>& logo() const noexcept { return logo_; }
    [[nodiscard]] const std::shared_ptr<UIImageView>& compass() const noexcept { return compass_; }
    [[nodiscard]] const std::shared_ptr<UIView>& scaleBar() const noexcept { return scaleBarAsView_; }

    void setContentInset(const UIEdgeInsets& inset);
    void setShowsCompass(bool shows);
    [[nodiscard]] bool showsCompass() const noexcept { return showsCompass_; }
    /// Brings compass and scale bar up to the camera; nothing is touched that stays the same.
    void showCamera(const CameraState& camera);

 private:
    /// Distance of one edge of an ornament from the same edge of the safe area.
    struct Margin {
        std::shared_ptr<NSLayoutConstraint> constraint;
        CGFloat UIEdgeInsets::*edge;
        double direction;  // 1 for left and top, -1 for right and bottom
    };

    void place(UIView& mapView, UIView& ornament, NSLayoutAttribute horizontal, NSLayoutAttribute vertical,
               CGSize size);
    void addMargin(UIView& mapView, UIView& ornament, NSLayoutAttribute edge);
    void updateCompassVisibility();

    std::shared_ptr<UIImageView> logo_;
    std::shared_ptr<UIImageView> compass_;
    std::shared_ptr<ScaleBarView> scaleBar_;
    std::shared_ptr<UIView> scaleBarAsView_;
    std::vector<Margin> margins_;
    double bearing_ = 0;
    bool showsCompass_ = true;
};

}  // namespace pelta
