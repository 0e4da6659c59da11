#include <pelta/Annotations/PgmAreaShape.h>

namespace pelta {

namespace {

constexpr std::string_view outlineSuffix = "_line";

}  // namespace

void PgmAreaShape::setFillColor(UIColor color) {
    fillColor_ = color;
    updateLayerProperty();
}

void PgmAreaShape::setStrokeWidth(double width) {
    strokeWidth_.set(width);
    updateLayerProperty();
}

void PgmAreaShape::setStrokeColor(UIColor color) {
    strokeColor_ = color;
    updateLayerProperty();
}

void PgmAreaShape::setRing(const std::vector<CLLocationCoordinate2D>& ring,
                           const std::vector<std::vector<CLLocationCoordinate2D>>& holes) {
    auto area = MLNPolygonFeature::polygonWithCoordinates(ring, holes);
    tagFeature(*area);
    auto outline = MLNPolylineFeature::polylineWithCoordinates(ring);
    tagFeature(*outline, outlineSuffix);
    feature_ = MLNShapeCollectionFeature::shapeCollectionWithShapes({std::move(area), std::move(outline)});
    setNeedsFeatureUpdate();
}

void PgmAreaShape::clearRing() {
    feature_.reset();
    setNeedsFeatureUpdate();
}

void PgmAreaShape::updateLayerProperty() {
    if (!isAttached()) {
        return;
    }
    if (!fillLayer_ || !lineLayer_) {
        const auto source = shapeSource();
        if (!source) {
            return;
        }
        fillLayer_ = makeLayer<MLNFillStyleLayer>(*source);
        // Selects the area, whose ring it strokes; the separate outline feature is drawn by no layer.
        lineLayer_ = makeLayer<MLNLineStyleLayer>(*source, outlineSuffix);
        insertStyleLayers({fillLayer_, lineLayer_});
    }
    PgmShape::updateLayerProperty();
    fillLayer_->setFillColor(fillColor_);
    lineLayer_->setLineWidth(strokeWidth_.draw());
    lineLayer_->setLineColor(strokeColor_);
    lineLayer_->setLineJoin(std::string("round"));
}

}  // namespace pelta
