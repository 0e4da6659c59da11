#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include <pelta/Annotations/PgmMarker.h>

namespace pelta {

/// The properties of a marker that an application may style when the library made the marker. Each is the
/// property of `PgmMarker` or `PgmShape` with that name. Main thread only.
class PgmMarkerOptions {
 public:
    virtual ~PgmMarkerOptions() = default;

    /// @copydoc PgmMarker::iconImage
    [[nodiscard]] virtual std::shared_ptr<PgmImage> iconImage() const = 0;
    virtual void setIconImage(std::shared_ptr<PgmImage> image) = 0;
    /// @copydoc PgmMarker::iconScale
    [[nodiscard]] virtual double iconScale() const = 0;
    virtual void setIconScale(double scale) = 0;
    /// @copydoc PgmMarker::title
    [[nodiscard]] virtual std::string title() const = 0;
    virtual void setTitle(std::string title) = 0;
    /// @copydoc PgmMarker::isAllowOverlapMarkers
    [[nodiscard]] virtual bool isAllowOverlapMarkers() const = 0;
    virtual void setIsAllowOverlapMarkers(bool allow) = 0;
    /// @copydoc PgmMarker::isAllowOverlapTitle
    [[nodiscard]] virtual bool isAllowOverlapTitle() const = 0;
    virtual void setIsAllowOverlapTitle(bool allow) = 0;
    /// @copydoc PgmMarker::isIconFlat
    [[nodiscard]] virtual bool isIconFlat() const = 0;
    virtual void setIsIconFlat(bool flat) = 0;
    /// @copydoc PgmMarker::isTitleFlat
    [[nodiscard]] virtual bool isTitleFlat() const = 0;
    virtual void setIsTitleFlat(bool flat) = 0;
    /// @copydoc PgmMarker::position
    [[nodiscard]] virtual CLLocationCoordinate2D position() const = 0;
    virtual void setPosition(CLLocationCoordinate2D position) = 0;
    /// @copydoc PgmMarker::alpha
    [[nodiscard]] virtual double alpha() const = 0;
    virtual void setAlpha(double alpha) = 0;
    /// @copydoc PgmMarker::titleColor
    [[nodiscard]] virtual UIColor titleColor() const = 0;
    virtual void setTitleColor(UIColor color) = 0;
    /// @copydoc PgmMarker::titleHaloColor
    [[nodiscard]] virtual UIColor titleHaloColor() const = 0;
    virtual void setTitleHaloColor(UIColor color) = 0;
    /// @copydoc PgmMarker::titleSize
    [[nodiscard]] virtual double titleSize() const = 0;
    virtual void setTitleSize(double size) = 0;
    /// @copydoc PgmMarker::titleMaxWidth
    [[nodiscard]] virtual double titleMaxWidth() const = 0;
    virtual void setTitleMaxWidth(double width) = 0;
    /// @copydoc PgmMarker::titleMargin
    [[nodiscard]] virtual double titleMargin() const = 0;
    virtual void setTitleMargin(double margin) = 0;
    /// @copydoc PgmMarker::angle
    [[nodiscard]] virtual double angle() const = 0;
    virtual void setAngle(double degrees) = 0;
    /// @copydoc PgmMarker::anchor
    [[nodiscard]] virtual CGPoint anchor() const = 0;
    virtual void setAnchor(CGPoint anchor) = 0;

    /// @copydoc PgmShape::identifier
    [[nodiscard]] virtual std::string identifier() const = 0;
    /// @copydoc PgmShape::userInfo
    [[nodiscard]] virtual PgmShape::UserInfo userInfo() const = 0;
    virtual void setUserInfo(PgmShape::UserInfo userInfo) = 0;
    /// @copydoc PgmShape::zIndex
    [[nodiscard]] virtual std::int64_t zIndex() const = 0;
    virtual void setZIndex(std::int64_t index) = 0;
    /// @copydoc PgmShape::globalZIndex
    [[nodiscard]] virtual std::int64_t globalZIndex() const = 0;
    virtual void setGlobalZIndex(std::int64_t index) = 0;
    /// @copydoc PgmShape::visibleMinZoom
    [[nodiscard]] virtual double visibleMinZoom() const = 0;
    virtual void setVisibleMinZoom(double zoom) = 0;
    /// @copydoc PgmShape::visibleMaxZoom
    [[nodiscard]] virtual double visibleMaxZoom() const = 0;
    virtual void setVisibleMaxZoom(double zoom) = 0;
};

/// The options of one marker: every property is that marker's own.
class PgmMarkerOptionsImpl final : public PgmMarkerOptions {
 public:
    /// Options over a marker as it is.
    ///
    /// @param marker  not null; held strongly.
    [[nodiscard]] static std::shared_ptr<PgmMarkerOptionsImpl> withMarker(std::shared_ptr<PgmMarker> marker);
    /// Options over a marker that is first given the looks of a new one at (0, 0). Its collisions with
    /// symbols, tag, visibility and touch event stay as they were.
    [[nodiscard]] static std::shared_ptr<PgmMarkerOptionsImpl> withResetMarker(
        std::shared_ptr<PgmMarker> marker);

