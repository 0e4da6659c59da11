#include <utility>

#include <pelta/Annotations/PgmInfoWindow.h>
#include <pelta/Annotations/PgmMarker.h>
#include <pelta/Platform/UIWindow.h>
#include <pelta/View/PgmMapView.h>

#include "Annotations/MarkerLayout.h"

namespace pelta {

namespace {

constexpr double titleHaloWidth = 2;
constexpr double iconHaloWidth = 1;
constexpr UIColor iconHaloColor = UIColor::white().withAlpha(0.5);

std::string alignment(bool isFlat) {
    return isFlat ? "map" : "viewport";
}

/// The font list of every title, made once.
const MLNExpression<std::vector<std::string>>& titleFontNames() {
    static const MLNExpression<std::vector<std::string>> names(std::vector<std::string>{"NotoSansRegular"});
    return names;
}

std::shared_ptr<PgmImage> orDefault(std::shared_ptr<PgmImage> image) {
    if (!image) {
        image = PgmImage::markerImageRed();
    }
    return image;
}

}  // namespace

std::shared_ptr<PgmMarker> PgmMarker::create() {
    return make<PgmMarker>();
}

std::shared_ptr<PgmMarker> PgmMarker::markerWithPosition(CLLocationCoordinate2D position) {
    return make<PgmMarker>(position);
}

std::shared_ptr<PgmMarker> PgmMarker::markerWithIconImage(std::shared_ptr<PgmImage> image) {
    return make<PgmMarker>(CLLocationCoordinate2D{}, std::move(image));
}

std::shared_ptr<PgmMarker> PgmMarker::markerWithPositionIconImage(CLLocationCoordinate2D position,
                                                                  std::shared_ptr<PgmImage> image) {
    return make<PgmMarker>(position, std::move(image));
}

PgmMarker::PgmMarker(CLLocationCoordinate2D position, std::shared_ptr<PgmImage> iconImage)
    : feature_(MLNPointFeature::create()), iconImage_(orDefault(std::move(iconImage))), position_(position) {}

void PgmMarker::completeConstruction(std::string_view className) {
    PgmShape::completeConstruction(className);
    updateFeature();
}

void PgmMarker::setPosition(CLLocationCoordinate2D position) {
    position_ = position;
    updateFeature();
}

void PgmMarker::setIconImage(std::shared_ptr<PgmImage> image) {
    iconImage_ = orDefault(std::move(image));
    propertyDidChange();
}

void PgmMarker::setIconScale(double scale) {
    iconScale_.set(scale);
    propertyDidChange();
}

void PgmMarker::setIsIconFlat(bool flat) {
    isIconFlat_ = flat;
    propertyDidChange();
}

void PgmMarker::setTitle(std::string title) {
    title_ = std::move(title);
    propertyDidChange();
}

void PgmMarker::setTitleColor(UIColor color) {
    titleColor_ = color;
    propertyDidChange();
}

void PgmMarker::setTitleHaloColor(UIColor color) {
    titleHaloColor_ = color;
    propertyDidChange();
}

void PgmMarker::setTitleSize(double size) {
    titleSize_.set(size);
    propertyDidChange();
}

void PgmMarker::setTitleMaxWidth(double width) {
    titleMaxWidth_.set(width);
    propertyDidChange();
}

void PgmMarker::setTitleMargin(double margin) {
    titleMargin_.set(margin);
    propertyDidChange();
}

void PgmMarker::setIsTitleFlat(bool flat) {
    isTitleFlat_ = flat;
    propertyDidChange();
}

void PgmMarker::setIsAllowOverlapMarkers(bool allow) {
    isAllowOverlapMarkers_ = allow;
    propertyDidChange();
}

void PgmMarker::setIsAllowOverlapTitle(bool allow) {
    isAllowOverlapTitle_ = allow;
    propertyDidChange();
}

void PgmMarker::setIsAllowOverlapSymbols(bool allow) {
    isAllowOverlapSymbols_ = allow;
    propertyDidChange();
}

void PgmMarker::propertyDidChange() {
    updateLayerProperty();
    if (const auto window = infoWindow_) {
        window->updateLayerProperty();
    }
}

void PgmMarker::updateShapesWithReorder(bool reorder) {
    PgmShape::updateShapesWithReorder(reorder);
    if (const auto window = infoWindow_) {
        window->updateShapesWithReorder(reorder);
    }
}

void PgmMarker::setInfoWindow(std::shared_ptr<PgmInfoWindow> window) {
    std::erase_if(openWindows_, [&](const auto& each) {
        const auto open = each.lock();
        return !open || open == window || open->marker().get() != this;
    });
    if (window) {
        openWindows_.push_back(window);
    }
    infoWindow_ = std::move(window);
}

void PgmMarker::setInfoWindowOffset(CGVector offset) {
    if (std::exchange(infoWindowOffset_, offset) == offset) {
        return;
    }
    for (const auto& each : openWindows_) {
        if (const auto window = each.lock(); window && window->marker().get() == this) {
            window->markerIconDidMove();
        }
    }
}

void PgmMarker::updateFeature() {
    tagFeature(*feature_);
    feature_->setCoordinate(position_);
    setNeedsFeatureUpdate();
}

void PgmMarker::updateLayerProperty() {
    const auto view = mapView();
    if (!view) {
        return;
    }
    if (!symbolLayer_) {
        const auto source = shapeSource();
        if (!source) {
            return;
        }
        symbolLayer_ = makeLayer<MLNSymbolStyleLayer>(*source);
        insertStyleLayers({symbolLayer_});
    }
    PgmShape::updateLayerProperty();
    applyTitle(*symbolLayer_);
    view->setNeedCheckShapeImage(true);
    view->triggerRepaint();
    applyIcon(*symbolLayer_);
    applyOffsets(*symbolLayer_);
}

void PgmMarker::applyTitle(MLNSymbolStyleLayer& layer) {
    layer.setText(title_);
    layer.setTextFontNames(titleFontNames());
    layer.setTextColor(titleColor_);
    layer.setTextFontSize(titleSize_.draw());
    layer.setTextAllowsOverlap(isAllowOverlapTitle_);
    // The engine has one flag for icons, and isAllowOverlapMarkers has the last word over
    // isAllowOverlapSymbols. Writing both in turn would mark every layer changed at every update.
    layer.setIconAllowsOverlap(isAllowOverlapMarkers_);
    layer.setTextOpacity(alpha_.draw());
    layer.setTextHaloColor(titleHaloColor_);
    layer.setTextHaloWidth(titleHaloWidth);
    layer.setTextAnchor(std::string("top"));
    layer.setTextOptional(true);
    layer.setMaximumTextWidth(ems(titleMaxWidth_.draw(), titleSize_.draw()));
}

void PgmMarker::applyIcon(MLNSymbolStyleLayer& layer) {
    layer.setIconImageName(iconImage_->reuseIdentifier());
    layer.setIconScale(iconScale_.draw());
    layer.setIconOpacity(alpha_.draw());
    layer.setIconRotation(angle_.draw());
    layer.setIconHaloColor(iconHaloColor);
    layer.setIconHaloWidth(iconHaloWidth);
    layer.setIconAnchor(std::string("center"));
    layer.setTextPitchAlignment(alignment(isTitleFlat_));
    layer.setIconPitchAlignment(alignment(isIconFlat_));
    layer.setIconRotationAlignment(alignment(isIconFlat_));
}

void PgmMarker::applyOffsets(MLNSymbolStyleLayer& layer) {
    const auto layout = layoutMarker({.pictureSize = iconImage_->image().size(),
                                      .iconScale = iconScale_.draw(),
                                      .angle = angle_.draw(),
                                      .anchor = anchor_,
                                      .titleSize = titleSize_.draw(),
                                      .titleMargin = titleMargin_.draw(),
                                      .screenScale = UIScreen::scale()});
    layer.setIconOffset(layout.iconOffset);
    layer.setTextOffset(layout.textOffset);
    setInfoWindowOffset(layout.infoWindowOffset);
}

}  // namespace pelta
