#pragma once

#include <any>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <pelta/Annotations/PgmImage.h>
#include <pelta/Engine/MLNShape.h>
#include <pelta/Engine/MLNShapeSource.h>
#include <pelta/Engine/MLNStyleLayer.h>
#include <pelta/Platform/Make.h>

namespace pelta {

class PgmMapView;

/// Base of everything that an application draws on a map.
///
/// A shape is seen while `mapView` is set: the map view then holds it, so the application need not. It is
/// stacked by `globalZIndex`, then `zIndex`, then age. Changes show at the next frame; the few properties
/// that wait for another change say so. An application's own subclass is made with `make<T>(…)`. Main thread
/// only, but for `setMapView`.
///
/// The map calls the overridable members of a shape before a frame and while the shape is put on it. They may
/// take this and other shapes off the map, put others on it, load a style and release the map.
class PgmShape : public std::enable_shared_from_this<PgmShape> {
 public:
    /// An application's own values by name.
    using UserInfo = std::map<std::string, std::any, std::less<>>;
    /// Answers true when it has dealt with the tap.
    using TouchEvent = std::function<bool(PgmShape&)>;
    /// Engine layers, lowest first.
    using StyleLayers = std::vector<std::shared_ptr<MLNVectorStyleLayer>>;

    /// A shape that draws nothing by itself.
    [[nodiscard]] static std::shared_ptr<PgmShape> create();
    /// For `make`; use the factories.
    PgmShape();
    virtual ~PgmShape();
    PgmShape(const PgmShape&) = delete;
    PgmShape& operator=(const PgmShape&) = delete;
    /// For `make`: gives the shape its identifier and stacking. Overrides call the base first.
    virtual void completeConstruction(std::string_view className);

    /// Number of the shape, unique in the process, counted from 1.
    [[nodiscard]] std::uint64_t shapeIndex() const noexcept { return shapeIndex_; }
    /// Class name, underscore and number at first, such as "PgmPolyline_1"; ties the shape's layers to its
    /// features, so nothing else on the map may have it. Layers that exist keep the name they were made with.
    [[nodiscard]] const std::string& identifier() const noexcept { return identifier_; }
    void setIdentifier(std::string identifier);
    /// Free for the application.
    [[nodiscard]] const UserInfo& userInfo() const noexcept { return userInfo_; }
    void setUserInfo(UserInfo userInfo) { userInfo_ = std::move(userInfo); }

    /// @name On the map
    /// @{
    /// The map view that shows the shape, held weakly; null when there is none.
    [[nodiscard]] virtual std::shared_ptr<PgmMapView> mapView() const { return mapView_.lock(); }
    /// Takes the shape from its map view and puts it on another; null only takes it away. The same view
    /// again takes it away and puts it back. Any thread: all of the work is done on the main thread, and the
    /// caller waits for it as in `MainQueue::sync`.
    virtual void setMapView(const std::shared_ptr<PgmMapView>& mapView);
    /// True while the shape has a map view.
    [[nodiscard]] bool isAttached() const noexcept { return !mapView_.expired(); }
    /// What a tap on the shape calls; empty at first.
    [[nodiscard]] const TouchEvent& touchEvent() const noexcept { return touchEvent_; }
    void setTouchEvent(TouchEvent event) { touchEvent_ = std::move(event); }
    /// @}

    /// @name Stacking and visibility
    /// @{
    /// Order among shapes of equal `globalZIndex`, 0 at first; higher lies above.
    [[nodiscard]] std::int64_t zIndex() const noexcept { return zIndex_; }
    void setZIndex(std::int64_t index);
    /// First order of stacking, `defaultGlobalZIndex()` at first; higher lies above. Shapes below 0 lie under
    /// the labels of the base map.
    [[nodiscard]] std::int64_t globalZIndex() const noexcept { return globalZIndex_; }
    void setGlobalZIndex(std::int64_t index);
    /// Lowest zoom at which the shape is seen, 1 at first.
    [[nodiscard]] double visibleMinZoom() const noexcept { return visibleMinZoom_; }
    void setVisibleMinZoom(double zoom);
    /// Highest zoom at which the shape is seen, that zoom included; 20 at first.
    [[nodiscard]] double visibleMaxZoom() const noexcept { return visibleMaxZoom_; }
    void setVisibleMaxZoom(double zoom);
    /// True at first.
    [[nodiscard]] bool isVisible() const noexcept { return isVisible_; }
    void setIsVisible(bool visible);
    /// @}

    /// @name For subclasses and the map view
    /// @{
    /// The geometry with the attributes "shapeIndex" and "identifier"; null draws nothing.
    [[nodiscard]] virtual std::shared_ptr<MLNShape> feature() const { return nullptr; }
    /// The picture that the shape's layers need in the style; null when they need none.
    [[nodiscard]] virtual std::shared_ptr<PgmImage> shapeImage() const { return nullptr; }
    /// The engine layers that draw the shape, lowest first; empty until it was first drawn.
    [[nodiscard]] const StyleLayers& styleLayers() const noexcept { return styleLayers_; }
    void setStyleLayers(StyleLayers layers) { styleLayers_ = std::move(layers); }
    /// Stacking of a new shape of this class.
    [[nodiscard]] virtual std::int64_t defaultGlobalZIndex() const { return 0; }
    /// Updates the layers, and with `reorder` has the map stack its shapes anew at the next frame.
    virtual void updateShapesWithReorder(bool reorder);
    /// Brings the layers up to date; makes them first when the map has a style to put them in. The base sets
    /// zoom range and visibility.
    virtual void updateLayerProperty();
    /// Brings the geometry up to date and has the map take it over at the next frame.
    virtual void updateFeature() {}
    /// @}

 protected:
    /// The map's source that holds all shapes; null while detached or while no style has loaded.
    [[nodiscard]] std::shared_ptr<MLNShapeSource> shapeSource() const;
    /// A layer over `source` that draws only features with this shape's identifier, which with `suffix` is
    /// the layer's own.
    template <class Layer>
    [[nodiscard]] std::shared_ptr<Layer> makeLayer(const MLNShapeSource& source,
                                                   std::string_view suffix = {}) const {
        auto layer = std::make_shared<Layer>(identifier_ + std::string(suffix), source);
        layer->setPredicate(MLNPredicate::equal("identifier", identifier_));
        return layer;
    }
    /// Puts layers below those that the shape has.
    void insertStyleLayers(std::initializer_list<std::shared_ptr<MLNVectorStyleLayer>> layers);
    /// Sets the two attributes that tie a feature to this shape.
    void tagFeature(MLNShape& feature, std::string_view suffix = {}) const;
    /// Has the map view, if any, take over the geometry at the next frame.
    void setNeedsFeatureUpdate() const;

 private:
    std::uint64_t shapeIndex_;
    StyleLayers styleLayers_;
    std::string identifier_;
    UserInfo userInfo_;
    std::weak_ptr<PgmMapView> mapView_;
    std::int64_t zIndex_ = 0;
    std::int64_t globalZIndex_ = 0;
    double visibleMinZoom_ = 1.0;
    double visibleMaxZoom_ = 20.0;
    TouchEvent touchEvent_;
    bool isVisible_ = true;
};

}  // namespace pelta
