#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "FeatureNumbers.h"
#include "JsonWriter.h"
#include "Run.h"
#include "SymbolOrder.h"

namespace pelta {

/// Begins a call of a frame: `[source or null, method, arguments…]`.
void beginSourceCall(JsonWriter& calls, std::string_view source, std::string_view method);
void beginStyleCall(JsonWriter& calls, std::string_view method);

/// Begins the description of a source of features: an object whose last member, GeoJSON, comes next.
void beginSource(JsonWriter& json);

/// Whether the engine has a member of a run otherwise than it is now.
[[nodiscard]] bool isStale(const ModelLayer& member);

/// A source of the engine that holds one feature for each layer of the model that is drawn in a run. What
/// changes crosses as differences.
class RunSource {
 public:
    RunSource(std::string identifier, FeatureNumbers& numbers)
        : identifier_(std::move(identifier)), numbers_(&numbers) {}

    /// To be called before members of a run are sent in order.
    void keepOrder(Run& run) { order_.keep(run, *numbers_); }
    [[nodiscard]] const SymbolOrder& order() const noexcept { return order_; }

    /// Brings a layer's feature in line with it.
    void send(ModelLayer& layer);
    /// Takes a layer's feature out.
    void withdraw(ModelLayer& layer);

    /// Writes the call that tells the engine what was sent and withdrawn since the last time, if anything
    /// was.
    void writeChanges(JsonWriter& calls);
    /// Writes the calls for the engine's layers, which must be there, that keep the order of what was sent.
    void writeOrderChanges(JsonWriter& calls) { order_.writeChanges(calls); }

 private:
    void add(ModelLayer& layer, PropertySet own);
    void update(ModelLayer& layer, PropertySet own);
    void noteRun(const ModelLayer& layer, std::uint32_t run);
    [[nodiscard]] bool hasChanges() const;

    std::string identifier_;
    FeatureNumbers* numbers_;
    SymbolOrder order_;
    JsonWriter removed_;
    JsonWriter added_;
    JsonWriter updated_;
    bool exists_ = false;
};

}  // namespace pelta
