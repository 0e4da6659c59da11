#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include <pelta/Annotations/DrawnNumber.h>
#include <pelta/Annotations/PgmImage.h>
#include <pelta/Annotations/PgmShape.h>
#include <pelta/Engine/MLNSymbolStyleLayer.h>
#include <pelta/Platform/CoreGraphics.h>
#include <pelta/Platform/UIColor.h>

namespace pelta {

class PgmInfoWindow;

/// An icon at a coordinate with an optional title under it, above everything of the base map.
///
/// Lengths are points. Negative sizes count as 0 when drawn. A number that is not finite is told by its
/// getter and not drawn: the marker with its title and its info window stays as the number drawn before makes
/// it.
class PgmMarker : public PgmShape {
 public:
    /// A red marker without title, its bottom centre on (0, 0).
    [[nodiscard]] static std::shared_ptr<PgmMarker> create();
    /// A red marker at a coordinate, degrees.
    [[nodiscard]] static std::shared_ptr<PgmMarker> markerWithPosition(CLLocationCoordinate2D position);
    /// @param image  null stands for `PgmImage::markerImageRed()`.
    [[nodiscard]] static std::shared_ptr<PgmMarker> markerWithIconImage(std::shared_ptr<PgmImage> image);
    /// A marker at a coordinate, degrees; a null image stands for `PgmImage::markerImageRed()`.
    [[nodiscard]] static std::shared_ptr<PgmMarker> markerWithPositionIconImage(
        CLLocationCoordinate2D position, std::shared_ptr<PgmImage> image);
    /// For `make`; use the factories.
    explicit PgmMarker(CLLocationCoordinate2D position = {}, std::shared_ptr<PgmImage> iconImage = nullptr);
    void completeConstruction(std::string_view className) override;

    /// Free for the application, 0 at first.
    [[nodiscard]] std::uint64_t tag() const noexcept { return tag_; }
    void setTag(std::uint64_t tag) noexcept { tag_ = tag; }
    /// Where the anchor of the icon stands, degrees; (0, 0) at first. A position that cannot be projected
    /// draws nothing.
    [[nodiscard]] CLLocationCoordinate2D position() const noexcept { return position_; }
    void setPosition(CLLocationCoordinate2D position);

    /// The info window that was opened on the marker last, which the marker holds; null at first. See
    /// `PgmInfoWindow::setMarker`.
    [[nodiscard]] const std::shared_ptr<PgmInfoWindow>& infoWindow() const noexcept { return infoWindow_; }

    /// @name Icon
    /// `anchor`, `angle` and `alpha` are stored and wait: they are drawn with the next change of icon, title,
    /// stacking, zoom range or visibility, or when the marker is put on a map, but not with a new position.
    /// @{
    /// Never null; a red pin at first. Null sets that one again.
    [[nodiscard]] const std::shared_ptr<PgmImage>& iconImage() const noexcept { return iconImage_; }
    void setIconImage(std::shared_ptr<PgmImage> image);
    /// Factor to the picture's size, 1 at first; negative values count as 0 when drawn.
    [[nodiscard]] double iconScale() const noexcept { return iconScale_.asSet(); }
    void setIconScale(double scale);
    /// Point of the picture that stands on the position at every angle, in fractions of its width and height
    /// from the top left; (0.5, 1), the bottom centre, at first. Components that are not finite count as 0.5.
    /// Waits for another change.
    [[nodiscard]] CGPoint anchor() const noexcept { return anchor_; }
    void setAnchor(CGPoint anchor) noexcept { anchor_ = anchor; }
    /// Rotation of the icon about its anchor, degrees clockwise, 0 at first. Waits for another change.
    [[nodiscard]] double angle() const noexcept { return angle_.asSet(); }
    void setAngle(double degrees) noexcept { angle_.set(degrees); }
    /// Opacity of icon and title, 0 to 1, 1 at first. Waits for another change.
    [[nodiscard]] double alpha() const noexcept { return alpha_.asSet(); }
    void setAlpha(double alpha) noexcept { alpha_.set(alpha); }
    /// For info windows that stand on the marker; the marker itself does not look at it. False at first.
    [[nodiscard]] bool isForceShowIcon() const noexcept { return isForceShowIcon_; }
    void setIsForceShowIcon(bool force) noexcept { isForceShowIcon_ = force; }
    /// True: the icon lies on the ground and turns with the map. False at first.
    [[nodiscard]] bool isIconFlat() const noexcept { return isIconFlat_; }
    void setIsIconFlat(bool flat);
    /// @}

