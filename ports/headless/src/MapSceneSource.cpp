#include "MapSceneSource.h"

#include <algorithm>
#include <cstddef>

#include "MapTransform.h"

namespace pelta {

void MapSceneSource::setShape(std::shared_ptr<const MLNShape> shape) {
    features_.clear();
    featureEnds_.clear();
    ringEnds_.clear();
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
    featureEnds_.reserve(members.size());
    ringEnds_.reserve(members.size());
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
            addLine({static_cast<const MLNPointFeature&>(shape).coordinate()});
            break;
        case MLNShapeKind::polyline:
            addLine(static_cast<const MLNPolylineFeature&>(shape).coordinates());
            break;
        case MLNShapeKind::polygon: {
            const auto& area = static_cast<const MLNPolygonFeature&>(shape);
            addRing(area.coordinates());
            if (area.drawnKind() == MLNShapeKind::polygon) {
                std::for_each(area.holes().begin(), area.holes().end(),
                              [this](const auto& hole) { addRing(hole); });
            }
            break;
        }
        case MLNShapeKind::collection:
            return;
    }
    features_.push_back(&shape);
    featureEnds_.push_back(static_cast<std::uint32_t>(ringEnds_.size()));
}

void MapSceneSource::addLine(const std::vector<CLLocationCoordinate2D>& line) {
    coordinates_.insert(coordinates_.end(), line.begin(), line.end());
    ringEnds_.push_back(static_cast<std::uint32_t>(coordinates_.size()));
}

void MapSceneSource::addRing(const std::vector<CLLocationCoordinate2D>& ring) {
    addLine(ring);
    if (ring.front() != ring.back()) {
        coordinates_.push_back(ring.front());
        ++ringEnds_.back();
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
    for (std::uint32_t feature = 0; feature < size(); ++feature) {
        boxes_.push_back(MapBox::around(corners(firstRing(feature), featureEnds_[feature])));
    }
}

std::span<const CGPoint> MapSceneSource::corners(std::uint32_t ring, std::uint32_t endRing) const {
    const std::size_t begin = ring == 0 ? 0 : ringEnds_[ring - 1];
    return {ground_.data() + begin, ringEnds_[endRing - 1] - begin};
}

std::span<const CGPoint> MapSceneSource::ground(std::uint32_t index) const {
    projectIfNeeded();
    return corners(firstRing(index), featureEnds_[index]);
}

std::vector<MapLine> MapSceneSource::rings(std::uint32_t index) const {
    projectIfNeeded();
    std::vector<MapLine> rings;
    for (std::uint32_t ring = firstRing(index); ring < featureEnds_[index]; ++ring) {
        rings.push_back(corners(ring, ring + 1));
    }
    return rings;
}

const std::vector<MapBox>& MapSceneSource::boxes() const {
    projectIfNeeded();
    return boxes_;
}

}  // namespace pelta
