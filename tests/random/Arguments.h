#pragma once

#include <cstddef>

#include "Operation.h"
#include "Values.h"
#include "World.h"

namespace pelta::random {

/// @file
/// What the arguments of an operation stand for, by their place in its words.

[[nodiscard]] inline double numberAt(const Operation& operation, std::size_t place) {
    return numbers()[operation.arguments[place]].value;
}
[[nodiscard]] inline CLLocationCoordinate2D coordinateAt(const Operation& operation, std::size_t place) {
    return coordinates()[operation.arguments[place]].value;
}
[[nodiscard]] inline const std::string& textAt(const Operation& operation, std::size_t place) {
    return texts()[operation.arguments[place]].value;
}
[[nodiscard]] inline UIColor colourAt(const Operation& operation, std::size_t place) {
    return colours()[operation.arguments[place]].value;
}
[[nodiscard]] inline CGSize sizeAt(const Operation& operation, std::size_t place) {
    return sizes()[operation.arguments[place]].value;
}
[[nodiscard]] inline CGPoint placeAt(const Operation& operation, std::size_t place) {
    return places()[operation.arguments[place]].value;
}
[[nodiscard]] inline double secondsAt(const Operation& operation, std::size_t place) {
    return seconds()[operation.arguments[place]].value;
}
[[nodiscard]] inline bool flagAt(const Operation& operation, std::size_t place) {
    return operation.arguments[place] != 0;
}
[[nodiscard]] inline std::shared_ptr<PgmMapView> mapAt(const World& world, const Operation& operation,
                                                       std::size_t place) {
    const std::uint32_t slot = operation.arguments[place];
    return slot < mapCount ? world.maps[slot].view : nullptr;
}
template <class Shape = PgmShape>
[[nodiscard]] std::shared_ptr<Shape> shapeAt(const World& world, const Operation& operation,
                                             std::size_t place) {
    return world.shape<Shape>(operation.arguments[place]);
}

/// An operation on one shape of a type, which does nothing to others: `onShape<PgmMarker, work>`.
template <class Shape, void (*work)(Shape&, const Operation&)>
void onShape(World& world, const Operation& operation) {
    if (const auto shape = shapeAt<Shape>(world, operation, 0)) {
        work(*shape, operation);
    }
}

/// The same for the map that is the first argument.
template <void (*work)(PgmMapView&, const Operation&)>
void onMap(World& world, const Operation& operation) {
    if (const auto map = mapAt(world, operation, 0)) {
        work(*map, operation);
    }
}

/// @name The kinds of operations, by what they act on
/// @{
[[nodiscard]] std::span<const OperationKind> shapeOperations();
[[nodiscard]] std::span<const OperationKind> lookOperations();
[[nodiscard]] std::span<const OperationKind> mapOperations();
[[nodiscard]] std::span<const OperationKind> cameraOperations();
[[nodiscard]] std::span<const OperationKind> inputOperations();
[[nodiscard]] std::span<const OperationKind> clusterOperations();
/// @}

}  // namespace pelta::random
