#pragma once

#include <type_traits>
#include <utility>

#include "Operation.h"
#include "World.h"

namespace pelta::random {

/// @name Kinds of operations on the object that is the first argument, which do nothing where it is not there
/// @{
/// @param work  called with the object and the operation.
template <class Work>
OperationKind onMap(std::string_view words, std::uint32_t weight, Work work,
                    InCallbacks inCallbacks = InCallbacks::seldom) {
    const auto perform = [work](World& world, const Operation& operation) {
        if (const auto map = world.map(operation.arguments[0])) {
            work(*map, operation);
        }
    };
    return {words, weight, perform, inCallbacks};
}

template <class Shape, class Work>
OperationKind onShape(std::string_view words, std::uint32_t weight, Work work,
                      InCallbacks inCallbacks = InCallbacks::seldom) {
    const auto perform = [work](World& world, const Operation& operation) {
        if (const auto shape = world.shape<Shape>(operation.arguments[0])) {
            work(*shape, operation);
        }
    };
    return {words, weight, perform, inCallbacks};
}

/// Gives a property of a map or of a type of shape the second argument.
template <class Object, class Value>
OperationKind sets(std::string_view words, std::uint32_t weight, void (Object::*setter)(Value)) {
    const auto work = [setter](Object& object, const Operation& operation) {
        if constexpr (std::is_same_v<Value, bool>) {
            (object.*setter)(operation.flag(1));
        } else if constexpr (std::is_same_v<Value, double>) {
            (object.*setter)(operation.number(1));
        } else if constexpr (std::is_same_v<Value, std::int64_t>) {
            (object.*setter)(operation.order(1));
        } else if constexpr (std::is_same_v<std::decay_t<Value>, UIColor>) {
            (object.*setter)(operation.colour(1));
        } else {
            (object.*setter)(operation.text(1));
        }
    };
    if constexpr (std::is_same_v<Object, PgmMapView>) {
        return onMap(words, weight, work);
    } else {
        return onShape<Object>(words, weight, work);
    }
}
/// @}

/// @name The kinds of operations, by what they act on
/// @{
[[nodiscard]] std::vector<OperationKind> shapeOperations();
[[nodiscard]] std::vector<OperationKind> lookOperations();
[[nodiscard]] std::vector<OperationKind> mapOperations();
[[nodiscard]] std::vector<OperationKind> cameraOperations();
[[nodiscard]] std::vector<OperationKind> inputOperations();
[[nodiscard]] std::vector<OperationKind> clusterOperations();
/// @}

}  // namespace pelta::random
