#pragma once

#include <span>
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

/// Name of the engine's source for the runs over a source of the model, by kind of layer: so no change
/// reaches layers of another kind.
[[nodiscard]] std::string runSourceIdentifier(const MLNVectorStyleLayer& layer);

/// Writes the engine's layer for a run.
/// @param sortKey  see `SymbolOrder`.
void writeRunLayer(JsonWriter& json, const Run& run, std::string_view sortKey);

/// Writes the calls that bring the `unwritten` properties of a run's layer in line.
void writeRunLayerChanges(JsonWriter& calls, const Run& run);

}  // namespace pelta
