#pragma once

#include <string_view>

#include <pelta/Engine/MLNStyleLayer.h>

#include "JsonWriter.h"

namespace pelta {

/// What a style document calls a kind of layer.
[[nodiscard]] std::string_view typeName(MLNStyleLayerKind kind);

/// Writes a layer as a style document would hold it, with the properties that have been set.
/// @param source  the engine's name of the source that it draws; not looked at for a layer that draws none.
void writeLayer(JsonWriter& json, const MLNStyleLayer& layer, std::string_view source);

/// Writes the last argument of calls that are right by construction and need no check.
void writeUnchecked(JsonWriter& json);

/// Writes the calls that bring a layer of the map in line with its model, each as an array
/// `[null, method, arguments…]`.
///
/// @param changes  the bits of `MLNStyleLayer::changes`.
void writeLayerChanges(JsonWriter& json, const MLNStyleLayer& layer, std::uint32_t changes);

}  // namespace pelta
