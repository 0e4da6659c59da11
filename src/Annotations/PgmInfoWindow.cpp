#include <cmath>
#include <utility>

#include <pelta/Annotations/PgmInfoWindow.h>
#include <pelta/Annotations/PgmMarker.h>
#include <pelta/Platform/Dispatch.h>
#include <pelta/Platform/Log.h>
#include <pelta/View/PgmMapView.h>

#include "Annotations/InfoWindowBubble.h"
#include "View/ShapeRegistry.h"

namespace pelta {

namespace {

constexpr std::string_view imageNameAttribute = "iconImageName";
constexpr std::string_view offsetAttribute = "iconOffset";
constexpr UIColor iconHaloColor = UIColor::white().withAlpha(0.5);
constexpr double iconHaloWidth = 1;

double finiteOrZero(double value) {
    return std::isfinite(value) ? value : 0;
}

std::string describe(CGSize size) {
    return std::to_string(std::lround(size.width)) + " x " + std::to_string(std::lround(size.height));
}

}  // namespace

std::shared_ptr<PgmInfoWindow> PgmInfoWindow::create() {
    return make<PgmInfoWindow>();
}

PgmInfoWindow::PgmInfoWindow() : feature_(MLNPointFeature::create()) {}

void PgmInfoWindow::setMapView(const std::shared_ptr<PgmMapView>& mapView) {
    MainQueue::sync([this, &mapView] {
        const auto self = shared_from_this();
        const auto newView = mapView;
        iconImage_ = nullptr;
        updateFeature();
        PgmShape::setMapView(newView);
    });
}

void PgmInfoWindow::setMarker(const std::shared_ptr<PgmMarker>& marker) {
    const auto self = std::static_pointer_cast<PgmInfoWindow>(shared_from_this());
    const auto opened = marker;
    const auto former = marker_.lock();
    if (former && former->infoWindow() == self) {
        former->setInfoWindow(nullptr);
    }
    marker_ = opened;
    position_.reset();
    if (opened) {
        opened->setInfoWindow(self);
        position_ = opened->position();
    }
    updateFeature();
    if (isAttached()) {
        iconImageCheck();
    }
}

void PgmInfoWindow::setPosition(std::optional<CLLocationCoordinate2D> position) {
    position_ = position;
    marker_.reset();
    updateFeature();
    if (isAttached()) {
        iconImageCheck();
    }
}

void PgmInfoWindow::setOffset(CGPoint offset) {
    offset_ = offset;
    updateLayerProperty();
}

void PgmInfoWindow::setAlpha(CGFloat alpha) {
    alpha_ = alpha;
    updateLayerProperty();
}

void PgmInfoWindow::setImageDataSource(const std::shared_ptr<PgmImageDataSource>& source) {
    imageDataSource_ = source;
    invalidate();
}

void PgmInfoWindow::invalidate() {
    if (isAttached()) {
        iconImageCheck();
    }
}

void PgmInfoWindow::iconImageCheck() {
    MainQueue::async([weak = weak_from_this()] {
        if (const auto self = weak.lock()) {
            static_cast<PgmInfoWindow&>(*self).drawIconImage();
        }
    });
}

void PgmInfoWindow::drawIconImage() {
    const auto view = contentView();
    auto picture = view ? view->snapshot() : std::nullopt;
    if (!picture) {
        if (view) {
            dPrint("An info window keeps its picture: a view of " + describe(view->bounds().size) +
                   " points cannot be drawn. Give it an area of at most 16384 pixels on a side.");
        }
        return;
    }
    iconImage_ = PgmImage::imageWith(*std::move(picture));
    updateFeature();
}

/// What is to be drawn now; null to leave the picture as it is.
std::shared_ptr<UIView> PgmInfoWindow::contentView() {
    const auto source = imageDataSource_.lock();
    if (auto* views = dynamic_cast<PgmImageViewDataSource*>(source.get())) {
        return views->view(*this);
    }
    if (auto* texts = dynamic_cast<PgmImageTextDataSource*>(source.get())) {
        const auto title = texts->title(*this);
        return title && !title->empty() ? makeInfoWindowView(*title) : nullptr;
    }
    return makeInfoWindowView({});
}

void PgmInfoWindow::writeIconOffset() {
    const auto opened = marker_.lock();
    const CGVector above = opened ? opened->mInfoWindowOffset() : CGVector{};
    feature_->attributes().set(offsetAttribute, std::vector<double>{finiteOrZero(shownOffset_.x + above.dx),
                                                                    finiteOrZero(shownOffset_.y + above.dy)});
}

void PgmInfoWindow::markerIconDidMove() {
    if (shownImage_) {
        writeIconOffset();
        setNeedsFeatureUpdate();
    }
}

void PgmInfoWindow::show(const std::shared_ptr<PgmImage>& image) {
    const auto former = std::exchange(shownImage_, image);
    const auto view = mapView();
    if (view && former != image) {
        view->shapes_->retirePicture(former);
    }
}

void PgmInfoWindow::updateFeature() {
    const auto view = mapView();
    if (view) {
        view->setNeedCheckShapeImage(true);
        view->triggerRepaint();
    }
    if (!position_) {
        return;
    }
    feature_->setCoordinate(*position_);
    feature_->attributes() = {};
    tagFeature(*feature_);
    show(iconImage_);
    shownOffset_ = {finiteOrZero(offset_.x), finiteOrZero(offset_.y)};
    if (shownImage_) {
        feature_->attributes().set(imageNameAttribute, shownImage_->reuseIdentifier());
        writeIconOffset();
    }
    setNeedsFeatureUpdate();
}

void PgmInfoWindow::updateLayerProperty() {
    if (!symbolLayer_) {
        const auto source = shapeSource();
        if (!source) {
            return;
        }
        symbolLayer_ = makeLayer<MLNSymbolStyleLayer>(*source);
        insertStyleLayers({symbolLayer_});
    }
    PgmShape::updateLayerProperty();
    symbolLayer_->setIconImageName(MLNExpression<std::string>::expressionForKeyPath(imageNameAttribute));
    symbolLayer_->setIconOffset(MLNExpression<CGVector>::expressionForKeyPath(offsetAttribute));
    symbolLayer_->setIconScale(1.0);
    symbolLayer_->setIconOpacity(alpha_);
    symbolLayer_->setIconHaloColor(iconHaloColor);
    symbolLayer_->setIconHaloWidth(iconHaloWidth);
    symbolLayer_->setIconAllowsOverlap(true);
    symbolLayer_->setIconIgnoresPlacement(true);
    symbolLayer_->setIconAnchor(std::string("bottom"));
}

}  // namespace pelta
