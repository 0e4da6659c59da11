#pragma once

#include <functional>
#include <memory>
#include <optional>

#include <pelta/Annotations/PgmImage.h>
#include <pelta/Platform/CoreLocation.h>
#include <pelta/Platform/UIColor.h>

namespace pelta {

class PgmMapView;

/// How a map view shows the user's own position: a dot, and a circle that pulses behind it. Each map view has
/// one, `PgmMapView::locationIcon`; changes show at once. Main thread only.
class PgmLocationIcon {
 public:
    /// Reddish: 227, 39, 70 of 255.
    static constexpr UIColor Pgm_LOCATION_ICON_CIRCLE_COLOR{0.8901960784313725, 0.15294117647058825,
                                                            0.27450980392156865, 1};

    /// An icon of no map view.
    [[nodiscard]] static std::shared_ptr<PgmLocationIcon> create();
    /// For `create`.
    PgmLocationIcon();
    PgmLocationIcon(const PgmLocationIcon&) = delete;
    PgmLocationIcon& operator=(const PgmLocationIcon&) = delete;

    /// The map view that has this icon, held weakly; null when there is none.
    [[nodiscard]] std::shared_ptr<PgmMapView> mapview() const { return mapview_.lock(); }
    /// For the map view.
    void setMapview(const std::shared_ptr<PgmMapView>& mapview) { mapview_ = mapview; }

    /// @name Look
    /// @{
    /// The dot while the map does not follow the user; null shows none.
    [[nodiscard]] const std::shared_ptr<PgmImage>& image() const noexcept { return image_; }
    void setImage(std::shared_ptr<PgmImage> image);
    /// The dot while the map follows the user; null shows none.
    [[nodiscard]] const std::shared_ptr<PgmImage>& imageTracking() const noexcept { return imageTracking_; }
    void setImageTracking(std::shared_ptr<PgmImage> image);
    /// The dot while the map follows the user and turns with the heading or the course; null shows none.
    [[nodiscard]] const std::shared_ptr<PgmImage>& imageTrackingCompass() const noexcept {
        return imageTrackingCompass_;
    }
    void setImageTrackingCompass(std::shared_ptr<PgmImage> image);
    /// Factor to the dot's size, 1 at first; negative and non-finite values count as 0.
    [[nodiscard]] CGFloat scale() const noexcept { return scale_; }
    void setScale(CGFloat scale);
    /// Diameter of the pulsing circle at its largest, points, 50 at first; negative and non-finite values
    /// count as 0.
    [[nodiscard]] double circleRadius() const noexcept { return circleRadius_; }
    void setCircleRadius(double points);
    /// Colour of the circle, `Pgm_LOCATION_ICON_CIRCLE_COLOR` at first; absent shows none.
    [[nodiscard]] std::optional<UIColor> circleColor() const noexcept { return circleColor_; }
    void setCircleColor(std::optional<UIColor> color);
    /// @}

    /// What a tap on the dot calls; empty at first.
    [[nodiscard]] const std::function<void()>& touchEvent() const noexcept { return touchEvent_; }
    /// Sets what a tap on the dot calls, in place of what was set before.
    void setTouchEvent(std::function<void()> event) { touchEvent_ = std::move(event); }

    /// @name The user
    /// @{
    /// Whether the map shows the user's position, once it is known; false without a map view.
    [[nodiscard]] bool isVisible() const;
    /// Where the user is, degrees; absent while that is unknown or not shown.
    [[nodiscard]] std::optional<CLLocationCoordinate2D> position() const;
    /// Where the device points against magnetic north, degrees clockwise; 0 while the position or the heading
    /// is unknown. Negative where the device knows its heading against true north alone.
    [[nodiscard]] CGFloat bearing() const;
    /// @}

 private:
    void updateView();

    std::weak_ptr<PgmMapView> mapview_;
    std::shared_ptr<PgmImage> image_;
    std::shared_ptr<PgmImage> imageTracking_;
    std::shared_ptr<PgmImage> imageTrackingCompass_;
    CGFloat scale_ = 1.0;
    double circleRadius_ = 50.0;
    std::optional<UIColor> circleColor_ = Pgm_LOCATION_ICON_CIRCLE_COLOR;
    std::function<void()> touchEvent_;
};

}  // namespace pelta
