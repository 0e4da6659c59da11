#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include <pelta/Engine/MLNShape.h>

#include "JsonWriter.h"

namespace pelta {

/// The features that a source's shape stands for, in drawing order: the members of a collection, else the
/// shape itself. Collections within a collection are not drawn. The pointers live as long as the shape.
[[nodiscard]] std::vector<const MLNShape*> featuresOf(const MLNShape* shape);

/// Writes the geometry of a shape that has something to draw as GeoJSON does: as what it is drawn as.
void writeGeometry(JsonWriter& json, const MLNShape& shape);

/// Writes features as a GeoJSON collection; a feature's "id" is its index. One with nothing to draw keeps its
/// index and is left out.
void writeFeatures(JsonWriter& json, const std::vector<const MLNShape*>& features);

}  // namespace pelta
