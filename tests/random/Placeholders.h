#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace pelta::random {

/// An argument of operations, by the name that stands in their words.
struct Placeholder {
    std::string_view name;
    /// The argument is from 0 to below this.
    std::uint32_t count;
    std::function<std::string(std::uint32_t argument)> words;
};

/// The placeholder of a name; a programming error when there is none.
[[nodiscard]] const Placeholder& placeholderNamed(std::string_view name);

/// Stands for what a callback does.
inline constexpr std::string_view innerOperation = "operation";

/// @name Number of objects that a world has room for
/// @{
inline constexpr std::uint32_t mapCount = 3;
inline constexpr std::uint32_t shapeCount = 10;
inline constexpr std::uint32_t managerCount = 2;
/// @}

/// What shapes can be made, in the order of the placeholder "kind": first the library's own classes, then an
/// application's subclass of each.
enum class ShapeKind : std::uint32_t { marker, infoWindow, polyline, polygon, circle, base };
inline constexpr std::uint32_t shapeKindCount = 6;

/// What a map's delegate is told, in the order of the placeholder "event".
enum class MapEvent : std::uint32_t { willChange, isChanging, didChange, idle, tap, longPress, location };
inline constexpr std::uint32_t mapEventCount = 7;

/// What a cluster manager's delegate is asked.
inline constexpr std::uint32_t clusterQuestionCount = 4;

}  // namespace pelta::random
