#include "data/FeatureBuilder.h"

#include <utility>

namespace pelta::viewer {

void FeatureBuilder::begin(std::size_t index) {
    index_ = index;
    isNowhere_ = false;
    fault_.reset();
    propertyFaults_.clear();
    style_ = {};
    coordinates_.clear();
    geometry_.clear();
}

void FeatureBuilder::fail(std::string reason) {
    if (!fault_) {
        fault_ = std::move(reason);
    }
}

void FeatureBuilder::setProperty(std::string_view name, const ScalarValue& value) {
    if (auto fault = applyProperty(name, value, style_)) {
        propertyFaults_.push_back(std::move(*fault));
    }
}

void FeatureBuilder::setNestedProperty(std::string_view name) {
    if (isStyleProperty(name)) {
        propertyFaults_.push_back(std::string(name) + " is an object or an array; a plain value is needed");
    }
}

void FeatureBuilder::addGeometry(std::string_view type) {
    if (auto fault = coordinates_.finish(type, geometry_)) {
        fail(std::move(*fault));
    }
    coordinates_.clear();
}

void FeatureBuilder::beginGeometry(bool isNull) {
    isNowhere_ = isNull;
    coordinates_.clear();
    geometry_.clear();
}

void FeatureBuilder::finish() {
    if (!fault_ && isNowhere_) {
        ++data_.nowhereCount;
        return;
    }
    if (fault_ || geometry_.parts.empty()) {
        data_.addProblem(index_, fault_ ? *fault_ : "its geometry has no positions");
        return;
    }
    for (const std::string& fault : propertyFaults_) {
        data_.addProblem(index_, fault + "; its default is used");
    }
    if (geometry_.holeCount > 0) {
        data_.addLeftOut(index_, std::to_string(geometry_.holeCount) +
                                     (geometry_.holeCount == 1 ? " hole is" : " holes are") +
                                     " left out: areas are drawn by their outer ring");
    }
    const std::size_t base = data_.coordinates.size();
    const bool hasCircles = style_.radius.has_value();
    for (const GeometryPart& part : geometry_.parts) {
        const bool isCircle = part.kind == ShapeKind::marker && hasCircles;
        data_.shapes.push_back({isCircle ? ShapeKind::circle : part.kind, data_.styles.size(),
                                base + part.firstCoordinate, part.coordinateCount});
    }
    data_.coordinates.insert(data_.coordinates.end(), geometry_.coordinates.begin(),
                             geometry_.coordinates.end());
    data_.styles.push_back(std::move(style_));
    ++data_.featureCount;
}

}  // namespace pelta::viewer