    /// @name Title
    /// @{
    /// UTF-8 text centred under the icon; empty, the first value, draws none.
    [[nodiscard]] const std::string& title() const noexcept { return title_; }
    void setTitle(std::string title);
    /// Black at first.
    [[nodiscard]] UIColor titleColor() const noexcept { return titleColor_; }
    void setTitleColor(UIColor color);
    /// Colour of the edge around the letters, white at first.
    [[nodiscard]] UIColor titleHaloColor() const noexcept { return titleHaloColor_; }
    void setTitleHaloColor(UIColor color);
    /// Size of the letters, 12 at first; 0 and less draw no title.
    [[nodiscard]] double titleSize() const noexcept { return titleSize_.asSet(); }
    void setTitleSize(double size);
    /// Width at which the title breaks; 0, the first value, and less never break it.
    [[nodiscard]] double titleMaxWidth() const noexcept { return titleMaxWidth_.asSet(); }
    void setTitleMaxWidth(double width);
    /// Distance from the icon's lowest point beyond the 4 pixels that always separate them, 0 at first.
    [[nodiscard]] double titleMargin() const noexcept { return titleMargin_.asSet(); }
    void setTitleMargin(double margin);
    /// True: the title lies on the ground. False at first.
    [[nodiscard]] bool isTitleFlat() const noexcept { return isTitleFlat_; }
    void setIsTitleFlat(bool flat);
    /// @}

    /// @name Collisions
    /// @{
    /// The icon is drawn also where it covers other symbols; true at first.
    [[nodiscard]] bool isAllowOverlapMarkers() const noexcept { return isAllowOverlapMarkers_; }
    void setIsAllowOverlapMarkers(bool allow);
    /// The title is drawn also where it covers other symbols; true at first.
    [[nodiscard]] bool isAllowOverlapTitle() const noexcept { return isAllowOverlapTitle_; }
    void setIsAllowOverlapTitle(bool allow);
    /// Overruled by `isAllowOverlapMarkers`; false at first.
    [[nodiscard]] bool isAllowOverlapSymbols() const noexcept { return isAllowOverlapSymbols_; }
    void setIsAllowOverlapSymbols(bool allow);
    /// @}

    /// @name For subclasses and the map view
    /// @{
    /// The layer that draws the marker; null until it was first drawn.
    [[nodiscard]] const std::shared_ptr<MLNSymbolStyleLayer>& symbolLayer() const noexcept {
        return symbolLayer_;
    }
    /// Points from the position to the middle of the top edge of the drawn icon's bounding box, right and
    /// down; (0, 0) until the marker was first drawn.
    [[nodiscard]] CGVector mInfoWindowOffset() const noexcept { return infoWindowOffset_; }
    [[nodiscard]] std::shared_ptr<MLNShape> feature() const override { return feature_; }
    [[nodiscard]] std::shared_ptr<PgmImage> shapeImage() const override { return iconImage_; }
    [[nodiscard]] std::int64_t defaultGlobalZIndex() const override { return 1000; }
    /// Updates the info window's layers too.
    void updateShapesWithReorder(bool reorder) override;
    void updateLayerProperty() override;
    void updateFeature() override;
    /// @}

 private:
    friend class PgmInfoWindow;
    void setInfoWindow(std::shared_ptr<PgmInfoWindow> window);
    void setInfoWindowOffset(CGVector offset);
    void propertyDidChange();
    void applyTitle(MLNSymbolStyleLayer& layer);
    void applyIcon(MLNSymbolStyleLayer& layer);
    void applyOffsets(MLNSymbolStyleLayer& layer);

    std::uint64_t tag_ = 0;
    std::shared_ptr<MLNSymbolStyleLayer> symbolLayer_;
    CGVector infoWindowOffset_;
    std::shared_ptr<MLNPointFeature> feature_;
    std::shared_ptr<PgmImage> iconImage_;
    DrawnNumber iconScale_{1.0};
    std::string title_;
    CLLocationCoordinate2D position_;
    DrawnNumber alpha_{1.0};
    UIColor titleColor_ = UIColor::black();
    UIColor titleHaloColor_ = UIColor::white();
    DrawnNumber titleSize_{12.0};
    DrawnNumber titleMaxWidth_{0};
    DrawnNumber titleMargin_{0};
    DrawnNumber angle_{0};
    CGPoint anchor_{0.5, 1.0};
    bool isForceShowIcon_ = false;
    bool isAllowOverlapMarkers_ = true;
    bool isAllowOverlapTitle_ = true;
    bool isAllowOverlapSymbols_ = false;
    bool isIconFlat_ = false;
    bool isTitleFlat_ = false;
    std::shared_ptr<PgmInfoWindow> infoWindow_;
    /// Every window that stands on the icon; one that was opened here before `infoWindow_` does so still.
    std::vector<std::weak_ptr<PgmInfoWindow>> openWindows_;
};

}  // namespace pelta
