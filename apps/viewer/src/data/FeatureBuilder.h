#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "data/GeometryBuilder.h"
#include "data/MapData.h"
#include "data/StyleProperties.h"

namespace pelta::viewer {

/// Collects one feature, whatever the order of its members, and adds it to the data when it is complete.
class FeatureBuilder {
 public:
    explicit FeatureBuilder(MapData& data) : data_(data) {}

    /// Starts a feature anew; the index is its place in its collection.
    void begin(std::size_t index);
    [[nodiscard]] std::size_t index() const { return index_; }

    /// A fault that rules the whole feature out; the first one is told.
    void fail(std::string reason);
    void setProperty(std::string_view name, const ScalarValue& value);
    /// A property whose value is an object or an array.
    void setNestedProperty(std::string_view name);
    /// The "coordinates" member that is being read.
    [[nodiscard]] GeometryBuilder& coordinates() { return coordinates_; }
    /// A geometry of the given type is complete with the coordinates read last.
    void addGeometry(std::string_view type);
    /// A "geometry" member begins, and what an earlier one held is forgotten.
    ///
    /// @param isNull  true for the geometry of a feature that is nowhere.
    void beginGeometry(bool isNull);
    /// The feature is complete: its shapes or its faults go into the data, or it is counted as one that is
    /// nowhere.
    void finish();

 private:
    MapData& data_;
    std::size_t index_ = 0;
    bool isNowhere_ = false;
    std::optional<std::string> fault_;
    std::vector<std::string> propertyFaults_;
    ShapeStyle style_;
    GeometryBuilder coordinates_;
    FeatureGeometry geometry_;
};

}  // namespace pelta::viewer
