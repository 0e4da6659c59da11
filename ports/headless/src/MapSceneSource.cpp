#include "MapSceneSource.h"

#include <algorithm>
#include <cstddef>

#include "MapTransform.h"

namespace pelta {

void MapSceneSource::setShape(std::shared_ptr<const MLNShape> shape) {
    features_.clear();
    coordinateEnds_.clear();
    coordinates_.clear();
    ground_.clear();
    boxes_.clear();
    shape_ = std::move(shape);
    if (!shape_) {
        return;
    }
    if (shape_->kind() != MLNShapeKind::collection) {
        addFeature(*shape_);
        return;
    }
    const auto& members = static_cast<const MLNShapeCollectionFeature&>(*shape_).shapes();
    features_.reserve(members.size());
    coordinateEnds_.reserve(members.size());
    for (const auto& member : members) {
        if (member) {
            addFeature(*member);
        }
    }
}

void MapSceneSource::addFeature(const MLNShape& shape) {
    if (!shape.drawnKind()) {
        return;
    }
    switch (shape.kind()) {
        case MLNShapeKind::point:
            coordinates_.push_back(static_cast<const MLNPointFeature&>(shape).coordinate());
            break;
        case MLNShapeKind::polyline: {
            const auto& line = static_cast<const MLNPolylineFeature&>(shape).coordinates();
            coordinates_.insert(coordinates_.end(), line.begin(), line.end());
            break;
        }
        case MLNShapeKind::polygon:
            addRing(static_cast<const MLNPolygonFeature&>(shape).coordinates());
            break;
        case MLNShapeKind::collection:
            return;
    }
    features_.push_back(&shape);
    coordinateEnds_.push_back(static_cast<std::uint32_t>(coordinates_.size()));
}

void MapSceneSource::addRing(const std::vector<CLLocationCoordinate2D>& ring) {
    coordinates_.insert(coordinates_.end(), ring.begin(), ring.end());
    if (!ring.empty() && ring.front() != ring.back()) {
        coordinates_.push_back(ring.front());
    }
}

void MapSceneSource::projectIfNeeded() const {
    if (ground_.size() == coordinates_.size() && boxes_.size() == features_.size()) {
        return;
    }
    ground_.resize(coordinates_.size());
    std::transform(coordinates_.begin(), coordinates_.end(), ground_.begin(),
                   MapTransform::groundForCoordinate);
    boxes_.clear();
    boxes_.reserve(features_.size());
    std::size_t begin = 0;
    for (const std::size_t end : coordinateEnds_) {
        boxes_.push_back(MapBox::around({ground_.data() + begin, end - begin}));
        begin = end;
    }
}

std::span<const CGPoint> MapSceneSource::ground(std::uint32_t index) const {
    projectIfNeeded();
    const std::size_t begin = index == 0 ? 0 : coordinateEnds_[index - 1];
    return {ground_.data() + begin, coordinateEnds_[index] - begin};
}

const std::vector<MapBox>& MapSceneSource::boxes() const {
    projectIfNeeded();
    return boxes_;
}

}  // namespace pelta
