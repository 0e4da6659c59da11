#include <algorithm>
#include <cmath>

#include <pelta/Engine/MLNStyle.h>
#include <pelta/Engine/MLNStyleLayer.h>

namespace pelta {
namespace {

constexpr float highestZoom = 24;

bool isFinite(CGVector value) {
    return std::isfinite(value.dx) && std::isfinite(value.dy);
}

}  // namespace

MLNStyleLayer::MLNStyleLayer(std::string identifier, MLNStyleLayerKind kind)
    : identifier_(std::move(identifier)), kind_(kind) {}

void MLNStyleLayer::setIsVisible(bool visible) {
    if (visible != isVisible_) {
        isVisible_ = visible;
        markChanged(visibilityChange);
    }
}

void MLNStyleLayer::setMinimumZoomLevel(float zoomLevel) {
    const float clamped = std::clamp(zoomLevel, 0.0F, highestZoom);
    if (!std::isnan(zoomLevel) && clamped != minimumZoomLevel_) {
        minimumZoomLevel_ = clamped;
        markChanged(zoomRangeChange);
    }
}

void MLNStyleLayer::setMaximumZoomLevel(float zoomLevel) {
    const float clamped = std::clamp(zoomLevel, 0.0F, highestZoom);
    if (!std::isnan(zoomLevel) && clamped != maximumZoomLevel_) {
        maximumZoomLevel_ = clamped;
        markChanged(zoomRangeChange);
    }
}

void MLNStyleLayer::markChanged(std::uint32_t changes) {
    changes_ |= changes;
    if (style_ != nullptr) {
        style_->layerDidChange(*this);
    }
}

void MLNStyleLayer::assignFinite(std::optional<MLNExpression<double>>& field, MLNExpression<double> value,
                                 unsigned index) {
    if (std::isfinite(value.constant())) {
        assign(field, std::move(value), index);
    }
}

void MLNStyleLayer::assignFinite(std::optional<MLNExpression<CGVector>>& field, MLNExpression<CGVector> value,
                                 unsigned index) {
    if (isFinite(value.constant())) {
        assign(field, std::move(value), index);
    }
}

void MLNStyleLayer::assignNonNegative(std::optional<MLNExpression<double>>& field,
                                      MLNExpression<double> value, unsigned index) {
    if (value.isConstant() && value.constant() < 0 && std::isfinite(value.constant())) {
        assign(field, MLNExpression<double>(0), index);
    } else {
        assignFinite(field, std::move(value), index);
    }
}

void MLNStyleLayer::assignNonNegative(std::optional<MLNExpression<std::vector<double>>>& field,
                                      MLNExpression<std::vector<double>> value, unsigned index) {
    const auto& lengths = value.constant();
    if (std::all_of(lengths.begin(), lengths.end(),
                    [](double length) { return std::isfinite(length) && length >= 0; })) {
        assign(field, std::move(value), index);
    }
}

void MLNVectorStyleLayer::setPredicate(MLNPredicate predicate) {
    if (!(predicate == predicate_)) {
        predicate_ = std::move(predicate);
        markChanged(predicateChange);
    }
}

}  // namespace pelta
