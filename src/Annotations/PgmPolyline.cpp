#include <array>

#include <pelta/Annotations/PgmPolyline.h>

#include "Annotations/CoordinateCheck.h"

namespace pelta {

namespace {

std::string nameOf(PgmLineCap type) {
    constexpr std::array names{"butt", "round", "square"};
    return names[static_cast<unsigned>(type) % names.size()];
}

std::string nameOf(PgmLineJoin type) {
    constexpr std::array names{"bevel", "round", "miter"};
    return names[static_cast<unsigned>(type) % names.size()];
}

}  // namespace

std::optional<PgmLineCap> PgmLineCapFromRaw(unsigned raw) noexcept {
    return raw < 3 ? std::optional(static_cast<PgmLineCap>(raw)) : std::nullopt;
}

std::optional<PgmLineJoin> PgmLineJoinFromRaw(unsigned raw) noexcept {
    return raw < 3 ? std::optional(static_cast<PgmLineJoin>(raw)) : std::nullopt;
}

std::shared_ptr<PgmPolyline> PgmPolyline::create(std::vector<CLLocationCoordinate2D> coords) {
    return make<PgmPolyline>(std::move(coords));
}

void PgmPolyline::completeConstruction(std::string_view className) {
    PgmShape::completeConstruction(className);
    updateFeature();
    requireTwoOrMore(coords_);
}

void PgmPolyline::setCoords(std::vector<CLLocationCoordinate2D> coords) {
    coords_ = std::move(coords);
    updateFeature();
}

void PgmPolyline::setWidth(double width) {
    width_.set(width);
    updateLayerProperty();
}

void PgmPolyline::setColor(UIColor color) {
    color_ = color;
    updateLayerProperty();
}

void PgmPolyline::setCapType(PgmLineCap type) {
    capType_ = type;
    updateLayerProperty();
}

void PgmPolyline::setJoinType(PgmLineJoin type) {
    joinType_ = type;
    updateLayerProperty();
}

void PgmPolyline::setPattern(std::vector<double> pattern) {
    pattern_ = std::move(pattern);
    updateLayerProperty();
}

void PgmPolyline::updateFeature() {
    feature_ = MLNPolylineFeature::polylineWithCoordinates(coords_);
    tagFeature(*feature_);
    setNeedsFeatureUpdate();
}

void PgmPolyline::updateLayerProperty() {
    if (!isAttached()) {
        return;
    }
    if (!lineLayer_) {
        const auto source = shapeSource();
        if (!source) {
            return;
        }
        lineLayer_ = makeLayer<MLNLineStyleLayer>(*source);
        insertStyleLayers({lineLayer_});
    }
    PgmShape::updateLayerProperty();
    lineLayer_->setLineWidth(width_.draw());
    lineLayer_->setLineColor(color_);
    lineLayer_->setLineJoin(nameOf(joinType_));
    lineLayer_->setLineCap(nameOf(capType_));
    lineLayer_->setLineDashPattern(pattern_);
}

}  // namespace pelta
