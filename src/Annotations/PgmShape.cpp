#include <algorithm>
#include <limits>

#include <pelta/Annotations/PgmIDManager.h>
#include <pelta/Annotations/PgmShape.h>
#include <pelta/Platform/Dispatch.h>
#include <pelta/View/PgmMapView.h>

#include "View/ShapeRegistry.h"

namespace pelta {

namespace {

/// Makes the highest visible zoom an inclusive one: engine layers are no longer drawn at their maximum.
constexpr double maximumZoomMargin = 0.001;

/// The nearest single-precision number; NaN stays NaN.
float singlePrecision(double value) {
    constexpr double limit = std::numeric_limits<float>::max();
    return static_cast<float>(std::clamp(value, -limit, limit));
}

}  // namespace

std::shared_ptr<PgmShape> PgmShape::create() {
    return make<PgmShape>();
}

PgmShape::PgmShape() : shapeIndex_(PgmShapeIDHelper::atomicID().incrementAndGet()) {}

PgmShape::~PgmShape() = default;

void PgmShape::completeConstruction(std::string_view className) {
    identifier_ = std::string(className) + "_" + std::to_string(shapeIndex_);
    globalZIndex_ = defaultGlobalZIndex();
}

void PgmShape::setIdentifier(std::string identifier) {
    identifier_ = std::move(identifier);
    for (const auto& layer : styleLayers_) {
        layer->setPredicate(MLNPredicate::equal("identifier", identifier_));
    }
    updateFeature();
}

void PgmShape::setMapView(const std::shared_ptr<PgmMapView>& mapView) {
    MainQueue::sync([this, &mapView] {
        const auto self = shared_from_this();
        const auto newView = mapView;
        const auto oldView = mapView_.lock();
        mapView_ = newView;
        if (oldView) {
            oldView->removeShape(self);
        }
        if (newView) {
            newView->addShape(self);
        }
    });
}

void PgmShape::setZIndex(std::int64_t index) {
    zIndex_ = index;
    updateShapesWithReorder(true);
}

void PgmShape::setGlobalZIndex(std::int64_t index) {
    globalZIndex_ = index;
    updateShapesWithReorder(true);
}

void PgmShape::setVisibleMinZoom(double zoom) {
    visibleMinZoom_ = zoom;
    updateShapesWithReorder(false);
}

void PgmShape::setVisibleMaxZoom(double zoom) {
    visibleMaxZoom_ = zoom;
    updateShapesWithReorder(false);
}

void PgmShape::setIsVisible(bool visible) {
    isVisible_ = visible;
    updateShapesWithReorder(false);
}

void PgmShape::updateShapesWithReorder(bool reorder) {
    updateLayerProperty();
    if (!reorder) {
        return;
    }
    if (const auto view = mapView()) {
        view->setNeedReorderShapes(true);
        view->triggerRepaint();
    }
}

void PgmShape::updateLayerProperty() {
    for (const auto& layer : styleLayers_) {
        layer->setMinimumZoomLevel(singlePrecision(visibleMinZoom_));
        layer->setMaximumZoomLevel(singlePrecision(visibleMaxZoom_ + maximumZoomMargin));
        layer->setIsVisible(isVisible_);
    }
}

std::shared_ptr<MLNShapeSource> PgmShape::shapeSource() const {
    const auto view = mapView();
    const auto engine = view ? view->mapView() : nullptr;
    const auto* style = engine ? engine->style() : nullptr;
    return style ? style->sourceWithIdentifier(ShapeRegistry::sourceIdentifier) : nullptr;
}

void PgmShape::insertStyleLayers(std::initializer_list<std::shared_ptr<MLNVectorStyleLayer>> layers) {
    styleLayers_.insert(styleLayers_.begin(), layers);
}

void PgmShape::tagFeature(MLNShape& feature, std::string_view suffix) const {
    feature.attributes().set("shapeIndex", shapeIndex_);
    feature.attributes().set("identifier", identifier_ + std::string(suffix));
}

void PgmShape::setNeedsFeatureUpdate() const {
    if (const auto view = mapView()) {
        view->setNeedUpdateShapes(true);
        view->triggerRepaint();
    }
}

}  // namespace pelta