    PgmMarkerOptionsImpl() = delete;
    /// For the factories.
    explicit PgmMarkerOptionsImpl(std::shared_ptr<PgmMarker> marker) noexcept : marker_(std::move(marker)) {}

    /// The marker whose options these are.
    [[nodiscard]] const std::shared_ptr<PgmMarker>& marker() const noexcept { return marker_; }

    [[nodiscard]] std::shared_ptr<PgmImage> iconImage() const override { return marker_->iconImage(); }
    void setIconImage(std::shared_ptr<PgmImage> image) override { marker_->setIconImage(std::move(image)); }
    [[nodiscard]] double iconScale() const override { return marker_->iconScale(); }
    void setIconScale(double scale) override { marker_->setIconScale(scale); }
    [[nodiscard]] std::string title() const override { return marker_->title(); }
    void setTitle(std::string title) override { marker_->setTitle(std::move(title)); }
    [[nodiscard]] bool isAllowOverlapMarkers() const override { return marker_->isAllowOverlapMarkers(); }
    void setIsAllowOverlapMarkers(bool allow) override { marker_->setIsAllowOverlapMarkers(allow); }
    [[nodiscard]] bool isAllowOverlapTitle() const override { return marker_->isAllowOverlapTitle(); }
    void setIsAllowOverlapTitle(bool allow) override { marker_->setIsAllowOverlapTitle(allow); }
    [[nodiscard]] bool isIconFlat() const override { return marker_->isIconFlat(); }
    void setIsIconFlat(bool flat) override { marker_->setIsIconFlat(flat); }
    [[nodiscard]] bool isTitleFlat() const override { return marker_->isTitleFlat(); }
    void setIsTitleFlat(bool flat) override { marker_->setIsTitleFlat(flat); }
    [[nodiscard]] CLLocationCoordinate2D position() const override { return marker_->position(); }
    void setPosition(CLLocationCoordinate2D position) override { marker_->setPosition(position); }
    [[nodiscard]] double alpha() const override { return marker_->alpha(); }
    void setAlpha(double alpha) override { marker_->setAlpha(alpha); }
    [[nodiscard]] UIColor titleColor() const override { return marker_->titleColor(); }
    void setTitleColor(UIColor color) override { marker_->setTitleColor(color); }
    [[nodiscard]] UIColor titleHaloColor() const override { return marker_->titleHaloColor(); }
    void setTitleHaloColor(UIColor color) override { marker_->setTitleHaloColor(color); }
    [[nodiscard]] double titleSize() const override { return marker_->titleSize(); }
    void setTitleSize(double size) override { marker_->setTitleSize(size); }
    [[nodiscard]] double titleMaxWidth() const override { return marker_->titleMaxWidth(); }
    void setTitleMaxWidth(double width) override { marker_->setTitleMaxWidth(width); }
    [[nodiscard]] double titleMargin() const override { return marker_->titleMargin(); }
    void setTitleMargin(double margin) override { marker_->setTitleMargin(margin); }
    [[nodiscard]] double angle() const override { return marker_->angle(); }
    void setAngle(double degrees) override { marker_->setAngle(degrees); }
    [[nodiscard]] CGPoint anchor() const override { return marker_->anchor(); }
    void setAnchor(CGPoint anchor) override { marker_->setAnchor(anchor); }

    [[nodiscard]] std::string identifier() const override { return marker_->identifier(); }
    [[nodiscard]] PgmShape::UserInfo userInfo() const override { return marker_->userInfo(); }
    void setUserInfo(PgmShape::UserInfo userInfo) override { marker_->setUserInfo(std::move(userInfo)); }
    [[nodiscard]] std::int64_t zIndex() const override { return marker_->zIndex(); }
    void setZIndex(std::int64_t index) override { marker_->setZIndex(index); }
    [[nodiscard]] std::int64_t globalZIndex() const override { return marker_->globalZIndex(); }
    void setGlobalZIndex(std::int64_t index) override { marker_->setGlobalZIndex(index); }
    [[nodiscard]] double visibleMinZoom() const override { return marker_->visibleMinZoom(); }
    void setVisibleMinZoom(double zoom) override { marker_->setVisibleMinZoom(zoom); }
    [[nodiscard]] double visibleMaxZoom() const override { return marker_->visibleMaxZoom(); }
    void setVisibleMaxZoom(double zoom) override { marker_->setVisibleMaxZoom(zoom); }

 private:
    std::shared_ptr<PgmMarker> marker_;
};

}  // namespace pelta
