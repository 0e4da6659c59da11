#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "data/MapData.h"

namespace pelta::viewer {

/// One point, line or ring of a feature, as a range of the feature's coordinates.
struct GeometryPart {
    ShapeKind kind = ShapeKind::marker;
    std::size_t firstCoordinate = 0;
    std::size_t coordinateCount = 0;
};

/// The parts of one feature's geometry.
struct FeatureGeometry {
    std::vector<CLLocationCoordinate2D> coordinates;
    std::vector<GeometryPart> parts;
    std::size_t holeCount = 0;  ///< Inner rings, which are not among the parts.

    void clear();
};

/// Collects the nested arrays of a "coordinates" member before their meaning is known: the member "type" may
/// come after them.
class GeometryBuilder {
 public:
    void clear();
    void beginArray();
    void addNumber(double value);
    /// A text, an object and the like where only numbers and arrays belong.
    void addOther();
    void endArray();

    /// Reads what was collected as the coordinates of a geometry type and adds its parts.
    ///
    /// @return why they are not; then nothing usable was added.
    [[nodiscard]] std::optional<std::string> finish(std::string_view typeName, FeatureGeometry& geometry);

    /// True for the six types that have coordinates.
    [[nodiscard]] static bool isKnownType(std::string_view type);

 private:
    /// End of an array that holds arrays, or nothing.
    struct Closing {
        int depth = 0;
        std::size_t positionCount = 0;  ///< Positions before it, in the whole member.
    };

    void fail(std::string reason);
    void finishPosition();
    [[nodiscard]] std::optional<std::string> addRanges(ShapeKind kind, int positionDepth,
                                                       FeatureGeometry& geometry) const;

    std::vector<CLLocationCoordinate2D> positions_;
    std::vector<Closing> closings_;
    std::optional<std::string> fault_;
    CLLocationCoordinate2D position_;
    std::size_t numberCount_ = 0;  ///< In the position that is open.
    int depth_ = 0;
    int positionDepth_ = 0;  ///< Of the arrays that hold numbers; 0 while none was seen.
};

}  // namespace pelta::viewer
