#pragma once

#include <memory>
#include <optional>
#include <string>

#include <pelta/Engine/MLNAnnotationView.h>
#include <pelta/Platform/UIControls.h>
#include <pelta/View/PgmMapTypes.h>

namespace pelta {

class PgmImage;
class PgmLocationIcon;

/// Draws the user's position as its map view's `PgmLocationIcon` says: a dot that points where the device
/// points and a pulsing circle behind it, both tilted with the map. Main thread only.
class PgmLocationAnnotationView : public MLNUserLocationAnnotationView {
 public:
    /// A view that shows nothing until it is set up.
    /// @param reuseIdentifier  free for whoever makes the view.
    [[nodiscard]] static std::shared_ptr<PgmLocationAnnotationView> create(std::string reuseIdentifier);
    /// A view with a frame, points, and no reuse identifier.
    [[nodiscard]] static std::shared_ptr<PgmLocationAnnotationView> createWithFrame(CGRect frame);
    /// A view from an interface description.
    [[nodiscard]] static std::shared_ptr<PgmLocationAnnotationView> createWithCoder(
        const PgmViewSettings& settings);
    using MLNUserLocationAnnotationView::MLNUserLocationAnnotationView;
    void completeConstruction(std::string_view className) override;

    /// Takes over picture, size and circle, and starts the circle's pulse anew. Without a picture the view is
    /// 40 points wide and high.
    void setupView(const PgmLocationIcon& icon);
    /// Turns the dot and tilts the view as the map stands.
    void update() override;
    void setSelected(bool selected, bool animated) override;

    /// The view of the dot.
    [[nodiscard]] const std::shared_ptr<UIImageView>& dotImageView() const noexcept { return dotImageView_; }
    /// The circle; null until the view is set up.
    [[nodiscard]] const std::shared_ptr<CALayer>& haloLayer() const noexcept { return haloLayer_; }

 private:
    [[nodiscard]] std::shared_ptr<PgmImage> imageOf(const PgmLocationIcon& icon) const;
    void setupHaloLayer(UIColor color, double size);
    [[nodiscard]] std::shared_ptr<CALayer> circleLayerWithSize(double size) const;
    void updateHeading();
    void updatePitch();
    void updateFaux3DEffect();

    std::shared_ptr<UIImageView> dotImageView_;
    std::shared_ptr<CALayer> haloLayer_;
    double oldPitch_ = 0;  ///< Degrees.
};

}  // namespace pelta
