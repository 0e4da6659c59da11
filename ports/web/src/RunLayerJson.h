#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "JsonWriter.h"
#include "Run.h"

namespace pelta {

/// A property of a kind of layer that features can have values of their own for.
struct NamedProperty {
    std::size_t number = 0;
    std::string_view name;
    MLNPropertyGroup group = MLNPropertyGroup::paint;
};

/// The properties of a layer's kind.
[[nodiscard]] std::span<const NamedProperty> propertiesOf(const MLNVectorStyleLayer& layer);

/// Visits the properties of a layer's kind whose numbers are in a set.
template <class Visit>
void visitPropertiesIn(const MLNVectorStyleLayer& layer, PropertySet numbers, Visit&& visit) {
    for (const NamedProperty& property : propertiesOf(layer)) {
        if ((numbers & (PropertySet{1} << property.number)) != 0) {
            visit(property);
        }
    }
}

/// Name of the engine's layer for a run.
[[nodiscard]] std::string runLayerIdentifier(const Run& run);
/// The kind of an engine's layer by its name; nothing for one that is not a run's.
[[nodiscard]] std::optional<MLNStyleLayerKind> runLayerKind(std::string_view identifier);

/// Names of the feature properties that hold the number of the run, and the sort key, of the layer of a kind.
[[nodiscard]] std::string_view runProperty(MLNStyleLayerKind kind);
[[nodiscard]] std::string_view keyProperty(MLNStyleLayerKind kind);

/// Writes the engine's layer for a run.
/// @param source   the engine's name of the source that it draws.
/// @param sortKey  see `SymbolOrder`.
void writeRunLayer(JsonWriter& json, const Run& run, std::string_view source, std::string_view sortKey);

/// Writes the calls that bring the `unwritten` properties of a run's layer in line.
void writeRunLayerChanges(JsonWriter& calls, const Run& run);

}  // namespace pelta
