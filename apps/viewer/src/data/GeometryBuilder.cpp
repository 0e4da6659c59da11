#include "data/GeometryBuilder.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "data/Text.h"

namespace pelta::viewer {

namespace {

struct GeometryType {
    std::string_view name;
    ShapeKind kind;
    int positionDepth;  ///< Arrays around a number.
};

constexpr std::array<GeometryType, 6> geometryTypes{{
    {"Point", ShapeKind::marker, 1},
    {"MultiPoint", ShapeKind::marker, 2},
    {"LineString", ShapeKind::line, 2},
    {"MultiLineString", ShapeKind::line, 3},
    {"Polygon", ShapeKind::area, 3},
    {"MultiPolygon", ShapeKind::area, 4},
}};

const GeometryType* findType(std::string_view name) {
    const auto found = std::find_if(geometryTypes.begin(), geometryTypes.end(),
                                    [name](const GeometryType& type) { return type.name == name; });
    return found == geometryTypes.end() ? nullptr : found;
}

std::size_t leastPositions(ShapeKind kind) {
    return kind == ShapeKind::area ? 3 : 2;
}

}  // namespace

void FeatureGeometry::clear() {
    coordinates.clear();
    parts.clear();
    holeCount = 0;
}

bool GeometryBuilder::isKnownType(std::string_view type) {
    return findType(type) != nullptr;
}

void GeometryBuilder::clear() {
    positions_.clear();
    closings_.clear();
    fault_.reset();
    numberCount_ = 0;
    depth_ = 0;
    positionDepth_ = 0;
}

void GeometryBuilder::fail(std::string reason) {
    if (!fault_) {
        fault_ = std::move(reason);
    }
}

void GeometryBuilder::beginArray() {
    if (numberCount_ > 0) {
        fail("an array stands among the numbers of a position");
    }
    ++depth_;
}

void GeometryBuilder::addNumber(double value) {
    if (positionDepth_ == 0) {
        positionDepth_ = depth_;
    }
    if (positionDepth_ != depth_) {
        fail("the coordinates are nested unevenly");
    }
    if (numberCount_ == 0) {
        position_.longitude = value;
    } else if (numberCount_ == 1) {
        position_.latitude = value;
    }
    ++numberCount_;
}

void GeometryBuilder::addOther() {
    fail("a coordinate is not a number");
}

void GeometryBuilder::endArray() {
    if (numberCount_ > 0) {
        finishPosition();
    } else {
        closings_.push_back({depth_, positions_.size()});
    }
    --depth_;
}

void GeometryBuilder::finishPosition() {
    const std::string place = "position " + std::to_string(positions_.size());
    if (numberCount_ < 2) {
        fail(place + " has one number; longitude and latitude are needed");
    } else if (!(std::abs(position_.latitude) <= 90)) {
        fail(place + ": latitude " + numberText(position_.latitude) +
             " is outside -90 to 90 (longitude comes first, in degrees)");
    } else if (!(std::abs(position_.longitude) <= 180)) {
        fail(place + ": longitude " + numberText(position_.longitude) + " is outside -180 to 180");
    }
    positions_.push_back(position_);
    numberCount_ = 0;
}

std::optional<std::string> GeometryBuilder::finish(std::string_view typeName, FeatureGeometry& geometry) {
    const GeometryType* type = findType(typeName);
    if (type == nullptr) {
        return "unknown geometry type " + inQuotes(typeName);
    }
    if (fault_) {
        return fault_;
    }
    if (positions_.empty()) {
        return "its geometry has no positions";
    }
    const bool hasEmptyPosition =
        std::any_of(closings_.begin(), closings_.end(),
                    [type](const Closing& closing) { return closing.depth >= type->positionDepth; });
    if (positionDepth_ != type->positionDepth || hasEmptyPosition) {
        return "its coordinates are not nested as those of a " + std::string(typeName);
    }
    return addRanges(type->kind, type->positionDepth, geometry);
}

std::optional<std::string> GeometryBuilder::addRanges(ShapeKind kind, int positionDepth,
                                                      FeatureGeometry& geometry) const {
    const std::size_t base = geometry.coordinates.size();
    geometry.coordinates.insert(geometry.coordinates.end(), positions_.begin(), positions_.end());
    if (kind == ShapeKind::marker) {
        for (std::size_t i = 0; i < positions_.size(); ++i) {
            geometry.parts.push_back({kind, base + i, 1});
        }
        return std::nullopt;
    }
    std::size_t first = 0;
    bool isOuterRing = true;
    for (const Closing& closing : closings_) {
        if (closing.depth != positionDepth - 1) {
            isOuterRing = true;
            continue;
        }
        const std::size_t count = closing.positionCount - first;
        if (count < leastPositions(kind)) {
            return std::string(kind == ShapeKind::area ? "a ring" : "a line") + " has " +
                   std::to_string(count) + (count == 1 ? " position" : " positions") + "; at least " +
                   std::to_string(leastPositions(kind)) + " are needed";
        }
        if (kind == ShapeKind::line || isOuterRing) {
            geometry.parts.push_back({kind, base + first, count});
        } else {
            ++geometry.holeCount;
        }
        isOuterRing = false;
        first = closing.positionCount;
    }
    return std::nullopt;
}

}  // namespace pelta::viewer
