#pragma once

#include <memory>
#include <optional>
#include <string>

#include <pelta/Annotations/PgmImage.h>
#include <pelta/Annotations/PgmShape.h>
#include <pelta/Engine/MLNSymbolStyleLayer.h>
#include <pelta/Platform/CoreGraphics.h>
#include <pelta/Platform/UIView.h>

namespace pelta {

class PgmMarker;

/// Says what an info window shows: an object of one of the two kinds below. One that is of both is asked for
/// its view.
class PgmImageDataSource {
 public:
    virtual ~PgmImageDataSource() = default;
};

/// Shows a view of its own.
class PgmImageViewDataSource : public virtual PgmImageDataSource {
 public:
    /// The view to draw for a shape, as it is now. Null, and a view without area, draw nothing new.
    [[nodiscard]] virtual std::shared_ptr<UIView> view(PgmShape& with) = 0;
};

/// Shows a text in a speech bubble.
class PgmImageTextDataSource : public virtual PgmImageDataSource {
 public:
    /// The UTF-8 text for a shape, in one line. Absent and empty texts draw nothing new.
    [[nodiscard]] virtual std::optional<std::string> title(PgmShape& with) = 0;
};

/// A picture above a marker or at a coordinate, made from a text or a view.
///
/// The picture is drawn anew, from the main queue, whenever the window is put on a map, opened, moved, given
/// another data source or invalidated; the one before stays until then, and for good where there is nothing
/// to draw. The lower middle of the picture, the tip of the bubble, stands on the upper middle of the
/// marker's icon as it is drawn, or on the coordinate. A bubble is as wide as its text needs; a text that
/// would make it wider than 2000 points is cut off with an ellipsis. A view larger than 16384 pixels on a
/// side is not drawn; one larger than 2046 points may be more than a port's map can show, which a log line
/// says.
///
/// A marker holds the window that is open on it, and the map holds what is on the map.
class PgmInfoWindow : public PgmShape {
 public:
    /// A window that is nowhere yet.
    [[nodiscard]] static std::shared_ptr<PgmInfoWindow> create();
    /// For `make`; use the factory.
    PgmInfoWindow();

    /// Puts the window on a map, or takes it away (null), on any thread, as `PgmShape::setMapView` does. The
    /// picture made before is dropped.
    void setMapView(const std::shared_ptr<PgmMapView>& mapView) override;

    /// @name Place
    /// @{
    /// The marker that the window was opened on last, held weakly; null when there is none, or `setPosition`
    /// has moved the window away since.
    [[nodiscard]] std::shared_ptr<PgmMarker> marker() const { return marker_.lock(); }
    /// Opens the window on a marker, which then holds it, in place of the one that it held; the marker before
    /// lets go of it. The window stands where the marker is now and does not follow it when it is moved; it
    /// follows the upper edge of the icon when that is drawn with another picture, scale, anchor or angle. On
    /// a marker that has never been drawn it stands on the coordinate. Null takes the window off its marker
    /// and leaves it drawn where it is.
    void setMarker(const std::shared_ptr<PgmMarker>& marker);
    /// Where the window stands, degrees; absent at first.
    [[nodiscard]] std::optional<CLLocationCoordinate2D> position() const noexcept { return position_; }
    /// Moves the window to a coordinate of its own. It is no longer open on its marker, which holds it all
    /// the same. Absent leaves it drawn where it is. A coordinate that cannot be projected draws nothing.
    void setPosition(std::optional<CLLocationCoordinate2D> position);
    void setPosition(CLLocationCoordinate2D position) { setPosition(std::optional(position)); }
    /// Shift of the picture in points, right and down, (0, 0) at first; numbers that are not finite count as
    /// 0. A new one waits until the window is moved, opened on a marker, drawn anew or put on a map.
    [[nodiscard]] CGPoint offset() const noexcept { return offset_; }
    void setOffset(CGPoint offset);
    /// @}

    /// @name Look
    /// @{
    /// Opacity, 0 to 1, 1 at first.
    [[nodiscard]] CGFloat alpha() const noexcept { return alpha_; }
    void setAlpha(CGFloat alpha);
    /// What says what is shown, held weakly; null, as at first, shows an empty bubble.
    [[nodiscard]] std::shared_ptr<PgmImageDataSource> imageDataSource() const {
        return imageDataSource_.lock();
    }
    void setImageDataSource(const std::shared_ptr<PgmImageDataSource>& source);
    /// The picture as last drawn; null until then.
    [[nodiscard]] const std::shared_ptr<PgmImage>& iconImage() const noexcept { return iconImage_; }
    /// Has the picture drawn anew; nothing while the window is on no map.
    void invalidate();
    /// @}

    /// @name For subclasses and the map view
    /// @{
    /// The layer that draws the window; null until it was first drawn.
    [[nodiscard]] const std::shared_ptr<MLNSymbolStyleLayer>& symbolLayer() const noexcept {
        return symbolLayer_;
    }
    /// For the application; the window itself does not look at it. False at first.
    [[nodiscard]] bool isForceShowIcon() const noexcept { return isForceShowIcon_; }
    void setIsForceShowIcon(bool force) noexcept { isForceShowIcon_ = force; }
    /// Always (0, 0): the window stands by its marker's `mInfoWindowOffset`.
    [[nodiscard]] CGPoint mInfoWindowOffset() const noexcept { return {}; }
    /// Queues the drawing of the picture on the main queue, each time.
    void iconImageCheck();
    [[nodiscard]] std::shared_ptr<MLNShape> feature() const override { return feature_; }
    /// The picture that the feature shows: the one drawn last, or an earlier one while `position` is absent.
    [[nodiscard]] std::shared_ptr<PgmImage> shapeImage() const override { return shownImage_; }
    [[nodiscard]] std::int64_t defaultGlobalZIndex() const override { return 3000; }
    void updateLayerProperty() override;
    void updateFeature() override;
    /// @}

 private:
    friend class PgmMarker;

    void drawIconImage();
    [[nodiscard]] std::shared_ptr<UIView> contentView();
    void show(const std::shared_ptr<PgmImage>& image);
    void writeIconOffset();
    void markerIconDidMove();

    std::shared_ptr<MLNSymbolStyleLayer> symbolLayer_;
    std::shared_ptr<MLNPointFeature> feature_;
    std::shared_ptr<PgmImage> iconImage_;
    std::shared_ptr<PgmImage> shownImage_;  ///< What the feature names.
    CGFloat alpha_ = 1.0;
    std::weak_ptr<PgmImageDataSource> imageDataSource_;
    std::weak_ptr<PgmMarker> marker_;
    std::optional<CLLocationCoordinate2D> position_;
    CGPoint offset_;
    CGPoint shownOffset_;  ///< What of `offset_` the feature has; finite.
    bool isForceShowIcon_ = false;
};

}  // namespace pelta
